// End-to-end: the X space and excluded-region commands of the real window.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

const std::string kData = ZD_TEST_DATA;
const std::string kFreeFormat = "dialog \"Format of the data file\" radio 101\n";

struct XSpace : SCRIPTED_HOME {
    std::string open(const std::string& path) const { return "files " + path + "\n" + kFreeFormat + "menu 40014\n"; }
    std::string dump(const std::string& name) const { return "dump " + at(name) + "\n"; }
    std::string save_xy(const std::string& name) const {
        return "files " + at(name) + "\ndialog \"Export Data as *.xys\" press 1\nmenu 40209\n";
    }
    // The X column of an XY file written by the program.
    std::vector<double> xs(const std::string& name) const {
        std::istringstream in(file(name));
        std::vector<double> v;
        for (std::string l; std::getline(in, l);) {
            std::istringstream w(l);
            double x = 0, y = 0;
            if (!l.empty() && l[0] != '!' && (w >> x >> y)) v.push_back(x);
        }
        return v;
    }
};

}  // namespace

TEST_F(XSpace, RealFileToDQSAndBackTo2theta) {
    const std::string s = open(kData + "/patterns/PSI_DMC.dat") + "menu 40017\n" + dump("d.txt") + "menu 40089\n" +
                          dump("q.txt") + "menu 40081\n" + dump("s.txt") + "menu 40042\n" + dump("t.txt") +
                          save_xy("back.xys") + "menu 40042\n";
    ASSERT_EQ(run(s), 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_EQ(value(file("d.txt"), "xspace"), "d-space");
    EXPECT_EQ(value(file("q.txt"), "xspace"), "q-space");
    EXPECT_EQ(value(file("s.txt"), "xspace"), "s-space");
    EXPECT_EQ(value(file("t.txt"), "xspace"), "2theta");
    // d of 2.948 and 162.898 deg at 1.494 A (numpy table): 29.0398 and 0.755397.
    const std::string d = file("d.txt");
    EXPECT_NE(d.find("  xmin 0.755397\n"), std::string::npos) << d;
    EXPECT_NE(d.find("  xmax 29.0398\n"), std::string::npos) << d;
    EXPECT_NE(file("q.txt").find("  xmax 8.31773\n"), std::string::npos) << file("q.txt");
    EXPECT_NE(file("s.txt").find("  xmax 1.32381\n"), std::string::npos) << file("s.txt");
    // Back in 2theta every point is within 1e-4 degrees of the file's 2.948 + 0.05 (i - 1), plus the
    // 5e-5 of the four decimals the XY file is written with (the store test checks 1e-4 on the floats).
    const std::vector<double> x = xs("back.xys");
    ASSERT_EQ(x.size(), 3200u);
    double worst = 0;
    for (std::size_t i = 0; i < x.size(); ++i) worst = std::max(worst, std::fabs(x[i] - (2.948 + 0.05 * double(i))));
    EXPECT_LT(worst, 1.5e-4);
    // The same space again says so.
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Same xspace..."), std::string::npos) << out;
}

TEST_F(XSpace, ATofFileThenA2thetaFileIsRefused) {
    std::ofstream(home / "tof.dat") << "1000 10 1100 a time-of-flight scan\n1 2 3 4 5 6 7 8 9 10 11\n";
    const std::string s = open(at("tof.dat")) + open(kData + "/patterns/PSI_DMC.dat") + dump("d.txt");
    ASSERT_EQ(run(s), 0) << out << err;
    EXPECT_NE(out.find("Present space: TOF, file in 2theta, / It is not possible to merge different scattering variables"),
              std::string::npos)
        << out;
    EXPECT_EQ(value(file("d.txt"), "nperfiles"), "1");
    EXPECT_EQ(value(file("d.txt"), "xspace"), "TOF");
}

TEST_F(XSpace, NoWavelengthOpensItsGrid) {
    std::ofstream(home / "nolambda.dat") << "10 1 20 no wavelength\n1 2 3 4 5 6 7 8 9 10 11\n";
    const std::string s = open(at("nolambda.dat")) + "menu 40089\n" + dump("a.txt") +
                          "dialog \"Change wavelength\" set 11 1.5\ndialog \"Change wavelength\" press 12\n"
                          "dialog \"Change wavelength\" press 1\nmenu 40089\n" + dump("b.txt");
    ASSERT_EQ(run(s), 0) << out << err;
    // Unanswered the grid is cancelled: nothing changes.
    EXPECT_NE(out.find("UNANSWERED Change wavelength"), std::string::npos) << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Conversion of xspace cancelled"), std::string::npos) << out;
    EXPECT_EQ(value(file("a.txt"), "xspace"), "2theta");
    EXPECT_NE(file("a.txt").find("  xmin 10\n"), std::string::npos);
    // The value put into all rows is taken: Q of 10 deg at 1.5 A is 4 pi sin 5 deg / 1.5 = 0.730154.
    const std::string b = file("b.txt");
    EXPECT_EQ(value(b, "xspace"), "q-space");
    EXPECT_NE(b.find("  lambda1 1.5\n"), std::string::npos) << b;
    EXPECT_NE(b.find("  xmin 0.730154\n"), std::string::npos) << b;
}

TEST_F(XSpace, RegionAddedByDialogThenDeletedInTheTree) {
    const std::string s = open(kData + "/patterns/PSI_DMC.dat") +
                          "dialog 121 set 1224 30\ndialog 121 set 1225 20\ndialog 121 press 1\nmenu 40151\n" +
                          "dialog 121 set 1224 20\ndialog 121 set 1225 30\ndialog 121 press 1\nmenu 40151\n" +
                          "dialog 121 set 1224 40\ndialog 121 set 1225 50\ndialog 121 press 1\nmenu 40151\n" +
                          dump("a.txt") + "menu 40017\n" + dump("b.txt") + "menu 40042\n" +
                          "answer 1\ndialog 110 set 1319 2\ndialog 110 press 1321\ndialog 110 press 1\nmenu 40034\n" +
                          dump("c.txt");
    ASSERT_EQ(run(s), 0) << out << err;
    // Reversed limits typed in the dialog are refused.
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | ERROR: minimal X value >= maximal X value"), std::string::npos) << out;
    EXPECT_NE(file("a.txt").find("  nexcl 2\n    20 30\n    40 50\n"), std::string::npos) << file("a.txt");
    // In d the regions are converted and keep low below high: 2theta 40..50 is d 1.76755..2.18408.
    EXPECT_NE(file("b.txt").find("    1.76755 2.18408\n"), std::string::npos) << file("b.txt");
    EXPECT_NE(out.find("Do you want to delete the excluded region  1 of profile: PSI_DMC.dat"), std::string::npos) << out;
    const std::string c = file("c.txt");
    EXPECT_NE(c.find("  nexcl 1\n    40 50\n"), std::string::npos) << c;
}
