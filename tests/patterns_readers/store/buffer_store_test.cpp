// Saving and opening buffer files through the profile store.
#include <gtest/gtest.h>

#include "app/store/add_profile.h"
#include "app/store/buffer_files.h"
#include "app/store/zendrite_param_global.h"
#include "patterns/format_table.h"
#include "support/fixed_text.h"
#include "../test_files.h"

using namespace zendrite;
using zdtest::Scratch_File;
using zdtest::Scratch_Path;

TEST(BufferStore, SaveThenOpenReloadsEveryDataProfile) {
    Reset_Store();
    std::string rows;
    for (int i = 1; i <= 12; ++i) rows += std::to_string(i) + " " + std::to_string(5 * i) + " 1\n";
    const std::string a = Scratch_File("one.xy", rows), b = Scratch_File("two.xy", "# t\n" + rows);
    ASSERT_EQ(Load_Data_File(a, hxl::kRowXYSigma).slots.size(), 1u);
    ASSERT_EQ(Load_Data_File(b, hxl::kRowXYSigma).slots.size(), 1u);
    auto& g = zendrite_param_global();
    g.info[2].prf_type = "SUMM";  // a calculated profile has no file to list
    ASSERT_EQ(Load_Data_File(b, hxl::kRowXYSigma).slots.size(), 1u);
    std::string msg;
    const std::string list = Scratch_Path("series.buf");
    ASSERT_TRUE(Save_Buffer(list, msg)) << msg;

    BUFFER_LOAD_RESULT r = Open_Buffer(list, hxl::kRowXYSigma);
    EXPECT_TRUE(r.opened);
    EXPECT_TRUE(r.messages.empty());
    ASSERT_EQ(g.nperfiles, 2);
    EXPECT_EQ(hxl::Trim(g.info[1].prf_name), "one.xy");
    EXPECT_EQ(hxl::Trim(g.info[2].prf_name), "two.xy");
    EXPECT_EQ(g.pattern[2].npts, 12);
    EXPECT_EQ(g.recent[1], list);
}

TEST(BufferStore, BadEntriesAreReportedAndTheListGoesOn) {
    Reset_Store();
    std::string rows;
    for (int i = 1; i <= 12; ++i) rows += std::to_string(i) + " 3\n";
    Scratch_File("good.xy", rows);
    Scratch_File("bad.xy", "only a title\n");
    const std::string list = Scratch_File("mixed.buf", "TITLE two files\nbad.xy\ngood.xy\n");
    BUFFER_LOAD_RESULT r = Open_Buffer(list, hxl::kRowXYSigma);
    ASSERT_EQ(r.slots.size(), 1u);
    ASSERT_FALSE(r.messages.empty());
    EXPECT_EQ(r.messages[0], "ERROR Opening file: " + Scratch_Path("bad.xy"));
    EXPECT_EQ(zendrite_param_global().nperfiles, 1);

    // A missing buffer file leaves the store as it was.
    BUFFER_LOAD_RESULT m = Open_Buffer(Scratch_Path("nothing.buf"), hxl::kRowXYSigma);
    EXPECT_FALSE(m.opened);
    EXPECT_EQ(m.messages.at(0), "File doesn't exist...");
    EXPECT_EQ(zendrite_param_global().nperfiles, 1);
    // An empty body leaves the store empty.
    Open_Buffer(Scratch_File("empty.buf", "! nothing\n"), hxl::kRowXYSigma);
    EXPECT_EQ(zendrite_param_global().nperfiles, 0);
}
