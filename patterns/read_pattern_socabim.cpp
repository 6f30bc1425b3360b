// UXD files: "_KEY=value" lines, then the first data range, either pairs of
// 2theta and counts (or counts per second), or counts alone on the step grid.
#include <cmath>
#include <string>
#include <vector>

#include "patterns/pattern_readers.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {
namespace {

float key_value(const std::string& line) {
    const std::size_t eq = line.find('=');
    float v = 0.0f;
    if (eq != std::string::npos) List_Read(std::string_view(line).substr(eq + 1), &v, 1);
    return v;
}

std::string key_text(const std::string& line) {
    const std::size_t eq = line.find('=');
    std::string v = eq == std::string::npos ? std::string() : Trim(line.substr(eq + 1));
    if (v.size() >= 2 && v.front() == '\'' && v.back() == '\'') v = v.substr(1, v.size() - 2);
    return v;
}

}  // namespace

void Read_Pattern_Socabim(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    Clear_Pattern_Error();
    const char* instr = " Error on Socabim UXD Intensity file, check your instr parameter!";
    p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
    float start = 0.0f, steptime = 0.0f;
    int stepcount = 0;
    bool pairs = false, per_second = false, found = false;
    std::string line;
    bool first = true;
    while (unit.Read_Line(line)) {
        line = Trim(line);
        if (first && Starts_With(line, ";")) p.title = Cut(Trim(line.substr(1)), kTitleLen);
        first = false;
        const std::string up = Upper(line);
        if (up == "_2THETACOUNTS" || up == "_2THETACPS" || up == "_COUNTS" || up == "_CPS") {
            pairs = Starts_With(up, "_2THETA");
            per_second = up.find("CPS") != std::string::npos;
            found = true;
            break;
        }
        if (Starts_With(up, "_STEPSIZE")) p.step = key_value(line);
        else if (Starts_With(up, "_STEPTIME")) steptime = key_value(line);
        else if (Starts_With(up, "_STEPCOUNT")) stepcount = Point_Count(key_value(line));
        else if (Starts_With(up, "_START")) start = key_value(line);
        else if (Starts_With(up, "_WL1")) p.lambda1 = key_value(line);
        else if (Starts_With(up, "_WL2")) p.lambda2 = key_value(line);
        else if (Starts_With(up, "_WLRATIO")) p.ratio = key_value(line);
        else if (Starts_With(up, "_SAMPLE")) p.title = Cut(key_text(line), kTitleLen);
    }
    if (!found) return Set_Pattern_Error(" Error on Socabim UXD Intensity file, check your mode parameter!");

    std::vector<float> xs, ys;
    float f[16];
    while (unit.Read_Line(line)) {
        const std::string t = Trim(line);
        if (t.empty()) continue;
        if (t[0] == '_' || t[0] == ';') break;  // the next range begins
        int got = 0;
        if (!Read_Row_Fields(t, f, 16, got)) return Set_Pattern_Error(instr);
        if (pairs) {
            if (got % 2 != 0) return Set_Pattern_Error(instr);
            for (int k = 0; k + 1 < got; k += 2) {
                xs.push_back(f[k]);
                ys.push_back(f[k + 1]);
            }
        } else {
            for (int k = 0; k < got; ++k) ys.push_back(f[k]);
        }
        if (stepcount > 0 && static_cast<int>(ys.size()) >= stepcount) break;
    }
    p.npts = static_cast<int>(ys.size());
    if (stepcount > 0 && p.npts > stepcount) p.npts = stepcount;
    if (p.npts <= 0) return Set_Pattern_Error(" Error in Intensity file, Number of points negative or zero!");
    Allocate_Pattern(p);
    if (ERR_Pattern) return;
    const float t = steptime > 0.0f ? steptime : 1.0f;
    for (int i = 1; i <= p.npts; ++i) {
        const float y = ys[static_cast<std::size_t>(i - 1)];
        p.y(i) = y;
        p.sigma(i) = per_second ? std::fabs(y) / t : std::fabs(y);  // counts are Poisson
        p.x(i) = pairs ? xs[static_cast<std::size_t>(i - 1)] : start + static_cast<float>(i - 1) * p.step;
    }
    p.xmin = p.x(1);
    p.xmax = p.x(p.npts);
    if (pairs || p.step <= 0.0f) p.step = Mean_Step(p);
    Pattern_Y_Limits(p);
}

}  // namespace hxl
