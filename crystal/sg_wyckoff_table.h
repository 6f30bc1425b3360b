#pragma once
// Asymmetric-unit boxes and special Wyckoff positions of the tabulated
// settings (generated data, parallel to sg_setting_rows).

namespace hxl {

struct SG_ASU_ROW {
    const char* hm;    // the setting's symbol, to check the rows line up
    int upper[3];      // the box is 0 <= x <= upper/24 along each axis
    bool closed[3];    // false when the upper face itself is not part of the unit
};

struct SG_WYCKOFF_ROW {
    int setting;              // row of sg_setting_rows (0-based)
    int multiplicity;         // in the conventional cell
    char letter;
    const char* site_symmetry;  // oriented symbol, ".-3m"
    int r[9];                 // representative triplet: r (x,y,z) + t/24
    int t[3];
};

extern const SG_ASU_ROW sg_asu_rows[];
extern const SG_WYCKOFF_ROW sg_wyckoff_rows[];
extern const int sg_wyckoff_count;

}  // namespace hxl
