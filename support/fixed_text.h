#pragma once
// Fixed-length, blank-padded text fields are kept as std::string: a declared
// width is a truncation rule applied where a record declares it, and
// comparisons ignore trailing blanks.
#include <string>
#include <string_view>

namespace hxl {

std::string Cut(std::string_view text, std::size_t width);   // at most `width` characters
std::string Trim(std::string_view text);                     // no leading or trailing blanks
std::string Trim_Right(std::string_view text);               // no trailing blanks
std::string Adjustl(std::string_view text);                  // no leading blanks
std::string Upper(std::string_view text);
std::string Lower(std::string_view text);
bool Same(std::string_view a, std::string_view b);           // equal but for trailing blanks
bool Is_Blank(std::string_view text);
bool Starts_With(std::string_view text, std::string_view head);

}  // namespace hxl
