// zendrite-batch structure: every structure of a CIF, SHELX, QVL or PCR file.
#include <cstdio>
#include <string>

#include "app/batch/batch_verbs.h"
#include "crystal/structure.h"
#include "support/text_file.h"

namespace zendrite {
namespace {

void print_structure(const hxl::STRUCTURE_TYPE& st, std::ostream& out) {
    char buf[200];
    out << "Block: " << st.block << "\n";
    out << "Title: " << st.title << "\n";
    std::snprintf(buf, sizeof buf, "Cell: %.6f %.6f %.6f %.4f %.4f %.4f", st.cell[0], st.cell[1], st.cell[2], st.cell[3],
                  st.cell[4], st.cell[5]);
    out << buf << "\n";
    out << "Space group: " << st.sg_symbol;
    if (st.sg.number > 0) out << "  (" << st.sg.hm_symbol << ", number " << st.sg.number << ")";
    out << "  operators " << st.sg.seitz.size() << "\n";
    out << "Atoms: " << st.atoms.size() << "\n";
    out << "  Label    Type         x          y          z        Biso      Occ   Mult Wyck\n";
    for (const hxl::ATOM_SITE_TYPE& a : st.atoms) {
        std::snprintf(buf, sizeof buf, "  %-8s %-6s %10.6f %10.6f %10.6f %9.5f %8.5f %5d  %c", a.label.c_str(),
                      a.type.c_str(), a.x[0], a.x[1], a.x[2], a.biso, a.occ, a.mult, a.wyckoff);
        out << buf << "\n";
    }
}

int run_structure(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.size() != 1 && !(args.size() == 3 && args[1] == "--cif")) {
        err << "zendrite-batch structure: give one structure file (and --cif OUT to write it as CIF)\n";
        return 2;
    }
    std::vector<hxl::STRUCTURE_TYPE> list;
    std::string message;
    if (!hxl::Read_Structure_File(args[0], list, message)) {
        err << message << "\n";
        return 1;
    }
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (i) out << "\n";
        print_structure(list[i], out);
    }
    if (args.size() == 3) {
        std::string text;
        for (const auto& st : list) text += (text.empty() ? "" : "\n") + hxl::Cif_Structure_Text(st);
        if (!hxl::Replace_File_Told(args[2], text, message)) {
            err << message << "\n";
            return 1;
        }
    }
    return 0;
}

const bool registered = Register_Batch_Verb(
    {"structure", "structure FILE [--cif OUT]",
     "      prints each structure of a CIF, SHELX (.res/.ins), QVL or PCR file: block\n"
     "      name, \"Cell:\", \"Space group:\" and the atoms with multiplicity and\n"
     "      Wyckoff letter; --cif writes them all as one CIF file",
     run_structure});

}  // namespace
}  // namespace zendrite
