// Variable counting time: three head lines, start/step/end, then pairs of
// counting time and count; every count is brought to the mean time.
#include <string>
#include <vector>

#include "patterns/pattern_readers.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {

void Read_Pattern_TimeVariable(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    Clear_Pattern_Error();
    const char* instr = " Error in  Intensity file, check your instr parameter!";
    p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
    std::string line;
    for (int i = 1; i <= 3; ++i) {
        if (!unit.Read_Line(line)) return Set_Pattern_Error(instr);
        if (i == 1) p.title = Cut(Trim(line), kTitleLen);
    }
    float lim[3] = {0, 0, 0};
    if (List_Read(unit, lim, 3) != List_Result::Ok) return Set_Pattern_Error(instr);
    p.xmin = lim[0];
    p.step = lim[1];
    p.xmax = lim[2];
    p.npts = 0;  // from the head
    if (!Allocate_Fixed_Step(unit, p)) return;
    std::vector<float> time(static_cast<std::size_t>(p.npts)), count(static_cast<std::size_t>(p.npts));
    std::string_view row;
    for (int k = 0; k < p.npts;) {
        if (!unit.Read_Line(row)) return Set_Pattern_Error(instr);
        for (int j = 0; j < 5 && k < p.npts; ++j, ++k) {
            const auto col = static_cast<std::size_t>(16 * j);
            if (!Fixed_Real(row, col, 6, time[static_cast<std::size_t>(k)]) ||
                !Fixed_Real(row, col + 6, 10, count[static_cast<std::size_t>(k)]))
                return Set_Pattern_Error(instr);
        }
    }
    double mean = 0.0;  // in double: many small times
    for (float t : time) {
        if (t == 0.0f) return Set_Pattern_Error(" Zero time in *.DAT");
        mean += t;
    }
    mean /= p.npts;
    for (int i = 1; i <= p.npts; ++i) {
        const double f = mean / time[static_cast<std::size_t>(i - 1)];
        const double c = count[static_cast<std::size_t>(i - 1)];
        p.y(i) = static_cast<float>(c * f);
        p.sigma(i) = static_cast<float>(std::abs(c) * f * f);  // variance of f * count
    }
    Fill_Constant_Step(p);
    p.xmax = p.x(p.npts);
    Pattern_Y_Limits(p);
}

}  // namespace hxl
