// End-to-end: the form "Prepare a QVL file for Virelle": imports, the saved
// records read back, the refusals that keep the file as it was, and Run Virelle
// on the file just saved.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

const std::string kStruct = std::string(ZD_TEST_DATA) + "/crystal/structures/";

// The file without its second line (the date).
std::string without_date(std::string t) {
    const std::size_t a = t.find('\n'), b = t.find('\n', a + 1);
    return t.erase(a + 1, b - a);
}

}  // namespace

struct QvlForm : SCRIPTED_HOME {};

TEST_F(QvlForm, ImportSaveAndReadBack) {
    const std::string s = "dialog 1985 set 24 " + at("one.qvl") + "\nfiles " + kStruct + "PbSO4.cif\n" +
                          "dialog 1985 press 30\ndialog 1985 picture " + at("form.png") + "\n" +
                          "dialog 1985 radio 21\ndialog 1985 set 17 25.5\ndialog 1985 press 34\n" +
                          // the saved file imported again and saved under another name
                          "files " + at("one.qvl") + "\ndialog 1985 press 31\ndialog 1985 set 24 " + at("two.qvl") +
                          "\ndialog 1985 press 34\ndialog 1985 press 2\nmenu 40213\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    const std::string one = file("one.qvl");
    EXPECT_EQ(one.substr(0, one.find('\n') + 1), "PATTERN_1   1.00\n");
    EXPECT_NE(one.find("\nTitle   QVL-file created by Zendrite-2006: "), std::string::npos) << one;
    EXPECT_NE(one.find("\nQMAX    25.5000\nDAMP     0.0120\nBROAD    0.0200\nJOBTYPE X\nPHASE_01   1.00\n"
                       "DELTAS   0.1000   0.2000\nSpgr  P n m a\n"
                       "Cell        8.478000    5.396900    6.958200   90.000000   90.000000   90.000000\n"
                       "Atom   Pb     Pb       0.18790  0.25000  0.16700  1.48000  1.00000\n"),
              std::string::npos)
        << one;
    EXPECT_NE(one.find("Atom   O3     O        0.08120  0.02720  0.80860  1.32000  1.00000\n"), std::string::npos);
    // The job and the structure come back whole from the file.
    EXPECT_EQ(without_date(file("two.qvl")), without_date(one));
    EXPECT_EQ(count(out, "QVL file written: "), 2) << out;
}

TEST_F(QvlForm, RefusalsKeepTheFileAndTheForm) {
    std::ofstream(home / "kept.qvl") << "an older file\n";
    std::ofstream(home / "empty.pcr") << "COMM no atoms\nP n m a     <--Space group symbol\n"
                                         "!Atom   Typ       X        Y        Z     Biso       Occ\n"
                                         "!-------> Profile\n";
    const std::string s = "dialog 1985 set 24 " + at("kept.qvl") + "\nfiles " + at("empty.pcr") + "\n" +
                          "dialog 1985 press 32\nfiles " + kStruct + "LaB6.cif\ndialog 1985 press 30\n" +
                          "dialog 1985 set 13 La1 La 0 0 zero 0.4 1\ndialog 1985 press 34\n" +
                          "files\ndialog 1985 press 33\ndialog 1985 press 2\nmenu 40213\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | The number of atoms is zero!, Check the PCR file "), std::string::npos)
        << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Error reading the atoms panel!"), std::string::npos) << out;
    EXPECT_EQ(file("kept.qvl"), "an older file\n");
    EXPECT_EQ(out.find("QVL file written"), std::string::npos) << out;
}

TEST_F(QvlForm, RunVirelleRunsOnTheSavedFile) {
    fs::create_directories(home / "bin");
    // A stand-in that notes its argument and leaves a profile file beside it.
    std::ofstream(home / "bin" / "virelle") << "#!/bin/sh\necho \"$1\" > '" << at("args.txt") << "'\ncp '"
                                            << ZD_TEST_DATA << "/gui/two_phase.prf' \"${1%.*}.prf\"\n";
    fs::permissions(home / "bin" / "virelle", fs::perms::owner_all);
    const std::string s = "dialog 1985 set 24 " + at("job.qvl") + "\nfiles " + kStruct + "CeO2.cif\n" +
                          "dialog 1985 press 30\ndialog 1985 press 35\nmenu 40213\ndump " + at("d.txt") + "\n";
    run(s, "PATH='" + at("bin") + "':\"$PATH\"");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(file("args.txt"), at("job.qvl") + "\n");
    EXPECT_NE(file("job.qvl").find("Atom   O1     O2-      0.25000  0.25000  0.25000  0.52000  1.00000\n"),
              std::string::npos)
        << file("job.qvl");
    EXPECT_EQ(value(file("d.txt"), "prf_loaded"), "1") << file("d.txt");
}
