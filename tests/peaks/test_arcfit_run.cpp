// Whole runs of the constant-wavelength fit on a small pattern made here from
// the pseudo-Voigt formula written out by hand (area form, FWHM H, mixing eta).
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "peaks/arcfit_run.h"
#include <unistd.h>

namespace hxl {
namespace {

namespace fs = std::filesystem;

struct TRUE_PEAK {
    double pos, area, fwhm, eta;
};
const TRUE_PEAK kPeaks[3] = {{30.0, 400.0, 0.12, 0.3}, {31.0, 250.0, 0.15, 0.6}, {33.5, 900.0, 0.10, 0.5}};

double PV(const TRUE_PEAK& p, double x) {
    const double d = x - p.pos, h = p.fwhm;
    const double g = 2.0 * std::sqrt(std::log(2.0) / M_PI) / h * std::exp(-4.0 * std::log(2.0) * d * d / (h * h));
    const double l = 2.0 / (M_PI * h) / (1.0 + 4.0 * d * d / (h * h));
    return p.area * (p.eta * l + (1 - p.eta) * g);
}

// 29 .. 35 degrees, step 0.01, background 50 + 2 (x - 29), variances = counts (no noise).
ARC_DATA_TYPE Pattern() {
    ARC_DATA_TYPE d;
    d.npts = 601;
    d.x = Array1<float>(d.npts);
    d.y = Array1<float>(d.npts);
    d.var = Array1<float>(d.npts);
    for (int i = 1; i <= d.npts; ++i) {
        const double x = 29.0 + 0.01 * (i - 1);
        double y = 50.0 + 2.0 * (x - 29.0);
        for (const TRUE_PEAK& p : kPeaks) y += PV(p, x);
        d.x(i) = static_cast<float>(x);
        d.y(i) = static_cast<float>(y);
        d.var(i) = static_cast<float>(y);
    }
    return d;
}

// A start near the truth: positions off by 0.01, areas by 20%, widths by 15%.
PIK_JOB_TYPE Job() {
    PIK_JOB_TYPE j;
    j.title = "three peaks";
    j.ang_init = 29.0f;
    j.ang_fin = 35.0f;
    j.nbac = 2;
    j.npeak = 3;
    j.ncyc = 200;
    j.lambda1 = j.lambda2 = 1.5406f;
    j.glob[8] = 0.5f;
    j.bx = Array1<float>(2);
    j.bv = Array1<float>(2);
    j.bf = Array1<int>(2);
    j.bx(1) = 29.0f, j.bx(2) = 35.0f, j.bv(1) = 45.0f, j.bv(2) = 65.0f, j.bf(1) = j.bf(2) = 1;
    j.pos = Array1<float>(3);
    j.inten = Array1<float>(3);
    j.shf_g = Array1<float>(3);
    j.shf_e = Array1<float>(3);
    j.pf = Array1<std::array<int, 4>>(3);
    for (int k = 1; k <= 3; ++k) {
        const TRUE_PEAK& p = kPeaks[k - 1];
        j.pos(k) = static_cast<float>(p.pos + 0.01);
        j.inten(k) = static_cast<float>(p.area * 1.2);
        j.shf_g(k) = static_cast<float>(p.fwhm * 0.85);
        j.shf_e(k) = 0.0f;
        j.pf(k) = {1, 1, 1, 1};
    }
    return j;
}

struct Folder {
    fs::path dir;
    Folder() {
        dir = fs::temp_directory_path() / ("zd_arcfit_run_" + std::to_string(::getpid()));
        fs::create_directories(dir);
    }
    ~Folder() { fs::remove_all(dir); }
};

ARC_FIT_OPTIONS_TYPE Options(const Folder& f) {
    ARC_FIT_OPTIONS_TYPE o;
    o.folder = f.dir.string();
    o.stem = "three";
    return o;
}

TEST(ArcFitRun, FitsThreePeaksAndWritesItsFiles) {
    Folder f;
    ARC_FIT_OPTIONS_TYPE o = Options(f);
    o.irf = o.save_calculated = o.single_peaks = true;
    std::vector<std::string> lines;
    o.status = [&](const std::string& l) { lines.push_back(l); };
    ARC_FIT_RESULT_TYPE r;
    std::string message;
    ASSERT_TRUE(Arc_Fit(Job(), Pattern(), o, r, message)) << message;
    EXPECT_TRUE(r.reached) << r.info;
    EXPECT_LT(r.chi2, 1e-3);  // no noise: the model is the pattern
    ASSERT_EQ(r.peaks.size(), 3u);
    for (int k = 0; k < 3; ++k) {
        EXPECT_NEAR(r.peaks[k].pos, kPeaks[k].pos, 1e-4);
        EXPECT_NEAR(r.peaks[k].area, kPeaks[k].area, 2e-3 * kPeaks[k].area);
        EXPECT_NEAR(r.peaks[k].fwhm, kPeaks[k].fwhm, 1e-3 * kPeaks[k].fwhm);
        EXPECT_NEAR(r.peaks[k].eta, kPeaks[k].eta, 5e-3);
        EXPECT_GT(r.peaks[k].s_fwhm, 0.0f);
        EXPECT_TRUE(r.peaks[k].split);
    }
    // Observations strictly inside the range; the curves add up.
    ASSERT_EQ(r.x.size(), 599);
    // (the Lorentzian tails cut at 40 widths leave a little to the background)
    EXPECT_NEAR(r.bgr(300), 50.0 + 2.0 * (r.x(300) - 29.0), 0.3);
    ASSERT_EQ(r.single.size(), 3u);
    for (int i : {1, 150, 400}) {
        EXPECT_NEAR(r.ycalc(i), r.bgr(i) + r.single[0](i) + r.single[1](i) + r.single[2](i), 1e-2);
        EXPECT_FLOAT_EQ(r.diff(i), r.yobs(i) - r.ycalc(i));
    }
    // The iteration lines number on from 1, one per improved chi2.
    ASSERT_EQ(static_cast<int>(lines.size()), r.iterations);
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[0].rfind(" => Iteration number:      1  Chi2=", 0), 0u) << lines[0];

    std::ifstream in(f.dir / "three_pf.out");
    std::stringstream buf;
    buf << in.rdbuf();
    const std::string out = buf.str();
    EXPECT_NE(out.find("     --- PROGRAM: ARCFIT (Embedded in Zendrite-2006 ---"), std::string::npos);
    EXPECT_NE(out.find(" => Final   Chi2:"), std::string::npos);
    EXPECT_NE(out.find("Bragg_Pos_3"), std::string::npos);
    EXPECT_TRUE(fs::exists(f.dir / "three_pf.irf"));
    EXPECT_TRUE(fs::exists(f.dir / "arcfit_obscalc.xyy"));

    // The job with the final values goes through the file and back.
    ASSERT_TRUE(r.job.has_chi2);
    const std::string pik = (f.dir / "three.pik").string();
    ASSERT_TRUE(Write_Pik(pik, r.job, message)) << message;
    PIK_JOB_TYPE back;
    ASSERT_TRUE(Read_Pik(pik, back, message)) << message;
    EXPECT_NEAR(back.chi2, r.chi2, 1e-5);
    for (int k = 1; k <= 3; ++k) {
        EXPECT_NEAR(back.pos(k), kPeaks[k - 1].pos, 1e-4);
        EXPECT_NEAR(back.inten(k), r.job.inten(k), 1e-3);
    }
    // Fitting again from the file starts at the end point.
    ARC_FIT_RESULT_TYPE again;
    ASSERT_TRUE(Arc_Fit(back, Pattern(), Options(f), again, message)) << message;
    EXPECT_LE(again.iterations, 2);
}

TEST(ArcFitRun, RefusalsAndNaNLeaveEverythingAsItWas) {
    Folder f;
    ARC_FIT_RESULT_TYPE r;
    r.chi2 = -7.0f;  // a mark that must survive
    std::string message;

    PIK_JOB_TYPE zero = Job();
    zero.inten(2) = 0.0f;
    EXPECT_FALSE(Arc_Fit(zero, Pattern(), Options(f), r, message));
    EXPECT_NE(message.find("peak #2 is zero"), std::string::npos) << message;
    EXPECT_FALSE(fs::exists(f.dir / "three_pf.out"));  // refused before the listing

    PIK_JOB_TYPE none = Job();
    none.npeak = 0;
    EXPECT_FALSE(Arc_Fit(none, Pattern(), Options(f), r, message));
    EXPECT_EQ(message, "ERROR: No peak has been selected!");
    PIK_JOB_TYPE one_bgr = Job();
    one_bgr.nbac = 1;
    EXPECT_FALSE(Arc_Fit(one_bgr, Pattern(), Options(f), r, message));
    EXPECT_EQ(message, "ERROR: The background line is not yet selected!");

    // A fixed V that makes the width law negative: the model gives NaN.
    PIK_JOB_TYPE bad = Job();
    bad.glob[5] = -10.0f;
    ARC_FIT_OPTIONS_TYPE o = Options(f);
    o.irf = o.save_calculated = true;
    EXPECT_FALSE(Arc_Fit(bad, Pattern(), o, r, message));
    EXPECT_EQ(message,
              "NaN has been detected, the initial parameters are surely wrong! Re-start with less peaks or new "
              "parameters ....");
    EXPECT_FLOAT_EQ(r.chi2, -7.0f);
    EXPECT_TRUE(r.peaks.empty());
    EXPECT_FALSE(fs::exists(f.dir / "three_pf.irf"));
    EXPECT_FALSE(fs::exists(f.dir / "arcfit_obscalc.xyy"));

    // Too few observations for the free parameters: the solver's text.
    PIK_JOB_TYPE narrow = Job();
    narrow.ang_init = 29.995f;
    narrow.ang_fin = 30.05f;
    EXPECT_FALSE(Arc_Fit(narrow, Pattern(), Options(f), r, message));
    EXPECT_NE(message.find("Improper input parameters"), std::string::npos) << message;
    EXPECT_FLOAT_EQ(r.chi2, -7.0f);
}

TEST(ArcFitRun, ContinueQuestionOnlyWhileChi2Moves) {
    Folder f;
    PIK_JOB_TYPE j = Job();
    j.ncyc = 2;  // two evaluations a call: convergence needs restarts
    std::vector<std::string> questions;
    ARC_FIT_OPTIONS_TYPE no = Options(f);
    no.ask = [&](const std::string& q) { return questions.push_back(q), false; };
    ARC_FIT_RESULT_TYPE r;
    std::string message;
    ASSERT_TRUE(Arc_Fit(j, Pattern(), no, r, message)) << message;
    ASSERT_EQ(questions.size(), 1u);
    EXPECT_EQ(questions[0], "Convergence not reached!. Do you want continue?");
    EXPECT_FALSE(r.reached);
    const float chi2_after_no = r.chi2;

    int asked = 0;
    std::vector<std::string> lines;
    ARC_FIT_OPTIONS_TYPE yes = Options(f);
    yes.ask = [&](const std::string&) { return ++asked, true; };
    yes.status = [&](const std::string& l) { lines.push_back(l); };
    ASSERT_TRUE(Arc_Fit(j, Pattern(), yes, r, message)) << message;
    EXPECT_GT(asked, 1);
    EXPECT_EQ(r.questions, asked);
    EXPECT_LT(r.chi2, chi2_after_no);
    EXPECT_LT(r.chi2, 1e-3);
    // The count runs on across the restarts.
    for (std::size_t i = 0; i < lines.size(); ++i) {
        char want[48];
        std::snprintf(want, sizeof want, " => Iteration number: %6zu", i + 1);
        EXPECT_EQ(lines[i].rfind(want, 0), 0u) << lines[i];
    }
}

TEST(ArcFitStart, WidthsAtHalfHeightAndTheStartingJob) {
    const ARC_DATA_TYPE d = Pattern();
    // The isolated peak at 33.5: its height above the background and its width.
    const float bg = 50.0f + 2.0f * 4.5f, top = static_cast<float>(bg + PV(kPeaks[2], 33.5));
    EXPECT_NEAR(Half_Height_Width(d, 33.5f, top, bg), 0.10, 0.004);
    EXPECT_EQ(Half_Height_Width(d, 33.5f, bg - 1.0f, bg), 0.0f);

    std::vector<PEAK_POINT_TYPE> peaks = {{30.0f, static_cast<float>(52 + PV(kPeaks[0], 30.0)), 52.0f},
                                          {33.5f, top, bg},
                                          {40.0f, 100.0f, 50.0f}};  // outside the background range: left out
    std::vector<PEAK_POINT_TYPE> bgr = {{29.0f, 50.0f, 0.0f}, {35.0f, 62.0f, 0.0f}};
    PIK_JOB_TYPE j;
    std::string message;
    ASSERT_TRUE(Arc_Start_Job(d, 0.01f, peaks, bgr, 1.5406f, 1.5444f, 25, j, message)) << message;
    ASSERT_EQ(j.npeak, 2);
    EXPECT_EQ(j.nbac, 2);
    EXPECT_EQ(j.ncyc, 25);
    EXPECT_FLOAT_EQ(j.ang_init, 29.0f);
    EXPECT_FLOAT_EQ(j.ang_fin, 35.0f);
    EXPECT_NEAR(j.shf_g(2), 0.10, 0.004);
    // Area from height and width with eta 0.5: within a few per cent of the truth (true eta 0.5).
    EXPECT_NEAR(j.inten(2), 900.0, 30.0);
    for (int g = 1; g <= 9; ++g) EXPECT_EQ(j.gflag[static_cast<std::size_t>(g)], 0);
    EXPECT_EQ(j.pf(1), (std::array<int, 4>{1, 1, 1, 1}));

    // No width found anywhere: 10 steps; the step from the first two points when not positive.
    ARC_DATA_TYPE flat = d;
    for (int i = 1; i <= flat.npts; ++i) flat.y(i) = 50.0f;
    ASSERT_TRUE(Arc_Start_Job(flat, 0.0f, {{31.0f, 80.0f, 50.0f}}, bgr, 1.5f, 1.5f, 5, j, message));
    EXPECT_NEAR(j.shf_g(1), 0.1, 1e-5);
    EXPECT_FALSE(Arc_Start_Job(d, 0.01f, {}, bgr, 1.5f, 1.5f, 5, j, message));
    EXPECT_EQ(message, "ERROR: No peak has been selected!");
    EXPECT_FALSE(Arc_Start_Job(d, 0.01f, peaks, {bgr[0]}, 1.5f, 1.5f, 5, j, message));
    EXPECT_EQ(message, "ERROR: The background line is not yet selected!");
    EXPECT_EQ(j.npeak, 1);  // the refusals left the last job alone
}

}  // namespace
}  // namespace hxl
