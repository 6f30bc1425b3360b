#pragma once
// Synthetic patterns for the search tests: Gaussian peaks on a straight
// background, optionally with a reproducible ripple standing in for noise.
#include <cmath>
#include <vector>

#include "patterns/diffraction_pattern.h"

struct GAUSS {
    double x, height, sigma;
};

inline hxl::DIFFRACTION_PATTERN_TYPE Gauss_Pattern(double x0, double x1, double step, const std::vector<GAUSS>& peaks,
                                                   double bg0 = 100.0, double slope = 0.0, double ripple = 0.0) {
    hxl::DIFFRACTION_PATTERN_TYPE p;
    const int n = static_cast<int>(std::lround((x1 - x0) / step)) + 1;
    hxl::Allocate_Pattern(p, n);
    unsigned seed = 12345u;
    for (int i = 1; i <= n; ++i) {
        const double x = x0 + (i - 1) * step;
        double y = bg0 + slope * x;
        for (const GAUSS& g : peaks) y += g.height * std::exp(-0.5 * std::pow((x - g.x) / g.sigma, 2));
        seed = seed * 1103515245u + 12345u;
        y += ripple * ((seed >> 8) % 2001 / 1000.0 - 1.0);
        p.x(i) = static_cast<float>(x);
        p.y(i) = static_cast<float>(y);
    }
    p.xmin = p.x(1);
    p.xmax = p.x(n);
    p.step = static_cast<float>(step);
    p.scat_var = "2theta";
    p.lambda1 = p.lambda2 = 1.5406f;
    return p;
}
