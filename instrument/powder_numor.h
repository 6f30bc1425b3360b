#pragma once
// One run of a powder instrument, read from the blocks of its numor file.
#include <array>
#include <string>

#include "instrument/array2.h"

namespace hxl {

struct POWDER_NUMOR_TYPE {
    int numor = 0;
    int principal_angle = 0;
    int calc_angle_type = 0;
    std::string header;      // 32: user and date
    std::string instrument;  // 12
    std::string title;       // 32
    std::string scan_type;   // 8
    std::array<float, 5> angles{};       // phi, chi, omega, gamma, psi
    std::array<float, 3> scan_values{};  // start, step, width (index 0 is the start)
    float monitor = 0;
    float time = 0;
    float wavelength = 0;
    std::array<float, 5> sample_env{};  // Temp-SETPNT, Temp-REGUL., Temp-SAMPLE, voltmeter, Magnetic Field
    int n_pixels = 0;
    int n_frames = 0;
    int n_angles = 0;
    std::array<int, 11> int_desc{};
    Array2<float> frame_params;  // (rows, n_frames): time, monitor, then angles
    Array2<float> counts;        // (n_pixels, n_frames)
};

inline constexpr std::size_t kNumorHeaderLen = 32, kNumorInstrLen = 12, kNumorTitleLen = 32, kScanTypeLen = 8;

// The five instrument readers; each fills `numor` from the file at `path` and
// reports through the module's error pair. With nrf_header_only set they stop
// before the counts.
void Read_Numor_KV7(const std::string& path, POWDER_NUMOR_TYPE& numor);
void Read_Numor_KV8(const std::string& path, POWDER_NUMOR_TYPE& numor);
void Read_Numor_KV9(const std::string& path, POWDER_NUMOR_TYPE& numor);
void Read_Numor_KW1(const std::string& path, POWDER_NUMOR_TYPE& numor);
void Read_Numor_KW2(const std::string& path, POWDER_NUMOR_TYPE& numor);

// Picks the reader from the instrument name (KV7, KV8, KV9, KW1, KW2).
void Read_Powder_Numor(const std::string& path, const std::string& instrument, POWDER_NUMOR_TYPE& numor,
                       bool header_only = false);

}  // namespace hxl
