// Slot operations of the Profiles menu on the store itself: copy, removal, new order, focus.
#include <gtest/gtest.h>

#include "app/main/profile_commands.h"
#include "app/store/zendrite_param_global.h"

using namespace zendrite;

namespace {

std::size_t at(int s) { return static_cast<std::size_t>(s); }

// A slot of 5 points, x 1..5, y = base + x, named after `name`.
void fill(int s, const std::string& name, float base) {
    ZENDRITE_STORE& g = zendrite_param_global();
    DIFFRACTION_PATTERN_TYPE& p = g.pattern[at(s)];
    Allocate_Pattern(p, 5);
    for (int i = 1; i <= 5; ++i) p.x(i) = static_cast<float>(i), p.y(i) = base + static_cast<float>(i);
    p.ymin = base + 1, p.ymax = base + 5;
    p.title = "T " + name;
    Clear_Prf_Info(g.info[at(s)]);
    g.info[at(s)].prf_name = name;
    g.info[at(s)].prf_type = "DATA";
}

struct Slots : ::testing::Test {
    void SetUp() override {
        Reset_Store();
        ZENDRITE_STORE& g = zendrite_param_global();
        g.nperfiles = 4;
        fill(1, "a", 0), fill(2, "b", 10), fill(3, "c", 20), fill(4, "d", 30);
    }
    void TearDown() override { Reset_Store(); }
    static std::string names() {
        const ZENDRITE_STORE& g = zendrite_param_global();
        std::string s;
        for (int i = 1; i <= g.nperfiles; ++i) s += g.info[at(i)].prf_name;
        return s;
    }
};

}  // namespace

TEST_F(Slots, CopyTakesSlotOneAndStopsAtTheLimit) {
    ZENDRITE_STORE& g = zendrite_param_global();
    std::string message;
    g.show_profile[5] = false;  // a stale flag beyond the filled slots
    ASSERT_TRUE(Copy_Profile(message));
    EXPECT_EQ(g.nperfiles, 5);
    EXPECT_EQ(g.info[5].prf_name, "<copy>");
    EXPECT_EQ(g.info[5].prf_type, "COPY");
    EXPECT_EQ(g.pattern[5].title, "Copy of T a");
    EXPECT_FLOAT_EQ(g.pattern[5].y(3), 3.0f);
    EXPECT_TRUE(g.show_profile[5]);
    // the copy is a copy: slot 1 changes alone
    g.pattern[1].y(3) = 99;
    EXPECT_FLOAT_EQ(g.pattern[5].y(3), 3.0f);
    // a title at its full length stays within it
    g.pattern[1].title = std::string(180, 'x');
    ASSERT_TRUE(Copy_Profile(message));
    EXPECT_EQ(g.pattern[6].title.size(), 180u);

    g.nperfiles = kMaxProfiles;
    EXPECT_FALSE(Copy_Profile(message));
    EXPECT_EQ(message, "The maximum number of profiles has been attained!");
    EXPECT_EQ(g.nperfiles, kMaxProfiles);
    g.nperfiles = 0;
    EXPECT_FALSE(Copy_Profile(message));
    EXPECT_EQ(g.nperfiles, 0);
}

TEST_F(Slots, RemovalCompactsAndFollowsTheRietveldProfile) {
    ZENDRITE_STORE& g = zendrite_param_global();
    g.prf_loaded = true;
    g.ProfilePRFactive = 3;
    g.show_profile[4] = false;
    g.plot_calc[3] = true;
    Remove_Slots({true, false, false, false});
    EXPECT_EQ(names(), "bcd");
    EXPECT_EQ(g.ProfilePRFactive, 2);
    EXPECT_TRUE(g.prf_loaded);
    EXPECT_TRUE(g.plot_calc[2]);
    EXPECT_FALSE(g.show_profile[3]);  // the flags moved with their slot
    EXPECT_TRUE(g.show_profile[4]);
    EXPECT_EQ(g.pattern[4].npts, 0);  // the freed slot is empty
    // removing the Rietveld profile unloads it
    Remove_Slots({false, true, false});
    EXPECT_EQ(names(), "bd");
    EXPECT_EQ(g.ProfilePRFactive, 0);
    EXPECT_FALSE(g.prf_loaded);
    // fewer flags than slots: the others stay
    Remove_Slots({true});
    EXPECT_EQ(names(), "d");
    Remove_Slots({true});
    EXPECT_EQ(g.nperfiles, 0);
}

TEST_F(Slots, ReorderMovesWholeSlotsAndRefusesWhatIsNotAPermutation) {
    ZENDRITE_STORE& g = zendrite_param_global();
    g.ProfilePRFactive = 1;
    g.show_profile[2] = false;
    Reorder_Slots({4, 2, 1, 3});
    EXPECT_EQ(names(), "dbac");
    EXPECT_EQ(g.ProfilePRFactive, 3);
    EXPECT_FALSE(g.show_profile[2]);
    EXPECT_FLOAT_EQ(g.pattern[1].y(1), 31.0f);
    const std::vector<std::vector<int>> wrong{{1, 1, 2, 3}, {1, 2, 3}, {0, 1, 2, 3}, {2, 3, 4, 5}};
    for (const std::vector<int>& bad : wrong) {
        Reorder_Slots(bad);
        EXPECT_EQ(names(), "dbac");
    }
}

TEST_F(Slots, FocusOnChosenSlots) {
    ZENDRITE_STORE& g = zendrite_param_global();
    g.data_ymin = 1, g.data_ymax = 35;
    g.win_xmin = 1.5f, g.win_xmax = 4.5f;  // points 2, 3, 4
    g.win_ymin = -100, g.win_ymax = 100;
    ASSERT_TRUE(Focus_Slots({false, true, false, false}));
    EXPECT_FLOAT_EQ(g.win_ymax, 14.0f + 0.1f);
    EXPECT_FLOAT_EQ(g.win_ymin, 12.0f - 0.1f);
    ASSERT_TRUE(Focus_Slots({true, false, false, true}));
    EXPECT_FLOAT_EQ(g.win_ymax, 34.0f + 1.6f);
    EXPECT_FLOAT_EQ(g.win_ymin, 2.0f - 1.6f);
    // nothing chosen, or no point inside the window: the limits stay
    EXPECT_FALSE(Focus_Slots({false, false, false, false}));
    g.win_xmin = 10, g.win_xmax = 20;
    EXPECT_FALSE(Focus_Slots({true, true, true, true}));
    EXPECT_FLOAT_EQ(g.win_ymin, 2.0f - 1.6f);
}
