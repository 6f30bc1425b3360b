// Messages of the profile-file reader, and files cut anywhere.
#include <gtest/gtest.h>

#include "prf_test_files.h"

using ztest::Read_Text_Prf;

namespace {
std::string msg(const std::string& text) { return Read_Text_Prf(text).message; }
const std::string kLine2 = "  1      3     1.50000     1.50000     0.00000     0.00000     0.00000\n";
const std::string kHead46 = std::string(" 2Theta\tYobs\tYcal\tYobs-Ycal\tBackg\tPosr\tcode\th_") + "\n";
}  // namespace

TEST(ReadPrfErrors, FileAndHeadMessages) {
    ztest::PRF_READ r;
    hxl::Read_Prf_File(ztest::Prf_Data("no_such.prf"), r.info, r.pattern, r.error, r.message);
    EXPECT_TRUE(r.error);
    EXPECT_EQ(r.message, "ERROR 00: File not found");
    hxl::Read_Prf_File(ztest::Prf_Data(""), r.info, r.pattern, r.error, r.message);
    EXPECT_EQ(r.message, "Error open file");  // a folder

    EXPECT_EQ(ztest::Read_Data_Prf("igor.prf").message, "ERROR: file type IGOR");
    EXPECT_EQ(msg(""), "ERROR: Reading line 1");
    EXPECT_EQ(msg("title only\n"), "ERROR: Reading line 2");
    EXPECT_EQ(msg("t\n1 2 3\n"), "Error in number of columns");
    EXPECT_EQ(msg("t\n  1      3     1.50000     x.50000     0.00000     0.00000     0.00000\n"),
              "Error reading (col=7): nphases,npts,lambda1,lambda2, glb1, ...");
    EXPECT_EQ(msg("t\n  1      3     1.50000     1.50000     0.00000     0.00000     0.00000    z\n"),
              "Error reading (col=8): nphases,npts,lambda1,lambda2, glb1, ...");
    EXPECT_EQ(msg("t\n  1      0     1.50000     1.50000     0.00000     0.00000     0.00000\n"),
              "ERROR Format Special: npts <= 0");
    EXPECT_EQ(msg("t\n" + kLine2 + "1 x 0\n"), "Error reading: ic, nvk");
    EXPECT_EQ(msg("t\n" + kLine2 + "1 0\n"), "Error reading: ic, nvk");
    EXPECT_EQ(msg("t\n" + kLine2 + "-1 0 0\n"), "Error reading: ic, nvk");
    EXPECT_EQ(msg("t\n" + kLine2 + "1 1 0\n  0.5 zz\n"), "Error reading propagation vectors");
    EXPECT_EQ(msg("t\n" + kLine2 + "1 0 1\n      10.0 x\n"), "Error reading excluded regions");
    EXPECT_EQ(msg("t\n" + kLine2 + "1 0 0\n"), "Error reading headings of columns");
}

TEST(ReadPrfErrors, LayoutMessages) {
    auto r = ztest::Read_Data_Prf("heading47.prf");
    EXPECT_TRUE(r.error);
    const std::string heading = " 2Theta\tYobs\tYcal\tYobs-Ycal\tBackg\tPosr\tcode\th\t_";
    EXPECT_EQ(r.message, "Error! Prf is not => Prf=+3 or Prf=-3!\rLine read: " + heading);

    const std::string point = "     10.0000\t    95.0\t   100.0\t    -5.0\t   100.0\n";
    EXPECT_EQ(msg("t\n" + kLine2 + "1 0 0\n" + kHead46 + point + "bad\n"), "Error reading profile for Prf=+3");
    EXPECT_EQ(msg("t\n" + kLine2 + "1 0 0\n" + kHead46 + point + point + point + "x\n"),
              "Error reading first reflections for Prf=+3");
    const std::string head53 = " 2Theta" + std::string(46, '_') + "\n";
    EXPECT_EQ(msg("t\n" + kLine2 + "1 0 0\n" + head53 + point + point + point), "Error reading reflections for Prf=+3 ");
    EXPECT_EQ(msg("t\n" + kLine2 + "1 0 0\n" + head53 + point + point + point + "  20.0 : 7\n"),
              "Error reading reflections for Prf=+3 ");
    const std::string head52 = " 2Theta" + std::string(45, '_') + "\n";
    EXPECT_EQ(msg("t\n" + kLine2 + "1 0 0\n" + head52 + point), "Error reading profile for Prf=-3");
}

TEST(ReadPrfErrors, OldLayoutMessages) {
    const std::string h = "t\n3111\n";
    EXPECT_EQ(msg(h + "  x\n"), "ERROR: thmax,thmin,ste,ivers");
    const std::string l3 = "  17.500  10.000 0.50000       3\n";
    EXPECT_EQ(msg(h + l3 + "  q\n"), "ERROR: nphases,npts,lambda1,lambda2,glb1,glb8,glb9");
    EXPECT_EQ(msg(h + l3 + "  1      0\n"), "ERROR: npts <= 0");
    const std::string l4 = "  1      2   1.54000   1.54000   0.00000   0.00000   0.00000\n";
    EXPECT_EQ(msg(h + l3 + l4 + "    x\n"), "ERROR: reading nphases <= 8");
    const std::string l5 = "    1    0    0    0    0    0    0    0  0  0  0  0  0  0  0  0\n";
    EXPECT_EQ(msg(h + l3 + l4 + l5 + "    100.     x\n"), "ERROR: reading Yobs values");
    EXPECT_EQ(msg(h + l3 + l4 + l5 + "    100.     200.\n"), "ERROR: reading Ycalc values");
    const std::string ys = "    100.     200.\n";
    EXPECT_EQ(msg(h + l3 + l4 + l5 + ys + ys + "   x\n"), "ERROR: loading reflection codes");
    EXPECT_EQ(msg(h + l3 + l4 + l5 + ys + ys + " 134217728\n"), "ERROR: loading angular positions of reflections");
    const std::string refl = " 134217728\n  10.000\n";
    EXPECT_EQ(msg(h + l3 + l4 + l5 + ys + ys + refl), "ERROR: reading number of excluded regions");
    EXPECT_EQ(msg(h + l3 + l4 + l5 + ys + ys + refl + "       1\n  x\n"), "ERROR: reading excluded regions");
    const std::string l5k = "    1    0    0    0    0    0    0    0  1  0  0  0  0  0  0  0\n";
    EXPECT_EQ(msg(h + l3 + l4 + l5k + ys + ys + refl + "       0\n  q\n"), "ERROR: reading propagation vectors");
    EXPECT_EQ(msg(h + l3 + l4 + l5k + ys + ys + refl + "       0\n   0.50000\n"),
              "ERROR: reading indices of propagation vectors");
    const std::string l4n = "  9      2   1.54000   1.54000   0.00000   0.00000   0.00000\n";
    EXPECT_EQ(msg(h + l3 + l4n + "    x\n"), "ERROR: reading nphases > 8 (Part 1)");
    EXPECT_EQ(msg(h + l3 + l4n + l5 + "    1    0    x\n"), "ERROR: reading nphases > 8 (Part 2)");
    EXPECT_EQ(msg("superspace x\n Sin\n"), "ERROR: The number of k-vector for superspace is not provided");
}

// A refinement may be writing the file while it is read: a file cut at any
// byte either fails with a message or gives consistent records.
TEST(ReadPrfErrors, FilesCutAnywhereStayConsistent) {
    for (const char* name : {"two_phase_46.prf", "joined_52.prf", "superspace_53.prf", "old_3111.prf",
                             "peaks_fit.xrf", "sin_superspace.prf", "magnetic_k.prf"}) {
        const std::string text = ztest::Slurp(ztest::Prf_Data(name));
        ASSERT_FALSE(text.empty()) << name;
        int failures = 0;
        for (std::size_t cut = 0; cut < text.size(); cut += 7) {
            auto r = Read_Text_Prf(text.substr(0, cut), name);
            if (r.error) {
                ++failures;
                continue;
            }
            const auto& p = r.pattern;
            ASSERT_GE(p.npts, 1) << name << " cut at " << cut;
            ASSERT_EQ(p.x.size(), p.npts) << name << " cut at " << cut;
            ASSERT_EQ(p.y.size(), p.npts) << name << " cut at " << cut;
            ASSERT_EQ(r.info.refl_label.size(), r.info.nrefl) << name << " cut at " << cut;
            ASSERT_EQ(r.info.refl_phase.size(), r.info.nrefl) << name << " cut at " << cut;
            for (int j = 1; j <= r.info.nrefl; ++j) {
                ASSERT_GE(r.info.refl_phase(j), 1);
                ASSERT_LE(r.info.refl_phase(j), r.info.nphases);
            }
        }
        EXPECT_GT(failures, 0) << name;
        EXPECT_FALSE(Read_Text_Prf(text, name).error) << name;
    }
}
