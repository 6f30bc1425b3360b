#include "support/time_stamp.h"

#include <cctype>

namespace hxl {

namespace {

// Days from 1970-01-01 of a proleptic Gregorian date (H. Hinnant's days_from_civil).
long long days_from_civil(long long y, unsigned m, unsigned d) {
    y -= m <= 2;
    const long long era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<long long>(doe) - 719468;
}

bool leap(long long y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

// Reads exactly `n` digits at `i`.
bool digits(std::string_view t, std::size_t& i, int n, int& v) {
    v = 0;
    for (int k = 0; k < n; ++k, ++i) {
        if (i >= t.size() || !std::isdigit(static_cast<unsigned char>(t[i]))) return false;
        v = v * 10 + (t[i] - '0');
    }
    return true;
}

bool expect(std::string_view t, std::size_t& i, char c) {
    if (i >= t.size() || t[i] != c) return false;
    ++i;
    return true;
}

bool compose(int y, int mo, int d, int h, int mi, double s, double& seconds) {
    static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (mo < 1 || mo > 12 || d < 1 || d > days[mo - 1] + (mo == 2 && leap(y)) || h > 23 || mi > 59 || !(s < 61))
        return false;
    seconds = static_cast<double>(days_from_civil(y, static_cast<unsigned>(mo), static_cast<unsigned>(d))) * 86400.0 +
              h * 3600.0 + mi * 60.0 + s;
    return true;
}

std::string_view trim(std::string_view t) {
    while (!t.empty() && std::isspace(static_cast<unsigned char>(t.front()))) t.remove_prefix(1);
    while (!t.empty() && std::isspace(static_cast<unsigned char>(t.back()))) t.remove_suffix(1);
    return t;
}

}  // namespace

bool Iso_Time_Seconds(std::string_view text, double& seconds) {
    const std::string_view t = trim(text);
    std::size_t i = 0;
    int y = 0, mo = 0, d = 0, h = 0, mi = 0, s = 0;
    if (!digits(t, i, 4, y) || !expect(t, i, '-') || !digits(t, i, 2, mo) || !expect(t, i, '-') || !digits(t, i, 2, d))
        return false;
    if (i >= t.size() || (t[i] != 'T' && t[i] != ' ')) return false;
    ++i;
    if (!digits(t, i, 2, h) || !expect(t, i, ':') || !digits(t, i, 2, mi) || !expect(t, i, ':') || !digits(t, i, 2, s))
        return false;
    double frac = 0;
    if (i < t.size() && t[i] == '.') {
        ++i;
        double scale = 0.1;
        const std::size_t from = i;
        for (; i < t.size() && std::isdigit(static_cast<unsigned char>(t[i])); ++i, scale /= 10) frac += (t[i] - '0') * scale;
        if (i == from) return false;
    }
    double zone = 0;
    if (i < t.size() && (t[i] == 'Z' || t[i] == 'z')) {
        ++i;
    } else if (i < t.size() && (t[i] == '+' || t[i] == '-')) {
        const int sign = t[i++] == '+' ? 1 : -1;
        int zh = 0, zm = 0;
        if (!digits(t, i, 2, zh)) return false;
        if (i < t.size() && t[i] == ':') ++i;
        if (!digits(t, i, 2, zm) || zh > 14 || zm > 59) return false;
        zone = sign * (zh * 3600.0 + zm * 60.0);
    }
    if (i != t.size()) return false;
    if (!compose(y, mo, d, h, mi, s + frac, seconds)) return false;
    seconds -= zone;
    return true;
}

bool Slash_Time_Seconds(std::string_view text, double& seconds) {
    const std::string_view t = trim(text);
    std::size_t i = 0;
    int mo = 0, d = 0, y = 0, h = 0, mi = 0, s = 0;
    if (!digits(t, i, 2, mo) || !expect(t, i, '/') || !digits(t, i, 2, d) || !expect(t, i, '/')) return false;
    const std::size_t year_at = i;
    if (!digits(t, i, 4, y)) {
        i = year_at;
        if (!digits(t, i, 2, y)) return false;
        y += 2000;
    }
    if (!expect(t, i, ' ')) return false;
    while (i < t.size() && t[i] == ' ') ++i;
    if (!digits(t, i, 2, h) || !expect(t, i, ':') || !digits(t, i, 2, mi) || !expect(t, i, ':') || !digits(t, i, 2, s) ||
        i != t.size())
        return false;
    return compose(y, mo, d, h, mi, s, seconds);
}

}  // namespace hxl
