// zendrite-batch sg: the listing of a space group with its reflection conditions.
#include <string>

#include "app/batch/batch_verbs.h"
#include "crystal/cryst_listing.h"
#include "crystal/space_group.h"

namespace zendrite {
namespace {

int run_sg(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::string symbol;
    for (const auto& a : args) symbol += (symbol.empty() ? "" : " ") + a;
    if (symbol.empty()) {
        err << "zendrite-batch sg: give a space-group symbol or number\n";
        return 2;
    }
    hxl::SPACE_GROUP_TYPE sg;
    hxl::Set_SpaceGroup(symbol, sg);
    if (hxl::ERR_Symm) {
        err << " Problems in SpaceGroup: " << hxl::ERR_Symm_Mess << "\n";
        if (!hxl::ERR_Symm_Info.empty()) err << " " << hxl::ERR_Symm_Info << "\n";
        return 1;
    }
    hxl::List_Space_Group_And_Conditions(sg, out);
    return 0;
}

const bool registered = Register_Batch_Verb(
    {"sg", "sg SYMBOL|NUMBER",
     "      prints the \"Information on Space Group:\" listing of a Hermann-Mauguin\n"
     "      symbol (\"P b m n\", \"Pbmn\", \"F d -3 m:1\"), a Hall symbol or a number,\n"
     "      with its operators, asymmetric unit, special Wyckoff positions and\n"
     "      reflection conditions",
     run_sg});

}  // namespace
}  // namespace zendrite
