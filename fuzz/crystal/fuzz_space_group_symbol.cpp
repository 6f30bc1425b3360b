// Any text as a space-group symbol, a Hall symbol, or a list of operators:
// a message or a group, never a crash; a group that comes back is closed.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "crystal/hall_symbol.h"
#include "crystal/space_group.h"
#include "crystal/sym_oper.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 200) return 0;
    const std::string text(reinterpret_cast<const char*>(data), size);
    hxl::SPACE_GROUP_TYPE sg;
    hxl::Set_SpaceGroup(text, sg);
    hxl::Set_SpaceGroup(text, sg, {}, "HAL");
    std::vector<std::string> gens;
    std::string cur;
    for (char c : text) {
        if (c == ';') {
            gens.push_back(cur);
            cur.clear();
        } else {
            cur += c;
        }
    }
    gens.push_back(cur);
    hxl::Set_SpaceGroup("", sg, gens, "GEN");
    if (!hxl::ERR_Symm) {
        // Closed under products: every product is in the list.
        for (const auto& a : sg.seitz)
            for (const auto& b : sg.seitz) {
                const hxl::SEITZ_TYPE p = hxl::Seitz_Product(a, b);
                bool found = false;
                for (const auto& c : sg.seitz) found = found || c == p;
                if (!found) std::abort();
            }
    }
    hxl::SYM_OPER_TYPE op;
    std::string msg;
    if (hxl::Parse_Operator(text, op, msg)) {
        hxl::SYM_OPER_TYPE back;
        if (!hxl::Parse_Operator(hxl::Format_Operator(op), back, msg)) std::abort();
    }
    std::vector<hxl::SEITZ_TYPE> g;
    hxl::Hall_Generators(text, g, msg);
    return 0;
}
