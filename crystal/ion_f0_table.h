#pragma once
// Five-Gaussian f0 coefficients of ions (tools/ion_f0_table.py writes the table).
namespace hxl {

struct ION_F0_ROW {
    const char* ion;  // "Fe3+", "O2-", "Li1+"
    double a[5], b[5], c;
};
extern const ION_F0_ROW kIonF0[];
extern const int kIonF0Count;

}  // namespace hxl
