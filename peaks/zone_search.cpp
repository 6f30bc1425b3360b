// The plain detector for a zone chosen by the mouse: a smoothed five-point
// derivative and a counting-statistics test on the five points before the maximum.
#include <algorithm>
#include <cmath>
#include <vector>

#include "peaks/search_points.h"

namespace hxl {

bool Search_Peaks_In_Zone(const DIFFRACTION_PATTERN_TYPE& p, float x1, float x2, int limit, PKB_TYPE& result,
                          std::string& message) {
    message.clear();
    const int n = std::min({p.npts, p.x.size(), p.y.size()});
    if (x2 < x1) std::swap(x1, x2);
    if (n < 1 || !(x1 <= p.x(n)) || !(x2 >= p.x(1))) {
        message = "Zone of peak detection out of range";
        return false;
    }
    int i1 = 1;
    while (i1 <= n && p.x(i1) < x1) ++i1;
    int i2 = n;
    while (i2 >= 1 && p.x(i2) > x2) --i2;
    if (i2 - i1 + 1 < 10) {
        message = "Number of points < 10";
        return false;
    }
    const Array1<float>& y = p.y;
    Array1<float> s(n);
    for (int i = i1; i <= i2; ++i) s(i) = y(i);
    for (int i = i1 + 2; i <= i2 - 2; ++i)
        s(i) = (-3.0f * (y(i - 2) + y(i + 2)) + 12.0f * (y(i - 1) + y(i + 1)) + 17.0f * y(i)) / 35.0f;
    // Only the sign of the derivative is used, so the division by the step is left out.
    auto d = [&s](int i) { return (s(i - 2) - 8.0f * s(i - 1) + 8.0f * s(i + 1) - s(i + 2)) / 12.0f; };
    std::vector<float> px, py;
    bool full = false;
    for (int i = i1 + 3; i <= i2 - 3; ++i) {
        if (!(d(i) > 0.0f && d(i + 1) <= 0.0f)) continue;
        const float S = s(i - 3) + s(i - 2) + s(i - 1) + s(i) + s(i + 1);
        if (!(std::sqrt(S) < S - 2.5f * (s(i - 3) + s(i + 1)))) continue;
        if (static_cast<int>(px.size()) >= limit) {
            full = true;
            break;
        }
        const int k = (y(i + 1) > y(i) && y(i + 1) > y(i + 2)) ? i + 1 : i;
        px.push_back(p.x(k));
        py.push_back(y(k));
    }
    const int np = static_cast<int>(px.size());
    result.np = np;
    result.x.resize(np);
    result.y.resize(np);
    result.bgr.resize(np);
    for (int i = 1; i <= np; ++i) {
        result.x(i) = px[static_cast<std::size_t>(i - 1)];
        result.y(i) = py[static_cast<std::size_t>(i - 1)];
    }
    if (full) {
        message = "Max num. peaks";
        return false;
    }
    return true;
}

}  // namespace hxl
