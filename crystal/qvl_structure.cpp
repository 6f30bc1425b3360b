// The structure records of a QVL file: "Title", "Spgr", "Cell" and "Atom".
#include <cmath>
#include <cstdlib>
#include <sstream>

#include "crystal/structure.h"
#include "support/edit_format.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

std::string first_word(const std::string& line, std::string& rest) {
    const std::string t = Adjustl(line);
    const std::size_t p = t.find_first_of(" \t");
    rest = p == std::string::npos ? "" : Trim(t.substr(p));
    return p == std::string::npos ? t : t.substr(0, p);
}

std::string write_line(const char* format, auto&& fill) {
    EDIT_FORMAT_TYPE f;
    std::string msg, out;
    Parse_Edit_Format(format, f, msg);
    {
        Edit_Writer w(f, out);
        fill(w);
    }
    return out;
}

}  // namespace

std::string Qvl_Atom_Record(const ATOM_SITE_TYPE& a) {
    std::string name = a.label;
    if (name.size() < 6) name.resize(6, ' ');
    std::string type = a.type;
    if (type.size() < 5) type.resize(5, ' ');
    return write_line("(a,2x,a,2x,5f9.5,a)", [&](Edit_Writer& w) {
        w.Text("Atom ").Text(name + " " + type);
        for (float v : a.x) w.Real(v);
        w.Real(a.biso).Real(a.occ).Text("");
    });
}

std::string Qvl_Structure_Records(const STRUCTURE_TYPE& st) {
    std::string t = "Spgr  " + st.sg_symbol + "\n";
    t += write_line("(a,4x,6f12.6,a)", [&](Edit_Writer& w) {
        w.Text("Cell");
        for (float v : st.cell) w.Real(v);
        w.Text("");
    });
    for (const ATOM_SITE_TYPE& a : st.atoms) t += Qvl_Atom_Record(a);
    return t;
}

// An atom as the "Atom" record and the form's panel write it: label, type
// (may be left out), x, y, z, Biso, occupancy (may be left out: 1).
bool Read_Atom_Words(const std::string& text, ATOM_SITE_TYPE& a, std::string& message) {
    std::istringstream in(text);
    std::vector<std::string> w;
    for (std::string s; in >> s;) w.push_back(s);
    a = ATOM_SITE_TYPE{};
    double v = 0;
    if (w.size() < 4 || Number_Word(w[0], v)) {
        message = "\"" + Trim(text) + "\": an atom is a label, a type, x, y, z, Biso and occupancy";
        return false;
    }
    a.label = w[0];
    std::size_t k = 1;
    if (!Number_Word(w[1], v)) a.type = w[k++];
    else a.type = w[0];
    double num[5] = {0, 0, 0, 0, 1};
    int n = 0;
    for (; k < w.size() && n < 5; ++k, ++n)
        if (!Number_Word(w[k], num[n])) {
            message = "\"" + Trim(text) + "\": \"" + w[k] + "\" is not a number";
            return false;
        }
    if (n < 3) {
        message = "\"" + Trim(text) + "\": the atom has no x, y, z";
        return false;
    }
    for (int i = 0; i < 3; ++i) a.x[i] = static_cast<float>(num[i]);
    a.biso = static_cast<float>(num[3]);
    a.occ = static_cast<float>(num[4]);
    return true;
}

bool Read_Qvl_Structure_Text(const std::string& text, STRUCTURE_TYPE& st, std::string& message) {
    st = STRUCTURE_TYPE{};
    std::istringstream in(text);
    bool cell = false;
    int phases = 0, line_no = 0;
    for (std::string line; std::getline(in, line);) {
        ++line_no;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        std::string rest;
        const std::string key = Upper(first_word(line, rest));
        if (key.empty() || key[0] == '!') continue;
        if (Starts_With(key, "PHASE_") && ++phases > 1) break;  // the first phase only
        const std::string where = "QVL line " + std::to_string(line_no) + ": ";
        if (key == "TITLE") {
            st.title = rest;
        } else if (key == "SPGR" || key == "SPACEG" || key == "SPACE_GROUP") {
            st.sg_symbol = rest;
        } else if (key == "CELL") {
            std::istringstream c(rest);
            std::string w;
            int n = 0;
            while (n < 6 && c >> w) {
                double v = 0;
                if (!Number_Word(w, v)) {
                    message = where + "\"" + w + "\" in the cell is not a number";
                    return false;
                }
                st.cell[n++] = static_cast<float>(v);
            }
            if (n < 6) {
                message = where + "the cell needs six numbers";
                return false;
            }
            cell = true;
        } else if (key == "ATOM") {
            ATOM_SITE_TYPE a;
            std::string why;
            if (!Read_Atom_Words(rest, a, why)) {
                message = where + why;
                return false;
            }
            st.atoms.push_back(a);
        }
    }
    if (!cell) {
        message = "The QVL file has no \"Cell\" record";
        return false;
    }
    if (st.atoms.empty()) {
        message = "The QVL file has no \"Atom\" record";
        return false;
    }
    return Finish_Structure(st, message);
}

}  // namespace hxl
