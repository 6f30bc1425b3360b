#pragma once
// Shared body of the per-reader fuzz targets: the bytes are the whole file.
// A reader may refuse a file, never crash, and what it accepts must be whole.
#include <cstddef>
#include <cstdint>
#include <string>

#include <cmath>

#include "patterns/pattern_checks.h"
#include "patterns/pattern_readers.h"
#include "support/text_unit.h"

namespace zd_fuzz {

// Readers hold whole files in memory; larger inputs only slow the search.
constexpr std::size_t kMaxInput = 200000;

inline bool Load_Unit(const uint8_t* data, std::size_t size, hxl::Text_Unit& unit) {
    if (size > kMaxInput) return false;
    unit.Set_Text(std::string(reinterpret_cast<const char*>(data), size));
    return true;
}

// What the frame's callers rely on after a read that reported success.
inline void Check_Pattern(const hxl::DIFFRACTION_PATTERN_TYPE& p) {
    if (hxl::ERR_Pattern || p.npts < 1) return;
    const auto n = static_cast<std::size_t>(p.npts);
    if (p.x.size() < n || p.y.size() < n || p.sigma.size() < n) __builtin_trap();
}

// The frame's own checks after a read: what passes them is finite and ascending when reversed.
inline void Check_Frame(hxl::DIFFRACTION_PATTERN_TYPE& p, const hxl::Text_Unit& unit) {
    Check_Pattern(p);
    if (hxl::ERR_Pattern || p.npts < 1) return;
    if (!hxl::Check_Finite_Values(p, unit.Text())) return;
    hxl::Make_X_Ascending(p);
    for (int i = 1; i <= p.npts; ++i)
        if (!std::isfinite(p.x(i)) || !std::isfinite(p.y(i)) || !std::isfinite(p.sigma(i))) __builtin_trap();
}

// Runs one single-pattern reader on the input and checks its result.
template <class Reader>
int Run_Reader(const uint8_t* data, std::size_t size, Reader reader) {
    hxl::Text_Unit unit;
    if (!Load_Unit(data, size, unit)) return 0;
    hxl::DIFFRACTION_PATTERN_TYPE p;
    reader(unit, p);
    Check_Frame(p, unit);
    return 0;
}

// A reader of files of several blocks: the first, then a few more, each on a rewound unit.
template <class Reader>
int Run_Block_Reader(const uint8_t* data, std::size_t size, Reader reader) {
    hxl::Text_Unit unit;
    if (!Load_Unit(data, size, unit)) return 0;
    int nblocks = 0;
    for (int b = 1; b <= 4; ++b) {
        unit.Rewind();
        hxl::DIFFRACTION_PATTERN_TYPE p;
        int n = 0;
        reader(unit, p, b, n);
        if (b == 1) nblocks = n;
        Check_Frame(p, unit);
        if (b >= nblocks) break;
    }
    return 0;
}

}  // namespace zd_fuzz
