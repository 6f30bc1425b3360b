#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <unistd.h>

#include "tests/app/batch_run.h"
#include "app/store/zendrite_param_global.h"

namespace {
int run(std::vector<std::string> args, std::string& out, std::string& err) {
    return zdtest::Run_Batch(std::move(args), out, err);
}
std::string sample(const char* name) { return std::string(ZD_TEST_DATA) + "/patterns/" + name; }
}  // namespace

TEST(BatchLibrary, InfoAndConvertReadEveryBlockOfAVendorFile) {
    zendrite::Reset_Store();
    std::string out, err;
    // Three ranges of one Bruker RAW file, three slots.
    ASSERT_EQ(run({"info", sample("format1.raw"), "--format", "LIBRARY"}, out, err), 0) << err;
    EXPECT_NE(out.find("slot 3\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  format   LIBRARY\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  instr     15  - LIBRARY\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  npts     26\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  xmin     30\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  lambda1  1.5406\n"), std::string::npos) << out;

    // The extension routes the RAS file without --format; both scans.
    zendrite::Reset_Store();
    ASSERT_EQ(run({"info", sample("inas_layer_radial_002_004.ras")}, out, err), 0) << err;
    EXPECT_NE(out.find("slot 2\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  npts     2501\n"), std::string::npos) << out;

    // convert of a one-range RAW file: every point, the head's start and step.
    zendrite::Reset_Store();
    const std::string base = ::testing::TempDir() + "lib_" + std::to_string(::getpid());
    ASSERT_EQ(run({"convert", sample("BT86.raw"), base + ".xys", "--format", "LIBRARY"}, out, err), 0) << err;
    EXPECT_NE(out.find("2374 points"), std::string::npos) << out;
    std::ifstream xys(base + ".xys");
    ASSERT_TRUE(xys.good());
    std::stringstream text;
    text << xys.rdbuf();
    EXPECT_NE(text.str().find("187"), std::string::npos);  // the first count (hand_reference.txt)

    // A truncated file is refused with the library's reason and status 1.
    zendrite::Reset_Store();
    const std::string cut = base + "_cut.raw";
    {
        std::ifstream in(sample("BT86.raw"), std::ios::binary);
        std::string bytes(3000, '\0');
        in.read(bytes.data(), 3000);
        std::ofstream(cut, std::ios::binary) << bytes;
    }
    EXPECT_EQ(run({"info", cut, "--format", "LIBRARY"}, out, err), 1);
    EXPECT_NE(err.find("Error reading the file through the format library: "), std::string::npos) << err;
    zendrite::Reset_Store();
}
