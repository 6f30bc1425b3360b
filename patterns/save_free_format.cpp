// Free-format export: the pattern resampled to equal steps by a natural spline.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "patterns/pattern_spline.h"
#include "patterns/pattern_writers.h"
#include "patterns/replace_file.h"
#include "support/fixed_text.h"

namespace hxl {
namespace {

// One value in a field of 8; a value too wide for the chosen decimals loses
// decimals, and one too wide even without them gets a wider field, so that
// neighbouring values never run together and nothing is lost.
void put_value(std::string& out, float v, int decimals) {
    char buf[64];
    for (int d = decimals; d >= 0; --d) {
        int len = std::snprintf(buf, sizeof buf, "%8.*f", d, static_cast<double>(v));
        if (len <= 8 && buf[0] == ' ') {
            out.append(buf, static_cast<std::size_t>(len));
            return;
        }
    }
    std::snprintf(buf, sizeof buf, " %.0f.", static_cast<double>(v));
    out += buf;
}

}  // namespace

std::string Export_File_Name(const std::string& name, const std::string& extension) {
    std::string n = Trim(name);
    const std::size_t slash = n.find_last_of('/');
    const std::size_t dot = n.rfind('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) n += extension;
    return n;
}

int Free_Format_Decimals(float largest) {
    const double m = std::fabs(std::nearbyint(static_cast<double>(largest)));
    if (m <= 99.0) return 4;
    if (m <= 999.0) return 3;
    if (m <= 9999.0) return 2;
    if (m <= 99999.0) return 1;
    return 0;
}

bool Save_Free_Format(const std::string& filename, const DIFFRACTION_PATTERN_TYPE& p, std::string& message) {
    message.clear();
    const int n = std::min({p.npts, p.x.size(), p.y.size()});
    if (n <= 1) {
        message = "Number of Points to Save was Wrong!";
        return false;
    }
    const float* x = p.x.data();
    const float* y = p.y.data();
    if (!Strictly_Ascending(x, n)) {
        message = "Number of Points to Save was Wrong! (X values must rise from point to point)";
        return false;
    }
    const double h = (double(x[n - 1]) - x[0]) / (n - 1);
    const std::vector<double> d2 = Spline_Second_Derivatives(x, y, n);
    std::vector<float> yi(static_cast<std::size_t>(n));
    float largest = -3.4028235e38f;
    for (int i = 0; i < n; ++i) {
        yi[static_cast<std::size_t>(i)] = static_cast<float>(Spline_Value(x, y, d2, n, x[0] + i * h));
        largest = std::max(largest, yi[static_cast<std::size_t>(i)]);
    }
    const int decimals = Free_Format_Decimals(largest);

    std::string out;
    out.reserve(static_cast<std::size_t>(n) * 9 + 256);
    char head[160];
    std::snprintf(head, sizeof head, " %14.6f %14.6f %14.6f  ", static_cast<double>(x[0]), h,
                  static_cast<double>(x[n - 1]));
    out += head;
    out += Trim_Right(p.title);
    out += '\n';
    for (int i = 0; i < n; ++i) {
        put_value(out, yi[static_cast<std::size_t>(i)], decimals);
        if ((i + 1) % 10 == 0 || i == n - 1) out += '\n';
    }
    if (!Replace_File(filename, out)) {
        message = "Unable to write Free Format Pattern File!";
        return false;
    }
    return true;
}

}  // namespace hxl
