// zendrite-batch fit on a real time-of-flight pattern: the unit chooses the
// TOF fit, --dtt gives the d to TOF coefficient the file lacks, and the job
// file written is a TOF one that fits again.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <sstream>
#include <vector>

#include "peaks/timefit_pik.h"
#include "tests/app/batch_run.h"

namespace {

namespace fs = std::filesystem;

struct PEAK_LINE {
    double t, inten, fwhm, alpha, beta, eta, d, st, si;
};

TEST(BatchFitTof, RealPatternFitsWithTheCoefficientGiven) {
    const fs::path dir = fs::temp_directory_path() / ("zd_batch_tof_" + std::to_string(::getpid()));
    fs::create_directories(dir);
    const fs::path data = dir / "NISI.cif";
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/NISI.cif", data);
    std::string out, err;

    // The file gives no coefficient: refused, nothing written.
    EXPECT_EQ(zdtest::Run_Batch({"fit", data.string(), "--range", "2600", "3600"}, out, err), 1);
    EXPECT_NE(err.find("give it with --dtt VALUE"), std::string::npos) << err;
    EXPECT_FALSE(fs::exists(dir / "NISI_pf.out"));
    EXPECT_EQ(zdtest::Run_Batch({"fit", data.string(), "--dtt", "-3"}, out, err), 2);

    // 1943.7: the nickel 111 and 200 peaks at 3954.5 and 3424.9 us with a = 3.524 A
    // (d = 2.0346 and 1.7620 A) give 1943.6 and 1943.8.
    ASSERT_EQ(zdtest::Run_Batch({"fit", data.string(), "--range", "2600", "3600", "--dtt", "1943.7", "--threshold",
                                 "0.01"},
                                out, err),
              0)
        << err;
    std::istringstream lines(out);
    std::string stop, chi2, line;
    std::getline(lines, stop);
    std::getline(lines, chi2);
    EXPECT_NE(stop.find("Convergence reached"), std::string::npos) << stop;
    ASSERT_EQ(chi2.rfind(" => Final   Chi2:", 0), 0u) << chi2;
    const double c2 = std::stod(chi2.substr(17));
    EXPECT_GT(c2, 0.7);  // the file's own esds: near one for a good fit
    EXPECT_LT(c2, 2.0);
    std::vector<PEAK_LINE> peaks;
    while (std::getline(lines, line)) {
        std::istringstream s(line);
        PEAK_LINE p{};
        ASSERT_TRUE(s >> p.t >> p.inten >> p.fwhm >> p.alpha >> p.beta >> p.eta >> p.d >> p.st >> p.si) << line;
        EXPECT_NEAR(p.d, p.t / 1943.7, 2e-5) << line;
        peaks.push_back(p);
    }
    ASSERT_GE(peaks.size(), 10u);
    // The strongest peaks: their TOF lies within a width of the highest
    // count of the file near them (3104.0, 3424.0 and 3473.6 us).
    for (double top : {3104.0, 3424.0, 3473.6}) {
        const PEAK_LINE* best = nullptr;
        for (const PEAK_LINE& p : peaks)
            if (std::fabs(p.t - top) < 20 && (!best || p.inten > best->inten)) best = &p;
        ASSERT_NE(best, nullptr) << top;
        EXPECT_LT(std::fabs(best->t - top), best->fwhm) << top;  // the top lies after T: the decay is slower
        EXPECT_GT(best->inten, 10 * best->si) << top;
    }

    // The job written is a TOF job holding what was printed; it fits again.
    hxl::PIK_JOB_TYPE cw;
    hxl::TOF_JOB_TYPE job;
    bool tof = false;
    std::string message;
    ASSERT_TRUE(hxl::Read_Any_Pik((dir / "NISI.pik").string(), cw, job, tof, message)) << message;
    EXPECT_TRUE(tof);
    EXPECT_EQ(job.npeak, static_cast<int>(peaks.size()));
    EXPECT_NEAR(job.dtt, 1943.7, 1e-3);
    EXPECT_TRUE(job.has_chi2);
    ASSERT_EQ(zdtest::Run_Batch({"fit", data.string(), "--pik", (dir / "NISI.pik").string()}, out, err), 0) << err;
    EXPECT_NE(out.find(" => Final   Chi2:"), std::string::npos);

    // A constant-wavelength job on a TOF pattern is refused.
    ASSERT_TRUE(hxl::Write_Pik((dir / "cw.pik").string(), cw, message));
    EXPECT_EQ(zdtest::Run_Batch({"fit", data.string(), "--pik", (dir / "cw.pik").string()}, out, err), 1);
    EXPECT_NE(err.find("constant-wavelength job"), std::string::npos) << err;
    fs::remove_all(dir);
}

}  // namespace
