// The X space of the store: loads refused or converted, the command over all profiles, the guards.
#include <gtest/gtest.h>

#include <cmath>

#include "app/store/add_profile.h"
#include "app/store/x_space.h"
#include "app/store/zendrite_param_global.h"
#include "calc/xspace.h"
#include "patterns/format_table.h"

using namespace zendrite;

namespace {

const std::string kDmc = std::string(ZD_TEST_DATA) + "/patterns/PSI_DMC.dat";

// The answer the grid of the constants gives: Cancel, or these values for every row.
int g_calls = 0;
bool g_ok = false;
float g_c1 = 0, g_c2 = 0;
bool answer(bool, const std::vector<int>& slots) {
    ++g_calls;
    if (!g_ok) return false;
    for (int s : slots) {
        zendrite_param_global().pattern[static_cast<std::size_t>(s)].lambda1 = g_c1;
        zendrite_param_global().pattern[static_cast<std::size_t>(s)].lambda2 = g_c2;
    }
    return true;
}

struct XSpaceStore : ::testing::Test {
    void SetUp() override {
        Reset_Store();
        Enter_None_Mode();
        X_Space_Hooks() = X_SPACE_HOOKS{};
        g_calls = 0;
    }
    void TearDown() override { X_Space_Hooks() = X_SPACE_HOOKS{}; }
    static ZENDRITE_STORE& g() { return zendrite_param_global(); }
    static int add(const std::string& scat_var, float lambda, std::vector<float> x) {
        ZENDRITE_STORE& s = g();
        const int slot = ++s.nperfiles;
        auto& p = s.pattern[static_cast<std::size_t>(slot)];
        Clear_Pattern_Record(p);
        hxl::Allocate_Pattern(p, static_cast<int>(x.size()));
        for (int i = 1; i <= p.npts; ++i) p.x(i) = x[static_cast<std::size_t>(i - 1)], p.y(i) = 1.0f;
        p.xmin = x.front(), p.xmax = x.back();
        p.scat_var = scat_var;
        p.lambda1 = lambda;
        Clear_Prf_Info(s.info[static_cast<std::size_t>(slot)]);
        s.info[static_cast<std::size_t>(slot)].prf_name = "p" + std::to_string(slot);
        std::string m;
        if (!Identify_X_Space(slot, m)) {
            --s.nperfiles;
            ADD_FAILURE() << m;
        }
        return slot;
    }
};

}  // namespace

TEST_F(XSpaceStore, RealFileToDQSAndBack) {
    LOAD_RESULT r = Load_Data_File(kDmc, hxl::kRowFree);
    ASSERT_EQ(r.slots.size(), 1u);
    const auto& p = g().pattern[1];
    ASSERT_NEAR(p.lambda1, 1.494f, 1e-6f);  // read from the head of the file
    EXPECT_EQ(g().xspace, "2theta");
    const std::vector<float> original(p.x.data(), p.x.data() + p.npts);
    const float y100 = p.y(100);
    bool error = false;
    std::string message;
    for (const char* t : {"d-space", "q-space", "s-space", "2theta"}) {
        Convert_X_Space(t, error, message);
        ASSERT_FALSE(error) << t << ": " << message;
        EXPECT_EQ(g().xspace, t);
        if (std::string(t) == "d-space") {
            // 2.948 deg at 1.494 A: d = 29.0398 (numpy table); the order of the file stays.
            EXPECT_NEAR(p.x(1), 29.0398, 1e-3);
            EXPECT_NEAR(p.xmax, 29.0398, 1e-3);
            EXPECT_NEAR(p.xmin, 0.755397, 1e-5);
            EXPECT_EQ(X_Space_State().legend_x, "d-spacing (\u00C5)");
        }
    }
    double worst = 0;
    for (int i = 1; i <= p.npts; ++i) worst = std::max(worst, std::fabs(double(p.x(i)) - original[std::size_t(i - 1)]));
    EXPECT_LT(worst, 1e-4);
    EXPECT_EQ(p.y(100), y100);
    Convert_X_Space("2theta", error, message);
    EXPECT_TRUE(error);
    EXPECT_EQ(message, "Same xspace...");
}

TEST_F(XSpaceStore, RefusedLoadsAndRefusedConversionsLeaveTheStore) {
    add("TOF", 5000.0f, {1000.0f, 2000.0f});
    int slot = ++g().nperfiles;
    g().pattern[static_cast<std::size_t>(slot)].scat_var = "2theta";
    std::string m;
    EXPECT_FALSE(Identify_X_Space(slot, m));
    EXPECT_EQ(m, "Present space: TOF, file in 2theta,\rIt is not possible to merge different scattering variables");
    --g().nperfiles;
    bool error = false;
    Convert_X_Space("2theta", error, m);
    EXPECT_TRUE(error);
    EXPECT_EQ(m, "Fault in Zendrite: Impossible to convert TOF -> 2theta");
    EXPECT_EQ(g().pattern[1].x(1), 1000.0f);
    EXPECT_EQ(g().xspace, "TOF");
    // TOF to d with dtt1 5000: d = 0.2 and 0.4.
    Convert_X_Space("d-space", error, m);
    ASSERT_FALSE(error) << m;
    EXPECT_FLOAT_EQ(g().pattern[1].x(2), 0.4f);
    // A 2theta pattern joins d converted; its legend follows the space.
    add("2theta", 1.5f, {20.0f, 40.0f});
    EXPECT_NEAR(g().pattern[2].x(1), 1.5 / (2 * std::sin(10 * M_PI / 180)), 1e-5);
    EXPECT_TRUE(g().mixed_scat_var);
    Convert_X_Space("TOF", error, m);
    EXPECT_EQ(m, "Profiles with diferent scat_var were loaded.\rUnable to converter xspace to scar_var of origin.");
    Convert_X_Space("q-space", error, m);  // not refused for mixed variables
    EXPECT_FALSE(error) << m;
}

TEST_F(XSpaceStore, GuardsOfTheWavelength) {
    add("2theta", 0.0f, {10.0f, 20.0f});
    add("2theta", 1.5f, {10.0f, 20.0f});
    bool error = false;
    std::string m;
    // Without the grid (batch) the guard's text refuses.
    Convert_X_Space("q-space", error, m);
    EXPECT_TRUE(error);
    EXPECT_EQ(m, "lambda<=0 - Value incorrect for p1\rOperation cancelled.");
    X_Space_Hooks().edit_constants = answer;
    g_ok = false;
    Convert_X_Space("q-space", error, m);
    EXPECT_EQ(m, "Conversion of xspace cancelled");
    EXPECT_EQ(g_calls, 1);
    g_ok = true, g_c1 = -1.0f;
    Convert_X_Space("q-space", error, m);
    EXPECT_EQ(m, "Invalid value of wavelength found in:\rp1\rp2");
    EXPECT_EQ(g().pattern[2].lambda1, 1.5f);  // put back: a refusal changes nothing
    EXPECT_EQ(g().pattern[1].x(1), 10.0f);
    EXPECT_EQ(g().xspace, "2theta");
    g_c1 = 2.0f;
    Convert_X_Space("q-space", error, m);
    EXPECT_FALSE(error) << m;
    EXPECT_NEAR(g().pattern[1].x(1), 4 * M_PI * std::sin(5 * M_PI / 180) / 2.0, 1e-5);
}

TEST_F(XSpaceStore, GuardsOfDtt) {
    add("TOF", 5000.0f, {1000.0f, 2000.0f});
    g().pattern[1].lambda1 = -2.0f;
    bool error = false;
    std::string m;
    Check_Dtt(error, m);
    EXPECT_TRUE(error);
    EXPECT_EQ(m, "vtt1 <= 0 - Value incorrect for p1\rOperation cancelled.");
    X_Space_Hooks().edit_constants = answer;
    g_ok = true, g_c1 = 0.0f;
    Check_Dtt(error, m);
    EXPECT_EQ(m, "Invalid values of ddt1/dtt2 found for:\rp1");
    EXPECT_EQ(g().pattern[1].lambda1, -2.0f);
    g_c1 = 1000.0f, g_c2 = 2.0f;
    Check_Dtt(error, m);
    EXPECT_FALSE(error);
    Convert_X_Space("d-space", error, m);
    EXPECT_NEAR(g().pattern[1].x(1), hxl::D_From_Time(1000.0, 1000.0, 2.0), 1e-6);
}

TEST_F(XSpaceStore, EmptyStoreAndPointsWithoutValue) {
    bool error = false;
    std::string m;
    Convert_X_Space("----", error, m);
    EXPECT_EQ(m, "Same xspace...");
    add("2theta", 1.5f, {0.0f, 20.0f});  // a scan that starts at 0 has no d there
    Convert_X_Space("d-space", error, m);
    EXPECT_TRUE(error);
    EXPECT_EQ(m, "The point 1 (X = 0.000000) of p1 has no value in d-space\rConversion of xspace cancelled");
    EXPECT_EQ(g().pattern[1].x(2), 20.0f);
}

TEST_F(XSpaceStore, APointWithoutValueAnywhereLeavesEveryProfileAsItWas) {
    // Six profiles, so that both workers hold some; converted to d first.
    for (int k = 0; k < 6; ++k) {
        std::vector<float> x(3000);
        for (std::size_t i = 0; i < x.size(); ++i) x[i] = 5.0f + 0.05f * static_cast<float>(i) + static_cast<float>(k);
        add("2theta", 1.5f, x);
    }
    bool error = false;
    std::string m;
    Convert_X_Space("d-space", error, m);
    ASSERT_FALSE(error) << m;
    auto snapshot = [] {
        std::vector<std::vector<float>> s;
        for (int k = 1; k <= g().nperfiles; ++k) {
            const auto& p = g().pattern[static_cast<std::size_t>(k)];
            s.emplace_back(p.x.vec());
            s.back().push_back(p.xmin);
            s.back().push_back(p.xmax);
        }
        return s;
    };
    // d below lambda/2 has no angle: at the last point of the last profile, then of the first.
    for (int slot : {6, 1}) {
        auto& p = g().pattern[static_cast<std::size_t>(slot)];
        const float kept = p.x(p.npts);
        p.x(p.npts) = 0.7f;
        const auto before = snapshot();
        Convert_X_Space("2theta", error, m);
        EXPECT_TRUE(error);
        EXPECT_EQ(m, "The point 3000 (X = 0.700000) of p" + std::to_string(slot) +
                         " has no value in 2theta\rConversion of xspace cancelled");
        EXPECT_EQ(snapshot(), before);
        EXPECT_EQ(g().xspace, "d-space");
        p.x(p.npts) = kept;
    }
    // Just above lambda/2 the point has an angle near 180 degrees, and all convert back.
    g().pattern[6].x(3000) = std::nextafter(0.75f, 1.0f);
    Convert_X_Space("2theta", error, m);
    ASSERT_FALSE(error) << m;
    EXPECT_GT(g().pattern[6].x(3000), 179.9f);
    EXPECT_EQ(g().pattern[6].xmax, g().pattern[6].x(3000));
    EXPECT_NEAR(g().pattern[1].x(1), 5.0f, 1e-4f);
    EXPECT_NEAR(g().pattern[1].xmin, 5.0f, 1e-4f);
}
