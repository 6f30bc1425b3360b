#pragma once
// The head of a single-crystal numor (KS1, KS2, KS4, KS5). The frames
// themselves are read by the 2D detector viewer.
#include <array>
#include <string>

namespace hxl {

struct SXTAL_NUMOR_TYPE {
    int numor = 0;
    int principal_angle = 0;
    int n_angles = 0;
    int n_frames = 0;
    int calc_angle_type = 0;
    int n_pixels = 0;
    std::array<int, 7> int_desc{};  // I values 25..31
    std::string header;             // 32
    std::string instrument;         // 12
    std::string title;              // 60
    std::string scan_type;          // 8
    std::array<float, 3> hmin{}, hmax{}, dh{};
    std::array<float, 5> angles{};  // phi, chi, omega, gamma, psi
    std::array<float, 9> ub{};      // by rows
    float wavelength = 0;
    std::array<float, 3> scan_values{};  // start, step, width
    float preset = 0;
    std::array<float, 2> further_reals{};  // F values 30 and 43
    std::array<float, 5> sample_env{};
};

// Reads the head of a single-crystal numor; the instrument name picks the test.
void Read_Sxtal_Numor(const std::string& path, const std::string& instrument, SXTAL_NUMOR_TYPE& numor,
                      bool header_only = true);

}  // namespace hxl
