// The history of the store: steps keep only what changed, undo and redo give back the
// store exactly, limits drop the oldest steps, and a step that changed nothing is not kept.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "app/store/history.h"
#include "app/store/zendrite_param_global.h"

namespace zendrite {
namespace {

struct History : ::testing::Test {
    ZENDRITE_STORE& g = zendrite_param_global();
    void SetUp() override {
        History_Clear();
        History_Limits() = HISTORY_LIMITS{};
        Reset_Store();
        Enter_None_Mode();
        g.Peak_List.count = 0;
        g.win_xmin = 0;
    }
    void TearDown() override {
        History_Clear();
        Reset_Store();
        Enter_None_Mode();
    }
    // A slot of n points with y = k * i, filled as a command would.
    void fill(int slot, int n, float k) {
        DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(slot)];
        hxl::Allocate_Pattern(p, n);
        for (int i = 1; i <= n; ++i) p.x(i) = 10.0f + 0.01f * static_cast<float>(i), p.y(i) = k * static_cast<float>(i);
        p.title = "slot " + std::to_string(slot);
        p.acq_time = 0;  // a NaN start would make no two records compare equal here
        g.info[static_cast<std::size_t>(slot)].prf_type = "DATA";
        g.nperfiles = std::max(g.nperfiles, slot);
        g.graph_mode = "single";
    }
};

TEST_F(History, UndoRedoGiveBackTheStoreAndAStepHoldsOnlyWhatChanged) {
    History_Begin("Open", kHistoryArrays);
    fill(1, 1000, 1.0f), fill(2, 1000, 2.0f);
    ASSERT_TRUE(History_End());
    const DIFFRACTION_PATTERN_TYPE one = g.pattern[1], two = g.pattern[2];

    // y of slot 2 alone changes: only that array is held, x and slot 1 stay shared with the store
    History_Begin("Smooth", kHistoryY);
    for (int i = 1; i <= 1000; ++i) g.pattern[2].y(i) += 0.5f;
    g.win_xmin = 3;  // a change of view goes with the step
    ASSERT_TRUE(History_End());
    const DIFFRACTION_PATTERN_TYPE smoothed = g.pattern[2];
    // against a step of a list alone: the 1000 values of y and one head more; not x, not the other slot
    History_Begin("Peaks", 0);
    g.Peak_List.count = 1;
    ASSERT_TRUE(History_End());
    const std::size_t extra = History_Step_Bytes(2) - History_Step_Bytes(3);
    EXPECT_GE(extra, 4000u);
    EXPECT_LT(extra, 4000u + 2000u);
    ASSERT_TRUE(History_Undo());

    EXPECT_EQ(History_Undo_Name(), "Smooth");
    ASSERT_TRUE(History_Undo());
    EXPECT_EQ(g.pattern[2], two);
    EXPECT_EQ(g.pattern[1], one);
    EXPECT_EQ(g.win_xmin, 0.0f);
    EXPECT_EQ(History_Redo_Name(), "Smooth");
    ASSERT_TRUE(History_Redo());
    EXPECT_EQ(g.pattern[2], smoothed);
    EXPECT_EQ(g.win_xmin, 3.0f);

    // back to the start: no slot, the none mode
    ASSERT_TRUE(History_Go(0));
    EXPECT_EQ(g.nperfiles, 0);
    EXPECT_EQ(g.graph_mode, "none");
    EXPECT_FALSE(History_Undo());  // nothing left to undo
    ASSERT_TRUE(History_Go(2));
    EXPECT_EQ(g.pattern[2], smoothed);
    ASSERT_TRUE(History_Redo());
    EXPECT_EQ(g.Peak_List.count, 1);
    EXPECT_FALSE(History_Redo());
}

TEST_F(History, NothingChangedViewAloneAndNaNTimesRecordNothing) {
    fill(1, 100, 1.0f);
    g.pattern[1].acq_time = std::numeric_limits<double>::quiet_NaN();
    History_Begin("Cancelled", kHistoryArrays);
    EXPECT_FALSE(History_End());
    History_Begin("Zoom", 0);
    g.win_xmin = 5, g.win_xmax = 6;
    EXPECT_FALSE(History_End());
    EXPECT_EQ(History_Count(), 0);
    EXPECT_EQ(History_Undo_Name(), "");

    // a mode left after a step stays when the step is undone, since the step did not change it
    History_Begin("Peaks", 0);
    g.Peak_List.count = 2;
    g.Peak_List.p[1].x = 1, g.Peak_List.p[2].x = 2;
    ASSERT_TRUE(History_End());
    g.graph_mode = "calculation", g.calc_mode = 2;
    ASSERT_TRUE(History_Undo());
    EXPECT_EQ(g.Peak_List.count, 0);
    EXPECT_EQ(g.graph_mode, "calculation");
    EXPECT_EQ(g.calc_mode, 2);
}

TEST_F(History, ANewChangeDropsTheRedoBranchAndLimitsDropTheOldest) {
    fill(1, 10, 1.0f);
    for (int k = 1; k <= 5; ++k) {
        History_Begin("Scale " + std::to_string(k), kHistoryY);
        for (int i = 1; i <= 10; ++i) g.pattern[1].y(i) *= 2.0f;
        ASSERT_TRUE(History_End());
    }
    ASSERT_TRUE(History_Undo());
    ASSERT_TRUE(History_Undo());
    History_Begin("Shift", kHistoryX);
    g.pattern[1].x(1) = -1;
    ASSERT_TRUE(History_End());
    EXPECT_EQ(History_Count(), 4);
    EXPECT_EQ(History_Redo_Name(), "");
    EXPECT_EQ(g.pattern[1].y(1), 8.0f);

    History_Limits().steps = 2;
    History_Apply_Limits();
    ASSERT_EQ(History_Count(), 2);
    EXPECT_EQ(History_Names()[0], "Scale 3");
    EXPECT_EQ(History_Names()[1], "Shift");
    ASSERT_TRUE(History_Go(0));
    EXPECT_EQ(g.pattern[1].y(1), 4.0f);  // as after "Scale 2", the oldest kept state
    EXPECT_EQ(g.pattern[1].x(1), 10.01f);

    // the megabyte limit: one step of 4 MB of y is over a limit of 1 MB, but the newest stays
    History_Clear();
    History_Limits() = HISTORY_LIMITS{};
    fill(1, 1 << 20, 1.0f);
    History_Limits().megabytes = 1;
    for (int k = 1; k <= 3; ++k) {
        History_Begin("Big", kHistoryY);
        g.pattern[1].y(1) += 1;
        ASSERT_TRUE(History_End());
    }
    EXPECT_EQ(History_Count(), 1);
    EXPECT_GT(History_Bytes(), 4u << 20);
}

TEST_F(History, SlotsFilledAndEmptiedAndTheRecordsBesideThem) {
    fill(1, 50, 1.0f);
    History_Begin("Copy", kHistoryArrays);
    g.pattern[2] = g.pattern[1];
    g.info[2].prf_type = "COPY";
    g.nperfiles = 2;
    g.show_profile[2] = false;
    ASSERT_TRUE(History_End());
    History_Begin("Delete", kHistoryArrays);
    g.pattern[1] = g.pattern[2];
    g.info[1] = g.info[2];
    g.info[1].nexcl = 1, g.info[1].excl_low(1) = 11, g.info[1].excl_high(1) = 12;
    g.nperfiles = 1;
    ASSERT_TRUE(History_End());
    ASSERT_TRUE(History_Undo());
    EXPECT_EQ(g.nperfiles, 2);
    EXPECT_EQ(g.info[1].prf_type, "DATA");
    EXPECT_EQ(g.info[1].nexcl, 0);
    EXPECT_EQ(g.info[2].prf_type, "COPY");
    ASSERT_TRUE(History_Undo());
    EXPECT_EQ(g.nperfiles, 1);
    EXPECT_TRUE(g.show_profile[2]);
    ASSERT_TRUE(History_Redo());
    ASSERT_TRUE(History_Redo());
    EXPECT_EQ(g.info[1].prf_type, "COPY");
    EXPECT_EQ(g.info[1].excl_high(1), 12.0f);

    // a step left open by a press whose release never came is closed by the next one
    History_Begin("Mouse edit", 0);
    g.Bgr_List.count = 1;
    History_Begin("Reset", kHistoryArrays);
    Reset_Store();
    ASSERT_TRUE(History_End());
    EXPECT_EQ(History_Names().back(), "Reset");
    EXPECT_EQ(History_Names()[History_Names().size() - 2], "Mouse edit");
}

}  // namespace
}  // namespace zendrite
