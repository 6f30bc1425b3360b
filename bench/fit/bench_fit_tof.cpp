// The time-of-flight fit of 100 peaks on 10^4 points: a pattern made here
// from known parameters (back-to-back exponentials convolved with a Gaussian,
// noise of a fixed seed), fitted from positions, intensities and rates off
// the truth, with the Gaussian shape and with the mixing refined. The
// reduced chi2 reached is a counter.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

#include "peaks/timefit_run.h"

namespace {

constexpr double kDtt = 10000, kAlpha = 0.2, kBeta = 0.05, kSig1 = 30, kSig0 = 9;
constexpr int kPeaks = 100, kPoints = 10000, kBackground = 21;

double Peak_Centre(int k) { return 5250.0 + 495.0 * k + 37.0 * std::sin(1.7 * k); }
double Peak_Intensity(int k) { return 4000.0 + 3000.0 * (1 + std::sin(0.9 * k)); }

double Shape(double dt, double a, double b, double s2) {
    const double n = a * b / (2 * (a + b)), r = std::sqrt(2 * s2);
    return n * (std::exp(a / 2 * (a * s2 + 2 * dt)) * std::erfc((a * s2 + dt) / r) +
                std::exp(b / 2 * (b * s2 - 2 * dt)) * std::erfc((b * s2 - dt) / r));
}

hxl::ARC_DATA_TYPE Pattern() {
    hxl::ARC_DATA_TYPE d;
    d.npts = kPoints;
    d.x = hxl::Array1<float>(d.npts), d.y = hxl::Array1<float>(d.npts), d.var = hxl::Array1<float>(d.npts);
    std::mt19937 gen(7);
    std::normal_distribution<double> unit(0.0, 1.0);
    for (int i = 1; i <= d.npts; ++i) {
        const double x = 5000.0 + 5.0 * (i - 1);
        double y = 300.0 - 0.002 * (x - 5000.0);
        for (int k = 0; k < kPeaks; ++k) {
            const double t = Peak_Centre(k), dt = x - t;
            if (dt < -600 || dt > 1500) continue;
            const double dd = t / kDtt;
            y += Peak_Intensity(k) * Shape(dt, kAlpha, kBeta, kSig1 * dd * dd + kSig0);
        }
        d.x(i) = static_cast<float>(x);
        d.var(i) = static_cast<float>(y);
        d.y(i) = static_cast<float>(y + std::sqrt(y) * unit(gen));
    }
    return d;
}

hxl::TOF_JOB_TYPE Job(const hxl::ARC_DATA_TYPE& d) {
    hxl::TOF_JOB_TYPE j;
    j.tof_init = d.x(1) - 1, j.tof_fin = d.x(d.npts) + 1;
    j.nbac = kBackground, j.npeak = kPeaks, j.ncyc = 100;
    j.dtt = static_cast<float>(kDtt);
    j.glob = {0, 0.15f, 0.07f, 0, 20, static_cast<float>(kSig0), 0};
    j.gflag = {0, 1, 1, 0, 1, 0, 0};
    j.bx = hxl::Array1<float>(j.nbac), j.bv = hxl::Array1<float>(j.nbac), j.bf = hxl::Array1<int>(j.nbac);
    for (int i = 1; i <= j.nbac; ++i) {
        j.bx(i) = j.tof_init + (j.tof_fin - j.tof_init) * static_cast<float>(i - 1) / (j.nbac - 1);
        j.bv(i) = 280, j.bf(i) = 1;
    }
    hxl::Size_Tof_Peaks(j);
    for (int k = 1; k <= kPeaks; ++k) {
        j.pk(k) = {static_cast<float>(Peak_Centre(k - 1) + 4), static_cast<float>(0.8 * Peak_Intensity(k - 1)), 0, 0, 0, 0};
        j.pf(k) = {1, 1, 0, 0, 0, 0};
    }
    return j;
}

// With `lorentz` the mixing starts at 0.1 and is refined: every point then
// takes the exponential integral of two complex arguments per peak.
void Fit_Tof(benchmark::State& state, bool lorentz) {
    const hxl::ARC_DATA_TYPE data = Pattern();
    hxl::TOF_JOB_TYPE job = Job(data);
    if (lorentz) job.glob[6] = 0.1f, job.gflag[6] = 1;
    hxl::ARC_FIT_OPTIONS_TYPE fo;
    fo.folder = "/tmp";
    fo.stem = "bench_fit_tof";
    fo.ask = [](const std::string&) { return true; };
    double chi2 = 0, iterations = 0;
    for (auto _ : state) {
        hxl::TOF_FIT_RESULT_TYPE r;
        std::string message;
        if (!hxl::Tof_Fit(job, data, fo, r, message)) {
            state.SkipWithError(message.c_str());
            return;
        }
        chi2 = r.chi2;
        iterations = r.iterations;
    }
    state.counters["chi2"] = chi2;
    state.counters["iterations"] = iterations;
}

BENCHMARK_CAPTURE(Fit_Tof, peaks100_points1e4, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fit_Tof, peaks100_points1e4_lorentz, true)->Unit(benchmark::kMillisecond);

}  // namespace
