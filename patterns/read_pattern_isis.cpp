// Multi-bank time-of-flight files in the GSAS raw layout: one pattern per bank.
#include <string>
#include <vector>

#include "patterns/gsas_bank.h"
#include "patterns/pattern_readers.h"
#include "support/fixed_text.h"

namespace hxl {

void Read_Pattern_Isis(Text_Unit& unit, std::vector<DIFFRACTION_PATTERN_TYPE>& patterns, int& count,
                       const std::string& /*bank*/) {
    Clear_Pattern_Error();
    count = 0;
    if (patterns.empty()) return Set_Pattern_Error(" Error in Intensity file, wrong number of patterns !");
    std::string line, title;
    bool first = true;
    while (unit.Read_Line(line) && count < static_cast<int>(patterns.size())) {
        if (first) {
            title = Cut(Trim(line), kTitleLen);
            first = false;
            continue;
        }
        const std::string adj = Adjustl(line);
        if (!Starts_With(Upper(adj), "BANK")) continue;
        GSAS_BANK_TYPE head;
        auto& p = patterns[static_cast<std::size_t>(count)];
        p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
        if (!Parse_Bank_Line(adj, head) || !Read_Bank_Data(unit, head, true, p)) {
            const std::string why = ERR_Pattern ? ERR_Pattern_Mess : std::string();
            return Set_Pattern_Error(" Error reading an ISIS profile DATA file" + (why.empty() ? "" : ":" + why));
        }
        p.title = Cut(title + " BANK " + std::to_string(head.number), kTitleLen);
        p.diff_kind = "neutrons_tof";
        p.scat_var = "TOF";
        p.ct_step = true;
        ++count;
    }
    if (count == 0) Set_Pattern_Error(" Error reading an ISIS profile DATA file");
}

}  // namespace hxl
