#include "patterns/vamas_head.h"

#include <sstream>
#include <string>

#include "support/fixed_text.h"

namespace hxl {
namespace {

struct HEAD_LINES {
    std::istringstream in;
    int line = 0;
    bool next(std::string& s) {
        if (!std::getline(in, s)) return false;
        ++line;
        if (!s.empty() && s.back() == '\r') s.pop_back();
        return true;
    }
};

// The next line as a count in [0, limit]; false for anything else.
bool count(HEAD_LINES& h, long limit, long& v, std::string& why) {
    std::string s;
    if (!h.next(s)) return why = "the head ends at line " + std::to_string(h.line + 1), false;
    const std::string t = Trim(s);
    if (t.empty() || t.size() > 9 || t.find_first_not_of("0123456789") != std::string::npos)
        return why = "line " + std::to_string(h.line) + " should hold a count", false;
    v = std::stol(t);
    if (v > limit) return why = "the count " + t + " of line " + std::to_string(h.line) + " is out of reason", false;
    return true;
}

bool skip(HEAD_LINES& h, long n, std::string& why) {
    std::string s;
    for (long i = 0; i < n; ++i)
        if (!h.next(s)) return why = "the head ends at line " + std::to_string(h.line + 1), false;
    return true;
}

}  // namespace

bool Vamas_Head_Plausible(const std::string& bytes, std::string& why) {
    HEAD_LINES h{std::istringstream(bytes)};
    long n = 0;
    std::string mode, s;
    if (!skip(h, 5, why) || !count(h, 10000, n, why) || !skip(h, n, why) || !h.next(mode) || !skip(h, 1, why))
        return false;
    mode = Trim(mode);
    const bool map = mode == "MAP" || mode == "MAPDP" || mode == "MAPSV" || mode == "MAPSVDP" || mode == "SEM";
    if (map || mode == "NORM" || mode == "SDP" || mode == "SDPSV")
        if (!count(h, 100000, n, why)) return false;  // spectral regions
    if (map)
        for (int k = 0; k < 3; ++k)
            if (!count(h, 10000000, n, why)) return false;  // analysis positions, discrete x and y
    if (!count(h, 1000, n, why) || !skip(h, 2 * n, why)) return false;  // experimental variables
    if (!count(h, 100000, n, why) || !skip(h, n, why)) return false;    // parameter inclusion list
    if (!count(h, 100000, n, why) || !skip(h, n, why)) return false;    // manually entered items
    if (!count(h, 100000, n, why) || !skip(h, n, why)) return false;    // future upgrade experiment entries
    return count(h, 100000, n, why) && count(h, 1000000, n, why);     // future block entries, blocks
}

}  // namespace hxl
