#include "support/list_read.h"

#include <charconv>
#include <cstring>
#include <limits>

namespace hxl {
namespace {

inline bool is_sep_blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\0'; }
inline bool ends_token(char c) { return is_sep_blank(c) || c == ',' || c == '/'; }

// Rewrites a Fortran real into the syntax from_chars accepts: no leading '+',
// 'D'/'d'/'Q' exponents as 'e', and the bare signed exponent of "1.0+3".
bool normalise(std::string_view w, char* buf, std::size_t cap, std::size_t& len) {
    len = 0;
    std::size_t i = 0;
    if (i < w.size() && (w[i] == '+' || w[i] == '-')) {
        if (w[i] == '-') buf[len++] = '-';
        ++i;
    }
    bool mantissa = true, digits = false;
    for (; i < w.size(); ++i) {
        if (len + 2 >= cap) return false;
        char c = w[i];
        if (c >= '0' && c <= '9') { buf[len++] = c; digits = true; continue; }
        if (c == '.' && mantissa) { buf[len++] = c; continue; }
        if (mantissa && (c == 'd' || c == 'D' || c == 'e' || c == 'E' || c == 'q' || c == 'Q')) {
            if (!digits) return false;
            buf[len++] = 'e';
            mantissa = false;
            if (i + 1 < w.size() && w[i + 1] == '+') ++i;
            continue;
        }
        if (mantissa && digits && (c == '+' || c == '-')) {
            buf[len++] = 'e';
            if (c == '-') buf[len++] = '-';
            mantissa = false;
            continue;
        }
        if (!mantissa && c == '-' && buf[len - 1] == 'e') { buf[len++] = c; continue; }
        return false;
    }
    return digits;
}

template <class T>
bool parse_real(std::string_view w, T& value) {
    if (w.empty()) return false;
    const char* b = w.data();
    const char* e = b + w.size();
    if (*b != '+') {
        auto r = std::from_chars(b, e, value, std::chars_format::general);
        if (r.ec == std::errc() && r.ptr == e) return true;
        if (r.ec == std::errc::result_out_of_range) {
            value = std::numeric_limits<T>::infinity();  // overflow reads as an infinite value
            return true;
        }
    }
    char buf[128];
    std::size_t len;
    if (!normalise(w, buf, sizeof buf, len)) return false;
    auto r = std::from_chars(buf, buf + len, value, std::chars_format::general);
    if (r.ec == std::errc::result_out_of_range) {
        value = (buf[0] == '-') ? -std::numeric_limits<T>::infinity() : std::numeric_limits<T>::infinity();
        return true;
    }
    return r.ec == std::errc() && r.ptr == buf + len;
}

bool parse_int(std::string_view w, int& value) {
    if (!w.empty() && w.front() == '+') w.remove_prefix(1);
    if (w.empty()) return false;
    auto r = std::from_chars(w.data(), w.data() + w.size(), value);
    return r.ec == std::errc() && r.ptr == w.data() + w.size();
}

template <class T>
bool parse_value(std::string_view w, T& v) {
    if constexpr (std::is_same_v<T, int>) return parse_int(w, v);
    else return parse_real(w, v);
}

// Lines come from a unit or from one internal text.
struct Unit_Lines {
    Text_Unit& unit;
    bool next(std::string_view& line) { return unit.Read_Line(line); }
};
struct Single_Line {
    std::string_view text;
    bool used = false;
    bool next(std::string_view& line) {
        if (used) return false;
        used = true;
        line = text;
        return true;
    }
};

template <class T, class Lines>
List_Result list_read(Lines& lines, T* out, int n) {
    if (n <= 0) return List_Result::Ok;
    std::string_view line;
    std::size_t p = 0;
    bool have = false;
    bool seen_value = false;  // a value since the last comma
    int k = 0;
    while (k < n) {
        if (!have || p >= line.size()) {
            if (!lines.next(line)) return List_Result::End_Of_File;
            have = true;
            p = 0;
            continue;
        }
        const char* s = line.data();
        const std::size_t len = line.size();
        while (p < len && is_sep_blank(s[p])) ++p;
        if (p >= len) continue;
        char c = s[p];
        if (c == ',') {
            if (!seen_value) ++k;  // null value: the variable keeps its value
            seen_value = false;
            ++p;
            continue;
        }
        if (c == '/') return List_Result::Ok;
        std::size_t q = p;
        while (q < len && !ends_token(s[q])) ++q;
        std::string_view tok(s + p, q - p);
        p = q;
        seen_value = true;
        std::size_t star = tok.find('*');
        if (star == std::string_view::npos) {
            if (!parse_value(tok, out[k])) return List_Result::Bad_Value;
            ++k;
            continue;
        }
        int r = 0;
        if (!parse_int(tok.substr(0, star), r) || r <= 0) return List_Result::Bad_Value;
        std::string_view val = tok.substr(star + 1);
        if (val.empty()) {  // r* : r null values
            k = (r >= n - k) ? n : k + r;
            continue;
        }
        T v{};
        if (!parse_value(val, v)) return List_Result::Bad_Value;
        for (int j = 0; j < r && k < n; ++j) out[k++] = v;
    }
    return List_Result::Ok;
}

}  // namespace

List_Result List_Read(Text_Unit& unit, float* out, int n) { Unit_Lines l{unit}; return list_read(l, out, n); }
List_Result List_Read(Text_Unit& unit, double* out, int n) { Unit_Lines l{unit}; return list_read(l, out, n); }
List_Result List_Read(Text_Unit& unit, int* out, int n) { Unit_Lines l{unit}; return list_read(l, out, n); }
List_Result List_Read(std::string_view text, float* out, int n) { Single_Line l{text}; return list_read(l, out, n); }
List_Result List_Read(std::string_view text, double* out, int n) { Single_Line l{text}; return list_read(l, out, n); }
List_Result List_Read(std::string_view text, int* out, int n) { Single_Line l{text}; return list_read(l, out, n); }

bool Parse_Real(std::string_view word, double& value) { return parse_real(word, value); }
bool Parse_Real(std::string_view word, float& value) { return parse_real(word, value); }
bool Parse_Integer(std::string_view word, int& value) { return parse_int(word, value); }

}  // namespace hxl
