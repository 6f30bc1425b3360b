#include "support/fortran_number.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace hxl {
namespace {

constexpr int kMaxDigits = 120;  // significant digits kept; more cannot change a double

bool special(std::string_view t, bool negative, double& v) {
    auto same = [](std::string_view a, std::string_view b) {
        if (a.size() != b.size()) return false;
        for (std::size_t i = 0; i < a.size(); ++i) {
            char c = a[i];
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
            if (c != b[i]) return false;
        }
        return true;
    };
    if (same(t, "INF") || same(t, "INFINITY")) {
        v = negative ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
        return true;
    }
    if (same(t, "NAN")) {
        v = std::numeric_limits<double>::quiet_NaN();
        return true;
    }
    return false;
}

// Most count data: a plain decimal of at most 7 significant digits and 10
// decimals. The mantissa and the power of ten are then exact, and one division
// rounds correctly, so the general path is not needed. False: not such a number.
template <class T>
bool plain_decimal(std::string_view t, int implied, T& value) {
    static constexpr double pow10[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10};
    const char* c = t.data();
    const char* end = c + t.size();
    const bool negative = c < end && *c == '-';
    if (negative || (c < end && *c == '+')) ++c;
    std::uint32_t m = 0;
    int significant = 0, decimals = 0;
    bool point = false, any = false;
    for (; c < end; ++c) {
        const unsigned d = static_cast<unsigned>(*c - '0');
        if (d < 10) {
            any = true;
            if (m != 0 || d != 0) {
                if (++significant > 7) return false;
            }
            m = m * 10u + d;
            decimals += point;
        } else if (*c == '.' && !point) {
            point = true;
        } else {
            return false;
        }
    }
    if (!any) return false;
    if (!point) decimals = implied;
    if (decimals > 10) return false;
    T v;
    if constexpr (std::is_same_v<T, float>)
        v = static_cast<float>(m) / static_cast<float>(pow10[decimals]);
    else
        v = static_cast<double>(m) / pow10[decimals];
    value = negative ? -v : v;
    return true;
}

template <class T>
bool parse(std::string_view t, int implied, T& value) {
    if (implied >= 0 && plain_decimal(t, implied, value)) return true;
    std::size_t i = 0;
    const std::size_t n = t.size();
    bool negative = false;
    if (i < n && (t[i] == '+' || t[i] == '-')) negative = t[i++] == '-';
    if (i < n && !(t[i] >= '0' && t[i] <= '9') && t[i] != '.') {
        double v;
        if (!special(t.substr(i), negative, v)) return false;
        value = static_cast<T>(v);
        return true;
    }
    // Significant digits and the power of ten of the last one kept.
    char digits[kMaxDigits + 1];
    int ndig = 0;
    long long scale = 0;  // value = digits * 10^scale
    bool point = false, any = false;
    for (; i < n; ++i) {
        char c = t[i];
        if (c >= '0' && c <= '9') {
            any = true;
            if (ndig == 0 && c == '0') {
                if (point) --scale;
                continue;
            }
            if (ndig < kMaxDigits) {
                digits[ndig++] = c;
                if (point) --scale;
            } else if (!point) {
                ++scale;
            }
            continue;
        }
        if (c == '.' && !point) { point = true; continue; }
        break;
    }
    if (!any) return false;
    if (!point) scale -= implied;
    if (i < n) {
        char c = t[i];
        bool letter = c == 'e' || c == 'E' || c == 'd' || c == 'D' || c == 'q' || c == 'Q';
        if (!letter && c != '+' && c != '-') return false;
        if (letter) ++i;
        bool eneg = false;
        if (i < n && (t[i] == '+' || t[i] == '-')) eneg = t[i++] == '-';
        if (i >= n) return false;
        long long e = 0;
        for (; i < n; ++i) {
            if (t[i] < '0' || t[i] > '9') return false;
            if (e < 1000000) e = e * 10 + (t[i] - '0');
        }
        scale += eneg ? -e : e;
    }
    if (ndig == 0) {
        value = negative ? -T(0) : T(0);
        return true;
    }
    const long long magnitude = scale + ndig - 1;  // decimal exponent of the leading digit
    if (magnitude > 400 || magnitude < -400) {
        T v = magnitude > 0 ? std::numeric_limits<T>::infinity() : T(0);
        value = negative ? -v : v;
        return true;
    }
    char buf[kMaxDigits + 16];
    int len = 0;
    for (int k = 0; k < ndig; ++k) buf[len++] = digits[k];
    buf[len++] = 'e';
    auto r = std::to_chars(buf + len, buf + sizeof buf, scale);
    len = static_cast<int>(r.ptr - buf);
    T v{};
    auto res = std::from_chars(buf, buf + len, v, std::chars_format::scientific);
    if (res.ec == std::errc::result_out_of_range) v = magnitude > 0 ? std::numeric_limits<T>::infinity() : T(0);
    else if (res.ec != std::errc()) return false;
    value = negative ? -v : v;
    return true;
}

}  // namespace

bool Fortran_Real(std::string_view text, int implied, double& value) { return parse(text, implied, value); }
bool Fortran_Real(std::string_view text, int implied, float& value) { return parse(text, implied, value); }

bool Fortran_Integer(std::string_view text, int& value) {
    std::size_t i = 0;
    bool negative = false;
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) negative = text[i++] == '-';
    if (i >= text.size()) return false;
    long long v = 0;
    for (; i < text.size(); ++i) {
        char c = text[i];
        if (c < '0' || c > '9') return false;
        v = v * 10 + (c - '0');
        if (v > 2147483648LL) return false;
    }
    if (negative) v = -v;
    if (v > std::numeric_limits<int>::max()) return false;
    value = static_cast<int>(v);
    return true;
}

}  // namespace hxl
