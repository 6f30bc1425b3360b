#include "peaks/arcfit_auto.h"

#include "peaks/arcfit_input.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "peaks/arcfit_model.h"
#include "peaks/peak_lists.h"
#include "peaks/search_points.h"

namespace hxl {
namespace {

struct AUTO_PEAK {
    float pos, inten, shf_g, shf_e;
    std::array<int, 4> flags;
    // Width and mixing flags as they were before a weak round held them fixed.
    std::array<int, 2> held{-1, -1};
};

// The median width of the (up to) seven peaks nearest x, leaving out index `skip`.
float Local_Width(const std::vector<float>& pos, const std::vector<float>& fwhm, float x, int skip) {
    const int n = static_cast<int>(pos.size());
    int hi = static_cast<int>(std::lower_bound(pos.begin(), pos.end(), x) - pos.begin()), lo = hi - 1;
    std::vector<float> near;
    while (near.size() < 7 && (lo >= 0 || hi < n)) {
        const bool left = hi >= n || (lo >= 0 && x - pos[static_cast<std::size_t>(lo)] <= pos[static_cast<std::size_t>(hi)] - x);
        const int k = left ? lo-- : hi++;
        if (k != skip && fwhm[static_cast<std::size_t>(k)] > 0) near.push_back(fwhm[static_cast<std::size_t>(k)]);
    }
    if (near.empty()) return 0.0f;
    std::nth_element(near.begin(), near.begin() + static_cast<long>(near.size() / 2), near.end());
    return near[near.size() / 2];
}

// A height-one pseudo-Voigt of FWHM w and mixing one half: the shape the
// difference curve is matched against.
float Template(float d, float w) {
    const float u = 2 * d / w;
    return 0.5f * std::exp(-0.69314718f * u * u) + 0.5f / (1 + u * u);
}

struct CANDIDATE {
    float x, height, width, significance;
};

// Places where the difference curve holds a peak of the local width standing
// above `threshold` standard deviations: the local maxima of the matched
// filter's significance, none within half a width of a peak already there.
std::vector<CANDIDATE> Missed_Peaks(const ARC_FIT_RESULT_TYPE& r, const ARC_DATA_TYPE& data,
                                    const std::vector<float>& pos, const std::vector<float>& fwhm, float threshold) {
    const int m = r.x.size();
    std::vector<CANDIDATE> out;
    if (m < 3 || pos.empty()) return out;
    // The variances of the fitted observations: they run over the data in order.
    const int n = std::min({data.npts, data.x.size(), data.var.size()});
    const int first = static_cast<int>(std::lower_bound(data.x.begin(), data.x.begin() + n, r.x(1)) - data.x.begin());
    std::vector<double> w(static_cast<std::size_t>(m));
    for (int i = 0; i < m; ++i) {
        const float v = first + i < n ? data.var(first + i + 1) : 0.0f;
        w[static_cast<std::size_t>(i)] = v > 0 ? 1.0 / v : 0.0;
    }
    std::vector<float> sig(static_cast<std::size_t>(m), 0.0f), height(static_cast<std::size_t>(m), 0.0f),
        width(static_cast<std::size_t>(m), 0.0f);
    for (int j = 0; j < m; ++j) {
        const float x = r.x(j + 1), h = Local_Width(pos, fwhm, x, -1);
        width[static_cast<std::size_t>(j)] = h;
        if (!(h > 0)) continue;
        double rg = 0, gg = 0;
        for (int dir : {-1, 1})
            for (int i = dir < 0 ? j : j + 1; i >= 0 && i < m && std::fabs(r.x(i + 1) - x) < 2 * h; i += dir) {
                const double g = Template(r.x(i + 1) - x, h), wi = w[static_cast<std::size_t>(i)];
                rg += r.diff(i + 1) * g * wi;
                gg += g * g * wi;
            }
        if (gg > 0) {
            sig[static_cast<std::size_t>(j)] = static_cast<float>(rg / std::sqrt(gg));
            height[static_cast<std::size_t>(j)] = static_cast<float>(rg / gg);
        }
    }
    for (int j = 0; j < m; ++j) {
        const float s = sig[static_cast<std::size_t>(j)], h = width[static_cast<std::size_t>(j)], x = r.x(j + 1);
        if (!(s > threshold) || !(height[static_cast<std::size_t>(j)] > 0)) continue;
        bool top = true;
        for (int i = j - 1; top && i >= 0 && x - r.x(i + 1) < h; --i) top = sig[static_cast<std::size_t>(i)] < s;
        for (int i = j + 1; top && i < m && r.x(i + 1) - x < h; ++i) top = sig[static_cast<std::size_t>(i)] <= s;
        if (!top) continue;
        const auto k = std::lower_bound(pos.begin(), pos.end(), x);
        if ((k != pos.end() && *k - x < 0.5f * h) || (k != pos.begin() && x - *(k - 1) < 0.5f * h)) continue;
        out.push_back({x, height[static_cast<std::size_t>(j)], h, s});
    }
    return out;
}

void Set_Peaks(PIK_JOB_TYPE& j, std::vector<AUTO_PEAK> peaks) {
    std::sort(peaks.begin(), peaks.end(), [](const AUTO_PEAK& a, const AUTO_PEAK& b) { return a.pos < b.pos; });
    j.npeak = static_cast<int>(peaks.size());
    Size_Peak_Lists(j);
    for (int k = 1; k <= j.npeak; ++k) {
        const AUTO_PEAK& p = peaks[static_cast<std::size_t>(k - 1)];
        j.pos(k) = p.pos, j.inten(k) = p.inten, j.shf_g(k) = p.shf_g, j.shf_e(k) = p.shf_e, j.pf(k) = p.flags;
    }
}

}  // namespace

bool Arc_Auto_Fit(const PIK_JOB_TYPE& start, const ARC_DATA_TYPE& data, const ARC_FIT_OPTIONS_TYPE& options,
                  const ARC_AUTO_OPTIONS_TYPE& ao, ARC_FIT_RESULT_TYPE& result, ARC_AUTO_REPORT_TYPE& report,
                  std::string& message) {
    // The rounds write no extra files; the last fit, from the settled values, writes what was asked.
    ARC_FIT_OPTIONS_TYPE lean = options;
    lean.irf = lean.save_calculated = lean.single_peaks = false;
    ARC_AUTO_REPORT_TYPE rep;
    PIK_JOB_TYPE job = start;
    ARC_FIT_RESULT_TYPE r;
    std::vector<std::array<int, 2>> held_of;  // per peak of the job: see AUTO_PEAK
    for (int round = 1;; ++round) {
        if (ao.on_round) ao.on_round(round);
        if (!Arc_Fit(job, data, lean, r, message)) return false;
        rep.rounds = round;
        if (r.stopped || round >= std::max(ao.rounds, 1)) break;

        const PIK_JOB_TYPE& fitted = r.job;
        std::vector<float> pos, fwhm;
        for (const ARC_PEAK_RESULT_TYPE& p : r.peaks) pos.push_back(p.pos), fwhm.push_back(p.fwhm);
        // Positions may have crossed during the fit; the local widths want them in order.
        std::vector<int> order(pos.size());
        for (std::size_t k = 0; k < order.size(); ++k) order[k] = static_cast<int>(k);
        std::sort(order.begin(), order.end(), [&](int a, int b) { return pos[static_cast<std::size_t>(a)] < pos[static_cast<std::size_t>(b)]; });
        std::vector<float> spos, sfwhm;
        for (int k : order) spos.push_back(pos[static_cast<std::size_t>(k)]), sfwhm.push_back(fwhm[static_cast<std::size_t>(k)]);

        std::vector<AUTO_PEAK> kept;
        int dropped = 0, fixed = 0;
        for (std::size_t s = 0; s < order.size(); ++s) {
            const int k = order[s];
            const ARC_PEAK_RESULT_TYPE& p = r.peaks[static_cast<std::size_t>(k)];
            const float local = Local_Width(spos, sfwhm, p.pos, static_cast<int>(s));
            const bool weak = !(p.area > 0) || (p.s_area > 0 && p.area < ao.keep_sigma * p.s_area);
            const bool wild = !(p.fwhm > 0) || (local > 0 && (p.fwhm > ao.width_factor * local ||
                                                               p.fwhm * ao.width_factor < local));
            const bool outside = !(p.pos > std::min(fitted.ang_init, fitted.ang_fin) &&
                                   p.pos < std::max(fitted.ang_init, fitted.ang_fin));
            std::array<int, 4> flags = fitted.pf(k + 1);
            float shf_g = fitted.shf_g(k + 1), shf_e = fitted.shf_e(k + 1);
            // A weak peak with its width and mixing free may be weak only for
            // them: it gets the local width and a mixing within [0, 1], both
            // fixed, and one more round to show its area.
            const bool fixed_now = weak && !wild && !outside && p.area > 0 && local > 0 && (flags[2] != 0 || flags[3] != 0);
            if (fixed_now) {
                flags[2] = flags[3] = 0;
                shf_g += local - p.fwhm;
                shf_e += std::clamp(p.eta, 0.0f, 1.0f) - p.eta;
                ++fixed;
            } else if (weak || wild || outside) {
                ++dropped;
                continue;
            }
            std::array<int, 2> held = k < static_cast<int>(held_of.size()) ? held_of[static_cast<std::size_t>(k)] : std::array<int, 2>{-1, -1};
            if (fixed_now && held[0] < 0) held = {fitted.pf(k + 1)[2], fitted.pf(k + 1)[3]};
            kept.push_back({fitted.pos(k + 1), fitted.inten(k + 1), shf_g, shf_e, flags, held});
        }
        // Added peaks are placed against the list before the drops: a dropped
        // peak's place is searched again in the next round, from its own residual.
        std::vector<CANDIDATE> missed = Missed_Peaks(r, data, spos, sfwhm, ao.add_sigma);
        std::sort(missed.begin(), missed.end(), [](const CANDIDATE& a, const CANDIDATE& b) { return a.significance > b.significance; });
        const std::size_t room = kArcMaxPeaks > static_cast<int>(kept.size()) ? kArcMaxPeaks - kept.size() : 0u;
        if (missed.size() > room) missed.resize(room);
        for (const CANDIDATE& c : missed) {
            const float eta0 = fitted.glob[8];
            const float h = c.width;
            // The same rule as the starting job: width in the shift, mixing from Eta0.
            kept.push_back({c.x, c.height / Pseudo_Voigt_Top(h, std::clamp(eta0, 0.0f, 1.0f)), h, 0.0f, {1, 1, 1, 1}});
        }
        if (dropped == 0 && fixed == 0 && missed.empty()) {
            rep.settled = true;
            break;
        }
        if (kept.empty()) break;
        rep.added += static_cast<int>(missed.size());
        rep.dropped += dropped;
        job = fitted;
        std::sort(kept.begin(), kept.end(), [](const AUTO_PEAK& a, const AUTO_PEAK& b) { return a.pos < b.pos; });
        held_of.clear();
        for (const AUTO_PEAK& q : kept) held_of.push_back(q.held);
        Set_Peaks(job, std::move(kept));
    }
    // The widths held for the rounds are given back for the last fit: the
    // list is settled, and a width the data hardly fix is still theirs to say.
    bool held = false;
    if (!r.stopped)
        for (int k = 1; k <= r.job.npeak && k <= static_cast<int>(held_of.size()); ++k)
            if (const auto h = held_of[static_cast<std::size_t>(k - 1)]; h[0] >= 0)
                r.job.pf(k)[2] = h[0], r.job.pf(k)[3] = h[1], held = true;
    const bool extra = options.irf || options.save_calculated || options.single_peaks;
    if ((extra || held) && !r.stopped) {
        if (!Arc_Fit(r.job, data, options, r, message)) return false;
    }
    result = std::move(r);
    report = rep;
    message.clear();
    return true;
}

// The job from the automatic search of peaks and background over [xmin, xmax].
bool Arc_Automatic_Job(const DIFFRACTION_PATTERN_TYPE& p, const ARC_DATA_TYPE& data, float xmin, float xmax,
                   int cycles, float threshold, PIK_JOB_TYPE& job, std::string& message) {
    SEARCH_CONDITIONS_TYPE c;
    c.peak_threshold = threshold;
    const SEARCH_FILE_TYPE no_file{"", p.filename, p.instr, false};
    PKB_TYPE found, back;
    Search_Points(p, xmin, xmax, " ", c, no_file, found);
    if (ERR_Search) return message = ERR_Search_Mess, false;
    Search_Points(p, xmin, xmax, "background", c, no_file, back);
    if (ERR_Search) return message = ERR_Search_Mess, false;
    std::vector<PEAK_POINT_TYPE> peaks, bgr;
    if (!Peaks_For_List(found, Profile_Step(p), true, peaks, message)) return false;
    if (!Background_For_List(back, bgr, message)) return false;
    job.title = p.title;
    return Arc_Start_Job(data, p.step, peaks, Arc_Thin_Background(bgr), p.lambda1, p.lambda2, cycles, job, message);
}

}  // namespace hxl
