// The four-at-a-time range of floats (and whether one is NaN) against the plain loop, at the odd cases.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "support/float_range.h"

namespace {

bool plain(const std::vector<float>& v, float& lo, float& hi) {
    bool nan = false;
    for (float x : v) {
        nan = nan || std::isnan(x);
        if (x < lo) lo = x;
        if (x > hi) hi = x;
    }
    return nan;
}

bool same_bits(float a, float b) { return std::memcmp(&a, &b, sizeof a) == 0; }

}  // namespace

TEST(FloatRange, AgreesWithThePlainLoopOnNaNZerosAndTails) {
    std::mt19937 rng(8);
    std::uniform_real_distribution<float> u(-50.0f, 50.0f);
    const float big = std::numeric_limits<float>::max();
    for (int n = 0; n <= 40; ++n)
        for (int r = 0; r < 40; ++r) {
            std::vector<float> v(static_cast<std::size_t>(n));
            for (float& x : v) x = u(rng);
            for (float& x : v) {
                const int pick = static_cast<int>(rng() % 8);
                if (r % 4 == 1 && pick == 0) x = std::nanf("");
                if (r % 4 == 2) x = pick < 4 ? 0.0f : (pick < 6 ? -0.0f : std::fabs(x));  // zeros lead
                if (r % 4 == 3 && pick == 1) x = -std::numeric_limits<float>::infinity();
            }
            float lo = big, hi = -big, plo = big, phi = -big;
            if (r == 5) lo = plo = -1000.0f, hi = phi = 1000.0f;  // limits passed in that no point beats
            ASSERT_EQ(hxl::Float_Range(v.data(), n, lo, hi), plain(v, plo, phi)) << "n " << n << " case " << r;
            ASSERT_TRUE(same_bits(lo, plo) && same_bits(hi, phi)) << "n " << n << " case " << r << ": " << lo << " "
                                                                   << hi << " vs " << plo << " " << phi;
        }
    // All NaN: the limits stay as they came.
    std::vector<float> nans(9, std::nanf(""));
    float lo = 3.0f, hi = -3.0f;
    EXPECT_TRUE(hxl::Float_Range(nans.data(), 9, lo, hi));
    EXPECT_EQ(lo, 3.0f);
    EXPECT_EQ(hi, -3.0f);
}
