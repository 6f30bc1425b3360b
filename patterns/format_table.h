#pragma once
// The 16 rows of the instrument-code table: mode names, the labels of the
// dialog "Format of the data file", and the code texts written into `instr`.
#include <array>
#include <string>
#include <string_view>

namespace hxl {

struct FORMAT_ROW_TYPE {
    std::string_view mode;    // 15 characters at most
    std::string_view label;   // radio button of the format dialog
    std::string_view code;    // code text; all but row 1 are followed by the mode
};

inline constexpr int kFormatRows = 16;
inline constexpr int kRowFree = 1, kRowSocabim = 8, kRowXYSigma = 9, kRowPanalytical = 12, kRowIsis = 14,
                     kRowCif = 15,
                     kRowLibrary = 16;

const std::array<FORMAT_ROW_TYPE, kFormatRows>& Format_Rows();
const FORMAT_ROW_TYPE& Format_Row(int row);  // 1-based

// The row chosen by a file's extension ("." and after, any case), or 0 when
// the extension is not in the table and the user must be asked.
int Format_Row_From_Extension(std::string_view extension);

// Vendor formats read through the "Other formats (library)" row: binary and
// text exports of other diffractometers, and Rigaku SmartLab ".ras".
bool Is_Library_Extension(std::string_view extension);

// JCAMP-DX files: ".jcp" as the vendor writes them, ".jdx" and ".dx" as converters do.
bool Is_Jcamp_Extension(std::string_view extension);

// Extension of a file name from its last ".", upper-cased, cut to 10 characters; blank when none.
std::string Upper_Extension(std::string_view filename);

// The row whose mode name equals `mode` (any case), or 0.
int Format_Row_From_Mode(std::string_view mode);

}  // namespace hxl
