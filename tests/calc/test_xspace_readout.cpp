// The read-out in several spaces and the ticks of the second X axis, against the numpy table
// of tests/tools/xspace_reference.py.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <tuple>

#include "calc/xspace_readout.h"

namespace {

using hxl::X_READING;

std::ifstream reference() { return std::ifstream(std::string(ZD_TEST_DATA) + "/calc/xspace_reference.txt"); }

void expect_reading(const X_READING& r, const std::string& space, double v, const std::string& why) {
    EXPECT_EQ(r.space, space) << why;
    EXPECT_NEAR(r.value, v, 1e-9 * std::fabs(v)) << why << " " << space;
}

}  // namespace

TEST(XSpaceReadout, EverySpaceTheConstantsAllowAgreesWithNumpy) {
    auto in = reference();
    ASSERT_TRUE(in);
    int rows = 0;
    for (std::string line; std::getline(in, line);) {
        std::istringstream l(line);
        std::string kind;
        l >> kind;
        if (kind != "angle") continue;
        double lam, tt, d, q, s;
        l >> lam >> tt >> d >> q >> s;
        // The same position, whichever of the four spaces the store is in.
        for (const auto& [present, x] : std::map<std::string, double>{
                 {"2theta", tt}, {"d-space", d}, {"q-space", q}, {"s-space", s}}) {
            const auto r = hxl::X_Readings(present, "2theta", x, lam, 0.0);
            ASSERT_EQ(r.size(), present == "s-space" ? 4u : 3u) << line;
            // Coming back to 2theta through asin loses digits near 180 degrees.
            EXPECT_NEAR(r[0].value, tt, 1e-7 * tt) << line << " from " << present;
            EXPECT_EQ(r[0].space, "2theta");
            expect_reading(r[1], "d-space", d, line + " from " + present);
            expect_reading(r[2], "q-space", q, line + " from " + present);
            if (present == "s-space") expect_reading(r[3], "s-space", s, line);
        }
        ++rows;
    }
    EXPECT_EQ(rows, 8);

    // The example of the read-out, Cu K-alpha1 (numpy: d 3.135600, Q 2.003822).
    EXPECT_EQ(hxl::X_Readout_Text(hxl::X_Readings("2theta", "2theta", 28.442, 1.5406, 0)),
              "2theta 28.442 | d 3.1356 A | Q 2.0038 A-1");
    // TOF with dtt1 and dtt2: the numpy root of 7476.9 d - 3.6 d^2 = 5000.
    const auto t = hxl::X_Readings("TOF", "TOF", 5000.0, 7476.9, -3.6);
    ASSERT_EQ(t.size(), 3u);
    EXPECT_NEAR(t[1].value, 6.6894179931e-01, 1e-9);  // the table's time row
    EXPECT_EQ(hxl::X_Readout_Text(t).substr(0, 19), "TOF 5000.0 | d 0.66");
    // A pattern converted from Omega keeps its own name.
    EXPECT_EQ(hxl::X_Readings("d-space", "Omega", 3.0, 1.5, 0)[0].space, "Omega");
}

TEST(XSpaceReadout, WithoutConstantsOnlyTheSpacesThatNeedNone) {
    // No wavelength: the pattern's own space alone.
    for (double lam : {0.0, -1.5, std::nan(""), HUGE_VAL}) {
        const auto r = hxl::X_Readings("2theta", "2theta", 28.442, lam, 0);
        ASSERT_EQ(r.size(), 1u);
        EXPECT_EQ(hxl::X_Readout_Text(r), "2theta 28.442");
    }
    EXPECT_EQ(hxl::X_Readings("TOF", "TOF", 5000, 0, 0).size(), 1u);
    EXPECT_EQ(hxl::X_Readings("TOF", "TOF", 5000, 7000, std::nan("")).size(), 1u);
    // In d-space without a wavelength Q is still known, 2theta isn't.
    const auto d = hxl::X_Readings("d-space", "2theta", 2.0, 0, 0);
    ASSERT_EQ(d.size(), 2u);
    EXPECT_EQ(hxl::X_Readout_Text(d), "d 2.0000 A | Q 3.1416 A-1");
    // A wavelength doesn't make a TOF pattern an angle one, nor serve a general abscissa.
    EXPECT_EQ(hxl::X_Readings("2theta", "TOF", 30, 1.5, 0).size(), 1u);
    EXPECT_EQ(hxl::X_Readout_Text(hxl::X_Readings("Temperature", "Temperature", 300, 1.5, 0)), "Temperature 300.0000");
    // Positions without a d: 2theta 0 or below, a d too small for the wavelength.
    EXPECT_EQ(hxl::X_Readings("2theta", "2theta", 0.0, 1.5, 0).size(), 1u);
    EXPECT_EQ(hxl::X_Readings("2theta", "2theta", -5.0, 1.5, 0).size(), 1u);
    const auto small = hxl::X_Readings("d-space", "2theta", 0.5, 1.5, 0);  // lambda/2d > 1
    ASSERT_EQ(small.size(), 2u);
    EXPECT_EQ(small[0].space, "d-space");
}

TEST(XSpaceSecondAxis, TicksLieWhereNumpyPutsTheirValues) {
    // (frame, unit, c1, c2, value) -> x of the numpy table.
    std::map<std::tuple<std::string, std::string, double, double, double>, double> table;
    auto in = reference();
    ASSERT_TRUE(in);
    for (std::string line; std::getline(in, line);) {
        std::istringstream l(line);
        std::string kind, frame, unit;
        double c1, c2, v, x;
        l >> kind;
        if (kind != "tick") continue;
        l >> frame >> unit >> c1 >> c2 >> v >> x;
        table[{frame, unit, c1, c2, std::round(v * 1e4) / 1e4}] = x;
    }
    ASSERT_GT(table.size(), 1000u);
    struct CASE {
        std::string frame, unit;
        double xmin, xmax, c1, c2;
        std::string origin;
    };
    // PSI DMC in 2theta (2.9 to 163 degrees at 1.494 A), the same pattern in d, and a TOF bank.
    for (const CASE& c : {CASE{"2theta", "q-space", 2.9, 163.0, 1.494, 0, "2theta"},
                          CASE{"2theta", "d-space", 2.9, 163.0, 1.494, 0, "2theta"},
                          CASE{"2theta", "d-space", 0.0, 163.0, 1.494, 0, "2theta"},
                          CASE{"d-space", "2theta", 0.7554, 29.04, 1.494, 0, "2theta"},
                          CASE{"d-space", "q-space", 0.7554, 29.04, 1.494, 0, "2theta"},
                          CASE{"TOF", "d-space", 3000, 40000, 7476.9, -3.6, "TOF"}}) {
        const std::string why = c.frame + " -> " + c.unit + " from " + std::to_string(c.xmin);
        const double gap = 0.06, span = c.xmax - c.xmin;
        const auto ticks = hxl::Second_Axis_Ticks(c.frame, c.origin, c.unit, c.xmin, c.xmax, c.c1, c.c2, gap);
        ASSERT_GE(ticks.size(), 5u) << why;
        EXPECT_LE(ticks.size(), static_cast<std::size_t>(1.0 / gap) + 1) << why;
        for (std::size_t k = 0; k < ticks.size(); ++k) {
            const auto& t = ticks[k];
            const auto it = table.find({c.frame, c.unit, c.c1, c.c2, std::round(t.value * 1e4) / 1e4});
            ASSERT_NE(it, table.end()) << why << ": a tick at " << t.value << " is no round value of the table";
            EXPECT_NEAR(t.x, it->second, 1e-6 * std::fabs(it->second)) << why << " value " << t.value;
            EXPECT_GE(t.x, c.xmin);
            EXPECT_LE(t.x, c.xmax);
            // Printed with its decimals the value reads back exactly.
            EXPECT_NEAR(std::round(t.value * std::pow(10.0, t.decimals)), t.value * std::pow(10.0, t.decimals), 1e-6)
                << why;
            if (k > 0) {
                EXPECT_GE(t.x - ticks[k - 1].x, gap * span * (1 - 1e-9)) << why << " value " << t.value;
            }
        }
    }
    // 2theta to Q is nearly linear: every whole Q from 1 to 8 (numpy: 8.318 at 163 degrees), half
    // steps only at high angle where Q is stretched, rising with 2theta.
    const auto q = hxl::Second_Axis_Ticks("2theta", "2theta", "q-space", 2.9, 163.0, 1.494, 0, 0.06);
    for (int v = 1; v <= 8; ++v)
        EXPECT_TRUE(std::any_of(q.begin(), q.end(), [&](const hxl::X_TICK& t) { return t.value == v; })) << v;
    for (std::size_t k = 0; k < q.size(); ++k) {
        if (q[k].value != std::round(q[k].value)) {
            EXPECT_GT(q[k].x, 90.0) << q[k].value;
        }
        if (k > 0) {
            EXPECT_GT(q[k].value, q[k - 1].value);
        }
    }
    // d runs against 2theta and is stretched at high angle: finer steps there, coarse ones at low angle.
    const auto d = hxl::Second_Axis_Ticks("2theta", "2theta", "d-space", 2.9, 163.0, 1.494, 0, 0.06);
    EXPECT_GT(d.front().value, d.back().value);
    EXPECT_GE(d.front().value, 3.0);
    EXPECT_LT(d.back().value, 1.0);
}

TEST(XSpaceSecondAxis, NoAxisWithoutConstantsOrInTheFramesOwnSpace) {
    EXPECT_TRUE(hxl::Second_Axis_Ticks("2theta", "2theta", "d-space", 2.9, 163.0, 0.0, 0, 0.06).empty());
    EXPECT_TRUE(hxl::Second_Axis_Ticks("2theta", "2theta", "2theta", 2.9, 163.0, 1.494, 0, 0.06).empty());
    EXPECT_TRUE(hxl::Second_Axis_Ticks("2theta", "2theta", "Omega", 2.9, 163.0, 1.494, 0, 0.06).empty());
    EXPECT_TRUE(hxl::Second_Axis_Ticks("d-space", "d-space", "d-space", 1, 3, 0, 0, 0.06).empty());
    EXPECT_TRUE(hxl::Second_Axis_Ticks("TOF", "TOF", "d-space", 3000, 4000, std::nan(""), 0, 0.06).empty());
    EXPECT_TRUE(hxl::Second_Axis_Ticks("Temperature", "Temperature", "d-space", 1, 300, 1.5, 0, 0.06).empty());
    // A frame of no width, turned round, or where the unit has no value at all.
    EXPECT_TRUE(hxl::Second_Axis_Ticks("2theta", "2theta", "q-space", 30, 30, 1.5, 0, 0.06).empty());
    EXPECT_TRUE(hxl::Second_Axis_Ticks("2theta", "2theta", "q-space", 60, 30, 1.5, 0, 0.06).empty());
    EXPECT_TRUE(hxl::Second_Axis_Ticks("2theta", "2theta", "q-space", -60, -30, 1.5, 0, 0.06).empty());
    // Q needs no wavelength in d-space; 2theta does.
    EXPECT_FALSE(hxl::Second_Axis_Ticks("d-space", "2theta", "q-space", 1, 3, 0, 0, 0.06).empty());
    EXPECT_FALSE(hxl::Second_Axis_Allowed("d-space", "2theta", "2theta", 0, 0));
    EXPECT_TRUE(hxl::Second_Axis_Allowed("d-space", "2theta", "2theta", 1.5, 0));
}
