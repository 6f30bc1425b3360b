// Structures of a CIF file: gemmi parses, this file maps the items of each data
// block (old underscore and new dot names alike) onto the structure record.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <exception>

#include "crystal/cif_document.h"
#include "crystal/scattering.h"
#include "crystal/structure.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

struct ITEM_VALUES {
    std::string tag;  // as the file writes it
    std::vector<std::string> values;
    bool found = false;
};

bool same_tag(const std::string& a, const char* b) {
    std::size_t i = 0;
    for (; i < a.size() && b[i]; ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i]))) return false;
    return i == a.size() && !b[i];
}

// The values of the first of `names` the block holds. A name given twice with
// different values cannot be read right and is refused; twice the same is kept.
bool find_item(const CIF_BLOCK_TYPE& block, std::initializer_list<const char*> names, ITEM_VALUES& out,
               std::string& message) {
    out = ITEM_VALUES{};
    for (const char* name : names) {
        for (const CIF_ITEM_TYPE& item : block.items) {
            std::vector<std::string> values;
            std::string tag;
            if (!item.loop && same_tag(item.tags[0], name)) {
                tag = item.tags[0];
                values.push_back(item.values[0]);
            } else if (item.loop) {
                const CIF_ITEM_TYPE& loop = item;
                for (std::size_t c = 0; c < loop.tags.size(); ++c) {
                    if (!same_tag(loop.tags[c], name)) continue;
                    tag = loop.tags[c];
                    const std::size_t w = loop.tags.size();
                    for (std::size_t r = c; r < loop.values.size(); r += w) values.push_back(loop.values[r]);
                    break;
                }
            }
            if (tag.empty()) continue;
            if (out.found && values != out.values) {
                message = "CIF block " + block.name + ", item " + tag + ": given twice with different values";
                return false;
            }
            out.tag = tag;
            out.values = std::move(values);
            out.found = true;
        }
        if (out.found) return true;
    }
    return true;
}

bool is_null(const std::string& v) { return v.empty() || v == "?" || v == "."; }

// A number of an item; a missing or unknown item leaves `found` false.
bool number_item(const CIF_BLOCK_TYPE& b, std::initializer_list<const char*> names, double& v, double& sd, bool& found,
                 std::string& message) {
    ITEM_VALUES it;
    found = false;
    if (!find_item(b, names, it, message)) return false;
    if (!it.found || it.values.empty() || is_null(it.values[0])) return true;
    if (!Read_Value_Std(Cif_Unquote(it.values[0]), v, sd)) {
        message = "CIF block " + b.name + ", item " + it.tag + ": \"" + it.values[0] + "\" is not a number";
        return false;
    }
    found = true;
    return true;
}

// The first of `names` that has a value ("?" and "." are none).
std::string text_item(const CIF_BLOCK_TYPE& b, std::initializer_list<const char*> names, std::string& message,
                      bool& ok) {
    ok = true;
    for (const char* name : names) {
        ITEM_VALUES it;
        ok = find_item(b, {name}, it, message);
        if (!ok) return "";
        if (!it.found || it.values.empty()) continue;
        const std::string v = Trim(Cif_Unquote(it.values[0]));
        if (!is_null(v)) return v;
    }
    return "";
}

// Spellings of Hermann-Mauguin symbols found in files, tried after the symbol as written.
std::vector<std::string> hm_spellings(std::string s) {
    std::vector<std::string> out;
    s = Trim(s);
    // "P 21/c (No. 14)", "R -3 c H", "R -3 c (hexagonal axes)"
    if (std::size_t p = s.find('('); p != std::string::npos) s = Trim(s.substr(0, p));
    out.push_back(s);
    if (s.size() > 2 && (s.ends_with(" H") || s.ends_with(" R") || s.ends_with(" S")))
        out.push_back(s.substr(0, s.size() - 2) + ":" + s.back());
    if (s.size() > 1 && (s.back() == 'H' || s.back() == 'R') && s[s.size() - 2] != ' ')
        out.push_back(s.substr(0, s.size() - 1) + ":" + s.back());
    // Cubic symbols of the old notation: "F m 3 m", "Pm3m" for "F m -3 m", "Pm-3m".
    if (s.find("-3") == std::string::npos && (s[0] == 'P' || s[0] == 'F' || s[0] == 'I')) {
        const std::string glides = "mnad";
        for (std::size_t p = 1; p + 1 < s.size(); ++p) {
            std::size_t q = p;
            if (glides.find(s[q]) == std::string::npos) continue;
            ++q;
            if (q < s.size() && s[q] == ' ') ++q;
            if (q < s.size() && s[q] == '3' && (q + 1 == s.size() || s[q + 1] == ' ' || std::isalpha(static_cast<unsigned char>(s[q + 1])))) {
                std::string t = s;
                t.insert(q, "-");
                out.push_back(t);
            }
            break;
        }
    }
    return out;
}

// The group of a block, by the first form that reads: operators, Hall, H-M, number.
bool block_group(const CIF_BLOCK_TYPE& b, STRUCTURE_TYPE& st, std::string& message) {
    ITEM_VALUES ops;
    if (!find_item(b,
                   {"_space_group_symop_operation_xyz", "_space_group_symop.operation_xyz",
                    "_symmetry_equiv_pos_as_xyz", "_symmetry_equiv.pos_as_xyz"},
                   ops, message))
        return false;
    if (ops.found) {
        for (const std::string& raw : ops.values) {
            const std::string op = Trim(Cif_Unquote(raw));
            SYM_OPER_TYPE o;
            std::string why;
            if (!Parse_Operator(op, o, why)) {
                message = "CIF block " + b.name + ", item " + ops.tag + ": \"" + op + "\" is not an operator:" + why;
                return false;
            }
            st.symops.push_back(op);
        }
        Set_SpaceGroup("", st.sg, st.symops, "GEN");
        if (ERR_Symm) {
            message = "CIF block " + b.name + ", item " + ops.tag + ": the operators give no space group:" +
                      ERR_Symm_Mess + " " + ERR_Symm_Info;
            return false;
        }
    }
    bool ok = true;
    const std::string hall =
        text_item(b, {"_space_group_name_Hall", "_space_group.name_Hall", "_symmetry_space_group_name_Hall"}, message, ok);
    if (!ok) return false;
    const std::string hm = text_item(b,
                                     {"_space_group_name_H-M_alt", "_space_group.name_H-M_alt",
                                      "_symmetry_space_group_name_H-M", "_space_group_name_H-M_ref",
                                      "_space_group.name_H-M_full", "_pd_phase_space_group"},
                                     message, ok);
    if (!ok) return false;
    double num = 0, sd = 0;
    bool has_num = false;
    if (!number_item(b, {"_space_group_IT_number", "_space_group.IT_number", "_symmetry_Int_Tables_number"}, num, sd,
                     has_num, message))
        return false;
    if (!st.symops.empty()) {
        st.sg_symbol = !hm.empty() ? hm : st.sg.hm_symbol;
        return true;
    }
    if (!hall.empty()) {
        Set_SpaceGroup(hall, st.sg, {}, "HAL");
        if (!ERR_Symm) {
            st.sg_symbol = !hm.empty() ? hm : st.sg.hm_symbol;
            return true;
        }
    }
    if (!hm.empty()) {
        for (const std::string& s : hm_spellings(hm)) {
            Set_SpaceGroup(s, st.sg);
            if (!ERR_Symm) {
                st.sg_symbol = hm;
                return true;
            }
        }
        // A symbol that cannot be read is refused: the number alone may name another setting.
        message = "CIF block " + b.name + ": the space group \"" + hm + "\" cannot be read:" + ERR_Symm_Mess;
        return false;
    }
    if (has_num) {
        if (num != std::floor(num) || num < 1 || num > 230) {
            message = "CIF block " + b.name + ": space group number " + std::to_string(num) + " is not in 1..230";
            return false;
        }
        Set_SpaceGroup(std::to_string(static_cast<int>(num)), st.sg);
        st.sg_symbol = st.sg.hm_symbol;
        return !ERR_Symm;
    }
    if (!hall.empty()) {
        message = "CIF block " + b.name + ": the Hall symbol \"" + hall + "\" cannot be read:" + ERR_Symm_Mess;
        return false;
    }
    message = "CIF block " + b.name + ": no space group (no operators, no Hall or Hermann-Mauguin symbol, no number)";
    return false;
}

struct ATOM_COLUMNS {
    ITEM_VALUES label, type, x, y, z, occ, b, u, adp;
};

bool col(const CIF_BLOCK_TYPE& b, std::initializer_list<const char*> names, ITEM_VALUES& v, std::size_t n,
         std::string& message) {
    if (!find_item(b, names, v, message)) return false;
    if (v.found && v.values.size() != n) {
        message = "CIF block " + b.name + ", item " + v.tag + ": not in the loop of the atom sites";
        return false;
    }
    return true;
}

bool num_at(const CIF_BLOCK_TYPE& b, const ITEM_VALUES& v, std::size_t i, const std::string& label, double& val,
            double& sd, bool& present, std::string& message) {
    present = false;
    if (!v.found || is_null(v.values[i])) return true;
    if (!Read_Value_Std(Cif_Unquote(v.values[i]), val, sd)) {
        message = "CIF block " + b.name + ", item " + v.tag + ", atom " + label + ": \"" + v.values[i] +
                  "\" is not a number";
        return false;
    }
    present = true;
    return true;
}

// Anisotropic U (or B) of the atoms named in the aniso loop: Biso from Ueq.
bool read_aniso(const CIF_BLOCK_TYPE& b, STRUCTURE_TYPE& st, const std::vector<bool>& has_iso, std::string& message) {
    ITEM_VALUES lab;
    if (!find_item(b, {"_atom_site_aniso_label", "_atom_site_aniso.label"}, lab, message)) return false;
    if (!lab.found) return true;
    static const char* kU[6][2] = {{"_atom_site_aniso_U_11", "_atom_site_aniso.U_11"},
                                   {"_atom_site_aniso_U_22", "_atom_site_aniso.U_22"},
                                   {"_atom_site_aniso_U_33", "_atom_site_aniso.U_33"},
                                   {"_atom_site_aniso_U_12", "_atom_site_aniso.U_12"},
                                   {"_atom_site_aniso_U_13", "_atom_site_aniso.U_13"},
                                   {"_atom_site_aniso_U_23", "_atom_site_aniso.U_23"}};
    static const char* kB[6][2] = {{"_atom_site_aniso_B_11", "_atom_site_aniso.B_11"},
                                   {"_atom_site_aniso_B_22", "_atom_site_aniso.B_22"},
                                   {"_atom_site_aniso_B_33", "_atom_site_aniso.B_33"},
                                   {"_atom_site_aniso_B_12", "_atom_site_aniso.B_12"},
                                   {"_atom_site_aniso_B_13", "_atom_site_aniso.B_13"},
                                   {"_atom_site_aniso_B_23", "_atom_site_aniso.B_23"}};
    ITEM_VALUES u[6];
    bool is_b = false;
    for (int k = 0; k < 6; ++k) {
        if (!find_item(b, {kU[k][0], kU[k][1]}, u[k], message)) return false;
        if (!u[k].found) {
            if (!find_item(b, {kB[k][0], kB[k][1]}, u[k], message)) return false;
            is_b = is_b || u[k].found;
        }
        if (!u[k].found) return true;  // an incomplete tensor is not used
        if (u[k].values.size() != lab.values.size()) {
            message = "CIF block " + b.name + ", item " + u[k].tag + ": not in the loop of " + lab.tag;
            return false;
        }
    }
    Cell_Record cr;
    Fill_Cell_Record(st.cell, st.cell + 3, cr);
    for (std::size_t i = 0; i < lab.values.size(); ++i) {
        const std::string name = Trim(Cif_Unquote(lab.values[i]));
        for (std::size_t a = 0; a < st.atoms.size(); ++a) {
            ATOM_SITE_TYPE& at = st.atoms[a];
            if (at.label != name) continue;
            double v[6];
            for (int k = 0; k < 6; ++k) {
                double sd = 0;
                bool present = false;
                if (!num_at(b, u[k], i, name, v[k], sd, present, message)) return false;
                if (!present) v[k] = 0;
                if (is_b) v[k] /= kUtoB;
                at.u[k] = static_cast<float>(v[k]);
            }
            at.aniso = true;
            if (!has_iso[a]) {
                // Ueq = 1/3 sum Uij a*_i a*_j (a_i . a_j)
                const double U[3][3] = {{v[0], v[3], v[4]}, {v[3], v[1], v[5]}, {v[4], v[5], v[2]}};
                double ueq = 0;
                for (int p = 0; p < 3; ++p)
                    for (int q = 0; q < 3; ++q)
                        ueq += U[p][q] * cr.recip_cell[p] * cr.recip_cell[q] * cr.metric_direct[p][q];
                at.biso = static_cast<float>(kUtoB * ueq / 3);
            }
        }
    }
    return true;
}

// One block; `is_structure` false when it holds no atom sites and no cell (not a structure block).
bool read_block(const CIF_BLOCK_TYPE& b, STRUCTURE_TYPE& st, bool& is_structure, std::string& message) {
    st = STRUCTURE_TYPE{};
    st.block = b.name;
    ATOM_COLUMNS c;
    if (!find_item(b, {"_atom_site_label", "_atom_site.label"}, c.label, message)) return false;
    bool has_cell = false;
    static const char* kCell[6][2] = {{"_cell_length_a", "_cell.length_a"},       {"_cell_length_b", "_cell.length_b"},
                                      {"_cell_length_c", "_cell.length_c"},       {"_cell_angle_alpha", "_cell.angle_alpha"},
                                      {"_cell_angle_beta", "_cell.angle_beta"},   {"_cell_angle_gamma", "_cell.angle_gamma"}};
    bool found[6];
    for (int k = 0; k < 6; ++k) {
        double v = 0, sd = 0;
        if (!number_item(b, {kCell[k][0], kCell[k][1]}, v, sd, found[k], message)) return false;
        if (found[k]) {
            st.cell[k] = static_cast<float>(v);
            st.cell_std[k] = static_cast<float>(sd);
            has_cell = true;
        }
    }
    is_structure = c.label.found || has_cell;
    if (!c.label.found) {
        if (has_cell) is_structure = false;  // a cell alone (a pattern block) is no structure
        return true;
    }
    for (int k = 0; k < 3; ++k)
        if (!found[k]) {
            message = "CIF block " + b.name + ", item " + kCell[k][0] + ": missing; the atoms have no cell";
            return false;
        }
    const std::size_t n = c.label.values.size();
    if (!col(b, {"_atom_site_type_symbol", "_atom_site.type_symbol"}, c.type, n, message) ||
        !col(b, {"_atom_site_fract_x", "_atom_site.fract_x"}, c.x, n, message) ||
        !col(b, {"_atom_site_fract_y", "_atom_site.fract_y"}, c.y, n, message) ||
        !col(b, {"_atom_site_fract_z", "_atom_site.fract_z"}, c.z, n, message) ||
        !col(b, {"_atom_site_occupancy", "_atom_site.occupancy"}, c.occ, n, message) ||
        !col(b, {"_atom_site_B_iso_or_equiv", "_atom_site.B_iso_or_equiv"}, c.b, n, message) ||
        !col(b, {"_atom_site_U_iso_or_equiv", "_atom_site.U_iso_or_equiv"}, c.u, n, message) ||
        !col(b, {"_atom_site_adp_type", "_atom_site.adp_type", "_atom_site_thermal_displace_type"}, c.adp, n, message))
        return false;
    const ITEM_VALUES* xyz[3] = {&c.x, &c.y, &c.z};
    for (const ITEM_VALUES* v : xyz)
        if (!v->found) {
            message = "CIF block " + b.name + ": the atom sites have no fractional coordinates (_atom_site_fract_x)";
            return false;
        }
    std::vector<bool> has_iso(n, false);
    st.atoms.resize(n);
    for (std::size_t i = 0; i < n; ++i) {
        ATOM_SITE_TYPE& a = st.atoms[i];
        a.label = Trim(Cif_Unquote(c.label.values[i]));
        a.type = c.type.found && !is_null(c.type.values[i]) ? Trim(Cif_Unquote(c.type.values[i])) : a.label;
        SCATTERER_TYPE sc;
        std::string why;
        if (!Find_Scatterer(a.type, sc, why)) {
            message = "CIF block " + b.name + ", item " + (c.type.found ? c.type.tag : c.label.tag) + ", atom " +
                      a.label + ": unknown element: " + why;
            return false;
        }
        for (int k = 0; k < 3; ++k) {
            double v = 0, sd = 0;
            bool present = false;
            if (!num_at(b, *xyz[k], i, a.label, v, sd, present, message)) return false;
            if (!present) {
                message = "CIF block " + b.name + ", item " + xyz[k]->tag + ", atom " + a.label + ": no coordinate";
                return false;
            }
            a.x[k] = static_cast<float>(v);
            a.x_std[k] = static_cast<float>(sd);
        }
        double v = 0, sd = 0;
        bool present = false;
        if (!num_at(b, c.occ, i, a.label, v, sd, present, message)) return false;
        if (present) {
            a.occ = static_cast<float>(v);
            a.occ_std = static_cast<float>(sd);
        }
        if (!num_at(b, c.b, i, a.label, v, sd, present, message)) return false;
        if (present) {
            a.biso = static_cast<float>(v);
            a.biso_std = static_cast<float>(sd);
            has_iso[i] = true;
        } else {
            if (!num_at(b, c.u, i, a.label, v, sd, present, message)) return false;
            if (present) {
                a.biso = static_cast<float>(kUtoB * v);
                a.biso_std = static_cast<float>(kUtoB * sd);
                has_iso[i] = true;
            }
        }
    }
    if (!read_aniso(b, st, has_iso, message)) return false;
    if (!block_group(b, st, message)) return false;
    bool ok = true;
    st.title = text_item(b, {"_chemical_name_systematic", "_chemical_name.systematic", "_pd_phase_name",
                             "_chemical_formula_sum", "_chemical_formula.sum"},
                         message, ok);
    if (!ok) return false;
    if (st.title.empty()) st.title = b.name;
    return Finish_Structure(st, message);
}

bool read_document(const std::vector<CIF_BLOCK_TYPE>& doc, std::vector<STRUCTURE_TYPE>& out, std::string& message) {
    std::vector<STRUCTURE_TYPE> found;
    std::vector<std::string> skipped;
    for (const CIF_BLOCK_TYPE& b : doc) {
        STRUCTURE_TYPE st;
        bool is_structure = false;
        if (!read_block(b, st, is_structure, message)) return false;
        if (is_structure) found.push_back(std::move(st));
    }
    if (found.empty()) {
        message = doc.empty() ? "The CIF file holds no data block"
                                     : "No data block of the CIF file holds a cell and atom sites (_atom_site_label)";
        return false;
    }
    out = std::move(found);
    return true;
}

}  // namespace

bool Read_Cif_Structures_Text(const std::string& text, const std::string& name, std::vector<STRUCTURE_TYPE>& out,
                              std::string& message) {
    std::vector<CIF_BLOCK_TYPE> doc;
    return Parse_Cif_Text(text, name, doc, message) && read_document(doc, out, message);
}

bool Read_Cif_Structures(const std::string& file, std::vector<STRUCTURE_TYPE>& out, std::string& message) {
    std::vector<CIF_BLOCK_TYPE> doc;
    return Parse_Cif_File(file, doc, message) && read_document(doc, out, message);
}

}  // namespace hxl
