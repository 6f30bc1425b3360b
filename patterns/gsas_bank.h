#pragma once
// One bank of a file in the GSAS raw layout: the BANK line and its records
// (STD, ESD, ALT, and the free FXYE rows).
#include <string>
#include <string_view>

#include "patterns/diffraction_pattern.h"
#include "support/text_unit.h"

namespace hxl {

struct GSAS_BANK_TYPE {
    int number = 0;
    int nchan = 0;
    int nrec = 0;
    std::string bintyp;  // "CONST", "RALF", "SLOG", ...
    std::string type;    // "STD" (also when absent), "ESD", "ALT", "FXYE"
    double bcoef[4] = {0, 0, 0, 0};
};

// What the comment lines of a head tell (written by reduction programs):
// "Monitor: m", "Calibrated wavelength = l", "Wavelength: l Angstrom",
// "... DIFC c" of a time-of-flight bank, "Temp (K) = t". 0 when not given.
struct GSAS_HEAD_TYPE {
    float monitor = 0, wavelength = 0, difc = 0, temperature = 0;
};
void Read_Gsas_Head_Line(std::string_view line, GSAS_HEAD_TYPE& head);

// Fills lambda1 (the wavelength, or Dtt1 = DIFC of a time-of-flight bank),
// monitor and tsamp of a pattern from the head, where the head gives them.
void Apply_Gsas_Head(const GSAS_HEAD_TYPE& head, bool tof, DIFFRACTION_PATTERN_TYPE& pattern);

// Constant-wavelength bins ("CONST", "CONS") hold centidegrees.
bool Gsas_Const_Bins(const GSAS_BANK_TYPE& bank);

// Parses "BANK n nchan nrec BINTYP c1 c2 c3 c4 [TYPE]"; false when the words do not fit.
bool Parse_Bank_Line(std::string_view line, GSAS_BANK_TYPE& bank);

// Reads the records of a bank (the unit stands behind its BANK line) into the
// pattern. With `tof` false X is in centidegrees and becomes degrees. False
// with the message set through Set_Pattern_Error.
bool Read_Bank_Data(Text_Unit& unit, const GSAS_BANK_TYPE& bank, bool tof, DIFFRACTION_PATTERN_TYPE& pattern);

}  // namespace hxl
