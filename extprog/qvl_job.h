#pragma once
// The input file of the pair-distribution program: the form's values and the
// records the file holds, in their order.
#include <string>

#include "crystal/structure.h"

namespace hxl {

struct PDF_JOB_TYPE {
    std::string spgr;
    std::string cell = "1 1 1 90 90 90";
    std::string atoms;  // the panel: one atom a line, label type x y z Biso occ
    float rmin = 0.5f, rmax = 20.0f, rstep = 0.01f;
    float qmax = 30.0f, qdamp = 0.012f, qbroad = 0.02f;
    bool neutrons = true;
    float delta1 = 0.1f, delta2 = 0.2f;
    std::string output = "PDF_QVL_File.qvl";
    std::string title;  // remembered from an import
};

// The form's fields from a structure: group, cell, one panel line per atom.
void Pdf_Job_From_Structure(const STRUCTURE_TYPE& st, PDF_JOB_TYPE& job);

// The whole file; `date` goes after the title. False with the message and no
// text: "Error reading the atoms panel!" for a panel line that cannot be read.
bool Qvl_Job_Text(const PDF_JOB_TYPE& job, const std::string& date, std::string& text, std::string& message);

// The settings records of a QVL file (PDF_RANGE, QMAX, DAMP, BROAD, JOBTYPE,
// DELTAS) into the job; the others are left alone.
void Read_Qvl_Job_Settings(const std::string& text, PDF_JOB_TYPE& job);

}  // namespace hxl
