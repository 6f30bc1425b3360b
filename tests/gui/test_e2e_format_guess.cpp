// End-to-end: the dialog "Format of the data file" opens with the format
// guessed from the content selected and the reason under the radio buttons;
// a guess that fails to read opens the dialog again for the same file.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

const std::string kData = ZD_TEST_DATA;
const std::string kDialog = "dialog \"Format of the data file\" ";
const std::string kShown = "DIALOG Format of the data file | ";

struct FormatGuess : SCRIPTED_HOME {
    // The value of `key` in the section of slot 1 of a dump.
    static std::string slot1(const std::string& dump, const std::string& key) {
        const std::size_t s = dump.find("slot 1\n");
        if (s == std::string::npos) return "<no slot>";
        const std::size_t p = dump.find("\n  " + key + " ", s);
        if (p == std::string::npos) return "<no " + key + ">";
        const std::size_t b = p + key.size() + 4;
        return dump.substr(b, dump.find('\n', b) - b);
    }
};

}  // namespace

TEST_F(FormatGuess, GuessedRowIsPreselectedAndReads) {
    fs::copy_file(kData + "/gui/PSI_DMC.dat", home / "psi.dat");
    const std::string s = "files " + at("psi.dat") + "\n" + kDialog + "show\n" + kDialog + "picture " + at("dlg.png") +
                          "\nmenu 40014\ndump " + at("d.txt") + "\n";
    ASSERT_EQ(run(s), 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    // The DMC row (7, radio 107) is selected, and only it.
    EXPECT_NE(out.find(kShown + "radio 107\n"), std::string::npos) << out;
    EXPECT_EQ(count(out, kShown + "radio "), 1) << out;
    EXPECT_NE(out.find(kShown + "label 117 Guess: a \"lambda=\" second line, 2.948 to 162.898 step 0.05, 3200 points "
                                "on line 3, then ten counts a line: PSI DMC/HRPT layout\n"),
              std::string::npos)
        << out;
    EXPECT_TRUE(fs::file_size(home / "dlg.png") > 1000);
    // OK read it with the DMC reader.
    const std::string d = file("d.txt");
    EXPECT_EQ(value(d, "nperfiles"), "1") << d;
    EXPECT_EQ(slot1(d, "prf_format"), "DMC") << d;
    EXPECT_EQ(slot1(d, "npts"), "3200") << d;
    EXPECT_EQ(slot1(d, "xmin"), "2.948") << d;
}

TEST_F(FormatGuess, FailedGuessAsksAgainForTheFile) {
    // Two head lines, "start step end", twenty counts, then a summary row: it looks like
    // the DMC layout (a weak guess), whose reader takes the last row for a sigma block and
    // fails; the free-format reader reads it.
    std::ofstream(home / "two.dat") << "run 12\nsecond line\n 10.0 0.1 11.9\n"
                                       " 1 2 3 4 5 6 7 8 9 10\n 11 12 13 14 15 16 17 18 19 20\n 210 20 1\n";
    const std::string s = "files " + at("two.dat") + "\n" + kDialog + "show\n" + kDialog + "press 1\n" + kDialog +
                          "show\n" + kDialog + "radio 101\n" + kDialog + "press 1\nmenu 40014\ndump " + at("d.txt") +
                          "\n";
    ASSERT_EQ(run(s), 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    // First opening: the weak guess, said to be weak.
    const std::size_t first = out.find(kShown + "label 117 Guess: two head lines");
    ASSERT_NE(first, std::string::npos) << out;
    EXPECT_NE(out.find("weak guess", first), std::string::npos);
    // The reader's own message, then the dialog again with the failure under the radio buttons.
    const std::size_t msg = out.find("MESSAGE Zendrite-2006 | ERROR in file: " + at("two.dat") +
                                     " Error in Intensity file (sigmas), check your instr parameter!");
    ASSERT_NE(msg, std::string::npos) << out;
    const std::size_t again = out.find(kShown + "label 117 Read as \"DMC, HRPT PSI (Inst.8)\" failed: ERROR in file: ", msg);
    EXPECT_NE(again, std::string::npos) << out;
    EXPECT_NE(out.find(kShown + "radio 107", msg), std::string::npos) << out;
    // The second choice, free format, reads the twenty counts.
    const std::string d = file("d.txt");
    EXPECT_EQ(value(d, "nperfiles"), "1") << d;
    EXPECT_EQ(slot1(d, "prf_format"), "FreeFormat") << d;
    EXPECT_EQ(slot1(d, "npts"), "20") << d;
    EXPECT_EQ(slot1(d, "xmax"), "11.9") << d;

    // Cancel at the second opening ends the command with nothing loaded.
    const std::string c = "files " + at("two.dat") + "\n" + kDialog + "press 1\n" + kDialog + "press 2\nmenu 40014\ndump " +
                          at("c.txt") + "\n";
    ASSERT_EQ(run(c), 0) << out;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_EQ(count(out, "ERROR in file: "), 1) << out;
    EXPECT_EQ(value(file("c.txt"), "nperfiles"), "0");
}
