#pragma once
// The library's format check, called so that a check that throws on a broken
// head is a "no" and never ends the program: the library's own wrapper lets
// the exception out through a frame that cannot pass it on.
#include <istream>
#include <string>

#include <xylib/xylib.h>

namespace hxl {

inline bool Library_Check(const xylib::FormatInfo* fi, std::istream& in, std::string* details) {
    if (!fi || !fi->checker) return false;
    try {
        in.seekg(0);
        return fi->checker(in, details);
    } catch (...) {
        return false;
    }
}

}  // namespace hxl
