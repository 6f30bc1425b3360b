#pragma once
// The space group record and its front door: a symbol, number or list of
// generators becomes the complete list of operators with its descriptors.
#include <ostream>
#include <string>
#include <vector>

#include "crystal/sym_oper.h"
#include "support/array1.h"

namespace hxl {

struct LATTICE_CENTRING_TYPE {
    char letter = 'P';
    std::vector<SEITZ_TYPE> translations;  // without the null one
};

// A special Wyckoff position of a tabulated setting.
struct WYCKOFF_POS_TYPE {
    int multiplicity = 0;  // in the conventional cell
    char letter = ' ';
    std::string site_symmetry;        // oriented, ".-3m"
    SEITZ_TYPE triplet;               // the representative: r (x,y,z) + t
    Array1<std::string> coordinates;  // the orbit, one triplet per coset of the centring
};

struct SPACE_GROUP_TYPE {
    int number = 0;
    std::string hm_symbol;        // 20
    std::string hall_symbol;      // 30
    std::string crystal_system;   // 12
    std::string laue_class;       // 5
    std::string point_group;      // 5
    std::string setting_choice;   // 10: the table's code ("2", "H", "b1", "cab", ...)
    std::string setting_type;     // 80: how the group was obtained
    std::string lattice_symbol;   // 1
    std::string bravais_lattice;  // 2
    std::string centrosymmetry;
    float centre_at[3] = {0, 0, 0};
    int multiplicity = 0;
    std::string asym_unit;  // "0 <= x <= 1/8;  0 <= y <= 1/8;  0 <= z <= 1", empty when unknown
    Array1<SYM_OPER_TYPE> operators;
    Array1<std::string> operator_texts;
    Array1<SEITZ_TYPE> seitz;  // the same operators, exact
    LATTICE_CENTRING_TYPE centring;
    Array1<WYCKOFF_POS_TYPE> wyckoff;  // special positions only, empty when unknown
};

// The module's error pair; ERR_Symm_Info holds the second line of a refusal.
extern bool ERR_Symm;
extern std::string ERR_Symm_Mess;  // 150
extern std::string ERR_Symm_Info;  // 150
void Clear_Symm_Error();

// mode: "HMS", "ITC", "HAL", "GEN", "FIX" or blank (the symbol decides).
void Set_SpaceGroup(const std::string& symbol, SPACE_GROUP_TYPE& sg,
                    const std::vector<std::string>& gens = {}, const std::string& mode = "");

// Operators from a Hermann-Mauguin symbol (any tabulated setting, with or
// without blanks, ":1", ":2", ":H", ":R" or a setting code after a colon).
bool Get_SO_from_HMS(const std::string& symbol, std::vector<SEITZ_TYPE>& ops);

// The same group in another tabulated setting, named by its code.
void Setting_Change(const SPACE_GROUP_TYPE& sg, const std::string& choice, SPACE_GROUP_TYPE& out);

// The "Information on Space Group:" listing.
void List_Space_Group(const SPACE_GROUP_TYPE& sg, std::ostream& unit, bool full = true);

// --- table access, shared by the files of the module ---

// Row index (0-based) of a tabulated setting from a symbol or a number; -1 when none.
int Find_Setting_By_Symbol(const std::string& symbol);
int Find_Setting_By_Number(int number);
// The sorted operators of a tabulated row (computed once).
const std::vector<SEITZ_TYPE>& Tabulated_Operators(int row);
// The row whose operators are exactly `ops` (sorted), -1 when none.
int Find_Setting_By_Operators(const std::vector<SEITZ_TYPE>& ops);
// The refusal text for a symbol that is not tabulated.
std::string HM_Symbol_Refusal(const std::string& symbol);

// Fills the descriptors from the operators in sg.seitz.
void Fill_Group_Descriptors(SPACE_GROUP_TYPE& sg);
// Fills asym_unit and wyckoff from the tables of a row, orbits from sg.seitz.
void Fill_Wyckoff_Positions(int row, SPACE_GROUP_TYPE& sg);

}  // namespace hxl
