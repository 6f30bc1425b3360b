#include "peaks/timefit_run.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <sstream>

#include "patterns/replace_file.h"
#include "peaks/arcfit_files.h"
#include "peaks/arcfit_layout.h"
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

double Sum_Squares(const Array1<float>& f) {
    double s = 0;
    for (int i = 1; i <= f.size(); ++i) s += static_cast<double>(f(i)) * f(i);
    return s;
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
    cond.corrmax = 70;
    cond.tol = 1e-5f;
    cond.icyc = job.ncyc;
    std::vector<int> free_of, free;
    Array1<float> ox, oy, osig, ow;
    try {
        Job_To_Vector(job, vs);
        free_of.assign(static_cast<std::size_t>(vs.np) + 1, 0);
        for (int i = 1; i <= vs.np; ++i)
            if (vs.code(i) == 1) free.push_back(i), free_of[static_cast<std::size_t>(i)] = static_cast<int>(free.size());
        const float lo = std::min(job.tof_init, job.tof_fin), hi = std::max(job.tof_init, job.tof_fin);
        const int n = std::min({data.npts, data.x.size(), data.y.size(), data.var.size()});
        for (int i = 1; i <= n; ++i) {
            if (!(data.x(i) > lo && data.x(i) < hi)) continue;
            float s = std::sqrt(std::max(data.var(i), 0.0f));
            if (!(s >= 1e-5f)) s = 10.0f;
            ox.vec().push_back(data.x(i));
            oy.vec().push_back(data.y(i));
            osig.vec().push_back(s);
            ow.vec().push_back(1.0f / (s * s));
        }
    } catch (const std::bad_alloc&) {
        message = kTofNoSpace;
        return false;
    }
    cond.npvar = static_cast<int>(free.size());
    const int m = ox.size();

    std::string out = Tof_Out_Head(job, cond.npvar);
    const std::string out_file = Join_Folder(o.folder, o.stem + "_pf.out");

    Array1<float> pv = vs.pv;
    int count = 0;
    bool stopped = false;
    std::vector<TOF_DERIV_TYPE> deriv;
    const Layout iteration("(a,i6,a,f14.5)");
    const LSQ_SPARSE_MODEL_FUNCTION fn = [&](int mm, int n, const Array1<float>& x, Array1<float>& fvec,
                                             LSQ_SPARSE_JACOBIAN_TYPE& fjac, int& iflag) {
        if (iflag == 0) {
            ++count;
            if (o.status) {
                std::string line;
                iteration(line, " => Iteration number: ", count, "  Chi2=",
                          static_cast<float>(Sum_Squares(fvec) / std::max(mm - n, 1)));
                if (!line.empty() && line.back() == '\n') line.pop_back();
                o.status(line);
            }
            if (o.stop && o.stop()) stopped = true, iflag = -1;
            return;
        }
        for (int j = 1; j <= n; ++j) pv(free[static_cast<std::size_t>(j - 1)]) = x(j);
        Tof_Prepare(model, pv, vs.code);
        for (int i = 1; i <= mm; ++i) {
            const float yc = Tof_Point(model, pv, ox(i), deriv);
            if (iflag == 1) {
                fvec(i) = (oy(i) - yc) / osig(i);
                continue;
            }
            for (const TOF_DERIV_TYPE& d : deriv) {
                const int col = free_of[static_cast<std::size_t>(d.index)];
                if (col > 0) fjac.Add(i, col, -d.value / osig(i));
            }
        }
    };

    float chi2 = 0, previous = 1e8f;
    std::string info;
    LSQ_OUTCOME_TYPE outcome;
    int questions = 0;
    LM_Der(fn, m, cond, vs, chi2, true, info, &outcome);
    while (outcome.info > 0 && !cond.reached && !stopped && std::fabs(previous - chi2) > cond.tol) {
        ++questions;
        if (!o.ask || !o.ask(kArcAskContinue)) break;
        previous = chi2;
        pv = vs.pv;
        LM_Der(fn, m, cond, vs, chi2, true, info, &outcome);
    }
    if (outcome.info == 0) {
        message = info;
        return false;
    }
    Layout("(a,f15.5)")(out, " => Final   Chi2:", chi2);
    // A chi2 beyond the float range is a model that could not be evaluated either.
    if (info.find("NaN") != std::string::npos || !std::isfinite(chi2)) {
        Replace_File(out_file, out);
        message = kArcNaN;
        return false;
    }

    TOF_FIT_RESULT_TYPE r;
    pv = vs.pv;
    Tof_Prepare(model, pv, vs.code);
    r.x = ox;
    r.yobs = oy;
    r.ycalc = Array1<float>(m);
    r.bgr = Array1<float>(m);
    r.diff = Array1<float>(m);
    const bool keep_single = (o.single_peaks || o.save_calculated) && job.npeak <= kArcMaxSingle;
    if (keep_single) r.single.assign(static_cast<std::size_t>(job.npeak), Array1<float>(m));
    std::vector<float> one(static_cast<std::size_t>(job.npeak));
    for (int i = 1; i <= m; ++i) {
        float peaks = 0;
        std::fill(one.begin(), one.end(), 0.0f);
        r.ycalc(i) = Tof_Point(model, pv, ox(i), deriv, &peaks, keep_single ? &one : nullptr);
        r.bgr(i) = r.ycalc(i) - peaks;
        r.diff(i) = oy(i) - r.ycalc(i);
        if (keep_single)
            for (int k = 1; k <= job.npeak; ++k) r.single[static_cast<std::size_t>(k - 1)](i) = one[static_cast<std::size_t>(k - 1)];
    }

    std::ostringstream report;
    std::string report_message;
    const std::string lm_file = Join_Folder(o.folder, kLmFitFile);
    const bool lm_ok = Info_LSQ_LM(chi2, report, m, ox, oy, r.ycalc, ow, cond, vs, outcome, lm_file, false, report_message);
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
        if (!Write_Arc_Obscalc(f, ox, oy, r.ycalc, r.bgr, r.single, message)) return false;
        r.files.push_back(f);
    }
    if (!o.single_peaks) r.single.clear();
    r.info = info;
    r.reached = cond.reached;
    r.stopped = stopped;
    r.chi2 = chi2;
    r.iterations = count;
    r.questions = questions;
    r.job = job;
    Vector_To_Job(vs, r.job);
    r.job.has_chi2 = true;
    r.job.chi2 = chi2;
    result = std::move(r);
    message.clear();
    return true;
}

}  // namespace hxl
