// Three columns, x, y and the standard deviation, under "#" comment lines:
// the form most reduction programs exchange.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "patterns/pattern_writers.h"
#include "patterns/replace_file.h"
#include "support/fixed_text.h"

namespace hxl {

bool Save_XYE(const std::string& filename, const DIFFRACTION_PATTERN_TYPE& p, std::string& message) {
    std::string out = "# " + Trim(p.title) + "\n";
    char buf[160];
    std::snprintf(buf, sizeof buf, "# %s  wavelength %.5f\n", Trim(p.scat_var).c_str(), static_cast<double>(p.lambda1));
    out += buf;
    const int n = std::min({p.npts, p.x.size(), p.y.size(), p.sigma.size()});
    for (int i = 1; i <= n; ++i) {
        double s = p.sig_var ? std::sqrt(std::fabs(static_cast<double>(p.sigma(i)))) : p.sigma(i);
        std::snprintf(buf, sizeof buf, "%12.5f %15.5f %13.5f\n", static_cast<double>(p.x(i)), static_cast<double>(p.y(i)), s);
        out += buf;
    }
    if (!Replace_File(filename, out)) {
        message = "Error writing the file: " + filename;
        return false;
    }
    return true;
}

}  // namespace hxl
