// How well the trial cell of the HKL generator explains the peak list, and its refinement on
// the peaks that its reflections explain.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "app/main/hkl_gen.h"
#include "app/store/zendrite_param_global.h"
#include "crystal/cell_refine.h"

namespace zendrite {

namespace {

std::vector<double> observed() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    std::vector<double> x;
    const int n = std::clamp(g.Peak_List.count, 0, kMaxPeaks + 1);
    for (int i = 1; i <= n; ++i) x.push_back(g.Peak_List.p[static_cast<std::size_t>(i)].x);
    return x;
}

hxl::PEAK_XSPACE_TYPE xspace(const HKL_GEN_STATE& s) {
    hxl::PEAK_XSPACE_TYPE x;
    x.space = s.space;
    x.lambda = s.lambda;
    x.dtt1 = s.dtt1;
    x.dtt2 = s.dtt2;
    return x;
}

// What the last line was made from: a redraw or a mouse move with nothing changed costs no new list.
struct MERIT_KEY {
    std::vector<double> x;
    float cell[6] = {0, 0, 0, 0, 0, 0};
    std::string spgr;
    hxl::HKL_XSPACE space = hxl::HKL_XSPACE::TWOTHETA;
    float lambda = 0, dtt1 = 0, dtt2 = 0;
    bool operator==(const MERIT_KEY&) const = default;
};

}  // namespace

std::string Hkl_Gen_Merit() {
    static MERIT_KEY last;
    static bool made = false;
    HKL_GEN_STATE& s = Hkl_Gen_State();
    MERIT_KEY key{observed(), {}, s.spgr, s.space, s.lambda, s.dtt1, s.dtt2};
    std::copy(s.cell, s.cell + 6, key.cell);
    if (made && key == last && !s.merit.empty()) return s.merit;
    last = key;
    made = true;
    if (key.x.empty()) {
        s.merit = "No peak list: find peaks first";
        return s.merit;
    }
    hxl::Cell_Record rec;
    std::string text;
    if (!hxl::Hkl_Trial_Cell(s.cell, rec, text)) {
        s.merit = text;
        return s.merit;
    }
    hxl::FOM_SETTINGS_TYPE set;
    set.x = xspace(s);
    hxl::FOM_RESULT_TYPE r;
    s.merit = hxl::Figures_Of_Merit(key.x, rec, s.sg, set, r) ? r.text : r.message;
    return s.merit;
}

bool Hkl_Gen_Refine(bool refine_zero, std::string& text) {
    HKL_GEN_STATE& s = Hkl_Gen_State();
    const std::vector<double> x = observed();
    if (x.empty()) {
        text = "No peak list: find peaks first";
        return false;
    }
    double cell[6];
    std::copy(s.cell, s.cell + 6, cell);
    hxl::CELL_REFINE_SETTINGS_TYPE set;
    set.x = xspace(s);
    set.refine_zero = refine_zero;
    hxl::CELL_REFINE_RESULT_TYPE r;
    if (!hxl::Refine_Cell(x, cell, s.sg, set, r)) {
        text = r.message;
        return false;
    }
    for (int i = 0; i < 6; ++i) s.refined_cell[i] = static_cast<float>(r.cell[i]);
    s.refined = true;
    s.refined_text = "Refined cell: " + r.cell_text;
    s.sigma_text = "sigma: " + r.std_text;
    if (refine_zero) {
        char buf[96];
        std::snprintf(buf, sizeof buf, "   zero: %.5f", r.zero);
        s.refined_text += buf;
        std::snprintf(buf, sizeof buf, "   zero: %.5f", r.zero_std);
        s.sigma_text += buf;
    }
    s.refined_text += "   (" + std::to_string(r.n_used) + " peaks)";
    text.clear();
    return true;
}

}  // namespace zendrite
