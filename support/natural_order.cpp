#include "support/natural_order.h"

namespace hxl {

namespace {

bool digit(char c) { return c >= '0' && c <= '9'; }
char lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

// -1, 0, 1 for a < b, equal, a > b, by the natural rule alone.
int natural_compare(std::string_view a, std::string_view b) {
    std::size_t i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        if (digit(a[i]) && digit(b[j])) {
            std::size_t ei = i, ej = j;
            while (ei < a.size() && digit(a[ei])) ++ei;
            while (ej < b.size() && digit(b[ej])) ++ej;
            std::size_t si = i, sj = j;
            while (si + 1 < ei && a[si] == '0') ++si;
            while (sj + 1 < ej && b[sj] == '0') ++sj;
            // Without leading zeros the longer run is the larger number.
            if (ei - si != ej - sj) return ei - si < ej - sj ? -1 : 1;
            for (; si < ei; ++si, ++sj)
                if (a[si] != b[sj]) return a[si] < b[sj] ? -1 : 1;
            i = ei, j = ej;
            continue;
        }
        const char ca = lower(a[i]), cb = lower(b[j]);
        if (ca != cb) return static_cast<unsigned char>(ca) < static_cast<unsigned char>(cb) ? -1 : 1;
        ++i, ++j;
    }
    if (i < a.size()) return 1;
    if (j < b.size()) return -1;
    return 0;
}

}  // namespace

bool Natural_Less(std::string_view a, std::string_view b) {
    const int c = natural_compare(a, b);
    return c != 0 ? c < 0 : a < b;
}

}  // namespace hxl
