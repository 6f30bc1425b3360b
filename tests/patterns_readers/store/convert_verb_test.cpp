// zendrite-batch convert: any reader in, the ".dat" or ".xys" writer out.
#include <gtest/gtest.h>

#include <sstream>

#include "app/batch/batch_verbs.h"
#include "patterns/read_pattern.h"
#include "support/fixed_text.h"
#include "../test_files.h"

using zdtest::Sample;
using zdtest::Scratch_Path;

namespace {

int run(const std::vector<std::string>& args, std::string& out, std::string& err) {
    std::ostringstream o, e;
    const int rc = zendrite::Batch_Main(args, o, e);
    out = o.str();
    err = e.str();
    return rc;
}

}  // namespace

TEST(ConvertVerb, ReadsByExtensionOrModeAndWritesBothFormats) {
    std::string out, err;
    const std::string xys = Scratch_Path("cwn.xys");
    ASSERT_EQ(run({"convert", Sample("PBSO4.CWN"), xys, "--format", "gsas"}, out, err), 0) << err;
    hxl::DIFFRACTION_PATTERN_TYPE p;
    hxl::Read_Pattern(xys, p, "XYSIGMA");
    ASSERT_FALSE(hxl::ERR_Pattern) << hxl::ERR_Pattern_Mess;
    EXPECT_EQ(p.npts, 2919);
    EXPECT_FLOAT_EQ(p.y(11), 202.0f);
    EXPECT_NEAR(p.sigma(11), 202.0f, 1e-2);

    const std::string dat = Scratch_Path("hrpt.dat");
    ASSERT_EQ(run({"convert", Sample("hrpt.xye"), dat}, out, err), 0) << err;
    hxl::DIFFRACTION_PATTERN_TYPE q;
    hxl::Read_Pattern(dat, q);
    ASSERT_FALSE(hxl::ERR_Pattern) << hxl::ERR_Pattern_Mess;
    EXPECT_EQ(q.npts, 3098);
    EXPECT_FLOAT_EQ(q.y(1), 167.0f);
    EXPECT_NEAR(q.xmax, 164.85f, 1e-3);
}

TEST(ConvertVerb, RefusesWhatItCannotDo) {
    std::string out, err;
    EXPECT_EQ(run({"convert", Sample("hrpt.xye"), Scratch_Path("x.txt")}, out, err), 2);
    EXPECT_NE(err.find("must end in .dat or .xys"), std::string::npos);
    EXPECT_EQ(run({"convert", Sample("PBSO4.CWN"), Scratch_Path("x.dat")}, out, err), 1);
    EXPECT_NE(err.find("give --format MODE"), std::string::npos);
    EXPECT_EQ(run({"convert", Scratch_Path("missing.xy"), Scratch_Path("x.dat")}, out, err), 1);
    EXPECT_NE(err.find("doesn't exist"), std::string::npos);
    EXPECT_EQ(run({"convert", Sample("hrpt.xye"), Scratch_Path("x.dat"), "--format", "nonsense"}, out, err), 2);
    EXPECT_EQ(run({"convert", Sample("hrpt.xye")}, out, err), 2);
}
