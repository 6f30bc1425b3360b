// End-to-end: the OpenGL model window on a series of real patterns, under Xvfb with Mesa's
// software renderer: each render method drawn and saved, turned, the model saved as OBJ and
// PLY and read back, the view file saved and read; without a display, the message.
#include <gtest/gtest.h>

#include <QImage>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

struct GlModel : SCRIPTED_HOME {
    // Twelve copies of a real CeO2 pattern, each shifted by 0.05 deg and scaled by 1 + 0.05k.
    std::string open_series() {
        std::ifstream in(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy");
        std::vector<std::pair<double, double>> xy;
        for (std::string line; std::getline(in, line);) {
            std::istringstream w(line);
            double x = 0, y = 0;
            if (!line.empty() && line[0] != '#' && (w >> x >> y)) xy.emplace_back(x, y);
        }
        std::string files = "files";
        for (int k = 0; k < 12; ++k) {
            const std::string name = "c" + std::to_string(10 + k) + ".xy";
            std::ofstream out(home / name);
            for (const auto& [x, y] : xy) out << x + 0.05 * k << " " << y * (1 + 0.05 * k) << "\n";
            files += " " + at(name);
        }
        return files + "\nmenu 40014\n";
    }
    // Pixels of the picture that are neither the background nor grey (the axes).
    static int coloured(const fs::path& png) {
        const QImage img(QString::fromStdString(png.string()));
        int n = 0;
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x) {
                const QRgb c = img.pixel(x, y);
                n += std::abs(qRed(c) - qGreen(c)) + std::abs(qGreen(c) - qBlue(c)) > 30 ? 1 : 0;
            }
        return n;
    }
};

}  // namespace

TEST_F(GlModel, RenderMethodsPicturesModelAndView) {
    launcher = "xvfb-run -a -s '-screen 0 1280x1024x24'";
    std::string s = open_series() + "menu 40022\n";
    for (const char* r : {"points", "wire", "flat", "smooth", "ribbons"})
        s += std::string("gl render ") + r + "\ngl rotation -25\ngl elevation 35\ngl picture " + at(std::string(r) + ".png") +
             " 640 480\ngl model " + at(std::string(r) + ".obj") + "\n";
    s += "gl render smooth\ngl rotation 60\ngl picture " + at("turned.png") + " 640 480\n";
    s += "gl sweep on\ngl picture " + at("sweep.png") + " 640 480\ngl sweep off\n";
    s += "gl model " + at("m.obj") + "\ngl model " + at("m.ply") + "\ngl model " + at("m.stl") + "\n";
    s += "gl view save " + at("v.view") + "\ngl view load " + at("bad.view") + "\ngl frames 5\ngl close\n";
    std::ofstream(home / "bad.view") << "rotation 10\nelevation 200\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    // Xvfb and Mesa come with the project's packages: the window must open.
    ASSERT_EQ(out.find("No OpenGL on this machine"), std::string::npos) << out;
    for (const char* r : {"points", "wire", "flat", "smooth", "ribbons"}) {
        const fs::path png = home / (std::string(r) + ".png");
        ASSERT_TRUE(fs::exists(png)) << r << out;
        const QImage img(QString::fromStdString(png.string()));
        EXPECT_EQ(img.width(), 640);
        EXPECT_EQ(img.height(), 480);
        EXPECT_GT(coloured(png), r == std::string("points") || r == std::string("wire") ? 300 : 3000) << r;
    }
    // Each method's model: the same grid, as points, line segments or triangles.
    auto count = [this](const std::string& name, const char* kind) {
        std::ifstream in(home / name);
        int n = 0;
        for (std::string line; std::getline(in, line);) n += line.rfind(kind, 0) == 0;
        return n;
    };
    const int g = count("points.obj", "v ");
    EXPECT_GT(g, 12 * 64 - 1);
    EXPECT_EQ(count("points.obj", "p "), g);
    EXPECT_EQ(count("wire.obj", "v "), g);
    EXPECT_EQ(count("wire.obj", "l "), 2 * g - g / 12 - 12);  // rows x (cols-1) + (rows-1) x cols
    EXPECT_EQ(count("flat.obj", "f "), count("smooth.obj", "f "));
    EXPECT_EQ(count("ribbons.obj", "v "), 2 * g);
    EXPECT_EQ(count("ribbons.obj", "f "), 2 * (g - 12));  // two triangles a step along each row
    // The sweep lights the first pattern in red, which the colour scale never gives.
    auto reds = [](const QImage& img) {
        int n = 0;
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x) {
                const QRgb c = img.pixel(x, y);
                n += qRed(c) > 2 * qGreen(c) + 40 && qRed(c) > 2 * qBlue(c) + 40 ? 1 : 0;
            }
        return n;
    };
    EXPECT_GT(reds(QImage(QString::fromStdString((home / "sweep.png").string()))), 50);
    EXPECT_EQ(reds(QImage(QString::fromStdString((home / "turned.png").string()))), 0);
    // Turned, the picture changes.
    const QImage a(QString::fromStdString((home / "smooth.png").string())), b(QString::fromStdString((home / "turned.png").string()));
    EXPECT_NE(a, b);
    // The model of the smooth surface: a grid of rows x cols vertices, 2 (rows-1)(cols-1) faces.
    std::ifstream obj(home / "m.obj");
    std::string first;
    std::getline(obj, first);
    int rows = 0, cols = 0;
    ASSERT_EQ(std::sscanf(first.c_str(), "# Zendrite model: %d patterns x %d columns", &rows, &cols), 2) << first;
    EXPECT_EQ(rows, 12);
    EXPECT_GE(cols, 64);
    int v = 0, f = 0;
    for (std::string line; std::getline(obj, line);) v += line.rfind("v ", 0) == 0, f += line.rfind("f ", 0) == 0;
    EXPECT_EQ(v, rows * cols);
    EXPECT_EQ(f, 2 * (rows - 1) * (cols - 1));
    EXPECT_NE(file("m.ply").find("element vertex " + std::to_string(rows * cols) + "\n"), std::string::npos);
    EXPECT_FALSE(fs::exists(home / "m.stl"));
    EXPECT_NE(out.find("A model is saved as .obj or .ply"), std::string::npos) << out;
    EXPECT_NE(file("v.view").find("render smooth\n"), std::string::npos);
    EXPECT_NE(file("v.view").find("rotation 60\n"), std::string::npos);
    EXPECT_NE(out.find("View file, line 2: cannot read \"elevation 200\""), std::string::npos) << out;
    EXPECT_NE(out.find("frames 5 in "), std::string::npos) << out;
}

TEST_F(GlModel, RefusedWithoutOpenGLOrWithoutPatterns) {
    // One profile: the checks of the many-pattern views.
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "one.xy");
    run("files " + at("one.xy") + "\nmenu 40014\nmenu 40022\ngl picture " + at("p.png") + "\n");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_NE(out.find("ERROR: At least two profiles must be shown for this graph"), std::string::npos) << out;
    EXPECT_NE(out.find("The OpenGL window is not open"), std::string::npos) << out;
    EXPECT_FALSE(fs::exists(home / "p.png"));
    // No display and no other way to OpenGL: the message, and the program goes on.
    launcher = "env -u DISPLAY -u WAYLAND_DISPLAY";
    run(open_series() + "menu 40022\nmenu 40031\ndump " + at("d.txt") + "\n");
    ASSERT_EQ(status, 0) << out << err;
    const bool refused = out.find("No OpenGL on this machine: Graph 3D Surface shows the same data in software") != std::string::npos;
    if (!refused) GTEST_SKIP() << "this machine gives OpenGL without a display";
    EXPECT_NE(file("d.txt").find("graph_mode graph2dcontour"), std::string::npos);
}
