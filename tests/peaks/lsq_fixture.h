#pragma once
// Gaussian peaks on a straight background, the model of the least-squares
// tests and bench: parameters a, b of the background a + b (x - x0), then
// per peak its centre, height and width (sigma). A peak reaches 8 widths.
#include <cmath>
#include <vector>

#include "peaks/lsq_types.h"

// Adds the peak whose centre, height and width are p(j), p(j+1), p(j+2) at
// observation i (at xi, sigma si) to yc, and its row entries to `rows`.
inline void Add_Gauss_Peak(const hxl::Array1<float>& p, int j, int i, float xi, float si, float& yc,
                           hxl::LSQ_SPARSE_JACOBIAN_TYPE* rows) {
    const float c = p(j), h = p(j + 1), w = p(j + 2), u = (xi - c) / w;
    if (std::fabs(u) > 8.0f) return;
    const float e = std::exp(-0.5f * u * u);
    yc += h * e;
    if (rows) {
        rows->Add(i, j, -(h * e * u / w) / si);
        rows->Add(i, j + 1, -e / si);
        rows->Add(i, j + 2, -(h * e * u * u / w) / si);
    }
}

struct GAUSS_FIT_PROBLEM {
    std::vector<float> x, y, s;  // observations and their sigmas
    float x0 = 0.0f;
    int npk = 0;

    int Params() const { return 2 + 3 * npk; }

    // Fills fvec; with rows, also the Jacobian. Peaks are taken in any order.
    void Eval(const hxl::Array1<float>& p, hxl::Array1<float>& fvec, hxl::LSQ_SPARSE_JACOBIAN_TYPE* rows) const {
        const int m = static_cast<int>(x.size());
        for (int i = 1; i <= m; ++i) {
            const float xi = x[static_cast<std::size_t>(i - 1)], si = s[static_cast<std::size_t>(i - 1)];
            float yc = p(1) + p(2) * (xi - x0);
            if (rows) {
                rows->Add(i, 1, -1.0f / si);
                rows->Add(i, 2, -(xi - x0) / si);
            }
            for (int k = 0; k < npk; ++k) Add_Gauss_Peak(p, 3 + 3 * k, i, xi, si, yc, rows);
            fvec(i) = (y[static_cast<std::size_t>(i - 1)] - yc) / si;
        }
    }

    hxl::LSQ_SPARSE_MODEL_FUNCTION Sparse_Model() const {
        return [this](int, int, const hxl::Array1<float>& p, hxl::Array1<float>& fvec, hxl::LSQ_SPARSE_JACOBIAN_TYPE& fjac,
                      int& iflag) {
            if (iflag == 1) Eval(p, fvec, nullptr);
            if (iflag == 2) {
                hxl::Array1<float> scratch(static_cast<int>(x.size()));
                Eval(p, scratch, &fjac);
            }
        };
    }
};

// npk peaks evenly spread over [x0, x1] on m points, each of the given
// width, heights 200 + 37 k mod 300, on 50 + 0.1 (x - x0); sigma sqrt(y);
// `ripple` adds a reproducible deviation of that many sigmas at most.
inline GAUSS_FIT_PROBLEM Gauss_Fit_Problem(int npk, int m, float x0, float x1, float width, float ripple,
                                           std::vector<float>& truth) {
    GAUSS_FIT_PROBLEM g;
    g.npk = npk;
    g.x0 = x0;
    truth.assign(static_cast<std::size_t>(2 + 3 * npk), 0.0f);
    truth[0] = 50.0f;
    truth[1] = 0.1f;
    const float slot = (x1 - x0) / static_cast<float>(npk);
    for (int k = 0; k < npk; ++k) {
        truth[static_cast<std::size_t>(2 + 3 * k)] = x0 + (static_cast<float>(k) + 0.5f) * slot;
        truth[static_cast<std::size_t>(3 + 3 * k)] = 200.0f + static_cast<float>((37 * k) % 300);
        truth[static_cast<std::size_t>(4 + 3 * k)] = width;
    }
    unsigned seed = 7u;
    for (int i = 0; i < m; ++i) {
        const float xi = x0 + (x1 - x0) * static_cast<float>(i) / static_cast<float>(m - 1);
        double yc = truth[0] + truth[1] * (xi - x0);
        for (int k = 0; k < npk; ++k) {
            const double u = (xi - truth[static_cast<std::size_t>(2 + 3 * k)]) / width;
            if (std::fabs(u) <= 8.0) yc += truth[static_cast<std::size_t>(3 + 3 * k)] * std::exp(-0.5 * u * u);
        }
        seed = seed * 1103515245u + 12345u;
        const double r = (static_cast<double>((seed >> 8) % 2001) / 1000.0 - 1.0) * ripple;
        const double sig = std::sqrt(yc);
        g.x.push_back(xi);
        g.y.push_back(static_cast<float>(yc + r * sig));
        g.s.push_back(static_cast<float>(sig));
    }
    return g;
}
