// The phases of a refinement control file (.pcr): the space-group line, the
// atoms after "!Atom Typ ...", the cell after the comment naming a b c alpha beta gamma.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <sstream>

#include "crystal/structure.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

std::vector<std::string> words_of(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> w;
    for (std::string s; in >> s;) w.push_back(s);
    return w;
}

bool names_cell(const std::string& comment) {
    const std::vector<std::string> w = words_of(Lower(comment.substr(1)));
    auto has = [&](const char* s) { return std::find(w.begin(), w.end(), s) != w.end(); };
    return has("a") && has("b") && has("c") && has("alpha") && has("beta") && has("gamma");
}

}  // namespace

bool Read_Pcr_Structures_Text(const std::string& text, std::vector<STRUCTURE_TYPE>& out, std::string& message) {
    std::vector<std::string> lines;
    {
        std::istringstream in(text);
        for (std::string line; std::getline(in, line);) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            lines.push_back(line);
        }
    }
    std::vector<STRUCTURE_TYPE> phases;
    std::string pending_title;
    const std::size_t n = lines.size();
    for (std::size_t i = 0; i < n; ++i) {
        const std::string& line = lines[i];
        const std::string t = Trim(line);
        const std::string where = "PCR line " + std::to_string(i + 1) + ": ";
        if (t.find("Data for PHASE") != std::string::npos) {
            // The phase's name is the first line after the comments.
            for (std::size_t j = i + 1; j < n; ++j)
                if (!Trim(lines[j]).empty() && Trim(lines[j])[0] != '!') {
                    pending_title = Trim(lines[j]);
                    break;
                }
            continue;
        }
        if (const std::size_t p = line.find("<--Space group symbol"); p != std::string::npos) {
            STRUCTURE_TYPE st;
            st.sg_symbol = Trim(line.substr(0, p));
            st.title = pending_title.empty() ? "Phase " + std::to_string(phases.size() + 1) : pending_title;
            st.block = st.title;
            pending_title.clear();
            phases.push_back(st);
            continue;
        }
        if (phases.empty() || t.empty() || t[0] != '!') continue;
        STRUCTURE_TYPE& st = phases.back();
        const std::vector<std::string> cw = words_of(t.substr(1));
        if (Starts_With(Upper(t), "!ATOM") && cw.size() > 1 && Upper(cw[1]) == "TYP") {
            // One line of values and one of codes each, up to the next comment.
            std::size_t j = i + 1;
            while (j < n && !Trim(lines[j]).empty() && Trim(lines[j])[0] != '!') {
                const std::vector<std::string> w = words_of(lines[j]);
                if (w.size() < 7) {
                    message = "PCR line " + std::to_string(j + 1) + ": an atom needs label, type, x, y, z, Biso, Occ";
                    return false;
                }
                ATOM_SITE_TYPE a;
                a.label = w[0];
                a.type = w[1];
                double v[5];
                for (int k = 0; k < 5; ++k)
                    if (!Number_Word(w[2 + k], v[k])) {
                        message = "PCR line " + std::to_string(j + 1) + ": atom " + w[0] + ": \"" + w[2 + k] +
                                  "\" is not a number";
                        return false;
                    }
                for (int k = 0; k < 3; ++k) a.x[k] = static_cast<float>(v[k]);
                a.biso = static_cast<float>(v[3]);
                a.occ = static_cast<float>(v[4]);  // the site's share; made a fraction below
                double nt = 0;
                // N_t = 2: two more lines of betas and their codes.
                const std::size_t skip = (w.size() > 9 && Number_Word(w[9], nt) && nt == 2) ? 4 : 2;
                st.atoms.push_back(a);
                j += skip;
            }
            i = j - 1;
        } else if (names_cell(t)) {
            if (i + 1 >= n) break;
            const std::vector<std::string> w = words_of(lines[i + 1]);
            if (w.size() < 6) {
                message = where + "the cell line after it needs six numbers";
                return false;
            }
            for (int k = 0; k < 6; ++k) {
                double v = 0;
                if (!Number_Word(w[k], v)) {
                    message = "PCR line " + std::to_string(i + 2) + ": \"" + w[k] + "\" in the cell is not a number";
                    return false;
                }
                st.cell[k] = static_cast<float>(v);
            }
        }
    }
    if (phases.empty()) {
        message = "The PCR file has no phase (no line with \"<--Space group symbol\")";
        return false;
    }
    std::size_t atoms = 0;
    for (const STRUCTURE_TYPE& st : phases) atoms += st.atoms.size();
    if (atoms == 0) {
        message = "The number of atoms is zero!, Check the PCR file ";
        return false;
    }
    std::vector<STRUCTURE_TYPE> done;
    for (STRUCTURE_TYPE& st : phases) {
        if (st.atoms.empty()) continue;  // a phase without atoms (profile matching) is no structure
        if (st.cell[0] <= 0) {
            message = "PCR phase " + st.title + ": no cell line after the comment naming a b c alpha beta gamma";
            return false;
        }
        if (!Finish_Structure(st, message)) return false;
        for (ATOM_SITE_TYPE& a : st.atoms)
            a.occ = static_cast<float>(double(a.occ) * st.sg.multiplicity / std::max(a.mult, 1));
    }
    for (STRUCTURE_TYPE& st : phases)
        if (!st.atoms.empty()) done.push_back(std::move(st));
    out = std::move(done);
    return true;
}

}  // namespace hxl
