// Whole time-of-flight fits on patterns made here from known parameters:
// back-to-back exponentials convolved with a Gaussian written out with the
// library's erfc, with Gaussian noise of a fixed seed; the fit must find
// the parameters within their standard deviations. Refusals leave
// everything as it was.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "peaks/timefit_model.h"
#include "peaks/timefit_run.h"

namespace hxl {
namespace {

namespace fs = std::filesystem;

constexpr double kDtt = 10000, kAlpha = 0.2, kBeta = 0.05, kSig1 = 30, kSig0 = 9;
struct TRUE_PEAK {
    double t, inten;
};
const TRUE_PEAK kPeaks[5] = {{20500, 30000}, {21900, 12000}, {23400, 50000}, {25100, 8000}, {27300, 25000}};

// The Gaussian back-to-back exponential of area one at dt.
double Shape(double dt, double a, double b, double s2) {
    const double n = a * b / (2 * (a + b)), r = std::sqrt(2 * s2);
    return n * (std::exp(a / 2 * (a * s2 + 2 * dt)) * std::erfc((a * s2 + dt) / r) +
                std::exp(b / 2 * (b * s2 - 2 * dt)) * std::erfc((b * s2 - dt) / r));
}

ARC_DATA_TYPE Pattern(bool noise) {
    ARC_DATA_TYPE d;
    d.npts = 2001;
    d.x = Array1<float>(d.npts), d.y = Array1<float>(d.npts), d.var = Array1<float>(d.npts);
    std::mt19937 gen(20261123);
    std::normal_distribution<double> unit(0.0, 1.0);
    for (int i = 1; i <= d.npts; ++i) {
        const double x = 19500 + 5.0 * (i - 1);
        double y = 200 - 0.002 * (x - 19500);
        for (const TRUE_PEAK& p : kPeaks) {
            const double dd = p.t / kDtt, s2 = kSig1 * dd * dd + kSig0;
            if (x - p.t < -600 || x - p.t > 1500) continue;  // nothing left there, and exp would overflow
            y += p.inten * Shape(x - p.t, kAlpha, kBeta, s2);
        }
        d.x(i) = static_cast<float>(x);
        d.var(i) = static_cast<float>(y);
        d.y(i) = static_cast<float>(noise ? y + std::sqrt(y) * unit(gen) : y);
    }
    return d;
}

TOF_JOB_TYPE Start_Job() {
    TOF_JOB_TYPE j;
    j.title = "synthetic";
    j.tof_init = 19500, j.tof_fin = 29500;
    j.nbac = 2, j.npeak = 5, j.ncyc = 200;
    j.dtt = static_cast<float>(kDtt);
    j.glob = {0, 0.15f, 0.07f, 0, 20, static_cast<float>(kSig0), 0};
    j.gflag = {0, 1, 1, 0, 1, 0, 0};
    j.bx = Array1<float>(2), j.bv = Array1<float>(2), j.bf = Array1<int>(2);
    j.bx(1) = 19500, j.bx(2) = 29500, j.bv(1) = 180, j.bv(2) = 190, j.bf(1) = j.bf(2) = 1;
    Size_Tof_Peaks(j);
    for (int k = 1; k <= 5; ++k) {
        j.pk(k) = {static_cast<float>(kPeaks[k - 1].t + 6), static_cast<float>(kPeaks[k - 1].inten * 0.8), 0, 0, 0, 0};
        j.pf(k) = {1, 1, 0, 0, 0, 0};
    }
    return j;
}

struct TEMP_FOLDER {
    fs::path p;
    TEMP_FOLDER() {
        p = fs::temp_directory_path() / ("zd_timefit_" + std::to_string(::getpid()));
        fs::create_directories(p);
    }
    ~TEMP_FOLDER() { fs::remove_all(p); }
};

std::string Slurp(const fs::path& f) {
    std::ifstream in(f);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

TEST(TofFit, RecoversKnownParametersWithinTheirDeviations) {
    TEMP_FOLDER tmp;
    ARC_FIT_OPTIONS_TYPE o;
    o.folder = tmp.p.string();
    o.stem = "synthetic";
    int asked = 0;
    o.ask = [&asked](const std::string&) { return ++asked < 5; };
    TOF_FIT_RESULT_TYPE r;
    std::string message;
    ASSERT_TRUE(Tof_Fit(Start_Job(), Pattern(true), o, r, message)) << message;
    EXPECT_TRUE(r.reached) << r.info;
    EXPECT_GT(r.chi2, 0.85f);  // unit-variance noise: reduced chi2 near 1
    EXPECT_LT(r.chi2, 1.15f);
    const TOF_JOB_TYPE& j = r.job;
    // the deviations come from the listing's final table through the job's order
    ASSERT_EQ(r.peaks.size(), 5u);
    for (int k = 1; k <= 5; ++k) {
        const TOF_PEAK_RESULT_TYPE& p = r.peaks[static_cast<std::size_t>(k - 1)];
        EXPECT_GT(p.s_pos, 0.0f);
        EXPECT_NEAR(p.pos, kPeaks[k - 1].t, 3 * p.s_pos) << k;
        EXPECT_NEAR(p.inten, kPeaks[k - 1].inten, 3 * p.s_inten) << k;
        EXPECT_NEAR(p.d, kPeaks[k - 1].t / kDtt, 1e-3);
    }
    // the globals: their deviations are in the listing
    const std::string out = Slurp(tmp.p / "synthetic_pf.out");
    auto global = [&out](const std::string& label, double& v, double& s) {
        const auto at = out.find(label);
        ASSERT_NE(at, std::string::npos) << label;
        std::istringstream in(out.substr(at + label.size()));
        in >> v >> s;
    };
    double v = 0, s = 0;
    global("     Global-Alpha  : ", v, s);
    EXPECT_NEAR(v, kAlpha, 3 * s);
    EXPECT_NEAR(v, j.glob[1], 1e-5);
    global("     Global-Beta   : ", v, s);
    EXPECT_NEAR(v, kBeta, 3 * s);
    global("        Sig-1      : ", v, s);
    EXPECT_NEAR(v, kSig1, 3 * s);
    EXPECT_GT(s, 0.0);
    // The listing in order.
    const char* in_order[] = {"                  --- PROGRAM: TIMEFIT ---",
                              " => TOF range, peaks and cycles read ",
                              " => Number of peaks :      5",
                              " => Global-Alpha",
                              " => Total number of refined parameters:   15",
                              " => Final   Chi2:",
                              "  Final parameters and Standard Deviations",
                              "  Scale factor applied to all integrated intensities:     1.00000",
                              "  Reflection Parameters:"};
    std::size_t at = 0;
    for (const char* t : in_order) {
        const auto f = out.find(t, at);
        ASSERT_NE(f, std::string::npos) << t;
        at = f;
    }
    EXPECT_TRUE(fs::exists(tmp.p / "LM_fit.xy"));
}

// The pattern of tof_lorentz_pattern.py: three peaks with eta 0.4, made with mpmath.
TEST(TofFit, RecoversTheLorentzianShareOfAnMpmathPattern) {
    ARC_DATA_TYPE d;
    std::ifstream in(std::string(ZD_TEST_DATA) + "/peaks/tof_lorentz_3pk.xy");
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream s(line);
        float x, y, sg;
        if (s >> x >> y >> sg) d.x.vec().push_back(x), d.y.vec().push_back(y), d.var.vec().push_back(sg * sg);
    }
    d.npts = d.x.size();
    ASSERT_EQ(d.npts, 451);
    TOF_JOB_TYPE j;
    j.tof_init = 19690, j.tof_fin = 21510;
    j.nbac = 2, j.npeak = 3, j.ncyc = 300;
    j.dtt = 10000;
    j.glob = {0, 0.15f, 0.07f, 0, 20, 9, 0.2f};
    j.gflag = {0, 1, 1, 0, 1, 0, 1};
    j.bx = Array1<float>(2), j.bv = Array1<float>(2), j.bf = Array1<int>(2);
    j.bx(1) = 19690, j.bx(2) = 21510, j.bv(1) = 190, j.bv(2) = 190, j.bf(1) = j.bf(2) = 1;
    Size_Tof_Peaks(j);
    const double t[3] = {20000, 20400, 21000}, inten[3] = {30000, 15000, 50000};
    for (int k = 1; k <= 3; ++k) {
        j.pk(k) = {static_cast<float>(t[k - 1] - 5), static_cast<float>(0.7 * inten[k - 1]), 0, 0, 0, 0};
        j.pf(k) = {1, 1, 0, 0, 0, 0};
    }
    TEMP_FOLDER tmp;
    ARC_FIT_OPTIONS_TYPE o;
    o.folder = tmp.p.string();
    o.stem = "lorentz";
    o.ask = [](const std::string&) { return true; };
    TOF_FIT_RESULT_TYPE r;
    std::string message;
    ASSERT_TRUE(Tof_Fit(j, d, o, r, message)) << message;
    EXPECT_TRUE(r.reached) << r.info;
    EXPECT_GT(r.chi2, 0.8f);
    EXPECT_LT(r.chi2, 1.2f);
    for (int k = 1; k <= 3; ++k) {
        const TOF_PEAK_RESULT_TYPE& p = r.peaks[static_cast<std::size_t>(k - 1)];
        EXPECT_NEAR(p.pos, t[k - 1], 3 * p.s_pos) << k;
        EXPECT_NEAR(p.inten, inten[k - 1], 3 * p.s_inten) << k;
    }
    const std::string out = Slurp(tmp.p / "lorentz_pf.out");
    const auto at = out.find("  Eta (PV-function): ");
    ASSERT_NE(at, std::string::npos);
    std::istringstream s(out.substr(at + 21));
    double eta = 0, s_eta = 0;
    s >> eta >> s_eta;
    EXPECT_GT(s_eta, 0.0);
    EXPECT_NEAR(eta, 0.4, 3 * s_eta);
    // alpha: a rise of 5 us under a Gaussian of sigma 11 us is weakly determined
    std::istringstream a(out.substr(out.find("     Global-Alpha  : ") + 21));
    double alpha = 0, s_alpha = 0;
    a >> alpha >> s_alpha;
    EXPECT_NEAR(alpha, 0.2, 3 * s_alpha);
    std::istringstream b(out.substr(out.find("     Global-Beta   : ") + 21));
    double beta = 0, s_beta = 0;
    b >> beta >> s_beta;
    EXPECT_NEAR(beta, 0.05, 3 * s_beta);
}

TEST(TofFit, RefusalsAndTheNaNMessageLeaveTheResultAlone) {
    TEMP_FOLDER tmp;
    ARC_FIT_OPTIONS_TYPE o;
    o.folder = tmp.p.string();
    o.stem = "bad";
    TOF_FIT_RESULT_TYPE r;
    r.chi2 = -7;
    std::string message;
    TOF_JOB_TYPE j = Start_Job();
    j.dtt = 0;
    EXPECT_FALSE(Tof_Fit(j, Pattern(false), o, r, message));
    EXPECT_EQ(message, kTofBadDtt);
    j = Start_Job();
    j.npeak = 0;
    EXPECT_FALSE(Tof_Fit(j, Pattern(false), o, r, message));
    EXPECT_EQ(message, "ERROR: No peak has been selected!");
    // A value the model cannot carry: intensities so large that chi2 overflows.
    j = Start_Job();
    j.pk(3)[1] = 3e38f;
    j.pf(3)[1] = 0;
    EXPECT_FALSE(Tof_Fit(j, Pattern(false), o, r, message));
    EXPECT_EQ(message, kArcNaN);
    EXPECT_EQ(r.chi2, -7);
    EXPECT_FALSE(fs::exists(tmp.p / "LM_fit.xy"));
    // Zero and negative rates and a negative width run to an end without NaN.
    j = Start_Job();
    j.glob[1] = 0, j.glob[2] = -0.01f, j.glob[5] = -400;
    j.ncyc = 40;
    EXPECT_TRUE(Tof_Fit(j, Pattern(false), o, r, message)) << message;
    EXPECT_TRUE(std::isfinite(r.chi2));
}

}  // namespace
}  // namespace hxl
