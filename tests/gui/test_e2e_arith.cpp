// End-to-end: sum, average, difference, the Multiply/Shift panel, the efficiency
// file, the Fourier and polynomial filters, the Shift, monitor, offset and scaling
// dialogs, through their dialogs in the real program.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

const std::string kScan = std::string(ZD_TEST_DATA) + "/patterns/210520step1_30min.xy";

struct Arith : SCRIPTED_HOME {
    double sum_a = 0, sum_b = 0, first_a = 0;

    // a.xy is the real scan; b.xy has the same X texts and y/2 + 10 rounded, so
    // both lie on one grid exactly.
    void write_files() {
        fs::copy_file(kScan, home / "a.xy");
        std::ifstream in(kScan);
        std::ofstream out(home / "b.xy");
        std::string x;
        double y = 0;
        while (in >> x >> y) {
            const double b = std::round(y / 2) + 10;
            if (sum_a == 0) first_a = y;
            sum_a += y;
            sum_b += b;
            out << x << ' ' << b << "\n";
        }
    }
    std::string open(const std::string& name) const { return "files " + at(name) + "\nmenu 40014\n"; }
    // A file of tests/data in a format chosen by its radio button.
    static std::string open_as(const std::string& file, int radio) {
        const std::string f = "dialog \"Format of the data file\" ";
        return "files " + std::string(ZD_TEST_DATA) + "/" + file + "\n" + f + "radio " + std::to_string(radio) + "\n" + f +
               "press 1\nmenu 40014\n";
    }
    // The slot sections of a dump, which the refusals must leave as they were.
    std::string slots(const std::string& name) const {
        const std::string d = file(name);
        const std::size_t from = d.find("slot 1\n");
        return from == std::string::npos ? "<no slot>" : d.substr(from);
    }
    std::string dump(const std::string& name) const { return "dump " + at(name) + "\n"; }
    // The value of `key` in the section of slot `slot` of dump file `name`.
    double slot_value(const std::string& name, int slot, const std::string& key) const {
        const std::string d = file(name);
        const std::size_t from = d.find("slot " + std::to_string(slot) + "\n");
        if (from == std::string::npos) return NAN;
        const std::size_t k = d.find("  " + key + " ", from);
        if (k == std::string::npos) return NAN;
        return std::stod(d.substr(k + key.size() + 3));
    }
    std::string slot_text(const std::string& name, int slot, const std::string& key) const {
        const std::string d = file(name);
        const std::size_t from = d.find("slot " + std::to_string(slot) + "\n");
        if (from == std::string::npos) return "<no slot>";
        const std::size_t k = d.find("  " + key + " ", from) + key.size() + 3;
        return d.substr(k, d.find('\n', k) - k);
    }
};

}  // namespace

TEST_F(Arith, SumAverageDifferenceOfTwoFilesOnOneGridAndRefusals) {
    write_files();
    const std::string s = open("a.xy") + open("b.xy") + dump("d0.txt") +
                          // average by "Selec. All", then a sum of rows 1 and 2 ticked by hand
                          "dialog 141 press 1332\ndialog 141 press 1\nmenu 40123\n"
                          "dialog 141 grid 1331 1 4 1\ndialog 141 grid 1331 2 4 1\ndialog 141 press 1\nmenu 40100\n"
                          "dialog 139 set 1226 1\ndialog 139 set 1227 2\ndialog 139 press 1\nmenu 40101\n" +
                          dump("d1.txt") +
                          // one row only, then a difference of unequal sizes: refused, the store as it was
                          "dialog 141 grid 1331 1 4 1\ndialog 141 press 1\nmenu 40100\n" + open("short.xy") +
                          "dialog 139 set 1226 1\ndialog 139 set 1227 6\ndialog 139 press 1\nmenu 40101\n" +
                          dump("d2.txt") +
                          // the sum alone in slot 1: the Fourier filter refuses it
                          "dialog \"Delete profiles\" grid 10 1 3 1\ndialog \"Delete profiles\" grid 10 2 3 1\n"
                          "dialog \"Delete profiles\" grid 10 3 3 1\ndialog \"Delete profiles\" press 1\nmenu 40037\n"
                          "dialog 140 press 1\nmenu 40020\n" + dump("d3.txt");
    std::ofstream(home / "short.xy") << "5.0 1\n5.1 2\n5.2 3\n5.3 4\n5.4 5\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(value(file("d1.txt"), "nperfiles"), "5");
    EXPECT_EQ(slot_text("d1.txt", 3, "prf_type"), "AVER");
    EXPECT_EQ(slot_text("d1.txt", 3, "prf_name"), "<Average>");
    EXPECT_EQ(slot_text("d1.txt", 3, "title").rfind("Average of profiles ", 0), 0u);
    EXPECT_NEAR(slot_value("d1.txt", 3, "y_sum"), (sum_a + sum_b) / 2, 1e-5 * sum_a);
    EXPECT_EQ(slot_text("d1.txt", 4, "prf_type"), "SUMM");
    EXPECT_EQ(slot_text("d1.txt", 4, "prf_name"), "<summation>");
    EXPECT_NEAR(slot_value("d1.txt", 4, "y_sum"), sum_a + sum_b, 1e-5 * sum_a);
    // only y is combined: the variances are those of the first profile
    EXPECT_EQ(slot_value("d1.txt", 4, "sigma_sum"), slot_value("d0.txt", 1, "sigma_sum"));
    EXPECT_EQ(slot_text("d1.txt", 5, "prf_type"), "DIFF");
    EXPECT_EQ(slot_text("d1.txt", 5, "title"), "Difference of profiles: a.xy - b.xy");
    EXPECT_NEAR(slot_value("d1.txt", 5, "y_sum"), sum_a - sum_b, 1e-5 * sum_a);
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | ERROR: Only one profile selected to make sum/average"), std::string::npos) << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Size of selected profiles must be the same"), std::string::npos);
    // the refusals took no slot and changed no value: only the short file came in
    const std::string d1 = file("d1.txt"), d2 = file("d2.txt");
    EXPECT_EQ(d2.substr(d2.find("slot 1\n"), d2.find("slot 6\n") - d2.find("slot 1\n")), d1.substr(d1.find("slot 1\n")));
    EXPECT_EQ(value(file("d3.txt"), "nperfiles"), "3");
    EXPECT_EQ(slot_text("d3.txt", 1, "prf_type"), "SUMM");
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Operation not permitted over this profile type"), std::string::npos);
    EXPECT_EQ(slot_value("d3.txt", 1, "y_sum"), slot_value("d1.txt", 4, "y_sum"));
}

TEST_F(Arith, MultiplyPanelAppliedTwiceSavedAndReadBackAsEfficiencies) {
    write_files();
    const std::string s = open("a.xy") + dump("d0.txt") +
                          "dialog 159 grid 1527 1 2 1\ndialog 159 grid 1527 1 3 1\ndialog 159 grid 1527 1 4 2\n"
                          "menu 40162\nbutton 159 1532\nbutton 159 1532\nbutton 159 1534\nbutton 159 1533\n" +
                          dump("d1.txt") + "files " + at("zendrite-2006.eff") + "\nmenu 40163\n" + dump("d2.txt");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(slot_value("d1.txt", 1, "x_shift_total"), 2);
    EXPECT_EQ(slot_value("d1.txt", 1, "y_mult_total"), 4);
    EXPECT_NEAR(slot_value("d1.txt", 1, "y_sum"), 4 * sum_a, 1e-5 * 4 * sum_a);
    EXPECT_NEAR(slot_value("d1.txt", 1, "sigma_sum"), 16 * slot_value("d0.txt", 1, "sigma_sum"),
                1e-5 * 16 * slot_value("d0.txt", 1, "sigma_sum"));
    EXPECT_EQ(slot_value("d1.txt", 1, "xmin"), slot_value("d0.txt", 1, "xmin"));  // the limits stay
    EXPECT_EQ(file("zendrite-2006.eff"), "    1       2.00000       0.25000\n");
    // One line, one point: the first point is divided by 0.25, the others keep their value, and the user is told.
    EXPECT_NEAR(slot_value("d2.txt", 1, "y_sum") - slot_value("d1.txt", 1, "y_sum"), 12 * first_a, 2e-6 * 16 * sum_a);
    EXPECT_NE(out.find("Efficiencies were read for 1 of 4489 points"), std::string::npos) << out;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006"), 1) << out;  // no error from the panel itself
}

TEST_F(Arith, FourierIntoANewSlotWithItsEfficiencyFileAndAPicture) {
    write_files();
    const std::string s = open("a.xy") + "dialog 140 set 1282 2245\ndialog 140 press 1\nmenu 40020\n" + dump("d0.txt") +
                          "dialog 140 set 1282 5\ndialog 140 check 1330 1\ndialog 140 check 1647 1\n"
                          "dialog 140 press 1\nmenu 40020\n" + dump("d1.txt") +
                          "mouse press 1 30 3000\nmouse release 1 34 500\npicture 0 " + at("smooth.png") + "\n" +
                          "files " + at("zendrite-2006.eff") + "\nmenu 40163\n" + dump("d2.txt");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_NE(out.find("Incorrect value of Fourier Windows: FW > Npoints/2 ! Diminish the value of FW !"), std::string::npos);
    EXPECT_EQ(value(file("d0.txt"), "nperfiles"), "1");
    // the refused window changed nothing (the dump keeps six digits)
    EXPECT_NEAR(slot_value("d0.txt", 1, "y_sum"), sum_a, 5e-6 * sum_a);
    EXPECT_EQ(slot_text("d1.txt", 2, "prf_type"), "SMOO");
    EXPECT_EQ(slot_text("d1.txt", 2, "prf_name"), "<smoothing>");
    EXPECT_EQ(slot_text("d1.txt", 2, "title").rfind("Smoothing Fourier of ", 0), 0u);
    EXPECT_EQ(slot_value("d1.txt", 1, "y_sum"), slot_value("d0.txt", 1, "y_sum"));  // the raw one stays
    // first line: point 1, raw y, raw / smoothed with the smoothed value of the numpy table (1734.085726)
    const std::string eff = file("zendrite-2006.eff");
    EXPECT_EQ(count(eff, "\n"), 4489);
    EXPECT_EQ(eff.substr(0, 33), "    1    1719.00000       0.99130");
    // the file read back as efficiencies turns the raw profile into the smoothed one
    EXPECT_NEAR(slot_value("d2.txt", 1, "y_sum"), slot_value("d1.txt", 2, "y_sum"), 1e-4 * sum_a);
    EXPECT_GT(fs::file_size(home / "smooth.png"), 1000u);
}

TEST_F(Arith, ShiftDrawsThreeProfilesAsAStackWithoutTouchingTheirData) {
    write_files();
    {
        std::ifstream in(kScan);
        std::ofstream out(home / "c.xy");
        std::string x;
        double y = 0;
        while (in >> x >> y) out << x << ' ' << std::round(y / 3) + 600 << "\n";
    }
    const std::string s = open("a.xy") + open("b.xy") + open("c.xy") + dump("d0.txt") +
                          "dialog 143 set 1336 9\ndialog 143 press 2\nmenu 40141\n" + dump("dc.txt") +
                          "dialog 143 set 1336 1\ndialog 143 set 1337 1000\ndialog 143 press 1\nmenu 40141\n" +
                          // the dialog starts from the last shift: only X is given anew
                          "dialog 143 set 1336 2\ndialog 143 press 1\nmenu 40141\n" + dump("d1.txt") + "picture 0 " +
                          at("shift.png") + "\n" + "dialog 143 set 1336 abc\ndialog 143 press 1\nmenu 40141\n" +
                          dump("d2.txt") + "files " + std::string(ZD_TEST_DATA) + "/gui/two_phase.prf\nmenu 40016\n" +
                          "dialog 143 set 1336 5\ndialog 143 press 1\nmenu 40141\n" + dump("d3.txt");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(file("dc.txt"), file("d0.txt"));  // Cancel
    EXPECT_EQ(value(file("d1.txt"), "shift_last"), "2 1000");
    EXPECT_EQ(slot_text("d1.txt", 1, "draw_offset"), "0 0");
    EXPECT_EQ(slot_text("d1.txt", 2, "draw_offset"), "2 1000");
    EXPECT_EQ(slot_text("d1.txt", 3, "draw_offset"), "4 2000");
    for (const char* key : {"y_sum", "xmin", "xmax", "ymin", "ymax"})
        for (int k = 1; k <= 3; ++k) EXPECT_EQ(slot_value("d1.txt", k, key), slot_value("d0.txt", k, key)) << key << k;
    // the window was made anew around the stack: the top slot's peak raised by 2000
    const SCRIPT_LIMITS d0 = limits("d0.txt", "data"), d1 = limits("d1.txt", "data");
    EXPECT_FLOAT_EQ(d1.xmin, d0.xmin);
    EXPECT_FLOAT_EQ(d1.xmax, static_cast<float>(slot_value("d0.txt", 3, "xmax") + 4));
    EXPECT_FLOAT_EQ(d1.ymax, static_cast<float>(std::max({slot_value("d0.txt", 1, "ymax"), slot_value("d0.txt", 2, "ymax") + 1000,
                                                          slot_value("d0.txt", 3, "ymax") + 2000})));
    EXPECT_GT(fs::file_size(home / "shift.png"), 1000u);
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | The shifts must be numbers"), std::string::npos) << out;
    EXPECT_EQ(file("d2.txt"), file("d1.txt"));
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Profile PRF in memory. Operation not permitted"), std::string::npos) << out;
    EXPECT_EQ(value(file("d3.txt"), "prf_loaded"), "1");
    EXPECT_EQ(value(file("d3.txt"), "shift_last"), "2 1000");
}

TEST_F(Arith, MonitorNormalisationOfTwoRealRunsCancelAndRefusal) {
    write_files();
    const std::string s = open_as("patterns/PSI_DMC.dat", 107) + open_as("patterns/DMC_n_Unknown_578.dat", 107) +
                          dump("d0.txt") + "dialog 146 set 1346 5e7\ndialog 146 press 2\nmenu 40026\n" + dump("dc.txt") +
                          "dialog 146 set 1346 5e7\ndialog 146 press 1\nmenu 40026\n" + dump("d1.txt") +
                          "dialog 146 set 1346 -4\ndialog 146 press 1\nmenu 40026\n" + open("a.xy") + dump("d2.txt") +
                          "dialog 146 press 1\nmenu 40026\n" + dump("d3.txt");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    ASSERT_EQ(slot_value("d0.txt", 1, "monitor"), 1.8e7);
    ASSERT_EQ(slot_value("d0.txt", 2, "monitor"), 1e8);
    EXPECT_EQ(file("dc.txt"), file("d0.txt"));
    for (int k = 1; k <= 2; ++k) {
        const double m = slot_value("d0.txt", k, "monitor");
        EXPECT_EQ(slot_value("d1.txt", k, "monitor"), 5e7) << k;
        EXPECT_NEAR(slot_value("d1.txt", k, "y_sum"), slot_value("d0.txt", k, "y_sum") * 5e7 / m,
                    1e-5 * slot_value("d1.txt", k, "y_sum")) << k;
        EXPECT_NEAR(slot_value("d1.txt", k, "ymax"), slot_value("d0.txt", k, "ymax") * 5e7 / m,
                    1e-5 * slot_value("d1.txt", k, "ymax")) << k;
    }
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | The normalisation monitor must be a number above 0.001"), std::string::npos) << out;
    // the xy file has no monitor: refused before the dialog, the store as it was
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Normalization impossible: some profile has no valid monitor"), std::string::npos)
        << out;
    EXPECT_EQ(slots("d3.txt"), slots("d2.txt"));
    EXPECT_EQ(slot_value("d2.txt", 1, "y_sum"), slot_value("d1.txt", 1, "y_sum"));
}

TEST_F(Arith, OffsetAndScalingDialogsByValueAndHandedToTheMouse) {
    write_files();
    const std::string s =
        open("a.xy") + open("b.xy") + dump("d0.txt") +
        // Offset/Align on slot 2 only
        "dialog 105 grid 1340 2 2 1\ndialog 105 set 1341 0.5\ndialog 105 set 1342 100\ndialog 105 press 1\nmenu 40149\n" +
        dump("d1.txt") +
        // Scaling Y of both rows about 0: the present 1 becomes 2
        "dialog 152 press 1332\ndialog 152 set 1413 0\ndialog 152 set 1414 1\ndialog 152 set 1415 2\ndialog 152 press 1\n"
        "menu 40115\n" + dump("d2.txt") +
        // no row: three refusals, one a dialog; "Select all" then "Deselect all" leaves none
        "dialog 105 press 1\nmenu 40149\ndialog 152 press 1332\ndialog 152 press 1333\ndialog 152 press 1\nmenu 40115\n"
        "dialog 153 press 1\nmenu 40124\n" + dump("d3.txt") +
        // Scaling X and Scaling Y hand over to the mouse
        "dialog 153 grid 1340 1 2 1\ndialog 153 press 1411\nmenu 40124\n" + dump("d4.txt") + "key home\n" +
        "dialog 152 grid 1340 2 2 1\ndialog 152 press 1411\nmenu 40115\n" + dump("d5.txt");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    const int n = 4489;
    EXPECT_EQ(slot_value("d1.txt", 1, "y_sum"), slot_value("d0.txt", 1, "y_sum"));
    EXPECT_EQ(slot_value("d1.txt", 1, "xmin"), slot_value("d0.txt", 1, "xmin"));
    EXPECT_NEAR(slot_value("d1.txt", 2, "y_sum"), slot_value("d0.txt", 2, "y_sum") + 100.0 * n, 5e-6 * sum_a);
    EXPECT_NEAR(slot_value("d1.txt", 2, "xmin"), slot_value("d0.txt", 2, "xmin") + 0.5, 1e-4);
    EXPECT_NEAR(slot_value("d1.txt", 2, "ymax"), slot_value("d0.txt", 2, "ymax") + 100, 1e-3);
    for (int k = 1; k <= 2; ++k) {
        // the dump keeps six digits
        EXPECT_NEAR(slot_value("d2.txt", k, "y_sum"), 2 * slot_value("d1.txt", k, "y_sum"), 1e-5 * sum_a) << k;
        // variances by the square of the factor
        EXPECT_NEAR(slot_value("d2.txt", k, "sigma_sum"), 4 * slot_value("d1.txt", k, "sigma_sum"),
                    5e-6 * 4 * slot_value("d1.txt", k, "sigma_sum")) << k;
    }
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | No files have been selected for offset/align. Operation cancelled"), std::string::npos);
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | No files have been selected for scaling Y. Operation cancelled"), std::string::npos);
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | No files have been selected for scaling X. Operation cancelled"), std::string::npos);
    EXPECT_EQ(slots("d3.txt"), slots("d2.txt"));
    EXPECT_EQ(value(file("d3.txt"), "MoveMode"), "0");
    EXPECT_EQ(value(file("d4.txt"), "MoveMode"), "5");
    EXPECT_EQ(slots("d4.txt"), slots("d2.txt"));  // the mouse does the work, not the dialog
    EXPECT_EQ(value(file("d5.txt"), "MoveMode"), "4");
}

TEST_F(Arith, FourierTakesDataAndSmoothedProfilesAndSkipsASum) {
    // A peak on the first points: the filter spreads some of it into the mirrored end, so
    // the sum of y shows, beyond the six digits of the dump, that a profile went through it.
    {
        std::ofstream e(home / "edge.xy");
        for (int i = 1; i <= 200; ++i) e << 10 + 0.05 * i << ' ' << (i <= 3 ? 5010 : 10) << "\n";
    }
    const std::string del = "dialog \"Delete profiles\" ";
    const std::string s =
        open("edge.xy") +
        // a polynomial copy (SMOO) and a sum (SUMM) beside the raw file
        "dialog 140 check 1330 1\ndialog 140 press 1\nmenu 40090\n"
        "dialog 141 press 1332\ndialog 141 press 1\nmenu 40100\n" + dump("d0.txt") +
        "dialog 140 radio 1021\ndialog 140 press 1\nmenu 40020\n" + dump("d1.txt") +
        // the smoothed profile alone, first: accepted with "First profile"
        del + "grid 10 1 3 1\n" + del + "grid 10 3 3 1\n" + del + "press 1\nmenu 40037\n" + dump("d2.txt") +
        "dialog 140 radio 1020\ndialog 140 press 1\nmenu 40020\n" + dump("d3.txt");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    ASSERT_EQ(slot_text("d0.txt", 2, "prf_type"), "SMOO");
    ASSERT_EQ(slot_text("d0.txt", 3, "prf_type"), "SUMM");
    // "All profiles": DATA and SMOO smoothed, the sum skipped with its message and left as it was
    EXPECT_LT(slot_value("d1.txt", 1, "y_sum"), slot_value("d0.txt", 1, "y_sum") - 10);
    EXPECT_LT(slot_value("d1.txt", 2, "y_sum"), slot_value("d0.txt", 2, "y_sum") - 10);
    EXPECT_EQ(slot_value("d1.txt", 3, "y_sum"), slot_value("d0.txt", 3, "y_sum"));
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Profile 3is not of DATA type. It will be ignored"), std::string::npos) << out;
    EXPECT_EQ(count(out, "is not of DATA type"), 1) << out;
    ASSERT_EQ(value(file("d2.txt"), "nperfiles"), "1");
    ASSERT_EQ(slot_text("d2.txt", 1, "prf_type"), "SMOO");
    EXPECT_LT(slot_value("d3.txt", 1, "y_sum"), slot_value("d2.txt", 1, "y_sum") - 10);
    EXPECT_EQ(value(file("d3.txt"), "nperfiles"), "1");
    EXPECT_EQ(count(out, "Operation not permitted over this profile type"), 0) << out;
}
