// The older KV7/KV9 layout: an optional title, free-format step, start and
// end, then cells and counts in pairs.
#include <cmath>
#include <string>
#include <vector>

#include "patterns/pattern_readers.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {

void Read_Pattern_KV7_Old(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    Clear_Pattern_Error();
    const char* instr = " Error in Intensity file, check your instr parameter!";
    p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
    std::string l1;
    if (!unit.Read_Line(l1)) return Set_Pattern_Error(instr);
    float probe = 0.0f;
    if (List_Read(l1, &probe, 1) == List_Result::Ok) {
        p.title = " No title: data format -> old KV7";
        unit.Backspace();
    } else {
        p.title = Cut(Trim(l1), kTitleLen);
    }
    float lim[3] = {0, 0, 0};
    if (List_Read(unit, lim, 3) != List_Result::Ok) return Set_Pattern_Error(instr);
    p.step = lim[0];
    p.xmin = lim[1];
    p.xmax = lim[2];
    p.npts = 0;  // from the head
    if (!Allocate_Fixed_Step(unit, p)) return;
    std::vector<int> cells(static_cast<std::size_t>(p.npts));
    if (Read_Fixed_Pairs(unit, cells.data(), p.y.data(), p.npts, 10, 2, 6) != Field_Result::Ok)
        return Set_Pattern_Error(instr);
    for (int i = 1; i <= p.npts; ++i)
        p.sigma(i) = std::fabs(p.y(i)) / static_cast<float>(std::max(cells[static_cast<std::size_t>(i - 1)], 1));
    Fill_Constant_Step(p);
    p.xmax = p.x(p.npts);
    Pattern_Y_Limits(p);
}

}  // namespace hxl
