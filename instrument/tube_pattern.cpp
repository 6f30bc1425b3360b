#include "instrument/tube_pattern.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>

#include "support/fixed_text.h"

namespace hxl {

bool Tube_Bank_Pattern(const FRAME_SET_TYPE& f, const TUBE_BANK_TYPE& bank, DIFFRACTION_PATTERN_TYPE& pattern,
                       std::string& message) {
    std::ostringstream why;
    if (f.n_frames < 1 || f.nx < 1 || f.ny < 1) {
        message = "There are no frames to make a pattern of";
        return false;
    }
    int first = bank.band_first > 0 ? bank.band_first : f.ny / 4 + 1;
    int last = bank.band_last > 0 ? bank.band_last : f.ny - f.ny / 4;
    if (first > last || first < 1 || last > f.ny) {
        why << "The band of pixels " << first << " to " << last << " is not within the tubes' 1 to " << f.ny;
        message = why.str();
        return false;
    }
    int ref = bank.reference_tube > 0 ? bank.reference_tube : f.nx;
    if (ref > f.nx) {
        why << "The reference tube " << ref << " is beyond the " << f.nx << " tubes";
        message = why.str();
        return false;
    }
    float step = bank.bin;
    if (step <= 0 && f.n_frames > 1) step = std::fabs(f.angle[1] - f.angle[0]);
    if (!(step > 1e-5f) || !std::isfinite(step)) {
        message = "The scan step is zero: give the width of the bins";
        return false;
    }
    for (int k = 1; k <= f.n_frames; ++k)
        if (!(f.monitor[static_cast<std::size_t>(k - 1)] > 0)) {
            why << "Step " << k << " has no monitor counts: its frame cannot be weighted";
            message = why.str();
            return false;
        }

    // Bins on a grid through the first step's angle, so that a scan whose steps
    // equal the bin width lands one step per bin.
    double origin = f.angle[0];
    struct SUM {
        double counts = 0, monitor = 0;
    };
    std::map<long, SUM> bins;  // sums in double: thousands of counts a bin
    for (int k = 1; k <= f.n_frames; ++k) {
        const float* frame = Frame_Data(f, k);
        double monitor = f.monitor[static_cast<std::size_t>(k - 1)];
        for (int t = 1; t <= f.nx; ++t) {
            double tth = f.angle[static_cast<std::size_t>(k - 1)] - static_cast<double>(ref - t) * bank.tube_step;
            double c = 0;
            for (int p = first; p <= last; ++p)
                c += frame[static_cast<std::size_t>(p - 1) * static_cast<std::size_t>(f.nx) + static_cast<std::size_t>(t - 1)];
            long b = std::lround((tth - origin) / step);
            bins[b].counts += c;
            bins[b].monitor += monitor;
        }
    }
    // Keep the angles a diffractometer reaches; a tube behind the beam is not a pattern.
    std::vector<std::pair<double, SUM>> kept;
    for (const auto& [b, s] : bins) {
        double x = origin + static_cast<double>(b) * step;
        if (x > 0 && x < 180) kept.emplace_back(x, s);
    }
    if (kept.empty()) {
        message = "No tube lies between 0 and 180 degrees 2theta";
        return false;
    }
    double mean_monitor = 0;
    for (float m : f.monitor) mean_monitor += m;
    mean_monitor /= f.n_frames;

    pattern = DIFFRACTION_PATTERN_TYPE{};
    Allocate_Pattern(pattern, static_cast<int>(kept.size()));
    if (ERR_Pattern) {
        message = ERR_Pattern_Mess;
        return false;
    }
    for (int i = 1; i <= pattern.npts; ++i) {
        const auto& [x, s] = kept[static_cast<std::size_t>(i - 1)];
        // Counts per mean monitor of one step; the variance from the counts.
        double scale = mean_monitor / s.monitor;
        pattern.x(i) = static_cast<float>(x);
        pattern.y(i) = static_cast<float>(s.counts * scale);
        pattern.sigma(i) = static_cast<float>(std::max(s.counts, 1.0) * scale * scale);
        pattern.istat(i) = 1;
    }
    pattern.sig_var = true;
    pattern.gsigma = true;
    pattern.title = Cut(Trim(f.title) + ", Instr: " + Trim(f.instrument) + ", Header: " + Trim(f.header), kTitleLen);
    pattern.diff_kind = "neutrons_cw";
    pattern.scat_var = "2theta";
    pattern.xax_text = "2theta(degrees)";
    pattern.yax_text = "Intensity (arb. units)";
    pattern.instr = Cut(Trim(f.instrument), kInstrLen);
    pattern.lambda1 = pattern.lambda2 = f.wavelength;
    pattern.step = step;
    pattern.ct_step = pattern.npts == static_cast<int>(std::lround((kept.back().first - kept.front().first) / step)) + 1;
    pattern.xmin = pattern.x(1);
    pattern.xmax = pattern.x(pattern.npts);
    pattern.monitor = static_cast<float>(mean_monitor);
    Pattern_Y_Limits(pattern);
    return true;
}

}  // namespace hxl
