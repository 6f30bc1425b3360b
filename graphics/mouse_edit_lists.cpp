// Peaks and background points inserted or removed at the mouse.
#include <algorithm>
#include <cmath>

#include "app/store/zendrite_param_global.h"
#include "graphics/mouse.h"

namespace zendrite {

std::string Edit_Background(float x, float y) {
    ZENDRITE_STORE& g = zendrite_param_global();
    BGR_LIST_TYPE& b = g.Bgr_List;
    b.count = std::clamp(b.count, 0, kMaxBgrPoints);
    if (!g.bgr_insert && g.bgr_delete) {
        const float tx = 0.01f * (g.win_xmax - g.win_xmin), ty = 0.01f * (g.win_ymax - g.win_ymin);
        for (int i = 1; i <= b.count; ++i) {
            const BGR_RECORD& p = b.p[static_cast<std::size_t>(i)];
            if (std::fabs(p.x - x) < std::fabs(tx) && std::fabs(p.y - y) < std::fabs(ty)) {
                std::copy(b.p.begin() + i + 1, b.p.begin() + b.count + 1, b.p.begin() + i);
                --b.count;
                return {};
            }
        }
        return "No background point found in this position for removing";
    }
    if (!g.bgr_insert) return {};
    if (b.count >= kMaxBgrPoints) return kMsgMaxBgr;
    ++b.count;
    b.p[static_cast<std::size_t>(b.count)] = BGR_RECORD{x, y};
    std::stable_sort(b.p.begin() + 1, b.p.begin() + b.count + 1,
                     [](const BGR_RECORD& a, const BGR_RECORD& c) { return a.x < c.x; });
    return {};
}

std::string Edit_Peaks(float x, float y) {
    ZENDRITE_STORE& g = zendrite_param_global();
    PEAK_LIST_TYPE& l = g.Peak_List;
    l.count = std::clamp(l.count, 0, kMaxPeaks + 1);
    if (g.peak_insert) {
        // a count of 401 is reachable by hand
        if (l.count > kMaxPeaks) return "The limit number of peaks has been attained!";
        int at = 1;
        while (at <= l.count && l.p[static_cast<std::size_t>(at)].x <= x) ++at;
        float bgr = 0;
        if (l.count >= 1) {
            if (at == 1) bgr = l.p[1].bgr;
            else if (at > l.count) bgr = l.p[static_cast<std::size_t>(l.count)].bgr;
            else bgr = 0.5f * (l.p[static_cast<std::size_t>(at - 1)].bgr + l.p[static_cast<std::size_t>(at)].bgr);
        }
        std::copy_backward(l.p.begin() + at, l.p.begin() + l.count + 1, l.p.begin() + l.count + 2);
        l.p[static_cast<std::size_t>(at)] = PEAK_RECORD{x, y, bgr};
        ++l.count;
        return {};
    }
    if (!g.peak_delete) return {};
    const float tx = std::fabs(0.01f * (g.win_xmax - g.win_xmin));
    for (int i = 1; i <= l.count; ++i) {
        if (std::fabs(l.p[static_cast<std::size_t>(i)].x - x) < tx) {
            std::copy(l.p.begin() + i + 1, l.p.begin() + l.count + 1, l.p.begin() + i);
            --l.count;
            return {};
        }
    }
    return "No peaks found in this position for removing";
}

}  // namespace zendrite
