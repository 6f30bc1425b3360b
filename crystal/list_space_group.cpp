// The "Information on Space Group:" listing.
#include <cstdio>

#include "crystal/space_group.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

// The kind of rotation, named from the determinant and the trace.
const char* rotation_kind(const int r[3][3]) {
    const int det = r[0][0] * (r[1][1] * r[2][2] - r[1][2] * r[2][1]) - r[0][1] * (r[1][0] * r[2][2] - r[1][2] * r[2][0]) +
                    r[0][2] * (r[1][0] * r[2][1] - r[1][1] * r[2][0]);
    const int tr = r[0][0] + r[1][1] + r[2][2];
    if (det == 1) {
        switch (tr) {
            case 3: return "1";
            case -1: return "2 or 21";
            case 0: return "3 or 31/32";
            case 1: return "4 or 41,42...";
            case 2: return "6 or 61,62,...";
            default: return "[undet. loc.]";
        }
    }
    switch (tr) {
        case -3: return "-1";
        case 1: return "m or g";
        case 0: return "-3";
        case -1: return "-4";
        case -2: return "-6";
        default: return "[undet. loc.]";
    }
}

std::string frac(int t24) {
    SYM_OPER_TYPE op;
    op.rotation[0][0] = 0;
    op.translation[0] = static_cast<float>(t24) / SEITZ_DEN;
    std::string s = Format_Operator(op);
    return s.substr(0, s.find(','));
}

// Multiplicity and letter, site symmetry, then the orbit's triplets, four a line,
// after the centring translations they are to be added to.
void List_Wyckoff_Positions(const SPACE_GROUP_TYPE& sg, std::ostream& u) {
    u << "\n => Special Wyckoff Positions for " << sg.hm_symbol << "\n";
    if (!sg.centring.translations.empty()) {
        std::string plus = "(0,0,0)+";
        for (const SEITZ_TYPE& t : sg.centring.translations)
            plus += "  (" + frac(t.t[0]) + "," + frac(t.t[1]) + "," + frac(t.t[2]) + ")+";
        u << "    Coordinates are to be added to: " << plus << "\n";
    }
    u << "\n    Mult  Site symmetry  Coordinates\n";
    for (const WYCKOFF_POS_TYPE& w : sg.wyckoff) {
        char head[48];
        std::snprintf(head, sizeof head, "%7d%c  %-13s", w.multiplicity, w.letter, w.site_symmetry.c_str());
        std::string line = head;
        for (int i = 1; i <= w.coordinates.size(); ++i) {
            if (i > 1 && (i - 1) % 4 == 0) {
                u << line << "\n";
                line = std::string(23, ' ');
            }
            line += "  (" + w.coordinates(i) + ")";
        }
        u << line << "\n";
    }
}

}  // namespace

void List_Space_Group(const SPACE_GROUP_TYPE& sg, std::ostream& u, bool full) {
    u << "\n        Information on Space Group: \n        --------------------------- \n\n";
    u << " =>   Number of Space group: " << sg.number << "\n";
    u << " =>  Hermann-Mauguin Symbol: " << sg.hm_symbol << "\n";
    u << " =>             Hall Symbol: " << sg.hall_symbol << "\n";
    if (!sg.setting_choice.empty()) u << " =>    Table Setting Choice: " << sg.setting_choice << "\n";
    u << " =>            Setting Type: " << sg.setting_type << "\n";
    u << " =>          Crystal System: " << sg.crystal_system << "\n";
    u << " =>              Laue Class: " << sg.laue_class << "\n";
    u << " =>             Point Group: " << sg.point_group << "\n";
    u << " =>         Bravais Lattice: " << sg.bravais_lattice << "\n";
    u << " =>          Lattice Symbol: " << sg.lattice_symbol << "\n";
    u << " => Reduced Number of S.O.: " << (sg.centring.translations.empty() ? sg.multiplicity
                                              : sg.multiplicity / static_cast<int>(sg.centring.translations.size() + 1))
      << "\n";
    u << " =>    General multiplicity: " << sg.multiplicity << "\n";
    u << " =>          Centrosymmetry: " << sg.centrosymmetry << "\n";
    if (sg.centrosymmetry == "Centric (-1 not at origin)") {
        char buf[80];
        std::snprintf(buf, sizeof buf, "%8.4f%8.4f%8.4f", static_cast<double>(sg.centre_at[0]),
                      static_cast<double>(sg.centre_at[1]), static_cast<double>(sg.centre_at[2]));
        u << " =>               Centre at: " << buf << "\n";
    }
    if (!sg.asym_unit.empty()) u << " =>         Asymmetric unit: " << sg.asym_unit << "\n";
    if (!sg.centring.translations.empty()) {
        u << " =>  List of centring vectors:\n";
        int i = 0;
        for (const SEITZ_TYPE& t : sg.centring.translations)
            u << "             Latt(" << ++i << "): (" << frac(t.t[0]) << "," << frac(t.t[1]) << "," << frac(t.t[2]) << ")\n";
    }
    if (!full) return;
    u << "\n => List of all Symmetry Operators and Symmetry Symbols\n\n";
    for (int i = 1; i <= sg.operators.size(); ++i) {
        char buf[160];
        std::snprintf(buf, sizeof buf, " => SYMM(%3d): %-30s Symbol: %s", i, sg.operator_texts(i).c_str(),
                      rotation_kind(sg.operators(i).rotation));
        u << buf << "\n";
    }
    if (sg.wyckoff.size() > 0) List_Wyckoff_Positions(sg, u);
}

}  // namespace hxl
