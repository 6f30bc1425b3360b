// End-to-end: a temperature series made from a real pattern (PSI_DMC.dat with its counts
// scaled and raised and its 2theta shifted a little at each step) opened and shown as a
// contour map, in log, as a stack and as a surface; the refusals, the read-out under the
// mouse, zoom and unzoom, the click that shows one pattern alone, and the 3D eye.
#include <gtest/gtest.h>

#include <QImage>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

const std::string kPatterns = ZD_TEST_DATA "/patterns/";
const char* kFormat = "dialog \"Format of the data file\" radio 101\ndialog \"Format of the data file\" press 1\n";
constexpr int kSeries = 8;

struct Multi : SCRIPTED_HOME {
    // Pattern k (from 0): TSAMP 300 + 20k, counts * (1 + 0.05k) + 200k, 2theta + 0.1k.
    void make_series() {
        std::ifstream in(kPatterns + "PSI_DMC.dat");
        std::vector<std::string> lines;
        for (std::string s; std::getline(in, s);) lines.push_back(s);
        ASSERT_GT(lines.size(), 10u);
        for (int k = 0; k < kSeries; ++k) {
            std::ofstream out(home / ("s" + std::to_string(k + 1) + ".dat"));
            out << "# TSAMP " << 300 + 20 * k << "\n" << lines[0] << "\n" << lines[1] << "\n";
            std::istringstream lim(lines[2]);
            double a = 0, step = 0, b = 0;
            std::string rest;
            lim >> a >> step >> b;
            std::getline(lim, rest);
            char buf[128];
            std::snprintf(buf, sizeof buf, "%8.3f%8.3f%8.3f", a + 0.1 * k, step, b + 0.1 * k);
            out << buf << rest << "\n";
            for (std::size_t i = 3; i < lines.size(); ++i) {
                std::istringstream w(lines[i]);
                std::string o;
                for (double v; w >> v;) {
                    std::snprintf(buf, sizeof buf, "%8.0f", v * (1 + 0.05 * k) + 200 * k);
                    o += buf;
                }
                out << (o.empty() ? lines[i] : o) << "\n";
            }
        }
    }
    std::string open_series() const {
        std::string s = "files";
        for (int k = 1; k <= kSeries; ++k) s += " " + at("s" + std::to_string(k) + ".dat");
        return s + "\n" + kFormat + "menu 40014\n";
    }
    std::string bar(const std::string& name, int part) const {
        std::istringstream in(file(name));
        for (std::string line; std::getline(in, line);)
            if (line.rfind("status " + std::to_string(part) + " ", 0) == 0) return line.substr(9);
        return "?";
    }
    // The counts of pattern k (from 1) at 2theta within [x1, x2], read back from its file.
    std::vector<double> counts(int k, double x1, double x2) const {
        std::ifstream in(home / ("s" + std::to_string(k) + ".dat"));
        std::string line;
        for (int i = 0; i < 3; ++i) std::getline(in, line);
        double a = 0, step = 0, b = 0;
        in >> a >> step >> b;
        std::getline(in, line);
        std::vector<double> out;
        double v = 0;
        for (int i = 0; in >> v && a + i * step <= b + 1e-6; ++i)
            if (a + i * step >= x1 && a + i * step <= x2) out.push_back(v);
        return out;
    }
    // Pixels in colour other than the page's background (taken at the left edge).
    static int coloured(const fs::path& png) {
        const QImage img(QString::fromStdString(png.string()));
        if (img.isNull()) return 0;
        const QRgb page = img.pixel(2, img.height() / 2);
        int n = 0;
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x) {
                const QRgb c = img.pixel(x, y);
                n += c != page && (qRed(c) != qGreen(c) || qGreen(c) != qBlue(c)) ? 1 : 0;
            }
        return n;
    }
};

TEST_F(Multi, ChecksRefuseWithTheirErrorTexts) {
    fs::copy_file(kPatterns + "PSI_DMC.dat", home / "one.dat");
    fs::copy_file(ZD_TEST_DATA "/gui/two_phase.prf", home / "two.prf");
    std::string s = "files " + at("one.dat") + "\n" + kFormat + "menu 40014\n";
    s += "menu 40031\nmenu 40028\ndump " + at("d1.txt") + "\n";
    s += "files " + at("two.prf") + "\nmenu 40016\nmenu 40125\ndump " + at("d2.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(count(out, "ERROR: At least two profiles must be shown for this graph"), 2) << out;
    EXPECT_NE(out.find("ERROR: Profile 2 comes from a Rietveld profile file"), std::string::npos) << out;
    EXPECT_EQ(value(file("d1.txt"), "graph_mode"), "single");  // nothing entered
    EXPECT_EQ(value(file("d2.txt"), "nperfiles"), "2");
    EXPECT_NE(value(file("d2.txt"), "graph_mode"), "graph3dsurf");
}

TEST_F(Multi, ContourReadOutZoomAndClickToOnePattern) {
    make_series();
    std::string s = open_series() + "menu 40031\ndump " + at("d1.txt") + "\npicture 0 " + at("contour.png") + "\n";
    s += "mouse move 0 40 340\nstatus " + at("st1.txt") + "\n";      // the band of 340 K is pattern 3
    s += "mouse move 0 40 301\nstatus " + at("st2.txt") + "\n";
    s += "mouse press 1 30 310\nmouse move 1 45 350\nmouse release 1 60 400\n";  // zoom
    s += "mouse move 0 page 600 400\nstatus " + at("st3.txt") + "\npicture 0 " + at("zoom.png") + "\n";
    s += "mouse press 2 40 340\nmouse move 0 page 600 400\nstatus " + at("st4.txt") + "\n";  // unzoom
    s += "mouse press 1 40 380\nmouse release 1 40 380\ndump " + at("d2.txt") + "\n";        // pattern 5 alone
    s += "menu 40027\ndump " + at("d3.txt") + "\n";
    s += "menu 40227\ndump " + at("d4.txt") + "\npicture 0 " + at("contour_log.png") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("ERROR"), std::string::npos) << out;
    EXPECT_EQ(value(file("d1.txt"), "graph_mode"), "graph2dcontour");
    EXPECT_EQ(bar("st1.txt", 3), "Pattern: 3 s3.dat T= 340.00");
    EXPECT_EQ(bar("st1.txt", 1), " X= 40.0000");
    // the intensity is a mean of the file's counts about X = 40 (a cell is about 0.2 wide)
    const std::vector<double> near = counts(3, 39.75, 40.25);
    ASSERT_FALSE(near.empty());
    const double shown = std::stod(bar("st1.txt", 2).substr(4));
    EXPECT_GE(shown, *std::min_element(near.begin(), near.end()) - 0.5);
    EXPECT_LE(shown, *std::max_element(near.begin(), near.end()) + 0.5);
    EXPECT_EQ(bar("st2.txt", 3), "Pattern: 1 s1.dat T= 300.00");
    // zoomed on 30..60 and 310..400: the middle of the frame is X 45 in the band of 360 K
    EXPECT_NEAR(std::stod(bar("st3.txt", 1).substr(4)), 45.0, 0.1);
    EXPECT_EQ(bar("st3.txt", 3).substr(0, 10), "Pattern: 4");
    // unzoomed: the middle of the whole range, 2.948 .. 163.598
    EXPECT_NEAR(std::stod(bar("st4.txt", 1).substr(4)), (2.948 + 163.598) / 2, 0.2);
    const std::string d2 = file("d2.txt");
    EXPECT_EQ(value(d2, "graph_mode"), "multi");
    EXPECT_EQ(count(d2, "show_profile 1"), 1);  // pattern 5 alone
    const std::size_t slot5 = d2.find("slot 5\n");
    ASSERT_NE(slot5, std::string::npos);
    EXPECT_EQ(d2.substr(d2.find("show_profile", slot5), 14), "show_profile 1");
    EXPECT_EQ(count(file("d3.txt"), "show_profile 1"), kSeries);  // Graph 2D brings the set back
    EXPECT_EQ(value(file("d4.txt"), "graph_mode"), "graph2dcontour_log");
    EXPECT_GT(coloured(home / "contour.png"), 100000);
    EXPECT_GT(coloured(home / "contour_log.png"), 100000);
    const QImage a(QString::fromStdString((home / "contour.png").string()));
    const QImage z(QString::fromStdString((home / "zoom.png").string()));
    EXPECT_NE(a, z);
}

// The map is kept between redraws of a view; profiles changed in place by a command (a
// smoothing keeps their arrays, and returns to the 2D graph) must show when the view is
// entered again.
TEST_F(Multi, ContourFollowsACommandThatChangesTheProfiles) {
    make_series();
    std::string s = open_series() + "menu 40031\nmouse move 0 40 340\nstatus " + at("st1.txt") + "\n";
    s += "picture 0 " + at("before.png") + "\n";
    s += "dialog 140 set 1282 51\ndialog 140 radio 1021\ndialog 140 press 1\nmenu 40020\n";
    s += "menu 40031\nmouse move 0 40 340\nstatus " + at("st2.txt") + "\npicture 0 " + at("after.png") + "\n";
    s += "mouse move 0 40 340\nstatus " + at("st3.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("SCRIPT"), std::string::npos) << out;
    EXPECT_EQ(bar("st2.txt", 3), "Pattern: 3 s3.dat T= 340.00");
    EXPECT_NE(bar("st1.txt", 2), bar("st2.txt", 2));  // the smoothed intensity, not the kept one
    EXPECT_EQ(bar("st2.txt", 2), bar("st3.txt", 2));
    const QImage a(QString::fromStdString((home / "before.png").string()));
    const QImage b(QString::fromStdString((home / "after.png").string()));
    EXPECT_NE(a, b);
}

// The settings dialog: the grey scale with iso-lines (red on grey), a refused level that
// changes nothing, and viridis again.
TEST_F(Multi, SettingsDialogScaleLevelsAndARefusal) {
    make_series();
    const std::string d = "dialog \"Settings of the many-pattern views\" ";
    std::string s = open_series() + d + "radio 11\n" + d + "set 12 3000 6000\n" + d + "set 13 1.5\n" + d + "press 1\n";
    s += "menu 40244\nmenu 40031\npicture 0 " + at("grey.png") + "\n";
    s += d + "set 12 3000 x\n" + d + "radio 10\n" + d + "press 1\nmenu 40244\npicture 0 " + at("refused.png") + "\n";
    s += d + "set 12 3000\n" + d + "radio 10\n" + d + "press 1\nmenu 40244\npicture 0 " + at("viridis.png") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("SCRIPT"), std::string::npos) << out;
    EXPECT_EQ(count(out, "The iso-line levels must be numbers"), 1) << out;
    const QImage grey(QString::fromStdString((home / "grey.png").string()));
    ASSERT_FALSE(grey.isNull());
    int red = 0;
    for (int y = 0; y < grey.height(); ++y)
        for (int x = 0; x < grey.width(); ++x) {
            const QRgb c = grey.pixel(x, y);
            red += qRed(c) > 180 && qGreen(c) < 60 && qBlue(c) < 60 ? 1 : 0;
        }
    EXPECT_GT(red, 200);  // the iso-lines
    const int viridis = coloured(home / "viridis.png");
    EXPECT_GT(viridis, 100000);
    EXPECT_LT(coloured(home / "grey.png"), viridis / 10);
    EXPECT_EQ(grey, QImage(QString::fromStdString((home / "refused.png").string())));  // nothing changed
}

TEST_F(Multi, StackAndSurfaceTurnByDragAndKeys) {
    make_series();
    std::string s = open_series() + "menu 40028\nstatus " + at("st0.txt") + "\npicture 0 " + at("stack.png") + "\n";
    s += "mouse press 1 page 500 400\nmouse release 1 page 900 100\nstatus " + at("st1.txt") + "\n";
    s += "key left\nkey left\nkey up\nstatus " + at("st2.txt") + "\npicture 0 " + at("stack_turned.png") + "\n";
    s += "key down\nkey down\nkey down\nkey down\nkey down\nkey down\nkey down\nview offset 1.5\nstatus " + at("st3.txt") +
         "\npicture 0 " + at("waterfall.png") + "\n";
    s += "menu 40125\nstatus " + at("st4.txt") + "\ndump " + at("d4.txt") + "\npicture 0 " + at("surface.png") + "\n";
    s += "menu 40027\ndump " + at("d5.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("SCRIPT"), std::string::npos) << out;
    EXPECT_EQ(bar("st0.txt", 3), " Rotation : 0");
    EXPECT_EQ(bar("st0.txt", 4), " Elevation : 22");
    EXPECT_EQ(bar("st1.txt", 3), " Rotation : 1");  // one degree per release
    EXPECT_EQ(bar("st1.txt", 4), " Elevation : 21");
    EXPECT_EQ(bar("st2.txt", 3), " Rotation : -9");
    EXPECT_EQ(bar("st2.txt", 4), " Elevation : 26");
    EXPECT_EQ(bar("st3.txt", 4), " Elevation : 0");  // never below the horizon
    EXPECT_EQ(bar("st4.txt", 3), " Rotation : 0");   // the surface starts from the fixed eye
    EXPECT_EQ(bar("st4.txt", 4), " Elevation : 22");
    EXPECT_EQ(value(file("d4.txt"), "graph_mode"), "graph3dsurf");
    EXPECT_EQ(value(file("d5.txt"), "graph_mode"), "multi");
    for (const char* p : {"stack.png", "stack_turned.png", "waterfall.png", "surface.png"})
        EXPECT_GT(coloured(home / p), 3000) << p;
    EXPECT_NE(QImage(QString::fromStdString((home / "stack.png").string())),
              QImage(QString::fromStdString((home / "stack_turned.png").string())));
}

}  // namespace

// Patterns that each carry their start time: copies of a real XRDML scan, 30 minutes apart
// (the copies only move <startTimeStamp>, across midnight and a zone). The Y axis is then the
// time from the first start, and the read-out says it.
TEST_F(Multi, TimeAxisFromTheStartTimeStamps) {
    std::ifstream in(kPatterns + "210520step1_30min.xrdml");
    std::stringstream whole;
    whole << in.rdbuf();
    const std::string text = whole.str();
    const std::size_t at_stamp = text.find("<startTimeStamp>");
    ASSERT_NE(at_stamp, std::string::npos);
    const std::size_t end = text.find("</startTimeStamp>", at_stamp);
    const char* stamps[] = {"2021-05-20T23:00:00+02:00", "2021-05-20T21:30:00Z", "2021-05-21T00:00:00+02:00",
                            "2021-05-21T00:30:00+02:00", "2021-05-20T23:00:00Z"};
    std::string files = "files";
    for (int k = 0; k < 5; ++k) {
        const std::string name = "t" + std::to_string(k + 1) + ".xrdml";
        std::ofstream(home / name) << text.substr(0, at_stamp + 16) << stamps[k] << text.substr(end);
        files += " " + at(name);
    }
    std::string s = files + "\nmenu 40014\nmenu 40031\nmouse move 0 30 60\nstatus " + at("st1.txt") + "\npicture 0 " +
                    at("time.png") + "\nmenu 40028\npicture 0 " + at("time_stack.png") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    // 21:00 UTC is the first start: the third copy (22:00 UTC) is at 60 minutes.
    EXPECT_EQ(bar("st1.txt", 3), "Pattern: 3 t3.xrdml t= 60.00 min") << file("st1.txt");
    EXPECT_GT(coloured(home / "time.png"), 10000);
}
