// The argument text of a sequential refinement, worked by hand from the form, and its script.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "extprog/sequential_run.h"

namespace {

TEST(SequentialRun, ArgumentsSwitchesAndScript) {
    hxl::SEQUENTIAL_FORM_TYPE f;
    f.pcr = " ni.pcr ";
    f.code = "ni_.dat";
    f.first = 5, f.last = 120;
    EXPECT_EQ(hxl::Sequential_Arguments(f), "seq ni.pcr ni_.dat 5 120 Y N N N N");
    f.prf = false, f.hkl = true, f.mic = true, f.dis = false, f.calc = true, f.out = true;
    f.temperatures = "temps.txt";
    EXPECT_EQ(hxl::Sequential_Arguments(f), "seq ni.pcr ni_.dat 5 120 N Y Y N Y +OUT -temp temps.txt");
    // last below first, and negative, are passed on as they stand
    f.first = 30, f.last = -2, f.out = false, f.temperatures = "  ";
    EXPECT_EQ(hxl::Sequential_Arguments(f), "seq ni.pcr ni_.dat 30 -2 N Y Y N Y");
    EXPECT_EQ(hxl::Sequential_Words(hxl::Sequential_Arguments(f)).size(), 10u);
    EXPECT_EQ(hxl::Sequential_Script_Name("run/ni.pcr", "LINU"), "run/ni.pcr_FPseq.sh");
    EXPECT_EQ(hxl::Sequential_Script_Name("ni", "MACO"), "ni_FPseq.sh");
    EXPECT_EQ(hxl::Sequential_Script_Name("ni", "WIND"), "ni_FPseq.bat");

    // The script gains a line a run, and can be run.
    const std::filesystem::path dir = std::filesystem::temp_directory_path() / "zd_seq_script";
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    const std::string script = (dir / "ni.pcr_FPseq.sh").string();
    std::string msg;
    ASSERT_TRUE(hxl::Append_Sequential_Script(script, "seq a b 1 2 Y N N N N", "LINU", msg)) << msg;
    ASSERT_TRUE(hxl::Append_Sequential_Script(script, "seq a b 3 4 Y N N N N", "LINU", msg)) << msg;
    std::ifstream in(script);
    std::stringstream text;
    text << in.rdbuf();
    EXPECT_EQ(text.str(), "corvane2k seq a b 1 2 Y N N N N\ncorvane2k seq a b 3 4 Y N N N N\n");
    EXPECT_NE(std::filesystem::status(script).permissions() & std::filesystem::perms::owner_exec,
              std::filesystem::perms::none);
    // a folder that is not there: told, nothing made
    EXPECT_FALSE(hxl::Append_Sequential_Script((dir / "no" / "x.sh").string(), "seq", "LINU", msg));
    EXPECT_NE(msg.find("could not be written"), std::string::npos) << msg;
    std::filesystem::remove_all(dir);
}

}  // namespace
