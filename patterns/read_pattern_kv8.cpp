// KV8/KW2 files: a four-line head, a line of monitor, start, step and
// temperatures in fixed columns, the count, then cells and counts in pairs.
#include <cmath>
#include <string>
#include <vector>

#include "patterns/pattern_readers.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"

namespace hxl {

void Read_Pattern_KV8(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    Clear_Pattern_Error();
    const char* instr = " Error in  Intensity file, check your instr parameter!";
    p.scal = p.monitor = 0.0f;
    std::string line[4];
    for (auto& l : line)
        if (!unit.Read_Line(l)) {
            Set_Pattern_Error(" Error in Intensity file, check your instr parameter!");
            return;
        }
    p.title = Cut(Trim(line[2]) + " " + Trim_Right(line[3]), kTitleLen);

    std::string l5, l6;
    float discard = 0.0f;
    if (!unit.Read_Line(l5) || !Fixed_Real(l5, 0, 13, p.monitor) || !Fixed_Real(l5, 23, 8, p.xmin, 3) ||
        !Fixed_Real(l5, 76, 9, p.step, 3) || !Fixed_Real(l5, 85, 9, p.tset, 3) || !Fixed_Real(l5, 94, 9, discard, 3) ||
        !Fixed_Real(l5, 103, 9, p.tsamp, 3)) {
        Set_Pattern_Error(instr);
        return;
    }
    float count = 0.0f;
    if (!unit.Read_Line(l6) || !Fixed_Real(l6, 0, 4, count) || count != std::floor(count)) {
        Set_Pattern_Error(instr);
        return;
    }
    p.npts = Point_Count(count);
    if (p.npts <= 0 || Implausible_Count(unit, p.npts)) {
        Set_Pattern_Error(" Error in Intensity file, Number of points negative or zero!");
        return;
    }
    Allocate_Pattern(p);
    if (ERR_Pattern) return;
    std::vector<int> cells(static_cast<std::size_t>(p.npts));
    std::string tail;
    if (Read_Fixed_Pairs(unit, cells.data(), p.y.data(), p.npts, 10, 2, 8) != Field_Result::Ok ||
        !unit.Read_Line(tail)) {
        Set_Pattern_Error(instr);
        return;
    }
    p.xmax = static_cast<float>(p.npts - 1) * p.step + p.xmin;
    for (int i = 1; i <= p.npts; ++i) {
        const int n = std::max(cells[static_cast<std::size_t>(i - 1)], 1);
        p.sigma(i) = std::fabs(p.y(i)) / static_cast<float>(n);
    }
    Fill_Constant_Step(p);
    Pattern_Y_Limits(p);
}

}  // namespace hxl
