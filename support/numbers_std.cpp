// Values with their standard uncertainty in brackets: "1.234(5)".
#include <charconv>
#include <cmath>

#include "support/fixed_text.h"
#include "support/fortran_number.h"
#include "support/text_utils.h"

namespace hxl {
namespace {

bool blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// 1.234(5): the uncertainty counts in units of the last digit of the value.
bool read_with_std(std::string_view word, float& value, float& sd) {
    const std::size_t lp = word.find('(');
    if (lp == std::string_view::npos) {
        sd = 0.0f;
        return Fortran_Real(word, 0, value);
    }
    if (lp == 0 || word.back() != ')' || word.size() < lp + 3) return false;
    const std::string_view mant = word.substr(0, lp);
    const std::string_view sdt = word.substr(lp + 1, word.size() - lp - 2);
    long long s = 0;
    for (char c : sdt) {
        if (c < '0' || c > '9') return false;
        if (s < 100000000000LL) s = s * 10 + (c - '0');
    }
    if (!Fortran_Real(mant, 0, value)) return false;
    // The power of ten of the value's last digit.
    int decimals = 0;
    long exp10 = 0;
    const std::size_t dot = mant.find('.');
    std::size_t e = mant.find_first_of("eEdD");
    if (e == std::string_view::npos) {
        // the bare signed exponent of "1.2-3"
        for (std::size_t i = 1; i < mant.size(); ++i)
            if ((mant[i] == '+' || mant[i] == '-') && mant[i - 1] >= '0' && mant[i - 1] <= '9') { e = i; break; }
    }
    const std::size_t mend = e == std::string_view::npos ? mant.size() : e;
    if (dot != std::string_view::npos && dot < mend) decimals = static_cast<int>(mend - dot - 1);
    if (e != std::string_view::npos) {
        std::string_view x = mant.substr(mant[e] == '+' || mant[e] == '-' ? e : e + 1);
        if (!x.empty() && x[0] == '+') x.remove_prefix(1);
        std::from_chars(x.data(), x.data() + x.size(), exp10);
    }
    sd = static_cast<float>(static_cast<double>(s) * std::pow(10.0, static_cast<double>(exp10 - decimals)));
    return true;
}

std::string shortest(float v) {
    char buf[64];
    auto r = std::to_chars(buf, buf + sizeof buf, v);
    return std::string(buf, r.ptr);
}

std::string fixed(double v, int decimals) {
    char buf[400];
    auto r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::fixed, decimals);
    if (r.ec != std::errc()) return "INF";
    std::string s(buf, r.ptr);
    if (s[0] == '-' && s.find_first_of("123456789") == std::string::npos) s.erase(0, 1);
    return s;
}

}  // namespace

void Getnum_Std(std::string_view line, Array1<float>& value, Array1<float>& std, int& ic) {
    Clear_String_Error();
    value.fill(0.0f);
    std.fill(0.0f);
    ic = 0;
    if (Is_Blank(line)) {
        Set_String_Error("Blank line");
        return;
    }
    const std::size_t n = line.size();
    std::size_t p = 0;
    while (true) {
        while (p < n && blank(line[p])) ++p;
        if (p >= n) break;
        std::size_t q = p;
        while (q < n && !blank(line[q])) ++q;
        const std::string_view word = line.substr(p, q - p);
        p = q;
        float v = 0.0f, s = 0.0f;
        if (!read_with_std(word, v, s)) {
            Set_String_Error("Bad format");
            return;
        }
        if (ic >= value.size() || ic >= std.size()) {
            Set_String_Error("Limits of digit variable exceeded in GETNUM_STD");
            return;
        }
        ++ic;
        value(ic) = v;
        std(ic) = s;
    }
    // Values without any bracket are read, but the caller hears of it.
    if (line.find('(') == std::string_view::npos) Set_String_Error("Wrong format using Standard values");
}

void SetNum_Std(float value, float std, std::string& text) {
    Clear_String_Error();
    if (std::isnan(value)) {
        text = "NaN";
        return;
    }
    if (std::isinf(value)) {
        text = value < 0 ? "-INF" : "INF";
        return;
    }
    if (std < 0.0f) {
        Set_String_Error("A negative standard deviation was passed on SetNum_Std procedure!");
        text = shortest(value);
        return;
    }
    if (std == 0.0f || !std::isfinite(std)) {
        text = shortest(value);
        return;
    }
    // One digit of uncertainty, two when the first would be a 1.
    const double s = std;
    int e = static_cast<int>(std::floor(std::log10(s)));
    const bool two = s / std::pow(10.0, e) < 2.0;
    int n = two ? 1 - e : -e;
    long long is = std::llround(s * std::pow(10.0, n));
    if (is >= (two ? 100 : 10)) {  // 9.7 rounded up to 10: one place fewer
        --n;
        is = std::llround(s * std::pow(10.0, n));
    }
    if (n > 0) {
        text = fixed(value, n) + "(" + std::to_string(is) + ")";
    } else {
        const double unit = std::pow(10.0, -n);
        text = fixed(std::round(value / unit) * unit, 0) + "(" + fixed(static_cast<double>(is) * unit, 0) + ")";
    }
}

}  // namespace hxl
