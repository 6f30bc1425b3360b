#pragma once
// What the store keeps beside a pattern: file of origin, profile type,
// reflections, propagation vectors and excluded regions.
#include <string>
#include <vector>

#include "support/array1.h"

namespace hxl {

inline constexpr int kMaxExcluded = 100;

struct PRF_INFO_ADD_TYPE {
    std::string prf_name;    // 512; synthetic profiles have a bracketed name
    std::string prf_dir;     // 512; blank for synthetic profiles
    std::string header;      // 512
    std::string prf_type;    // 10: "DATA", "RIETV", "PRF", "MONO", "SMOO", "SUMM", "AVER", "DIFF", "COPY"
    std::string prf_format;  // 30: format row name, e.g. "FreeFormat"
    int nphases = 0;
    int nrefl = 0;
    float chi2 = 0;
    Array1<int> refl_count;             // (nphases)
    std::vector<Array1<float>> kvec;    // per phase: 3*nvk values, vector j at (3*(j-1)+1 .. 3*j)
    Array1<int> refl_code;              // (nrefl)
    Array1<int> refl_kind;              // (nrefl)
    Array1<int> refl_phase;             // (nrefl)
    Array1<float> refl_pos;             // (nrefl)
    Array1<std::string> refl_label;     // (nrefl), 180 each
    int nexcl = 0;
    Array1<float> excl_low = Array1<float>(kMaxExcluded);
    Array1<float> excl_high = Array1<float>(kMaxExcluded);
    bool operator==(const PRF_INFO_ADD_TYPE&) const = default;
};

}  // namespace hxl
