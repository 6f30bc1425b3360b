// UDF files: "Key, value" lines up to "RawScan", then eight counts a line
// in columns of nine.
#include <cmath>
#include <string>

#include "patterns/pattern_readers.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {

void Read_Pattern_Udf(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    Clear_Pattern_Error();
    const char* eof = " Error reading a profile UDF-DATA file: end of file";
    p.ct_step = true;
    p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
    std::string line;
    auto values = [&](std::size_t keylen, float* out, int n) {
        List_Read(std::string_view(line).substr(keylen), out, n);
    };
    while (true) {
        if (!unit.Read_Line(line)) return Set_Pattern_Error(eof);
        line = Adjustl(line);
        if (Starts_With(line, "LabdaAlpha1,")) values(12, &p.lambda1, 1);
        else if (Starts_With(line, "LabdaAlpha2,")) values(12, &p.lambda2, 1);
        else if (Starts_With(line, "RatioAlpha21,")) values(13, &p.ratio, 1);
        else if (Starts_With(line, "DataAngleRange,")) {
            float r[2] = {0, 0};
            values(15, r, 2);
            p.xmin = r[0];
            p.xmax = r[1];
        } else if (Starts_With(line, "ScanStepSize,")) values(13, &p.step, 1);
        else if (Starts_With(line, "SampleIdent,") && Is_Blank(p.title)) p.title = Cut(Keyword_Value(line.substr(12)), kTitleLen);
        else if (Starts_With(line, "RawScan")) break;
    }
    p.npts = p.step > 0.0f ? Point_Count((double(p.xmax) - p.xmin) / p.step + 1.2) : 0;
    if (p.npts <= 0 || Implausible_Count(unit, p.npts))
        return Set_Pattern_Error(" Error in Intensity file, Number of points negative or zero!");
    Allocate_Pattern(p);
    if (ERR_Pattern) return;
    std::string_view row;
    for (int k = 0; k < p.npts;) {
        if (!unit.Read_Line(row)) return Set_Pattern_Error(eof);
        for (int j = 0; j < 8 && k < p.npts; ++j, ++k)
            if (!Fixed_Real(row, static_cast<std::size_t>(9 * j), 8, p.y.data()[k]))
                return Set_Pattern_Error(" Error reading a profile UDF-DATA file: bad value");
    }
    for (int i = 1; i <= p.npts; ++i) p.sigma(i) = std::fabs(p.y(i));
    Fill_Constant_Step(p);
    p.xmax = p.x(p.npts);
    Pattern_Y_Limits(p);
}

}  // namespace hxl
