#pragma once
// A crystal structure as the structure files give it: title, cell, space
// group and atoms, with the readers and writers of CIF, SHELX, QVL and PCR.
#include <string>
#include <vector>

#include "crystal/crystal_metrics.h"
#include "crystal/space_group.h"

namespace hxl {

struct ATOM_SITE_TYPE {
    std::string label;  // 20
    std::string type;   // element or scattering type as the file gives it ("Fe3+", "D")
    float x[3] = {0, 0, 0};
    float x_std[3] = {0, 0, 0};
    float biso = 0;  // always filled: from Uiso or the trace of Uij when the file has those
    float biso_std = 0;
    float occ = 1;  // site occupancy (fraction of the site filled)
    float occ_std = 0;
    bool aniso = false;           // u holds U11 U22 U33 U12 U13 U23
    float u[6] = {0, 0, 0, 0, 0, 0};
    int mult = 0;                 // positions in the conventional cell, from the group
    char wyckoff = ' ';
};

struct STRUCTURE_TYPE {
    std::string block;  // the CIF data block, or the file's own name for a phase
    std::string title;
    float cell[6] = {0, 0, 0, 90, 90, 90};
    float cell_std[6] = {0, 0, 0, 0, 0, 0};
    std::string sg_symbol;             // as written in the file, or the group's own symbol
    std::vector<std::string> symops;   // operators as written, when the file lists them
    Cell_Record cell_rec;
    SPACE_GROUP_TYPE sg;
    std::vector<ATOM_SITE_TYPE> atoms;
};

// B = 8 pi^2 U.
constexpr double kUtoB = 78.95683520871486;

// Cell record, group (operators win over symbols) and each atom's
// multiplicity and Wyckoff letter. False with the message when the cell or the
// group cannot be built; the message names `where`.
bool Finish_Structure(STRUCTURE_TYPE& st, std::string& message);

// The number of distinct positions of (x,y,z) under the group, and the letter of
// the special position it sits on (the general one when none).
int Site_Multiplicity(const SPACE_GROUP_TYPE& sg, const float x[3], char* letter = nullptr);

// "1.234(5)" as 1.234 and 0.005; "?" and "." are not numbers. False when the
// text is not a number.
bool Read_Value_Std(const std::string& text, double& value, double& std);

// A whole word as a finite number (strtod's forms).
bool Number_Word(const std::string& word, double& v);

// CIF: every data block with a cell and atom sites is a structure. False with
// a message naming the block and the item on anything that cannot be read right.
bool Read_Cif_Structures(const std::string& file, std::vector<STRUCTURE_TYPE>& out, std::string& message);
bool Read_Cif_Structures_Text(const std::string& text, const std::string& name, std::vector<STRUCTURE_TYPE>& out,
                              std::string& message);
std::string Cif_Structure_Text(const STRUCTURE_TYPE& st);
bool Write_Cif_Structure(const std::string& file, const STRUCTURE_TYPE& st, std::string& message);

// SHELX .res/.ins.
bool Read_Shelx_Structure_Text(const std::string& text, STRUCTURE_TYPE& st, std::string& message);
// QVL: the "Title", "Spgr", "Cell" and "Atom" records.
bool Read_Qvl_Structure_Text(const std::string& text, STRUCTURE_TYPE& st, std::string& message);
std::string Qvl_Structure_Records(const STRUCTURE_TYPE& st);
// The QVL "Atom" record of one atom.
std::string Qvl_Atom_Record(const ATOM_SITE_TYPE& a);
// An atom as free words: label, type (may be left out), x, y, z, Biso,
// occupancy (may be left out: 1).
bool Read_Atom_Words(const std::string& text, ATOM_SITE_TYPE& a, std::string& message);
// PCR: the phases of a control file, each one structure.
bool Read_Pcr_Structures_Text(const std::string& text, std::vector<STRUCTURE_TYPE>& out, std::string& message);

// Any of the four by the file's ending (".cif", ".res"/".ins"/".shx", ".qvl", ".pcr").
bool Read_Structure_File(const std::string& file, std::vector<STRUCTURE_TYPE>& out, std::string& message);

}  // namespace hxl
