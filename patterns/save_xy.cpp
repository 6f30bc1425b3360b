// "XYDATA" export: x, y and the standard deviation, with an optional linear
// background removed and a multiplier applied.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "patterns/pattern_writers.h"
#include "patterns/replace_file.h"
#include "support/fixed_text.h"

namespace hxl {

XY_EXPORT_TYPE XY_Export_Defaults(const DIFFRACTION_PATTERN_TYPE& p) {
    XY_EXPORT_TYPE o;
    o.xmin = p.xmin;
    o.xmax = p.xmax;
    return o;
}

bool Save_XY(const std::string& filename, const DIFFRACTION_PATTERN_TYPE& p, const std::string& prf_name,
             const XY_EXPORT_TYPE& o, std::string& message) {
    message.clear();
    const float f = o.multiplier;
    const std::string scat = Trim(p.scat_var);
    std::string out;
    out.reserve(static_cast<std::size_t>(std::max(p.npts, 0)) * 50 + 512);
    out += "XYDATA\n";
    out += "TITLE: " + Trim(p.title) + "\n";
    out += "! File saved from Zendrite-2006\n";
    out += "! File name: " + Trim(prf_name) + "\n";
    out += "! Scattering variable: " + scat + "\n";
    char buf[160];
    if (f > 1.001f || f < 0.9999f) {
        std::snprintf(buf, sizeof buf, "%12.4f", static_cast<double>(f));
        out += std::string("! The original data and sigma have been multiplied by: ") + buf + "\n";
    }
    out += "! " + scat + "     " + "Intensity\n";
    const int n = std::min({p.npts, p.x.size(), p.y.size(), p.sigma.size()});
    for (int i = 1; i <= n; ++i) {
        const float xi = p.x(i);
        if (!(xi >= o.xmin && xi <= o.xmax)) continue;
        const float yi = (p.y(i) - (o.a * xi + o.b)) * f;
        const float var = p.sigma(i);
        const float sd = (p.sig_var ? std::sqrt(std::fabs(var)) : std::fabs(var)) * f;
        std::snprintf(buf, sizeof buf, "%14.4f  %16.4f%16.4f\n", static_cast<double>(xi), static_cast<double>(yi),
                      static_cast<double>(sd));
        out += buf;
    }
    if (!Replace_File(filename, out)) {
        message = "Unable to write XY Pattern File!";
        return false;
    }
    return true;
}

}  // namespace hxl
