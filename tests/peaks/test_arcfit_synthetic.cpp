// The model with the true parameters of a synthetic pattern (height-form
// pseudo-Voigt peaks on a linear background, asymmetry off) against the
// pattern's own formula and against its counts.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "peaks/arcfit_model.h"

namespace hxl {
namespace {

struct TRUE_PEAK {
    double c, h, fwhm, eta;
};

// The generator's peak: h [(1 - eta) exp(-ln2 (d/w)^2) + eta / (1 + (d/w)^2)], w = FWHM/2.
double Truth_Peak(const TRUE_PEAK& p, double x) {
    const double u = (x - p.c) / (p.fwhm / 2);
    return p.h * ((1 - p.eta) * std::exp(-std::log(2.0) * u * u) + p.eta / (1 + u * u));
}

TEST(ArcfitSynthetic, TrueParametersReproduceThePattern) {
    const std::string dir = std::string(ZD_TEST_DATA) + "/peaks/";
    std::ifstream truth(dir + "fit_10k_20pk.truth.tsv");
    std::vector<TRUE_PEAK> peaks;
    std::string line;
    std::getline(truth, line);
    while (std::getline(truth, line)) {
        std::istringstream s(line);
        TRUE_PEAK p{};
        if (s >> p.c >> p.h >> p.fwhm >> p.eta) peaks.push_back(p);
    }
    ASSERT_EQ(peaks.size(), 20u);
    std::ifstream data(dir + "fit_10k_20pk.xy");
    std::vector<double> xs, ys, ss;
    while (std::getline(data, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream s(line);
        double x, y, sg;
        if (s >> x >> y >> sg) {
            xs.push_back(x);
            ys.push_back(y);
            ss.push_back(sg);
        }
    }
    ASSERT_EQ(xs.size(), 10000u);

    // The generator's Caglioti law, the per-peak factor in the width shift;
    // the height-form mixing turned into area form.
    const float u = 0.010f, v = -0.006f, w = 0.004f;
    ARC_MODEL_TYPE m;
    m.nb = 2;
    m.npk = static_cast<int>(peaks.size());
    m.xb = Array1<float>(2);
    m.xb(1) = 5;
    m.xb(2) = 120;
    m.asymmetry = false;
    Array1<float> pv(Arc_Parameter_Count(2, m.npk));
    pv(4) = u;
    pv(5) = v;
    pv(6) = w;
    pv(10) = 200 - 0.8f * 5;
    pv(11) = 200 - 0.8f * 120;
    for (int k = 1; k <= m.npk; ++k) {
        const TRUE_PEAK& p = peaks[static_cast<std::size_t>(k - 1)];
        const double t = std::tan(p.c / 2 * M_PI / 180);
        const double s = std::sqrt((u * t + v) * t + w);
        const double half = p.fwhm / 2;
        const double area = p.h * half * ((1 - p.eta) * std::sqrt(M_PI / std::log(2.0)) + p.eta * M_PI);
        const int b = 11 + 4 * (k - 1);
        pv(b + 1) = static_cast<float>(p.c);
        pv(b + 2) = static_cast<float>(area);
        pv(b + 3) = static_cast<float>(p.fwhm - s);
        pv(b + 4) = static_cast<float>(p.h * p.eta * M_PI * half / area);
    }
    Arc_Prepare(m, pv);

    double worst = 0, chi2 = 0;
    std::vector<ARC_DERIV_TYPE> d;
    for (std::size_t i = 0; i < xs.size(); ++i) {
        double full = 200 - 0.8 * xs[i], tail = 0;
        for (const TRUE_PEAK& p : peaks) {
            const double y = Truth_Peak(p, xs[i]);
            full += y;
            if (std::fabs(xs[i] - p.c) >= 40 * p.fwhm) tail += y;  // left out by the 80-width cut
        }
        const double model = Arc_Point(m, pv, static_cast<float>(xs[i]), d);
        const double miss = std::fabs(model - full);
        ASSERT_LE(miss, tail + 2e-4 * full + 0.01) << xs[i];
        worst = std::max(worst, (miss - std::min(miss, tail)) / std::sqrt(full));  // beyond the cut's share
        chi2 += (ys[i] - model) * (ys[i] - model) / (ss[i] * ss[i]);
    }
    chi2 /= static_cast<double>(xs.size());
    std::printf("largest |model - truth| / sqrt(truth) = %.4f, chi2 per point against the counts = %.4f\n", worst,
                chi2);
    EXPECT_LT(worst, 0.05);
    EXPECT_GT(chi2, 0.95);
    EXPECT_LT(chi2, 1.08);
}

}  // namespace
}  // namespace hxl
