#include "crystal/cryst_listing.h"

#include <cmath>
#include <sstream>

#include "crystal/crystal_metrics.h"
#include "crystal/niggli_cell.h"
#include "crystal/reflections.h"
#include "support/fixed_text.h"

namespace hxl {

void List_Space_Group_And_Conditions(const SPACE_GROUP_TYPE& sg, std::ostream& unit) {
    List_Space_Group(sg, unit);
    unit << "\n => Asymmetric region of reflections: " << Laue_Region_Text(sg) << "\n";
    Write_Reflection_Conditions(sg, unit);
}

bool Crystallographic_Listing(const float cell[6], const std::string& symbol, std::string& text, std::string& message) {
    message.clear();
    if (Is_Blank(symbol)) {
        message = "Empty SPGR field";
        return false;
    }
    for (int i = 0; i < 6; ++i)
        if (!std::isfinite(cell[i]) || !(cell[i] > 0) || (i >= 3 && !(cell[i] < 180))) {
            message = "Wrong cell parameters";
            return false;
        }
    Cell_Record rec;
    const bool angles_ok = Cell_Angles_Allowed(cell + 3);
    Fill_Cell_Record(cell, cell + 3, rec);
    if (!angles_ok || ERR_Crys || !(rec.volume > 0) || !std::isfinite(rec.volume)) {
        message = "Wrong cell parameters";
        return false;
    }
    SPACE_GROUP_TYPE sg;
    Set_SpaceGroup(symbol, sg);
    if (ERR_Symm) {
        message = " Problems in SpaceGroup: " + ERR_Symm_Mess;
        if (!ERR_Symm_Info.empty()) message += "\n " + ERR_Symm_Info;
        return false;
    }
    std::ostringstream out;
    List_Cell(rec, out);
    out << "\n";
    List_Space_Group_And_Conditions(sg, out);
    text = out.str();
    return true;
}

}  // namespace hxl
