#pragma once
// The position under the mouse told in several X spaces at once, and the ticks of a
// second X axis in another space, both from the constants of one pattern.
#include <string>
#include <vector>

namespace hxl {

// One value of the read-out: the space ("2theta", "Omega", "TOF", "Energy", "d-space",
// "q-space", "s-space") and the position in it.
struct X_READING {
    std::string space;
    double value = 0;
};

// The position x of the store's space `present` in every space that the pattern's constants
// allow: its space of origin `origin` (its scat_var) when the wavelength, or dtt1 and dtt2,
// `c1` and `c2` are usable, then d and Q, and s in s-space. Only `present` itself when
// x has no d.
std::vector<X_READING> X_Readings(const std::string& present, const std::string& origin, double x, double c1,
                                  double c2);

// The readings as one line, e.g. "2theta 28.442 | d 3.1356 A | Q 2.0038 A-1".
std::string X_Readout_Text(const std::vector<X_READING>& readings);

// A tick of the second X axis: a round value of its space, and where it lies on the X of the frame.
struct X_TICK {
    double value = 0;
    double x = 0;
    int decimals = 0;  // that show the value exactly
};

// Ticks of a second axis in the space `unit` ("d-space", "q-space", "2theta", ...) along the
// frame [xmin, xmax] of the space `present`, from the pattern's constants (as in X_Readings).
// Round values, steps of 1 and 5 of a decade, the coarsest whose neighbours lie at least
// `gap` (a fraction of the frame's width) apart, so that a non-linear axis gets finer steps
// where it is stretched. Empty when the constants don't allow `unit` or unit is `present`.
std::vector<X_TICK> Second_Axis_Ticks(const std::string& present, const std::string& origin, const std::string& unit,
                                      double xmin, double xmax, double c1, double c2, double gap);

// Whether the constants of a pattern of scat_var `origin` lead from `present` to `unit`.
bool Second_Axis_Allowed(const std::string& present, const std::string& origin, const std::string& unit, double c1,
                         double c2);

}  // namespace hxl
