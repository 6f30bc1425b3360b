#include "support/fixed_text.h"

#include <algorithm>
#include <cctype>

namespace hxl {
namespace {
bool blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\0'; }
}  // namespace

std::string Cut(std::string_view text, std::size_t width) {
    return std::string(text.substr(0, std::min(width, text.size())));
}

std::string Trim_Right(std::string_view text) {
    std::size_t n = text.size();
    while (n > 0 && blank(text[n - 1])) --n;
    return std::string(text.substr(0, n));
}

std::string Adjustl(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && blank(text[i])) ++i;
    return std::string(text.substr(i));
}

std::string Trim(std::string_view text) { return Trim_Right(Adjustl(text)); }

std::string Upper(std::string_view text) {
    std::string s(text);
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return s;
}

std::string Lower(std::string_view text) {
    std::string s(text);
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return s;
}

bool Same(std::string_view a, std::string_view b) { return Trim_Right(a) == Trim_Right(b); }

bool Is_Blank(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return blank(c); });
}

bool Starts_With(std::string_view text, std::string_view head) { return text.substr(0, head.size()) == head; }

}  // namespace hxl
