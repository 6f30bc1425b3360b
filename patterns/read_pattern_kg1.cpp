// KG1 files: title, a skipped line, "!" comments, a line of count,
// temperatures, variance flag, monitor and normalisation, then free-format
// limits, counts and (with the flag) variances. Some instruments write a
// further text line or two (wavelength and sample) before the count line.
#include <string>

#include "patterns/pattern_readers.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {

void Read_Pattern_KG1(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    Clear_Pattern_Error();
    const char* instr = " Error in Intensity file, check your instr parameter!";
    p.scal = p.monitor = 0.0f;
    std::string line;
    if (!unit.Read_Line(line)) return Set_Pattern_Error(instr);
    p.title = Cut(Trim(line), kTitleLen);
    if (!unit.Read_Line(line)) return Set_Pattern_Error(instr);
    constexpr int kTextLines = 3;  // head lines beyond the second, not counting "!" comments
    double head[6] = {0, 0, 0, 0, 0, 0};
    for (int text = 0;;) {
        if (!unit.Read_Line(line)) return Set_Pattern_Error(instr);
        line = Adjustl(line);
        if (Starts_With(line, "!")) continue;
        for (double& h : head) h = 0.0;
        if (List_Read(line, head, 6) == List_Result::Ok) break;
        if (++text >= kTextLines) return Set_Pattern_Error(instr);
    }
    p.tsamp = static_cast<float>(head[1]);
    p.tset = static_cast<float>(head[2]);
    const int ivar = Point_Count(head[3]);
    const float mon = static_cast<float>(head[4]), norm = static_cast<float>(head[5]);
    p.monitor = mon;
    p.npts = Point_Count(head[0]);
    if (p.npts <= 0 || Implausible_Count(unit, p.npts))
        return Set_Pattern_Error(" Error in Intensity file, Number of points negative or zero!");
    Allocate_Pattern(p);
    if (ERR_Pattern) return;
    float lim[3] = {0, 0, 0};
    if (List_Read(unit, lim, 3) != List_Result::Ok || List_Read(unit, p.y.data(), p.npts) != List_Result::Ok)
        return Set_Pattern_Error(instr);
    p.xmin = lim[0];
    p.step = lim[1];
    p.xmax = lim[2];
    if (ivar == 0) {
        const float f = (mon > 1.0f && norm > 1.0f) ? mon / norm : 1.0f;
        for (int i = 1; i <= p.npts; ++i) p.sigma(i) = f * p.y(i);
    } else if (List_Read(unit, p.sigma.data(), p.npts) != List_Result::Ok) {
        return Set_Pattern_Error(instr);
    }
    Fill_Constant_Step(p);
    Pattern_Y_Limits(p);
}

}  // namespace hxl
