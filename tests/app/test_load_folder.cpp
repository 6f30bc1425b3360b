// Loading a folder into the store: good files among bad ones, the profile limit,
// cancelling, and what the store and the recent list hold afterwards.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <fstream>

#include "../patterns/temp_files.h"
#include "app/store/add_profile.h"
#include "app/store/load_folder.h"
#include "app/store/zendrite_param_global.h"
#include "patterns/format_table.h"
#include "support/fixed_text.h"

using namespace zendrite;

namespace {

// An XYE pattern of 20 points whose counts carry `mark`, so that slots can be told apart.
std::string xye(int mark) {
    std::string s;
    for (int i = 0; i < 20; ++i) {
        const double y = 100 + mark + (i == 10 ? 50 : 0);
        s += std::to_string(10 + 0.5 * i) + " " + std::to_string(y) + " " + std::to_string(std::sqrt(y)) + "\n";
    }
    return s;
}

std::vector<std::string> slot_names() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    std::vector<std::string> v;
    for (int i = 1; i <= g.nperfiles; ++i) v.push_back(hxl::Trim(g.info[static_cast<std::size_t>(i)].prf_name));
    return v;
}

}  // namespace

TEST(LoadFolder, BadFilesAmongGoodOnes) {
    ztest::Temp_Dir d;
    d.Write("run_10.xye", xye(10));
    d.Write("run_2.xye", xye(2));
    d.Write("Run_3.xye", xye(3));
    d.Write("run_1.xye", xye(1));
    d.Write("run_4.xye", "");                                   // empty
    d.Write("run_5.xye", std::string("\x7f" "ELF\x02\x01\x01\0\0\0\xff\xfe\x80\x90", 14) + std::string(3000, '\x01'));
    d.Write("run_6.xye", "these are not numbers\nat all\n");
    d.Write("notes.txt", "a log book\n");                      // no format row
    d.Write(".run_0.xye", xye(0));                              // hidden
    std::filesystem::create_directories(d.Path() + "/run_7.xye");  // a folder with a pattern name
    d.Write("run_7.xye/inner.xye", xye(7));
    {  // a huge file: sparse, so it costs no disk
        std::ofstream(d.Path() + "/run_8.xye") << "";
        std::filesystem::resize_file(d.Path() + "/run_8.xye", 600ull << 20);
    }
    const bool root = ::geteuid() == 0;
    if (!root) {  // a file that cannot be opened: only where permissions hold
        d.Write("run_9.xye", xye(9));
        std::filesystem::permissions(d.Path() + "/run_9.xye", std::filesystem::perms::none);
    }

    Reset_Store();
    ZENDRITE_STORE& g = zendrite_param_global();
    // One profile already loaded, and a recent list with two files: both must stay.
    const std::string before = d.Write("before.dat", "10 1 20 before\n" + ztest::Counts(11));
    ASSERT_EQ(Load_Data_File(before, hxl::kRowFree).slots.size(), 1u);
    Add_Recent_File("/elsewhere/old.dat");
    ASSERT_TRUE(std::filesystem::remove(before));
    const auto recent_before = g.recent;

    std::vector<int> seen;
    const FOLDER_LOAD_RESULT r = Load_Folder(d.Path(), [&](int done, int total, const std::string&) {
        seen.push_back(done);
        EXPECT_EQ(total, root ? 8 : 9);
        return true;
    });
    EXPECT_TRUE(r.error.empty()) << r.error;
    EXPECT_FALSE(r.cancelled);
    EXPECT_FALSE(r.limit_reached);
    EXPECT_EQ(r.slots, (std::vector<int>{2, 3, 4, 5}));
    EXPECT_EQ(slot_names(),
              (std::vector<std::string>{"before.dat", "run_1.xye", "run_2.xye", "Run_3.xye", "run_10.xye"}));
    EXPECT_FLOAT_EQ(g.pattern[3].y(1), 102.0f);  // run_2's counts are in slot 3
    EXPECT_FLOAT_EQ(g.pattern[5].y(1), 110.0f);
    EXPECT_EQ(hxl::Trim(g.info[2].prf_type), "DATA");
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.back(), root ? 8 : 9);

    // The failures, in the folder's order, each with its reason.
    std::vector<std::string> failed;
    for (const auto& f : r.failures) failed.push_back(f.file);
    std::vector<std::string> expected = {"notes.txt", "run_4.xye", "run_5.xye", "run_6.xye", "run_8.xye"};
    if (!root) expected.push_back("run_9.xye");
    EXPECT_EQ(failed, expected);
    ASSERT_GE(r.failures.size(), 5u);
    EXPECT_EQ(r.failures[0].reason, "format not known");
    EXPECT_EQ(r.failures[1].reason, "empty file");
    EXPECT_FALSE(r.failures[2].reason.empty());
    EXPECT_FALSE(r.failures[3].reason.empty());
    EXPECT_NE(r.failures[4].reason.find("larger than 512 MB"), std::string::npos);
    const std::string message = Folder_Failure_Message(r);
    EXPECT_EQ(message.substr(0, message.find('\r')),
              std::to_string(expected.size()) + " files of the folder were not loaded:");
    EXPECT_NE(message.find("\rrun_4.xye: empty file"), std::string::npos);
    EXPECT_EQ(message.find("... and"), std::string::npos);

    // The folder enters the recent list once; the files of it do not.
    EXPECT_EQ(g.recent[1], Folder_Recent_Name(d.Path()));
    EXPECT_EQ(g.recent[1].back(), '/');
    EXPECT_EQ(g.recent[2], recent_before[1]);
    EXPECT_EQ(g.recent[3], recent_before[2]);
    // The folder's files are as they were.
    EXPECT_TRUE(std::filesystem::is_empty(d.Path() + "/run_4.xye"));
    EXPECT_EQ(std::filesystem::file_size(d.Path() + "/run_8.xye"), 600ull << 20);

    // A folder that cannot be listed touches nothing.
    const auto names = slot_names();
    const FOLDER_LOAD_RESULT missing = Load_Folder(d.Path() + "/none");
    EXPECT_NE(missing.error.find("Unable to read the folder"), std::string::npos);
    EXPECT_EQ(slot_names(), names);
    EXPECT_EQ(g.recent[1], Folder_Recent_Name(d.Path()));
    Reset_Store();
}

TEST(LoadFolder, ProfileLimitCancelAndLongFailureList) {
    ztest::Temp_Dir d;
    for (int i = 1; i <= 15; ++i) d.Write("p" + std::to_string(i) + ".xye", xye(i));
    Reset_Store();
    ZENDRITE_STORE& g = zendrite_param_global();
    const std::string one = d.Write("fill.dat", "10 1 20 fill\n" + ztest::Counts(11));
    for (int i = 1; i <= kMaxProfiles - 10; ++i) ASSERT_EQ(Load_Data_File(one, hxl::kRowFree).slots.size(), 1u);
    std::filesystem::remove(one);
    // 15 files, 10 free slots: the first ten in order, then the limit, once.
    FOLDER_LOAD_RESULT r = Load_Folder(d.Path());
    EXPECT_TRUE(r.limit_reached);
    EXPECT_EQ(r.slots.size(), 10u);
    EXPECT_EQ(g.nperfiles, kMaxProfiles);
    EXPECT_EQ(hxl::Trim(g.info[kMaxProfiles - 9].prf_name), "p1.xye");
    EXPECT_EQ(hxl::Trim(g.info[kMaxProfiles].prf_name), "p10.xye");
    EXPECT_TRUE(r.failures.empty());  // the limit is its own message, not a failure
    // A full store takes nothing more and says so.
    r = Load_Folder(d.Path());
    EXPECT_TRUE(r.limit_reached);
    EXPECT_TRUE(r.slots.empty());
    EXPECT_EQ(g.nperfiles, kMaxProfiles);

    // Cancelled after the fourth file: four loaded, in order, the rest not read.
    Reset_Store();
    r = Load_Folder(d.Path(), [](int done, int, const std::string&) { return done < 4; });
    EXPECT_TRUE(r.cancelled);
    EXPECT_EQ(r.done, 4);
    EXPECT_EQ(slot_names(), (std::vector<std::string>{"p1.xye", "p2.xye", "p3.xye", "p4.xye"}));

    // 25 failures: 20 lines and the count of the rest.
    ztest::Temp_Dir bad;
    for (int i = 1; i <= 25; ++i) bad.Write("b" + std::to_string(i) + ".xye", "");
    Reset_Store();
    r = Load_Folder(bad.Path());
    EXPECT_TRUE(r.slots.empty());
    ASSERT_EQ(r.failures.size(), 25u);
    EXPECT_EQ(r.failures[1].file, "b2.xye");
    const std::string m = Folder_Failure_Message(r);
    EXPECT_EQ(std::count(m.begin(), m.end(), '\r'), 21);
    EXPECT_NE(m.find("\rb20.xye: empty file\r... and 5 more"), std::string::npos) << m;
    EXPECT_EQ(g.recent[1] == Folder_Recent_Name(bad.Path()), false);  // nothing loaded: not listed
    Reset_Store();
}
