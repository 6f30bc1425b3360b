// End-to-end: the plot window driven by scripts — mouse zoom and undo, wheel and Home,
// excluded regions, styles and legend, log mode, Focus, peak and background edits,
// the profile dialogs and a fault of the wrong mode.
#include <gtest/gtest.h>
#include <unistd.h>

#include <QImage>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

const std::string kPatterns = ZD_TEST_DATA "/patterns/";
const char* kFormat = "dialog \"Format of the data file\" radio 101\ndialog \"Format of the data file\" press 1\n";

using LIMITS = SCRIPT_LIMITS;

struct Plot : SCRIPTED_HOME {
    void SetUp() override {
        SCRIPTED_HOME::SetUp();
        fs::copy_file(kPatterns + "PSI_DMC.dat", home / "psi.dat");
        fs::copy_file(kPatterns + "DMC_n_Unknown_578.dat", home / "dmc.dat");
    }
    // Script lines that open `files` (names in home) through the menu.
    std::string open(const std::vector<std::string>& files) const {
        std::string s = "files";
        for (const std::string& f : files) s += " " + at(f);
        return s + "\n" + kFormat + "menu 40014\n";
    }
    std::string dump(const std::string& name) const { return "dump " + at(name) + "\n"; }
    std::string picture(const std::string& name) const { return "picture 0 " + at(name) + "\n"; }
    LIMITS window(const std::string& name, const char* which = "win") const { return limits(name, which); }
    // The most frequent coloured (not grey) pixel in the middle of the frame, away from the
    // window's background and the legend: the colour of the curves drawn.
    static QRgb main_colour(const fs::path& png) {
        QImage img(QString::fromStdString(png.string()));
        std::map<QRgb, int> n;
        for (int y = img.height() * 3 / 10; y < img.height() * 8 / 10; ++y)
            for (int x = img.width() / 5; x < img.width() * 13 / 20; ++x) {
                const QRgb c = img.pixel(x, y);
                if (qRed(c) != qGreen(c) || qGreen(c) != qBlue(c)) ++n[c];
            }
        QRgb best = 0;
        int most = 0;
        for (const auto& [c, k] : n)
            if (k > most) best = c, most = k;
        return best;
    }
    // Pixels of the picture in the colour of the curve of slot 1 (as drawn alone, linear).
    static int pixels_of(const fs::path& png, QRgb colour) {
        const QImage img(QString::fromStdString(png.string()));
        int n = 0;
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x) n += img.pixel(x, y) == colour;
        return n;
    }
    static bool same_picture(const fs::path& a, const fs::path& b) {
        const QImage ia(QString::fromStdString(a.string())), ib(QString::fromStdString(b.string()));
        return !ia.isNull() && ia == ib;
    }
    // GRAPH SHOW answers that show slot `only` alone out of `n`.
    static std::string show_only(int only, int n) {
        std::string s;
        for (int r = 1; r <= n; ++r)
            s += "dialog \"GRAPH SHOW\" grid 10 " + std::to_string(r) + " 3 " + (r == only ? "1" : "0") + "\n";
        return s + "menu 40023\n";
    }
    static std::string copies(int n) {
        std::string s;
        for (int i = 0; i < n; ++i) s += "menu 40102\n";
        return s;
    }
};

}  // namespace

TEST_F(Plot, DragZoomsClickKeepsRightClickUndoes) {
    std::string s = open({"psi.dat", "dmc.dat"}) + dump("d0.txt");
    // a rubber band from (20, 2e9) to (60, 6e9)
    s += "mouse press 1 20 2e9\nmouse move 1 40 4e9\nmouse release 1 60 6e9\n" + dump("d1.txt");
    s += "mouse press 1 30 3e9\nmouse release 1 30 3e9\n" + dump("d2.txt");  // a click
    s += "mouse press 3 30 3e9\n" + dump("d3.txt");                          // the middle button
    s += "mouse press 2 30 3e9\n" + dump("d4.txt");                          // right: undo
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    const std::string d0 = read(home / "d0.txt");
    EXPECT_EQ(value(d0, "nperfiles"), "2");
    EXPECT_EQ(value(d0, "graph_mode"), "single");
    const LIMITS data = window("d0.txt", "data"), full = window("d0.txt");
    EXPECT_NEAR(data.xmin, 0.0f, 1e-3);
    EXPECT_NEAR(data.xmax, 162.898f, 1e-2);
    EXPECT_NEAR(full.xmin, data.xmin, 1e-3);

    const LIMITS z = window("d1.txt");
    EXPECT_NEAR(z.xmin, 20.0f, 0.3f);
    EXPECT_NEAR(z.xmax, 60.0f, 0.3f);
    EXPECT_NEAR(z.ymin, 2e9f, 0.02e9f);
    EXPECT_NEAR(z.ymax, 6e9f, 0.02e9f);
    const LIMITS click = window("d2.txt");
    EXPECT_NEAR(click.xmin, z.xmin, 1e-3f * 40);
    EXPECT_NEAR(click.xmax, z.xmax, 1e-3f * 40);
    EXPECT_NEAR(click.ymax, z.ymax, 1e-3f * 4e9f);
    EXPECT_EQ(read(home / "d3.txt"), read(home / "d2.txt"));
    EXPECT_EQ(value(read(home / "d4.txt"), "win"), value(d0, "win"));
}

TEST_F(Plot, WheelZoomsAboutTheMouseAndHomeGivesTheFullRange) {
    std::string s = open({"psi.dat"}) + dump("d0.txt");
    s += "wheel 1 40 8000\n" + dump("d1.txt");
    s += "wheel -2 40 8000\n" + dump("d2.txt");
    s += "menu 40119\nkey home\n" + dump("d3.txt");
    s += "wheel 0 40 8000\n" + dump("d4.txt");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    const LIMITS a = window("d0.txt"), b = window("d1.txt"), c = window("d2.txt"), h = window("d3.txt");
    // one step in keeps 0.8 of the width, the point under the mouse in place
    EXPECT_NEAR(b.xmax - b.xmin, 0.8f * (a.xmax - a.xmin), 0.3f);
    EXPECT_NEAR((40 - b.xmin) / (b.xmax - b.xmin), (40 - a.xmin) / (a.xmax - a.xmin), 5e-3f);
    EXPECT_EQ(b.ymin, a.ymin);
    EXPECT_NEAR(c.xmax - c.xmin, (a.xmax - a.xmin) / 0.8f, 0.5f);
    EXPECT_EQ(value(read(home / "d3.txt"), "win"), value(read(home / "d0.txt"), "win"));
    EXPECT_EQ(h.xmin, a.xmin);
    EXPECT_EQ(read(home / "d4.txt"), read(home / "d3.txt"));
}

TEST_F(Plot, WheelAndHomeWithNothingLoadedChangeNothing) {
    run(dump("d0.txt") + "wheel 3 10 10\nkey home\nwheel 2 page 500 400\n" + dump("d1.txt"));
    EXPECT_EQ(status, 0) << err;
    EXPECT_EQ(read(home / "d0.txt"), read(home / "d1.txt"));
    EXPECT_EQ(value(read(home / "d1.txt"), "graph_mode"), "none");
}

TEST_F(Plot, RegionDraggedRightToLeftIsStoredLowBelowHigh) {
    std::string s = open({"psi.dat"});
    s += "menu 40110\n" + dump("d0.txt") + picture("p0.png");
    s += "mouse press 1 80 8000\nmouse move 1 60 8000\nmouse release 1 40 8000\n" + dump("d1.txt") + picture("p1.png");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(value(read(home / "d0.txt"), "MoveMode"), "2");
    const std::string d1 = read(home / "d1.txt");
    EXPECT_EQ(value(d1, "MoveMode"), "0");
    EXPECT_EQ(value(d1, "  nexcl"), "1");
    std::istringstream in(value(d1, "   "));
    float low = 0, high = 0;
    in >> low >> high;
    EXPECT_NEAR(low, 40.0f, 0.3f);
    EXPECT_NEAR(high, 80.0f, 0.3f);
    // The region is hatched across the frame, a shade darker than the excluded points,
    // between the columns of X 40 and 80 only.
    const QRgb hatch = qRgb(144, 144, 144);
    EXPECT_EQ(pixels_of(home / "p0.png", hatch), 0);
    const QImage img(QString::fromStdString((home / "p1.png").string()));
    int first = img.width(), last = -1, n = 0;
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x)
            if (img.pixel(x, y) == hatch) first = std::min(first, x), last = std::max(last, x), ++n;
    EXPECT_GT(n, 500);
    // 40 of the 2..163 degrees of the frame: a quarter of its width.
    const double frame = img.width() * (1020.0 - 180.0) / 1200.0;
    EXPECT_NEAR(last - first, frame * 40.0 / (163.0 - 2.0), 0.04 * frame);
}

TEST_F(Plot, ThirteenthProfileTakesTheFirstStyleAgain) {
    // slots 2..13 are copies of slot 1: the same curve, drawn in the style of the slot
    std::string s = open({"psi.dat"}) + copies(12);
    s += show_only(1, 13) + picture("s1.png");
    s += show_only(2, 13) + picture("s2.png");
    s += show_only(13, 13) + picture("s13.png");
    s += show_only(12, 13) + picture("s12.png");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    const QRgb c1 = main_colour(home / "s1.png"), c2 = main_colour(home / "s2.png"),
               c12 = main_colour(home / "s12.png"), c13 = main_colour(home / "s13.png");
    EXPECT_NE(c1, 0u);
    EXPECT_EQ(c13, c1);
    EXPECT_NE(c2, c1);
    EXPECT_NE(c12, c1);
}

TEST_F(Plot, LegendOnlyBelowThirtyThreeProfiles) {
    // The curves are identical copies and the newest ones are hidden: only the legend can differ.
    const std::string base = open({"psi.dat"});
    run(base + copies(31) + show_only(1, 32) + picture("p32.png") + "menu 40102\n" + show_only(1, 33) +
        picture("p33.png") + "menu 40102\n" + show_only(1, 34) + picture("p34.png") + dump("d.txt"));
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(value(read(home / "d.txt"), "nperfiles"), "34");
    EXPECT_FALSE(same_picture(home / "p32.png", home / "p33.png"));
    EXPECT_TRUE(same_picture(home / "p33.png", home / "p34.png"));
}

TEST_F(Plot, LogModeDrawsSomethingElse) {
    run(open({"psi.dat"}) + picture("lin.png") + "menu 40226\n" + picture("log.png") + dump("d.txt") +
        "menu 40027\n" + picture("lin2.png"));
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(value(read(home / "d.txt"), "graph_mode"), "multi_log");
    const QRgb curve = main_colour(home / "lin.png");
    EXPECT_NE(curve, 0u);
    EXPECT_GT(pixels_of(home / "log.png", curve), 2000);  // the curve is drawn in log mode too
    EXPECT_FALSE(same_picture(home / "lin.png", home / "log.png"));
    EXPECT_FALSE(same_picture(home / "lin2.png", home / "log.png"));
}

TEST_F(Plot, FocusRecomputesYFromTheWindowAndFromTheChosenProfiles) {
    std::string s = open({"psi.dat", "dmc.dat"});
    // a narrow X window far above the data in Y
    s += "mouse press 1 100 1e10\nmouse release 1 110 1.1e10\n" + dump("d0.txt");
    s += "menu 40021\n" + dump("d1.txt");
    s += "dialog Focus grid 10 1 3 1\ndialog Focus grid 10 2 3 1\nmenu 40036\n" + dump("d2.txt");
    s += "dialog Focus grid 10 1 3 1\ndialog Focus grid 10 2 3 0\nmenu 40036\n" + dump("d3.txt");
    s += "dialog Focus grid 10 1 3 0\ndialog Focus grid 10 2 3 0\nmenu 40036\n" + dump("d4.txt");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    const LIMITS z = window("d0.txt"), f = window("d1.txt"), both = window("d2.txt"), psi = window("d3.txt");
    EXPECT_NE(f.ymax, z.ymax);
    EXPECT_EQ(f.xmin, z.xmin);
    EXPECT_LT(f.ymin, f.ymax);
    EXPECT_GT(f.ymax, 1e9f);  // the DMC pattern counts near 1e10
    EXPECT_EQ(both.ymin, f.ymin);
    EXPECT_EQ(both.ymax, f.ymax);
    // the PSI pattern alone counts in thousands
    EXPECT_LT(psi.ymax, 1e6f);
    EXPECT_GT(psi.ymax, psi.ymin);
    EXPECT_EQ(value(read(home / "d4.txt"), "win"), value(read(home / "d3.txt"), "win"));
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | The chosen profiles have no point inside the window"),
              std::string::npos)
        << out;
}

TEST_F(Plot, PeaksByMouseUpTo401AndTheirDeletion) {
    std::string s = open({"psi.dat"}) + "menu 40096\n" + dump("d0.txt") + "menu 40093\n";
    // 401 peaks, from right to left; the table is kept in ascending x
    for (int i = 401; i >= 1; --i) s += "mouse press 1 " + std::to_string(10 + 0.3 * i) + " 8000\n";
    s += dump("d1.txt") + "mouse press 1 5 8000\n" + dump("d2.txt");
    s += "menu 40094\nmouse press 1 10.3 9999\nmouse press 1 5 8000\n" + dump("d3.txt");
    s += "menu 40147\n" + dump("d4.txt") + "menu 40097\n" + dump("d5.txt");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    const std::string d0 = read(home / "d0.txt"), d1 = read(home / "d1.txt"), d3 = read(home / "d3.txt");
    EXPECT_EQ(value(d0, "graph_mode"), "calculation");
    EXPECT_EQ(value(d0, "calc_mode"), "2");
    EXPECT_EQ(value(d1, "peaks"), "401");
    EXPECT_EQ(count(out, "The limit number of peaks has been attained!"), 1) << out;
    EXPECT_EQ(value(read(home / "d2.txt"), "peaks"), "401");
    // the first line of the table is the lowest x
    std::istringstream first(value(d1, "peaks 401\n "));
    float x = 0;
    first >> x;
    EXPECT_NEAR(x, 10.3f, 0.05f);
    EXPECT_EQ(value(d3, "peaks"), "400");  // Y does not matter to a deletion
    EXPECT_NE(out.find("No peaks found in this position for removing"), std::string::npos);
    EXPECT_EQ(value(read(home / "d4.txt"), "peaks"), "0");
    EXPECT_EQ(value(read(home / "d5.txt"), "graph_mode"), "single");
    EXPECT_EQ(value(read(home / "d5.txt"), "calc_mode"), "0");
}

TEST_F(Plot, BackgroundPointsStopAt400) {
    std::string s = open({"psi.dat"}) + "menu 40138\nmenu 40144\n";
    for (int i = 1; i <= 401; ++i) s += "mouse press 1 " + std::to_string(10 + 0.3 * i) + " 8000\n";
    s += dump("d1.txt") + picture("b.png") + "menu 40145\nmouse press 1 10.3 8000\nmouse press 1 5 8000\n" +
         dump("d2.txt");
    s += "menu 40148\n" + dump("d3.txt") + picture("none.png") + "menu 40139\n" + dump("d4.txt");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(value(read(home / "d1.txt"), "background"), "400");
    EXPECT_EQ(value(read(home / "d1.txt"), "calc_mode"), "3");
    EXPECT_EQ(count(out, "The limit number of background points has been attained!"), 1) << out;
    EXPECT_EQ(value(read(home / "d2.txt"), "background"), "399");
    EXPECT_EQ(count(out, "No background point found in this position for removing"), 1) << out;
    EXPECT_EQ(value(read(home / "d3.txt"), "background"), "0");
    EXPECT_EQ(value(read(home / "d4.txt"), "graph_mode"), "single");
    // The points are drawn in blue over the red profile; none once the list is cleared.
    EXPECT_GT(pixels_of(home / "b.png", qRgb(0, 0, 255)), 400);
    EXPECT_EQ(pixels_of(home / "none.png", qRgb(0, 0, 255)), 0);
}

TEST_F(Plot, ProfilingEnableAndDisable) {
    run(open({"psi.dat"}) + "menu 40095\n" + dump("d1.txt") + "menu 40099\n" + dump("d2.txt"));
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(value(read(home / "d1.txt"), "calc_mode"), "1");
    EXPECT_EQ(value(read(home / "d1.txt"), "graph_mode"), "calculation");
    EXPECT_EQ(value(read(home / "d2.txt"), "calc_mode"), "0");
    EXPECT_EQ(value(read(home / "d2.txt"), "graph_mode"), "single");
}

TEST_F(Plot, ProfileAndModeCommandsWithNothingLoadedLeaveTheStore) {
    run(dump("d0.txt") + "menu 40036\nmenu 40023\nmenu 40025\nmenu 40037\nmenu 40158\nmenu 40102\nmenu 40099\n"
                         "menu 40097\nmenu 40139\nmenu 40095\nmenu 40096\nmenu 40138\nmenu 40147\n" +
        dump("d1.txt"));
    ASSERT_EQ(status, 0) << err;
    EXPECT_EQ(read(home / "d1.txt"), read(home / "d0.txt"));
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | There is no profile to copy"), std::string::npos) << out;
}

TEST_F(Plot, CommandOfTheWrongModeEndsWithItsFault) {
    run(dump("d.txt") + "menu 40106\n" + dump("never.txt"));
    EXPECT_NE(status, 0);
    EXPECT_NE(err.find("/Fault: /zendrite_win_root/ihand_winroot/035 Op. not permitted"), std::string::npos) << err;
    EXPECT_TRUE(fs::exists(home / "d.txt"));
    EXPECT_FALSE(fs::exists(home / "never.txt"));
}

TEST_F(Plot, CopyProfileAlwaysCopiesSlotOne) {
    run(open({"psi.dat", "dmc.dat"}) + "menu 40102\n" + dump("d.txt"));
    ASSERT_EQ(status, 0) << out << err;
    const std::string d = read(home / "d.txt");
    EXPECT_EQ(value(d, "nperfiles"), "3");
    const std::string slot3 = d.substr(d.find("slot 3"));
    EXPECT_EQ(value(slot3, "  prf_name"), "<copy>");
    EXPECT_EQ(value(slot3, "  prf_type"), "COPY");
    EXPECT_EQ(value(slot3, "  npts"), value(d.substr(d.find("slot 1")), "  npts"));
    EXPECT_EQ(value(slot3, "  title"), "Copy of " + value(d.substr(d.find("slot 1")), "  title"));
}

TEST_F(Plot, DeleteProfilesCompactsAndLeavesNoneModeWhenEmpty) {
    std::string s = open({"psi.dat", "dmc.dat"}) + "menu 40102\n";
    s += "dialog \"Delete profiles\" grid 10 1 3 1\nmenu 40037\n" + dump("d1.txt");
    s += "dialog \"Delete profiles\" grid 10 1 3 1\ndialog \"Delete profiles\" press 2\nmenu 40037\n" + dump("d2.txt");
    s += "dialog \"Delete profiles\" grid 10 1 3 1\ndialog \"Delete profiles\" grid 10 2 3 1\nmenu 40037\n" +
         dump("d3.txt");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    const std::string d1 = read(home / "d1.txt");
    EXPECT_EQ(value(d1, "nperfiles"), "2");
    EXPECT_EQ(value(d1.substr(d1.find("slot 1")), "  prf_name"), "dmc.dat");
    EXPECT_EQ(value(d1.substr(d1.find("slot 2")), "  prf_name"), "<copy>");
    EXPECT_EQ(read(home / "d2.txt"), d1);  // Cancel
    EXPECT_EQ(value(read(home / "d3.txt"), "nperfiles"), "0");
    EXPECT_EQ(value(read(home / "d3.txt"), "graph_mode"), "none");
}

TEST_F(Plot, ShowSortAndPlay) {
    std::string s = open({"psi.dat", "dmc.dat"});
    s += "dialog \"GRAPH SHOW\" grid 10 2 3 0\ndialog \"GRAPH SHOW\" check 11 0\ndialog \"GRAPH SHOW\" check 14 1\n"
         "menu 40023\n" + dump("d1.txt");
    s += "dialog \"Playing control\" set 31 0\ndialog \"Playing control\" set 32 2\nmenu 40158\n" + dump("d2.txt");
    s += "dialog \"Playing control\" set 31 -1\nmenu 40158\n";
    s += "dialog \"Sorting profiles\" grid 10 1 4 2\ndialog \"Sorting profiles\" grid 10 2 4 1\n"
         "dialog \"Sorting profiles\" radio 23\nmenu 40025\n" + dump("d3.txt");
    s += "dialog \"Sorting profiles\" grid 10 1 4 2\ndialog \"Sorting profiles\" grid 10 2 4 1\n"
         "dialog \"Sorting profiles\" radio 23\nmenu 40025\n" + dump("d4.txt");
    s += "dialog \"Sorting profiles\" radio 21\nmenu 40025\n" + dump("d5.txt");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    const std::string d1 = read(home / "d1.txt");
    EXPECT_EQ(value(d1, "show"), "0111");
    EXPECT_EQ(value(d1.substr(d1.find("slot 2")), "  show_profile"), "0");
    EXPECT_EQ(value(d1.substr(d1.find("slot 1")), "  show_profile"), "1");
    EXPECT_EQ(read(home / "d2.txt"), d1);  // the flags come back after the play
    EXPECT_NE(out.find("The delay must lie between 0 and 60 s"), std::string::npos) << out;
    const std::string d3 = read(home / "d3.txt"), d4 = read(home / "d4.txt"), d5 = read(home / "d5.txt");
    EXPECT_EQ(value(d3.substr(d3.find("slot 1")), "  prf_name"), "dmc.dat");
    EXPECT_EQ(value(d3.substr(d3.find("slot 1")), "  show_profile"), "0");  // the flag went with its slot
    EXPECT_EQ(value(d4.substr(d4.find("slot 1")), "  prf_name"), "psi.dat");
    EXPECT_EQ(value(d5.substr(d5.find("slot 1")), "  prf_name"), "dmc.dat");  // by file name
    EXPECT_EQ(value(d5.substr(d5.find("slot 2")), "  prf_name"), "psi.dat");
}
