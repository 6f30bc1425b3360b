// Any bytes as a structure file of one format: a message or a structure,
// never a crash; a structure that comes back has a cell, a group and sane atoms.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "crystal/powder_calc.h"
#include "crystal/structure.h"

#ifndef ZD_STRUCTURE_FORMAT
#error "ZD_STRUCTURE_FORMAT names the reader"
#endif

namespace {

void check(const hxl::STRUCTURE_TYPE& st) {
    if (st.sg.seitz.empty() || !(st.cell_rec.volume > 0)) std::abort();
    for (const auto& a : st.atoms)
        if (a.mult < 1 || a.mult > static_cast<int>(st.sg.seitz.size())) std::abort();
    // A small calculation must also hold: bounded by the range, never a crash.
    hxl::POWDER_CALC_SETTINGS set;
    set.tth_min = 10;
    set.tth_max = 40;
    std::vector<hxl::CALC_REFLECTION_TYPE> refl;
    std::vector<std::string> notes;
    std::string msg;
    if (st.cell_rec.volume < 2000 && st.atoms.size() < 20) hxl::Calc_Powder_Reflections(st, set, refl, notes, msg);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 20000) return 0;
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::vector<hxl::STRUCTURE_TYPE> list;
    hxl::STRUCTURE_TYPE st;
    std::string msg;
    const int format = ZD_STRUCTURE_FORMAT;
    bool ok = false;
    if (format == 0) ok = hxl::Read_Cif_Structures_Text(text, "fuzz", list, msg);
    else if (format == 1) ok = hxl::Read_Shelx_Structure_Text(text, st, msg);
    else if (format == 2) ok = hxl::Read_Qvl_Structure_Text(text, st, msg);
    else ok = hxl::Read_Pcr_Structures_Text(text, list, msg);
    if (!ok) return 0;
    if (format == 1 || format == 2) list.push_back(st);
    for (const auto& s : list) {
        check(s);
        // What the writer makes reads back.
        std::vector<hxl::STRUCTURE_TYPE> back;
        if (!hxl::Read_Cif_Structures_Text(hxl::Cif_Structure_Text(s), "back", back, msg)) std::abort();
    }
    return 0;
}
