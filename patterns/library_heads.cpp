#include "patterns/library_heads.h"

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

// Passes over `n` lines; false when the head ends first.
bool skip(HEAD_LINES& h, long n, std::string& why) {
    std::string s;
    for (long i = 0; i < n; ++i)
        if (!h.next(s)) return why = "the head ends at line " + std::to_string(h.line + 1), false;
    return true;
}

}  // namespace

bool Chiplot_Head_Plausible(const std::string& bytes, std::string& why) {
    HEAD_LINES h{std::istringstream(bytes)};
    std::string s;
    if (!skip(h, 3, why) || !h.next(s)) return why = "the head ends before its point count", false;
    long lines = 1;
    for (char c : bytes) lines += c == '\n' || c == '\r';
    // "npts" or "npts ncols": every count of the line is checked.
    std::istringstream counts(s);
    std::string word;
    int k = 0;
    for (; counts >> word; ++k) {
        if (k >= 2 || word.size() > 9 || word.find_first_not_of("0123456789") != std::string::npos)
            return why = "line 4 should hold the number of points", false;
        if (std::stol(word) > (k == 0 ? lines : 64)) return why = "line 4 counts more than the file holds", false;
    }
    if (k == 0) return why = "line 4 should hold the number of points", false;
    return true;
}

}  // namespace hxl
