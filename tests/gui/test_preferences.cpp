// The preference file: written and read back equal; a cut file names its section.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/main/configuration.h"
#include "app/main/preferences.h"
#include "app/present.h"

using namespace zendrite;
namespace fs = std::filesystem;

namespace {
fs::path temp_file(const std::string& name) {
    const fs::path dir = fs::temp_directory_path() / ("zd_prefs_" + std::to_string(::getpid()));
    fs::create_directories(dir);
    return dir / name;
}
}  // namespace

TEST(Preferences, WrittenAndReadBackEqual) {
    PREFERENCES_TYPE p;
    Set_Default_Preferences(p);
    EXPECT_EQ(p.multi_title, "Plot multi file");
    EXPECT_EQ(p.style[7].line_colour, 255);  // the colour cycle repeats from style 7
    EXPECT_EQ(p.contour_levels, 20);
    p.win_width = 1024;
    p.corvane_dir = "/opt/corvane suite";
    p.style[3].marker = 5;
    p.single_title = "A title with blanks  ";
    p.surface_shading = 2;
    const fs::path f = temp_file("a.set");
    ASSERT_TRUE(Write_File_Replace(f.string(), Preferences_Text(p, "Zendrite-2006 Version: 5.10")));
    std::ifstream in(f);
    int lines = 0;
    for (std::string s; std::getline(in, s);) ++lines;
    EXPECT_EQ(lines, 59);
    PREFERENCES_TYPE q;
    Set_Default_Preferences(q);
    bool error = true;
    std::string message;
    Read_Preferences(f.string(), q, error, message);
    EXPECT_FALSE(error) << message;
    EXPECT_EQ(q, p);
}

TEST(Preferences, CutFileGivesTheMessageOfItsSection) {
    PREFERENCES_TYPE p;
    Set_Default_Preferences(p);
    const std::string full = Preferences_Text(p, "Zendrite-2006 Version: 5.10");
    struct CASE {
        int keep;
        const char* message;
    };
    for (const CASE c : {CASE{0, "Error reading line 1 of header"}, CASE{4, "Error reading title section environment"},
                         CASE{10, "Error reading enviroment preferences values"},
                         CASE{20, "Error reading setting of profiles data"},
                         CASE{30, "Error reading graphic 2D preferences values"},
                         CASE{41, "Error reading PRF preferences values"},
                         CASE{47, "Error reading graphic 2D contour preferences values"},
                         CASE{58, "Error reading QuickView preferences values"}}) {
        std::istringstream is(full);
        std::string cut, line;
        for (int i = 0; i < c.keep && std::getline(is, line); ++i) cut += line + "\n";
        const fs::path f = temp_file("cut.set");
        ASSERT_TRUE(Write_File_Replace(f.string(), cut));
        PREFERENCES_TYPE q;
        Set_Default_Preferences(q);
        q.win_width = 4321;
        bool error = false;
        std::string message;
        Read_Preferences(f.string(), q, error, message);
        EXPECT_TRUE(error) << c.keep;
        EXPECT_EQ(message, c.message) << c.keep;
        EXPECT_EQ(q.win_width, 4321) << "a failed read leaves the settings alone";
    }
    bool error = false;
    std::string message;
    PREFERENCES_TYPE q;
    Read_Preferences(temp_file("missing.set").string(), q, error, message);
    EXPECT_TRUE(error);
    EXPECT_EQ(message, "Unable to read setting file");
}

TEST(Preferences, LettersWhereNumbersBelongFail) {
    PREFERENCES_TYPE p;
    Set_Default_Preferences(p);
    std::string text = Preferences_Text(p, "Zendrite-2006 Version: 5.10");
    std::istringstream is(text);
    std::string out, line;
    for (int i = 1; std::getline(is, line); ++i) out += (i == 4 ? std::string("800 abc 1 2 1") : line) + "\n";
    const fs::path f = temp_file("bad.set");
    ASSERT_TRUE(Write_File_Replace(f.string(), out));
    bool error = false;
    std::string message;
    Read_Preferences(f.string(), p, error, message);
    EXPECT_TRUE(error);
    EXPECT_EQ(message, "Error reading main window preferences values");
}
