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
    GSAS_HEAD_TYPE comments;
    while (unit.Read_Line(line) && count < static_cast<int>(patterns.size())) {
        if (first) {
            title = Cut(Trim(line), kTitleLen);
            head_scale(line, fac_y);
            Read_Gsas_Head_Line(line, comments);
            first = false;
            continue;
        }
        const std::string adj = Adjustl(line);
        if (!Starts_With(Upper(adj), "BANK")) {
            if (in_head) head_scale(line, fac_y);
            Read_Gsas_Head_Line(line, comments);
            continue;
        }
        in_head = false;
        GSAS_BANK_TYPE head;
        auto& p = patterns[static_cast<std::size_t>(count)];
        p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
        // Constant-wavelength banks hold centidegrees: such a file is read in 2theta.
        const bool parsed = Parse_Bank_Line(adj, head);
        const bool cw = parsed && Gsas_Const_Bins(head);
        if (!parsed || !Read_Bank_Data(unit, head, !cw, p)) {
            const std::string why = ERR_Pattern ? ERR_Pattern_Mess : std::string();
            return Set_Pattern_Error(" Error reading an ISIS profile DATA file" + (why.empty() ? "" : ":" + why));
        }
        scale_intensities(p, fac_y);
        p.title = Cut(title + " BANK " + std::to_string(head.number), kTitleLen);
        Apply_Gsas_Head(comments, !cw, p);
        p.diff_kind = cw ? "constant_wavelength" : "neutrons_tof";
        p.scat_var = cw ? "2theta" : "TOF";
        p.xax_text = cw ? "2theta(degrees)" : "TOF (micro-seconds)";
        p.ct_step = true;
        ++count;
    }
    if (count == 0) Set_Pattern_Error(" Error reading an ISIS profile DATA file");
}

}  // namespace hxl
