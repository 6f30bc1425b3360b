// End-to-end: the Publication plot style beside the Classic one, through the batch program and
// through the Options item of the window, with the choice kept between runs.
#include <gtest/gtest.h>

#include <QColor>
#include <cmath>
#include <QImage>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

const std::string kScan = std::string(ZD_TEST_DATA) + "/patterns/210520step1_30min.xy";

struct PlotStyle : SCRIPTED_HOME {
    // Eight copies of a real scan, each raised and stretched, so that all eight curves show.
    std::string eight() {
        std::string names;
        std::ifstream in(kScan);
        std::vector<std::pair<double, double>> pts;
        for (double x = 0, y = 0; in >> x >> y;) pts.emplace_back(x, y);
        for (int k = 1; k <= 8; ++k) {
            std::ofstream out(home / ("p" + std::to_string(k) + ".xy"));
            for (const auto& [x, y] : pts) out << x << ' ' << y * (1 + 0.15 * k) + 300 * k << '\n';
            names += " '" + at("p" + std::to_string(k) + ".xy") + "'";
        }
        return names;
    }
    int batch(const std::string& args) {
        const std::string cmd = "cd '" + home.string() + "' && QT_QPA_PLATFORM=offscreen '" ZD_BATCH_BIN "' " + args +
                                " > out.txt 2> err.txt";
        return std::system(cmd.c_str());
    }
    // How many pixels of each colour the picture holds.
    static std::map<QRgb, int> colours(const QImage& img) {
        std::map<QRgb, int> n;
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x) ++n[img.pixel(x, y) & 0xFFFFFF];
        return n;
    }
};

QRgb rgb(int r, int g, int b) { return static_cast<QRgb>((r << 16) | (g << 8) | b); }

}  // namespace

TEST_F(PlotStyle, PublicationColoursAndWhitePageBesideTheClassicOnes) {
    const std::string files = eight();
    ASSERT_EQ(batch("render" + files + " --out classic.png --size 1000x650"), 0) << file("err.txt");
    ASSERT_EQ(batch("render" + files + " --out pub.png --size 1000x650 --style publication"), 0) << file("err.txt");
    EXPECT_NE(batch("render" + files + " --out x.png --style modern"), 0);
    EXPECT_NE(file("err.txt").find("--style takes classic or publication, not modern"), std::string::npos);
    const QImage classic(QString::fromStdString(at("classic.png"))), pub(QString::fromStdString(at("pub.png")));
    ASSERT_FALSE(classic.isNull());
    ASSERT_FALSE(pub.isNull());
    EXPECT_EQ(classic.pixel(5, 5) & 0xFFFFFF, rgb(150, 200, 150));  // the system's page
    EXPECT_EQ(pub.pixel(5, 5) & 0xFFFFFF, rgb(255, 255, 255));
    EXPECT_EQ(pub.pixel(500, 200) & 0xFFFFFF, rgb(255, 255, 255));  // the zone, above the curves
    const std::map<QRgb, int> c = colours(classic), p = colours(pub);
    // the first eight colours of the cycle: Okabe-Ito without yellow, in the slots' order
    const QRgb cycle[8] = {rgb(0, 114, 178),  rgb(213, 94, 0),   rgb(0, 158, 115), rgb(204, 121, 167),
                           rgb(86, 180, 233), rgb(230, 159, 0), rgb(0, 0, 0),     rgb(51, 34, 136)};
    for (QRgb k : cycle) {
        EXPECT_GE(p.count(k) ? p.at(k) : 0, 100) << std::hex << k;
        if (k != rgb(0, 0, 0)) EXPECT_EQ(c.count(k), 0u) << std::hex << k;
    }
    // a log axis: powers of ten in the Publication style, the logarithms in the Classic one
    ASSERT_EQ(batch("render" + files + " --out log_p.svg --log --style publication"), 0) << file("err.txt");
    ASSERT_EQ(batch("render" + files + " --out log_c.svg --log"), 0) << file("err.txt");
    const std::string lp = file("log_p.svg"), lc = file("log_c.svg");
    EXPECT_NE(lp.find(">10\u00b3<"), std::string::npos);
    EXPECT_NE(lp.find(">10\u2074<"), std::string::npos);
    EXPECT_EQ(lc.find("10\u2074"), std::string::npos);
    EXPECT_NE(lc.find(">4.0<"), std::string::npos);
    // Classic keeps its yellow; Publication has none
    EXPECT_GT(c.count(rgb(255, 255, 0)) ? c.at(rgb(255, 255, 0)) : 0, 0);
    EXPECT_EQ(p.count(rgb(255, 255, 0)), 0u);
}

TEST_F(PlotStyle, TheOptionsItemSwitchesAndTheChoiceIsKept) {
    fs::copy_file(kScan, home / "a.xy");
    const std::string open = "files " + at("a.xy") + "\nmenu 40014\n";
    ASSERT_EQ(run(open + "picture 0 " + at("c.png") + "\nmenu 40249\npicture 0 " + at("p.png") + "\n"), 0) << err;
    EXPECT_NE(QImage(QString::fromStdString(at("c.png"))).pixel(3, 3) & 0xFFFFFF, rgb(255, 255, 255));
    EXPECT_EQ(QImage(QString::fromStdString(at("p.png"))).pixel(3, 3) & 0xFFFFFF, rgb(255, 255, 255));
    // the next start draws in Publication, and the item switches back to Classic
    ASSERT_EQ(run(open + "picture 0 " + at("p2.png") + "\nmenu 40249\npicture 0 " + at("c2.png") + "\n"), 0) << err;
    EXPECT_EQ(QImage(QString::fromStdString(at("p2.png"))).pixel(3, 3) & 0xFFFFFF, rgb(255, 255, 255));
    EXPECT_EQ(QImage(QString::fromStdString(at("c2.png"))).pixel(3, 3),
              QImage(QString::fromStdString(at("c.png"))).pixel(3, 3));
}

// Forty points with sigma: small circles on the line in the Publication style, and the bars of
// sigma when asked, by the batch option or by the Options item (kept with the style).
TEST_F(PlotStyle, ErrorBarsOnRequestAndCirclesOnSparsePoints) {
    {
        std::ofstream f(home / "sparse.xye");
        for (int i = 0; i < 40; ++i) {
            const double x = 20 + 0.5 * i, y = 1000 + 800 * std::exp(-std::pow((x - 30) / 1.5, 2));
            f << x << ' ' << y << ' ' << 3 * std::sqrt(y) << '\n';
        }
    }
    const std::string f = " '" + at("sparse.xye") + "'";
    ASSERT_EQ(batch("render" + f + " --out plain.png --style publication"), 0) << file("err.txt");
    ASSERT_EQ(batch("render" + f + " --out bars.png --style publication --error-bars"), 0) << file("err.txt");
    const auto plain = colours(QImage(QString::fromStdString(at("plain.png"))));
    const auto bars = colours(QImage(QString::fromStdString(at("bars.png"))));
    const QRgb blue = rgb(0, 114, 178);
    ASSERT_TRUE(plain.count(blue));
    // 40 bars of about 2 x 95 counts each on a frame of about 1000 counts and 560 pixels: thousands of pixels more
    EXPECT_GT(bars.at(blue), plain.at(blue) + 2000);

    fs::copy_file(home / "sparse.xye", home / "a.xye");
    const std::string open = "files " + at("a.xye") + "\nmenu 40014\n";
    ASSERT_EQ(run(open + "menu 40249\nmenu 40253\npicture 0 " + at("w1.png") + "\n"), 0) << err;
    ASSERT_EQ(run(open + "picture 0 " + at("w2.png") + "\nmenu 40253\npicture 0 " + at("w3.png") + "\n"), 0) << err;
    const auto w1 = colours(QImage(QString::fromStdString(at("w1.png"))));
    const auto w2 = colours(QImage(QString::fromStdString(at("w2.png"))));
    const auto w3 = colours(QImage(QString::fromStdString(at("w3.png"))));
    EXPECT_EQ(w1.at(blue), w2.at(blue));      // both choices kept for the next start
    EXPECT_GT(w2.at(blue), w3.at(blue) + 1000);  // the item takes the bars away again
    EXPECT_NE(file(".zdp/zendrite.plotstyle").find("Publication\nnoerrorbars"), std::string::npos)
        << file(".zdp/zendrite.plotstyle");
}
