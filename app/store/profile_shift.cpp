#include "app/store/profile_shift.h"

#include <cmath>

#include "app/store/zendrite_param_global.h"

namespace zendrite {

bool Apply_Profile_Shift(float shift_x, float shift_y) {
    ZENDRITE_STORE& g = zendrite_param_global();
    if (!std::isfinite(shift_x) || !std::isfinite(shift_y)) return false;
    // the difference, so that slots filled since the last shift move by it alone
    const double ddx = static_cast<double>(shift_x) - g.shift_x_last;
    const double ddy = static_cast<double>(shift_y) - g.shift_y_last;
    for (int k = 1; k <= g.nperfiles && k <= kMaxProfiles; ++k) {
        const std::size_t s = static_cast<std::size_t>(k);
        g.draw_dx[s] = static_cast<float>(g.draw_dx[s] + (k - 1) * ddx);
        g.draw_dy[s] = static_cast<float>(g.draw_dy[s] + (k - 1) * ddy);
    }
    g.shift_x_last = shift_x;
    g.shift_y_last = shift_y;
    return true;
}

}  // namespace zendrite
