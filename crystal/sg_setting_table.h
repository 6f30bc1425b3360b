#pragma once
// The tabulated settings of the 230 space groups (generated data).

namespace hxl {

struct SG_SETTING_ROW {
    int number;
    const char* hm;       // Hermann-Mauguin symbol, blanks between directions
    const char* choice;   // origin choice "1"/"2" or axes "H"/"R"
    const char* code;     // unique axis and cell choice or axis permutation: "b1", "cab", ...
    const char* hall;     // Hall symbol
};

extern const SG_SETTING_ROW sg_setting_rows[];
extern const int sg_setting_count;

}  // namespace hxl
