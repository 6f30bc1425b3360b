#include "peaks/timefit_run.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <sstream>

#include "patterns/replace_file.h"
#include "peaks/arcfit_files.h"
#include "peaks/arcfit_layout.h"
#include "peaks/fit_cycles.h"
#include "peaks/lm_der.h"
#include "peaks/lsq_report.h"
#include "peaks/timefit_listing.h"
#include "peaks/timefit_model.h"

namespace hxl {
namespace {

void Job_To_Vector(const TOF_JOB_TYPE& j, LSQ_STATE_VECTOR_TYPE& vs) {
    Allocate_State_Vector(vs, Tof_Parameter_Count(j.nbac, j.npeak));
    vs.nampar = Tof_Parameter_Names(j.nbac, j.npeak);
    for (int i = 1; i <= kTofGlobals; ++i) {
        vs.pv(i) = j.glob[static_cast<std::size_t>(i)];
        vs.code(i) = static_cast<std::int16_t>(j.gflag[static_cast<std::size_t>(i)] != 0);
    }
    for (int i = 1; i <= j.nbac; ++i) {
        vs.pv(kTofGlobals + i) = j.bv(i);
        vs.code(kTofGlobals + i) = static_cast<std::int16_t>(j.bf(i) != 0);
    }
    for (int k = 1; k <= j.npeak; ++k)
        for (int q = 0; q < 6; ++q) {
            vs.pv(Tof_Peak_Base(j.nbac, k) + q) = j.pk(k)[static_cast<std::size_t>(q)];
            vs.code(Tof_Peak_Base(j.nbac, k) + q) = static_cast<std::int16_t>(j.pf(k)[static_cast<std::size_t>(q)] != 0);
        }
}

void Vector_To_Job(const LSQ_STATE_VECTOR_TYPE& vs, TOF_JOB_TYPE& j) {
    for (int i = 1; i <= kTofGlobals; ++i) j.glob[static_cast<std::size_t>(i)] = vs.pv(i);
    for (int i = 1; i <= j.nbac; ++i) j.bv(i) = vs.pv(kTofGlobals + i);
    for (int k = 1; k <= j.npeak; ++k)
        for (int q = 0; q < 6; ++q) j.pk(k)[static_cast<std::size_t>(q)] = vs.pv(Tof_Peak_Base(j.nbac, k) + q);
}

std::string Job_Refusal(const TOF_JOB_TYPE& j) {
    if (j.npeak < 1) return kArcNoPeak;
    if (j.nbac < 2) return kArcNoBackground;
    if (j.npeak > kTofMaxPeaks) return kArcTooManyPeaks;
    if (j.nbac > kTofMaxBackground) return " => Error: too many background parameters ! ";
    if (!(j.dtt > 0) || !std::isfinite(j.dtt)) return kTofBadDtt;
    if (j.bx.size() < j.nbac || j.bv.size() < j.nbac || j.bf.size() < j.nbac || j.pk.size() < j.npeak ||
        j.pf.size() < j.npeak)
        return "Fault: the job's lists are shorter than its counts";
    return {};
}


}  // namespace

void Tof_Job_From_Start(const PIK_JOB_TYPE& cw, float dtt, TOF_JOB_TYPE& job) {
    TOF_JOB_TYPE j;
    j.title = cw.title;
    j.tof_init = cw.ang_init, j.tof_fin = cw.ang_fin;
    j.nbac = cw.nbac, j.npeak = cw.npeak, j.ncyc = cw.ncyc;
    j.dtt = dtt;
    j.bx = cw.bx, j.bv = cw.bv, j.bf = cw.bf;
    Size_Tof_Peaks(j);
    double mean = 0;
    for (int k = 1; k <= j.npeak; ++k) mean += cw.shf_g(k) / j.npeak;
    // Rates that make each exponential side a fraction of the width; the
    // fit moves them.
    j.glob[1] = static_cast<float>(8.0 / mean);
    j.glob[2] = static_cast<float>(2.0 / mean);
    j.gflag[1] = j.gflag[2] = 1;
    for (int k = 1; k <= j.npeak; ++k) {
        // The start's width is the FWHM: the exponentials widen it, so sigma^2
        // starts a little below that of a Gaussian of the same width.
        const float h = cw.shf_g(k), s = h / 2.35482f;
        j.pk(k) = {cw.pos(k), cw.inten(k) * Pseudo_Voigt_Top(h, 0.5f) / Pseudo_Voigt_Top(h, 0.0f), 0.8f * s * s, 0, 0, 0};
        j.pf(k) = {1, 1, 1, 0, 0, 0};
    }
    job = std::move(j);
}

bool Tof_Start_Job(const ARC_DATA_TYPE& data, float step, const std::vector<PEAK_POINT_TYPE>& peaks,
                   const std::vector<PEAK_POINT_TYPE>& background, float dtt, int cycles, TOF_JOB_TYPE& job,
                   std::string& message) {
    PIK_JOB_TYPE cw;
    cw.title = job.title;
    if (!Arc_Start_Job(data, step, peaks, background, 0, 0, cycles, cw, message)) return false;
    Tof_Job_From_Start(cw, dtt, job);
    message.clear();
    return true;
}

bool Tof_Fit(const TOF_JOB_TYPE& job, const ARC_DATA_TYPE& data, const ARC_FIT_OPTIONS_TYPE& o,
             TOF_FIT_RESULT_TYPE& result, std::string& message) {
    message = Job_Refusal(job);
    if (!message.empty()) return false;

    TOF_MODEL_TYPE model;
    model.nb = job.nbac;
    model.npk = job.npeak;
    model.xb = Array1<float>(job.nbac);
    for (int i = 1; i <= job.nbac; ++i) model.xb(i) = job.bx(i);
    model.dtt = job.dtt;

    LSQ_STATE_VECTOR_TYPE vs;
    LSQ_CONDITIONS_TYPE cond;
    try {
        Job_To_Vector(job, vs);
    } catch (const std::bad_alloc&) {
        message = kTofNoSpace;
        return false;
    }
    FIT_MODEL_LINK_TYPE link;
    link.prepare = [&](const Array1<float>& pv) { Tof_Prepare(model, pv, vs.code); };
    link.point = [&](const Array1<float>& pv, float x, std::vector<TOF_DERIV_TYPE>& d, float* peaks,
                     std::vector<float>* single) { return Tof_Point(model, pv, x, d, peaks, single); };
    FIT_CYCLES_TYPE run;
    const float lo = std::min(job.tof_init, job.tof_fin), hi = std::max(job.tof_init, job.tof_fin);
    const std::string out_file = Join_Folder(o.folder, o.stem + "_pf.out");
    if (!Fit_Cycles(link, data, lo, hi, job.ncyc, o, kTofNoSpace, cond, vs, run, message)) return false;
    const float chi2 = run.chi2;
    std::string out = Tof_Out_Head(job, cond.npvar);
    Layout("(a,f15.5)")(out, " => Final   Chi2:", chi2);
    // A chi2 beyond the float range is a model that could not be evaluated either.
    if (run.info.find("NaN") != std::string::npos || !std::isfinite(chi2)) {
        Replace_File(out_file, out);
        message = kArcNaN;
        return false;
    }

    TOF_FIT_RESULT_TYPE r;
    const int m = run.x.size();
    r.x = run.x;
    r.yobs = run.y;
    Fit_Curves(link, run, vs, job.npeak, (o.single_peaks || o.save_calculated) && job.npeak <= kArcMaxSingle,
               r.ycalc, r.bgr, r.diff, r.single);

    std::ostringstream report;
    std::string report_message;
    const std::string lm_file = Join_Folder(o.folder, kLmFitFile);
    const bool lm_ok = Info_LSQ_LM(chi2, report, m, run.x, run.y, r.ycalc, run.w, cond, vs, run.outcome, lm_file, false, report_message);
    out += report.str();
    // The intensities are integrated areas as fitted: the shape has area one.
    const float scale = 1.0f;
    out += Tof_Final_Table(job, vs, scale);

    r.peaks.resize(static_cast<std::size_t>(job.npeak));
    for (const TOF_PEAK_TYPE& p : model.peaks) {
        const int b = Tof_Peak_Base(job.nbac, p.k);
        TOF_PEAK_RESULT_TYPE& q = r.peaks[static_cast<std::size_t>(p.k - 1)];
        q.pos = p.t;
        q.inten = p.inten * scale;
        q.fwhm = static_cast<float>(p.h);
        q.alpha = static_cast<float>(p.a);
        q.beta = static_cast<float>(p.b);
        q.eta = static_cast<float>(p.e);
        q.d = static_cast<float>(p.d);
        q.s_pos = vs.spv(b);
        q.s_inten = vs.spv(b + 1) * scale;
    }

    if (!Replace_File(out_file, out)) {
        message = "ERROR opening the file: " + out_file;
        return false;
    }
    r.files.push_back(out_file);
    if (lm_ok) r.files.push_back(lm_file);
    if (o.save_calculated) {
        const std::string f = Join_Folder(o.folder, "arcfit_obscalc.xyy");
        if (!Write_Arc_Obscalc(f, run.x, run.y, r.ycalc, r.bgr, r.single, message)) return false;
        r.files.push_back(f);
    }
    if (!o.single_peaks) r.single.clear();
    r.info = run.info;
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
