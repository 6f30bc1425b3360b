// zendrite-batch sg and hkl, run as the program runs them.
#include <gtest/gtest.h>

#include <sstream>

#include "app/batch/batch_verbs.h"

namespace {

int run(const std::vector<std::string>& args, std::string& out, std::string& err) {
    std::ostringstream o, e;
    const int rc = zendrite::Batch_Main(args, o, e);
    out = o.str();
    err = e.str();
    return rc;
}

TEST(BatchCrystalVerbs, SgPrintsTheListingAndRefusesBadSymbols) {
    std::string out, err;
    ASSERT_EQ(run({"sg", "P", "b", "m", "n"}, out, err), 0) << err;
    for (const char* s : {"Information on Space Group:", "=>   Number of Space group: 53", "x+1/2,-y+1/2,-z",
                          ">>> Integral reflections conditions for centred lattices:",
                          ">>> Zonal reflections conditions for glide planes:", "(0 k l)     k=2n",
                          ">>> Serial reflections conditions for screw axes:"})
        EXPECT_NE(out.find(s), std::string::npos) << s;
    ASSERT_EQ(run({"sg", "62"}, out, err), 0);
    EXPECT_NE(out.find("P n m a"), std::string::npos);
    EXPECT_NE(out.find("      4c  .m.            (x,1/4,z)  "), std::string::npos) << out;
    ASSERT_EQ(run({"sg", "F", "d", "-3", "m:1"}, out, err), 0) << err;
    for (const char* s : {" =>         Asymmetric unit: 0 <= x <= 1/8;  0 <= y <= 1/8;  0 <= z <= 1",
                          " => Special Wyckoff Positions for F d -3 m", "      8a  -43m           (0,0,0)  (1/4,1/4,1/4)\n"})
        EXPECT_NE(out.find(s), std::string::npos) << s;
    EXPECT_EQ(run({"sg", "231"}, out, err), 1);
    EXPECT_NE(err.find("The number of the space group should be in the interval [1,230]"), std::string::npos);
    EXPECT_EQ(run({"sg", "P 5"}, out, err), 1);
    EXPECT_NE(err.find(" The fivefold axis is not allowed"), std::string::npos);
    EXPECT_EQ(run({"sg"}, out, err), 2);
}

TEST(BatchCrystalVerbs, HklListsTheReflectionsInTheRange) {
    std::string out, err;
    ASSERT_EQ(run({"hkl", "--cell", "5.4309", "5.4309", "5.4309", "90", "90", "90", "--sg", "F d -3 m", "--lambda", "1.5406",
                   "--range", "20", "60"},
                  out, err),
              0)
        << err;
    std::istringstream in(out);
    std::string header;
    std::getline(in, header);
    EXPECT_NE(header.find("mult"), std::string::npos);
    int h, k, l, m;
    double d, tth;
    std::vector<double> angles;
    while (in >> h >> k >> l >> m >> d >> tth) angles.push_back(tth);
    ASSERT_EQ(angles.size(), 4u);  // 111, 220, 311, 222
    EXPECT_NEAR(angles[0], 28.44, 0.01);
    EXPECT_NEAR(angles[3], 58.857, 0.01);
    EXPECT_EQ(run({"hkl", "--cell", "5", "5", "--sg", "P 1"}, out, err), 2);
    EXPECT_EQ(run({"hkl", "--cell", "5", "5", "5", "90", "90", "90", "--sg", "P 1", "--lambda", "-1", "--range", "10", "20"},
                  out, err),
              1);
    EXPECT_NE(err.find("Bad wavelength"), std::string::npos);
    EXPECT_EQ(run({"hkl", "--cell", "5", "0", "5", "90", "90", "90", "--sg", "P 1", "--lambda", "1", "--range", "10", "20"},
                  out, err),
              1);
    EXPECT_NE(err.find("Wrong cell parameters"), std::string::npos);
    EXPECT_EQ(run({"hkl", "--cell", "5", "5", "5", "10", "10", "170", "--sg", "P 1", "--lambda", "1", "--range", "10", "20"},
                  out, err),
              1);
    EXPECT_NE(err.find("Wrong cell parameters"), std::string::npos);
    EXPECT_EQ(run({"hkl", "--cell", "5", "5", "5", "90", "90", "90", "--sg", "P 1", "--lambda", "1", "--range", "0", "20"},
                  out, err),
              1);
    EXPECT_NE(err.find("Error liminf*limsup < 0.0001"), std::string::npos);
    EXPECT_EQ(run({"hkl", "--cell", "5", "5", "5", "90", "90", "90", "--sg", "P 7", "--lambda", "1", "--range", "5", "20"},
                  out, err),
              1);
    EXPECT_NE(err.find("Problems in SpaceGroup"), std::string::npos);
}

}  // namespace
