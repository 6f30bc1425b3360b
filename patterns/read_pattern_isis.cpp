// Multi-bank time-of-flight files in the GSAS raw layout: one pattern per bank.
// The head (the title line of facility files) may carry "scale= f": the
// factor fac_y by which every bank's intensities are multiplied.
#include <string>
#include <vector>

#include "patterns/gsas_bank.h"
#include "patterns/pattern_readers.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {
namespace {

// The factor behind "scale=" in a head line; 1 when absent, unreadable or not positive.
void head_scale(std::string_view line, float& fac_y) {
    const std::size_t at = line.find("scale=");
    if (at == std::string_view::npos) return;
    float f = 0.0f;
    if (List_Read(line.substr(at + 6), &f, 1) == List_Result::Ok) fac_y = f > 0.0f ? f : 1.0f;
}

void scale_intensities(DIFFRACTION_PATTERN_TYPE& p, float fac_y) {
    if (fac_y == 1.0f) return;
    for (int i = 1; i <= p.npts; ++i) {
        p.y(i) *= fac_y;
        p.sigma(i) *= fac_y * fac_y;  // a variance
    }
    Pattern_Y_Limits(p);
}

}  // namespace

void Read_Pattern_Isis(Text_Unit& unit, std::vector<DIFFRACTION_PATTERN_TYPE>& patterns, int& count,
                       const std::string& /*bank*/) {
    Clear_Pattern_Error();
    count = 0;
    if (patterns.empty()) return Set_Pattern_Error(" Error in Intensity file, wrong number of patterns !");
    std::string line, title;
    bool first = true, in_head = true;
    float fac_y = 1.0f;
    while (unit.Read_Line(line) && count < static_cast<int>(patterns.size())) {
        if (first) {
            title = Cut(Trim(line), kTitleLen);
            head_scale(line, fac_y);
            first = false;
            continue;
        }
        const std::string adj = Adjustl(line);
        if (!Starts_With(Upper(adj), "BANK")) {
            if (in_head) head_scale(line, fac_y);
            continue;
        }
        in_head = false;
        GSAS_BANK_TYPE head;
        auto& p = patterns[static_cast<std::size_t>(count)];
        p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
        if (!Parse_Bank_Line(adj, head) || !Read_Bank_Data(unit, head, true, p)) {
            const std::string why = ERR_Pattern ? ERR_Pattern_Mess : std::string();
            return Set_Pattern_Error(" Error reading an ISIS profile DATA file" + (why.empty() ? "" : ":" + why));
        }
        scale_intensities(p, fac_y);
        p.title = Cut(title + " BANK " + std::to_string(head.number), kTitleLen);
        p.diff_kind = "neutrons_tof";
        p.scat_var = "TOF";
        p.ct_step = true;
        ++count;
    }
    if (count == 0) Set_Pattern_Error(" Error reading an ISIS profile DATA file");
}

}  // namespace hxl
