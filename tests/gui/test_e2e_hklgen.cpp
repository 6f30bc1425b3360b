// End-to-end: HKL Gen on the real ceria pattern, from a wrong cell edge to the right one by
// the edit and the slider, the ticks at gemmi's positions in the dump and in the picture, the
// reflection under the mouse, the refusals of bad input, and the spectral lines of the rubber band.
#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

struct HklGen : SCRIPTED_HOME {
    std::string open_and_setup(const std::string& group = "F m -3 m", const std::string& lambda = "0.4066") {
        fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy",
                      fs::copy_options::overwrite_existing);
        return "files " + at("ceo2.xy") + "\nmenu 40014\ndialog 155 set 1551 " + group + "\ndialog 155 set 1552 " +
               lambda + "\ndialog 155 press 1\nmenu 40154\n";
    }
    // Positions of the "refl" lines of an HKL dump.
    static std::vector<double> positions(const std::string& dump) {
        std::vector<double> v;
        std::istringstream in(dump);
        for (std::string line; std::getline(in, line);) {
            if (line.rfind("refl ", 0) != 0) continue;
            std::istringstream s(line.substr(5));
            int h, k, l, m;
            double sv, pos;
            s >> h >> k >> l >> m >> sv >> pos;
            v.push_back(pos);
        }
        return v;
    }
    // Centres of the runs of columns that hold a pixel of `colour` in the rows [y0, y1).
    static std::vector<double> columns(const QImage& img, QRgb colour, int y0, int y1) {
        std::vector<double> c;
        int start = -1;
        for (int x = 0; x <= img.width(); ++x) {
            bool hit = false;
            for (int y = y0; x < img.width() && y < y1 && !hit; ++y) hit = img.pixel(x, y) == colour;
            if (hit && start < 0) start = x;
            if (!hit && start >= 0) {
                c.push_back(0.5 * (start + x - 1));
                start = -1;
            }
        }
        return c;
    }
    // Centres of the runs of columns whose pixels in the middle rows differ between two pictures.
    static std::vector<double> changed_columns(const QImage& a, const QImage& b) {
        std::vector<double> c;
        int start = -1;
        const int y0 = a.height() / 3, y1 = a.height() / 2;
        for (int x = 0; x <= a.width(); ++x) {
            bool diff = false;
            for (int y = y0; x < a.width() && y < y1 && !diff; ++y) diff = a.pixel(x, y) != b.pixel(x, y);
            if (diff && start < 0) start = x;
            if (!diff && start >= 0) c.push_back(0.5 * (start + x - 1)), start = -1;
        }
        return c;
    }
};

std::vector<double> gemmi_ceria() {
    std::ifstream in(std::string(ZD_TEST_DATA) + "/peaks/ceo2_reflections.txt");
    std::vector<double> v;
    for (std::string line; std::getline(in, line);)
        if (!line.empty() && line[0] != '#') v.push_back(std::stod(line));
    return v;
}

TEST_F(HklGen, WrongEdgeMovedToCeriaTicksAtTheReflections) {
    const std::string s = open_and_setup() + "dialog 156 set 1611 5.30\nbutton 156 1611\nhklgen " + at("h1.txt") +
                          "\n"
                          // the slider: 5.30 * (1 + 0.4 * 21 / 400) = 5.41130
                          "dialog 156 set 1601 21\nbutton 156 1601\nhklgen " + at("h2.txt") + "\n" +
                          // the edit, exactly, then a picture and the mouse on 111
                          "dialog 156 set 1611 5.411\nbutton 156 1611\nhklgen " + at("h3.txt") + "\npicture 0 " +
                          at("p.png") + "\nmouse move 0 7.47 5000\nhklgen " + at("h4.txt") + "\n" +
                          "dialog 156 show\nbutton 156 1633\npicture 0 " + at("stop.png") + "\nbutton 156 1634\ndump " +
                          at("d.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006"), 0) << out;
    const std::string h1 = file("h1.txt"), h2 = file("h2.txt"), h3 = file("h3.txt");
    EXPECT_EQ(value(h1, "cell"), "5.30000 5.30000 5.30000 90.00000 90.00000 90.00000");
    EXPECT_EQ(value(h2, "cell"), "5.41130 5.41130 5.41130 90.00000 90.00000 90.00000");  // cubic: one slider, a=b=c
    EXPECT_EQ(value(h3, "system"), "Cubic");
    // every reflection gemmi lists for a = 5.411 is a tick within 0.001 deg; none at 5.30
    const std::vector<double> g = gemmi_ceria(), p1 = positions(h1), p3 = positions(h3);
    ASSERT_EQ(g.size(), 17u);
    int at_530 = 0;
    for (double t : g) {
        bool hit = false;
        for (double p : p3) hit = hit || std::fabs(p - t) < 0.001;
        EXPECT_TRUE(hit) << t;
        for (double p : p1) at_530 += std::fabs(p - t) < 0.01;
    }
    EXPECT_EQ(at_530, 0);
    // the reflection box under the mouse
    EXPECT_NE(file("h4.txt").find("under (  1   1   1)  M=  8  d=  3.12404"), std::string::npos) << file("h4.txt");
    EXPECT_NE(out.find("DIALOG 156 | label 1623 No peak list: find peaks first"), std::string::npos) << out;
    // the green ticks in the picture: their columns map linearly onto gemmi's angles
    const QImage img(QString::fromStdString(at("p.png")));
    ASSERT_FALSE(img.isNull());
    const std::vector<double> cols = columns(img, qRgb(0, 150, 0), 0, img.height());
    ASSERT_GE(cols.size(), 15u);
    const double k = (cols.back() - cols.front()) / (g.back() - g.front());
    int near = 0;
    for (double t : g) {
        const double px = cols.front() + k * (t - g.front());
        for (double c : cols) near += std::fabs(c - px) <= 1.5;
    }
    EXPECT_GE(near, 15);  // two pairs lie closer than a pixel or two and may merge
    // Stop removes them; Close leaves the calculation mode
    EXPECT_TRUE(columns(QImage(QString::fromStdString(at("stop.png"))), qRgb(0, 150, 0), 0, img.height()).empty());
    EXPECT_EQ(value(file("d.txt"), "calc_mode"), "0");
}

// After a conversion to d the ticks are d-spacings: 111 of a = 5.411 at 5.411 / sqrt 3 = 3.12404.
TEST_F(HklGen, TicksFollowAProfileConvertedToD) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy");
    const std::string s = "files " + at("ceo2.xy") + "\nmenu 40014\n" +
                          "dialog \"Change wavelength\" set 11 0.4066\ndialog \"Change wavelength\" press 12\n"
                          "dialog \"Change wavelength\" press 1\nmenu 40017\n" +
                          "dialog 155 set 1551 F m -3 m\ndialog 155 press 1\nmenu 40154\n" +
                          "dialog 156 set 1611 5.411\nbutton 156 1611\nhklgen " + at("h.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    const std::vector<double> pos = positions(file("h.txt"));
    ASSERT_FALSE(pos.empty()) << file("h.txt");
    EXPECT_NEAR(*std::max_element(pos.begin(), pos.end()), 5.411 / std::sqrt(3.0), 1e-4);
    EXPECT_GT(*std::min_element(pos.begin(), pos.end()), 0.5);  // d, not 2theta: the window ends near d 0.765
}

TEST_F(HklGen, BadInputGivesItsTextAndKeepsTheTicks) {
    // the setup's refusals: nothing opens
    run(open_and_setup("\" \"") + "dump " + at("d0.txt") + "\n");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Empty SPGR field"), std::string::npos) << out;
    EXPECT_EQ(value(file("d0.txt"), "calc_mode"), "0");
    run(open_and_setup("F m -3 m", "-1"));
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Bad wavelength"), std::string::npos) << out;
    run(open_and_setup("Q q 9 z"));
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 |  Problems in SpaceGroup"), std::string::npos) << out;
    // in the panel: a bad edge, a triclinic cell with impossible angles, a slider to a flat cell
    const std::string s = open_and_setup("P 1") + "dialog 156 set 1611 5.411\nbutton 156 1611\n" +
                          "dialog 156 set 1612 5.411\nbutton 156 1612\ndialog 156 set 1613 5.411\nbutton 156 1613\n" +
                          "hklgen " + at("h1.txt") + "\n" + "dialog 156 set 1611 -2\nbutton 156 1611\n" +
                          "dialog 156 set 1611 abc\nbutton 156 1611\n" +
                          "dialog 156 set 1614 150\nbutton 156 1614\nhklgen " + at("h15.txt") +
                          "\ndialog 156 set 1615 150\nbutton 156 1615\n" +
                          "dialog 156 set 1616 170\nbutton 156 1616\ndialog 156 set 1606 400\nbutton 156 1606\n" +
                          "hklgen " + at("h2.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    const std::string h1 = file("h1.txt"), h2 = file("h2.txt");
    EXPECT_EQ(value(h1, "system"), "Triclinic");
    // each refusal said so, and the cell and the list are those of the last good cell
    EXPECT_GE(count(out, "MESSAGE Zendrite-2006 | Wrong cell parameters"), 4) << out;
    EXPECT_EQ(h2, file("h15.txt"));  // after the last good cell nothing changed
    const std::string c1 = value(h1, "cell"), c2 = value(h2, "cell");
    EXPECT_EQ(c1.substr(0, 24), c2.substr(0, 24)) << c2;  // the edges stayed
    EXPECT_NE(c2.find("150.00000"), std::string::npos);  // alpha 150 alone gave a cell
    EXPECT_EQ(c2.find("170.00000"), std::string::npos);  // 150 + 150 + 170 gave none
    EXPECT_GT(std::stoi(value(h2, "count")), 0);
}

// The zero values and the edges the first test leaves out: a wavelength of 0, an edge of 0, a
// slider that flattens the cell, "Change" to a blank or unknown group or a zero wavelength, a
// window that starts at 0. Each says so and leaves the cell, the list and its ticks as they were.
TEST_F(HklGen, ZeroWavelengthZeroEdgeFlatCellAndWindowAtZero) {
    run(open_and_setup("F m -3 m", "0") + "dump " + at("d0.txt") + "\n");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | Bad wavelength"), 1) << out;
    EXPECT_EQ(value(file("d0.txt"), "calc_mode"), "0");
    // P 1 with alpha = beta = 100: the cell is flat at gamma = 360 - 200 = 160. Typed gamma
    // 114.28568 and the slider at +40 % give 159.99995, where V / abc = 7e-4 (worked by hand:
    // 1 - 2 cos^2 100 - cos^2 g + 2 cos^2 100 cos g = 5.3e-7 under the root).
    const std::string s = open_and_setup("P 1") + "dialog 156 set 1614 100\nbutton 156 1614\n" +
                          "dialog 156 set 1615 100\nbutton 156 1615\ndialog 156 set 1616 114.28568\n" +
                          "button 156 1616\nhklgen " + at("h1.txt") + "\npicture 0 " + at("p1.png") + "\n" +
                          "dialog 156 set 1611 0\nbutton 156 1611\nhklgen " + at("h2.txt") + "\n" +
                          "dialog 156 set 1606 400\nbutton 156 1606\nhklgen " + at("h3.txt") + "\npicture 0 " +
                          at("p3.png") + "\n" +
                          // "Change" to a blank and to an unknown group, and to a zero wavelength
                          "dialog 155 set 1551 \" \"\ndialog 155 press 1\nbutton 156 1631\n" +
                          "dialog 155 set 1551 Q q 9 z\ndialog 155 press 1\nbutton 156 1631\n" +
                          "dialog 155 set 1551 P 1\ndialog 155 set 1552 0\ndialog 155 press 1\nbutton 156 1631\n" +
                          "hklgen " + at("h35.txt") + "\n" +
                          // the band from x = 0 to 5 degrees: s runs from 0
                          "mouse press 1 0 8000\nmouse move 1 3 4000\nmouse release 1 5 0\ndump " + at("d4.txt") +
                          "\nhklgen " + at("h4.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    const std::string h1 = file("h1.txt");
    EXPECT_EQ(value(h1, "cell").substr(24), "100.00000 100.00000 114.28568") << h1;
    EXPECT_GT(std::stoi(value(h1, "count")), 100);
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | Wrong cell parameters"), 2) << out;
    // the edge of 0 and the flat cell: the cell, the list and the ticks are those of h1
    EXPECT_EQ(file("h2.txt"), h1);
    EXPECT_EQ(file("h3.txt"), h1);
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | Empty SPGR field"), 1) << out;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 |  Problems in SpaceGroup"), 1) << out;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | Bad wavelength"), 1) << out;
    EXPECT_EQ(file("h35.txt"), h1);
    const QImage p1(QString::fromStdString(at("p1.png"))), p3(QString::fromStdString(at("p3.png")));
    ASSERT_FALSE(p1.isNull());
    EXPECT_TRUE(p1 == p3);
    // the window at 0: the limits are taken, the list is not, and the status bar says why
    const std::string d4 = file("d4.txt"), h4 = file("h4.txt");
    EXPECT_LT(std::stod(value(d4, "win")), 1e-5) << d4;
    EXPECT_EQ(value(h4, "status"), "Error liminf*limsup < 0.0001") << h4;
    EXPECT_EQ(value(h4, "count"), value(h1, "count"));
    EXPECT_EQ(h4.substr(h4.find("\nrefl ")), h1.substr(h1.find("\nrefl ")));
}

// The numbers of gemmi and scipy for the 16 peaks the automatic search finds in this pattern.
double reference(const std::string& line, const std::string& key) {
    std::ifstream in(std::string(ZD_TEST_DATA) + "/peaks/figures_of_merit_reference.txt");
    for (std::string l; std::getline(in, l);) {
        if (l.rfind(line, 0) != 0) continue;
        const std::size_t p = l.rfind(" " + key + "=");
        if (p != std::string::npos) return std::stod(l.substr(p + key.size() + 2));
    }
    return NAN;
}

// The number after `key` in a text, NAN when it is not there.
double number_after(const std::string& text, const std::string& key) {
    const std::size_t p = text.find(key);
    return p == std::string::npos ? NAN : std::strtod(text.c_str() + p + key.size(), nullptr);
}

// The peaks found, the panel opened before them says it has none, follows them once they are
// found, and follows the edge; "Refine cell" gives the least-squares edge of scipy and "Use"
// puts it on the edit. Ceria gives only 16 peaks, so M(20) says it has too few and F(16) is
// the number that must rise from the wrong edge to the right one.
TEST_F(HklGen, FigureOfMeritAndRefineCellOnCeria) {
    const std::string s = open_and_setup() + "hklgen " + at("h0.txt") + "\nbutton 156 1624\n" +
                          "menu 40096\ndialog 1960 press 1\nmenu 40092\n" +
                          "dialog 156 set 1611 5.30\nbutton 156 1611\nhklgen " + at("h1.txt") + "\n" +
                          // a wrong edge matches too few peaks: the library's refusal, nothing changes
                          "button 156 1624\nbutton 156 1629\nhklgen " + at("h1b.txt") + "\n" +
                          "dialog 156 set 1611 5.411\nbutton 156 1611\nhklgen " + at("h2.txt") + "\n" +
                          "button 156 1624\nhklgen " + at("h3.txt") + "\ndialog 156 show\ndialog 156 picture " +
                          at("panel.png") + "\nbutton 156 1629\nhklgen " + at("h4.txt") + "\n" +
                          "dialog 156 check 1626 1\nbutton 156 1624\nhklgen " + at("h5.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_EQ(value(file("h0.txt"), "merit"), "No peak list: find peaks first");
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | No peak list: find peaks first"), 1) << out;
    const std::string m1 = value(file("h1.txt"), "merit"), m2 = value(file("h2.txt"), "merit");
    // 5.30: most peaks unexplained; 5.411: all explained, and F(16) as the published formula gives
    EXPECT_GE(number_after(m1, "unexplained peaks: "), 10) << m1;
    EXPECT_NE(m2.find("M(20): fewer than 20 peaks (16)"), std::string::npos) << m2;
    EXPECT_NE(m2.find("unexplained peaks: 0 of 16"), std::string::npos) << m2;
    const double f1 = number_after(m1, "F(16) = "), f2 = number_after(m2, "F(16) = ");
    EXPECT_TRUE(std::isnan(f1) || f1 < 50) << m1;
    EXPECT_NEAR(f2, reference("ceo2_figures", "F"), 1.0) << m2;
    // the panel breaks the line where it fits
    EXPECT_NE(out.find("DIALOG 156 | label 1623 " + m2.substr(0, m2.find("   F(")) + "\nF(16) = 8"), std::string::npos)
        << out;
    // the refusal of the wrong edge: its text, the cell and no result to use
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | "), 2) << out;
    EXPECT_EQ(value(file("h1b.txt"), "cell"), "5.30000 5.30000 5.30000 90.00000 90.00000 90.00000");
    EXPECT_EQ(value(file("h1b.txt"), "Refined"), "?");
    // the refinement without a zero shift: scipy's edge and standard deviation
    const std::string h3 = file("h3.txt");
    const double a3 = number_after(h3, "Refined cell: "), s3 = number_after(h3, "sigma: ");
    EXPECT_NEAR(a3, 5.4117, 0.001) << h3;
    EXPECT_NEAR(a3, reference("ceo2_refine zero=0", "a"), 2e-6) << h3;
    EXPECT_NEAR(s3, reference("ceo2_refine zero=0", "a_std"), 2e-6) << h3;
    EXPECT_NE(out.find("DIALOG 156 | label 1627 Refined cell: "), std::string::npos) << out;
    EXPECT_NE(out.find("DIALOG 156 | label 1628 sigma: "), std::string::npos) << out;
    // Use: the edit holds it (a = b = c), the result is spent, the figure follows
    const std::string h4 = file("h4.txt");
    char want[64];
    std::snprintf(want, sizeof want, "%.5f", a3);
    EXPECT_EQ(value(h4, "cell").substr(0, 23), std::string(want) + " " + want + " " + want) << h4;
    EXPECT_EQ(value(h4, "Refined"), "?");
    EXPECT_NE(value(h4, "merit").find("unexplained peaks: 0 of 16"), std::string::npos) << h4;
    // with the zero shift
    const std::string h5 = file("h5.txt");
    EXPECT_NEAR(number_after(h5, "Refined cell: "), reference("ceo2_refine zero=1", "a"), 2e-6) << h5;
    EXPECT_NEAR(number_after(h5, "zero: "), reference("ceo2_refine zero=1", "zero"), 2e-5) << h5;
    EXPECT_FALSE(QImage(QString::fromStdString(at("panel.png"))).isNull());
}

// Enable with a pattern of no wavelength asks for the anode; the rubber band then draws the
// K-alpha1 line at the mouse and the K-beta line at the same d, not a rectangle.
TEST_F(HklGen, SpectralLinesInTheRubberBand) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy");
    const std::string s = "files " + at("ceo2.xy") + "\nmenu 40014\ndialog 157 set 1571 5\ndialog 157 press 1\n" +
                          "menu 40220\nmenu 40218\npicture 0 " + at("p0.png") +
                          "\nmouse press 1 25 3000\nmouse move 1 25 3000\npicture 0 " + at("p1.png") +
                          "\nmouse move 1 15 3000\npicture 0 " + at("p2.png") + "\nmouse release 1 15 3000\n" +
                          "menu 40221\ndump " + at("d.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    const QImage p0(QString::fromStdString(at("p0.png"))), p1(QString::fromStdString(at("p1.png"))),
        p2(QString::fromStdString(at("p2.png")));
    ASSERT_FALSE(p0.isNull() || p1.isNull() || p2.isNull());
    const std::vector<double> c1 = changed_columns(p1, p0), c2 = changed_columns(p2, p0);
    ASSERT_EQ(c1.size(), 2u);  // two lines, no rectangle
    ASSERT_EQ(c2.size(), 2u);
    // Bragg by hand, Cu: K-beta of 25 deg is 22.5594 deg, of 15 deg 13.5485 deg
    // the K-alpha1 line follows the mouse: its two columns give the scale of the frame
    const double k = (c2[1] - c1[1]) / (15.0 - 25.0);
    ASSERT_GT(k, 5.0);
    EXPECT_NEAR(c1[0], c1[1] + k * (22.5594 - 25.0), 1.5);
    EXPECT_NEAR(c2[0], c2[1] + k * (13.5485 - 15.0), 1.5);
    // the band of a release with the lines on changes no window
    EXPECT_EQ(file("d.txt").find("calc_mode 4"), std::string::npos);
}

}  // namespace

// A cubic standard with more than 20 lines: LaB6 in Cu K-alpha, zoomed to 15..150 deg, peaks
// found with the Cu doublet filter, HKL Gen started at a wrong edge of 4.10 A; the coarse slider
// brings it near (14 steps: 4.10 * 1.014 = 4.15740), the fine one onto it (-1 step: 4.15740 *
// 0.9999 = 4.156984); M(20) rises past 50; "Refine cell" gives the standard's edge; the box
// under the mouse names 110; the spectral lines of the rubber band; pictures of panel and plot.
TEST_F(HklGen, LanthanumHexaborideFromAWrongEdgeToTheStandardsCell) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/LaB6_d500_si_psd.xye", home / "lab6.xye");
    const std::string s =
        "files " + at("lab6.xye") + "\nmenu 40014\n" +
        "mouse press 1 15 15500\nmouse move 1 80 5000\nmouse release 1 150 -300\n" +
        "menu 40096\ndialog 1960 radio 6\ndialog 1960 press 1\nmenu 40092\nmenu 40097\n" +
        "dialog 155 set 1551 P m -3 m\ndialog 155 set 1552 1.540593\ndialog 155 press 1\nmenu 40154\n" +
        "dialog 156 set 1611 4.10\nbutton 156 1611\nhklgen " + at("h1.txt") + "\n" +
        "dialog 156 set 1601 14\nbutton 156 1601\nhklgen " + at("h2.txt") + "\n" +
        "dialog 156 check 1620 1\nbutton 156 1620\ndialog 156 set 1601 -1\nbutton 156 1601\nhklgen " +
        at("h3.txt") + "\n" + "button 156 1624\nhklgen " + at("h4.txt") + "\ndialog 156 show\ndialog 156 picture " +
        at("panel.png") + "\nbutton 156 1629\nhklgen " + at("h5.txt") + "\n" + "mouse move 0 30.39 9000\nhklgen " +
        at("h6.txt") + "\npicture 0 " + at("plot.png") + "\nbutton 156 1634\n" +
        // the spectral lines of Cu with the panel closed
        "dialog 157 set 1571 5\ndialog 157 press 1\nmenu 40220\nmenu 40218\npicture 0 " + at("s0.png") +
        "\nmouse press 1 30.39 3000\nmouse move 1 30.39 3000\npicture 0 " + at("s1.png") +
        "\nmouse move 1 43.51 3000\npicture 0 " + at("s2.png") + "\nmouse release 1 43.51 3000\nmenu 40221\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006"), 0) << out;
    const std::string h1 = file("h1.txt"), h2 = file("h2.txt"), h3 = file("h3.txt"), h4 = file("h4.txt");
    // the search found the 24 K-alpha1 lines of LaB6 between 15 and 150 degrees (100 to 421)
    const std::string m1 = value(h1, "merit"), m2 = value(h2, "merit"), m3 = value(h3, "merit");
    EXPECT_NE(m3.find("unexplained peaks: 0 of 24"), std::string::npos) << m3;
    EXPECT_EQ(value(h1, "cell"), "4.10000 4.10000 4.10000 90.00000 90.00000 90.00000");
    EXPECT_EQ(value(h2, "cell"), "4.15740 4.15740 4.15740 90.00000 90.00000 90.00000");
    EXPECT_EQ(value(h3, "cell"), "4.15698 4.15698 4.15698 90.00000 90.00000 90.00000");
    const double f1 = number_after(m1, "M(20) = "), f2 = number_after(m2, "M(20) = "),
                 f3 = number_after(m3, "M(20) = ");
    EXPECT_LT(f1, 10) << m1;
    EXPECT_GE(number_after(m1, "unexplained peaks: "), 20) << m1;
    EXPECT_GT(f2, 50) << m2;
    EXPECT_GT(f3, f2) << m3;
    // Refine cell: NIST SRM 660a (LaB6) certifies a = 0.41569 nm
    const double a = number_after(h4, "Refined cell: "), sa = number_after(h4, "sigma: ");
    EXPECT_NEAR(a, 4.1569, 0.001) << h4;
    EXPECT_GT(sa, 0) << h4;
    EXPECT_LT(sa, 0.0002) << h4;
    EXPECT_NE(h4.find("(24 peaks)"), std::string::npos) << h4;
    // Use: the trial cell is the refined one, and explains the peaks at least as well
    char want[32];
    std::snprintf(want, sizeof want, "%.5f", a);
    const std::string m5 = value(file("h5.txt"), "merit");
    EXPECT_EQ(value(file("h5.txt"), "cell").substr(0, 7), std::string(want)) << file("h5.txt");
    EXPECT_GE(number_after(m5, "M(20) = "), f3) << m5;
    // the box under the mouse at the strongest line: 110, twelve equivalents, d = a / sqrt(2)
    const std::string h6 = file("h6.txt");
    EXPECT_NE(h6.find("under (  1   1   0)  M= 12  d="), std::string::npos) << h6;
    EXPECT_NEAR(number_after(h6, "M= 12  d="), a / std::sqrt(2.0), 1e-5) << h6;
    // the panel's lines are broken where they fit, not cut by a narrow label
    EXPECT_NE(out.find("DIALOG 156 | label 1623 M(20) = "), std::string::npos) << out;
    const QImage panel(QString::fromStdString(at("panel.png"))), plot(QString::fromStdString(at("plot.png")));
    ASSERT_FALSE(panel.isNull() || plot.isNull());
    EXPECT_GT(panel.height(), 600);
    // a green tick over each of the 24 found lines, and more for the lines too weak to be found
    EXPECT_GE(columns(plot, qRgb(0, 150, 0), 0, plot.height()).size(), 24u);
    // Spectral lines: K-alpha1 at the mouse, K-beta at the same d. Bragg by hand with the Cu
    // table (K-beta / K-alpha1 = 1.392252 / 1.540597): 30.39 deg gives 27.4034, 43.51 gives 39.1389.
    const QImage s0(QString::fromStdString(at("s0.png"))), s1(QString::fromStdString(at("s1.png"))),
        s2(QString::fromStdString(at("s2.png")));
    ASSERT_FALSE(s0.isNull() || s1.isNull() || s2.isNull());
    const std::vector<double> c1 = changed_columns(s1, s0), c2 = changed_columns(s2, s0);
    ASSERT_EQ(c1.size(), 2u);
    ASSERT_EQ(c2.size(), 2u);
    const double k = (c2[1] - c1[1]) / (43.51 - 30.39);
    ASSERT_GT(k, 2.0);
    EXPECT_NEAR(c1[0], c1[1] + k * (27.4034 - 30.39), 1.5);
    EXPECT_NEAR(c2[0], c2[1] + k * (39.1389 - 43.51), 1.5);
}
