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

// The five peak formats and the background through their dialogs, the
// overwrite question answered both ways, the four indexing inputs in one
// folder, and the refusals: an empty list and a folder that can't be written.
TEST_F(Peaks, SaveEveryFormatThroughItsDialogs) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy");
    std::ofstream(home / "kept.aps") << "old\n";
    fs::create_directories(home / "all");
    const std::string s = "files " + at("ceo2.xy") + "\nmenu 40014\nmenu 40096\n" +
                          "dialog 1961 press 1\nmenu 40159\ndialog 1960 press 1\nmenu 40092\n" +
                          "files " + at("p.aps") + "\nmenu 40010\n" +
                          // Dicvol: 5 lines used of 16, the orthorhombic system off
                          "dialog 1962 set 2 5\ndialog 1962 check 23 0\ndialog 1962 press 1\nfiles " + at("c") +
                          "\nanswer 2\nmenu 40098\n" +
                          // Ito with a zero wavelength
                          "dialog 1963 set 30 0\ndialog 1963 press 1\nfiles " + at("c.ito") + "\nanswer 2\nmenu 40160\n" +
                          // Treor: beta 0 and cell edge 0
                          "dialog 1964 set 32 0\ndialog 1964 set 30 0\ndialog 1964 press 1\nfiles " + at("c.inp") +
                          "\nanswer 2\nmenu 40191\n" +
                          "dialog 1965 radio 11\ndialog 1965 check 20 1\ndialog 1965 press 1\nfiles " + at("c.sat") +
                          "\nanswer 2\nmenu 40177\n" +
                          "files " + at("b") + "\nmenu 40002\n" +
                          // an existing file kept, then replaced
                          "files " + at("kept.aps") + "\nanswer 2\nmenu 40010\ndump " + at("k1.txt") + "\n" +
                          "files " + at("kept.aps") + "\nanswer 1\nmenu 40010\n" +
                          // a cancelled dialog writes nothing
                          "dialog 1963 press 2\nmenu 40160\n" +
                          "dir " + at("all") + "\nmenu 40243\n" +
                          "files /nonexistent_zd/x.aps\nmenu 40010\n" +
                          "menu 40147\nmenu 40010\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    const std::string aps = file("p.aps");
    EXPECT_EQ(aps.rfind("! Data file : ceo2.xy\n! Format    : ", 0), 0u) << aps;
    EXPECT_EQ(count(aps, "\n"), 3 + 16);
    EXPECT_NE(aps.find("\n        7.4"), std::string::npos) << aps;  // 111, (3f15.5)

    const std::string dic = file("c.dic");
    EXPECT_EQ(dic.rfind("# Input file for WDICVOL06/14\n# created by Zendrite-2006:", 0), 0u) << dic;
    EXPECT_NE(dic.find("\n   5   2   1   1   1   0   0   0                      ! N,ITYPE"), std::string::npos) << dic;
    EXPECT_NE(dic.find("  25.0  25.0  25.0      0.0   2500.0  90.0 125.0      ! AMAX"), std::string::npos) << dic;
    EXPECT_EQ(count(dic, "\n"), 10 + 16);  // every peak, not only the five used

    const std::string ito = file("c.ito");
    EXPECT_NE(ito.find("\n9\n   0.00000   4.00000  14.00000   0.00000\n"), std::string::npos) << ito;
    EXPECT_EQ(count(ito, "\n"), 3 + 16 + 2);
    EXPECT_EQ(ito.substr(ito.size() - 9), "0.0 \nEND\n");

    const std::string inp = file("c.inp");
    EXPECT_EQ(inp.find("MONO="), std::string::npos) << inp;
    EXPECT_NE(inp.find("\n  CHOICE=2,\n"), std::string::npos) << inp;
    EXPECT_NE(inp.find("\n  CEM=  20.,\n"), std::string::npos) << inp;
    EXPECT_NE(inp.find("\n  MERIT=  10.,\n  END*\n"), std::string::npos) << inp;

    const std::string sat = file("c.sat");
    EXPECT_NE(sat.find("\nLONG-OUTPUT\nK_COMMENSURATE\nCWTOL "), std::string::npos) << sat;
    EXPECT_NE(sat.find("\n2THETA_LIST     16\n"), std::string::npos) << sat;

    const std::string bgr = file("b.bgr");
    EXPECT_NE(bgr.find("! Position      Background_value\n"), std::string::npos) << bgr;
    EXPECT_GE(count(bgr, "\n"), 3 + 10);

    // "No" keeps the old file; "Yes" replaces it; the question is asked each time.
    EXPECT_EQ(count(out, "MESSAGE Over Write this file? | The file exist, / Do you want overwrite it?"), 2) << out;
    EXPECT_EQ(file("kept.aps"), aps);
    EXPECT_EQ(value(file("k1.txt"), "peaks"), "16");

    for (const char* ext : {".dic", ".ito", ".inp", ".sat"})
        EXPECT_TRUE(fs::exists(home / "all" / (std::string("ceo2") + ext))) << ext;
    // the folder's inputs carry the dialogs' defaults: all 16 lines used, the first four systems
    EXPECT_NE(read(home / "all" / "ceo2.dic").find("\n  16   2   1   1   1   1   0   0 "), std::string::npos);
    EXPECT_NE(read(home / "all" / "ceo2.inp").find("\n  MONO=125.00,\n"), std::string::npos);
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Written in " + at("all") + ": / ceo2.dic / ceo2.ito / ceo2.inp / ceo2.sat"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Unable to write peaks data file!"), std::string::npos) << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | No peaks has been selected"), std::string::npos) << out;
    EXPECT_FALSE(fs::exists("/nonexistent_zd"));
}

// "Do you want to run DICVOL?" answered Yes runs the program found on PATH with
// the file as its one argument, whatever the name holds; ITO15, not installed,
// is named with the places looked in, and leaves no copy of its input.
TEST_F(Peaks, RunQuestionAfterSave) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy");
    fs::create_directories(home / "bin");
    std::ofstream(home / "bin" / "dicvol06") << "#!/bin/sh\nfor a in \"$@\"; do printf '[%s]\\n' \"$a\"; done > '"
                                             << at("args.tmp") << "'\nmv '" << at("args.tmp") << "' '" << at("args.txt")
                                             << "'\n";
    fs::permissions(home / "bin" / "dicvol06", fs::perms::owner_all);
    const std::string hostile = at("x; touch $(echo ran) `touch ran2` 'q'.dic");
    const std::string s = "files " + at("ceo2.xy") + "\nmenu 40014\nmenu 40096\ndialog 1960 press 1\nmenu 40092\n" +
                          "dialog 1962 press 1\nfiles \"" + hostile + "\"\nanswer 1\nmenu 40098\n" +
                          "dialog 1963 press 1\nfiles " + at("c.ito") + "\nanswer 1\nmenu 40160\n" +
                          // the menu item with its selector runs the same program
                          "files " + at("c.ito") + "\nmenu 40192\n";
    run(s, "PATH='" + at("bin") + "':\"$PATH\"");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_TRUE(fs::exists(hostile));
    EXPECT_EQ(count(out, "MESSAGE Running DICVOL | Do you want to run DICVOL?"), 1) << out;
    EXPECT_EQ(count(out, "MESSAGE Running ITO15 | Do you want to run ITO15?"), 1) << out;
    // the program is not waited for
    for (int i = 0; i < 100 && !fs::exists(home / "args.txt"); ++i) ::usleep(50000);
    EXPECT_EQ(file("args.txt"), "[" + hostile + "]\n");
    EXPECT_FALSE(fs::exists(home / "ran"));
    EXPECT_FALSE(fs::exists(home / "ran2"));
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | The program \"ito15\" was not found. / Looked in: "), 2) << out;
    EXPECT_NE(out.find("PATH " + at("bin") + ":"), std::string::npos) << out;
    EXPECT_FALSE(fs::exists(home / "ito_inp.dat"));
}

// Search peaks in zone: a band drawn over the 111 and 200 lines of ceria adds
// the peaks inside it and keeps the list's peaks outside it.
TEST_F(Peaks, SearchPeaksInADraggedZone) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy");
    const std::string s = "files " + at("ceo2.xy") + "\nmenu 40014\nmenu 40096\nmenu 40093\nmouse press 1 20.0 100\n" +
                          "menu 40242\nmouse press 1 7.0 100\nmouse move 0 8.0 100\nmouse release 1 9.0 100\n" +
                          "dump " + at("d.txt") + "\n" +
                          // a zone of fewer than ten points
                          "menu 40242\nmouse press 1 7.40 100\nmouse release 1 7.41 100\ndump " + at("e.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    const std::string d = file("d.txt");
    EXPECT_EQ(value(d, "peaks"), "3") << d;
    EXPECT_NE(d.find("\n  7.4"), std::string::npos) << d;  // 111
    EXPECT_NE(d.find("\n  8.6"), std::string::npos) << d;  // 200
    EXPECT_NE(d.find("\n  20 "), std::string::npos) << d;   // kept
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Number of points < 10"), std::string::npos) << out;
    EXPECT_EQ(value(file("e.txt"), "peaks"), "3");
}
