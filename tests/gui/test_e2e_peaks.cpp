// End-to-end: the automatic background and peak searches on the real CeO2
// pattern through their conditions dialogs, the lists in the dump, the
// result files, a cancelled dialog and a flat pattern.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

struct Peaks : SCRIPTED_HOME {};

}  // namespace

TEST_F(Peaks, AutoBackgroundThenAutoPeaksOnCeria) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy");
    std::ofstream(home / "flat.xy") << "5.0 7\n5.1 7\n5.2 7\n5.3 7\n5.4 7\n5.5 7\n5.6 7\n5.7 7\n5.8 7\n5.9 7\n";
    const std::string s = "files " + at("ceo2.xy") + "\nmenu 40014\nmenu 40096\n" +
                          "dialog 1961 press 1\nmenu 40159\n" +
                          "dialog 1960 press 1\nmenu 40092\n" + "picture 0 " + at("peaks.png") + "\n" +
                          "dump " + at("d1.txt") + "\n" +
                          // a cancelled dialog changes nothing and says nothing
                          "dialog 1960 set 5 9\ndialog 1960 press 2\nmenu 40092\n" + "dump " + at("d2.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    const std::string d1 = file("d1.txt");
    EXPECT_EQ(value(d1, "peaks"), "16") << d1;
    const int nb = std::stoi(value(d1, "background"));
    EXPECT_GE(nb, 10);
    EXPECT_LE(nb, 39);  // int(sqrt(1533)) zones
    EXPECT_NE(d1.find("\n  7.46"), std::string::npos);   // 111
    EXPECT_NE(d1.find("\n  28.86"), std::string::npos);  // 622
    EXPECT_EQ(file("d2.txt"), d1);
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006"), 0) << out;
    // The search leaves its files in the working folder.
    EXPECT_EQ(count(file("peak.aps"), "\n"), 3 + 16);
    EXPECT_NE(file("background.xy").find("! Position      Background_value"), std::string::npos);
    EXPECT_GT(fs::file_size(home / "peaks.png"), 1000u);
    fs::copy_file(home / "peaks.png", home / "kept.png");
    // A flat pattern: the text, and the lists stay empty.
    run("files " + at("flat.xy") + "\nmenu 40014\nmenu 40096\ndialog 1960 press 1\nmenu 40092\ndump " + at("d3.txt") +
        "\n");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 |  The number of determined background points is too low"),
              std::string::npos)
        << out;
    EXPECT_EQ(value(file("d3.txt"), "peaks"), "0");
    if (const char* keep = std::getenv("ZD_KEEP_PICTURE")) fs::copy_file(home / "kept.png", keep, fs::copy_options::overwrite_existing);
}
