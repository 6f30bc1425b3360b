#include "support/list_read.h"

#include <type_traits>

#include "support/fortran_number.h"

namespace hxl {
namespace {

// Character classes, looked up once a character: the scan of a large file is
// most of the cost of reading it.
enum : unsigned char { kPart = 0, kBlank = 1, kEnd = 2, kStar = 3 };
struct Classes {
    unsigned char of[256];
    constexpr Classes() : of{} {
        for (int c = 0; c < 256; ++c) of[c] = kPart;
        of[static_cast<unsigned char>(' ')] = of[static_cast<unsigned char>('\t')] = kBlank;
        of[static_cast<unsigned char>('\r')] = of[static_cast<unsigned char>('\n')] = of[0] = kBlank;
        of[static_cast<unsigned char>(',')] = of[static_cast<unsigned char>('/')] = kEnd;
        of[static_cast<unsigned char>('*')] = kStar;
    }
};
constexpr Classes kClasses;
inline unsigned char class_of(char c) { return kClasses.of[static_cast<unsigned char>(c)]; }
inline bool is_sep_blank(char c) { return class_of(c) == kBlank; }

template <class T>
bool parse_real(std::string_view w, T& value) { return Fortran_Real(w, 0, value); }

bool parse_int(std::string_view w, int& value) { return Fortran_Integer(w, value); }

template <class T>
bool parse_value(std::string_view w, T& v) {
    if constexpr (std::is_same_v<T, int>) return parse_int(w, v);
    else return parse_real(w, v);
}

// Lines come from a unit or from one internal text.
struct Unit_Lines {
    Text_Unit& unit;
    bool next(std::string_view& line) { return unit.Read_Line(line); }
};
struct Single_Line {
    std::string_view text;
    bool used = false;
    bool next(std::string_view& line) {
        if (used) return false;
        used = true;
        line = text;
        return true;
    }
};

template <class T, class Lines>
List_Result list_read(Lines& lines, T* out, int n) {
    if (n <= 0) return List_Result::Ok;
    std::string_view line;
    std::size_t p = 0;
    bool have = false;
    bool seen_value = false;  // a value since the last comma
    int k = 0;
    while (k < n) {
        if (!have || p >= line.size()) {
            if (!lines.next(line)) return List_Result::End_Of_File;
            have = true;
            p = 0;
            continue;
        }
        const char* s = line.data();
        const std::size_t len = line.size();
        while (p < len && is_sep_blank(s[p])) ++p;
        if (p >= len) continue;
        char c = s[p];
        if (c == ',') {
            if (!seen_value) ++k;  // null value: the variable keeps its value
            seen_value = false;
            ++p;
            continue;
        }
        if (c == '/') return List_Result::Ok;
        std::size_t q = p;
        std::size_t star = std::string_view::npos;
        for (; q < len; ++q) {
            const unsigned char k2 = class_of(s[q]);
            if (k2 == kPart) continue;
            if (k2 != kStar) break;
            if (star == std::string_view::npos) star = q - p;
        }
        std::string_view tok(s + p, q - p);
        p = q;
        seen_value = true;
        if (star == std::string_view::npos) {
            if (!parse_value(tok, out[k])) return List_Result::Bad_Value;
            ++k;
            continue;
        }
        int r = 0;
        if (!parse_int(tok.substr(0, star), r) || r <= 0) return List_Result::Bad_Value;
        std::string_view val = tok.substr(star + 1);
        if (val.empty()) {  // r* : r null values
            k = (r >= n - k) ? n : k + r;
            continue;
        }
        T v{};
        if (!parse_value(val, v)) return List_Result::Bad_Value;
        for (int j = 0; j < r && k < n; ++j) out[k++] = v;
    }
    return List_Result::Ok;
}

}  // namespace

List_Result List_Read(Text_Unit& unit, float* out, int n) { Unit_Lines l{unit}; return list_read(l, out, n); }
List_Result List_Read(Text_Unit& unit, double* out, int n) { Unit_Lines l{unit}; return list_read(l, out, n); }
List_Result List_Read(Text_Unit& unit, int* out, int n) { Unit_Lines l{unit}; return list_read(l, out, n); }
List_Result List_Read(std::string_view text, float* out, int n) { Single_Line l{text}; return list_read(l, out, n); }
List_Result List_Read(std::string_view text, double* out, int n) { Single_Line l{text}; return list_read(l, out, n); }
List_Result List_Read(std::string_view text, int* out, int n) { Single_Line l{text}; return list_read(l, out, n); }

bool Parse_Real(std::string_view word, double& value) { return parse_real(word, value); }
bool Parse_Real(std::string_view word, float& value) { return parse_real(word, value); }
bool Parse_Integer(std::string_view word, int& value) { return parse_int(word, value); }

}  // namespace hxl
