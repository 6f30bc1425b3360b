// NLS files: title, "!" comments, start/step/end, then per ten points a row
// of counts and a row of sigma, columns of 8.
#include <algorithm>
#include <string>

#include "patterns/pattern_readers.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {

void Read_Pattern_NLS(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    Clear_Pattern_Error();
    const char* instr = " Error in  Intensity file, check your instr parameter!";
    p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
    std::string line;
    bool first = true;
    while (true) {
        if (!unit.Read_Line(line)) return Set_Pattern_Error(instr);
        line = Cut(line, 132);
        if (first) {
            p.title = Cut(Trim(line), kTitleLen);
            first = false;
            continue;
        }
        if (!Starts_With(line, "!")) break;
    }
    float lim[3] = {0, 0, 0};
    if (List_Read(line, lim, 3) != List_Result::Ok) return Set_Pattern_Error(instr);
    p.xmin = lim[0];
    p.step = lim[1];
    p.xmax = lim[2];
    p.npts = 0;  // from the head
    if (!Allocate_Fixed_Step(unit, p)) return;
    for (int i = 0; i < p.npts; i += 10) {
        const int k = std::min(10, p.npts - i);
        if (Read_Fixed_Reals(unit, p.y.data() + i, k, 10, 8) != Field_Result::Ok)
            return Set_Pattern_Error(" Error in (NLS) Intensity file, check your instr parameter!1");
        if (Read_Fixed_Reals(unit, p.sigma.data() + i, k, 10, 8) != Field_Result::Ok)
            return Set_Pattern_Error(" Error in (NLS) Intensity file, check your instr parameter!2");
    }
    Fill_Constant_Step(p);
    p.xmax = p.x(p.npts);
    Pattern_Y_Limits(p);
}

}  // namespace hxl
