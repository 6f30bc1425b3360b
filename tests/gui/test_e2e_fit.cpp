// End-to-end: the constant-wavelength profile fit of the real ceria pattern
// through the searches and the starting-parameters dialog with the asymmetry
// refined; its files, the job file rewritten, the curves in the dump; a
// refused grid and a cancelled dialog leave everything as it was.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

struct Fit : SCRIPTED_HOME {};

// The searches' dialogs, then the fit dialog with S_L and D_L set and refined.
std::string fit_lines(const std::string& extra) {
    return "dialog 1961 press 1\ndialog 1960 press 1\n"
           "dialog 1970 grid 12 1 1 0.01\ndialog 1970 grid 12 2 1 0.01\n"
           "dialog 1970 grid 12 1 2 1\ndialog 1970 grid 12 2 2 1\n" +
           extra + "dialog 1970 press 1\nmenu 40150\n";
}

}  // namespace

TEST_F(Fit, CeriaThroughTheDialogWithAsymmetry) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy");
    const std::string s = "files " + at("ceo2.xy") + "\nmenu 40014\nmenu 40095\ndump " + at("d0.txt") + "\n" +
                          // a letter in a peak cell is refused with its line, then the dialog is cancelled
                          "dialog 1961 press 1\ndialog 1960 press 1\ndialog 1970 grid 14 3 1 x1\n"
                          "dialog 1970 press 1\ndialog 1970 press 2\nmenu 40150\ndump " + at("d1.txt") + "\n" +
                          fit_lines("dialog 1970 check 32 1\n") + "dump " + at("d2.txt") + "\npicture 0 " +
                          at("fit.png") + "\n" +
                          // a cancelled second run changes nothing
                          "dialog 1970 press 2\nmenu 40150\ndump " + at("d3.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 |  Error in the Peak parameters on line:    3"), std::string::npos)
        << out;
    // the refusal wrote nothing and drew no curve; the lists of the searches stay
    const std::string d1 = file("d1.txt");
    EXPECT_EQ(d1.find("ycalc_sum"), std::string::npos) << d1;
    EXPECT_EQ(value(d1, "peaks"), "16");
    EXPECT_EQ(value(d1, "calc_mode"), "1");

    // The fit ended on the solver's text and the final chi2.
    EXPECT_EQ(count(out, "  => Final   Chi2:"), 1) << out;
    const std::string pf = file("ceo2_pf.out");
    EXPECT_NE(pf.find("     --- PROGRAM: ARCFIT (Embedded in Zendrite-2006 ---"), std::string::npos);
    EXPECT_NE(pf.find(" => Asymmetry parameter S_L:      0.010000  1"), std::string::npos) << pf;
    EXPECT_NE(pf.find(" => Number of peaks :    16"), std::string::npos) << pf;
    EXPECT_TRUE(fs::exists(home / "LM_fit.xy"));
    EXPECT_TRUE(fs::exists(home / "arcfit_obscalc.xyy"));
    EXPECT_FALSE(fs::exists(home / "ceo2_pf.irf"));  // not asked for

    // The job file beside the data holds the refined asymmetry and the chi2.
    const std::string pik = file("ceo2.pik");
    EXPECT_NE(pik.find("\n!  Chi2 = "), std::string::npos) << pik;
    EXPECT_EQ(pik.find("      0.010000     1      <= Asymmetry-1(S_L)"), std::string::npos) << pik;
    EXPECT_NE(pik.find("     1      <= Asymmetry-1(S_L)"), std::string::npos) << pik;

    // The calculated curve lies close to the data: the difference is a small part of the counts.
    const std::string d2 = file("d2.txt");
    const double calc = std::stod(value(d2, "  ycalc_sum")), diff = std::stod(value(d2, "  ydiff_sum"));
    const double obs = std::stod(value(d2, "  y_sum"));
    EXPECT_NEAR(calc + diff, obs, 1e-3 * obs);
    EXPECT_LT(std::abs(diff), 0.01 * obs);
    EXPECT_EQ(value(d2, "nperfiles"), "1");
    EXPECT_EQ(file("d3.txt"), d2);
    EXPECT_EQ(file("ceo2.pik"), pik);
    EXPECT_GT(fs::file_size(home / "fit.png"), 1000u);
    if (const char* keep = std::getenv("ZD_KEEP_PICTURE"))
        fs::copy_file(home / "fit.png", keep, fs::copy_options::overwrite_existing);
}

// The resolution file of the fitted widths, no single-peak profiles beyond 15 peaks, and Clear all.
TEST_F(Fit, IrfFileThenClearAll) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy");
    const std::string s = "files " + at("ceo2.xy") + "\nmenu 40014\nmenu 40095\n" +
                          fit_lines("dialog 1970 check 33 1\ndialog 1970 radio 18\n") + "dump " + at("d.txt") + "\n" +
                          "menu 40146\ndump " + at("e.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    const std::string d = file("d.txt");
    // 16 peaks: beyond 15 only the sum is shown
    EXPECT_EQ(value(d, "nperfiles"), "1") << d;
    const std::string irf = file("ceo2_pf.irf");
    EXPECT_EQ(irf.rfind("! Resolution function (IRESO=8) : 2theta(deg.)   HG(deg.)   HL(deg.)   S_L   D_L\n", 0), 0u)
        << irf;
    EXPECT_NE(irf.find("   16    <<<< Include number of points in the following list"), std::string::npos) << irf;
    const std::string e = file("e.txt");
    EXPECT_EQ(value(e, "peaks"), "0");
    EXPECT_EQ(value(e, "background"), "0");
    EXPECT_EQ(e.find("ycalc_sum"), std::string::npos);
}

// Escape pressed in the fit's small window after two iterations stops the
// fit there: the best values reached go to the job file and the curves, and
// the closing message says the fit was stopped.
TEST_F(Fit, EscapeStopsTheFitKeepingTheBestValues) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy");
    run("files " + at("ceo2.xy") + "\nmenu 40014\nmenu 40095\nprogress \"Profile fitting\" 2 escape\n" +
        fit_lines("") + "dump " + at("d.txt") + "\n");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_EQ(count(out, " => The fit was stopped: the best values reached are kept"), 1) << out;
    EXPECT_TRUE(fs::exists(home / "ceo2_pf.out"));
    EXPECT_EQ(count(out, "  => Final   Chi2:"), 1) << out;
    const std::string pik = file("ceo2.pik");
    EXPECT_NE(pik.find("\n!  Chi2 = "), std::string::npos) << pik;
    const std::string d = file("d.txt");
    EXPECT_NE(d.find("ycalc_sum"), std::string::npos) << d;

    // The same run without Escape goes on past where Escape stopped, to a lower chi2.
    const std::string stopped = pik.substr(pik.find("\n!  Chi2 = ") + 11, 14);
    fs::remove(home / "ceo2.pik");
    run("files " + at("ceo2.xy") + "\nmenu 40014\nmenu 40095\n" + fit_lines(""));
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(count(out, " => The fit was stopped"), 0) << out;
    const std::string full = file("ceo2.pik");
    EXPECT_LT(std::stod(full.substr(full.find("\n!  Chi2 = ") + 11, 14)), std::stod(stopped));
}

// The column buttons of the dialog, a wrong wavelength cell, and Load PIK/NEW
// file: with positions and background fixed the job file keeps the searched
// positions; the job read back runs again with the positions varied; a broken
// job file is refused and changes nothing.
TEST_F(Fit, ColumnButtonsAndLoadingTheJobFile) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy");
    {
        std::ofstream bad(home / "broken.pik");
        bad << "! title only\n    0.2345   30.0301    38\n";
    }
    const std::string open = "files " + at("ceo2.xy") + "\nmenu 40014\nmenu 40095\n";
    // a letter in the wavelength grid is refused, then positions and background are fixed
    run(open + "dialog 1961 press 1\ndialog 1960 press 1\ndialog 1970 grid 10 1 1 Cu\ndialog 1970 press 1\n" +
        "dialog 1970 grid 10 1 1 0\ndialog 1970 press 26\ndialog 1970 press 24\ndialog 1970 press 1\nmenu 40150\n");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 |  Error in the wavelength fields!"), std::string::npos) << out;
    const std::string first = file("ceo2.pik");
    std::istringstream lines(first);
    int peaks = 0, backs = 0;
    bool in_peaks = false, in_back = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("!  Background", 0) == 0) in_back = true;
        if (line.rfind("!       2Theta     Intensity", 0) == 0) in_peaks = true, in_back = false;
        if (line.empty() || line[0] == '!') continue;
        std::istringstream f(line);
        std::vector<std::string> w;
        for (std::string x; f >> x;) w.push_back(x);
        if (in_peaks && w.size() == 8) {
            EXPECT_EQ(w[4] + w[5] + w[6] + w[7], "0111") << line;
            ++peaks;
        }
        if (in_back && w.size() == 3) {
            EXPECT_EQ(w[2], "0") << line;
            ++backs;
        }
    }
    EXPECT_EQ(peaks, 16);
    EXPECT_GT(backs, 10);

    run(open + "files " + at("broken.pik") + "\nmenu 40224\ndump " + at("d2.txt") + "\n" + "files " + at("ceo2.pik") +
        "\ndialog 1970 press 25\ndialog 1970 press 1\nmenu 40224\n");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | Error Reading the PIK file!"), 1) << out;
    // the refused file left the store as the plain pattern
    EXPECT_EQ(file("d2.txt").find("ycalc_sum"), std::string::npos);
    // the job read back ran with the positions varied and was written over itself
    EXPECT_EQ(count(out, "  => Final   Chi2:"), 1) << out;
    const std::string again = file("ceo2.pik");
    EXPECT_NE(again, first);
    EXPECT_EQ(again.find("  0  1  1  1\n"), std::string::npos) << again;
    EXPECT_NE(again.find("  1  1  1  1\n"), std::string::npos) << again;
}

// Load IRF file: a keyword file gives the wavelengths and the asymmetry, an
// older one-record file U V W X Y; the other cells keep what they showed. A
// broken file is named and changes no cell. The globals are fixed so the job
// file written by the run holds the loaded values as they went in.
TEST_F(Fit, LoadIrfFileFillsTheGlobalParameters) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy");
    {
        std::ofstream(home / "lab.irf") << "! laboratory instrument\n! ireso = 5\nJOBT  X-RAYS\n"
                                           "WAVE   1.540560  1.544390  0.5000\nNOISE 7 7 7\n"
                                           "asym   0.0123  0.0456   0.0  0.0  ! S_L D_L\n";
        std::ofstream(home / "old.irf") << "! ireso = 1\n!  U  V  W  X  Y\n   0.0210  -0.0110  0.0050  0.0310  0.4400\n";
        std::ofstream(home / "broken.irf") << "! ireso = 1\n   0.0990  abc  0.0050\n";
        std::ofstream(home / "short.irf") << "! ireso = 5\nASYM  0.0333\n";
    }
    std::string fix;
    for (int r = 1; r <= 6; ++r) fix += "dialog 1970 grid 11 " + std::to_string(r) + " 2 0\n";
    fix += "dialog 1970 grid 12 1 2 0\ndialog 1970 grid 12 2 2 0\ndialog 1970 grid 10 1 4 0\n";
    run("files " + at("ceo2.xy") + "\nmenu 40014\nmenu 40095\ndialog 1961 press 1\ndialog 1960 press 1\n" +
        "files " + at("lab.irf") + "\ndialog 1970 press 21\nfiles " + at("old.irf") + "\ndialog 1970 press 21\n" +
        "files " + at("broken.irf") + "\ndialog 1970 press 21\nfiles " + at("short.irf") + "\ndialog 1970 press 21\n" + fix + "dialog 1970 press 1\nmenu 40150\n");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | Taken from the IRF file: S_L D_L Lambda1 Lambda2 I(Ka2/Ka1)"), 1)
        << out;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | Taken from the IRF file: U V W X Eta\n"), 1) << out;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | Error reading IRF File: " + at("broken.irf")), 1) << out;
    // a record with one value gives S_L only; D_L keeps the value loaded before
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | Taken from the IRF file: S_L\n"), 1) << out;
    EXPECT_EQ(count(out, "  => Final   Chi2:"), 1) << out;
    const std::string pik = file("ceo2.pik");
    // the Z row is not in either file and keeps the 0 it showed
    EXPECT_NE(pik.find("    1.540560    1.544390  <=  Lambda1 & Lambda2\n"
                       "!  Global Profile Parameters:\n"
                       "      0.500000     0      <= Kalph2/Kalph1 ratio  &  Flag \n"
                       "      0.033300     0      <= Asymmetry-1(S_L)     &    '  \n"
                       "      0.045600     0      <= Asymmetry-2(D_L)     &    '  \n"
                       "      0.021000     0      <= Parameter  U         &    '  \n"
                       "     -0.011000     0      <= Parameter  V         &    '  \n"
                       "      0.005000     0      <= Parameter  W         &    '  \n"
                       "      0.000000     0      <= Parameter  Z         &    '  \n"
                       "      0.440000     0      <= Parameter Eta0       &    '  \n"
                       "      0.031000     0      <= Parameter  X         &    '  \n"),
              std::string::npos)
        << pik;
}
