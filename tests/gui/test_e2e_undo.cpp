// End-to-end: every command that changes the store is undone and redone through the Edit
// items, with the dumps before and after compared byte for byte; a long session of mixed
// steps on fifty real patterns goes back to its start and forward to its end.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

const std::string kData = ZD_TEST_DATA;
const std::string kFreeFormat =
    "dialog \"Format of the data file\" radio 101\ndialog \"Format of the data file\" press 1\n";

struct Undo : SCRIPTED_HOME {
    struct STEP {
        std::string name;  // the step undone after the command: its own, or the one before
        bool changes = true;
    };
    std::vector<STEP> steps;
    std::string script;

    std::string dump(const std::string& name) const { return "dump " + at(name) + "\n"; }
    std::string d(std::size_t i, const char* which) const { return "d" + std::to_string(i) + which + ".txt"; }

    // The command's lines between a dump before and one after, then undo, dump, redo, dump.
    void step(const std::string& name, const std::string& lines, bool changes = true) {
        const std::size_t i = steps.size();
        steps.push_back({name, changes});
        script += dump(d(i, "a")) + lines + dump(d(i, "b")) + "undo\nstatus " + at("s" + std::to_string(i) + ".txt") +
                  "\n" + dump(d(i, "c")) + "redo\n" + dump(d(i, "d"));
    }

    void check() {
        for (std::size_t i = 0; i < steps.size(); ++i) {
            const std::string a = file(d(i, "a")), b = file(d(i, "b")), c = file(d(i, "c")), e = file(d(i, "d"));
            SCOPED_TRACE(steps[i].name);
            ASSERT_FALSE(a.empty());
            EXPECT_NE(file("s" + std::to_string(i) + ".txt").find("status 1 Undone: " + steps[i].name),
                      std::string::npos)
                << file("s" + std::to_string(i) + ".txt");
            EXPECT_EQ(b, e) << "redo did not give back the store after the command";
            if (steps[i].changes) {
                EXPECT_NE(a, b) << "the command changed nothing\n" << out;
                EXPECT_EQ(a, c) << "undo did not give back the store before the command";
            }
        }
    }
};

}  // namespace

TEST_F(Undo, ProfileArithmeticSmoothingXSpaceRegionsAndReset) {
    fs::copy_file(kData + "/patterns/PSI_DMC.dat", home / "psi.dat");
    fs::copy_file(kData + "/patterns/PSI_DMC.dat", home / "psi2.dat");
    step("Open pattern file", "files " + at("psi.dat") + "\n" + kFreeFormat + "menu 40014\n");
    step("Open pattern file", "files " + at("psi2.dat") + "\n" + kFreeFormat + "menu 40014\n");
    step("Copy profile", "menu 40102\n");
    step("Conversion to d", "menu 40017\n");
    step("Conversion to Q", "menu 40089\n");
    step("Conversion to 2theta", "menu 40042\n");
    step("Change wavelength", "dialog \"Change wavelength\" set 11 1.5406\ndialog \"Change wavelength\" press 12\n"
                              "dialog \"Change wavelength\" press 1\nmenu 40087\n");
    step("Open recent file", kFreeFormat + "menu 40038\n");
    step("Show", "dialog \"GRAPH SHOW\" grid 10 2 3 0\ndialog \"GRAPH SHOW\" press 1\nmenu 40023\n");
    step("Sorting", "dialog \"Sorting profiles\" grid 10 1 4 2\ndialog \"Sorting profiles\" grid 10 2 4 1\n"
                    "dialog \"Sorting profiles\" radio 23\nmenu 40025\n");
    step("Shift", "dialog 143 set 1336 5\ndialog 143 press 1\nmenu 40141\n");
    const std::string two_rows = "dialog 141 grid 1331 1 4 1\ndialog 141 grid 1331 2 4 1\ndialog 141 press 1\n";
    step("Summation", two_rows + "menu 40100\n");
    step("Average", two_rows + "menu 40123\n");
    step("Difference", "dialog 139 set 1226 1\ndialog 139 set 1227 2\ndialog 139 press 1\nmenu 40101\n");
    step("Offset/Align",
         "dialog 105 grid 1340 2 2 1\ndialog 105 set 1341 0.5\ndialog 105 set 1342 100\ndialog 105 press 1\nmenu 40149\n");
    step("Scaling Y", "dialog 152 press 1332\ndialog 152 set 1413 0\ndialog 152 set 1414 1\ndialog 152 set 1415 2\n"
                      "dialog 152 press 1\nmenu 40115\n");
    // Scaling X handed over to the mouse: the drag is the step
    script += "dialog 153 grid 1340 1 2 1\ndialog 153 press 1411\nmenu 40124\n"
              "mouse press 1 20 8000\nmouse release 1 20 8000\n";  // the pivot
    step("Scaling X by the mouse", "mouse press 1 50 8000\nmouse move 1 60 8000\nmouse release 1 60 8000\n");
    step("Multiply Y / Shift X", "dialog 159 grid 1527 1 2 1\ndialog 159 grid 1527 1 3 1\ndialog 159 grid 1527 1 4 2\n"
                                 "menu 40162\nbutton 159 1532\nbutton 159 1534\nbutton 159 1533\n");
    step("Efficiency correction", "files " + at("zendrite-2006.eff") + "\nmenu 40163\n");
    step("Normalize (monitor)", "dialog 146 set 1346 5e7\ndialog 146 press 1\nmenu 40026\n");
    step("Fourier filtering", "dialog 140 radio 1021\ndialog 140 set 1282 5\ndialog 140 press 1\nmenu 40020\n");
    step("Polynomial filtering", "dialog 140 radio 1021\ndialog 140 press 1\nmenu 40090\n");
    step("Fourier filtering", "dialog 140 radio 1020\ndialog 140 set 1282 5\ndialog 140 check 1330 1\n"
                              "dialog 140 press 1\nmenu 40020\n");
    step("Insert excluded regions", "dialog 121 set 1224 30\ndialog 121 set 1225 40\ndialog 121 press 1\nmenu 40151\n");
    step("Insert excluded regions", "dialog 121 set 1224 60\ndialog 121 set 1225 70\ndialog 121 press 1\nmenu 40151\n");
    step("Admin excluded regions",
         "answer 1\ndialog 110 set 1319 2\ndialog 110 press 1321\ndialog 110 press 1\nmenu 40034\n");
    step("Delete", "dialog \"Delete profiles\" grid 10 1 3 1\ndialog \"Delete profiles\" press 1\nmenu 40037\n");
    // A cancelled or refused command records nothing: the undo after it takes back the Delete.
    step("Delete", "dialog 143 set 1336 abc\ndialog 143 press 1\nmenu 40141\n", false);
    step("Delete", "dialog 146 set 1346 -4\ndialog 146 press 1\nmenu 40026\n", false);
    step("Reset", "menu 40019\n");
    run(script);
    ASSERT_EQ(status, 0) << out << err;
    check();
}

TEST_F(Undo, PeakAndBackgroundListsByCommandAndByMouse) {
    fs::copy_file(kData + "/patterns/PSI_DMC.dat", home / "psi.dat");
    script = "files " + at("psi.dat") + "\n" + kFreeFormat + "menu 40014\nmenu 40096\n";
    step("Peak auto detection", "dialog 1960 press 1\nmenu 40092\n");
    script += "menu 40093\n";
    step("Insert peak", "mouse press 1 21.3 900\nmouse release 1 21.3 900\n");
    script += "menu 40094\n";
    step("Delete peak", "mouse press 1 21.3 900\nmouse release 1 21.3 900\n");
    step("Clear all peaks", "menu 40147\n");
    script += "menu 40097\nmenu 40138\n";
    step("Background auto detection", "dialog 1961 press 1\nmenu 40159\n");
    script += "menu 40144\n";
    step("Insert background point", "mouse press 1 50 300\nmouse release 1 50 300\n");
    step("Clear all background points", "menu 40148\n");
    script += "menu 40139\nmenu 40110\n";
    step("Excluded region", "mouse press 1 80 8000\nmouse move 1 60 8000\nmouse release 1 40 8000\n");
    // A zoom by the mouse is a change of view, not a step.
    script += "menu 40113\n";
    step("Excluded region", "mouse press 1 20 8000\nmouse move 1 40 100\nmouse release 1 40 100\n", false);
    run(script);
    ASSERT_EQ(status, 0) << out << err;
    check();
}

TEST_F(Undo, ProfileFitAndTheFilesOfEveryKind) {
    fs::copy_file(kData + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy");
    fs::copy_file(kData + "/gui/two_phase.prf", home / "two.prf");
    fs::create_directories(home / "series");
    for (int k = 1; k <= 3; ++k) fs::copy_file(kData + "/patterns/PSI_DMC.dat", home / "series" / ("r" + std::to_string(k) + ".dat"));
    step("Open pattern file", "files " + at("ceo2.xy") + "\nmenu 40014\n");
    script += "menu 40095\n";
    step("Profile fitting", "dialog 1961 press 1\ndialog 1960 press 1\n"
                            "dialog 1970 grid 12 1 1 0.01\ndialog 1970 grid 12 2 1 0.01\n"
                            "dialog 1970 grid 12 1 2 1\ndialog 1970 grid 12 2 2 1\ndialog 1970 press 1\nmenu 40150\n");
    script += "menu 40099\nfiles " + at("set") + "\nmenu 40009\n";
    step("Reset", "menu 40019\n");
    step("Open buffer file",
         "files " + at("set.buf") + "\ndialog \"Format of the data file\" radio 109\nmenu 40015\n");
    step("Open profile file", "files " + at("two.prf") + "\nmenu 40016\n");
    step("Reset", "menu 40019\n");
    step("Open folder", "dir " + at("series") + "\n" + kFreeFormat + "menu 40230\n");
    step("Open dropped files", "drop " + at("ceo2.xy") + "\n");
    script += "history " + at("h.txt") + "\n";
    run(script);
    ASSERT_EQ(status, 0) << out << err;
    check();
    // Each step was undone and redone: all eight are held, the last one applied.
    EXPECT_EQ(value(file("h.txt"), "position"), "8");
    EXPECT_EQ(value(file("h.txt"), "steps"), "8");
}

TEST_F(Undo, EmptyHistoryAndRedoAfterANewChangeSaySo) {
    fs::copy_file(kData + "/patterns/PSI_DMC.dat", home / "psi.dat");
    const std::string open = "files " + at("psi.dat") + "\n" + kFreeFormat + "menu 40014\n";
    run("undo\nstatus " + at("s0.txt") + "\n" + open + dump("d1.txt") + "menu 40017\nundo\n" +
        // a new change after an undo drops the redo branch
        "dialog 143 set 1336 5\ndialog 143 press 1\nmenu 40141\n" + dump("d2.txt") + "redo\nstatus " + at("s1.txt") +
        "\n" + dump("d3.txt") + "history " + at("h.txt") + "\n");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_NE(file("s0.txt").find("status 1 Nothing to undo"), std::string::npos) << file("s0.txt");
    EXPECT_NE(file("s1.txt").find("status 1 Nothing to redo"), std::string::npos) << file("s1.txt");
    EXPECT_EQ(file("d2.txt"), file("d3.txt"));
    EXPECT_EQ(value(file("d2.txt"), "xspace"), "2theta");
    const std::string h = file("h.txt");
    EXPECT_EQ(value(h, "steps"), "2");
    EXPECT_NE(h.find("  Open pattern file\n  Shift\n"), std::string::npos) << h;
}

// Fifty real patterns, two hundred mixed steps: all undone back to the folder just opened, all
// redone to the end, then the History window goes back to the middle. The limits are raised
// through the same window first (the default keeps fifty steps).
TEST_F(Undo, LongSessionOnFiftyPatternsBackToTheStartAndForwardToTheEnd) {
    fs::create_directories(home / "series");
    for (int k = 1; k <= 50; ++k)
        fs::copy_file(kData + "/patterns/210520step1_30min.xy", home / "series" / ("run_" + std::to_string(k) + ".xy"));
    std::string s = "dir " + at("series") + "\nmenu 40230\n" +
                    "dialog History set 12 400\ndialog History set 13 2048\ndialog History press 2\nmenu 40248\n";
    const std::vector<std::string> cycle = {
        "menu 40141\n",  // the Shift dialog, with a new value each time
        "dialog 140 radio 1021\ndialog 140 set 1282 40\ndialog 140 press 1\nmenu 40020\n",
        "dialog 141 grid 1331 1 4 1\ndialog 141 grid 1331 2 4 1\ndialog 141 press 1\nmenu 40100\n",
        "dialog 152 press 1332\ndialog 152 set 1413 0\ndialog 152 set 1414 1\ndialog 152 set 1415 1.5\n"
        "dialog 152 press 1\nmenu 40115\n",
        "dialog 121 set 1224 30\ndialog 121 set 1225 31\ndialog 121 press 1\nmenu 40151\n",
        "menu 40102\n",
        "dialog \"Delete profiles\" grid 10 1 3 1\ndialog \"Delete profiles\" press 1\nmenu 40037\n",
        "menu 40017\n",
        "menu 40042\n",
        "dialog 140 radio 1021\ndialog 140 press 1\nmenu 40090\n",
    };
    s += dump("start.txt");
    for (int i = 0; i < 200; ++i) {
        // the files give no wavelength: the first conversion asks for one, for every profile
        if (i == 7) s += "dialog \"Change wavelength\" set 11 1.5406\ndialog \"Change wavelength\" press 12\n"
                         "dialog \"Change wavelength\" press 1\n";
        if (i % 10 == 0) s += "dialog 143 set 1336 " + std::to_string(i / 10 + 1) + "\ndialog 143 press 1\n";
        s += cycle[static_cast<std::size_t>(i) % cycle.size()];
        if (i == 99) s += dump("middle.txt");
    }
    s += dump("end.txt") + "history " + at("h_end.txt") + "\n";
    for (int i = 0; i < 200; ++i) s += "undo\n";
    s += dump("back.txt") + "history " + at("h_back.txt") + "\n";
    for (int i = 0; i < 200; ++i) s += "redo\n";
    s += dump("forward.txt") + "redo\nstatus " + at("st.txt") + "\n";
    // row 102 of the window is step 101: the store after the hundredth command of the session
    s += "dialog History set 11 102\ndialog History press 1\nmenu 40248\n" + dump("again.txt") + "history " +
         at("h_again.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    const std::string h = file("h_end.txt");
    EXPECT_EQ(value(h, "steps"), "201") << h << out;  // the folder and the two hundred commands
    EXPECT_EQ(file("back.txt"), file("start.txt"));
    EXPECT_EQ(file("forward.txt"), file("end.txt"));
    EXPECT_EQ(file("again.txt"), file("middle.txt"));
    EXPECT_NE(file("start.txt"), file("middle.txt"));
    EXPECT_NE(file("middle.txt"), file("end.txt"));
    EXPECT_EQ(value(file("h_back.txt"), "position"), "1");
    EXPECT_EQ(value(file("h_again.txt"), "position"), "101");
    EXPECT_NE(file("st.txt").find("status 1 Nothing to redo"), std::string::npos);
    const double mb = std::stod(value(h, "bytes")) / 1048576.0;
    std::cout << "history of 201 steps on 50 patterns holds " << mb << " MB\n";
    RecordProperty("history_megabytes", std::to_string(mb));
    EXPECT_LT(mb, 2048.0);
}
