#include "peaks/arcfit_run.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <sstream>

#include "patterns/replace_file.h"
#include "peaks/arcfit_files.h"
#include "peaks/arcfit_layout.h"
#include "peaks/arcfit_model.h"
#include "peaks/arcfit_widths.h"
#include "peaks/fit_cycles.h"
#include "peaks/lm_der.h"
#include "peaks/lsq_report.h"

namespace hxl {
namespace {

// Offsets of a peak's four parameters after the globals and the background.
int Peak_Base(int nb, int k) { return kArcGlobals + nb + 4 * (k - 1); }

// The parameter vector and its flags from the job.
void Job_To_Vector(const PIK_JOB_TYPE& j, bool second, LSQ_STATE_VECTOR_TYPE& vs) {
    const int nb = j.nbac, npk = j.npeak;
    Allocate_State_Vector(vs, Arc_Parameter_Count(nb, npk));
    vs.nampar = Arc_Parameter_Names(nb, npk);
    for (int i = 1; i <= kArcGlobals; ++i) {
        vs.pv(i) = j.glob[static_cast<std::size_t>(i)];
        vs.code(i) = static_cast<std::int16_t>(j.gflag[static_cast<std::size_t>(i)] != 0);
    }
    if (!second) vs.pv(1) = 0, vs.code(1) = 0;
    for (int i = 1; i <= nb; ++i) {
        vs.pv(kArcGlobals + i) = j.bv(i);
        vs.code(kArcGlobals + i) = static_cast<std::int16_t>(j.bf(i) != 0);
    }
    for (int k = 1; k <= npk; ++k) {
        const int b = Peak_Base(nb, k);
        const float v[4] = {j.pos(k), j.inten(k), j.shf_g(k), j.shf_e(k)};
        for (int q = 0; q < 4; ++q) {
            vs.pv(b + 1 + q) = v[q];
            vs.code(b + 1 + q) = static_cast<std::int16_t>(j.pf(k)[static_cast<std::size_t>(q)] != 0);
        }
    }
}

void Vector_To_Job(const LSQ_STATE_VECTOR_TYPE& vs, PIK_JOB_TYPE& j) {
    for (int i = 1; i <= kArcGlobals; ++i) j.glob[static_cast<std::size_t>(i)] = vs.pv(i);
    for (int i = 1; i <= j.nbac; ++i) j.bv(i) = vs.pv(kArcGlobals + i);
    for (int k = 1; k <= j.npeak; ++k) {
        const int b = Peak_Base(j.nbac, k);
        j.pos(k) = vs.pv(b + 1);
        j.inten(k) = vs.pv(b + 2);
        j.shf_g(k) = vs.pv(b + 3);
        j.shf_e(k) = vs.pv(b + 4);
    }
}

// The refusals before a fit; empty when the job can run.
std::string Job_Refusal(const PIK_JOB_TYPE& j) {
    if (j.npeak < 1) return kArcNoPeak;
    if (j.nbac < 2) return kArcNoBackground;
    if (j.npeak > kArcMaxPeaks) return kArcTooManyPeaks;
    if (j.nbac > kArcMaxBackground) return " => Error: too many background parameters ! ";
    if (j.bx.size() < j.nbac || j.bv.size() < j.nbac || j.bf.size() < j.nbac || j.pos.size() < j.npeak ||
        j.inten.size() < j.npeak || j.shf_g.size() < j.npeak || j.shf_e.size() < j.npeak || j.pf.size() < j.npeak)
        return "Fault: the job's lists are shorter than its counts";
    for (int k = 1; k <= j.npeak; ++k)
        if (j.inten(k) == 0.0f)
            return "The starting intensity of peak #" + std::to_string(k) +
                   " is zero: its derivative would be infinite. Give it a starting value!";
    return {};
}


std::string Join(const std::string& folder, const std::string& name) { return Join_Folder(folder, name); }

}  // namespace

float Pseudo_Voigt_Top(float h, float eta) { return eta * 0.63661975f / h + (1.0f - eta) * 0.93943727f / h; }

float Half_Height_Width(const ARC_DATA_TYPE& d, float pos, float height, float bgr) {
    const int n = std::min({d.npts, d.x.size(), d.y.size()});
    if (n < 3 || !(height > bgr)) return 0.0f;
    const float half = bgr + 0.5f * (height - bgr);
    // The point nearest the peak.
    int c = static_cast<int>(std::lower_bound(d.x.begin(), d.x.begin() + n, pos) - d.x.begin()) + 1;
    c = std::clamp(c, 1, n);
    if (c > 1 && std::fabs(d.x(c - 1) - pos) < std::fabs(d.x(c) - pos)) --c;
    if (!(d.y(c) > half)) return 0.0f;  // the profile does not reach the height given
    // Walks one way until the profile falls to half height (the crossing,
    // interpolated) or rises again above where it was (a neighbour): then NaN.
    auto side = [&](int dir) -> float {
        float low = d.y(c);
        for (int i = c + dir; i >= 1 && i <= n; i += dir) {
            const float yi = d.y(i), yp = d.y(i - dir);
            if (yi <= half) {
                const float t = yp != yi ? (yp - half) / (yp - yi) : 0.0f;
                return std::fabs(d.x(i - dir) + t * (d.x(i) - d.x(i - dir)) - pos);
            }
            low = std::min(low, yi);
            // A rise of more than the noise of the lowest point: another peak.
            if (yi > low + 3.0f * std::sqrt(std::max(low, 1.0f)) && yi > low) return NAN;
        }
        return NAN;
    };
    const float l = side(-1), r = side(+1);
    if (std::isfinite(l) && std::isfinite(r)) return l + r;
    if (std::isfinite(l)) return 2 * l;
    if (std::isfinite(r)) return 2 * r;
    return 0.0f;
}

bool Arc_Start_Job(const ARC_DATA_TYPE& data, float step, const std::vector<PEAK_POINT_TYPE>& peaks,
                   const std::vector<PEAK_POINT_TYPE>& background, float lambda1, float lambda2, int cycles,
                   PIK_JOB_TYPE& job, std::string& message) {
    if (peaks.empty()) return message = kArcNoPeak, false;
    if (background.size() < 2) return message = kArcNoBackground, false;
    if (background.size() > static_cast<std::size_t>(kArcMaxBackground))
        return message = " => Error: too many background parameters ! ", false;
    const float x0 = background.front().x, x1 = background.back().x;
    std::vector<PEAK_POINT_TYPE> inside;
    for (const PEAK_POINT_TYPE& p : peaks)
        if (p.x > x0 && p.x < x1 && p.y > p.bgr) inside.push_back(p);
    if (inside.empty()) return message = kArcNoPeak, false;
    if (inside.size() > static_cast<std::size_t>(kArcMaxPeaks)) return message = kArcTooManyPeaks, false;

    if (!(step > 0.0f)) step = data.npts >= 2 ? data.x(2) - data.x(1) : 0.0f;
    std::vector<float> width(inside.size());
    double sum = 0;
    int found = 0;
    for (std::size_t k = 0; k < inside.size(); ++k) {
        width[k] = Half_Height_Width(data, inside[k].x, inside[k].y, inside[k].bgr);
        if (width[k] > 0.0f) sum += width[k], ++found;
    }
    const float fallback = found > 0 ? static_cast<float>(sum / found) : 10.0f * std::fabs(step);
    if (!(fallback > 0.0f)) return message = kArcNoPeak, false;

    PIK_JOB_TYPE j;
    j.title = job.title;
    j.x_label = job.x_label.empty() ? "2Theta" : job.x_label;
    j.ang_init = x0;
    j.ang_fin = x1;
    j.nbac = static_cast<int>(background.size());
    j.npeak = static_cast<int>(inside.size());
    j.ncyc = cycles;
    j.lambda1 = lambda1;
    j.lambda2 = lambda2;
    const float eta0 = 0.5f;
    j.glob[8] = eta0;  // every other global 0 and fixed: the widths live in the shifts
    j.bx = Array1<float>(j.nbac);
    j.bv = Array1<float>(j.nbac);
    j.bf = Array1<int>(j.nbac);
    for (int i = 1; i <= j.nbac; ++i) {
        j.bx(i) = background[static_cast<std::size_t>(i - 1)].x;
        j.bv(i) = background[static_cast<std::size_t>(i - 1)].y;
        j.bf(i) = 1;
    }
    Size_Peak_Lists(j);
    for (int k = 1; k <= j.npeak; ++k) {
        const PEAK_POINT_TYPE& p = inside[static_cast<std::size_t>(k - 1)];
        const float h = width[static_cast<std::size_t>(k - 1)] > 0.0f ? width[static_cast<std::size_t>(k - 1)] : fallback;
        j.pos(k) = p.x;
        j.inten(k) = (p.y - p.bgr) / Pseudo_Voigt_Top(h, eta0);
        j.shf_g(k) = h;
        j.shf_e(k) = 0.0f;
        j.pf(k) = {1, 1, 1, 1};
    }
    job = std::move(j);
    message.clear();
    return true;
}

bool Arc_Fit(const PIK_JOB_TYPE& job, const ARC_DATA_TYPE& data, const ARC_FIT_OPTIONS_TYPE& o,
             ARC_FIT_RESULT_TYPE& result, std::string& message) {
    message = Job_Refusal(job);
    if (!message.empty()) return false;

    ARC_MODEL_TYPE model;
    model.nb = job.nbac;
    model.npk = job.npeak;
    model.xb = Array1<float>(job.nbac);
    for (int i = 1; i <= job.nbac; ++i) model.xb(i) = job.bx(i);
    model.lambda1 = job.lambda1;
    model.lambda2 = job.lambda2;
    model.inst = job.inst;
    model.asymmetry = o.asymmetry;
    const bool second = Arc_Has_Second_Line(model);

    LSQ_STATE_VECTOR_TYPE vs;
    Job_To_Vector(job, second, vs);
    LSQ_CONDITIONS_TYPE cond;
    FIT_MODEL_LINK_TYPE link;
    link.prepare = [&](const Array1<float>& pv) { Arc_Prepare(model, pv); };
    link.point = [&](const Array1<float>& pv, float x, std::vector<ARC_DERIV_TYPE>& d, float* peaks,
                     std::vector<float>* single) { return Arc_Point(model, pv, x, d, peaks, single); };
    FIT_CYCLES_TYPE run;
    const float lo = std::min(job.ang_init, job.ang_fin), hi = std::max(job.ang_init, job.ang_fin);
    if (!Fit_Cycles(link, data, lo, hi, job.ncyc, o, kArcNoSpace, cond, vs, run, message)) return false;
    const std::vector<int>& free = run.free;
    const std::vector<int>& free_of = run.free_of;
    const LSQ_OUTCOME_TYPE& outcome = run.outcome;
    const std::string& info = run.info;
    const float chi2 = run.chi2;
    const int m = run.x.size();
    const Array1<float>& ox = run.x;
    const Array1<float>& oy = run.y;

    std::string out = Arc_Out_Head(job, cond.npvar);
    const std::string out_file = Join(o.folder, o.stem + "_pf.out");
    Layout("(a,f15.5)")(out, " => Final   Chi2:", chi2);
    if (info.find("NaN") != std::string::npos) {
        Replace_File(out_file, out);
        message = kArcNaN;
        return false;
    }

    // The final curves at the values reached.
    ARC_FIT_RESULT_TYPE r;
    const Array1<float>& pv = vs.pv;
    r.x = ox;
    r.yobs = oy;
    Fit_Curves(link, run, vs, job.npeak, (o.single_peaks || o.save_calculated) && job.npeak <= kArcMaxSingle,
               r.ycalc, r.bgr, r.diff, r.single);

    std::ostringstream report;
    std::string report_message;
    const std::string lm_file = Join(o.folder, kLmFitFile);
    const bool lm_ok = Info_LSQ_LM(chi2, report, m, ox, oy, r.ycalc, run.w, cond, vs, outcome, lm_file, false, report_message);
    out += report.str();

    // Each peak's first line: width, mixing and their deviations through the correlations.
    const int n = static_cast<int>(free.size());
    auto sd = [&](const std::vector<std::pair<int, float>>& grad) {
        if (outcome.covar.size() != static_cast<std::size_t>(n) * static_cast<std::size_t>(n)) return 0.0f;
        double v = 0;
        for (const auto& [a, ga] : grad)
            for (const auto& [b, gb] : grad) {
                const int ca = free_of[static_cast<std::size_t>(a)], cb = free_of[static_cast<std::size_t>(b)];
                if (ca > 0 && cb > 0)
                    v += static_cast<double>(ga) * gb *
                         outcome.covar[static_cast<std::size_t>(cb - 1) * static_cast<std::size_t>(n) + static_cast<std::size_t>(ca - 1)];
            }
        return static_cast<float>(std::sqrt(std::max(v, 0.0)));
    };
    r.peaks.resize(static_cast<std::size_t>(job.npeak));
    for (const ARC_LINE_TYPE& line : model.lines) {
        if (line.second) continue;
        const int k = line.peak, b = Peak_Base(job.nbac, k);
        ARC_PEAK_RESULT_TYPE& p = r.peaks[static_cast<std::size_t>(k - 1)];
        p.pos = pv(b + 1);
        p.area = pv(b + 2);
        p.fwhm = line.h;
        p.eta = line.eta;
        p.s_pos = vs.spv(b + 1);
        p.s_area = vs.spv(b + 2);
        p.s_fwhm = sd({{4, line.dh_du}, {5, line.dh_dv}, {6, line.dh_dw}, {7, line.dh_dz}, {b + 1, line.dh_dp}, {b + 3, 1.0f}});
        p.s_eta = sd({{8, 1.0f}, {9, p.pos}, {b + 1, line.deta_dp}, {b + 4, 1.0f}});
        p.split = Split_Widths(p.fwhm, p.eta, p.hg, p.hl);
    }

    // Files, then the result: a file that cannot be written leaves the result alone.
    if (!Replace_File(out_file, out)) {
        message = "ERROR opening the file: " + out_file;
        return false;
    }
    r.files.push_back(out_file);
    if (lm_ok) r.files.push_back(lm_file);
    if (o.irf) {
        std::vector<ARC_IRF_PEAK_TYPE> irf;
        for (const ARC_PEAK_RESULT_TYPE& p : r.peaks) irf.push_back({p.pos, p.hg, p.hl, p.split});
        const std::string f = Join(o.folder, o.stem + "_pf.irf");
        if (!Write_Arc_Irf(f, irf, pv(2), pv(3), message)) return false;
        r.files.push_back(f);
    }
    if (o.save_calculated) {
        const std::string f = Join(o.folder, "arcfit_obscalc.xyy");
        if (!Write_Arc_Obscalc(f, ox, oy, r.ycalc, r.bgr, r.single, message)) return false;
        r.files.push_back(f);
    }
    if (!o.single_peaks) r.single.clear();

    r.info = info;
    r.reached = cond.reached;
    r.stopped = run.stopped;
    r.chi2 = chi2;
    r.iterations = run.count;
    r.questions = run.questions;
    r.job = job;
    Vector_To_Job(vs, r.job);
    r.job.has_chi2 = true;
    r.job.chi2 = chi2;
    result = std::move(r);
    message.clear();
    return true;
}

}  // namespace hxl
