// SHELX .res/.ins: TITL, CELL, ZERR, LATT, SYMM, SFAC, FVAR and the atom lines.
#include <cmath>
#include <cstdlib>
#include <sstream>

#include "crystal/scattering.h"
#include "crystal/structure.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

// Instructions that are not atoms (a name of four letters the program knows).
bool is_instruction(const std::string& u) {
    static const char* kWords[] = {
        "TITL", "CELL", "ZERR", "LATT", "SYMM", "SFAC", "UNIT", "DISP", "LAUE", "REM",  "MORE", "TIME", "END",
        "HKLF", "OMIT", "SHEL", "BASF", "TWIN", "EXTI", "SWAT", "HOPE", "MERG", "SPEC", "RESI", "MOVE", "ANIS",
        "AFIX", "HFIX", "FRAG", "FEND", "EXYZ", "EADP", "EQIV", "CONN", "PART", "BIND", "FREE", "DFIX", "DANG",
        "BUMP", "SAME", "SADI", "CHIV", "FLAT", "DELU", "SIMU", "DEFS", "ISOR", "NCSY", "SUMP", "L.S.", "CGLS",
        "BLOC", "DAMP", "STIR", "WGHT", "FVAR", "BOND", "CONF", "MPLA", "RTAB", "HTAB", "LIST", "ACTA", "SIZE",
        "TEMP", "WPDB", "FMAP", "GRID", "PLAN", "MOLE", "NEUT", "ABIN", "ANSC", "ANSR", "XNPD", "WIGL", "RIGU",
        "BEDE", "LONE", "PRIG", "DELU", "ABSC", "SHEL", "STIR", "SYMM", "TWST", "BUMP"};
    for (const char* w : kWords)
        if (u == w) return true;
    return false;
}

// A refinable value: 10m + p ties it to free variable m (m = 1 fixes it at p).
bool shelx_value(double v, const std::vector<double>& fvar, double& out, std::string& message) {
    if (std::abs(v) <= 5) {
        out = v;
        return true;
    }
    const double tens = std::trunc(v / 10);
    // beyond any free variable a file can list: refused below without an int overflow
    if (!(std::abs(tens) <= 1e6)) {
        message = "the value " + std::to_string(v) + " names no free variable";
        return false;
    }
    const int m = static_cast<int>(tens);
    const double p = v - 10.0 * m;
    const int k = std::abs(m);
    if (k == 0) {
        message = "the value " + std::to_string(v) + " is neither a plain value nor 10m + p";
        return false;
    }
    if (k == 1) {
        out = p;
        return true;
    }
    if (k > static_cast<int>(fvar.size())) {
        message = "the value " + std::to_string(v) + " names free variable " + std::to_string(k) +
                  ", and FVAR gives " + std::to_string(fvar.size());
        return false;
    }
    out = m > 0 ? p * fvar[k - 1] : p * (fvar[k - 1] - 1);
    return true;
}

const char* kCentring[8][3] = {{"", "", ""},
                               {"", "", ""},
                               {"x+1/2,y+1/2,z+1/2", "", ""},
                               {"x+2/3,y+1/3,z+1/3", "x+1/3,y+2/3,z+2/3", ""},
                               {"x,y+1/2,z+1/2", "x+1/2,y,z+1/2", "x+1/2,y+1/2,z"},
                               {"x,y+1/2,z+1/2", "", ""},
                               {"x+1/2,y,z+1/2", "", ""},
                               {"x+1/2,y+1/2,z", "", ""}};

}  // namespace

bool Read_Shelx_Structure_Text(const std::string& text, STRUCTURE_TYPE& st, std::string& message) {
    st = STRUCTURE_TYPE{};
    // Continuation: a line ending with " =" goes on with the next one.
    std::vector<std::pair<int, std::string>> lines;
    {
        std::istringstream in(text);
        int n = 0;
        bool cont = false;
        for (std::string line; std::getline(in, line);) {
            ++n;
            if (!line.empty() && line.back() == '\r') line.pop_back();
            if (const std::size_t bang = line.find('!'); bang != std::string::npos) line.resize(bang);
            const std::string t = Trim_Right(line);
            const bool more = t.size() >= 2 && t.back() == '=' && (t[t.size() - 2] == ' ' || t[t.size() - 2] == '\t');
            const std::string body = more ? t.substr(0, t.size() - 1) : t;
            if (cont && !lines.empty()) lines.back().second += " " + body;
            else lines.push_back({n, body});
            cont = more;
        }
    }
    std::vector<std::string> sfac;
    std::vector<double> fvar;
    int latt = 1;
    bool cell = false;
    std::vector<std::string> symm;
    struct RAW_ATOM {
        ATOM_SITE_TYPE a;
        double sof, u[6];
        int nu;
    };
    std::vector<RAW_ATOM> raw;
    for (const auto& [no, line] : lines) {
        std::istringstream in(line);
        std::vector<std::string> w;
        for (std::string s; in >> s;) w.push_back(s);
        if (w.empty()) continue;
        const std::string key = Upper(w[0].substr(0, 4));
        const std::string where = "SHELX line " + std::to_string(no) + ": ";
        if (key == "TITL") {
            st.title = Trim(line.substr(line.find_first_of("Tt") + 4));
        } else if (key == "CELL" || key == "ZERR") {
            if (w.size() < 8) {
                message = where + key + " needs " + (key == "CELL" ? "the wavelength" : "Z") + " and six numbers";
                return false;
            }
            for (int k = 0; k < 6; ++k) {
                double v = 0;
                if (!Number_Word(w[k + 2], v)) {
                    message = where + "\"" + w[k + 2] + "\" is not a number";
                    return false;
                }
                (key == "CELL" ? st.cell : st.cell_std)[k] = static_cast<float>(v);
            }
            cell = cell || key == "CELL";
        } else if (key == "LATT") {
            double v = 0;
            if (w.size() < 2 || !Number_Word(w[1], v) || v != std::trunc(v) || std::abs(v) < 1 || std::abs(v) > 7) {
                message = where + "LATT needs a number from 1 to 7, signed";
                return false;
            }
            latt = static_cast<int>(v);
        } else if (key == "SYMM") {
            symm.push_back(Trim(line.substr(line.find_first_of("Ss") + 4)));
            SYM_OPER_TYPE op;
            std::string why;
            if (!Parse_Operator(symm.back(), op, why)) {
                message = where + "\"" + symm.back() + "\" is not an operator:" + why;
                return false;
            }
        } else if (key == "SFAC") {
            double v = 0;
            if (w.size() >= 3 && Number_Word(w[2], v)) {
                sfac.push_back(w[1]);  // one element with its own coefficients
            } else {
                for (std::size_t k = 1; k < w.size(); ++k) sfac.push_back(w[k]);
            }
        } else if (key == "FVAR") {
            for (std::size_t k = 1; k < w.size(); ++k) {
                double v = 0;
                if (!Number_Word(w[k], v)) {
                    message = where + "\"" + w[k] + "\" in FVAR is not a number";
                    return false;
                }
                fvar.push_back(v);
            }
        } else if (key == "END" || key == "HKLF") {
            break;
        } else if (!is_instruction(key) && w.size() >= 6) {
            double n = 0;
            if (!Number_Word(w[1], n) || n != std::trunc(n)) continue;  // not an atom line
            RAW_ATOM r{};
            r.a.label = w[0];
            if (n < 1 || n > static_cast<double>(sfac.size())) {
                message = where + "atom " + w[0] + " names scattering factor " + w[1] + ", and SFAC gives " +
                          std::to_string(sfac.size());
                return false;
            }
            r.a.type = sfac[static_cast<std::size_t>(n) - 1];
            double v[11];
            std::size_t nv = 0;
            for (std::size_t k = 2; k < w.size() && nv < 11; ++k, ++nv)
                if (!Number_Word(w[k], v[nv])) {
                    message = where + "atom " + w[0] + ": \"" + w[k] + "\" is not a number";
                    return false;
                }
            for (int k = 0; k < 3; ++k) {
                double x = 0;
                if (!shelx_value(v[k], fvar, x, message)) {
                    message = where + "atom " + w[0] + ": " + message;
                    return false;
                }
                r.a.x[k] = static_cast<float>(x);
            }
            r.sof = 1;
            if (nv > 3 && !shelx_value(v[3], fvar, r.sof, message)) {
                message = where + "atom " + w[0] + ": " + message;
                return false;
            }
            r.nu = nv >= 10 ? 6 : (nv > 4 ? 1 : 0);
            for (int k = 0; k < r.nu; ++k) {
                r.u[k] = v[4 + k];
                if (r.nu == 6 && !shelx_value(v[4 + k], fvar, r.u[k], message)) {
                    message = where + "atom " + w[0] + ": " + message;
                    return false;
                }
            }
            raw.push_back(r);
        }
    }
    if (!cell) {
        message = "The SHELX file has no CELL line";
        return false;
    }
    if (raw.empty()) {
        message = "The SHELX file has no atom";
        return false;
    }
    std::vector<std::string> gens = {"x,y,z"};
    for (const std::string& s : symm) gens.push_back(s);
    for (const char* c : kCentring[std::abs(latt)])
        if (*c) gens.push_back(c);
    if (latt > 0) gens.push_back("-x,-y,-z");
    st.symops = gens;
    Set_SpaceGroup("", st.sg, gens, "GEN");
    if (ERR_Symm) {
        message = "The SHELX symmetry (LATT, SYMM) gives no space group:" + ERR_Symm_Mess;
        return false;
    }
    Cell_Record cr;
    Fill_Cell_Record(st.cell, st.cell + 3, cr);
    double last_ueq = 0;
    for (RAW_ATOM& r : raw) {
        ATOM_SITE_TYPE& a = r.a;
        double ueq = 0;
        if (r.nu == 6) {
            // SHELX order: U11 U22 U33 U23 U13 U12
            const double U[3][3] = {{r.u[0], r.u[5], r.u[4]}, {r.u[5], r.u[1], r.u[3]}, {r.u[4], r.u[3], r.u[2]}};
            for (int p = 0; p < 3; ++p)
                for (int q = 0; q < 3; ++q) ueq += U[p][q] * cr.recip_cell[p] * cr.recip_cell[q] * cr.metric_direct[p][q];
            ueq /= 3;
            a.aniso = true;
            const double ours[6] = {r.u[0], r.u[1], r.u[2], r.u[5], r.u[4], r.u[3]};
            for (int k = 0; k < 6; ++k) a.u[k] = static_cast<float>(ours[k]);
        } else if (r.nu == 1) {
            // A negative U rides on the last atom that has its own: -1.2 is 1.2 Ueq.
            ueq = r.u[0] < 0 ? -r.u[0] * last_ueq : r.u[0];
        }
        if (!(r.nu == 1 && r.u[0] < 0)) last_ueq = ueq;
        a.biso = static_cast<float>(kUtoB * ueq);
        // The site occupation factor holds the site's share of the general position.
        const int m = Site_Multiplicity(st.sg, a.x);
        a.occ = static_cast<float>(r.sof * st.sg.multiplicity / std::max(m, 1));
        st.atoms.push_back(a);
    }
    st.sg_symbol = st.sg.hm_symbol;
    return Finish_Structure(st, message);
}

}  // namespace hxl
