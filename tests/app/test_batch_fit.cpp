// zendrite-batch fit on the synthetic 20-peak pattern from the automatic
// start, and its refusals.
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <sstream>

#include "peaks/pik_file.h"
#include "tests/app/batch_run.h"

namespace {

namespace fs = std::filesystem;

TEST(BatchFit, AutomaticStartFitsAndRewritesTheJob) {
    const fs::path dir = fs::temp_directory_path() / ("zd_batch_fit_" + std::to_string(::getpid()));
    fs::create_directories(dir);
    const fs::path data = dir / "fit_10k_20pk.xy";
    fs::copy_file(std::string(ZD_TEST_DATA) + "/peaks/fit_10k_20pk.xy", data);
    std::string out, err;
    ASSERT_EQ(zdtest::Run_Batch({"fit", data.string(), "--range", "30", "60"}, out, err), 0) << err;
    std::istringstream lines(out);
    std::string stop, chi2, line;
    std::getline(lines, stop);
    std::getline(lines, chi2);
    EXPECT_NE(stop.find("Convergence"), std::string::npos) << stop;
    EXPECT_EQ(chi2.rfind(" => Final   Chi2:", 0), 0u) << chi2;
    // The peaks of the truth file between 30 and 60 that the search separates:
    // 35.75, 36.34, 45.02, 45.40, 52.10, 59.03 (58.98 lies under 59.03).
    const double truth[] = {35.750732, 36.339654, 45.022843, 45.395923, 52.098871, 59.035094};
    int count = 0;
    while (std::getline(lines, line)) {
        std::istringstream s(line);
        double pos, area, fwhm, eta, sp, sa, sf, se;
        ASSERT_TRUE(s >> pos >> area >> fwhm >> eta >> sp >> sa >> sf >> se) << line;
        ASSERT_LT(count, 6);
        EXPECT_NEAR(pos, truth[count], 0.01) << line;
        EXPECT_GT(sa, 0.0);
        ++count;
    }
    EXPECT_EQ(count, 6);
    EXPECT_TRUE(fs::exists(dir / "fit_10k_20pk_pf.out"));
    hxl::PIK_JOB_TYPE job;
    std::string message;
    ASSERT_TRUE(hxl::Read_Pik((dir / "fit_10k_20pk.pik").string(), job, message)) << message;
    EXPECT_EQ(job.npeak, 6);
    EXPECT_TRUE(job.has_chi2);

    // Fitting again from the job file that was written.
    ASSERT_EQ(zdtest::Run_Batch({"fit", data.string(), "--pik", (dir / "fit_10k_20pk.pik").string()}, out, err), 0)
        << err;
    // A job file that is not there: the reader's text, status 1, nothing written.
    fs::remove(dir / "fit_10k_20pk_pf.out");
    EXPECT_EQ(zdtest::Run_Batch({"fit", data.string(), "--pik", (dir / "none.pik").string()}, out, err), 1);
    EXPECT_NE(err.find("ERROR opening the file: "), std::string::npos) << err;
    EXPECT_FALSE(fs::exists(dir / "fit_10k_20pk_pf.out"));
    EXPECT_EQ(zdtest::Run_Batch({"fit", data.string(), "--cycles", "0"}, out, err), 2);
    fs::remove_all(dir);
}

}  // namespace
