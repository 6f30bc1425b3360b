#pragma once
// Reads a hand-written file through the frame.
#include <string>

#include "patterns/read_pattern.h"
#include "test_files.h"

namespace zdtest {

inline hxl::DIFFRACTION_PATTERN_TYPE Read_Text(const std::string& name, const std::string& text,
                                               const std::string& mode) {
    hxl::DIFFRACTION_PATTERN_TYPE p;
    hxl::Read_Pattern(Scratch_File(name, text), p, mode);
    return p;
}

// "x y s" rows for i = 1..n with x = i, y = 10 i, s = 2.
inline std::string Rows(int n, int from = 1) {
    std::string s;
    for (int i = from; i < from + n; ++i)
        s += std::to_string(i) + " " + std::to_string(10 * i) + " 2\n";
    return s;
}

}  // namespace zdtest
