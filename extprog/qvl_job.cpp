#include "extprog/qvl_job.h"

#include <cmath>
#include <cstdio>
#include <sstream>

#include "support/edit_format.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

std::string record(const char* format, const std::string& head, std::initializer_list<float> values) {
    EDIT_FORMAT_TYPE f;
    std::string msg, out;
    Parse_Edit_Format(format, f, msg);
    Edit_Writer w(f, out);
    w.Text(head);
    for (float v : values) w.Real(v);
    w.End();
    return out;
}

// Up to six decimals, without the zeros that end them: "0.25", "90".
std::string fixed(float v) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.6f", static_cast<double>(v));
    std::string t = buf;
    while (t.back() == '0') t.pop_back();
    if (t.back() == '.') t.pop_back();
    return t == "-0" ? "0" : t;
}

}  // namespace

void Pdf_Job_From_Structure(const STRUCTURE_TYPE& st, PDF_JOB_TYPE& job) {
    job.spgr = st.sg_symbol;
    job.cell.clear();
    for (float v : st.cell) job.cell += (job.cell.empty() ? "" : " ") + fixed(v);
    job.atoms.clear();
    for (const ATOM_SITE_TYPE& a : st.atoms)
        job.atoms += a.label + "  " + a.type + "  " + fixed(a.x[0]) + "  " + fixed(a.x[1]) + "  " + fixed(a.x[2]) +
                     "  " + fixed(a.biso) + "  " + fixed(a.occ) + "\n";
}

bool Qvl_Job_Text(const PDF_JOB_TYPE& job, const std::string& date, std::string& text, std::string& message) {
    STRUCTURE_TYPE st;
    st.sg_symbol = Trim(job.spgr);
    {
        std::istringstream c(job.cell);
        std::string w;
        int n = 0;
        while (c >> w) {
            double v = 0;
            if (n >= 6 || !Number_Word(w, v)) {
                n = -1;
                break;
            }
            st.cell[n++] = static_cast<float>(v);
        }
        if (n != 6) {
            message = "The cell parameters are six numbers: a b c alpha beta gamma";
            return false;
        }
    }
    std::istringstream panel(job.atoms);
    for (std::string line; std::getline(panel, line);) {
        if (Is_Blank(line)) continue;
        ATOM_SITE_TYPE a;
        std::string why;
        if (!Read_Atom_Words(line, a, why)) {
            message = "Error reading the atoms panel!";
            return false;
        }
        st.atoms.push_back(a);
    }
    if (st.atoms.empty()) {
        message = "Error reading the atoms panel!";
        return false;
    }
    text = "PATTERN_1   1.00\n";
    text += "Title   QVL-file created by Zendrite-2006:" + date + "\n";
    text += "!           Rmin    Rstep     Rmax \n";
    text += record("(a,3f9.4)", "PDF_RANGE ", {job.rmin, job.rstep, job.rmax});
    text += record("(a,f9.4)", "QMAX  ", {job.qmax});
    text += record("(a,f9.4)", "DAMP  ", {job.qdamp});
    text += record("(a,f9.4)", "BROAD ", {job.qbroad});
    text += std::string("JOBTYPE ") + (job.neutrons ? "N" : "X") + "\n";
    text += "PHASE_01   1.00\n";
    text += record("(a,2f9.4)", "DELTAS", {job.delta1, job.delta2});
    text += Qvl_Structure_Records(st);
    return true;
}

void Read_Qvl_Job_Settings(const std::string& text, PDF_JOB_TYPE& job) {
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        std::istringstream w(line);
        std::string key;
        w >> key;
        key = Upper(key);
        std::vector<double> v;
        std::string word;
        std::string first;
        while (w >> word) {
            if (first.empty()) first = word;
            double d = 0;
            if (Number_Word(word, d)) v.push_back(d);
        }
        auto f = [&](std::size_t i) { return static_cast<float>(v[i]); };
        if (key == "PDF_RANGE" && v.size() >= 3) job.rmin = f(0), job.rstep = f(1), job.rmax = f(2);
        else if (key == "QMAX" && !v.empty()) job.qmax = f(0);
        else if (key == "DAMP" && !v.empty()) job.qdamp = f(0);
        else if (key == "BROAD" && !v.empty()) job.qbroad = f(0);
        else if (key == "DELTAS" && v.size() >= 2) job.delta1 = f(0), job.delta2 = f(1);
        else if (key == "JOBTYPE" && !first.empty()) job.neutrons = Upper(first)[0] != 'X';
    }
}

}  // namespace hxl
