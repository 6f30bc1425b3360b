#include "patterns/pattern_checks.h"

#include <algorithm>
#include <cerrno>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <string>

#include "support/fixed_text.h"

namespace hxl {
namespace {

bool separator(char c) {
    return c == ' ' || c == '\t' || c == ',' || c == ';' || c == '\r' || c == '\n' || c == '<' || c == '>' ||
           c == '(' || c == ')' || c == '=' || c == '"' || c == '\'';
}

// True when the whole token reads as a number (strtod's grammar, which takes
// "nan", "inf" and "infinity" too) whose value is no finite float.
bool bad_number(std::string_view token) {
    if (token.empty() || token.size() > 64) return false;
    const char c = token[0];
    const bool numeric_start = (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.' || c == 'n' || c == 'N' ||
                               c == 'i' || c == 'I';
    if (!numeric_start) return false;
    const std::string s(token);
    char* end = nullptr;
    errno = 0;
    const double v = std::strtod(s.c_str(), &end);
    if (end != s.c_str() + s.size()) {
        // Fortran writes exponents with D: 1.0D+40
        std::string d = s;
        std::replace(d.begin(), d.end(), 'D', 'E');
        std::replace(d.begin(), d.end(), 'd', 'e');
        end = nullptr;
        const double w = std::strtod(d.c_str(), &end);
        if (end != d.c_str() + d.size()) return false;
        return !std::isfinite(w) || std::fabs(w) > FLT_MAX;
    }
    return !std::isfinite(v) || std::fabs(v) > FLT_MAX;
}

template <class T>
int first_bad(const Array1<T>& a, int n) {
    const int m = std::min(n, a.size());
    for (int i = 1; i <= m; ++i)
        if (!std::isfinite(static_cast<double>(a(i)))) return i;
    return 0;
}

template <class T>
void reverse(Array1<T>& a, int n) {
    if (a.size() >= n && n > 1) std::reverse(a.data(), a.data() + n);
}

}  // namespace

BAD_NUMBER_TYPE Find_Bad_Number(std::string_view text) {
    int line = 1;
    std::size_t i = 0;
    const std::size_t n = text.size();
    while (i < n) {
        // one line
        std::size_t e = i;
        while (e < n && text[e] != '\n' && text[e] != '\r') ++e;
        std::string_view l = text.substr(i, e - i);
        std::size_t k = l.find_first_not_of(" \t");
        const bool comment = k != std::string_view::npos && (l[k] == '#' || l[k] == '!');
        if (!comment) {
            std::size_t p = 0;
            while (p < l.size()) {
                while (p < l.size() && separator(l[p])) ++p;
                std::size_t q = p;
                while (q < l.size() && !separator(l[q])) ++q;
                if (q > p && bad_number(l.substr(p, q - p))) return {line, l.substr(p, q - p)};
                p = q;
            }
        }
        if (e < n && text[e] == '\r' && e + 1 < n && text[e + 1] == '\n') ++e;
        i = e + 1;
        ++line;
    }
    return {};
}

bool Check_Finite_Values(const DIFFRACTION_PATTERN_TYPE& p, std::string_view text) {
    const int n = p.npts;
    int at = first_bad(p.x, n);
    const char* what = "X";
    for (auto [arr, name] : {std::pair{&p.y, "Y"}, std::pair{&p.sigma, "sigma"}, std::pair{&p.ycalc, "Ycalc"},
                             std::pair{&p.bgr, "background"}}) {
        if (at) break;
        at = first_bad(*arr, n);
        what = name;
    }
    const float head[] = {p.xmin, p.xmax, p.step, p.monitor, p.lambda1, p.lambda2};
    const bool head_bad = std::any_of(std::begin(head), std::end(head), [](float v) { return !std::isfinite(v); });
    if (!at && !head_bad) return true;
    const BAD_NUMBER_TYPE bad = Find_Bad_Number(text);
    if (bad.line > 0) {
        Set_Pattern_Error(" Error in Intensity file, line " + std::to_string(bad.line) + ": the value \"" +
                          std::string(bad.token.substr(0, 24)) + "\" is not a finite number of the 32-bit range");
    } else if (at) {
        Set_Pattern_Error(" Error in Intensity file, point " + std::to_string(at) + ": the " + what +
                          " value is not a finite number of the 32-bit range");
    } else {
        Set_Pattern_Error(" Error in Intensity file: a value of its head is not a finite number of the 32-bit range");
    }
    return false;
}

bool Make_X_Ascending(DIFFRACTION_PATTERN_TYPE& p) {
    const int n = p.npts;
    if (n < 2 || p.x.size() < n || !(p.x(1) > p.x(n))) return false;
    for (int i = 1; i < n; ++i)
        if (p.x(i + 1) > p.x(i)) return false;
    Reverse_Points(p);
    return true;
}

void Reverse_Points(DIFFRACTION_PATTERN_TYPE& p) {
    const int n = p.npts;
    if (n < 2 || p.x.size() < n) return;
    reverse(p.x, n);
    reverse(p.y, n);
    reverse(p.sigma, n);
    reverse(p.ycalc, n);
    reverse(p.bgr, n);
    reverse(p.istat, n);
    reverse(p.aux, n);
    p.xmin = p.x(1);
    p.xmax = p.x(n);
    p.step = std::fabs(p.step);
}

}  // namespace hxl
