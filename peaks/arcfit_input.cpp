#include "peaks/arcfit_input.h"

#include "peaks/arcfit_model.h"

namespace hxl {

ARC_DATA_TYPE Arc_Data_From_Pattern(const DIFFRACTION_PATTERN_TYPE& p) {
    ARC_DATA_TYPE data;
    data.npts = p.npts;
    data.x = p.x;
    data.y = p.y;
    data.var = Array1<float>(p.npts);
    for (int i = 1; i <= p.npts; ++i) {
        const bool has = i <= p.sigma.size();
        const float s = has ? p.sigma(i) : p.y(i);
        data.var(i) = has && !p.sig_var ? s * s : s;
    }
    return data;
}

std::vector<PEAK_POINT_TYPE> Arc_Thin_Background(const std::vector<PEAK_POINT_TYPE>& all) {
    const std::size_t n = all.size(), limit = kArcMaxBackground;
    if (n <= limit) return all;
    std::vector<PEAK_POINT_TYPE> out;
    for (std::size_t i = 0; i < limit; ++i) out.push_back(all[i * (n - 1) / (limit - 1)]);
    return out;
}

}  // namespace hxl
