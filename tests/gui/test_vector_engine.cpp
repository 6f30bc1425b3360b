// The paint engine under the EPS, EMF, HP-GL and DXF writers: what a painter draws reaches the
// writer in device pixels, cut to the clip rectangle as worked out by hand, with the widths,
// angles and sizes the painter's transformation gives.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QGuiApplication>
#include <QPainter>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "app/qt/vector_engine.h"

namespace {

using namespace zendrite::qt;

struct STROKE {
    QPolygonF line;
    bool closed;
    QColor colour;
    double width;
    int dash;
};

// Keeps what it is given, for the test to look at after the painter has ended.
struct LOG {
    std::vector<STROKE> strokes;
    std::vector<QPolygonF> fills;
    std::vector<VECTOR_TEXT> texts;
    bool begun = false, ended = false;
};

class Recorder : public Vector_Writer {
public:
    explicit Recorder(LOG& log) : log_(log) {}
    void Begin(double, double, int) override { log_.begun = true; }
    void Stroke(const QPolygonF& l, bool c, const QColor& colour, double w, int dash) override {
        log_.strokes.push_back({l, c, colour, w, dash});
    }
    void Fill(const QPolygonF& p, const QColor&) override { log_.fills.push_back(p); }
    void Text(const VECTOR_TEXT& t) override { log_.texts.push_back(t); }
    bool End(QIODevice&) override { return log_.ended = true; }

private:
    LOG& log_;
};

double area(const QPolygonF& p) {
    double a = 0;
    for (int i = 0; i < p.size(); ++i) {
        const QPointF& u = p[i];
        const QPointF& v = p[(i + 1) % p.size()];
        a += u.x() * v.y() - v.x() * u.y();
    }
    return std::fabs(a) / 2;
}

// What one test draws: the log, the buffer the device writes into, and an application for the fonts.
struct DRAWN {
    LOG log;
    QBuffer out;
    DRAWN() {
        static int argc = 1;
        static char name[] = "test_vector_engine";
        static char* argv[] = {name, nullptr};
        if (!QGuiApplication::instance()) new QGuiApplication(argc, argv);
        out.open(QIODevice::WriteOnly);
    }
};

TEST(VectorEngine, ClipsTransformsAndMeasuresAsWorkedByHand) {
    DRAWN d;
    LOG& log = d.log;
    {
        Vector_Paint_Device dev(std::make_unique<Recorder>(log), &d.out, 400, 300, 150);
        EXPECT_EQ(dev.width(), 400);
        EXPECT_EQ(dev.heightMM(), 51);  // 300 pixels at 150 dpi: 50.8 mm
        QPainter p(&dev);
        p.setPen(QPen(Qt::red, 2));
        // A clip of x 10..110, y 10..110: a level line across it keeps 10..110.
        p.setClipRect(QRectF(10, 10, 100, 100));
        p.drawLine(QPointF(0, 50), QPointF(200, 50));
        // A polyline out, in and out again: one run inside, from the edge to the edge.
        p.drawPolyline(QPolygonF({{0, 20}, {60, 80}, {200, 80}}));
        // A square of 40 half outside the left edge: 20 x 40 stays.
        p.setBrush(Qt::blue);
        p.setPen(Qt::NoPen);
        p.drawPolygon(QPolygonF({{-10, 30}, {30, 30}, {30, 70}, {-10, 70}}));
        p.setClipping(false);
        // A dashed line from a painter scaled by 2 and moved: ends and width follow.
        p.setPen(QPen(Qt::black, 1.5, Qt::DashLine));
        p.translate(100, 100);
        p.scale(2, 2);
        p.drawLine(QPointF(0, 0), QPointF(10, 5));
        p.resetTransform();
        // A text turned upwards (the painter turns by -90 degrees, Y down).
        QFont f("Sans Serif");
        f.setPixelSize(20);
        p.setFont(f);
        p.translate(300, 200);
        p.rotate(-90);
        p.drawText(QPointF(0, 0), "2theta");
        EXPECT_TRUE(p.end());
    }
    EXPECT_TRUE(log.begun && log.ended);
    ASSERT_EQ(log.strokes.size(), 3u);
    const STROKE& level = log.strokes[0];
    ASSERT_EQ(level.line.size(), 2);
    EXPECT_DOUBLE_EQ(level.line[0].x(), 10);
    EXPECT_DOUBLE_EQ(level.line[1].x(), 110);
    EXPECT_DOUBLE_EQ(level.width, 2);
    EXPECT_EQ(level.colour, QColor(Qt::red));
    // 0,20 -> 60,80 enters at x 10 (y 30); 60,80 -> 200,80 leaves at x 110.
    const STROKE& bent = log.strokes[1];
    ASSERT_EQ(bent.line.size(), 3);
    EXPECT_NEAR(bent.line[0].x(), 10, 1e-9);
    EXPECT_NEAR(bent.line[0].y(), 30, 1e-9);
    EXPECT_NEAR(bent.line[2].x(), 110, 1e-9);
    EXPECT_NEAR(bent.line[2].y(), 80, 1e-9);
    ASSERT_EQ(log.fills.size(), 1u);
    EXPECT_NEAR(area(log.fills[0]), 20 * 40, 1e-6);
    const STROKE& scaled = log.strokes[2];
    EXPECT_EQ(scaled.line[0], QPointF(100, 100));
    EXPECT_EQ(scaled.line[1], QPointF(120, 110));
    EXPECT_DOUBLE_EQ(scaled.width, 3);
    EXPECT_EQ(scaled.dash, 2);
    EXPECT_EQ(level.dash, 0);
    ASSERT_EQ(log.texts.size(), 1u);
    EXPECT_EQ(log.texts[0].text, QString("2theta"));
    EXPECT_NEAR(log.texts[0].angle, 90, 1e-9);
    EXPECT_EQ(log.texts[0].at, QPointF(300, 200));
    EXPECT_DOUBLE_EQ(log.texts[0].size, 20);
    EXPECT_EQ(log.texts[0].family, 1);
}

TEST(VectorEngine, TextsOutsideTheClipAndEmptyShapesAreLeftOut) {
    DRAWN d;
    LOG& log = d.log;
    {
        Vector_Paint_Device dev(std::make_unique<Recorder>(log), &d.out, 100, 100, 96);
        QPainter p(&dev);
        p.setClipRect(QRectF(0, 0, 50, 50));
        p.drawText(QPointF(80, 80), "outside");
        p.drawText(QPointF(10, 40), "inside");
        p.drawLine(QPointF(60, 60), QPointF(90, 90));  // wholly outside
        p.setBrush(Qt::black);
        p.drawPolygon(QPolygonF({{60, 60}, {90, 60}, {90, 90}}));
    }
    ASSERT_EQ(log.texts.size(), 1u);
    EXPECT_EQ(log.texts[0].text, QString("inside"));
    EXPECT_TRUE(log.strokes.empty());
    EXPECT_TRUE(log.fills.empty());
}

}  // namespace

namespace {

TEST(VectorEngine, HatchedRectanglesKeepTheirLinesAndOtherShapesFillPlain) {
    DRAWN d;
    LOG& log = d.log;
    {
        // At 192 dpi the screen's hatch spacing of 8 pixels is 16.
        zendrite::qt::Vector_Paint_Device dev(std::make_unique<Recorder>(log), &d.out, 200, 200, 192);
        QPainter p(&dev);
        p.setPen(Qt::NoPen);
        p.setBrush(QBrush(Qt::black, Qt::HorPattern));
        p.drawRect(QRectF(10, 10, 60, 40));
        p.drawPolygon(QPolygonF({{100, 100}, {150, 100}, {120, 150}}));
    }
    // Level lines at 10, 26, 42 across the 60 pixels; the triangle filled.
    ASSERT_EQ(log.strokes.size(), 3u);
    for (int i = 0; i < 3; ++i) {
        EXPECT_DOUBLE_EQ(log.strokes[static_cast<std::size_t>(i)].line[0].y(), 10 + 16 * i);
        EXPECT_DOUBLE_EQ(log.strokes[static_cast<std::size_t>(i)].line[0].x(), 10);
        EXPECT_DOUBLE_EQ(log.strokes[static_cast<std::size_t>(i)].line[1].x(), 70);
    }
    ASSERT_EQ(log.fills.size(), 1u);
    EXPECT_NEAR(area(log.fills[0]), 50.0 * 50 / 2, 1e-9);
}

}  // namespace

namespace {

// The PostScript writer's own prolog, dash patterns and Latin-1 texts, run by Ghostscript.
TEST(VectorEngine, EpsWithDashesAndLatinTextRunsInGhostscript) {
    DRAWN d;
    QBuffer eps;
    eps.open(QIODevice::WriteOnly);
    {
        zendrite::qt::Vector_Paint_Device dev(zendrite::qt::Eps_Writer(true), &eps, 300, 100, 72);
        QPainter p(&dev);
        p.setPen(QPen(Qt::black, 2, Qt::DashLine));
        p.drawLine(QPointF(10, 30), QPointF(290, 30));
        p.setPen(QPen(Qt::black, 2));
        p.drawLine(QPointF(10, 60), QPointF(290, 60));
        QFont f("Sans Serif");
        f.setPixelSize(14);
        p.setFont(f);
        p.drawText(QPointF(10, 90), QString::fromUtf8("d (\u00c5) (1)\\"));
    }
    const std::string dir = ::testing::TempDir();
    const std::string file = dir + "/dashes.eps", png = dir + "/dashes.png";
    {
        QFile out(QString::fromStdString(file));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(eps.data());
    }
    EXPECT_TRUE(eps.data().contains("(d \\(\\305\\) \\(1\\)\\\\) show"));
    const std::string cmd = "gs -q -dSAFER -dBATCH -dNOPAUSE -dEPSCrop -sDEVICE=pnggray -r72 -sOutputFile='" + png + "' '" +
                            file + "' 2>&1";
    ASSERT_EQ(std::system(cmd.c_str()), 0);
    const QImage img(QString::fromStdString(png));
    ASSERT_EQ(img.size(), QSize(300, 100));
    // Along the dashed line, dark runs of 8 points and gaps of 4; the solid line has none.
    auto runs = [&img](int y) {
        int n = 0;
        bool dark = false;
        for (int x = 20; x < 280; ++x) {
            const bool now = qGray(img.pixel(x, y)) < 128;
            n += now && !dark;
            dark = now;
        }
        return n;
    };
    EXPECT_NEAR(runs(30), 260 / 12, 2);
    EXPECT_EQ(runs(60), 1);
}

}  // namespace
