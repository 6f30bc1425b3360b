// End-to-end: zendrite-batch chart draws the five kinds of chart from hand-written .gdf and
// .seq files, each picture read back by Qt; the .xyy of the chosen columns; the refusals.
#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <sys/wait.h>
#include <unistd.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace {

struct Chart : ::testing::Test {
    fs::path home;
    std::string out, err;
    void SetUp() override {
        home = fs::temp_directory_path() / ("zd_chart_" + std::to_string(::getpid()) + "_" +
                                            ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(home);
        fs::create_directories(home);
    }
    void TearDown() override { fs::remove_all(home); }
    static std::string read(const fs::path& p) {
        std::ifstream in(p);
        std::stringstream s;
        s << in.rdbuf();
        return s.str();
    }
    int batch(const std::string& args) {
        const std::string cmd = "cd '" + home.string() + "' && QT_QPA_PLATFORM=offscreen '" ZD_BATCH_BIN "' chart " + args +
                                " > out.txt 2> err.txt";
        const int rc = std::system(cmd.c_str());
        out = read(home / "out.txt"), err = read(home / "err.txt");
        return WIFEXITED(rc) ? WEXITSTATUS(rc) : -1;
    }
    static int coloured(const fs::path& png) {
        const QImage img(QString::fromStdString(png.string()));
        int n = 0;
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x) {
                const QRgb c = img.pixel(x, y);
                n += std::max({qRed(c), qGreen(c), qBlue(c)}) - std::min({qRed(c), qGreen(c), qBlue(c)}) > 60;
            }
        return n;
    }
    // Pixels of a colour of the palette's first (blue) and second (red) curves.
    static std::pair<int, int> blue_red(const fs::path& png) {
        const QImage img(QString::fromStdString(png.string()));
        int b = 0, r = 0;
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x) {
                const QRgb c = img.pixel(x, y);
                b += qBlue(c) > 150 && qRed(c) < 60 && qGreen(c) < 130;
                r += qRed(c) > 180 && qGreen(c) < 90 && qBlue(c) < 80;
            }
        return {b, r};
    }
};

const std::string kCharts = std::string(ZD_TEST_DATA) + "/charts/";

}  // namespace

TEST_F(Chart, FiveKindsDrawnAndReadBack) {
    std::ofstream(home / "polar.gdf") << "TITLE polar\nN_PLOTS 1\nPLOT_TYPE POLAR\n{/r\nN_POINTS 5\n0 1 90 2 180 1 270 2 360 1\n";
    ASSERT_EQ(batch("'" + kCharts + "three_curves.gdf' --out lines.png"), 0) << err;
    ASSERT_EQ(batch("'" + kCharts + "three_curves.gdf' --kind scatt --out scatter.png"), 0) << err;
    ASSERT_EQ(batch("'" + kCharts + "twenty.seq' --y 6 --y 8 --kind histo --out bars.png"), 0) << err;
    ASSERT_EQ(batch("polar.gdf --out polar.png"), 0) << err;
    ASSERT_EQ(batch("'" + kCharts + "pie.gdf' --out pie.png"), 0) << err;
    ASSERT_EQ(batch("'" + kCharts + "pie.gdf' --out pie.svg"), 0) << err;
    for (const char* p : {"lines.png", "scatter.png", "bars.png", "polar.png", "pie.png"}) {
        const QImage img(QString::fromStdString((home / p).string()));
        ASSERT_FALSE(img.isNull()) << p;
        EXPECT_EQ(img.width(), 1200) << p;
    }
    // Lines colour more of the picture than markers alone; the bars fill areas of both colours;
    // the pie's largest slice (62.5%) is blue, its second (30%) red, in about that ratio.
    EXPECT_GT(coloured(home / "lines.png"), coloured(home / "scatter.png") + 1000);
    const auto bars = blue_red(home / "bars.png");
    EXPECT_GT(bars.first, 20000);
    EXPECT_GT(bars.second, 10000);
    const auto pie = blue_red(home / "pie.png");
    EXPECT_NEAR(static_cast<double>(pie.first) / pie.second, 62.5 / 30.0, 0.25);
    EXPECT_GT(blue_red(home / "polar.png").first, 500);
    EXPECT_NE(read(home / "pie.svg").find("<svg"), std::string::npos);
}

TEST_F(Chart, SeqColumnsXyyAndRefusals) {
    ASSERT_EQ(batch("'" + kCharts + "twenty.seq' --columns"), 0) << err;
    EXPECT_NE(out.find("5  Phase 1: a\n"), std::string::npos) << out;
    EXPECT_EQ(out.find("Lambda"), std::string::npos) << "not refined: not offered";
    ASSERT_EQ(batch("'" + kCharts + "twenty.seq' --y 'Phase 1: a' --y 6 --xyy cols.xyy"), 0) << err;
    const std::string xyy = read(home / "cols.xyy");
    std::istringstream lines(xyy);
    std::string head, first;
    std::getline(lines, head);
    std::getline(lines, first);
    EXPECT_EQ(head, "Temperature/Phase 1: a  Phase 1: Fra");
    EXPECT_EQ(first, "    300.000000      8.339000     80.000000");
    EXPECT_EQ(std::count(xyy.begin(), xyy.end(), '\n'), 21);
    // refusals: each the reader's text, exit status 1, nothing written
    std::ofstream(home / "bad.gdf") << "N_PLOTS 2\n{/a\nN_POINTS 1\n1 2\n";
    std::ofstream(home / "cut.seq") << "NEW_REFINEMENT x\nNUMPAR 2 N_PATT 1 NPHASE 0\nZero 0 1\n";
    std::ofstream(home / "t.txt") << "1 2\n";
    const std::pair<std::string, std::string> cases[] = {
        {"bad.gdf --out b.png", "Plot information incompatible with the number of curves!\n"},
        {"cut.seq --out b.png", "Error reading the Plot Parameters!\n"},
        {"t.txt --out b.png", "Incompatible format for Graphics representation!\n"},
        {"'" + kCharts + "twenty.seq' --y 99 --out b.png", "zendrite-batch chart: no column 99 (--columns lists them)\n"}};
    for (const auto& [args, text] : cases) {
        EXPECT_EQ(batch(args), 1) << args;
        EXPECT_EQ(err.substr(err.size() >= text.size() ? err.size() - text.size() : 0), text) << args;
        EXPECT_FALSE(fs::exists(home / "b.png")) << args;
    }
}

// A second Y axis: the cell edge (8.34..8.36) and the phase fraction (60..80) each fill the frame's
// height; on one axis the edge lies flat at the bottom.
TEST_F(Chart, SecondYAxisGivesEachUnitTheFrame) {
    const std::string seq = "'" + kCharts + "twenty.seq' --y 'Phase 1: a' ";
    ASSERT_EQ(batch(seq + "--y2 'Phase 1: Fraction' --out two.png"), 0) << err;
    ASSERT_EQ(batch(seq + "--y 'Phase 1: Fraction' --out one.png"), 0) << err;
    auto blue_rows = [](const fs::path& png) {
        const QImage img(QString::fromStdString(png.string()));
        int rows = 0;
        for (int y = 0; y < img.height(); ++y) {
            bool any = false;
            for (int x = 150; x < 900 && !any; ++x) {  // the frame, not the key
                const QRgb c = img.pixel(x, y);
                any = qBlue(c) > 150 && qRed(c) < 60 && qGreen(c) < 130;
            }
            rows += any;
        }
        return rows;
    };
    EXPECT_GT(blue_rows(home / "two.png"), 400);
    EXPECT_LT(blue_rows(home / "one.png"), 40);
}

