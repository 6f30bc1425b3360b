// The --format option of the batch verbs: an explicit mode wins over the
// extension, "auto" guesses from the content and says so, and an unknown
// extension without --format is refused with a hint.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "app/batch/batch_verbs.h"
#include "app/store/zendrite_param_global.h"
#include "tests/patterns/temp_files.h"

namespace {

const std::string kData = ZD_TEST_DATA;

int run(std::vector<std::string> args, std::string& out, std::string& err) {
    zendrite::Reset_Store();
    std::ostringstream o, e;
    const int rc = zendrite::Batch_Main(args, o, e);
    out = o.str();
    err = e.str();
    return rc;
}

std::string copy_as(const ztest::Temp_Dir& dir, const std::string& from, const std::string& name) {
    const std::string to = dir.Path() + "/" + name;
    std::filesystem::copy_file(kData + "/" + from, to);
    return to;
}

int count(const std::string& s, const std::string& what) {
    int n = 0;
    for (std::size_t p = s.find(what); p != std::string::npos; p = s.find(what, p + 1)) ++n;
    return n;
}

}  // namespace

TEST(BatchFormat, ExplicitFormatWinsOverTheExtension) {
    ztest::Temp_Dir dir;
    // A constant-wavelength GSAS file named ".gss": the extension sends it to ISIS, --format GSAS to GSAS.
    const std::string gss = copy_as(dir, "patterns/PBSO4.XRA", "pbso4.gss");
    std::string out, err;
    run({"info", gss}, out, err);
    EXPECT_NE(out.find("  format   ISIS\n"), std::string::npos) << out << err;
    ASSERT_EQ(run({"info", gss, "--format", "GSAS"}, out, err), 0) << err;
    EXPECT_NE(out.find("  format   GSAS\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  scat_var 2theta\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  npts     6001\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  xmin     10\n"), std::string::npos) << out;  // 1000 centidegrees
    EXPECT_NE(out.find("  xmax     160\n"), std::string::npos) << out;  // 1000 + 6000 * 2.5
    // The same in convert: an XY file read in free format is refused, as the free reader says.
    const std::string xy = copy_as(dir, "patterns/hrpt.xye", "hrpt.xye");
    EXPECT_EQ(run({"convert", xy, dir.Path() + "/o.xys", "--format", "KV8"}, out, err), 1);
    EXPECT_NE(err.find("ERROR in file: "), std::string::npos) << err;
    ASSERT_EQ(run({"convert", xy, dir.Path() + "/o.xys"}, out, err), 0) << err;
}

TEST(BatchFormat, AutoGuessesFromTheContentOneLinePerFile) {
    ztest::Temp_Dir dir;
    const std::string psi = copy_as(dir, "patterns/PSI_DMC.dat", "psi.txt");
    const std::string kg1 = copy_as(dir, "patterns/D1A5.dat", "d1a5");
    const std::string binary = dir.Write("noise.bin", std::string("\x01\x02\x00\x00\x07", 5) + std::string(300, '\x03'));
    std::string out, err;
    ASSERT_EQ(run({"info", psi, kg1, "--format", "auto"}, out, err), 0) << err;
    EXPECT_EQ(count(err, "guess: "), 2) << err;
    EXPECT_NE(err.find("guess: " + psi + ": DMC: "), std::string::npos) << err;
    EXPECT_NE(err.find("guess: " + kg1 + ": KG1: "), std::string::npos) << err;
    EXPECT_NE(out.find("  format   DMC\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  npts     3200\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  format   KG1\n"), std::string::npos) << out;
    EXPECT_NE(out.find("  npts     1680\n"), std::string::npos) << out;
    // Auto also overrides the extension; a file with no guess is refused and the others still load.
    EXPECT_EQ(run({"info", binary, psi, "--format", "AUTO"}, out, err), 1);
    EXPECT_NE(err.find("ERROR in file: " + binary + " no format guessed: binary"), std::string::npos) << err;
    EXPECT_NE(out.find("  format   DMC\n"), std::string::npos) << out;

    ASSERT_EQ(run({"convert", psi, dir.Path() + "/psi.xys", "--format", "auto"}, out, err), 0) << err;
    EXPECT_NE(err.find("guess: " + psi + ": DMC: "), std::string::npos) << err;
    EXPECT_NE(out.find("3200 points, 2theta 2.948 to 162.898"), std::string::npos) << out;
}

TEST(BatchFormat, UnknownExtensionAsksForFormat) {
    ztest::Temp_Dir dir;
    const std::string psi = copy_as(dir, "patterns/PSI_DMC.dat", "psi.txt");
    std::string out, err;
    EXPECT_EQ(run({"info", psi}, out, err), 1);
    EXPECT_NE(err.find("the format of this extension is not known: give --format MODE"), std::string::npos) << err;
    EXPECT_NE(err.find("auto"), std::string::npos) << err;
    EXPECT_EQ(run({"convert", psi, dir.Path() + "/o.dat"}, out, err), 1);
    EXPECT_EQ(run({"info", psi, "--format", "guess"}, out, err), 2);
    EXPECT_NE(err.find("unknown format guess"), std::string::npos) << err;
    EXPECT_TRUE(out.empty());
    zendrite::Reset_Store();
}
