#pragma once
// X spaces: which loads may join the store, which conversions exist between
// the spaces, and the conversion of one value, one pattern and its regions.
// No store here: callers pass records and constants and get a flag and a text.
#include <string>
#include <vector>

#include "patterns/diffraction_pattern.h"
#include "prf/prf_info.h"

namespace hxl {

inline constexpr double kTwoPi = 6.283185307179586;

enum class X_STEP { Theta_To_D, D_To_Theta, D_To_Q, Q_To_D, D_To_S, S_To_D, S_To_Q, Q_To_S, D_To_Time, Time_To_D };
enum class X_GUARD { None, Lambda, Dtt };

// A conversion from one space to another: refused with a text, or a guard
// on the constants followed by the steps applied to every value.
struct X_CONVERSION {
    bool error = false;
    std::string message;
    X_GUARD guard = X_GUARD::None;
    std::vector<X_STEP> steps;
};

// The name of the table that a scattering variable stands for ("2Theta" is
// "2theta", "d-spacing" is "d-space"); the text itself when it names none.
std::string X_Space_Name(const std::string& scat_var);

// The conversion of the whole store from `xspace` to `target`.
X_CONVERSION Conversion_Plan(const std::string& xspace, const std::string& target, bool mixed_scat_var);

// What a newly loaded pattern of `scat_var` meets in the store's space
// `present` ("----" at the first load): refused with a text, or accepted;
// `space` is the space the store takes, and `convert` holds the steps that
// bring the pattern into it (with the guard of its constants).
struct X_IDENTIFY {
    bool error = false;
    std::string message;
    std::string space;
    X_CONVERSION convert;
};
X_IDENTIFY Identify_Scat_Var(const std::string& present, const std::string& scat_var);

// Positive root d of dtt2 d^2 + dtt1 d - x = 0, free of cancellation; linear
// at |dtt2| <= 1e-6. NaN when there is no positive root.
double D_From_Time(double x, double dtt1, double dtt2);

// One value through the steps; `c1`, `c2` are lambda1 and lambda2 of the
// pattern (the wavelength, or dtt1 and dtt2). False when the input or a
// result is not a finite positive number, and x is then unchanged.
bool Convert_X_Value(double& x, const std::vector<X_STEP>& steps, double c1, double c2);

// The n points of `x` through the steps, in place and unchecked: a point
// without a value gets NaN or a value that is not positive.
void Map_X_Points(float* x, int n, const std::vector<X_STEP>& steps, double c1, double c2);

// The n points of `in` through the steps into `out`, step by step over the whole array, in
// float arithmetic for the trigonometric steps (the points are floats). 0 when every point
// converts, else the number (from 1) of the first that has no value.
int Convert_X_Points(const float* in, float* out, int n, const std::vector<X_STEP>& steps, double c1, double c2);

// The number Convert_X_Points would give, without converting when the range of the
// points shows that all of them convert.
int Unconvertible_X_Point(const float* x, int n, const std::vector<X_STEP>& steps, double c1, double c2);

// The points of the pattern through the steps in place (Map_X_Points), then
// xmin/xmax/ymin/ymax. Only after Unconvertible_X_Point found every point good.
void Convert_Points_In_Place(DIFFRACTION_PATTERN_TYPE& pattern, const std::vector<X_STEP>& steps);

// The rest of Convert_Pattern_X after the points: refl_pos of a "PRF" profile and the
// excluded regions (Convert_Excluded_Regions, whose messages go to `messages`).
void Convert_Reflections_And_Regions(const DIFFRACTION_PATTERN_TYPE& pattern, PRF_INFO_ADD_TYPE& info,
                                     const std::vector<X_STEP>& steps, std::vector<std::string>& messages);

// The first point or reflection that the steps can't convert, as a text
// naming it; empty when the whole pattern converts.
std::string Unconvertible_Point(const DIFFRACTION_PATTERN_TYPE& pattern, const PRF_INFO_ADD_TYPE& info,
                                const std::vector<X_STEP>& steps);

// Converts x (order kept), xmin/xmax/ymin/ymax, and refl_pos of a "PRF"
// profile; y, sigma, ycalc, bgr and step stay. Call Unconvertible_Point first:
// a point that fails is left as it was. The excluded regions are converted by
// Convert_Excluded_Regions, whose messages are appended to `messages`.
void Convert_Pattern_X(DIFFRACTION_PATTERN_TYPE& pattern, PRF_INFO_ADD_TYPE& info, const std::vector<X_STEP>& steps,
                       std::vector<std::string>& messages);

// The X and Y axis legends of a space; `scaled` is the plot scale flag that
// makes G(R) "G(R) x 1000". Empty texts for a name not in the table.
void X_Space_Legends(const std::string& name, bool scaled, std::string& legend_x, std::string& legend_y);

}  // namespace hxl
