// The profile fit from the automatic start (search, starting rules, rounds of
// adding and dropping peaks) on the synthetic patterns: 100 peaks on 10^4
// points, the same 100 peaks on 10^5 points, and 400 peaks on 4x10^4. The
// reduced chi2 reached is a counter.
#include <benchmark/benchmark.h>

#include <cmath>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "peaks/arcfit_auto.h"
#include "peaks/arcfit_input.h"

namespace {

hxl::DIFFRACTION_PATTERN_TYPE Read(const std::string& name) {
    hxl::DIFFRACTION_PATTERN_TYPE p;
    std::ifstream in(std::string(ZD_FIT_DATA) + "/" + name);
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream s(line);
        float x, y, sg;
        if (s >> x >> y >> sg) p.x.vec().push_back(x), p.y.vec().push_back(y), p.sigma.vec().push_back(sg * sg);
    }
    p.npts = p.x.size();
    p.sig_var = true;
    p.step = p.npts > 1 ? (p.x(p.npts) - p.x(1)) / static_cast<float>(p.npts - 1) : 0.0f;
    p.filename = name;
    return p;
}

// The peaks of the 100-peak truth file on 10^5 points over the same range, with
// the generator's background and Poisson counts from a fixed seed.
hxl::DIFFRACTION_PATTERN_TYPE Fine_Pattern() {
    struct PEAK { double c, h, f, e; };
    std::vector<PEAK> peaks;
    std::ifstream in(std::string(ZD_FIT_DATA) + "/fit_10k_100pk.truth.tsv");
    std::string line;
    std::getline(in, line);
    while (std::getline(in, line)) {
        std::istringstream s(line);
        if (PEAK k{}; s >> k.c >> k.h >> k.f >> k.e) peaks.push_back(k);
    }
    hxl::DIFFRACTION_PATTERN_TYPE p;
    if (peaks.empty()) return p;
    std::mt19937 random(877);
    const int n = 100000;
    for (int i = 0; i < n; ++i) {
        const double x = 5 + 115.0 * i / (n - 1);
        double y = 200 - 0.8 * x;
        for (const PEAK& k : peaks) {
            const double u = (x - k.c) / (k.f / 2);
            y += k.h * ((1 - k.e) * std::exp(-std::log(2.0) * u * u) + k.e / (1 + u * u));
        }
        const float counts = static_cast<float>(std::poisson_distribution<int>(y)(random));
        p.x.vec().push_back(static_cast<float>(x)), p.y.vec().push_back(counts);
        p.sigma.vec().push_back(std::max(counts, 1.0f));
    }
    p.npts = n;
    p.sig_var = true;
    p.step = 115.0f / (n - 1);
    p.filename = "fine_100pk";
    return p;
}

void Fit(benchmark::State& state, const char* name) {
    const hxl::DIFFRACTION_PATTERN_TYPE p = std::string(name) == "fine" ? Fine_Pattern() : Read(name);
    if (p.npts < 2) {
        state.SkipWithError("no data");
        return;
    }
    const hxl::ARC_DATA_TYPE data = hxl::Arc_Data_From_Pattern(p);
    hxl::ARC_FIT_OPTIONS_TYPE fo;
    fo.folder = "/tmp";
    fo.stem = "bench_fit";
    fo.ask = [](const std::string&) { return true; };
    double chi2 = 0, peaks = 0, rounds = 0, added = 0, dropped = 0;
    for (auto _ : state) {
        hxl::PIK_JOB_TYPE job;
        std::string message;
        hxl::ARC_FIT_RESULT_TYPE r;
        hxl::ARC_AUTO_REPORT_TYPE report;
        if (!hxl::Arc_Automatic_Job(p, data, p.x(1), p.x(p.npts), 30, 0.02f, job, message) ||
            !hxl::Arc_Auto_Fit(job, data, fo, {}, r, report, message)) {
            state.SkipWithError(message.c_str());
            return;
        }
        chi2 = r.chi2;
        peaks = static_cast<double>(r.peaks.size());
        rounds = report.rounds, added = report.added, dropped = report.dropped;
    }
    state.counters["chi2"] = chi2;
    state.counters["peaks"] = peaks;
    state.counters["rounds"] = rounds;
    state.counters["added"] = added;
    state.counters["dropped"] = dropped;
}

BENCHMARK_CAPTURE(Fit, peaks100_points1e4, "fit_10k_100pk.xy")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fit, peaks100_points1e5, "fine")->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(Fit, peaks400_points4e4, "fit_40k_400pk.xy")->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace

BENCHMARK_MAIN();
