// What every structure reader does last: the cell record, the group, and the
// multiplicity and Wyckoff letter of each atom.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "crystal/scattering.h"
#include "crystal/structure.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

// Distance of a - b from the nearest lattice vector, per axis.
double wrap(double d) { return std::abs(d - std::round(d)); }

bool same_site(const double a[3], const double b[3]) {
    return wrap(a[0] - b[0]) < 1e-3 && wrap(a[1] - b[1]) < 1e-3 && wrap(a[2] - b[2]) < 1e-3;
}

void apply(const SEITZ_TYPE& s, const double x[3], double out[3]) {
    for (int i = 0; i < 3; ++i)
        out[i] = s.r[i][0] * x[0] + s.r[i][1] * x[1] + s.r[i][2] * x[2] + double(s.t[i]) / SEITZ_DEN;
}

}  // namespace

int Site_Multiplicity(const SPACE_GROUP_TYPE& sg, const float xf[3], char* letter) {
    const double x[3] = {xf[0], xf[1], xf[2]};
    // Orbit and stabiliser: the images are |G| / |S| sites, with no list of them to
    // search, so that a file of many atoms in a large group reads at once.
    int fixed = 0;
    for (const SEITZ_TYPE& s : sg.seitz) {
        double q[3];
        apply(s, x, q);
        fixed += same_site(q, x);
    }
    const int g = static_cast<int>(sg.seitz.size());
    const int mult = fixed > 0 ? g / fixed : 0;
    if (!letter) return mult;
    *letter = ' ';
    char last = 0;
    for (const WYCKOFF_POS_TYPE& w : sg.wyckoff) last = std::max(last, w.letter);
    if (mult < g) {
        for (const WYCKOFF_POS_TYPE& w : sg.wyckoff) {
            if (w.multiplicity != mult) continue;
            // The site is on the position when some image q is fixed by the
            // representative's projection r q + t.
            for (const SEITZ_TYPE& s : sg.seitz) {
                double q[3], p[3];
                apply(s, x, q);
                apply(w.triplet, q, p);
                if (same_site(p, q)) {
                    *letter = w.letter;
                    return mult;
                }
            }
        }
    }
    if (mult == sg.multiplicity && mult > 0 && !sg.wyckoff.empty())
        *letter = last == 'z' ? 'A' : static_cast<char>(last + 1);  // the general position follows the specials
    if (mult == sg.multiplicity && sg.wyckoff.empty() && sg.number == 1) *letter = 'a';
    return mult;
}

bool Finish_Structure(STRUCTURE_TYPE& st, std::string& message) {
    const std::string where = st.block.empty() ? std::string("the structure") : "block " + st.block;
    for (int i = 0; i < 6; ++i) {
        if (!std::isfinite(st.cell[i]) || st.cell[i] <= 0 || (i >= 3 && st.cell[i] >= 180)) {
            message = where + ": the cell parameters " + std::to_string(st.cell[0]) + " ... are not a cell";
            return false;
        }
    }
    Clear_Crys_Error();
    Fill_Cell_Record(st.cell, st.cell + 3, st.cell_rec, "", st.cell_std, st.cell_std + 3);
    if (ERR_Crys || !(st.cell_rec.volume > 1e-3f)) {
        message = where + ": the cell gives no volume:" + ERR_Crys_Mess;
        return false;
    }
    if (st.sg.seitz.empty()) {
        if (!st.symops.empty()) {
            Set_SpaceGroup("", st.sg, st.symops, "GEN");
        } else if (!Is_Blank(st.sg_symbol)) {
            Set_SpaceGroup(st.sg_symbol, st.sg);
        } else {
            message = where + ": no space group (no operators, no symbol, no number)";
            return false;
        }
        if (ERR_Symm) {
            message = where + ": space group " + (st.symops.empty() ? "\"" + st.sg_symbol + "\"" : "operators") + ":" +
                      ERR_Symm_Mess + (ERR_Symm_Info.empty() ? "" : " " + ERR_Symm_Info);
            return false;
        }
    }
    if (Is_Blank(st.sg_symbol)) st.sg_symbol = st.sg.hm_symbol;
    auto printable = [](const std::string& t) {
        if (t.empty()) return false;
        for (char c : t)
            if (c < 33 || c > 126) return false;
        return true;
    };
    for (ATOM_SITE_TYPE& a : st.atoms) {
        if (!printable(a.label) || !printable(a.type)) {
            message = where + ", atom " + a.label + ": the label or the type holds a character that is not printable";
            return false;
        }
        SCATTERER_TYPE sc;
        std::string why;
        if (!Find_Scatterer(a.type, sc, why)) {
            message = where + ", atom " + a.label + ": unknown element: " + why;
            return false;
        }
        if (!std::isfinite(a.occ) || !std::isfinite(a.biso)) {
            message = where + ", atom " + a.label + ": occupancy or Biso is not a number";
            return false;
        }
        for (float v : a.x)
            if (!std::isfinite(v)) {
                message = where + ": atom " + a.label + " has no position";
                return false;
            }
        a.mult = Site_Multiplicity(st.sg, a.x, &a.wyckoff);
    }
    return true;
}

bool Number_Word(const std::string& w, double& v) {
    char* end = nullptr;
    v = std::strtod(w.c_str(), &end);
    return end != w.c_str() && *end == '\0' && std::isfinite(v);
}

bool Read_Value_Std(const std::string& text_in, double& value, double& std) {
    const std::string text = Trim(text_in);
    value = 0;
    std = 0;
    if (text.empty() || text == "?" || text == ".") return false;
    const std::size_t open = text.find('(');
    const std::string num = open == std::string::npos ? text : text.substr(0, open);
    char* end = nullptr;
    value = std::strtod(num.c_str(), &end);
    if (end == num.c_str() || *end != '\0' || !std::isfinite(value)) return false;
    if (open == std::string::npos) return true;
    if (text.back() != ')' || open + 2 >= text.size()) return false;
    const std::string digits = text.substr(open + 1, text.size() - open - 2);
    for (char c : digits)
        if (c < '0' || c > '9') return false;
    if (digits.size() > 18) return false;
    // The uncertainty counts in units of the last decimal written.
    int decimals = 0;
    const std::size_t dot = num.find('.');
    if (dot != std::string::npos) {
        std::size_t e = num.find_first_of("eE", dot);
        decimals = static_cast<int>((e == std::string::npos ? num.size() : e) - dot - 1);
        if (e != std::string::npos) decimals -= std::atoi(num.c_str() + e + 1);
    } else if (std::size_t e = num.find_first_of("eE"); e != std::string::npos) {
        decimals = -std::atoi(num.c_str() + e + 1);
    }
    std = std::atof(digits.c_str()) * std::pow(10.0, -decimals);
    return true;
}

}  // namespace hxl
