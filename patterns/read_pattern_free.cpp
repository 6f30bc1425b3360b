// Free-format files (instrument code 0): up to seven header lines or "!"/"#"
// comments with keywords, a line "xmin step xmax [title]" (or a BANK line, or
// the MDI head), then the counts in free format over as many lines as needed.
#include <cmath>

#include "patterns/pattern_readers.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"
#include "support/text_utils.h"

namespace hxl {
namespace {

constexpr std::size_t kLineLen = 180;
// No instrument writes more; a head that asks for more is corrupt, and
// allocating for it would exhaust the memory before the counts are read.
constexpr double kMaxPoints = 16.0e6;

int point_count(float xmin, float step, float xmax) {
    const double n = std::nearbyint(static_cast<double>((xmax - xmin) / step + 1.0f));
    if (!(n < kMaxPoints)) return static_cast<int>(kMaxPoints) + 1;
    return n > 0 ? static_cast<int>(n) : 0;
}

std::string behind(const std::string& line, std::size_t at, std::size_t keylen) {
    return Trim(std::string_view(line).substr(at + keylen));
}

float read_tsamp(const std::string& rest) {
    float t = 0.0f;
    return List_Read(rest, &t, 1) == List_Result::Ok ? t : 0.0f;
}

std::vector<std::string_view> split_words(std::string_view line, std::size_t max_words, std::vector<std::size_t>& ends) {
    std::vector<std::string_view> words;
    ends.clear();
    std::size_t p = 0;
    auto blank = [](char c) { return c == ' ' || c == '\t'; };
    while (words.size() < max_words) {
        while (p < line.size() && blank(line[p])) ++p;
        if (p >= line.size()) break;
        std::size_t q = p;
        while (q < line.size() && !blank(line[q])) ++q;
        words.push_back(line.substr(p, std::min<std::size_t>(q - p, 20)));
        ends.push_back(q);
        p = q;
    }
    return words;
}

// Reads exactly three numbers from the words joined by blanks; false otherwise.
bool three_numbers(const std::string& joined, float& a, float& b, float& c) {
    Array1<float> vet(3);
    Array1<int> ivet(3);
    int iv = 0;
    Getnum(joined, vet, ivet, iv);
    if (err_string || iv != 3) return false;
    a = vet(1);
    b = vet(2);
    c = vet(3);
    return true;
}

}  // namespace

void Read_Pattern_Free(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p, const std::string& extension) {
    Clear_Pattern_Error();
    p.scat_var = "2theta";
    p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
    p.xmin = p.xmax = p.step = 0.0f;
    bool title_set = false;
    int comments = 0;
    const bool mdi = Same(Trim(extension), ".MDI");
    bool mdi_title = false;
    bool psi_head = false;  // a "lambda=" line: the limits line carries the monitor

    std::string line;
    while (true) {
        if (!unit.Read_Line(line)) {
            Set_Pattern_Error(" End of file *.dat");
            return;
        }
        line = Adjustl(Cut(line, kLineLen));

        if (!line.empty() && (line[0] == '!' || line[0] == '#')) {
            std::size_t at;
            if ((at = line.find("Legend_X")) != std::string::npos) p.xax_text = Cut(behind(line, at, 8), kAxisLen);
            if ((at = line.find("Legend_Y")) != std::string::npos) p.yax_text = Cut(behind(line, at, 8), kAxisLen);
            if ((at = line.find("Scattering variable:")) != std::string::npos)
                p.scat_var = Cut(behind(line, at, 20), kScatLen);
            if ((at = line.find("TSAMP")) != std::string::npos) p.tsamp = read_tsamp(behind(line, at, 5));
            if ((at = line.find("TITLE")) != std::string::npos) {
                p.title = Cut(behind(line, at, 5), kTitleLen);
                title_set = true;
            }
            if ((at = line.find("Title:")) != std::string::npos) {
                p.title = Cut(behind(line, at, 6), kTitleLen);
                title_set = true;
            }
            continue;
        }

        if (Starts_With(line, "BANK")) {
            const std::string_view v(line);
            int ints[2] = {0, 0};
            float reals[2] = {0.0f, 0.0f};
            if (v.size() > 4) List_Read(v.substr(4, 37), ints, 2);
            if (v.size() > 46) List_Read(v.substr(46, 44), reals, 2);
            p.npts = ints[1];
            p.xmin = reals[0];
            p.step = reals[1];
            p.xmax = static_cast<float>(p.npts - 1) * p.step + p.xmin;
            break;
        }

        if (mdi) {
            if (!mdi_title) {
                p.title = Cut(line, kTitleLen);
                title_set = mdi_title = true;
                continue;
            }
            std::vector<std::size_t> ends;
            auto w = split_words(line, 10, ends);
            std::string joined;
            if (w.size() >= 6) joined = std::string(w[0]) + " " + std::string(w[1]) + " " + std::string(w[5]);
            float a = 0, b = 0, c = 0;
            if (three_numbers(joined, a, b, c)) {
                p.xmin = a;
                p.step = b;
                p.xmax = c;
            }
            if (p.step > 0.0f) p.npts = point_count(p.xmin, p.step, p.xmax);
            break;
        }

        if (line.find("TSAMP") != std::string::npos) p.tsamp = read_tsamp(behind(line, line.find("TSAMP"), 5));
        std::vector<std::size_t> ends;
        auto w = split_words(line, 10, ends);
        float a = 0, b = 0, c = 0;
        if (w.size() > 2 &&
            three_numbers(std::string(w[0]) + " " + std::string(w[1]) + " " + std::string(w[2]), a, b, c)) {
            p.xmin = a;
            p.step = b;
            p.xmax = c;
            if (p.step <= 1.0e-6f) {
                Set_Pattern_Error(" Error in Intensity file, Step value was zero!");
                return;
            }
            p.npts = point_count(p.xmin, p.step, p.xmax);
            if (psi_head) Read_Psi_Monitor(line, p);
            if (!title_set) {
                std::string rest = Trim(std::string_view(line).substr(ends[2]));
                if (!rest.empty()) {
                    p.title = Cut(rest, kTitleLen);
                    title_set = true;
                }
            }
            break;
        }

        if (line.find("lambda=") != std::string::npos) {
            Read_Psi_Lambda_Line(line, p);
            psi_head = true;
        }
        if (!title_set) {
            p.title = Cut(line, kTitleLen);
            title_set = true;
        }
        if (++comments >= 8) {
            Set_Pattern_Error(" Error on Intensity file, Number of Comment lines was exceeded ( > 7) !");
            return;
        }
    }

    if (p.npts < 11 || p.xmin > p.xmax || p.step > p.xmax) {
        Set_Pattern_Error(" Error in Intensity file, Problems reading 2Theta_ini, Step, 2Theta_end !");
        return;
    }
    // Without repeat counts every value takes at least a digit and a separator,
    // so a head that asks for more values than the rest of the file can hold
    // is refused before the arrays are allocated.
    const std::string_view rest = std::string_view(unit.Text()).substr(unit.Position());
    const bool repeats = rest.find('*') != std::string_view::npos;
    if (p.npts > kMaxPoints || (!repeats && static_cast<double>(p.npts) > rest.size() / 2.0 + 1.0)) {
        Set_Pattern_Error(" Error in Intensity file, Number of intensities values is wrong!!");
        return;
    }
    Allocate_Pattern(p);
    if (ERR_Pattern) return;
    if (List_Read(unit, p.y.data(), p.npts) != List_Result::Ok) {
        Set_Pattern_Error(" Error in Intensity file, Number of intensities values is wrong!!");
        return;
    }
    float* x = p.x.data();
    const float* y = p.y.data();
    float* s = p.sigma.data();
    for (int i = 0; i < p.npts; ++i) {
        x[i] = p.xmin + static_cast<float>(i) * p.step;
        s[i] = y[i];
    }
    Pattern_Y_Limits(p);
    if (Same(p.scat_var, "2theta") && p.xmax > 180.0f) p.scat_var = "TOF";
}

}  // namespace hxl
