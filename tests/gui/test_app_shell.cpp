// The shell without windows: directories and settings files, script words, the store dump,
// selector lists, conversions and file replacement.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/main/configuration.h"
#include "app/main/script.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/add_profile.h"
#include "app/store/zendrite_param_global.h"

using namespace zendrite;
namespace fs = std::filesystem;

namespace {

struct Shell : ::testing::Test {
    fs::path home, keep_cwd;
    std::string keep_home;
    void SetUp() override {
        keep_cwd = fs::current_path();
        keep_home = std::getenv("HOME") ? std::getenv("HOME") : "";
        home = fs::temp_directory_path() /
               ("zd_shell_" + std::to_string(::getpid()) + ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(home);
        fs::create_directories(home);
        setenv("HOME", home.c_str(), 1);
        unsetenv("CORVANE");
        init_configure();
    }
    void TearDown() override {
        fs::current_path(keep_cwd);
        setenv("HOME", keep_home.c_str(), 1);
        fs::remove_all(home);
    }
    void write(const fs::path& f, const std::string& text) {
        fs::create_directories(f.parent_path());
        std::ofstream(f) << text;
    }
};

}  // namespace

TEST_F(Shell, DirectoriesFromTheSettingsFiles) {
    CONFIGURATION_TYPE& c = Configuration();
    EXPECT_EQ(c.os_tag, "LINU");
    EXPECT_EQ(c.setfile_name, "zendrite-2006.set");
    EXPECT_EQ(c.prog_corvane, "corvane2k");
    // Nothing there: ~/.zdp is made, the last directory stays blank.
    Init_Directories();
    EXPECT_EQ(c.settings_dir, (home / ".zdp").string());
    EXPECT_TRUE(fs::is_directory(home / ".zdp"));
    EXPECT_TRUE(c.last_dir.empty());
    EXPECT_EQ(Preference_File_Name(), (home / ".zdp" / "zendrite-2006.set").string());
    // zendrite.dir gives the last directory and the program changes to it.
    fs::create_directories(home / "work");
    write(home / ".zdp" / "zendrite.dir", (home / "work").string() + "\n");
    Init_Directories();
    EXPECT_EQ(c.last_dir, (home / "work").string());
    EXPECT_EQ(fs::current_path(), home / "work");
    // tcv.set comes first; comments and blank-led lines are skipped, the key in any case.
    fs::create_directories(home / "tcv");
    write(home / ".zdp" / "tcv.set", "! a comment\n LASTD=/nowhere\nother=1\nlastd=" + (home / "tcv").string() + "\n");
    Init_Directories();
    EXPECT_EQ(c.last_dir, (home / "tcv").string());
    EXPECT_EQ(fs::current_path(), home / "tcv");
    // corvane.dir: the second line, with a directory, is the control file; without, it is appended.
    write(home / ".zdp" / "corvane.dir", "first\n/data/run/ni.pcr\n");
    Init_Directories();
    EXPECT_EQ(c.pcr_file, "/data/run/ni.pcr");
    write(home / ".zdp" / "corvane.dir", "first\n\n");
    Init_Directories();
    EXPECT_TRUE(c.pcr_file.empty());
}

TEST_F(Shell, ScriptWords) {
    EXPECT_EQ(Script_Words("  menu   40014  # open"), (std::vector<std::string>{"menu", "40014"}));
    EXPECT_EQ(Script_Words("dialog \"Format of the data file\" radio 101"),
              (std::vector<std::string>{"dialog", "Format of the data file", "radio", "101"}));
    EXPECT_EQ(Script_Words("files \"/a b/c.dat\" d.dat"), (std::vector<std::string>{"files", "/a b/c.dat", "d.dat"}));
    EXPECT_TRUE(Script_Words("# only a comment").empty());
    EXPECT_TRUE(Script_Words("   \t\r").empty());
    EXPECT_EQ(Script_Words("set \"unclosed quote"), (std::vector<std::string>{"set", "unclosed quote"}));
    std::string message;
    EXPECT_FALSE(Load_Script((home / "none.txt").string(), message));
    EXPECT_NE(message.find("none.txt"), std::string::npos);
}

TEST_F(Shell, DumpOfALoadedStore) {
    Reset_Store();
    Enter_None_Mode();
    const LOAD_RESULT r = Load_Data_File(ZD_TEST_DATA "/gui/PSI_DMC.dat", 1);
    ASSERT_TRUE(r.messages.empty()) << r.messages[0];
    ZENDRITE_STORE& g = zendrite_param_global();
    g.info[1].nexcl = 2;
    g.info[1].excl_low(1) = 10, g.info[1].excl_high(1) = 12.5f;
    g.info[1].excl_low(2) = 150, g.info[1].excl_high(2) = 162.898f;
    g.Peak_List.count = 1;
    g.Peak_List.p[1] = {39.6f, 45712, 7000};
    const std::string d = Store_Dump();
    for (const char* line : {"graph_mode none\n", "nperfiles 1\n", "peaks 1\n  39.6 45712 7000\n", "background 0\n",
                             "slot 1\n  prf_name PSI_DMC.dat\n  prf_type DATA\n  prf_format FreeFormat\n",
                             "  npts 3200\n  xmin 2.948\n  xmax 162.898\n", "  step 0.05\n",
                             "  nexcl 2\n    10 12.5\n    150 162.898\n  nrefl 0\n"})
        EXPECT_NE(d.find(line), std::string::npos) << line << "\n--- in ---\n" << d;
    Reset_Store();
    Enter_None_Mode();
    EXPECT_EQ(Store_Dump().find("slot "), std::string::npos);
}

TEST_F(Shell, SelectorListsAndConversions) {
    EXPECT_EQ(Selected_Files("/data/one.dat"), (std::vector<std::string>{"/data/one.dat"}));
    EXPECT_EQ(Selected_Files(std::string("/data\0a.dat\0b.xy", 16)),
              (std::vector<std::string>{"/data/a.dat", "/data/b.xy"}));
    EXPECT_TRUE(Selected_Files("").empty());
    int err = 0;
    EXPECT_EQ(IStringToInteger(" 42 ", err), 42);
    EXPECT_EQ(err, 0);
    IStringToInteger("4x2", err);
    EXPECT_NE(err, 0);
    IStringToInteger("99999999999", err);
    EXPECT_NE(err, 0);
    EXPECT_DOUBLE_EQ(IStringToReal("1.5d3", err), 1500.0);  // the exponent letter of old files
    EXPECT_EQ(err, 0);
    IStringToReal("", err);
    EXPECT_NE(err, 0);
    std::size_t pos = 0;
    const std::string list = "1.5, 2 ,abc";
    EXPECT_DOUBLE_EQ(INextReal(list, pos, err), 1.5);
    EXPECT_DOUBLE_EQ(INextReal(list, pos, err), 2.0);
    INextReal(list, pos, err);
    EXPECT_NE(err, 0);
    EXPECT_EQ(IRealToString(0.25, "%8.3f"), "   0.250");
}

TEST_F(Shell, FileReplacementIsAllOrNothing) {
    const fs::path f = home / "keep.txt";
    ASSERT_TRUE(Write_File_Replace(f.string(), "first\n"));
    ASSERT_TRUE(Write_File_Replace(f.string(), "second\n"));
    std::ifstream in(f);
    std::string s((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_EQ(s, "second\n");
    EXPECT_FALSE(Write_File_Replace((home / "no" / "such" / "dir.txt").string(), "x"));
    int files = 0;
    for (const auto& e : fs::directory_iterator(home)) files += e.is_regular_file() ? 1 : 0;
    EXPECT_EQ(files, 1) << "no temporary file is left behind";
    const FILE_INFO_TYPE info = IOsFileInfo(f.string());
    EXPECT_EQ(info.size, 7);
    EXPECT_EQ(IOsFileInfo((home / "missing").string()).size, -1);
    EXPECT_EQ(File_Time_Stamp((home / "missing").string()), -1);
    EXPECT_EQ(File_Time_Stamp(f.string()), info.hour * 10000 + info.minute * 100 + info.second);
}
