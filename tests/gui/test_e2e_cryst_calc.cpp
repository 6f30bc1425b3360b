// End-to-end: "Crystalographic Calc" shows the metrics, the group listing and
// the reflection conditions of a cell and group in the editor, where they are
// saved; bad input gives its text and opens nothing.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

struct CrystCalc : SCRIPTED_HOME {};

std::string fill(const char* a, const char* b, const char* c, const char* al, const char* be, const char* ga,
                 const std::string& group) {
    std::string s;
    const char* v[6] = {a, b, c, al, be, ga};
    for (int i = 0; i < 6; ++i) s += "dialog 178 set " + std::to_string(1781 + i) + " " + v[i] + "\n";
    return s + "dialog 178 set 1787 " + group + "\ndialog 178 press 1\nmenu 40140\n";
}

}  // namespace

TEST_F(CrystCalc, ListsAMonoclinicCellAndGroupAndSavesIt) {
    const std::string s = fill("5.1", "6.3", "7.4", "90", "103.5", "90", "P 1 21/c 1") + "editor state " + at("s1") +
                          "\nfiles " + at("kept.txt") + "\neditor saveas\n";
    ASSERT_EQ(run(s), 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006"), 0) << out;
    EXPECT_NE(file("s1").find("title Zendrite text editor - zendrite_cryst_calc.txt\n"), std::string::npos) << file("s1");
    const std::string t = file("kept.txt");
    // Volume by hand: a b c sin(beta) = 5.1 * 6.3 * 7.4 * sin(103.5) = 231.97 A^3.
    for (const char* w : {"Metric information:", "=> Direct cell parameters:", "=> Reciprocal cell parameters:",
                          "231.19", "Information on Space Group:", "=>   Number of Space group: 14",
                          ">>> Integral reflections conditions for centred lattices:",
                          ">>> Zonal reflections conditions for glide planes:",
                          ">>> Serial reflections conditions for screw axes:", "(0 k 0)     k=2n"})
        EXPECT_NE(t.find(w), std::string::npos) << w << "\n" << t;
    // The group part is the text of zendrite-batch sg.
    const std::string batch = fs::path(ZD_APP_BIN).parent_path() / "zendrite-batch";
    EXPECT_EQ(std::system((batch + " sg P 1 21/c 1 > " + at("sg.txt")).c_str()), 0);
    const std::string sg = file("sg.txt");
    ASSERT_GT(sg.size(), 500u);
    EXPECT_EQ(t.substr(t.size() - sg.size()), sg);
}

TEST_F(CrystCalc, BadInputGivesItsTextAndOpensNothing) {
    const std::string s = fill("5", "5", "5", "90", "90", "90", "\"  \"") + fill("5", "5", "5", "90", "90", "90", "P 7") +
                          fill("5", "-5", "5", "90", "90", "90", "P 1") + fill("5", "5", "5", "10", "10", "170", "P 1") +
                          fill("5", "x", "5", "90", "90", "90", "P 1") +
                          // cancelled: nothing said
                          "dialog 178 press 2\nmenu 40140\neditor state " + at("s") + "\n";
    ASSERT_EQ(run(s), 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Empty SPGR field"), std::string::npos) << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 |  Problems in SpaceGroup: "), std::string::npos) << out;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | Wrong cell parameters"), 3) << out;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006"), 5) << out;
    EXPECT_EQ(file("s"), "closed\n") << "no editor was opened";
}

TEST_F(CrystCalc, AMagneticGroupIsListedAfterTheSpaceGroup) {
    const std::string s = "dialog 178 set 1788 62.448\n" + fill("5.6", "7.7", "5.4", "90", "90", "90", "P n m a") +
                          "files " + at("kept.txt") + "\neditor saveas\n" + "dialog 178 set 1788 62.9999\n" +
                          fill("5.6", "7.7", "5.4", "90", "90", "90", "P n m a");
    ASSERT_EQ(run(s), 0) << out << err;
    const std::string t = file("kept.txt");
    // The magnetic part is the text of zendrite-batch msg.
    const std::string batch = fs::path(ZD_APP_BIN).parent_path() / "zendrite-batch";
    EXPECT_EQ(std::system((batch + " msg 62.448 > " + at("msg.txt")).c_str()), 0);
    const std::string msg = file("msg.txt");
    ASSERT_GT(msg.size(), 300u);
    EXPECT_EQ(t.substr(t.size() - msg.size()), msg);
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | No magnetic space group has the BNS number 62.9999"), std::string::npos)
        << out;
}
