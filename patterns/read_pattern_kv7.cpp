// KV7/KV9/KG3/KG4 files: title, step, start, normalisation and monitor in
// fixed columns; the count follows from the 18 degrees each detector scans.
#include <cmath>
#include <string>
#include <vector>

#include "patterns/pattern_readers.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"

namespace hxl {

void Read_Pattern_KV7(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    Clear_Pattern_Error();
    const char* instr = " Error in Intensity file, check your instr parameter!";
    p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
    std::string l1, l2, l3, l4;
    if (!unit.Read_Line(l1)) return Set_Pattern_Error(instr);
    p.title = Cut(Trim(l1), kTitleLen);
    float norm = 0.0f, third = 0.0f;
    if (!unit.Read_Line(l2) || !Fixed_Real(l2, 16, 8, p.step, 3) || !unit.Read_Line(l3) ||
        !Fixed_Real(l3, 0, 8, p.xmin, 3) || !unit.Read_Line(l4) || !Fixed_Real(l4, 0, 8, norm) ||
        !Fixed_Real(l4, 8, 8, p.monitor) || !Fixed_Real(l4, 16, 8, third))
        return Set_Pattern_Error(instr);
    const float f = norm >= 1.0f ? p.monitor / norm : 1.0f;
    // in double: a tiny step must fail the count check, not overflow it
    p.npts = p.step > 0.0f ? Point_Count(10.0 * std::nearbyint(18.0 / p.step)) : 0;
    if (p.npts <= 0 || Implausible_Count(unit, p.npts))
        return Set_Pattern_Error(" Error in Intensity file, Number of points negative or zero!");
    Allocate_Pattern(p);
    if (ERR_Pattern) return;
    std::vector<int> cells(static_cast<std::size_t>(p.npts));
    if (Read_Fixed_Pairs(unit, cells.data(), p.y.data(), p.npts, 10, 2, 6) != Field_Result::Ok)
        return Set_Pattern_Error(instr);
    p.xmax = static_cast<float>(p.npts - 1) * p.step + p.xmin;
    for (int i = 1; i <= p.npts; ++i)
        p.sigma(i) = std::fabs(p.y(i)) * f / static_cast<float>(std::max(cells[static_cast<std::size_t>(i - 1)], 1));
    Fill_Constant_Step(p);
    Pattern_Y_Limits(p);
}

}  // namespace hxl
