// A structure record as a CIF data block. Values are written with as many
// decimals as the float needs, so that a read gives back the same record.
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "crystal/structure.h"
#include "support/fixed_text.h"
#include "support/text_file.h"

namespace hxl {

namespace {

// The fewest decimals that give back the same float.
int decimals_of(float v) {
    char buf[64];
    for (int d = 0; d < 10; ++d) {
        std::snprintf(buf, sizeof buf, "%.*f", d, static_cast<double>(v));
        if (std::strtof(buf, nullptr) == v) return d;
    }
    return 10;
}

std::string value_std(float v, float sd) {
    char buf[96];
    int d = decimals_of(v);
    // The uncertainty's digits stay within what the reader takes (18): a huge one rounds the
    // value to fewer decimals, and one beyond any decimal is not written.
    const auto digits_fit = [&](int dd) { return static_cast<double>(sd) * std::pow(10.0, dd) < 1e17; };
    while (d > 0 && !digits_fit(d)) --d;
    if (sd > 0 && std::isfinite(sd) && digits_fit(d)) {
        // Enough decimals that the uncertainty, in units of the last one, reads back the same.
        auto back = [&](int dd) {
            const long long u = std::llround(static_cast<double>(sd) * std::pow(10.0, dd));
            return static_cast<float>(static_cast<double>(u) * std::pow(10.0, -dd)) == sd;
        };
        while (d < 12 && digits_fit(d + 1) && (std::llround(static_cast<double>(sd) * std::pow(10.0, d)) < 2 || !back(d))) ++d;
        const long long u = std::llround(static_cast<double>(sd) * std::pow(10.0, d));
        std::snprintf(buf, sizeof buf, "%.*f(%lld)", d, static_cast<double>(v), u);
    } else {
        std::snprintf(buf, sizeof buf, "%.*f", d, static_cast<double>(v));
    }
    return buf;
}

// A text value, quoted when it holds blanks or starts like a CIF token.
std::string cif_text(const std::string& raw) {
    // CIF 1.1 holds printable ASCII only; the readers refuse such labels and types, a title loses them.
    std::string t;
    for (char c : raw) t += (c >= 32 && c <= 126) ? c : '?';
    if (t.empty()) return "?";
    const bool plain = t.find_first_of(" \t'\"") == std::string::npos && t[0] != '_' && t[0] != '#' &&
                       t[0] != '$' && t[0] != '[' && t[0] != ';' && t != "?" && t != "." &&
                       !Starts_With(Lower(t), "data_") && !Starts_With(Lower(t), "loop_");
    if (plain) return t;
    if (t.find('\'') == std::string::npos) return "'" + t + "'";
    if (t.find('"') == std::string::npos) return "\"" + t + "\"";
    return "\n;" + t + "\n;";
}

std::string block_name(const std::string& b) {
    std::string out;
    for (char c : b) out += std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '.' ? c : '_';
    return out.empty() ? "structure" : out;
}

}  // namespace

std::string Cif_Structure_Text(const STRUCTURE_TYPE& st) {
    std::string t = "data_" + block_name(st.block) + "\n";
    t += "_chemical_name_systematic " + cif_text(st.title) + "\n";
    static const char* kCell[6] = {"_cell_length_a",   "_cell_length_b",  "_cell_length_c",
                                   "_cell_angle_alpha", "_cell_angle_beta", "_cell_angle_gamma"};
    for (int k = 0; k < 6; ++k) t += std::string(kCell[k]) + " " + value_std(st.cell[k], st.cell_std[k]) + "\n";
    t += "_space_group_name_H-M_alt " + cif_text(st.sg_symbol) + "\n";
    if (!st.sg.hall_symbol.empty()) t += "_space_group_name_Hall " + cif_text(st.sg.hall_symbol) + "\n";
    if (st.sg.number > 0) t += "_space_group_IT_number " + std::to_string(st.sg.number) + "\n";
    // The operators always go out: they fix the setting whatever the symbol says.
    t += "loop_\n_space_group_symop_operation_xyz\n";
    for (const std::string& op : st.sg.operator_texts) t += cif_text(op) + "\n";
    t += "loop_\n_atom_site_label\n_atom_site_type_symbol\n_atom_site_fract_x\n_atom_site_fract_y\n"
         "_atom_site_fract_z\n_atom_site_occupancy\n_atom_site_B_iso_or_equiv\n_atom_site_adp_type\n"
         "_atom_site_symmetry_multiplicity\n_atom_site_Wyckoff_symbol\n";
    bool any_aniso = false;
    for (const ATOM_SITE_TYPE& a : st.atoms) {
        t += cif_text(a.label) + " " + cif_text(a.type);
        for (int k = 0; k < 3; ++k) t += " " + value_std(a.x[k], a.x_std[k]);
        t += " " + value_std(a.occ, a.occ_std) + " " + value_std(a.biso, a.biso_std) + (a.aniso ? " Uani " : " Biso ") +
             std::to_string(a.mult) + " " + (a.wyckoff == ' ' ? std::string("?") : std::string(1, a.wyckoff)) + "\n";
        any_aniso = any_aniso || a.aniso;
    }
    if (any_aniso) {
        t += "loop_\n_atom_site_aniso_label\n_atom_site_aniso_U_11\n_atom_site_aniso_U_22\n_atom_site_aniso_U_33\n"
             "_atom_site_aniso_U_12\n_atom_site_aniso_U_13\n_atom_site_aniso_U_23\n";
        for (const ATOM_SITE_TYPE& a : st.atoms) {
            if (!a.aniso) continue;
            t += cif_text(a.label);
            for (float u : a.u) t += " " + value_std(u, 0);
            t += "\n";
        }
    }
    return t;
}

bool Write_Cif_Structure(const std::string& file, const STRUCTURE_TYPE& st, std::string& message) {
    return Replace_File_Told(file, Cif_Structure_Text(st), message);
}

}  // namespace hxl
