#include <gtest/gtest.h>

#include <sstream>

#include "tests/app/batch_run.h"
#include "app/store/zendrite_param_global.h"

namespace {
int run(std::vector<std::string> args, std::string& out, std::string& err) {
    return zdtest::Run_Batch(std::move(args), out, err);
}
}  // namespace

TEST(BatchInfo, ReportsTheLimitsOfARealFile) {
    zendrite::Reset_Store();
    std::string out, err;
    const std::string f = std::string(ZD_TEST_DATA) + "/patterns/PSI_DMC.dat";
    ASSERT_EQ(run({"info", f, "--format", "FreeFormat"}, out, err), 0) << err;
    EXPECT_NE(out.find("  npts     3200\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  xmin     2.948\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  xmax     162.898\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  ymax     45712\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  format   FreeFormat\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  instr      0  - Free format\n"), std::string::npos) << out;
    EXPECT_EQ(out.find("points"), std::string::npos);
}

TEST(BatchInfo, ErrorsAndHelp) {
    zendrite::Reset_Store();
    std::string out, err;
    EXPECT_NE(run({"info", "/no/file.dat", "--format", "freeformat"}, out, err), 0);
    EXPECT_NE(err.find("ERROR in file: /no/file.dat The file /no/file.dat doesn't exist"), std::string::npos) << err;
    // An extension outside the table needs --format.
    EXPECT_NE(run({"info", std::string(ZD_TEST_DATA) + "/patterns/PSI_DMC.dat"}, out, err), 0);
    EXPECT_NE(err.find("--format"), std::string::npos);
    EXPECT_EQ(run({"info", "x.dat", "--format", "NOPE"}, out, err), 2);
    EXPECT_EQ(run({"frobnicate"}, out, err), 2);
    EXPECT_EQ(run({"--help"}, out, err), 0);
    EXPECT_NE(out.find("zendrite-batch info FILE..."), std::string::npos);

    // --points lists x, y and sigma: the square root of the variance the record holds.
    ASSERT_EQ(run({"info", std::string(ZD_TEST_DATA) + "/patterns/PSI_DMC.dat", "--format", "FreeFormat", "--points"},
                  out, err), 0);
    EXPECT_NE(out.find("\n  2.948 7444 86.27862\n"), std::string::npos);
    zendrite::Reset_Store();
}
