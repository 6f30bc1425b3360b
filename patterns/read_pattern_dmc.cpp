// DMC/HRPT files: title, a kept line, start/step/end, the counts ten to a
// line in columns of 8, then optionally a block of the same layout with sigma.
#include <cmath>
#include <string>

#include "patterns/pattern_readers.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {
namespace {

// Newer writers put counts of more than eight digits blank-separated instead
// of in columns of 8; such a block is read in free format.
bool read_block(Text_Unit& unit, float* out, int n) {
    const std::size_t start = unit.Position();
    if (Read_Fixed_Reals(unit, out, n, 10, 8) == Field_Result::Ok) return true;
    unit.Seek(start);
    return List_Read(unit, out, n) == List_Result::Ok;
}

}  // namespace

void Read_Pattern_DMC(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    Clear_Pattern_Error();
    p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
    std::string line;
    if (!unit.Read_Line(line))
        return Set_Pattern_Error(" Error in Intensity file (first line), check your instr parameter!");
    p.title = Cut(Trim(line), kTitleLen);
    if (!unit.Read_Line(line))
        return Set_Pattern_Error(" Error in Intensity file (second line), check your instr parameter!");
    Read_Psi_Lambda_Line(line, p);
    float lim[3] = {0, 0, 0};
    const std::size_t limits_at = unit.Position();
    const bool limits_read = List_Read(unit, lim, 3) == List_Result::Ok;
    if (limits_read) {
        const std::string_view t = std::string_view(unit.Text()).substr(limits_at);
        Read_Psi_Monitor(t.substr(0, t.find_first_of("\r\n")), p);
    }
    if (!limits_read)
        return Set_Pattern_Error(" Error reading 2theta_min,step,2theta_max (third line), check your instr parameter!");
    p.xmin = lim[0];
    p.step = lim[1];
    p.xmax = lim[2];
    p.npts = p.step > 0.0f ? Point_Count((double(p.xmax) - p.xmin) / p.step + 1.005) : 0;
    if (p.npts < 20 || Implausible_Count(unit, p.npts))
        return Set_Pattern_Error(" Number of points too low! check your instr parameter!");
    Allocate_Pattern(p);
    if (ERR_Pattern) return;
    if (!read_block(unit, p.y.data(), p.npts))
        return Set_Pattern_Error(" Error in Intensity file (intensities), check your instr parameter!");

    // A row of ten numbers after the counts announces the sigma block.
    std::string probe;
    float test[10];
    int got = 0;
    const std::size_t start = unit.Position();
    const bool has_sigma = unit.Read_Line(probe) && !Is_Blank(probe) && Read_Row_Fields(probe, test, 10, got) && got >= 1;
    unit.Seek(start);
    if (has_sigma) {
        if (!read_block(unit, p.sigma.data(), p.npts))
            return Set_Pattern_Error(" Error in Intensity file (sigmas), check your instr parameter!");
    } else {
        for (int i = 1; i <= p.npts; ++i) p.sigma(i) = std::sqrt(std::fabs(p.y(i)));
    }
    Fill_Constant_Step(p);
    p.xmax = p.x(p.npts);
    Pattern_Y_Limits(p);
}

}  // namespace hxl
