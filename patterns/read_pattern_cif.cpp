// Powder CIF: the first loop that holds a profile, its columns named by
// item, values with uncertainties in parentheses.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "patterns/pattern_readers.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {
namespace {

enum Column { kNone, kX2theta, kXd, kXtof, kY, kYsu, kCalc, kBgr, kWeight };

// DDLm dictionaries write "_pd_meas.2theta_scan" for "_pd_meas_2theta_scan".
std::string item_name(std::string_view word) {
    std::string s = Lower(word);
    for (char& c : s)
        if (c == '.') c = '_';
    return s;
}

Column column_of(const std::string& item) {
    if (item == "_pd_proc_2theta_corrected" || item == "_pd_meas_2theta_scan" || item == "_pd_meas_2theta_corrected")
        return kX2theta;
    if (item == "_pd_proc_d_spacing") return kXd;
    if (item == "_pd_meas_time_of_flight") return kXtof;
    if (item == "_pd_proc_intensity_total" || item == "_pd_meas_intensity_total" || item == "_pd_meas_counts_total")
        return kY;
    if (item == "_pd_proc_intensity_total_su" || item == "_pd_meas_intensity_total_su") return kYsu;
    if (item == "_pd_calc_intensity_total") return kCalc;
    if (item == "_pd_proc_intensity_bkg_calc") return kBgr;
    if (item == "_pd_proc_ls_weight") return kWeight;
    return kNone;
}

// "1.234(5)" gives 1.234 and 0.005; "." and "?" read as 0.
bool value_std(std::string_view w, double& v, double& s) {
    v = s = 0.0;
    if (w == "." || w == "?") return true;
    const std::size_t open = w.find('(');
    if (open == std::string_view::npos) return Parse_Real(w, v);
    const std::size_t close = w.find(')', open);
    if (close == std::string_view::npos || !Parse_Real(w.substr(0, open), v)) return false;
    double digits = 0.0;
    if (!Parse_Real(w.substr(open + 1, close - open - 1), digits)) return false;
    std::string_view mant = w.substr(0, open);
    const std::size_t e = mant.find_first_of("eE");
    int exp10 = 0;
    if (e != std::string_view::npos) {
        double ev = 0.0;
        Parse_Real(mant.substr(e + 1), ev);
        exp10 = static_cast<int>(std::clamp(ev, -400.0, 400.0));
        mant = mant.substr(0, e);
    }
    const std::size_t dot = mant.find('.');
    const int decimals = dot == std::string_view::npos ? 0 : static_cast<int>(mant.size() - dot - 1);
    s = digits * std::pow(10.0, exp10 - decimals);
    return true;
}

std::vector<std::string_view> words_of(std::string_view line) {
    std::vector<std::string_view> w;
    std::size_t p = 0;
    auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
    while (p < line.size()) {
        while (p < line.size() && blank(line[p])) ++p;
        if (p >= line.size()) break;
        std::size_t q = p;
        while (q < line.size() && !blank(line[q])) ++q;
        w.push_back(line.substr(p, q - p));
        p = q;
    }
    return w;
}

// Fortran "(e12.4)": 0.dddd, exponent of two digits.
std::string e12_4(double v) {
    char buf[32];
    if (v == 0.0 || !std::isfinite(v)) {
        std::snprintf(buf, sizeof buf, "%12s", v == 0.0 ? "0.0000E+00" : "NaN");
        return buf;
    }
    int e = static_cast<int>(std::floor(std::log10(std::fabs(v)))) + 1;
    double m = v / std::pow(10.0, e);
    if (std::fabs(m) >= 0.99995) {
        m /= 10.0;
        ++e;
    }
    std::snprintf(buf, sizeof buf, "%8.4fE%+03d", m, e);
    std::string s = buf;
    if (s.size() < 12) s.insert(0, 12 - s.size(), ' ');
    return s;
}

// True when lines [from, to) hold a loop that names an intensity column.
bool has_profile_loop(const std::vector<std::string_view>& lines, std::size_t from, std::size_t to) {
    bool in_loop = false;
    for (std::size_t i = from; i < to; ++i) {
        auto w = words_of(lines[i]);
        if (w.empty()) continue;
        if (Lower(w[0]) == "loop_") {
            in_loop = true;
            for (std::size_t k = 1; k < w.size(); ++k)
                if (column_of(item_name(w[k])) == kY) return true;
            continue;
        }
        if (in_loop && w[0][0] == '_') {
            if (column_of(item_name(w[0])) == kY) return true;
            continue;
        }
        in_loop = false;
    }
    return false;
}

// The value of "_diffrn_radiation_wavelength" given as an item (not in a loop); 0 when absent.
// A wavelength belongs only to patterns in an angle.
bool xk_is_angle(int cx, const std::vector<Column>& cols) {
    return cx < 0 || cols[static_cast<std::size_t>(cx)] == kX2theta;
}

float radiation_wavelength(const std::vector<std::string_view>& lines) {
    for (auto l : lines) {
        auto w = words_of(l);
        if (w.size() < 2) continue;
        const std::string n = item_name(w[0]);
        if (n != "_diffrn_radiation_wavelength" && n != "_diffrn_radiation_wavelength_value" &&
            n != "_diffrn_radiation_wavelength_wavelength")
            continue;
        double val = 0.0, sd = 0.0;
        if (value_std(w[1], val, sd) && val > 0.0 && val < 100.0) return static_cast<float>(val);
    }
    return 0.0f;
}

}  // namespace

void Read_Pattern_Cif(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    int nblocks = 0;
    Read_Pattern_Cif(unit, p, 1, nblocks);
}

void Read_Pattern_Cif(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p, int block_no, int& nblocks) {
    Clear_Pattern_Error();
    std::vector<std::string_view> all;
    std::string_view v;
    while (unit.Read_Line(v)) all.push_back(v.substr(0, std::min<std::size_t>(v.size(), 120)));
    nblocks = 0;
    if (all.size() < 10)
        return Set_Pattern_Error(" Number of lines too small to hold a diffraction pattern, check your CIF file!");
    // A file of several data blocks (phases, histograms) holds one profile per
    // block that has an intensity loop; the others are passed over.
    std::vector<std::pair<std::size_t, std::size_t>> blocks;
    std::size_t from = 0;
    for (std::size_t i = 0; i <= all.size(); ++i) {
        const bool start = i < all.size() && Starts_With(Lower(all[i].substr(0, 5)), "data_");
        if (i == all.size() || (start && i > from)) {
            if (has_profile_loop(all, from, i)) blocks.emplace_back(from, i);
            from = i;
        }
    }
    if (blocks.empty()) blocks.emplace_back(0, all.size());
    nblocks = static_cast<int>(blocks.size());
    if (block_no < 1 || block_no > nblocks) return Set_Pattern_Error(" No such data block in the CIF file");
    const auto [b0, b1] = blocks[static_cast<std::size_t>(block_no - 1)];
    const std::vector<std::string_view> lines(all.begin() + static_cast<std::ptrdiff_t>(b0),
                                              all.begin() + static_cast<std::ptrdiff_t>(b1));
    const float wavelength = radiation_wavelength(lines) > 0.0f ? radiation_wavelength(lines) : radiation_wavelength(all);

    std::size_t block = 0, probe = 0, count = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].find("_pd_block_id") != std::string_view::npos) block = i + 1;
        if (lines[i].find("_diffrn_radiation_probe") != std::string_view::npos) probe = i + 1;
        if (lines[i].find("_pd_proc_number_of_points") != std::string_view::npos) count = i + 1;
    }
    int declared = -1;
    if (count) {
        const std::string_view l = lines[count - 1];
        const std::size_t at = l.find("_pd_proc_number_of_points") + 25;
        if (List_Read(l.substr(at), &declared, 1) != List_Result::Ok)
            return Set_Pattern_Error(" Error reading the number of points in the pattern, check your CIF file!");
    }

    // The first loop that names an intensity column holds the profile.
    std::vector<Column> cols;
    std::size_t data = 0;
    for (std::size_t i = 0; i < lines.size() && !data; ++i) {
        auto w = words_of(lines[i]);
        if (w.empty() || Lower(w[0]) != "loop_") continue;
        std::vector<Column> c;
        bool has_y = false;
        for (std::size_t k = 1; k < w.size(); ++k) c.push_back(column_of(item_name(w[k])));
        std::size_t j = i + 1;
        for (; j < lines.size() && c.size() < 64; ++j) {
            auto iw = words_of(lines[j]);
            if (iw.empty() || iw[0][0] != '_') break;
            c.push_back(column_of(item_name(iw[0])));
        }
        for (Column k : c) has_y = has_y || k == kY;
        if (has_y) {
            cols = c;
            data = j + 1;
        }
    }
    auto find = [&](Column k) {
        for (std::size_t i = 0; i < cols.size(); ++i)
            if (cols[i] == k) return static_cast<int>(i);
        return -1;
    };
    int cx = find(kX2theta), cy = find(kY);
    if (cx < 0) cx = find(kXd);
    if (cx < 0) cx = find(kXtof);

    // Refinement programs often give X by a range instead of a column.
    float r_min = 0.0f, r_inc = 0.0f;
    for (const char* key : {"_pd_proc_2theta_range_", "_pd_meas_2theta_range_"}) {
        for (auto l : lines) {
            auto w = words_of(l);
            if (w.size() < 2) continue;
            const std::string n = item_name(w[0]);
            if (r_inc == 0.0f && n == std::string(key) + "inc") Parse_Real(w[1], r_inc);
            if (r_min == 0.0f && n == std::string(key) + "min") Parse_Real(w[1], r_min);
        }
        if (r_inc > 0.0f) break;
    }
    if (cy < 0 || (cx < 0 && r_inc <= 0.0f))
        return Set_Pattern_Error(" Error: experimental data are lacking, check your CIF file!");

    // Rows run to the first line with fewer than two values.
    int rows = 0;
    for (std::size_t i = data - 1; i < lines.size(); ++i) {
        auto w = words_of(lines[i]);
        if (w.size() < 2 || w[0][0] == '_' || w[0][0] == '#' || Lower(w[0]) == "loop_" || Starts_With(Lower(w[0]), "data_")) break;
        ++rows;
    }
    if (rows <= 0) {
        if (!count) return Set_Pattern_Error(" No line with the number of points in the pattern, check your CIF file!");
        return Set_Pattern_Error(" Error reading the number of points in the pattern, check your CIF file!");
    }
    Allocate_Pattern(p, rows);
    if (ERR_Pattern) return;
    if (block) {
        const std::string_view l = lines[block - 1];
        p.title = Cut(Trim(l.substr(std::min<std::size_t>(l.find("_pd_block_id") + 12, l.size()))), kTitleLen);
    }
    if (probe) {
        const std::string_view l = lines[probe - 1];
        p.diff_kind = Cut(Trim(l.substr(std::min<std::size_t>(l.find("_diffrn_radiation_probe") + 23, l.size()))), kKindLen);
    }
    p.tsamp = p.tset = p.monitor = 0.0f;
    p.scal = 1.0f;
    if (xk_is_angle(cx, cols)) p.lambda1 = wavelength;
    const Column xk = cx >= 0 ? cols[static_cast<std::size_t>(cx)] : kX2theta;
    if (xk == kXd) {
        p.scat_var = "d-spacing";
        p.xax_text = "d-spacing(Angstroms)";
        p.diff_kind = "Neutrons (TOF)";
    } else if (xk == kXtof) {
        p.scat_var = "TOF";
        p.xax_text = "TOF(micro-seconds)";
    } else {
        p.scat_var = "2theta";
        p.xax_text = "2theta(degrees)";
    }
    const int cc = find(kCalc), cb = find(kBgr), csu = find(kYsu), cw = find(kWeight);
    double chi = 0.0;
    for (int n = 1; n <= rows; ++n) {
        auto w = words_of(lines[data - 2 + static_cast<std::size_t>(n)]);
        auto get = [&](int c, double& val, double& sd) {
            val = sd = 0.0;
            if (c < 0 || static_cast<std::size_t>(c) >= w.size()) return true;
            return value_std(w[static_cast<std::size_t>(c)], val, sd);
        };
        double x = 0, xs = 0, y = 0, ys = 0, yc = 0, bg = 0, su = 0, wt = 0, dummy = 0;
        if (!get(cx, x, xs) || !get(cy, y, ys) || !get(cc, yc, dummy) || !get(cb, bg, dummy) || !get(csu, su, dummy) ||
            !get(cw, wt, dummy))
            return Set_Pattern_Error(" Error reading the profile values in the CIF file, line " +
                                     std::to_string(data - 1 + static_cast<std::size_t>(n)));
        if (cx < 0) x = r_min + static_cast<double>(n - 1) * r_inc;
        if (csu >= 0) ys = su;
        p.x(n) = static_cast<float>(x);
        p.y(n) = static_cast<float>(y);
        p.ycalc(n) = static_cast<float>(yc);
        p.bgr(n) = static_cast<float>(bg);
        double var = ys * ys;
        if (ys <= 0.0) var = wt > 0.0 ? 1.0 / wt : std::fabs(y);
        p.sigma(n) = static_cast<float>(var);
        const double sd = std::sqrt(var);
        if (sd > 0.001) chi += ((y - yc) / sd) * ((y - yc) / sd);
    }
    // A block whose identifier stands on a line of its own is named by its data_ line.
    if (Is_Blank(p.title) && !lines.empty() && Starts_With(Lower(lines[0].substr(0, 5)), "data_"))
        p.title = Cut(Trim(lines[0].substr(5)), kTitleLen);
    p.title = Cut(Trim_Right(p.title) + "  Chi2(free) = " + e12_4(chi / rows), kTitleLen);
    p.xmin = p.x(1);
    p.xmax = p.x(rows);
    p.step = rows > 1 ? (p.xmax - p.xmin) / static_cast<float>(rows - 1) : 0.0f;
    Pattern_Y_Limits(p);
}

}  // namespace hxl
