// The least-squares solver on many Gaussian peaks (centre, height, width
// free) on a flat background, from a start near the truth: 100 peaks on 10^4
// points and 400 peaks on 4x10^4, by the automatic route (sparse at this
// size). The model evaluates each point only against the peaks within reach.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "peaks/lm_der.h"
#include "tests/peaks/lsq_fixture.h"

namespace {

struct PROBLEM {
    std::vector<float> x, y, s, truth;  // truth: background, then centre, height, width per peak
    int npk = 0;
};

PROBLEM Make(int npk, int m) {
    PROBLEM p;
    p.npk = npk;
    const float x0 = 10.0f, x1 = 130.0f, slot = (x1 - x0) / static_cast<float>(npk);
    const float width = slot / 8.0f;  // neighbours overlap in their tails
    p.truth.push_back(80.0f);
    for (int k = 0; k < npk; ++k) {
        p.truth.push_back(x0 + (static_cast<float>(k) + 0.5f) * slot);
        p.truth.push_back(300.0f + static_cast<float>((53 * k) % 700));
        p.truth.push_back(width * (0.8f + 0.4f * static_cast<float>(k % 5) / 4.0f));
    }
    unsigned seed = 3u;
    for (int i = 0; i < m; ++i) {
        const float xi = x0 + (x1 - x0) * static_cast<float>(i) / static_cast<float>(m - 1);
        double yc = p.truth[0];
        for (int k = 0; k < npk; ++k) {
            const double u = (xi - p.truth[static_cast<std::size_t>(1 + 3 * k)]) / p.truth[static_cast<std::size_t>(3 + 3 * k)];
            if (std::fabs(u) <= 8.0) yc += p.truth[static_cast<std::size_t>(2 + 3 * k)] * std::exp(-0.5 * u * u);
        }
        seed = seed * 1103515245u + 12345u;
        const double r = static_cast<double>((seed >> 8) % 2001) / 1000.0 - 1.0;
        p.x.push_back(xi);
        p.y.push_back(static_cast<float>(yc + r * std::sqrt(yc)));
        p.s.push_back(static_cast<float>(std::sqrt(yc)));
    }
    return p;
}

// Residuals and, with rows, the Jacobian; peaks found by their centres.
void Eval(const PROBLEM& p, const hxl::Array1<float>& v, hxl::Array1<float>& fvec, hxl::LSQ_SPARSE_JACOBIAN_TYPE* rows) {
    std::vector<int> order(static_cast<std::size_t>(p.npk));
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](int a, int b) { return v(2 + 3 * a) < v(2 + 3 * b); });
    std::vector<float> centre(order.size());
    float reach = 0.0f;
    for (std::size_t k = 0; k < order.size(); ++k) {
        centre[k] = v(2 + 3 * order[k]);
        reach = std::max(reach, 8.0f * std::fabs(v(4 + 3 * order[k])));
    }
    const int m = static_cast<int>(p.x.size());
    for (int i = 1; i <= m; ++i) {
        const float xi = p.x[static_cast<std::size_t>(i - 1)], si = p.s[static_cast<std::size_t>(i - 1)];
        float yc = v(1);
        if (rows) rows->Add(i, 1, -1.0f / si);
        auto k = static_cast<std::size_t>(std::lower_bound(centre.begin(), centre.end(), xi - reach) - centre.begin());
        for (; k < centre.size() && centre[k] <= xi + reach; ++k) Add_Gauss_Peak(v, 2 + 3 * order[k], i, xi, si, yc, rows);
        fvec(i) = (p.y[static_cast<std::size_t>(i - 1)] - yc) / si;
    }
}

void BM_Fit_Gaussians(benchmark::State& state) {
    const int npk = static_cast<int>(state.range(0)), m = static_cast<int>(state.range(1));
    const PROBLEM p = Make(npk, m);
    const hxl::LSQ_SPARSE_MODEL_FUNCTION model = [&p](int, int, const hxl::Array1<float>& v, hxl::Array1<float>& fvec,
                                                      hxl::LSQ_SPARSE_JACOBIAN_TYPE& fjac, int& iflag) {
        if (iflag == 1) Eval(p, v, fvec, nullptr);
        if (iflag == 2) {
            hxl::Array1<float> scratch(static_cast<int>(p.x.size()));
            Eval(p, v, scratch, &fjac);
        }
    };
    const int np = 1 + 3 * npk;
    float chi2 = 0.0f;
    std::string info;
    hxl::LSQ_OUTCOME_TYPE out;
    for (auto _ : state) {
        state.PauseTiming();
        hxl::LSQ_STATE_VECTOR_TYPE vs;
        hxl::Allocate_State_Vector(vs, np);
        for (int k = 1; k <= np; ++k) {
            const float t = p.truth[static_cast<std::size_t>(k - 1)];
            const int kind = k == 1 ? 0 : (k - 2) % 3;  // 0 centre (or background), 1 height, 2 width
            vs.pv(k) = kind == 0 ? (k == 1 ? t * 0.95f : t + 0.1f * p.truth[static_cast<std::size_t>(k + 1)])
                                 : t * (kind == 1 ? 1.1f : 1.15f);
            vs.code(k) = 1;
        }
        hxl::LSQ_CONDITIONS_TYPE c;
        c.icyc = 200;
        state.ResumeTiming();
        hxl::LM_Der(model, m, c, vs, chi2, true, info, &out);
        benchmark::DoNotOptimize(vs.pv.data());
    }
    state.counters["chi2"] = chi2;
    state.counters["nfev"] = out.nfev;
    state.counters["njev"] = out.njev;
    state.counters["sparse"] = out.sparse ? 1 : 0;
    state.counters["reached"] = out.info >= 1 && out.info <= 4 ? 1 : 0;
    state.SetLabel(info.substr(0, 60));
}

}  // namespace

BENCHMARK(BM_Fit_Gaussians)->Args({100, 10000})->Args({400, 40000})->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK_MAIN();
