#include "peaks/arcfit_widths.h"

#include <cmath>

#include "support/numerics.h"

namespace hxl {

bool Split_Widths(float h, float eta, float& hg, float& hl) {
    hg = hl = 0;
    if (!(h > 0) || !std::isfinite(h) || !std::isfinite(eta)) return false;
    if (eta <= 0) {
        hg = h;
        return true;
    }
    if (eta >= 1) {
        hl = h;
        return true;
    }
    bool ok = true;
    const float q = Zero_Of([eta](float t) { return ((0.11116f * t - 0.47719f) * t + 1.36603f) * t - eta; }, 0.0f,
                            1.0f, 1e-7f, &ok);
    if (!ok) return false;
    hl = q * h;
    // In units of H, so that the fifth powers stay far from the float range.
    const double l = q;
    const auto f = [l](float gf) {
        const double g = gf;
        return static_cast<float>(
            ((((g + 2.69269 * l) * g + 2.42843 * l * l) * g + 4.47163 * l * l * l) * g + 0.07842 * l * l * l * l) * g +
            l * l * l * l * l - 1.0);
    };
    const float g = Zero_Of(f, 0.0f, 1.0f, 1e-7f, &ok);
    if (!ok) return false;
    hg = g * h;
    return true;
}

}  // namespace hxl
