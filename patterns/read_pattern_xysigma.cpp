// XY files (".xy", ".xys", ".xye") and distance files (".gr"): an optional
// head, then rows of x, y and optionally sigma and a calculated value.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "patterns/pattern_readers.h"
#include "patterns/pattern_spline.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {
namespace {

constexpr std::size_t kLineLen = 180;
const char* const kHeadEnd = " Error reading a profile DATA file of XYSigma format";

struct XY_HEAD {
    float fac_x = 1.0f, fac_y = 1.0f, stepin = 0.0f;
    int interpol = 0;
};

void add_header(std::string* header, std::string_view line) {
    if (!header) return;
    if (Is_Blank(*header)) header->clear();
    else *header += '\n';
    *header += Trim_Right(line);
}

// The four keywords every XY head may carry.
void keywords(const std::string& line, DIFFRACTION_PATTERN_TYPE& p) {
    std::size_t at;
    if ((at = line.find("TITLE")) != std::string::npos) p.title = Cut(Keyword_Value(line.substr(at + 5)), kTitleLen);
    if ((at = line.find("Scattering variable:")) != std::string::npos)
        p.scat_var = Cut(Trim(line.substr(at + 20)), kScatLen);
    if ((at = line.find("Legend_X")) != std::string::npos) p.xax_text = Cut(Keyword_Value(line.substr(at + 8)), kAxisLen);
    if ((at = line.find("Legend_Y")) != std::string::npos) p.yax_text = Cut(Keyword_Value(line.substr(at + 8)), kAxisLen);
}

bool two_reals(std::string_view line) {
    float v[2];
    int count = 0;
    return Read_Row_Fields(line, v, 2, count) && count == 2;
}

// 1 in each byte of `w` equal to the byte repeated in `pattern`, 0 elsewhere.
std::uint64_t equal_bytes(std::uint64_t w, std::uint64_t pattern) {
    constexpr std::uint64_t low7 = 0x7F7F7F7F7F7F7F7FULL;
    const std::uint64_t x = w ^ pattern;
    return (~(((x & low7) + low7) | x | low7)) >> 7;
}

// Sum of the eight bytes of `v`, each at most 255.
std::size_t byte_sum(std::uint64_t v) {
    v = (v & 0x00FF00FF00FF00FFULL) + ((v >> 8) & 0x00FF00FF00FF00FFULL);
    return static_cast<std::size_t>((v * 0x0001000100010001ULL) >> 48);
}

// Lines as Text_Unit::Read_Line counts them (LF, CR LF and a lone CR each end
// one). The first pass over large files: eight bytes a step, as the plain
// byte loop is three times slower at the usual optimisation level.
int count_lines(std::string_view t) {
    constexpr std::uint64_t kLF = 0x0A0A0A0A0A0A0A0AULL, kCR = 0x0D0D0D0D0D0D0D0DULL;
    const char* s = t.data();
    const std::size_t size = t.size();
    std::size_t lf = 0, cr = 0, i = 0;
    while (i + 8 <= size) {
        std::uint64_t a = 0, b = 0;  // per-byte counts, at most 255 steps before they are summed
        for (int k = 0; k < 255 && i + 8 <= size; ++k, i += 8) {
            std::uint64_t w;
            std::memcpy(&w, s + i, 8);
            a += equal_bytes(w, kLF);
            b += equal_bytes(w, kCR);
        }
        lf += byte_sum(a);
        cr += byte_sum(b);
    }
    for (; i < size; ++i) {
        lf += s[i] == '\n';
        cr += s[i] == '\r';
    }
    if (cr != 0)
        for (std::size_t j = 0; j + 1 < size; ++j) cr -= s[j] == '\r' && s[j + 1] == '\n';
    const bool open_end = size > 0 && t.back() != '\n' && t.back() != '\r';
    const std::size_t n = lf + cr + (open_end ? 1 : 0);
    return n > std::size_t(INT32_MAX) ? INT32_MAX : static_cast<int>(n);
}

bool is_comment(std::string_view line) { return !line.empty() && (line[0] == '!' || line[0] == '#'); }

// "XYDATA" head: keyword lines up to six lines not beginning with "#". A row
// of numbers before the sixth is data: the writer of this program puts five
// lines when no multiplier was applied.
bool xydata_head(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p, std::string* header, XY_HEAD& h) {
    int plain = 0;
    std::string line;
    while (plain < 6) {
        if (!unit.Read_Line(line)) {
            Set_Pattern_Error(kHeadEnd);
            return false;
        }
        line = Cut(line, kLineLen);
        const std::string adj = Adjustl(line);
        const bool keyword_line = Starts_With(adj, "INTER") || Starts_With(adj, "TEMP") ||
                                  adj.find("TITLE") != std::string::npos;
        if (!is_comment(adj) && !keyword_line && !Is_Blank(adj) && two_reals(adj)) {
            unit.Backspace();
            break;
        }
        add_header(header, line);
        if (adj.empty() || adj[0] != '#') ++plain;
        keywords(line, p);
        if (Starts_With(adj, "INTER")) {
            float v[4];
            int count = 0;
            if (!Read_Row_Fields(std::string_view(adj).substr(5), v, 4, count) || count < 3) {
                Set_Pattern_Error(" Error reading");
                return false;
            }
            h.fac_x = v[0] <= 0.0f ? 1.0f : v[0];
            h.fac_y = v[1] <= 0.0f ? 1.0f : v[1];
            h.interpol = Point_Count(v[2]);  // any value but 0 and 2 interpolates
            h.stepin = v[3];
        } else if (Starts_With(adj, "TEMP")) {
            float t = 0.0f;
            p.tsamp = List_Read(std::string_view(adj).substr(4, 76), &t, 1) == List_Result::Ok ? t : 0.0f;
            p.tset = p.tsamp;
        }
    }
    p.ct_step = h.interpol != 0;
    return true;
}

// Any other head: keyword lines and comments until the first row of two numbers.
bool plain_head(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p, std::string* header) {
    std::string line;
    // Line 1 was the title; it is looked at again, as headerless files start with data.
    unit.Rewind();
    bool first = true;
    while (true) {
        if (!unit.Read_Line(line)) {
            Set_Pattern_Error(kHeadEnd);
            return false;
        }
        line = Adjustl(Cut(line, kLineLen));
        if (!is_comment(line) && !Is_Blank(line) && two_reals(line)) {
            unit.Backspace();
            return true;
        }
        add_header(header, line);
        if (!first || is_comment(line)) keywords(line, p);
        first = false;
    }
}

// Interpolation onto the constant step `stepin` by a natural spline.
bool interpolate(DIFFRACTION_PATTERN_TYPE& p, int n, float stepin) {
    if (n < 2 || !Strictly_Ascending(p.x.data(), n)) {
        Set_Pattern_Error(" Error in Intensity file, X values must rise to interpolate (INTER)");
        return false;
    }
    // A step that is no finite positive number keeps the points of the file.
    int m = stepin > 0.0f && std::isfinite(stepin) ? Point_Count((double(p.xmax) - p.xmin) / stepin + 1.05) : n + 1;
    if (m >= 1 && m <= n) {
        p.step = stepin;
    } else {
        p.step = (p.xmax - p.xmin) / static_cast<float>(n - 1);
        m = n;
    }
    const std::vector<double> dy = Spline_Second_Derivatives(p.x.data(), p.y.data(), n);
    const std::vector<double> ds = Spline_Second_Derivatives(p.x.data(), p.sigma.data(), n);
    std::vector<float> ny(static_cast<std::size_t>(m)), ns(static_cast<std::size_t>(m));
    for (int i = 0; i < m; ++i) {
        const double t = double(p.x(1)) + double(i) * p.step;
        ny[static_cast<std::size_t>(i)] = static_cast<float>(Spline_Value(p.x.data(), p.y.data(), dy, n, t));
        ns[static_cast<std::size_t>(i)] = static_cast<float>(std::fabs(Spline_Value(p.x.data(), p.sigma.data(), ds, n, t)));
    }
    Shrink_Pattern(p, m);
    for (int i = 1; i <= m; ++i) {
        p.y(i) = ny[static_cast<std::size_t>(i - 1)];
        p.sigma(i) = ns[static_cast<std::size_t>(i - 1)];
        p.ycalc(i) = 0.0f;
    }
    p.xmax = p.xmin + static_cast<float>(m - 1) * p.step;
    Fill_Constant_Step(p);
    return true;
}

}  // namespace

void Read_Pattern_XYSigma(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p, bool gr, std::string* header) {
    Clear_Pattern_Error();
    XY_HEAD h;
    p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
    p.scat_var.clear();
    p.step = 0.0f;
    if (header) header->assign(1, ' ');

    // First pass: the number of lines bounds the number of points.
    int count = 0, head_len = 0;
    const std::string_view rest = std::string_view(unit.Text()).substr(unit.Position());
    if (rest.find("#L r(A)") == std::string_view::npos) {
        count = count_lines(rest);
    } else {
        std::string_view v;
        while (unit.Read_Line(v)) {
            ++count;
            if (v.find("#L r(A)") != std::string_view::npos) {
                head_len += count;
                count = 0;
            }
        }
    }
    if (count <= 0) {
        Set_Pattern_Error(" Error in Intensity/Profile file, Number of points negative or zero!");
        return;
    }
    unit.Rewind();

    std::string line;
    if (gr) {
        for (int i = 0; i < head_len && unit.Read_Line(line); ++i) {
            if (std::size_t at = line.find("title="); at != std::string::npos)
                p.title = Cut(Trim(line.substr(at + 6)), kTitleLen);
            add_header(header, line);
        }
        p.xax_text = "Distance R(Angstroms)";
        p.yax_text = "G(R)x1000";
        p.scat_var = "Distance";
    } else {
        unit.Read_Line(line);
        p.title = Cut(Trim(line), kTitleLen);
        if (Starts_With(Adjustl(line), "XYDATA")) {
            add_header(header, line);
            if (!xydata_head(unit, p, header, h)) return;
        } else if (!plain_head(unit, p, header)) {
            return;
        }
    }

    Allocate_Pattern(p, count);
    if (ERR_Pattern) return;
    const bool rlu = Same(p.scat_var, "r.l.u.");
    double sum_sq = 0.0, step_sum = 0.0;
    int n = 0;
    float f[4];
    std::string_view row;
    const char* const text_begin = unit.Text().data();
    const char* const text_end = text_begin + unit.Text().size();
    for (int i = 1; i <= count; ++i) {
        int got = 0;
        const char* at = text_begin + unit.Position();
        if (at >= text_end) break;
        if (Scan_Row(at, text_end, f, 4, got)) {  // the bulk of the file: no line copied or searched twice
            if (at < text_end) at += (*at == '\r' && at + 1 < text_end && at[1] == '\n') ? 2 : 1;
            unit.Seek(static_cast<std::size_t>(at - text_begin));
            if (got == 0) continue;  // blank lines: trailing ones are common
        } else {
            unit.Read_Line(row);
            const std::size_t first = row.find_first_not_of(" \t");
            if (first == std::string_view::npos) continue;
            const std::string_view adj = row.substr(first);
            if (is_comment(adj)) continue;
            if (!Read_Row_Fields(adj, f, 4, got)) {
                Set_Pattern_Error(" Error in Intensity file, check your instr parameter!");
                return;
            }
        }
        if (got < 2) {
            Set_Pattern_Error(" Error reading X,Y, Sigma Ycalc in profile DATA file");
            return;
        }
        float x = f[0], y = f[1], s = 0.0f, yc = 0.0f;
        if (gr) s = f[3];
        else if (rlu) s = f[2];
        else {
            s = f[2];
            yc = f[3];
        }
        if (n >= 11 && std::fabs(x) < 1e-6f && y < 1e-6f && s < 1e-6f) break;  // a row of zeros ends the data
        ++n;
        p.x(n) = x * h.fac_x;
        p.y(n) = y * h.fac_y;
        p.ycalc(n) = yc * h.fac_y;
        const float sd = s * h.fac_y;
        const float var = sd * sd;
        sum_sq += double(var);
        p.sigma(n) = var < 1e-6f ? 1.0f : var;
        if (n > 1) step_sum += double(p.x(n)) - p.x(n - 1);
    }
    if (n < 1) {
        Set_Pattern_Error(" Error in Intensity/Profile file, Number of points negative or zero!");
        return;
    }
    Shrink_Pattern(p, n);
    p.xmin = p.x(1);
    p.xmax = p.x(n);
    if (sum_sq < 1e-6)
        for (int i = 1; i <= n; ++i) p.sigma(i) = std::fabs(p.y(i));
    if (h.interpol != 0 && h.interpol != 2) {
        if (!interpolate(p, n, h.stepin)) return;
    } else {
        p.step = n > 1 ? static_cast<float>(step_sum / (n - 1)) : 0.0f;
    }
    Pattern_Y_Limits(p);
}

}  // namespace hxl
