// End-to-end: the 2D window driven by a script — a numor of a bank of tubes
// shown, stepped, a box summed, its pattern put in the store; a bad image
// refused with a message and the store left as it was.
#include <QImage>

#include "tests/gui/scripted_home.h"
#include "tests/instrument/frame_builders.h"

struct E2E_FRAMES : SCRIPTED_HOME {};

TEST_F(E2E_FRAMES, NumorShownSteppedAndItsPatternStored) {
    ztest::Tube_Run r;
    r.steps = 6;
    // One bright tube: tube 2 counts 50 a pixel, the others 1.
    r.counts = [](int t, int, int) { return t == 2 ? 50 : 1; };
    std::ofstream(home / "121459") << ztest::Tube_Numor(r);
    std::string s = "files " + at("121459") + "\nmenu 40169\n";
    s += "frames next\nframes key right\nframes mouse move 0 0.2 0.6\n";
    s += "frames mouse press 2 0.1 0.4\nframes mouse release 2 0.5 0.9\n";
    s += "frames picture " + at("frames.png") + "\nframes pattern\ndump " + at("store.txt") + "\n";
    s += "files " + at("bad.edf") + "\nframes open\ndump " + at("store2.txt") + "\nquit\n";
    std::ofstream(home / "bad.edf") << "{\nDim_1 = 4 ;\nDim_2 = 4 ;\nDataType = UnsignedShort ;\nByteOrder = LowByteFirst ;\n}\n12";
    ASSERT_EQ(run(s), 0) << err;

    QImage img(QString::fromStdString(at("frames.png")));
    ASSERT_FALSE(img.isNull());
    // Tube 2 of 5 is the second fifth of the image zone (0.07 to 0.60 of the width): bright
    // against the dark tubes beside it, at mid height (0.30 to 0.95 from the bottom).
    auto grey = [&](double fx, double fy) {
        QColor c = img.pixelColor(static_cast<int>(fx * img.width()), static_cast<int>((1 - fy) * img.height()));
        return c.red() + c.green() + c.blue();
    };
    double tube2 = 0.07 + 1.5 / 5 * 0.53, tube4 = 0.07 + 3.5 / 5 * 0.53;
    EXPECT_GT(grey(tube2, 0.5), 600) << "the bright tube";
    EXPECT_LT(grey(tube4, 0.5), 100) << "a dark tube";

    std::string store = file("store.txt");
    EXPECT_EQ(value(store, "nperfiles"), "1") << store;
    EXPECT_NE(store.find("npts 26"), std::string::npos) << store;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006"), 1) << out;  // the bad image, and nothing else
    EXPECT_NE(out.find("cut short"), std::string::npos) << out;
    EXPECT_EQ(value(file("store2.txt"), "nperfiles"), "1");
}
