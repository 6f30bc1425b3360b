#pragma once
// Symmetry operators: the record form, the exact form used to build groups,
// and the "x,y,z" text of both directions.
#include <string>
#include <vector>

namespace hxl {

struct SYM_OPER_TYPE {
    int rotation[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    float translation[3] = {0, 0, 0};
};

// Translations are kept exactly in 24ths of a cell edge, reduced to [0,24):
// every translation of the tabulated groups is a multiple of 1/24.
constexpr int SEITZ_DEN = 24;

struct SEITZ_TYPE {
    int r[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    int t[3] = {0, 0, 0};
    bool operator==(const SEITZ_TYPE&) const = default;
};

int Mod_Den(int t);                                      // into [0, SEITZ_DEN)
SEITZ_TYPE Seitz_Product(const SEITZ_TYPE& a, const SEITZ_TYPE& b);  // a after b
SEITZ_TYPE Seitz_Normal(SEITZ_TYPE s);                   // translation reduced
int Seitz_Det(const SEITZ_TYPE& s);
bool Seitz_Less(const SEITZ_TYPE& a, const SEITZ_TYPE& b);  // a total order for sorting
SYM_OPER_TYPE Seitz_To_Oper(const SEITZ_TYPE& s);
// False when a translation is not a multiple of 1/24.
bool Oper_To_Seitz(const SYM_OPER_TYPE& op, SEITZ_TYPE& s);

// Reads "x,y,z" text; on failure returns false with the reason in `message`.
bool Parse_Operator(const std::string& text, SYM_OPER_TYPE& op, std::string& message);
// Writes the "x,y,z" text, translations as fractions where they are ones.
std::string Format_Operator(const SYM_OPER_TYPE& op);

}  // namespace hxl
