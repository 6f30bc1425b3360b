// Excluded regions of one profile.
#include "calc/excluded_regions.h"

#include <cmath>
#include <utility>

namespace hxl {

bool Append_Excluded_Region(PRF_INFO_ADD_TYPE& info, float low, float high) {
    if (info.nexcl >= kMaxExcluded) return false;
    ++info.nexcl;
    info.excl_low(info.nexcl) = low;
    info.excl_high(info.nexcl) = high;
    return true;
}

void Delete_Excluded_Region(PRF_INFO_ADD_TYPE& info, int j) {
    if (j < 1 || j > info.nexcl) return;
    for (int k = j; k < info.nexcl; ++k) {
        info.excl_low(k) = info.excl_low(k + 1);
        info.excl_high(k) = info.excl_high(k + 1);
    }
    info.excl_low(info.nexcl) = 0.0f;
    info.excl_high(info.nexcl) = 0.0f;
    --info.nexcl;
}

void Convert_Excluded_Regions(PRF_INFO_ADD_TYPE& info, const std::vector<X_STEP>& steps, double c1, double c2,
                              const std::string& file, std::vector<std::string>& messages) {
    int j = 1;
    while (j <= info.nexcl && j <= kMaxExcluded) {
        double low = info.excl_low(j), high = info.excl_high(j);
        const bool ok = std::isfinite(low) && std::isfinite(high) && low > 0.0 && low < high &&
                        Convert_X_Value(low, steps, c1, c2) && Convert_X_Value(high, steps, c1, c2) &&
                        static_cast<float>(low) != static_cast<float>(high);
        if (!ok) {
            messages.push_back("The excluded region No. " + std::to_string(j) + " of\n" + file +
                               " contains an invalid value." + "This excluded region will be deleted");
            Delete_Excluded_Region(info, j);
            continue;  // the next region has moved into place j
        }
        // Theta and time to d reverse the sense of X: the region keeps low below high.
        if (low > high) std::swap(low, high);
        info.excl_low(j) = static_cast<float>(low);
        info.excl_high(j) = static_cast<float>(high);
        ++j;
    }
}

}  // namespace hxl
