// End-to-end: pictures of the main window written by Save Graphic, the scripted export,
// Print and zendrite-batch render, each read back by a reader that is not ours: Qt's image
// readers, QtSvg, Ghostscript and pdftoppm; EMF, HP-GL and DXF by the small readers below.
// Positions are checked against the page layout worked by hand: the frame spans 0.15 to 0.85
// of the picture, and the window runs 5 % of the Y range beyond the data.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <map>
#include <sstream>
#include <vector>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

struct BOX {
    int left = 1 << 30, top = 1 << 30, right = -1, bottom = -1;
};

template <class F>
BOX box_of(const QImage& img, F wanted) {
    BOX b;
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x)
            if (wanted(img.pixel(x, y))) {
                b.left = std::min(b.left, x), b.right = std::max(b.right, x);
                b.top = std::min(b.top, y), b.bottom = std::max(b.bottom, y);
            }
    return b;
}

// The plot zone in the window's colours (light grey), and the red of the first profile.
BOX zone(const QImage& img) {
    return box_of(img, [](QRgb c) {
        return std::abs(qRed(c) - 235) <= 6 && std::abs(qGreen(c) - 235) <= 6 && std::abs(qBlue(c) - 235) <= 6;
    });
}
BOX red(const QImage& img) {
    return box_of(img, [](QRgb c) { return qRed(c) > 200 && qGreen(c) < 90 && qBlue(c) < 90; });
}

void expect_near(const BOX& a, const BOX& b, int tolerance, const std::string& what) {
    EXPECT_NEAR(a.left, b.left, tolerance) << what;
    EXPECT_NEAR(a.right, b.right, tolerance) << what;
    EXPECT_NEAR(a.top, b.top, tolerance) << what;
    EXPECT_NEAR(a.bottom, b.bottom, tolerance) << what;
}

// The five-point pattern: x 1..5, y 10 30 20 40 10, in a picture of w x h pixels.
const double kY[5] = {10, 30, 20, 40, 10};
double x_pixel(double x, int w) { return 0.15 * w + (x - 1) / 4 * 0.7 * w; }
double y_pixel(double y, int h) { return h - (0.15 * h + (y - 8.5) / 33.0 * 0.7 * h); }

// True when `pts` (pixels, Y down) are the five points of the pattern within `tol` pixels.
bool is_five_point_curve(const std::vector<std::pair<double, double>>& pts, int w, int h, double tol) {
    if (pts.size() != 5) return false;
    for (int i = 0; i < 5; ++i)
        if (std::fabs(pts[static_cast<std::size_t>(i)].first - x_pixel(i + 1, w)) > tol ||
            std::fabs(pts[static_cast<std::size_t>(i)].second - y_pixel(kY[i], h)) > tol)
            return false;
    return true;
}

// ---- EMF: records of type and size; the header's counts; polylines in logical units.
struct EMF_READ {
    bool header_ok = false;
    std::map<std::uint32_t, int> counts;
    std::vector<std::vector<std::pair<double, double>>> polylines;
    std::uint32_t declared_bytes = 0, declared_records = 0, records = 0, last_type = 0;
};
std::uint32_t u32(const std::string& d, std::size_t at) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(d[at])) |
           (static_cast<std::uint32_t>(static_cast<unsigned char>(d[at + 1])) << 8) |
           (static_cast<std::uint32_t>(static_cast<unsigned char>(d[at + 2])) << 16) |
           (static_cast<std::uint32_t>(static_cast<unsigned char>(d[at + 3])) << 24);
}
EMF_READ read_emf(const std::string& d) {
    EMF_READ r;
    if (d.size() < 108) return r;
    r.header_ok = u32(d, 0) == 1 && u32(d, 40) == 0x464D4520;
    r.declared_bytes = u32(d, 48);
    r.declared_records = u32(d, 52);
    for (std::size_t at = 0; at + 8 <= d.size();) {
        const std::uint32_t type = u32(d, at), size = u32(d, at + 4);
        if (size < 8 || size % 4 != 0 || at + size > d.size()) break;
        ++r.counts[type];
        ++r.records;
        r.last_type = type;
        if (type == 4) {  // polyline: bounds, count, points
            std::vector<std::pair<double, double>> p;
            const std::uint32_t n = u32(d, at + 24);
            for (std::uint32_t i = 0; i < n && at + 28 + 8 * i + 8 <= at + size; ++i)
                p.emplace_back(static_cast<std::int32_t>(u32(d, at + 28 + 8 * i)),
                               static_cast<std::int32_t>(u32(d, at + 32 + 8 * i)));
            r.polylines.push_back(p);
        }
        at += size;
    }
    return r;
}

// ---- HP-GL: PU moves, PD draws from where the pen is; points in plotter units, Y up.
struct HPGL_READ {
    int pens = 0, labels = 0;
    std::vector<std::vector<std::pair<double, double>>> polylines;
    std::map<int, std::vector<int>> colours;  // PC pen -> r g b
};
HPGL_READ read_hpgl(const std::string& d) {
    HPGL_READ r;
    std::pair<double, double> at{0, 0};
    std::size_t i = 0;
    while (i + 2 <= d.size()) {
        const std::string op = d.substr(i, 2);
        if (op == "LB") {  // a label runs to the end-of-text character
            const std::size_t end = d.find('\x03', i);
            ++r.labels;
            i = end == std::string::npos ? d.size() : end + 1;
            continue;
        }
        const std::size_t end = d.find(';', i);
        const std::string args = d.substr(i + 2, (end == std::string::npos ? d.size() : end) - i - 2);
        std::vector<double> v;
        std::stringstream ss(args);
        for (std::string t; std::getline(ss, t, ',');)
            if (!t.empty()) v.push_back(std::atof(t.c_str()));
        if (op == "SP") ++r.pens;
        if (op == "PC" && v.size() == 4) r.colours[static_cast<int>(v[0])] = {int(v[1]), int(v[2]), int(v[3])};
        if (op == "PU" && v.size() >= 2) at = {v[v.size() - 2], v[v.size() - 1]};
        if (op == "PD" && v.size() >= 2) {
            std::vector<std::pair<double, double>> p{at};
            for (std::size_t k = 0; k + 1 < v.size(); k += 2) p.emplace_back(v[k], v[k + 1]);
            at = p.back();
            r.polylines.push_back(p);
        }
        i = end == std::string::npos ? d.size() : end + 1;
        while (i < d.size() && (d[i] == '\n' || d[i] == '\r')) ++i;
    }
    return r;
}

// ---- DXF: group code and value lines; the entities, their vertices and texts.
struct DXF_READ {
    std::map<std::string, int> entities;
    std::vector<std::vector<std::pair<double, double>>> polylines;
    std::vector<std::string> texts;
    bool ends_with_eof = false;
};
DXF_READ read_dxf(const std::string& d) {
    DXF_READ r;
    std::istringstream in(d);
    std::vector<std::pair<int, std::string>> g;
    for (std::string code, value; std::getline(in, code) && std::getline(in, value);) g.emplace_back(std::atoi(code.c_str()), value);
    bool in_entities = false;
    std::string entity;
    for (std::size_t k = 0; k < g.size(); ++k) {
        const auto& [code, value] = g[k];
        if (code == 2 && value == "ENTITIES") in_entities = true;
        if (code != 0) {
            if (entity == "VERTEX" && code == 10) r.polylines.back().emplace_back(std::atof(value.c_str()), 0);
            if (entity == "VERTEX" && code == 20) r.polylines.back().back().second = std::atof(value.c_str());
            if (entity == "TEXT" && code == 1) r.texts.push_back(value);
            continue;
        }
        entity = value;
        if (value == "ENDSEC") in_entities = false;
        if (!in_entities) continue;
        ++r.entities[value];
        if (value == "POLYLINE") r.polylines.emplace_back();
    }
    r.ends_with_eof = !g.empty() && g.back().first == 0 && g.back().second == "EOF";
    return r;
}

std::string slurp(const fs::path& f) {
    std::ifstream in(f, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

struct Export : SCRIPTED_HOME {
    void SetUp() override {
        SCRIPTED_HOME::SetUp();
        // QtSvg draws its texts with the fonts of an application.
        static int argc = 1;
        static char name[] = "test_e2e_export";
        static char* argv[] = {name, nullptr};
        if (!QGuiApplication::instance()) new QGuiApplication(argc, argv);
    }
    // The five-point pattern, opened through the menu, then the options dialog of Save Graphic
    // with the window's background, 120 x 80 mm at 100 dpi, writing `first`.
    std::string five_points(const std::string& first) {
        std::ofstream(home / "five.xy") << "1 10\n2 30\n3 20\n4 40\n5 10\n";
        return "files " + at("five.xy") + "\nmenu 40014\nfiles " + at(first) +
               "\ndialog \"Picture options\" radio 18\ndialog \"Picture options\" set 10 120\n"
               "dialog \"Picture options\" set 11 80\ndialog \"Picture options\" set 14 100\n"
               "dialog \"Picture options\" press 1\nmenu 40044\n";
    }
    // Ghostscript's picture of a PDF, EPS or PS file at `dpi`.
    QImage ghostscript(const std::string& name, int dpi) {
        const std::string png = at(name + ".gs.png");
        const std::string cmd = "gs -q -dSAFER -dBATCH -dNOPAUSE -dEPSCrop -sDEVICE=png16m -r" + std::to_string(dpi) +
                                " -sOutputFile='" + png + "' '" + at(name) + "' > /dev/null 2>&1";
        EXPECT_EQ(std::system(cmd.c_str()), 0) << cmd;
        return QImage(QString::fromStdString(png));
    }
    QImage pdftoppm(const std::string& name, int dpi) {
        const std::string base = at(name + ".ppm");
        const std::string cmd = "pdftoppm -r " + std::to_string(dpi) + " -png -singlefile '" + at(name) + "' '" + base + "'";
        EXPECT_EQ(std::system(cmd.c_str()), 0) << cmd;
        return QImage(QString::fromStdString(base + ".png"));
    }
};

TEST_F(Export, EveryFormatReadBackByAnIndependentReader) {
    std::string s = five_points("shown.png");
    for (const char* f : {"a.tif", "a.jpg", "a.bmp", "a.svg", "a.pdf", "a.eps", "a.ps", "a.emf", "a.plt", "a.dxf"})
        s += "export 0 " + at(f) + "\n";
    s += "export 0 " + at("fine.tif") + " 50 40 600\n";
    // Grey levels on white, from the options dialog.
    s += "files " + at("grey.png") + "\ndialog \"Picture options\" radio 16\ndialog \"Picture options\" radio 17\n"
         "dialog \"Picture options\" press 1\nmenu 40044\nquit\n";
    ASSERT_EQ(run(s), 0) << err;
    const int w = 472, h = 315;  // 120 x 80 mm at 100 dpi
    const QImage png(QString::fromStdString(at("shown.png")));
    ASSERT_FALSE(png.isNull());
    EXPECT_EQ(png.width(), w);
    EXPECT_EQ(png.height(), h);
    EXPECT_NEAR(png.dotsPerMeterX() * 0.0254, 100, 0.5);
    // The kept options give the next pictures the same size and resolution.
    for (const char* f : {"a.tif", "a.jpg", "a.bmp"}) {
        const QImage img(QString::fromStdString(at(f)));
        ASSERT_FALSE(img.isNull()) << f;
        EXPECT_EQ(img.size(), png.size()) << f;
    }
    const QImage fine(QString::fromStdString(at("fine.tif")));
    EXPECT_EQ(fine.width(), 1181);  // 50 mm at 600 dpi
    EXPECT_EQ(fine.height(), 945);
    EXPECT_NEAR(fine.dotsPerMeterX() * 0.0254, 600, 0.5);
    EXPECT_GT(red(fine).right, red(fine).left) << "the curve is drawn at 600 dpi";

    const QImage grey(QString::fromStdString(at("grey.png")));
    ASSERT_EQ(grey.size(), png.size());
    int coloured = 0;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) coloured += qRed(grey.pixel(x, y)) != qGreen(grey.pixel(x, y)) || qGreen(grey.pixel(x, y)) != qBlue(grey.pixel(x, y));
    EXPECT_EQ(coloured, 0);
    EXPECT_EQ(grey.pixel(2, 2), qRgb(255, 255, 255));
    EXPECT_EQ(grey.pixel(w / 2, h / 3), qRgb(255, 255, 255)) << "the zone is white too";
    EXPECT_NE(png.pixel(2, 2), qRgb(255, 255, 255)) << "the window's background";

    // The zone and the curve of the PNG sit where the layout puts them.
    const BOX z = zone(png), c = red(png);
    EXPECT_NEAR(z.left, 0.15 * w, 3);
    EXPECT_NEAR(z.right, 0.85 * w, 3);
    EXPECT_NEAR(z.top, 0.15 * h, 3);
    EXPECT_NEAR(z.bottom, 0.85 * h, 3);
    EXPECT_NEAR(c.bottom, y_pixel(10, h), 3);  // the markers of the lowest points reach below them

    // SVG through QtSvg; PDF, EPS and PS through Ghostscript: the same places within a few pixels.
    QSvgRenderer svg(QString::fromStdString(at("a.svg")));
    ASSERT_TRUE(svg.isValid());
    QImage from_svg(w, h, QImage::Format_RGB32);
    from_svg.fill(Qt::white);
    {
        QPainter p(&from_svg);
        svg.render(&p);
    }
    expect_near(zone(from_svg), z, 2, "svg zone");
    expect_near(red(from_svg), c, 3, "svg curve");
    const std::string svg_text = slurp(home / "a.svg");
    EXPECT_NE(svg_text.find("2theta"), std::string::npos) << "texts stay texts";
    EXPECT_EQ(svg_text.find("<image"), std::string::npos) << "no bitmap";
    // The PDF's texts are texts, and it holds no picture.
    ASSERT_EQ(std::system(("pdftotext '" + at("a.pdf") + "' '" + at("a.txt") + "'").c_str()), 0);
    EXPECT_NE(slurp(home / "a.txt").find("2theta"), std::string::npos);
    ASSERT_EQ(std::system(("pdfimages -list '" + at("a.pdf") + "' > '" + at("images.txt") + "'").c_str()), 0);
    EXPECT_EQ(count(slurp(home / "images.txt"), "\n"), 2) << "only the heading of the list";
    for (const char* f : {"a.pdf", "a.eps", "a.ps"}) {
        const QImage g = ghostscript(f, 100);
        ASSERT_FALSE(g.isNull()) << f;
        EXPECT_NEAR(g.width(), w, 1) << f;
        EXPECT_NEAR(g.height(), h, 1) << f;
        expect_near(zone(g), z, 3, std::string(f) + " zone");
        expect_near(red(g), c, 3, std::string(f) + " curve");
    }

    // EMF: a header that counts the file right, the end record last, the curve as one polyline.
    const std::string emf_data = slurp(home / "a.emf");
    const EMF_READ emf = read_emf(emf_data);
    EXPECT_TRUE(emf.header_ok);
    EXPECT_EQ(emf.declared_bytes, emf_data.size());
    EXPECT_EQ(emf.declared_records, emf.records);
    EXPECT_EQ(emf.last_type, 14u);
    EXPECT_GT(emf.counts.at(84), 10) << "texts";
    int found = 0;
    for (const auto& p : emf.polylines) found += is_five_point_curve(p, w, h, 1.0);
    EXPECT_EQ(found, 1);

    // HP-GL: plotter units of 0.025 mm with Y up; the red pen draws the curve.
    const HPGL_READ plt = read_hpgl(slurp(home / "a.plt"));
    EXPECT_GT(plt.labels, 10);
    found = 0;
    const double pu = 1016.0 / 100;
    for (auto p : plt.polylines) {
        for (auto& q : p) q = {q.first / pu, h - q.second / pu};
        found += is_five_point_curve(p, w, h, 1.0);
    }
    EXPECT_EQ(found, 1);
    bool red_pen = false;
    for (const auto& [pen, rgb] : plt.colours) red_pen |= rgb == std::vector<int>{255, 0, 0};
    EXPECT_TRUE(red_pen);

    // DXF: millimetres with Y up; every polyline closed by its SEQEND.
    DXF_READ dxf = read_dxf(slurp(home / "a.dxf"));
    EXPECT_TRUE(dxf.ends_with_eof);
    EXPECT_EQ(dxf.entities["POLYLINE"], dxf.entities["SEQEND"]);
    EXPECT_GE(dxf.entities["VERTEX"], 2 * dxf.entities["POLYLINE"]);
    found = 0;
    for (auto p : dxf.polylines) {
        for (auto& q : p) q = {q.first / 0.254, h - q.second / 0.254};
        found += is_five_point_curve(p, w, h, 1.0);
    }
    EXPECT_EQ(found, 1);
    bool label = false;
    for (const std::string& t : dxf.texts) label |= t.find("2theta") != std::string::npos;
    EXPECT_TRUE(label);
}

TEST_F(Export, BadRequestsLeaveNoFileAndTheWindowAsItWas) {
    std::string s = five_points("first.png");
    s += "picture 0 " + at("before.png") + "\n";
    s += "export 0 " + at("a.xyz") + "\n";
    s += "export 0 /nonexistent/folder/a.png\n";
    s += "export 0 " + at("zero.png") + " 0 0 300\n";
    s += "export 0 " + at("huge.pdf") + " 1000000 1000 300\n";
    s += "export 0 " + at("dense.png") + " 1000 1000 1200\n";
    s += "export 0 " + at("nodpi.png") + " 100 100 0\n";
    s += "export 7 " + at("nowindow.png") + "\n";
    s += "picture 0 " + at("after.png") + "\nquit\n";
    ASSERT_EQ(run(s), 0) << err;
    EXPECT_NE(out.find("a.xyz: its extension names no picture format"), std::string::npos) << out;
    EXPECT_NE(out.find("Unable to write /nonexistent/folder/a.png"), std::string::npos) << out;
    EXPECT_NE(out.find("not 0 x 0 mm"), std::string::npos) << out;
    EXPECT_NE(out.find("not 1e+06 x 1000 mm"), std::string::npos) << out;
    EXPECT_NE(out.find("choose a lower resolution"), std::string::npos) << out;
    EXPECT_NE(out.find("between 36 and 1200 dpi"), std::string::npos) << out;
    EXPECT_NE(out.find("No window 7"), std::string::npos) << out;
    for (const auto& e : fs::directory_iterator(home)) {
        const std::string n = e.path().filename().string();
        EXPECT_TRUE(n == "five.xy" || n == "first.png" || n == "before.png" || n == "after.png" || n == ".zdp" ||
                    n == "script.txt" || n == "out.txt" || n == "err.txt")
            << "left behind: " << n;
    }
    const QImage before(QString::fromStdString(at("before.png"))), after(QString::fromStdString(at("after.png")));
    EXPECT_FALSE(before.isNull());
    EXPECT_EQ(before, after);
}

// Kept options that cannot be used (out of bounds, or not read whole) give way to the defaults:
// 160 x 107 mm at 300 dpi.
// A disk that fills up (here a limit on the size of files, its signal ignored) leaves no part of the file.
TEST_F(Export, FullDiskLeavesNoPartOfTheFile) {
    std::string s = five_points("first.png");
    s += "export 0 " + at("big.tif") + " 100 100 1200\nexport 0 " + at("small.pdf") + " 100 100 300\nquit\n";
    std::ofstream(home / "script.txt") << s;
    const std::string h = home.string();
    const std::string cmd = "cd '" + h + "' && trap '' XFSZ && ulimit -f 2000 && HOME='" + h +
                            "' QT_QPA_PLATFORM=offscreen '" ZD_APP_BIN "' --script '" + h + "/script.txt' > out.txt 2> err.txt";
    ASSERT_EQ(std::system(("bash -c \"" + cmd + "\"").c_str()), 0);
    out = read(home / "out.txt");
    EXPECT_NE(out.find("Unable to write " + at("big.tif") + ": "), std::string::npos) << out;
    EXPECT_FALSE(fs::exists(home / "big.tif"));
    for (const auto& e : fs::directory_iterator(home))
        EXPECT_EQ(e.path().filename().string().find("big.tif"), std::string::npos) << e.path();
    EXPECT_TRUE(fs::exists(home / "small.pdf")) << "a file that fits is written";
}

TEST_F(Export, UnusableKeptOptionsGiveTheDefaults) {
    fs::create_directories(home / ".zdp");
    std::ofstream(home / ".zdp" / "zendrite.picture") << "5000 5000 0 300 0 1 1 1\n";
    std::ofstream(home / "five.xy") << "1 10\n2 30\n3 20\n4 40\n5 10\n";
    std::string s = "files " + at("five.xy") + "\nmenu 40014\nexport 0 " + at("a.png") + "\n";
    ASSERT_EQ(run(s + "quit\n"), 0) << err;
    std::ofstream(home / ".zdp" / "zendrite.picture") << "120 80 0";
    ASSERT_EQ(run("files " + at("five.xy") + "\nmenu 40014\nexport 0 " + at("b.png") + "\nquit\n"), 0) << err;
    for (const char* f : {"a.png", "b.png"}) {
        const QImage img(QString::fromStdString(at(f)));
        EXPECT_EQ(img.width(), 1890) << f;
        EXPECT_EQ(img.height(), 1264) << f;
    }
}

TEST_F(Export, RietveldPlotOfThreePatternsAsSvgAndPdfPictures) {
    fs::copy_file(ZD_TEST_DATA "/gui/two_phase.prf", home / "two_phase.prf");
    std::string s = "files " + at("two_phase.prf") + "\nmenu 40016\nmenu 40102\nmenu 40102\n";
    s += "files " + at("r.png") + "\ndialog \"Picture options\" radio 18\ndialog \"Picture options\" set 14 150\n"
         "dialog \"Picture options\" press 1\nmenu 40044\n";
    s += "export 0 " + at("r.svg") + "\nexport 0 " + at("r.pdf") + "\ndump " + at("dump.txt") + "\nquit\n";
    ASSERT_EQ(run(s), 0) << err;
    EXPECT_EQ(value(file("dump.txt"), "nperfiles"), "3");
    const QImage png(QString::fromStdString(at("r.png")));
    ASSERT_FALSE(png.isNull());
    const QImage pdf = pdftoppm("r.pdf", 150);
    ASSERT_FALSE(pdf.isNull());
    QSvgRenderer svg(QString::fromStdString(at("r.svg")));
    ASSERT_TRUE(svg.isValid());
    QImage from_svg(png.size(), QImage::Format_RGB32);
    from_svg.fill(Qt::white);
    {
        QPainter p(&from_svg);
        svg.render(&p);
    }
    // As pictures: beside the texts, whose fonts differ, the pixels agree.
    for (const QImage* other : std::vector<const QImage*>{&pdf, &from_svg}) {
        // A page rasterised from points may round its size to the next pixel.
        ASSERT_NEAR(other->width(), png.width(), 1);
        ASSERT_NEAR(other->height(), png.height(), 1);
        expect_near(zone(*other), zone(png), 2, "zone");
        expect_near(red(*other), red(png), 3, "curves");
        // The rows of Bragg ticks, in the dark green of the ticks, and the blue difference curve in its band.
        auto ticks = [](const QImage& img) {
            return box_of(img, [](QRgb c) { return qRed(c) < 60 && qGreen(c) > 90 && qBlue(c) < 60; });
        };
        auto band = [](const QImage& img) {
            return box_of(img, [](QRgb c) { return qRed(c) < 60 && qGreen(c) < 60 && qBlue(c) > 200; });
        };
        EXPECT_GT(ticks(png).bottom, ticks(png).top);
        expect_near(ticks(*other), ticks(png), 3, "ticks");
        expect_near(band(*other), band(png), 3, "difference curve");
        long differ = 0;
        for (int y = 0; y < std::min(png.height(), other->height()); ++y)
            for (int x = 0; x < std::min(png.width(), other->width()); ++x) {
                const QRgb a = png.pixel(x, y), b = other->pixel(x, y);
                differ += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b)) > 150;
            }
        EXPECT_LT(differ, png.width() * png.height() / 12);
    }
}

TEST_F(Export, PrintOntoAPdfPrinter) {
    std::string s = five_points("shown.png");
    s += "files " + at("printed.pdf") + "\ndialog \"Print options\" press 1\nmenu 40122\n";
    s += "files\ndialog \"Print options\" press 1\nmenu 40122\nquit\n";  // the printer chooser cancelled
    ASSERT_EQ(run(s), 0) << err;
    const QImage page = pdftoppm("printed.pdf", 50);
    ASSERT_FALSE(page.isNull());
    EXPECT_GT(page.width(), page.height()) << "a wide picture prints across the page";
    const BOX c = red(page), z = zone(page);
    EXPECT_GT(c.right - c.left, page.width() / 3);
    // The picture keeps its proportions, 120 : 80, on the page.
    EXPECT_NEAR(static_cast<double>(z.right - z.left) / (z.bottom - z.top), 1.5, 0.05);
    EXPECT_EQ(out.find("MESSAGE Zendrite-2006"), std::string::npos) << out;
}

TEST_F(Export, QuickViewPictureDrawnAgainIntoAFile) {
    fs::create_directories(home / "series");
    fs::copy_file(ZD_TEST_DATA "/gui/two_phase.prf", home / "series" / "two_phase.prf");
    std::string s = "menu 40030\ndir " + at("series") + "\nqv dir\n";
    s += "qv picture " + at("qv_before.png") + "\n";
    s += "export 1001 " + at("qv.pdf") + " 100 60 100\n";
    s += "qv picture " + at("qv_after.png") + "\nquit\n";
    ASSERT_EQ(run(s), 0) << err;
    EXPECT_EQ(out.find("MESSAGE Zendrite-2006"), std::string::npos) << out;
    const QImage page = pdftoppm("qv.pdf", 100);
    EXPECT_NEAR(page.width(), 394, 1);  // 100 x 60 mm at 100 dpi
    EXPECT_NEAR(page.height(), 236, 1);
    const BOX c = red(page);
    EXPECT_GT(c.right - c.left, page.width() / 3) << "the profile of the Quick View";
    const QImage before(QString::fromStdString(at("qv_before.png"))), after(QString::fromStdString(at("qv_after.png")));
    EXPECT_FALSE(before.isNull());
    EXPECT_EQ(before, after);
}

TEST_F(Export, BatchRenderWritesTheWholePageOrSaysWhyNot) {
    auto batch = [&](const std::string& args) {
        const std::string cmd = "cd '" + home.string() + "' && QT_QPA_PLATFORM=offscreen '" ZD_BATCH_BIN "' render " + args +
                                " > out.txt 2> err.txt";
        const int rc = std::system(cmd.c_str());
        err = read(home / "err.txt");
        return WIFEXITED(rc) ? WEXITSTATUS(rc) : -1;
    };
    fs::copy_file(ZD_TEST_DATA "/patterns/D1A_at_ILL.xye", home / "d1a.xye");
    ASSERT_EQ(batch("d1a.xye --out page.png"), 0) << err;
    const QImage page(QString::fromStdString(at("page.png")));
    EXPECT_EQ(page.width(), 1200);
    EXPECT_EQ(page.height(), 800);
    expect_near(zone(page), BOX{180, 120, 1020, 680}, 2, "zone of the whole page");
    ASSERT_EQ(batch("d1a.xye --out small.tif --size 80x60mm --dpi 200"), 0) << err;
    const QImage small(QString::fromStdString(at("small.tif")));
    EXPECT_EQ(small.width(), 630);
    EXPECT_EQ(small.height(), 472);
    ASSERT_EQ(batch("d1a.xye --log --out log.svg"), 0) << err;
    EXPECT_TRUE(QSvgRenderer(QString::fromStdString(at("log.svg"))).isValid());

    EXPECT_EQ(batch("missing.xye --out m.png"), 1);
    EXPECT_NE(err.find("missing.xye"), std::string::npos) << err;
    EXPECT_EQ(batch("d1a.xye --out page.xyz"), 1);
    EXPECT_NE(err.find("names no picture format"), std::string::npos) << err;
    EXPECT_EQ(batch("d1a.xye --out zero.png --size 0x0"), 1);
    EXPECT_NE(err.find("pixels a side"), std::string::npos) << err;
    EXPECT_EQ(batch("d1a.xye --out v.png --view cube"), 2);
    EXPECT_NE(err.find("unknown view cube (2d, contour, contour-log, stack, surface)"), std::string::npos) << err;
    // the many-pattern views take two profiles at least, and say so as the window does
    EXPECT_EQ(batch("d1a.xye --out v.png --view stack"), 1);
    EXPECT_NE(err.find("ERROR: At least two profiles must be shown"), std::string::npos) << err;
    for (const char* view : {"contour", "contour-log", "stack", "surface"}) {
        ASSERT_EQ(batch(std::string("d1a.xye d1a.xye --out map.png --view ") + view), 0) << view << ": " << err;
        const QImage map(QString::fromStdString(at("map.png")));
        EXPECT_EQ(map.width(), 1200) << view;
        // inside the frame, pixels of another colour than the frame's own: curves or a map
        std::map<QRgb, int> counts;
        for (int y = 130; y < 670; ++y)
            for (int x = 190; x < 1010; ++x) ++counts[map.pixel(x, y)];
        int most = 0, all = 0;
        for (const auto& [colour, n] : counts) most = std::max(most, n), all += n;
        EXPECT_GT(all - most, 2000) << view << ": nothing drawn in the frame";
    }
    ASSERT_EQ(batch("d1a.xye d1a.xye --out map.svg --view contour"), 0) << err;
    EXPECT_TRUE(QSvgRenderer(QString::fromStdString(at("map.svg"))).isValid());
    EXPECT_FALSE(fs::exists(home / "m.png") || fs::exists(home / "zero.png") || fs::exists(home / "v.png"));
}

}  // namespace
