// Which loads join which space, and every cell of the conversion matrix, with the texts as shown.
#include <gtest/gtest.h>

#include "calc/xspace.h"

using hxl::Conversion_Plan;
using hxl::Identify_Scat_Var;
using hxl::X_GUARD;
using hxl::X_STEP;

namespace {

std::string refusal(const std::string& present, const std::string& var) {
    const hxl::X_IDENTIFY r = Identify_Scat_Var(present, var);
    return r.error ? r.message : "accepted";
}

std::string plan_text(const std::string& from, const std::string& to, bool mixed = false) {
    const hxl::X_CONVERSION c = Conversion_Plan(from, to, mixed);
    return c.error ? c.message : "ok";
}

const std::vector<std::string> kGeneral = {"Lambda", "Energy", "Temperature", "Frequency", "Time", "Distance", "r.l.u."};

}  // namespace

TEST(XSpaceIdentify, FirstLoadTakesTheKnownNamesAndRefusesOthers) {
    for (const char* v : {"2theta", "Energy", "Omega", "TOF", "mono", "Lambda", "Temperature", "Frequency", "Time",
                          "Distance", "r.l.u."}) {
        const hxl::X_IDENTIFY r = Identify_Scat_Var("----", v);
        EXPECT_FALSE(r.error) << v;
        EXPECT_EQ(r.space, v);
    }
    // The profile-file reader writes "2Theta"; a CIF in d gives "d-spacing".
    EXPECT_EQ(Identify_Scat_Var("----", "2Theta").space, "2theta");
    EXPECT_EQ(Identify_Scat_Var("----", "d-spacing").space, "d-space");
    EXPECT_EQ(refusal("----", "counts"), "Unknown scattering variable: counts");
    EXPECT_EQ(refusal("----", ""), "Unknown scattering variable: ");
}

TEST(XSpaceIdentify, EveryCellOfTheAcceptanceTable) {
    const std::string vars = "It is not possible to merge different scattering variables";
    const std::string spaces = "It is not possible to merge different x-spaces";
    const std::string no_conv = "conversion of xspace is not permitted";
    for (const char* present : {"2theta", "Omega"}) {
        EXPECT_EQ(refusal(present, "2theta"), "accepted");
        EXPECT_EQ(refusal(present, "Omega"), "accepted");
        EXPECT_EQ(refusal(present, "TOF"), "Present space: 2theta, file in TOF,\r" + vars + " ");
        EXPECT_EQ(refusal(present, "mono"), "Present Space: 2theta, file type Integrated Intensity,\r" + no_conv);
        for (const auto& g : kGeneral)
            EXPECT_EQ(refusal(present, g), "Present Space: 2theta, file type: General Abcisa,\r" + spaces) << g;
    }
    EXPECT_EQ(refusal("TOF", "2theta"), "Present space: TOF, file in 2theta,\r" + vars);
    EXPECT_EQ(refusal("TOF", "Omega"), "Present space: TOF, file in 2theta,\r" + vars);
    EXPECT_EQ(refusal("TOF", "TOF"), "accepted");
    EXPECT_EQ(refusal("TOF", "mono"), "Present space: TOF, file type Integrated Intensity,\r" + no_conv);
    EXPECT_EQ(refusal("TOF", "Time"), "Present Space: TOF, file type: General Abcisa,\r" + spaces);

    EXPECT_EQ(refusal("mono", "2theta"), "Present space: Integrated Intensity, file in 2theta,\r" + no_conv);
    EXPECT_EQ(refusal("mono", "TOF"), "Present space: Integrated Intensity, file in TOF,\r" + no_conv);
    EXPECT_EQ(refusal("mono", "mono"), "Present space: Integrated Intensity, file type Integrated Intensity,\r"
                                       "only one profile of type Integrated Intensity can be plotted at same time");
    EXPECT_EQ(refusal("mono", "Distance"), "Present Space: Integrated Intensity, file type: General Abcisa,\r" + spaces);

    for (const char* present : {"d-space", "q-space", "s-space"})
        for (const char* v : {"2theta", "Omega", "TOF"}) EXPECT_EQ(refusal(present, v), "accepted") << present << v;
    EXPECT_EQ(refusal("d-space", "mono"), "Present space: d-spacing, file type Integrated Intensity,\r"
                                          "only a single Integrated Intensity type is allowed at the same time");
    EXPECT_EQ(refusal("q-space", "mono"), "Present Space: q-space, file type Integrated Intensity ,\r"
                                          "only one profile of type Integrated Intensity is allowed at same time");
    EXPECT_EQ(refusal("s-space", "mono"), "Present Space: s-space, file type Integrated Intensity,\r"
                                          "only one Integrated Intensity pattern is allowed at the same time");
    EXPECT_EQ(refusal("d-space", "Lambda"), "Present Space: d-spacing, file type: General Abcisa,\r" + spaces);
    EXPECT_EQ(refusal("q-space", "Energy"), "Present Space: q-space, file type: General Abcisa,\r" + spaces);
    EXPECT_EQ(refusal("s-space", "r.l.u."), "Present Space: s-space, file type: General Abcisa,\r" + spaces);

    for (const auto& present : kGeneral) {
        EXPECT_EQ(refusal(present, present), "accepted");
        EXPECT_EQ(refusal(present, "2theta"), "Present space: " + present + ", file in 2Theta,\r" + spaces);
        EXPECT_EQ(refusal(present, "TOF"), "Present space: " + present + ", file in TOF,\r" + spaces);
        EXPECT_EQ(refusal(present, "mono"), "Present Space: " + present + ", file type Integrated Intensity \r" + spaces);
        const std::string other = present == "Time" ? "Lambda" : "Time";
        EXPECT_EQ(refusal(present, other), "Present Space: " + present + ", file type General Abcisa \r" + spaces);
    }
    EXPECT_EQ(refusal("Weird", "2theta"), "Zendrite in unknown X-space Weird\rLoad profile cancelled");
}

TEST(XSpaceIdentify, AJoiningPatternIsConvertedIntoDQOrS) {
    hxl::X_IDENTIFY r = Identify_Scat_Var("q-space", "2theta");
    EXPECT_EQ(r.convert.guard, X_GUARD::Lambda);
    EXPECT_EQ(r.convert.steps, (std::vector<X_STEP>{X_STEP::Theta_To_D, X_STEP::D_To_Q}));
    r = Identify_Scat_Var("d-space", "TOF");
    EXPECT_EQ(r.convert.guard, X_GUARD::Dtt);
    EXPECT_EQ(r.convert.steps, (std::vector<X_STEP>{X_STEP::Time_To_D}));
    r = Identify_Scat_Var("d-space", "d-spacing");
    EXPECT_FALSE(r.error);
    EXPECT_TRUE(r.convert.steps.empty());
    EXPECT_TRUE(Identify_Scat_Var("2theta", "2theta").convert.steps.empty());
}

TEST(XSpacePlan, EveryCellOfTheMatrix) {
    const std::string mixed =
        "Profiles with diferent scat_var were loaded.\rUnable to converter xspace to scar_var of origin.";
    EXPECT_EQ(plan_text("----", "----"), "Same xspace...");
    EXPECT_EQ(plan_text("d-space", "d-spacing"), "Same xspace...");
    for (const char* t : {"2theta", "Omega", "TOF", "Energy"}) EXPECT_EQ(plan_text("d-space", t, true), mixed);
    // d, q and s are not refused for mixed variables.
    EXPECT_EQ(plan_text("2theta", "d-space", true), "ok");

    // Targets 2theta and Omega.
    EXPECT_EQ(plan_text("2theta", "Omega"), "Zendrite in unknown xspace :2theta");
    EXPECT_EQ(plan_text("Omega", "2theta"), "Zendrite in unknown xspace :Omega");
    EXPECT_EQ(plan_text("TOF", "2theta"), "Fault in Zendrite: Impossible to convert TOF -> 2theta");
    EXPECT_EQ(plan_text("TOF", "Omega"), "Fault in Zendrite: Impossible to convert TOF -> Omega");
    EXPECT_EQ(plan_text("Energy", "2theta"), "Fault in Zendrite: Impossible to convert Energy -> 2Theta");
    EXPECT_EQ(plan_text("Energy", "Omega"), "Fault in Zendrite: Impossible to convert Energy -> 2Theta");
    EXPECT_EQ(plan_text("mono", "2theta"), "Conversion not possible");
    EXPECT_EQ(plan_text("Lambda", "2theta"), "Zendrite in unknown xspace :Lambda");
    EXPECT_EQ(Conversion_Plan("d-space", "2theta", false).steps, (std::vector<X_STEP>{X_STEP::D_To_Theta}));
    EXPECT_EQ(Conversion_Plan("q-space", "Omega", false).steps, (std::vector<X_STEP>{X_STEP::Q_To_D, X_STEP::D_To_Theta}));
    EXPECT_EQ(Conversion_Plan("s-space", "2theta", false).steps, (std::vector<X_STEP>{X_STEP::S_To_D, X_STEP::D_To_Theta}));

    // Targets TOF and Energy.
    for (const char* t : {"TOF", "Energy"}) {
        EXPECT_EQ(plan_text("2theta", t), "Fault in Zendrite: Impossible to convert 2theta -> TOF");
        EXPECT_EQ(plan_text("Omega", t), "Fault in Zendrite: Impossible to convert 2theta -> TOF");
        EXPECT_EQ(plan_text("mono", t), "Conversion not possible");
        EXPECT_EQ(Conversion_Plan("d-space", t, false).steps, (std::vector<X_STEP>{X_STEP::D_To_Time}));
        EXPECT_EQ(Conversion_Plan("q-space", t, false).steps, (std::vector<X_STEP>{X_STEP::Q_To_D, X_STEP::D_To_Time}));
        EXPECT_EQ(Conversion_Plan("s-space", t, false).steps, (std::vector<X_STEP>{X_STEP::S_To_D, X_STEP::D_To_Time}));
        EXPECT_EQ(Conversion_Plan("d-space", t, false).guard, X_GUARD::None);
    }
    EXPECT_EQ(plan_text("TOF", "Energy"), "Zendrite in unknown xspace :TOF");
    EXPECT_EQ(plan_text("Energy", "TOF"), "Zendrite in unknown xspace :Energy");

    // Targets d, q, s.
    for (const char* a : {"2theta", "Omega"}) {
        hxl::X_CONVERSION c = Conversion_Plan(a, "d-space", false);
        EXPECT_EQ(c.guard, X_GUARD::Lambda);
        EXPECT_EQ(c.steps, (std::vector<X_STEP>{X_STEP::Theta_To_D}));
        c = Conversion_Plan(a, "q-space", false);
        EXPECT_EQ(c.steps, (std::vector<X_STEP>{X_STEP::Theta_To_D, X_STEP::D_To_Q}));
        c = Conversion_Plan(a, "s-space", false);
        EXPECT_EQ(c.steps, (std::vector<X_STEP>{X_STEP::Theta_To_D, X_STEP::D_To_S}));
        EXPECT_EQ(c.guard, X_GUARD::Lambda);
    }
    for (const char* t : {"TOF", "Energy"}) {
        hxl::X_CONVERSION c = Conversion_Plan(t, "d-spacing", false);
        EXPECT_EQ(c.guard, X_GUARD::Dtt);
        EXPECT_EQ(c.steps, (std::vector<X_STEP>{X_STEP::Time_To_D}));
        EXPECT_EQ(Conversion_Plan(t, "q-space", false).steps, (std::vector<X_STEP>{X_STEP::Time_To_D, X_STEP::D_To_Q}));
        EXPECT_EQ(Conversion_Plan(t, "s-space", false).steps, (std::vector<X_STEP>{X_STEP::Time_To_D, X_STEP::D_To_S}));
    }
    EXPECT_EQ(Conversion_Plan("q-space", "d-space", false).steps, (std::vector<X_STEP>{X_STEP::Q_To_D}));
    EXPECT_EQ(Conversion_Plan("s-space", "d-space", false).steps, (std::vector<X_STEP>{X_STEP::S_To_D}));
    EXPECT_EQ(Conversion_Plan("d-space", "q-space", false).steps, (std::vector<X_STEP>{X_STEP::D_To_Q}));
    EXPECT_EQ(Conversion_Plan("s-space", "q-space", false).steps, (std::vector<X_STEP>{X_STEP::S_To_Q}));
    EXPECT_EQ(Conversion_Plan("d-space", "s-space", false).steps, (std::vector<X_STEP>{X_STEP::D_To_S}));
    EXPECT_EQ(Conversion_Plan("q-space", "s-space", false).steps, (std::vector<X_STEP>{X_STEP::Q_To_S}));
    EXPECT_EQ(Conversion_Plan("q-space", "s-space", false).guard, X_GUARD::None);
    EXPECT_EQ(plan_text("q-space", "q-space"), "Same xspace...");
    EXPECT_EQ(plan_text("mono", "d-space"), "Conversion not possible");
    EXPECT_EQ(plan_text("mono", "q-space"), "Conversion not possible");
    EXPECT_EQ(plan_text("mono", "s-space"), "Conversion not posible");
    EXPECT_EQ(plan_text("----", "d-space"), "Zendrite in unknown xspace :----");
    EXPECT_EQ(plan_text("Time", "q-space"), "Zendrite in unknown xspace :Time");
    EXPECT_EQ(plan_text("Time", "s-space"), "Zendrite in unknown xspace  :Time");
    EXPECT_EQ(plan_text("2theta", "mono"), "Unknown Xspace target");
    EXPECT_EQ(plan_text("2theta", "Lambda"), "Unknown Xspace target");
}

TEST(XSpaceLegends, TheTableOfTheSpaces) {
    std::string x, y;
    hxl::X_Space_Legends("TOF", false, x, y);
    EXPECT_EQ(x, "TOF (\u00B5sec)");
    EXPECT_EQ(y, "Intensity (arb. units)");
    hxl::X_Space_Legends("d-space", false, x, y);
    EXPECT_EQ(x, "d-spacing (\u00C5)");
    hxl::X_Space_Legends("q-space", false, x, y);
    EXPECT_EQ(x, "Q (\u00C5-1)");
    hxl::X_Space_Legends("mono", false, x, y);
    EXPECT_EQ(y, "Fcalc. - Fobs.");
    hxl::X_Space_Legends("Distance", true, x, y);
    EXPECT_EQ(y, "G(R) x 1000");
    hxl::X_Space_Legends("Distance", false, x, y);
    EXPECT_EQ(y, "G(R)");
    hxl::X_Space_Legends("Time", false, x, y);
    EXPECT_EQ(y, "F(time)");
    hxl::X_Space_Legends("----", false, x, y);
    EXPECT_TRUE(x.empty() && y.empty());
}
