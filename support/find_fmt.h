#pragma once
// Builds the edit-descriptor format that reads a data line, field by field:
// the caller names the kind of each field (I integer, F real with or without
// exponent, A a word of text) and the widths come from the blanks of the line.
// Each numeric field takes the blanks before it; a text field gets an nX for
// them. The status and its text stay in `ierr_fmt` and `mess_findfmt`.
#include <string>
#include <string_view>

#include "support/text_unit.h"

namespace hxl {

enum FindFMT_Status : int {
    FindFMT_End_Of_File = -1,
    FindFMT_No_Error = 0,
    FindFMT_Empty_Format = 1,
    FindFMT_Read_Error = 2,
    FindFMT_Integer_Found_Real = 3,
    FindFMT_Begged_Character = 4,
    FindFMT_Invalid_Integer_Char = 5,
    FindFMT_Invalid_Field = 6,
    FindFMT_Invalid_Numeric_Char = 7,
    FindFMT_No_Character = 8,
    FindFMT_Length_Exceeded = 9,
    FindFMT_Separator_Missing = 10,
    FindFMT_Incomplete_Exponent = 11,
    FindFMT_Incomplete_Number = 12,
};

extern int ierr_fmt;
extern std::string mess_findfmt;

constexpr std::size_t kFindFMT_Max_Length = 256;  // of the format built

// Reads the next line that is not blank from `unit` into `line` and builds
// `format` for the kinds in `fields` ("IFFA", case ignored).
void FindFMT(Text_Unit& unit, std::string& line, std::string_view fields, std::string& format);

// The same on a line already at hand.
void FindFMT(std::string_view line, std::string_view fields, std::string& format);

}  // namespace hxl
