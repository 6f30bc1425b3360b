// The drawing area turns the wheel and the Home key into events of the layer's FIFO.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QWheelEvent>

#include "app/present.h"
#include "app/qt/canvas.h"
#include "app/qt/present_state.h"

using namespace zendrite;

namespace {

struct CanvasEvents : ::testing::Test {
    static void SetUpTestSuite() {
        static int argc = 1;
        static char name[] = "test";
        static char* argv[] = {name, nullptr};
        WInitialise(argc, argv, true);
        WSetUnattended(true);
        WindowOpen(0, 0, 600, 400, "canvas test");
    }
    void SetUp() override { drain(); }
    static std::vector<WIN_MESSAGE> drain() {
        std::vector<WIN_MESSAGE> got;
        while (WMessagePending()) {
            int t = 0;
            WIN_MESSAGE m;
            WMessage(t, m);
            if (t != Resize && t != Expose) got.push_back(m);
        }
        return got;
    }
    static qt::Canvas* canvas() { return qt::Window(0) ? qt::Window(0)->canvas.data() : nullptr; }
    static void wheel(int delta, QPointF at) {
        QWheelEvent e(at, at, QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(canvas(), &e);
    }
    static void key(int k) {
        QKeyEvent e(QEvent::KeyPress, k, Qt::NoModifier);
        QApplication::sendEvent(canvas(), &e);
    }
};

}  // namespace

TEST_F(CanvasEvents, WheelNotchesBecomeStepsAtThePagePosition) {
    ASSERT_NE(canvas(), nullptr);
    const qt::WINDOW_STATE* w = qt::Window(0);
    const QPointF middle(canvas()->width() / 2.0, canvas()->height() / 4.0);
    wheel(240, middle);
    std::vector<WIN_MESSAGE> got = drain();
    ASSERT_EQ(got.size(), 1u);
    EXPECT_EQ(got[0].type, MouseWheel);
    EXPECT_EQ(got[0].win, 0);
    EXPECT_EQ(got[0].value1, 2);
    EXPECT_NEAR(got[0].gx, w->page_w / 2, 1.0f);
    EXPECT_NEAR(got[0].gy, w->page_h * 0.75f, 1.0f);  // page Y runs upwards
    wheel(-120, middle);
    got = drain();
    ASSERT_EQ(got.size(), 1u);
    EXPECT_EQ(got[0].value1, -1);
    // half notches of a touch pad add up to one step
    wheel(60, middle);
    EXPECT_TRUE(drain().empty());
    wheel(60, middle);
    got = drain();
    ASSERT_EQ(got.size(), 1u);
    EXPECT_EQ(got[0].value1, 1);
}

TEST_F(CanvasEvents, HomeIsReportedOtherKeysAreNot) {
    ASSERT_NE(canvas(), nullptr);
    key(Qt::Key_Home);
    std::vector<WIN_MESSAGE> got = drain();
    ASSERT_EQ(got.size(), 1u);
    EXPECT_EQ(got[0].type, KeyDown);
    EXPECT_EQ(got[0].value1, kKeyHome);
    key(Qt::Key_End);
    key(Qt::Key_A);
    EXPECT_TRUE(drain().empty());
}
