// Diffractometer CSV export: "key,value" lines up to "[Scan points]", a line
// of column titles, then "angle,intensity" rows.
#include <cmath>
#include <string>
#include <vector>

#include "patterns/pattern_readers.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {
namespace {

float value_behind(const std::string& line, std::size_t keylen, int index = 0) {
    double v[2] = {0, 0};
    std::string rest = Adjustl(line.substr(std::min(keylen, line.size())));
    if (!rest.empty() && rest[0] == ',') rest.erase(0, 1);  // "key,value": the first comma is not a null value
    List_Read(rest, v, index + 1);
    return static_cast<float>(v[index]);
}

}  // namespace

void Read_Pattern_Csv(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    Clear_Pattern_Error();
    p.ct_step = false;
    p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
    std::string line;
    int declared = -1;
    while (true) {
        if (!unit.Read_Line(line)) return Set_Pattern_Error(" Error reading a profile CSV-DATA file: end of file");
        line = Adjustl(line);
        if (Starts_With(line, "[Scan points]")) break;
        if (Starts_With(line, "Title 1")) p.title = Cut(Keyword_Value(line.substr(7)).substr(0), kTitleLen);
        if (!p.title.empty() && p.title[0] == ',') p.title = Cut(Trim(p.title.substr(1)), kTitleLen);
        if (Starts_With(line, "K-Alpha1 wavelength")) p.lambda1 = value_behind(line, 19);
        if (Starts_With(line, "K-Alpha2 wavelength")) p.lambda2 = value_behind(line, 19);
        if (Starts_With(line, "Ratio K-Alpha2/K-Alpha1")) p.ratio = value_behind(line, 23);
        // Newer exports name the range "Scan range".
        if (Starts_With(line, "Data angle range") || Starts_With(line, "Scan range")) {
            const std::size_t k = Starts_With(line, "Scan range") ? 10 : 16;
            p.xmin = value_behind(line, k, 0);
            p.xmax = value_behind(line, k, 1);
        }
        if (Starts_With(line, "Scan step size")) p.step = value_behind(line, 14);
        if (Starts_With(line, "No. of points")) declared = Point_Count(value_behind(line, 13));
    }
    if (!unit.Read_Line(line)) return Set_Pattern_Error(" Error reading a profile CSV-DATA file: end of file");
    // The rows themselves are counted when the head gives no count.
    const std::size_t start = unit.Position();
    int rows = 0;
    std::string_view v;
    while (unit.Read_Line(v) && !Is_Blank(v)) ++rows;
    unit.Seek(start);
    p.npts = declared >= 0 ? std::min(declared, rows) : rows;
    if (p.npts <= 0) return Set_Pattern_Error(" Error in (Csv)Intensity file, Number of points negative or zero!");
    Allocate_Pattern(p);
    if (ERR_Pattern) return;
    for (int i = 1; i <= p.npts; ++i) {
        unit.Read_Line(v);
        const std::size_t comma = v.find(',');
        float xy[2] = {0, 0};
        if (comma == std::string_view::npos || List_Read(v.substr(0, comma), &xy[0], 1) != List_Result::Ok ||
            List_Read(v.substr(comma + 1), &xy[1], 1) != List_Result::Ok)
            return Set_Pattern_Error(" Error reading a profile CSV-DATA file: bad row " + std::string(Trim(v)));
        p.x(i) = xy[0];
        p.y(i) = xy[1];
        p.sigma(i) = std::fabs(xy[1]);
    }
    p.xmin = p.x(1);
    p.xmax = p.x(p.npts);
    if (p.step <= 0.0f) p.step = Mean_Step(p);
    Pattern_Y_Limits(p);
}

}  // namespace hxl
