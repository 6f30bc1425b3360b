// The profile fit from the automatic start (search, starting rules, rounds of
// adding and dropping peaks) on the synthetic patterns: 100 peaks on 10^4
// points and 400 peaks on 4x10^4. The reduced chi2 reached is a counter.
#include <benchmark/benchmark.h>

#include <fstream>
#include <sstream>
#include <string>

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

void Fit(benchmark::State& state, const char* name) {
    const hxl::DIFFRACTION_PATTERN_TYPE p = Read(name);
    if (p.npts < 2) {
        state.SkipWithError("no data");
        return;
    }
    const hxl::ARC_DATA_TYPE data = hxl::Arc_Data_From_Pattern(p);
    hxl::ARC_FIT_OPTIONS_TYPE fo;
    fo.folder = "/tmp";
    fo.stem = "bench_fit";
    fo.ask = [](const std::string&) { return true; };
    double chi2 = 0, peaks = 0;
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
    }
    state.counters["chi2"] = chi2;
    state.counters["peaks"] = peaks;
}

BENCHMARK_CAPTURE(Fit, peaks100_points1e4, "fit_10k_100pk.xy")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fit, peaks400_points4e4, "fit_40k_400pk.xy")->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace

BENCHMARK_MAIN();
