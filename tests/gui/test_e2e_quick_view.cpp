// End-to-end: the Quick View window driven by scripts — the list of a directory with a file
// that is no profile file, moving with the zoom kept, the hand-over to the main window and its
// refusals, the edges of the directory choice; and a profile file opened in the main window
// with the reflections under the mouse.
#include <gtest/gtest.h>
#include <unistd.h>

#include <QAction>
#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/present.h"
#include "app/qt/canvas.h"
#include "app/qt/present_state.h"
#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

const std::string kSeries = ZD_TEST_DATA "/gui/quick_view/";

using LIMITS = SCRIPT_LIMITS;

struct QuickView : SCRIPTED_HOME {
    void SetUp() override {
        SCRIPTED_HOME::SetUp();
        fs::create_directories(home / "series");
        for (const char* f : {"run_010K.prf", "run_300K.prf", "notes.prf", "fit.xrf"})
            fs::copy_file(kSeries + f, home / "series" / f);
        fs::copy_file(ZD_TEST_DATA "/gui/two_phase.prf", home / "two_phase.prf");
    }
    std::string qv_dump(const std::string& name) const { return "qv dump " + at(name) + "\n"; }
    std::string dump(const std::string& name) const { return "dump " + at(name) + "\n"; }
    // Opens the Quick View on `dir` (a folder under home).
    std::string browse(const std::string& dir) const { return "menu 40030\ndir " + at(dir) + "\nqv dir\n"; }
    LIMITS limits(const std::string& name, const char* key = "qv_limits") const {
        return SCRIPTED_HOME::limits(name, key);
    }
    static int pixels(const fs::path& png, QRgb colour) {
        const QImage img(QString::fromStdString(png.string()));
        int n = 0;
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x) n += img.pixel(x, y) == colour;
        return n;
    }
};

}  // namespace

TEST_F(QuickView, SeriesBrowsedWithTheZoomKeptThenHandedToTheMainWindow) {
    std::string s = "menu 40030\n" + qv_dump("q0.txt") + "dir " + at("series") + "\nqv dir\n" + qv_dump("q1.txt");
    s += "qv picture " + at("qv1.png") + "\n";
    // a rubber band from (20, 200) to (50, 800)
    s += "qv mouse press 1 20 200\nqv mouse move 1 40 600\nqv mouse release 1 50 800\n" + qv_dump("q2.txt");
    s += "qv next\n" + qv_dump("q3.txt") + "qv picture " + at("qv2.png") + "\n";
    s += "qv key down\n" + qv_dump("q4.txt");
    s += "qv key down\nqv next\n" + qv_dump("q5.txt");  // at the end of the list: nothing
    s += "qv key up\nqv mouse press 2 30 30\n" + qv_dump("q6.txt");
    s += dump("d0.txt") + "qv main\n" + dump("d1.txt");
    s += "qv mouse move 0 30.5 450\n" + qv_dump("q7.txt");
    s += "qv close\n" + qv_dump("q8.txt");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_EQ(out.find("SCRIPT"), std::string::npos) << out;
    // the broken file is left out and named once, after the reading
    EXPECT_EQ(count(out, "MESSAGE Attention | Unkown format files: / notes.prf\n"), 1) << out;

    const std::string q0 = file("q0.txt");
    EXPECT_NE(value(q0, "qv_window"), "0");
    EXPECT_EQ(value(q0, "qv_count"), "0");
    EXPECT_EQ(value(q0, "items"), "000");  // Up, Down and the hand-over greyed

    const std::string q1 = file("q1.txt");
    EXPECT_EQ(value(q1, "qv_count"), "3") << q1;
    EXPECT_EQ(value(q1, "qv_current"), "1");
    EXPECT_EQ(value(q1, "items"), "011");
    // ".prf" names first, then the ".xrf" ones; labels by (2(a,f8.2),a)
    EXPECT_EQ(value(q1, "file 1"), "run_010K.prf |   Temperature:    10.00 K --  -263.15 C");
    EXPECT_EQ(value(q1, "file 2"), "run_300K.prf |   Temperature:   300.00 K --    26.85 C");
    EXPECT_EQ(value(q1, "file 3").substr(0, 10), "fit.xrf | ");
    EXPECT_EQ(value(q1, "status 1"), "( 1 / 3 )");
    EXPECT_EQ(value(q1, "status 2"), "run_010K.prf");
    EXPECT_EQ(value(q1, "nphases"), "2");
    const LIMITS full = limits("q1.txt");
    EXPECT_NEAR(full.xmin, 10.0f, 1e-3);
    EXPECT_NEAR(full.xmax, 90.0f, 1e-3);
    EXPECT_LT(full.ymin, 0.0f);  // room for the difference curve and the ticks

    const LIMITS zoom = limits("q2.txt");
    EXPECT_NEAR(zoom.xmin, 20.0f, 0.3f);
    EXPECT_NEAR(zoom.xmax, 50.0f, 0.3f);
    EXPECT_NEAR(zoom.ymin, 200.0f, 5.0f);
    EXPECT_NEAR(zoom.ymax, 800.0f, 5.0f);

    const std::string q3 = file("q3.txt");
    EXPECT_EQ(value(q3, "qv_current"), "2");
    EXPECT_EQ(value(q3, "on_view"), "run_300K.prf");
    EXPECT_EQ(value(q3, "items"), "111");
    EXPECT_EQ(value(q3, "status 1"), "( 2 / 3 )");
    EXPECT_EQ(value(q3, "qv_limits"), value(file("q2.txt"), "qv_limits"));  // the zoom stays
    const QImage a(QString::fromStdString(at("qv1.png"))), b(QString::fromStdString(at("qv2.png")));
    ASSERT_FALSE(a.isNull());
    EXPECT_NE(a, b);

    EXPECT_EQ(value(file("q4.txt"), "qv_current"), "3");
    EXPECT_EQ(value(file("q4.txt"), "items"), "101");
    EXPECT_EQ(value(file("q5.txt"), "qv_current"), "3");
    const std::string q6 = file("q6.txt");
    EXPECT_EQ(value(q6, "qv_current"), "2");
    EXPECT_NEAR(limits("q6.txt").xmin, 10.0f, 1e-3);  // right button: the whole range
    EXPECT_NEAR(limits("q6.txt").xmax, 90.0f, 1e-3);

    // The store is touched only by the hand-over.
    EXPECT_EQ(value(file("d0.txt"), "nperfiles"), "0");
    const std::string d1 = file("d1.txt");
    EXPECT_EQ(value(d1, "nperfiles"), "1") << d1;
    EXPECT_EQ(value(d1, "prf_loaded"), "1");
    EXPECT_EQ(value(d1, "  prf_type"), "PRF");
    EXPECT_EQ(value(d1, "  prf_name"), "run_300K.prf");
    EXPECT_EQ(value(d1, "  nexcl"), "2");
    EXPECT_EQ(value(d1, "  nphases"), "2");
    EXPECT_EQ(value(d1, "  npts"), "161");
    EXPECT_NEAR(limits("d1.txt", "data").xmin, 10.0f, 1e-3);
    EXPECT_NEAR(limits("d1.txt", "data").xmax, 90.0f, 1e-3);
    EXPECT_EQ(value(d1, "graph_mode"), "single");

    const std::string q7 = file("q7.txt");
    EXPECT_EQ(value(q7, "status 4"), "X=      30.5000") << q7;
    EXPECT_EQ(value(q7, "status 5").substr(0, 3), "Y= ");
    EXPECT_EQ(value(file("q8.txt"), "qv_window"), "0");
    EXPECT_EQ(value(file("q8.txt"), "check_40030"), "0");
}

TEST_F(QuickView, HandOverAsksBeforeReplacingAndIsRefusedWhileFitting) {
    std::string s = "files " + at("two_phase.prf") + "\nmenu 40016\n" + browse("series") + "qv next\n";
    s += "answer 2\nqv main\n" + dump("d1.txt");  // No: the loaded file stays
    s += "answer 1\nqv main\n" + dump("d2.txt");  // Yes: replaced in its slot
    s += "menu 40096\n" + dump("d3.txt") + "qv previous\nqv main\n" + dump("d4.txt");
    // the log graph is refused too; the plain multi-profile graph is not
    s += "menu 40097\nmenu 40226\n" + dump("d5.txt") + "qv main\nmenu 40027\nanswer 1\nqv main\n" + dump("d6.txt");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(count(out, "MESSAGE Warning | The main window contain a PRF profile: / two_phase.prf / "
                         "Do you want overwrite this profile?"),
              2)
        << out;
    const std::string d1 = file("d1.txt");
    EXPECT_EQ(value(d1, "nperfiles"), "1");
    EXPECT_EQ(value(d1, "  prf_name"), "two_phase.prf");
    const std::string d2 = file("d2.txt");
    EXPECT_EQ(value(d2, "nperfiles"), "1");
    EXPECT_EQ(value(d2, "ProfilePRFactive"), "1");
    EXPECT_EQ(value(d2, "  prf_name"), "run_300K.prf");
    EXPECT_EQ(value(file("d3.txt"), "graph_mode"), "calculation");
    EXPECT_EQ(count(out, "MESSAGE Warning | Unable to add profile to main / window in mode 2D contour, 3D, 3D Surf / "
                         "or fitting"),
              2)
        << out;
    EXPECT_EQ(value(file("d4.txt"), "  prf_name"), "run_300K.prf");
    EXPECT_EQ(value(file("d5.txt"), "graph_mode"), "multi_log");
    const std::string d6 = file("d6.txt");
    EXPECT_EQ(value(d6, "graph_mode"), "multi");
    EXPECT_EQ(value(d6, "nperfiles"), "1");
    EXPECT_EQ(value(d6, "  prf_name"), "run_010K.prf");
}

TEST_F(QuickView, DirectoryEdges) {
    fs::create_directories(home / "empty");
    fs::create_directories(home / "broken");
    fs::copy_file(kSeries + std::string("notes.prf"), home / "broken" / "notes.prf");
    fs::create_directories(home / "one");
    fs::copy_file(kSeries + std::string("run_010K.prf"), home / "one" / "a.prf");
    fs::create_directories(home / "many");
    for (int i = 0; i < 401; ++i) fs::copy_file(kSeries + std::string("run_010K.prf"), home / "many" / ("r" + std::to_string(1000 + i) + ".prf"));
    fs::create_directories(home / "toomany");
    for (int i = 0; i < 2001; ++i) std::ofstream(home / "toomany" / ("t" + std::to_string(10000 + i) + ".xrf"));

    std::string s = "menu 40030\ndir\nqv dir\n" + qv_dump("q0.txt");  // Cancel
    s += "dir " + at("empty") + "\nqv dir\ndir " + at("broken") + "\nqv dir\n" + qv_dump("q1.txt");
    s += "dir " + at("one") + "\nqv dir\n" + qv_dump("q2.txt");
    s += "dir " + at("toomany") + "\nqv dir\n" + qv_dump("q3.txt");
    s += "dir " + at("many") + "\nqv dir\n" + qv_dump("q4.txt");
    s += "dir " + at("series") + "\nqv dir\n";
    run(s + "qv close request\n" + qv_dump("q5.txt"));
    // a file spoilt after the listing (the dump is written over it): its message, and the picture stays
    run(browse("series") + "qv picture " + at("p1.png") + "\n" + dump("series/run_300K.prf") + "qv next\n" +
        qv_dump("q6.txt") + "qv picture " + at("p2.png") + "\n");
    ASSERT_EQ(status, 0) << out << err;

    EXPECT_EQ(value(file("q0.txt"), "qv_count"), "0");
    const std::string q1 = file("q1.txt");
    EXPECT_EQ(value(q1, "qv_count"), "0");
    const std::string q2 = file("q2.txt");
    EXPECT_EQ(value(q2, "qv_count"), "1");
    EXPECT_EQ(value(q2, "items"), "001");  // one file: both moves stay grey
    EXPECT_EQ(value(file("q3.txt"), "qv_count"), "1");  // refused: the list stays
    EXPECT_EQ(value(file("q4.txt"), "qv_count"), "401");
    EXPECT_EQ(value(file("q5.txt"), "qv_window"), "0");
    const std::string q6 = file("q6.txt");
    EXPECT_EQ(value(q6, "qv_current"), "2");
    EXPECT_EQ(value(q6, "on_view"), "run_010K.prf");
    EXPECT_EQ(value(q6, "status 1"), "( 2 / 3 )");
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | "), 1) << out;  // the reader's text
    const QImage a(QString::fromStdString(at("p1.png"))), b(QString::fromStdString(at("p2.png")));
    ASSERT_FALSE(a.isNull());
    EXPECT_EQ(a, b);
}

TEST_F(QuickView, DirectoryEdgeMessages) {
    fs::create_directories(home / "empty");
    fs::create_directories(home / "broken");
    fs::copy_file(kSeries + std::string("notes.prf"), home / "broken" / "notes.prf");
    fs::create_directories(home / "toomany");
    for (int i = 0; i < 2001; ++i) std::ofstream(home / "toomany" / ("t" + std::to_string(10000 + i) + ".prf"));
    run(browse("empty") + "dir " + at("broken") + "\nqv dir\ndir " + at("toomany") + "\nqv dir\n");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_NE(out.find("| No PRF/XRF file in the selected directory \n"), std::string::npos) << out;
    EXPECT_NE(out.find("MESSAGE Attention | Unkown format files: / notes.prf\n"), std::string::npos);
    EXPECT_NE(out.find("| No valid PRF file in the selected directory\n"), std::string::npos);
    EXPECT_NE(out.find("| Too many PRF/XRF (> 400) files in the selected directory \n"), std::string::npos);
}

TEST_F(QuickView, ProfileFileInTheMainWindowListsTheReflectionUnderTheMouse) {
    run("files " + at("two_phase.prf") + "\nmenu 40016\n" + dump("d.txt") + "picture 0 " + at("main.png") + "\n");
    ASSERT_EQ(status, 0) << out << err;
    const std::string d = file("d.txt");
    EXPECT_EQ(value(d, "  prf_type"), "PRF") << d;
    EXPECT_EQ(value(d, "prf_loaded"), "1");
    EXPECT_EQ(value(d, "  nrefl"), "5");
    EXPECT_EQ(value(d, "  nphases"), "2");
    EXPECT_EQ(value(d, "  nexcl"), "2");
    // the file's zero shift moves the points and the regions alike
    std::istringstream regions(d.substr(d.find("  nexcl 2\n") + 10));
    float e1 = 0, e2 = 0, e3 = 0, e4 = 0;
    regions >> e1 >> e2 >> e3 >> e4;
    EXPECT_NEAR(e1, 10.0f, 0.1f);
    EXPECT_NEAR(e2, 12.0f, 0.1f);
    EXPECT_NEAR(e3, 98.0f, 0.1f);
    EXPECT_NEAR(e4, 102.0f, 0.1f);
    const LIMITS data = limits("d.txt", "data"), win = limits("d.txt", "win");
    EXPECT_NEAR(data.xmin, std::stof(value(d, "  xmin")), 1e-3f);
    EXPECT_NEAR(data.xmin, e1, 1e-3f);  // the first point is the low end of the first region
    EXPECT_NEAR(data.xmax, 109.5f, 0.1f);
    const float range = data.ymax - data.ymin;
    EXPECT_NEAR(win.ymin, data.ymin - 0.2f * range, 1e-3f * range);  // room for the band

    // The first row of ticks (phase 1) lies between 10 and 17 steps of band/36 under data_ymin.
    const float step = 0.14f * range / 36.0f, tick_y = data.ymin - 13.5f * step;
    const std::string y = std::to_string(tick_y), y_off = std::to_string(data.ymax);
    // the Quick View drawn in between does not disturb the main window's frame
    run("files " + at("two_phase.prf") + "\nmenu 40016\n" + browse("series") + "qv mouse move 0 50 50\n" +
        "mouse move 0 30 " + y + "\nreflections " + at("r1.txt") +
        "\npicture 0 " + at("box.png") + "\nmouse move 0 30 " + y_off + "\nreflections " + at("r2.txt") + "\n");
    ASSERT_EQ(status, 0) << out << err;
    const std::string r1 = file("r1.txt");
    EXPECT_EQ(count(r1, "\n"), 1) << r1;  // only the reflection at 30, not 35 of phase 2
    EXPECT_NE(r1.find("1  0  0"), std::string::npos) << r1;
    EXPECT_EQ(file("r2.txt"), "");  // away from the ticks: no box
    EXPECT_GT(pixels(home / "box.png", qRgb(255, 255, 225)), 100);
    EXPECT_EQ(pixels(home / "main.png", qRgb(255, 255, 225)), 0);
}

// The layer's parts of the window: a child's own toolbar and status bar, and the step keys.
TEST(QuickViewLayer, ChildToolbarStatusBarAndStepKeys) {
    using namespace zendrite;
    static int argc = 1;
    static char name[] = "test";
    static char* argv[] = {name, nullptr};
    WInitialise(argc, argv, true);
    WSetUnattended(true);
    WindowOpen(0, 0, 600, 400, "root");
    auto drain = [] {
        std::vector<WIN_MESSAGE> got;
        while (WMessagePending()) {
            int t = 0;
            WIN_MESSAGE m;
            WMessage(t, m);
            if (t != Resize && t != Expose) got.push_back(m);
        }
        return got;
    };
    WindowOutStatusBar(1, "root text");
    const int child = WindowOpenChild(ChildStatusBar, 10, 10, 500, 300, "child");
    WChildToolbar(child, {{40131, "down", "Next"}, {0, "", ""}, {40103, "up", "Previous"}});
    drain();
    ASSERT_TRUE(qt::L().actions.count(40131));
    qt::L().actions[40131]->trigger();
    std::vector<WIN_MESSAGE> got = drain();
    ASSERT_EQ(got.size(), 1u);
    EXPECT_EQ(got[0].type, MenuSelect);
    EXPECT_EQ(got[0].win, child);  // not the root window's menu
    EXPECT_EQ(got[0].value1, 40131);
    WMenuSetState(40103, 1, 0);
    EXPECT_FALSE(qt::L().actions[40103]->isEnabled());
    EXPECT_EQ(WMenuGetState(40103, 1), 0);

    WindowSelect(child);
    WindowOutStatusBar(2, "( 1 / 3 )");
    EXPECT_EQ(WindowStatusBarText(2), "( 1 / 3 )");
    WindowSelect(kRootWindow);
    EXPECT_EQ(WindowStatusBarText(1), "root text");
    EXPECT_EQ(WindowStatusBarText(2), "");  // the root's own bar is untouched

    qt::Canvas* canvas = qt::Window(child)->canvas.data();
    for (int k : {Qt::Key_Down, Qt::Key_PageUp, Qt::Key_End}) {
        QKeyEvent e(QEvent::KeyPress, k, Qt::NoModifier);
        QApplication::sendEvent(canvas, &e);
    }
    got = drain();
    ASSERT_EQ(got.size(), 2u);  // End is not reported
    EXPECT_EQ(got[0].win, child);
    EXPECT_EQ(got[0].value1, kKeyDown);
    EXPECT_EQ(got[1].value1, kKeyPageUp);

    // the actions go with the window: none is left behind to be used after it is gone
    WindowCloseChild(child);
    EXPECT_EQ(qt::L().actions.count(40131), 0u);
    WMenuSetState(40131, 1, 1);
    EXPECT_EQ(WMenuGetState(40131, 1), 1);
}
