// End-to-end: the time-of-flight profile fit of a real spallation-source
// pattern over ten peaks, from a TOF job file through its dialog; a bad
// coefficient refused and a cancel that leaves everything as it was; and the
// X unit that has no fit.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

struct FitTof : SCRIPTED_HOME {};

// Ten peaks of bank 1 between 2790 and 3225 us, started near the tops of the counts.
const char* const kJob =
    "NiSi bank 1, ten peaks\n"
    "!    TOF_init       TOF_fin      Nbac Npeak  Ncyc  Inst  Jobt  Cont Weight Corr Constr Percent \n"
    "      2790.0000      3225.0000     4    10    40     0     0     0    70     0     0     0\n"
    "   1943.700000  <=  d to T.O.F. coefficient\n"
    "!  Global Profile Parameters:\n"
    "        0.3000     1      <= Global-Alpha &  Flag \n"
    "        0.0700     1      <= Global-Beta  &       \n"
    "        1.2500     0      <= Sig-2        &       \n"
    "        0.0000     0      <= Sig-1        &       \n"
    "       10.0000     1      <= Sig-0        &       \n"
    "        0.0000     0      <= Eta          &       \n"
    "!  Background Parameters:\n"
    "!       TOF        Background   Flag \n"
    "     2790.0000     1100.0000     1\n"
    "     2940.0000      980.0000     1\n"
    "     3080.0000      900.0000     1\n"
    "     3225.0000      860.0000     1\n"
    "!  Reflection Parameters:\n"
    "!    TOF-Bragg     Intensity   Shift-sigma   Shift-alpha    Shift-beta    Shift-eta   Flags\n"
    "     2805.0000     1500.0000        0.0000        0.0000        0.0000        0.0000   1 1 0 0 0 0\n"
    "     2848.0000    15000.0000        0.0000        0.0000        0.0000        0.0000   1 1 0 0 0 0\n"
    "     2876.0000    30000.0000        0.0000        0.0000        0.0000        0.0000   1 1 0 0 0 0\n"
    "     2930.0000     1000.0000        0.0000        0.0000        0.0000        0.0000   1 1 0 0 0 0\n"
    "     2961.0000     8000.0000        0.0000        0.0000        0.0000        0.0000   1 1 0 0 0 0\n"
    "     3018.0000     1000.0000        0.0000        0.0000        0.0000        0.0000   1 1 0 0 0 0\n"
    "     3059.0000     5000.0000        0.0000        0.0000        0.0000        0.0000   1 1 0 0 0 0\n"
    "     3098.0000    30000.0000        0.0000        0.0000        0.0000        0.0000   1 1 0 0 0 0\n"
    "     3131.0000    20000.0000        0.0000        0.0000        0.0000        0.0000   1 1 0 0 0 0\n"
    "     3180.0000     4500.0000        0.0000        0.0000        0.0000        0.0000   1 1 0 0 0 0\n";

}  // namespace

TEST_F(FitTof, RealPatternOverTenPeaksThroughTheDialog) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/NISI.cif", home / "NISI.cif");
    std::ofstream(home / "job.pik") << kJob;
    const std::string s = "files " + at("NISI.cif") + "\nmenu 40014\ndump " + at("d0.txt") + "\n" +
                          // a coefficient that is not positive is refused, then the dialog is cancelled
                          "files " + at("job.pik") + "\ndialog 1971 set 12 -5\ndialog 1971 press 1\n"
                          "dialog 1971 press 2\nmenu 40224\ndump " + at("d1.txt") + "\n" +
                          // the fit with the single peaks
                          "dialog 1971 check 28 1\ndialog 1971 press 1\nmenu 40150\n"
                          "mouse press 1 2780 3700\nmouse move 1 3000 2000\nmouse release 1 3230 -150\n"
                          "dump " + at("d2.txt") + "\npicture 0 " + at("fit.png") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 |  => Error: the d to TOF coefficient must be a positive number ! "),
              std::string::npos)
        << out;
    // refused and cancelled: no curve, no change
    EXPECT_EQ(file("d1.txt"), file("d0.txt"));

    // The fit converged; its message holds the stop text and the final chi2.
    EXPECT_NE(out.find("Convergence reached"), std::string::npos) << out;
    const auto at_chi2 = out.find(" => Final   Chi2:");
    ASSERT_NE(at_chi2, std::string::npos) << out;
    const double chi2 = std::stod(out.substr(at_chi2 + 17, 15));
    EXPECT_GT(chi2, 0.8);  // the file's esds: a good fit is near one
    EXPECT_LT(chi2, 2.0);

    const std::string pf = file("NISI_pf.out");
    for (const char* t : {"                  --- PROGRAM: TIMEFIT ---", " => TOF(init)       :      2790.0000",
                          " => Number of peaks :     10", " => Final   Chi2:",
                          "  Final parameters and Standard Deviations", "  Reflection Parameters:"})
        EXPECT_NE(pf.find(t), std::string::npos) << t;
    EXPECT_TRUE(fs::exists(home / "LM_fit.xy"));

    // The job file loaded is rewritten with the values reached and the chi2.
    const std::string pik = file("job.pik");
    EXPECT_NE(pik.find("!    TOF_init       TOF_fin"), std::string::npos);
    EXPECT_NE(pik.find("\n!  Chi2 = "), std::string::npos) << pik;
    EXPECT_NE(pik, kJob);

    // The calculated curve over the fitted range, the ten peaks as profiles of their own.
    const std::string d2 = file("d2.txt");
    EXPECT_EQ(value(d2, "nperfiles"), "12");  // two banks and ten peaks
    const double calc = std::stod(value(d2, "  ycalc_sum")), diff = std::stod(value(d2, "  ydiff_sum"));
    const double obs = std::stod(value(d2, "  y_sum"));
    EXPECT_NEAR(calc + diff, obs, 1e-3 * obs);
    EXPECT_LT(std::abs(diff), 0.001 * obs);
    EXPECT_GT(fs::file_size(home / "fit.png"), 1000u);
    if (const char* keep = std::getenv("ZD_KEEP_PICTURE"))
        fs::copy_file(home / "fit.png", keep, fs::copy_options::overwrite_existing);
}

TEST_F(FitTof, AnXUnitWithoutAFitIsRefused) {
    // An energy-dispersive profile: neither fit serves its unit.
    run("files " + std::string(ZD_TEST_DATA) + "/prf/energy_iv2.prf\nmenu 40016\nmenu 40150\ndump " + at("d.txt") + "\n");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Fitting procedure is not available for this type of data"),
              std::string::npos)
        << out;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_EQ(value(file("d.txt"), "  scat_var"), "Energy");
    EXPECT_FALSE(fs::exists(home / "LM_fit.xy"));
}

TEST_F(FitTof, FromTheSearchesWithTheCoefficientTyped) {
    // The pattern gives no coefficient: the dialog starts at 0 and takes the one typed.
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/NISI.cif", home / "NISI.cif");
    run("files " + at("NISI.cif") +
        "\nmenu 40014\nmouse press 1 2780 3700\nmouse move 1 3000 2000\nmouse release 1 3230 -150\n"
        "dialog 1961 press 1\ndialog 1960 press 1\ndialog 1971 set 12 1943.7\ndialog 1971 press 1\nmenu 40150\n"
        "dump " + at("d.txt") + "\n");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_NE(out.find(" => Final   Chi2:"), std::string::npos) << out;
    const std::string pf = file("NISI_pf.out");
    EXPECT_NE(pf.find(" => d to T.O.F. coefficient:    1943.699951"), std::string::npos) << pf;
    // the job beside the data is a TOF job; the curve is drawn
    const std::string pik = file("NISI.pik");
    EXPECT_NE(pik.find("   1943.699951  <=  d to T.O.F. coefficient"), std::string::npos) << pik;
    EXPECT_NE(file("d.txt").find("ycalc_sum"), std::string::npos);
}

// Load IRF file in the TOF dialog: SIGMA gives Sig-2 Sig-1 Sig-0, ALFBE the
// constant alpha and beta, D2TOF its first value as the coefficient; Eta is
// in no record and keeps its cell. A broken file is named and changes nothing.
// The globals are fixed, so the rewritten job holds what was loaded.
TEST_F(FitTof, LoadIrfFileFillsTheGlobalParameters) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/NISI.cif", home / "NISI.cif");
    std::ofstream(home / "job.pik") << kJob;
    std::ofstream(home / "bank.irf") << "! bank 1\n! ireso = 4\nTOFRG  2790.0  5.0  3225.0\n"
                                        "D2TOF  1943.5000  -0.25  1.5\nsigma  0.0000  2.5000  9.5000\n"
                                        "ALFBE  0.2800  0.0650  0.0  0.0\n";
    std::ofstream(home / "bad.irf") << "! ireso = 4\nSIGMA  1.0  x  2.0\n";
    std::ofstream(home / "short.irf") << "! ireso = 4\nSIGMA  1.25\n";
    std::string fix;
    for (int r = 1; r <= 6; ++r) fix += "dialog 1971 grid 11 " + std::to_string(r) + " 2 0\n";
    run("files " + at("NISI.cif") + "\nmenu 40014\nfiles " + at("job.pik") + "\nfiles " + at("bank.irf") +
        "\ndialog 1971 press 16\nfiles " + at("bad.irf") + "\ndialog 1971 press 16\nfiles " + at("short.irf") + "\ndialog 1971 press 16\n" + fix +
        "dialog 1971 press 1\nmenu 40224\n");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | Taken from the IRF file: Alpha(alpha0) Beta(beta0) Sig-2 Sig-1 "
                         "Sig-0 d to TOF Coeff(Dtt1)"),
              1)
        << out;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | Error reading IRF File: " + at("bad.irf")), 1) << out;
    // a SIGMA line with one value gives Sig-2 only
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | Taken from the IRF file: Sig-2\n"), 1) << out;
    EXPECT_NE(out.find(" => Final   Chi2:"), std::string::npos) << out;
    const std::string pik = file("job.pik");
    EXPECT_NE(pik.find("   1943.500000  <=  d to T.O.F. coefficient\n"
                       "!  Global Profile Parameters:\n"
                       "        0.2800     0      <= Global-Alpha &  Flag \n"
                       "        0.0650     0      <= Global-Beta  &       \n"
                       "        1.2500     0      <= Sig-2        &       \n"
                       "        2.5000     0      <= Sig-1        &       \n"
                       "        9.5000     0      <= Sig-0        &       \n"
                       "        0.0000     0      <= Eta          &       \n"),
              std::string::npos)
        << pik;
}
