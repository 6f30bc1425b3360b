// Launching without a shell: hostile file names reach a recording script on
// PATH as single literal arguments and run nothing; a missing program is
// named with the places looked in, and nothing starts.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "extprog/os_commands.h"
#include "extprog/run_command.h"

namespace fs = std::filesystem;

namespace {

struct Launch : ::testing::Test {
    fs::path dir, bin, record;
    std::string old_path;
    void SetUp() override {
        dir = fs::temp_directory_path() / ("zd_launch_" + std::to_string(::getpid()));
        fs::remove_all(dir);
        bin = dir / "bin";
        fs::create_directories(bin);
        record = dir / "args.txt";
        // one argument a line, each between brackets, so blanks at the ends show
        std::ofstream(bin / "dicvol06") << "#!/bin/sh\nfor a in \"$@\"; do printf '[%s]\\n' \"$a\"; done > '"
                                        << record.string() << "'\n";
        fs::permissions(bin / "dicvol06", fs::perms::owner_all);
        const char* p = std::getenv("PATH");
        old_path = p ? p : "";
        ::setenv("PATH", (bin.string() + ":" + old_path).c_str(), 1);
    }
    void TearDown() override {
        ::setenv("PATH", old_path.c_str(), 1);
        fs::remove_all(dir);
    }
    std::string recorded() const {
        std::ifstream in(record);
        std::stringstream s;
        s << in.rdbuf();
        return s.str();
    }
};

}  // namespace

TEST_F(Launch, HostileNamesAreSingleLiteralArguments) {
    const fs::path marker = dir / "ran";
    const std::string m = marker.string();
    const std::vector<std::string> names = {
        "a b.dic", "x; touch " + m, "$(touch " + m + ")", "`touch " + m + "`", "it's \"q\".dic",
        "-rf.dic", "--help", " lead and trail ", "| touch " + m, "&& touch " + m, "*.dic"};
    std::string expected;
    std::vector<std::string> argv{"dicvol06"};
    for (const std::string& n : names) {
        argv.push_back(hxl::File_Argument(n));
        expected += "[" + (n[0] == '-' ? "./" + n : n) + "]\n";
    }
    int status = -1;
    std::string message;
    ASSERT_TRUE(hxl::Run_Command(argv, true, "", status, message)) << message;
    EXPECT_EQ(status, 0);
    EXPECT_EQ(recorded(), expected);
    EXPECT_FALSE(fs::exists(marker));

    // the composed command of a sibling: the file as one argument, Pellan with its keyword
    fs::copy_file(bin / "dicvol06", bin / "pellan");
    const std::string f = (dir / "my run; rm -rf x.inp").string();
    ASSERT_TRUE(hxl::Run_Command(hxl::Sibling_Command(hxl::SIBLING::Pellan, "LINU", f), true, "", status, message));
    EXPECT_EQ(recorded(), "[-fil]\n[" + f + "]\n");
    EXPECT_EQ(hxl::Sibling_Command(hxl::SIBLING::Dicvol, "WIND", "-a.dic"),
              (std::vector<std::string>{"dicvol06.exe", "./-a.dic"}));
    EXPECT_EQ(hxl::Helper_Command("open -a finder", {"/x y"}), (std::vector<std::string>{"open", "-a", "finder", "/x y"}));
}

TEST_F(Launch, ProgramDirectoryFirstThenPath) {
    const fs::path own = dir / "own";
    fs::create_directories(own);
    std::ofstream(own / "dicvol06") << "#!/bin/sh\necho own > '" << record.string() << "'\n";
    fs::permissions(own / "dicvol06", fs::perms::owner_all);
    int status = -1;
    std::string message;
    ASSERT_TRUE(hxl::Run_Command({"dicvol06", "f.dic"}, true, own.string(), status, message)) << message;
    EXPECT_EQ(recorded(), "own\n");
    // a file without the execute bit is not a program
    std::ofstream(own / "ito15") << "#!/bin/sh\n";
    std::string looked;
    EXPECT_EQ(hxl::Find_Program("ito15", own.string(), bin.string(), looked), "");
    EXPECT_EQ(looked, "the program directory " + own.string() + "; PATH " + bin.string());
}

TEST_F(Launch, MissingProgramIsNamedAndNothingRuns) {
    int status = 7;
    std::string message;
    EXPECT_FALSE(hxl::Run_Command({"treor90", "x.inp"}, true, (dir / "nowhere").string(), status, message));
    EXPECT_EQ(message.rfind("The program \"treor90\" was not found.\rLooked in: the program directory " +
                                (dir / "nowhere").string() + "; PATH " + bin.string() + ":",
                            0),
              0u)
        << message;
    EXPECT_EQ(status, -1);
    EXPECT_FALSE(hxl::Run_Command({}, true, "", status, message));
    EXPECT_FALSE(hxl::Run_Command({"/no/such/prog"}, false, "", status, message));
    EXPECT_NE(message.find("Looked in: /no/such/prog"), std::string::npos) << message;
    EXPECT_FALSE(fs::exists(record));
}

// A started program runs in the folder asked for, is seen to end without
// waiting, and a stop ends it and what it started; a folder that does not
// exist starts nothing.
TEST_F(Launch, StartedProgramInItsFolderAndItsStop) {
    fs::create_directories(dir / "work");
    std::ofstream(bin / "corvane2k") << "#!/bin/sh\npwd > '" << record.string() << "'\nexit 4\n";
    fs::permissions(bin / "corvane2k", fs::perms::owner_all);
    hxl::RUNNING_PROGRAM p;
    std::string message;
    ASSERT_TRUE(hxl::Start_Program({"corvane2k", "x.pcr"}, "", p, message, (dir / "work").string())) << message;
    int status = 0;
    for (int i = 0; i < 500 && !hxl::Program_Ended(p, status); ++i) ::usleep(10000);
    EXPECT_EQ(p.pid, 0);
    EXPECT_EQ(status, 4);
    EXPECT_EQ(recorded(), (dir / "work").string() + "\n");

    // A child of the program outlives it unless the stop takes the group.
    const fs::path late = dir / "late";
    std::ofstream(bin / "tindra") << "#!/bin/sh\n(sleep 1; touch '" << late.string() << "') &\nsleep 30\n";
    fs::permissions(bin / "tindra", fs::perms::owner_all);
    ASSERT_TRUE(hxl::Start_Program({"tindra"}, "", p, message)) << message;
    ::usleep(100000);
    EXPECT_FALSE(hxl::Program_Ended(p, status));
    hxl::Stop_Program(p);
    EXPECT_EQ(p.pid, 0);
    ::usleep(1500000);
    EXPECT_FALSE(fs::exists(late));

    fs::remove(record);
    EXPECT_FALSE(hxl::Start_Program({"corvane2k"}, "", p, message, (dir / "absent").string()));
    EXPECT_NE(message.find(" in " + (dir / "absent").string()), std::string::npos) << message;
    ::usleep(100000);
    EXPECT_FALSE(fs::exists(record));
}

TEST(OsCommandTable, EachTagAndNoOther) {
    hxl::OS_COMMAND_TABLE_TYPE t;
    ASSERT_TRUE(hxl::Os_Command_Table("LINU", t));
    EXPECT_EQ(t.console, "xterm");
    EXPECT_EQ(t.text_editor, "gedit");
    EXPECT_EQ(t.file_explorer, "gnome-open");
    ASSERT_TRUE(hxl::Os_Command_Table("MACO", t));
    EXPECT_EQ(t.unpacker, "");
    EXPECT_EQ(t.file_explorer, "open -a finder");
    ASSERT_TRUE(hxl::Os_Command_Table("WIND", t));
    EXPECT_EQ(t.text_editor, "notepad.exe");
    EXPECT_FALSE(hxl::Os_Command_Table("linu", t));
    EXPECT_FALSE(hxl::Os_Command_Table("UNKN", t));
    EXPECT_EQ(hxl::Sibling_Program(hxl::SIBLING::Corvane, "WIND"), "wcorvane2k.exe");
    EXPECT_EQ(hxl::Sibling_Program(hxl::SIBLING::Corvane, "LINU"), "corvane2k");
}
