#pragma once
// The listings of a space group and of a cell with its group, as the space
// group tool and the crystallographic calculator print them.
#include <ostream>
#include <string>

#include "crystal/space_group.h"

namespace hxl {

// The "Information on Space Group:" listing, the asymmetric region of the
// reflections and the three sections of reflection conditions.
void List_Space_Group_And_Conditions(const SPACE_GROUP_TYPE& sg, std::ostream& unit);

// The cell's "Metric information:" followed by the listing above. False, with
// the system's text in `message` and nothing written, on an empty group text
// ("Empty SPGR field"), a group that cannot be read (" Problems in SpaceGroup: "
// and why), or edges and angles that give no cell ("Wrong cell parameters").
bool Crystallographic_Listing(const float cell[6], const std::string& symbol, std::string& text, std::string& message);

}  // namespace hxl
