// JCAMP-DX text with "##" keyword lines and an "X++<Y..Y>" table: an X value
// and five intensities a row; X follows from the first X and the step.
// Converters also write the pattern as a "PEAK TABLE=(XY..XY)" of X,Y pairs.
#include <cmath>
#include <string>
#include <vector>

#include "patterns/pattern_readers.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {
namespace {

// "##FIRSTX=" and "## FIRSTX=" are both written by instruments.
std::string normalised(std::string_view line) {
    std::string s = Adjustl(line);
    if (Starts_With(s, "##") && s.size() > 2 && s[2] != ' ' && s[2] != '$') return "## " + s.substr(2);
    return s;
}

const char* const kDataEnd = " Error reading a profile JCP-DATA file: end of file";

// Pairs separated by blanks, commas or semicolons up to the next "##" line.
void read_peak_table(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    std::vector<float> xs, ys;
    std::string_view row;
    float pending = 0.0f;
    bool have_x = false;
    while (unit.Read_Line(row)) {
        std::size_t a = row.find_first_not_of(" \t");
        if (a != std::string_view::npos && row.substr(a, 2) == "##") break;
        while (a < row.size()) {
            a = row.find_first_not_of(" \t,;", a);
            if (a == std::string_view::npos) break;
            std::size_t b = row.find_first_of(" \t,;", a);
            if (b == std::string_view::npos) b = row.size();
            float v = 0.0f;
            if (!Parse_Real(row.substr(a, b - a), v))
                return Set_Pattern_Error(" Error reading a profile JCP-DATA file: bad value");
            if (have_x) {
                xs.push_back(pending);
                ys.push_back(v);
            } else {
                pending = v;
            }
            have_x = !have_x;
            a = b;
        }
    }
    if (have_x) return Set_Pattern_Error(kDataEnd);  // an X without its Y
    if (xs.empty()) return Set_Pattern_Error(" Error in Intensity file, Number of points negative or zero!");
    Allocate_Pattern(p, static_cast<int>(xs.size()));
    if (ERR_Pattern) return;
    for (int i = 1; i <= p.npts; ++i) {
        p.x(i) = xs[static_cast<std::size_t>(i - 1)];
        p.y(i) = ys[static_cast<std::size_t>(i - 1)];
        p.sigma(i) = std::fabs(p.y(i));
    }
    p.xmin = p.x(1);
    p.xmax = p.x(p.npts);
    p.step = Mean_Step(p);
    Pattern_Y_Limits(p);
}

}  // namespace

void Read_Pattern_Jcamp(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    Clear_Pattern_Error();
    p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
    std::string line;
    bool any_key = false;
    float npoints = 0.0f;
    while (true) {
        if (!unit.Read_Line(line)) {
            return Set_Pattern_Error(any_key ? " Error reading a profile  file: end of file"
                                             : " Error reading a profile XRDML-DATA file: end of file");
        }
        line = normalised(line);
        auto val = [&](std::string_view key, float& out) {
            if (!Starts_With(line, key)) return false;
            List_Read(std::string_view(line).substr(key.size()), &out, 1);
            any_key = true;
            return true;
        };
        if (Starts_With(line, "## XYDATA=")) break;
        if (Starts_With(line, "## PEAK TABLE=")) return read_peak_table(unit, p);
        if (Starts_With(line, "## TITLE=")) p.title = Cut(Trim(line.substr(9)), kTitleLen);
        val("##$WAVELENGTH ALPHA1=", p.lambda1) || val("##$WAVELENGTH ALPHA2=", p.lambda2) ||
            val("##$INTENSITY RATIO ALPHA2/ALPHA1=", p.ratio) || val("## FIRSTX=", p.xmin) ||
            val("## LASTX=", p.xmax) || val("## DELTAX=", p.step) || val("## NPOINTS=", npoints);
    }
    p.npts = Point_Count(npoints);
    if (!Allocate_Fixed_Step(unit, p)) return;
    std::string_view row;
    for (int k = 0; k < p.npts;) {
        if (!unit.Read_Line(row) || Starts_With(Adjustl(row), "##")) return Set_Pattern_Error(kDataEnd);
        for (int j = 0; j < 5 && k < p.npts; ++j, ++k)
            if (!Fixed_Real(row, static_cast<std::size_t>(10 + 11 * j), 11, p.y.data()[k], 3))
                return Set_Pattern_Error(" Error reading a profile JCP-DATA file: bad value");
    }
    for (int i = 1; i <= p.npts; ++i) p.sigma(i) = std::fabs(p.y(i));
    Fill_Constant_Step(p);
    p.xmax = p.x(p.npts);
    Pattern_Y_Limits(p);
}

}  // namespace hxl
