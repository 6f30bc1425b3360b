// KV7, KV9 and KW1: every cell of every frame sits at its own angle; the cells
// are normalised to one monitor and interpolated onto a common grid.
#include <algorithm>
#include <cmath>

#include "instrument/adding_numors.h"
#include "instrument/nrf_blocks.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

constexpr long long kMaxGridPoints = 1LL << 20;  // far beyond any instrument's range and step
// Grid points this close to a cell's first or last angle (in steps) still
// belong to it: the float angles of the frames are not exact multiples.
constexpr double kEdge = 1e-3;

struct CELL_CURVE {
    std::vector<double> pos, y, var;
};

// The normalised curve of cell k of a numor over its frames, frames without
// a monitor left out.
void cell_curve(const POWDER_NUMOR_TYPE& n, int k, float norm, const CALIBRATION_DETECTOR_TYPE* cal, CELL_CURVE& c) {
    c.pos.clear();
    c.y.clear();
    c.var.clear();
    float offset = (cal && k <= cal->pos_offset.size()) ? cal->pos_offset(k) : 0.0f;
    int frames = std::min(n.n_frames, n.counts.cols());
    for (int j = 1; j <= frames; ++j) {
        float mon = n.frame_params.holds(2, j) ? n.frame_params(2, j) : 0.0f;
        if (!(mon > 0.0f)) continue;
        double f = static_cast<double>(norm) / mon;
        if (cal && cal->effic.holds(k, j) && k <= cal->effic.rows() && cal->effic(k, j) > 0.0f) f /= cal->effic(k, j);
        double counts = n.counts(k, j);
        c.pos.push_back(static_cast<double>(Frame_Angle(n, j)) + offset);
        c.y.push_back(counts * f);
        c.var.push_back(std::fabs(counts) * f * f);
    }
}

void adding_interp(const std::vector<POWDER_NUMOR_TYPE>& list, const std::vector<int>& used,
                   DIFFRACTION_PATTERN_TYPE& pattern, std::optional<float> monitor_norm,
                   const CALIBRATION_DETECTOR_TYPE* cal) {
    const POWDER_NUMOR_TYPE& first = list[static_cast<std::size_t>(used.front())];
    if (first.counts.empty() || first.n_frames < 2 || first.counts.cols() < 2) {
        Set_Nrf_Error(" The numor " + std::to_string(first.numor) + " has fewer than two frames: no angular step");
        return;
    }
    float norm = monitor_norm ? *monitor_norm : (first.frame_params.holds(2, 1) ? first.frame_params(2, 1) : 0.0f);
    double step = std::fabs(static_cast<double>(Frame_Angle(first, 2)) - Frame_Angle(first, 1));
    if (!(step > 0.0) || !std::isfinite(step)) {
        Set_Nrf_Error(" The first two frames of numor " + std::to_string(first.numor) + " have the same angle");
        return;
    }
    auto cell_used = [&](int k) { return !cal || k > cal->active.size() || cal->active(k) != 0; };

    double xmin = 0, xmax = 0;
    bool any = false;
    CELL_CURVE c;
    for (int u : used) {
        const POWDER_NUMOR_TYPE& n = list[static_cast<std::size_t>(u)];
        for (int k = 1; k <= std::min(n.n_pixels, n.counts.rows()); ++k) {
            if (!cell_used(k)) continue;
            cell_curve(n, k, norm, cal, c);
            for (double p : c.pos) {
                if (!std::isfinite(p)) continue;
                if (!any) xmin = xmax = p;
                xmin = std::min(xmin, p);
                xmax = std::max(xmax, p);
                any = true;
            }
        }
    }
    if (!any) {
        Set_Nrf_Error(" No counts with a monitor were found in the numors to add");
        return;
    }
    double span = std::round((xmax - xmin) / step);
    if (!(span + 1 <= static_cast<double>(kMaxGridPoints))) {
        Set_Nrf_Error(" Too many points for the common grid of the numors to add");
        return;
    }
    int npts = static_cast<int>(span) + 1;
    std::vector<double> sum(static_cast<std::size_t>(npts), 0.0), sumvar(static_cast<std::size_t>(npts), 0.0);
    std::vector<int> hits(static_cast<std::size_t>(npts), 0);
    double time = 0;

    for (int u : used) {
        const POWDER_NUMOR_TYPE& n = list[static_cast<std::size_t>(u)];
        time += n.time;
        for (int k = 1; k <= std::min(n.n_pixels, n.counts.rows()); ++k) {
            if (!cell_used(k)) continue;
            cell_curve(n, k, norm, cal, c);
            if (c.pos.size() < 2) continue;
            bool ascending = c.pos.back() >= c.pos.front();
            double lo = std::min(c.pos.front(), c.pos.back()), hi = std::max(c.pos.front(), c.pos.back());
            long long i0 = std::max(0LL, static_cast<long long>(std::ceil((lo - xmin) / step - kEdge)));
            long long i1 = std::min<long long>(npts - 1, static_cast<long long>(std::floor((hi - xmin) / step + kEdge)));
            for (long long i = i0; i <= i1; ++i) {
                double x = static_cast<double>(i) * step + xmin;
                // The frames that bracket x.
                std::size_t j;
                if (ascending)
                    j = static_cast<std::size_t>(std::upper_bound(c.pos.begin(), c.pos.end(), x) - c.pos.begin());
                else
                    j = static_cast<std::size_t>(
                        std::upper_bound(c.pos.begin(), c.pos.end(), x, [](double a, double b) { return a > b; }) -
                        c.pos.begin());
                j = std::clamp<std::size_t>(j, 1, c.pos.size() - 1);
                double p0 = c.pos[j - 1], p1 = c.pos[j];
                double tol = kEdge * step;
                if (x < std::min(p0, p1) - tol || x > std::max(p0, p1) + tol) continue;
                double t = (p1 != p0) ? std::clamp((x - p0) / (p1 - p0), 0.0, 1.0) : 0.0;
                std::size_t ip = static_cast<std::size_t>(i);
                sum[ip] += (1.0 - t) * c.y[j - 1] + t * c.y[j];
                sumvar[ip] += (1.0 - t) * c.var[j - 1] + t * c.var[j];
                ++hits[ip];
            }
        }
    }

    pattern = DIFFRACTION_PATTERN_TYPE{};
    Allocate_Pattern(pattern, npts);
    if (ERR_Pattern) {
        Set_Nrf_Error(ERR_Pattern_Mess);
        return;
    }
    for (int i = 1; i <= npts; ++i) {
        std::size_t ip = static_cast<std::size_t>(i - 1);
        pattern.x(i) = static_cast<float>(static_cast<double>(i - 1) * step + xmin);
        int h = hits[ip];
        pattern.y(i) = h > 0 ? static_cast<float>(sum[ip] / h) : 0.0f;
        pattern.sigma(i) = h > 0 ? static_cast<float>(std::fabs(sumvar[ip]) / (static_cast<double>(h) * h)) : 1.0f;
        pattern.istat(i) = h;
    }
    pattern.title = Cut(Trim(first.title) + ", Instr: " + Trim(first.instrument) + ", Header: " + Trim(first.header),
                        kTitleLen);
    pattern.diff_kind = "neutrons_cw";
    pattern.scat_var = "2theta";
    pattern.xax_text = "2theta(degrees)";
    pattern.yax_text = "Intensity (arb. units)";
    pattern.instr = Cut(Trim(first.instrument), kInstrLen);
    pattern.lambda1 = pattern.lambda2 = first.wavelength;
    pattern.tset = first.sample_env[0];
    pattern.tsamp = first.sample_env[2];
    pattern.step = static_cast<float>(step);
    pattern.ct_step = true;
    pattern.xmin = pattern.x(1);
    pattern.xmax = pattern.x(npts);
    pattern.monitor = norm;
    pattern.reserved1 = static_cast<float>(time);  // the counting time of the sum
    Pattern_Y_Limits(pattern);
}

}  // namespace

void ADDING_NUMORS_KV7_DIFFPATTERN(const std::vector<POWDER_NUMOR_TYPE>& list, const std::vector<int>& used,
                                   DIFFRACTION_PATTERN_TYPE& pattern, std::optional<float> monitor_norm,
                                   const CALIBRATION_DETECTOR_TYPE* calibration) {
    adding_interp(list, used, pattern, monitor_norm, calibration);
}

void ADDING_NUMORS_KW1_DIFFPATTERN(const std::vector<POWDER_NUMOR_TYPE>& list, const std::vector<int>& used,
                                   DIFFRACTION_PATTERN_TYPE& pattern, std::optional<float> monitor_norm,
                                   const CALIBRATION_DETECTOR_TYPE* calibration) {
    adding_interp(list, used, pattern, monitor_norm, calibration);
}

}  // namespace hxl
