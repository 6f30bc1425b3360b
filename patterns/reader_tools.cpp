#include "patterns/reader_tools.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {
namespace {

inline bool blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\0'; }

bool comma_decimal_token(std::string_view t) {
    const std::size_t c = t.find(',');
    return c != std::string_view::npos && c > 0 && c + 1 < t.size() && t.find(',', c + 1) == std::string_view::npos &&
           t.find('.') == std::string_view::npos;
}

// Plain decimals ("-12.345", "1.5e-3") of up to 19 digits, the bulk of every
// data file, read in one pass without the general number reader: the digits
// make an exact integer, scaled once by a power of ten (at most one unit in
// the last place of a float off, and only for values of more than 8 digits).
// `p` moves behind the number; false leaves the word to the general reader.
bool scan_real(const char*& p, const char* e, float& value) {
    static constexpr double pow10[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                       1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    static constexpr double neg10[] = {1e0,   1e-1,  1e-2,  1e-3,  1e-4,  1e-5,  1e-6,  1e-7,
                                       1e-8,  1e-9,  1e-10, 1e-11, 1e-12, 1e-13, 1e-14, 1e-15,
                                       1e-16, 1e-17, 1e-18, 1e-19, 1e-20, 1e-21, 1e-22};
    const char* q = p;
    bool neg = false;
    if (q < e && (*q == '-' || *q == '+')) neg = *q++ == '-';
    unsigned long long m = 0;
    int digits = 0, scale = 0;
    const char* d0 = q;
    for (; q < e && static_cast<unsigned>(*q - '0') < 10u; ++q) {
        if (digits < 19) { m = m * 10 + static_cast<unsigned>(*q - '0'); digits += m != 0; }
        else ++scale;
    }
    bool any = q != d0;
    if (q < e && *q == '.') {
        const char* f0 = ++q;
        for (; q < e && static_cast<unsigned>(*q - '0') < 10u; ++q)
            if (digits < 19) { m = m * 10 + static_cast<unsigned>(*q - '0'); digits += m != 0; --scale; }
        any = any || q != f0;
    }
    if (!any) return false;
    if (q < e && (*q == 'e' || *q == 'E')) {
        ++q;
        bool eneg = false;
        if (q < e && (*q == '-' || *q == '+')) eneg = *q++ == '-';
        int x = 0;
        const char* x0 = q;
        for (; q < e && static_cast<unsigned>(*q - '0') < 10u && x < 10000; ++q) x = x * 10 + (*q - '0');
        if (q == x0) return false;
        scale += eneg ? -x : x;
    }
    if ((q < e && !blank(*q)) || m >= (1ULL << 53) || scale < -22 || scale > 22) return false;
    double v = static_cast<double>(m);
    v = scale < 0 ? (digits > 8 ? v / pow10[-scale] : v * neg10[-scale]) : v * pow10[scale];
    value = static_cast<float>(neg ? -v : v);
    p = q;
    return true;
}

bool fast_real(std::string_view w, float& value) {
    const char* p = w.data();
    return scan_real(p, p + w.size(), value) && p == w.data() + w.size();
}

inline bool read_real(std::string_view w, float& value) { return fast_real(w, value) || Parse_Real(w, value); }

}  // namespace

bool Scan_Row(const char*& p, const char* e, float* out, int max, int& count) {
    const char* q = p;
    count = 0;
    while (true) {
        while (q < e && (*q == ' ' || *q == '\t')) ++q;
        if (q >= e || *q == '\n' || *q == '\r') break;
        float v = 0.0f;
        if (!scan_real(q, e, v)) return false;
        if (count < max) out[count++] = v;
    }
    for (int k = count; k < max; ++k) out[k] = 0.0f;
    p = q;
    return true;
}

bool Read_Row_Fields(std::string_view line, float* out, int max, int& count) {
    count = 0;
    for (int k = 0; k < max; ++k) out[k] = 0.0f;
    {  // the common row: blank-separated plain numbers, read in place
        const char* p = line.data();
        const char* e = p + line.size();
        bool plain = true;
        while (plain) {
            while (p < e && blank(*p)) ++p;
            if (p >= e) return true;
            float v = 0.0f;
            if (scan_real(p, e, v)) {
                if (count < max) out[count++] = v;
                continue;
            }
            const char* q = p;
            while (q < e && !blank(*q)) ++q;
            if (std::string_view(p, static_cast<std::size_t>(q - p)).find(',') != std::string_view::npos) {
                plain = false;  // commas: the general path below decides what they are
            } else {
                if (count < max && !Parse_Real(std::string_view(p, static_cast<std::size_t>(q - p)), out[count++]))
                    return false;
                p = q;
            }
        }
        count = 0;
        for (int k = 0; k < max; ++k) out[k] = 0.0f;
    }
    std::vector<std::string_view> tokens;
    std::size_t p = 0;
    while (p < line.size() && tokens.size() < 64) {
        while (p < line.size() && blank(line[p])) ++p;
        if (p >= line.size()) break;
        std::size_t q = p;
        while (q < line.size() && !blank(line[q])) ++q;
        tokens.push_back(line.substr(p, q - p));
        p = q;
    }
    bool decimal_comma = tokens.size() >= 2;
    bool any_comma = false;
    for (auto t : tokens) {
        if (t.find(',') == std::string_view::npos) continue;
        any_comma = true;
        if (!comma_decimal_token(t)) decimal_comma = false;
    }
    if (!any_comma) decimal_comma = false;
    char buf[96];
    auto take = [&](std::string_view w) {
        if (w.empty()) return true;
        if (count >= max) return true;
        if (w.size() >= sizeof buf) return false;
        std::size_t len = 0;
        for (char c : w) buf[len++] = (decimal_comma && c == ',') ? '.' : c;
        float v = 0.0f;
        if (!read_real(std::string_view(buf, len), v)) return false;
        out[count++] = v;
        return true;
    };
    for (auto t : tokens) {
        if (decimal_comma) {
            if (!take(t)) return false;
            continue;
        }
        std::size_t a = 0;
        while (a <= t.size()) {
            std::size_t b = t.find(',', a);
            if (b == std::string_view::npos) b = t.size();
            if (!take(t.substr(a, b - a))) return false;
            a = b + 1;
        }
    }
    return true;
}

int Point_Count(double value) {
    if (!(value > -1.0e9 && value < 1.0e9)) return -1;  // NaN too
    return static_cast<int>(value);
}

bool Implausible_Count(const Text_Unit& unit, long long npts) {
    return npts > 10LL * static_cast<long long>(unit.Text().size()) + 100;
}

bool Fixed_Real(std::string_view line, std::size_t col, std::size_t width, float& value, int decimals) {
    value = 0.0f;
    if (col >= line.size()) return true;
    std::string_view f = line.substr(col, width);
    std::size_t a = 0, b = f.size();
    while (a < b && blank(f[a])) ++a;
    while (b > a && blank(f[b - 1])) --b;
    if (a == b) return true;
    const std::string_view w = f.substr(a, b - a);
    if (!Parse_Real(w, value)) return false;
    if (decimals > 0 && w.find_first_of(".eEdD") == std::string_view::npos)
        for (int k = 0; k < decimals; ++k) value /= 10.0f;
    return true;
}

Field_Result Read_Fixed_Reals(Text_Unit& unit, float* out, int n, int per_line, int width) {
    std::string_view line;
    int k = 0;
    while (k < n) {
        if (!unit.Read_Line(line)) return Field_Result::End_Of_File;
        for (int j = 0; j < per_line && k < n; ++j, ++k)
            if (!Fixed_Real(line, static_cast<std::size_t>(j * width), static_cast<std::size_t>(width), out[k]))
                return Field_Result::Bad_Value;
    }
    return Field_Result::Ok;
}

Field_Result Read_Fixed_Pairs(Text_Unit& unit, int* ints, float* reals, int n, int per_line, int iw, int rw) {
    std::string_view line;
    int k = 0;
    const int w = iw + rw;
    while (k < n) {
        if (!unit.Read_Line(line)) return Field_Result::End_Of_File;
        for (int j = 0; j < per_line && k < n; ++j, ++k) {
            float c = 0.0f;
            const auto col = static_cast<std::size_t>(j * w);
            if (!Fixed_Real(line, col, static_cast<std::size_t>(iw), c) || !(std::fabs(c) < 1.0e9f) ||
                c != static_cast<float>(static_cast<int>(c)))
                return Field_Result::Bad_Value;
            ints[k] = static_cast<int>(c);
            if (!Fixed_Real(line, col + static_cast<std::size_t>(iw), static_cast<std::size_t>(rw), reals[k]))
                return Field_Result::Bad_Value;
        }
    }
    return Field_Result::Ok;
}

void Shrink_Pattern(DIFFRACTION_PATTERN_TYPE& p, int n) {
    const auto m = static_cast<std::size_t>(std::max(n, 0));
    auto cut = [m](auto& a) {
        if (a.vec().size() > m) a.vec().resize(m);
    };
    cut(p.x);
    cut(p.y);
    cut(p.sigma);
    cut(p.istat);
    cut(p.ycalc);
    cut(p.bgr);
    cut(p.aux);
    p.npts = n;
}

void Fill_Constant_Step(DIFFRACTION_PATTERN_TYPE& p) {
    float* x = p.x.data();
    const int n = std::min(p.npts, p.x.size());
    for (int i = 0; i < n; ++i) x[i] = p.xmin + static_cast<float>(i) * p.step;
}

float Mean_Step(const DIFFRACTION_PATTERN_TYPE& p) {
    const int n = std::min(p.npts, p.x.size());
    if (n < 2) return 0.0f;
    return static_cast<float>((double(p.x(n)) - p.x(1)) / (n - 1));
}

std::string Keyword_Value(std::string_view rest) {
    std::string v = Trim(rest);
    if (!v.empty() && (v[0] == ':' || v[0] == '=')) v = Trim(std::string_view(v).substr(1));
    return v;
}

bool Allocate_Fixed_Step(const Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    if (p.npts <= 0 && p.step > 0.0f) p.npts = Point_Count((double(p.xmax) - p.xmin) / p.step + 1.5);
    if (p.npts <= 0 || Implausible_Count(unit, p.npts)) {
        Set_Pattern_Error(" Error in Intensity file, Number of points negative or zero!");
        return false;
    }
    Allocate_Pattern(p);
    return !ERR_Pattern;
}

namespace {

// The number that follows `key` up to the next comma or blank; false when none.
bool psi_value(std::string_view line, std::string_view key, double& v) {
    const std::size_t at = line.find(key);
    if (at == std::string_view::npos) return false;
    std::size_t p = at + key.size();
    while (p < line.size() && line[p] == ' ') ++p;
    std::size_t q = p;
    while (q < line.size() && line[q] != ',' && line[q] != ' ') ++q;
    return q > p && Parse_Real(line.substr(p, q - p), v) && std::isfinite(v);
}

}  // namespace

void Read_Psi_Lambda_Line(std::string_view line, DIFFRACTION_PATTERN_TYPE& p) {
    double v = 0.0;
    if (psi_value(line, "lambda=", v) && v > 0.0 && v < 100.0) p.lambda1 = static_cast<float>(v);
    if (line.find("lambda=") != std::string_view::npos && psi_value(line, " T=", v) && v > 0.0 && v < 1.0e5)
        p.tsamp = static_cast<float>(v);
}

void Read_Psi_Monitor(std::string_view line, DIFFRACTION_PATTERN_TYPE& p) {
    float v[4] = {0, 0, 0, 0};
    std::size_t comma = line.find(',');
    const std::string_view numbers = line.substr(0, comma);
    int got = 0;
    // "18000000." stands before the comma that opens the sample text.
    if (Read_Row_Fields(numbers, v, 4, got) && got == 4 && v[3] > 0.0f && std::isfinite(v[3])) p.monitor = v[3];
}

}  // namespace hxl
