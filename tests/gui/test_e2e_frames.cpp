// End-to-end: the 2D window driven by a script — a numor of a bank of tubes
// shown, stepped, a box summed, its pattern put in the store; a bad image
// refused with a message and the store left as it was.
#include <hdf5.h>

#include <QImage>
#include <cstdint>
#include <vector>

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
    s += "frames dump " + at("f0.txt") + "\nframes next\nframes key right\nframes dump " + at("f1.txt") + "\n";
    s += "dialog 213 set 2131 5\ndialog 213 press 1\nframes goto\nframes dump " + at("f2.txt") + "\n";
    s += "frames key left\nframes mouse press 1 0.2 0.4\nframes mouse release 1 0.4 0.8\nframes dump " + at("f3.txt") + "\n";
    s += "frames unzoom\nframes key home\nframes dump " + at("f4.txt") + "\nframes mouse move 0 0.2 0.6\n";
    s += "frames mouse press 2 0.1 0.4\nframes mouse release 2 0.5 0.9\n";
    s += "frames picture " + at("frames.png") + "\nframes pattern\ndump " + at("store.txt") + "\n";
    s += "files " + at("bad.edf") + "\nframes open\ndump " + at("store2.txt") + "\n";
    s += "dialog 215 set 2151 5\ndialog 215 set 2152 3\ndialog 215 press 1\nframes limits\n";  // refused
    s += "dialog 215 set 2151 5\ndialog 215 set 2152 95\ndialog 215 press 1\nframes limits\nframes dump " + at("f6.txt") + "\n";
    s += "frames close\nframes dump " + at("f5.txt") + "\nquit\n";
    std::ofstream(home / "bad.edf") << "{\nDim_1 = 4 ;\nDim_2 = 4 ;\nDataType = UnsignedShort ;\nByteOrder = LowByteFirst ;\n}\n12";
    ASSERT_EQ(run(s), 0) << err;

    EXPECT_EQ(value(file("f0.txt"), "current"), "1");
    EXPECT_EQ(value(file("f0.txt"), "main_window"), "hidden");  // the 2D mode has the screen
    EXPECT_EQ(value(file("f5.txt"), "main_window"), "shown");   // and gives it back on closing
    EXPECT_EQ(value(file("f5.txt"), "window"), "0");
    EXPECT_EQ(value(file("f0.txt"), "percentiles"), "1.00 99.50");
    EXPECT_EQ(value(file("f6.txt"), "percentiles"), "5.00 95.00");
    EXPECT_EQ(value(file("f0.txt"), "size"), "5 5");
    EXPECT_EQ(value(file("f1.txt"), "current"), "3");
    EXPECT_EQ(value(file("f2.txt"), "current"), "5");
    // The image spans 0.07 to 0.60 of the width and 0.30 to 0.95 of the height: the box
    // from (0.2, 0.4) to (0.4, 0.8) starts in column 1 + int(5 x 0.13 / 0.53) = 2, row 1 +
    // int(5 x 0.1 / 0.65) = 1, and ends in column 1 + int(5 x 0.33 / 0.53) = 4, row 4.
    EXPECT_EQ(value(file("f3.txt"), "current"), "4");
    EXPECT_EQ(value(file("f3.txt"), "zoom"), "2 4 1 4") << file("f3.txt");
    EXPECT_EQ(value(file("f4.txt"), "zoom"), "1 5 1 5");
    EXPECT_EQ(value(file("f4.txt"), "current"), "1");

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
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006"), 2) << out;  // the bad image and the refused limits
    EXPECT_EQ(count(out, "The percentiles must lie between 0 and 100, the lowest below the highest"), 1) << out;
    EXPECT_NE(out.find("cut short"), std::string::npos) << out;
    EXPECT_EQ(value(file("store2.txt"), "nperfiles"), "1");
}

TEST_F(E2E_FRAMES, ImageWithItsGeometryIntegratedWithADrawnMask) {
    // The image and, beside it, its geometry under the name the window looks for.
    std::filesystem::copy_file(ZD_TEST_DATA "/frames/rings.edf", home / "rings.edf");
    std::filesystem::copy_file(ZD_TEST_DATA "/frames/rings_geometry.json", home / "rings_geometry.json");
    std::ofstream(home / "plain.edf") << "{\nDim_1 = 2 ;\nDim_2 = 1 ;\nDataType = UnsignedByte ;\n}\n" << std::string(2, '\5');
    std::string s = "files " + at("rings.edf") + "\nmenu 40169\nframes pattern\ndump " + at("s1.txt") + "\n";
    // The left third of the image masked with the middle button: the rings there are left out.
    s += "frames mouse press 3 0.08 0.31\nframes mouse release 3 0.25 0.94\nframes pattern\ndump " + at("s2.txt") + "\n";
    s += "frames picture " + at("masked.png") + "\n";
    s += "files " + at("plain.edf") + "\nframes open\nframes pattern\ndump " + at("s3.txt") + "\nquit\n";
    ASSERT_EQ(run(s), 0) << err;
    std::string s1 = file("s1.txt"), s2 = file("s2.txt");
    EXPECT_EQ(value(s1, "nperfiles"), "1") << s1;
    EXPECT_EQ(value(s2, "nperfiles"), "2") << s2;
    // Masked pixels are left out, not counted as zeros: the same 2theta range (the
    // masked part reaches no angle alone) and, on rings that depend on 2theta alone, the same level.
    auto all = [&](const std::string& key) {
        std::vector<double> v;
        for (std::size_t p = s2.find("  " + key + " "); p != std::string::npos; p = s2.find("  " + key + " ", p + 1))
            v.push_back(std::stod(s2.substr(p + key.size() + 3)));
        return v;
    };
    std::vector<double> npts = all("npts"), ysum = all("y_sum");
    ASSERT_EQ(npts.size(), 2u) << s2;
    EXPECT_EQ(npts[0], npts[1]);
    ASSERT_EQ(ysum.size(), 2u);
    EXPECT_NEAR(ysum[1], ysum[0], 0.005 * ysum[0]);
    QImage img(QString::fromStdString(at("masked.png")));
    ASSERT_FALSE(img.isNull());
    QColor c = img.pixelColor(static_cast<int>(0.15 * img.width()), static_cast<int>(0.4 * img.height()));
    EXPECT_EQ(c.red(), 90) << "the masked box is drawn grey";
    EXPECT_EQ(c.green(), 90);
    // An image without a geometry is not integrated, and says why.
    EXPECT_NE(out.find("needs its geometry"), std::string::npos) << out;
    EXPECT_EQ(value(file("s3.txt"), "nperfiles"), "2");
}

TEST_F(E2E_FRAMES, ExtractionProgramRunAndItsPatternsLoaded) {
    // A stand-in for the extraction program: it reads its input and writes one pattern a numor.
    std::filesystem::create_directories(home / "bin");
    std::ofstream(home / "bin" / "pellan") << "#!/bin/sh\n"
                                              "[ \"$1\" = -fil ] || exit 3\n"
                                              "grep -q '^INSTRUMENT d2b$' \"$2\" || exit 4\n"
                                              "for n in $(sed -n '/^NUMORS/,/^END/p' \"$2\" | grep -v '^[A-Z]'); do\n"
                                              "  printf 'XYDATA\\nTITLE: numor %s\\n1 10 3\\n2 20 4\\n3 15 4\\n' $n > run_$n.xys\n"
                                              "done\n";
    std::filesystem::permissions(home / "bin" / "pellan", std::filesystem::perms::owner_all);
    std::string s = "dialog 211 set 2111 d2b\ndialog 211 set 2114 121459-121460\ndialog 211 set 2115 run\n"
                    "dialog 211 press 1\nmenu 40211\ndump " + at("s1.txt") + "\nquit\n";
    ASSERT_EQ(run(s, "PATH='" + at("bin") + ":/usr/bin:/bin'"), 0) << err;
    EXPECT_EQ(value(file("s1.txt"), "nperfiles"), "2") << file("s1.txt") << out;
    EXPECT_NE(file("run.inp").find("NUMORS 2\n121459 121460\nEND"), std::string::npos) << file("run.inp");

    // Without the program: said so, no input written, the store as it was.
    std::filesystem::remove(home / "run.inp");
    ASSERT_EQ(run(s, "PATH='/usr/bin:/bin'"), 0) << err;
    EXPECT_EQ(value(file("s1.txt"), "nperfiles"), "0");
    EXPECT_NE(out.find("pellan"), std::string::npos) << out;
    EXPECT_FALSE(std::filesystem::exists(home / "run.inp"));
}

// A geometry chosen from the window for an image that has none beside it (a bad one is
// refused and changes nothing), a mask from a file, and frames from an HDF5 file at the
// data set asked for.
TEST_F(E2E_FRAMES, GeometryChosenFromTheWindowAndHdf5Frames) {
    std::filesystem::copy_file(ZD_TEST_DATA "/frames/rings.edf", home / "alone.edf");
    std::filesystem::copy_file(ZD_TEST_DATA "/frames/rings_geometry.json", home / "setup.json");
    std::ofstream(home / "bad.json") << "{ \"distance_mm\": -3 }";
    {
        std::vector<std::uint16_t> v(3 * 4 * 5);
        for (std::size_t i = 0; i < v.size(); ++i) v[i] = static_cast<std::uint16_t>(i * 11);
        hid_t file = H5Fcreate(at("run.h5").c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT);
        hid_t group = H5Gcreate2(file, "/entry", H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
        hsize_t dims[3] = {3, 4, 5};
        hid_t space = H5Screate_simple(3, dims, nullptr);
        hid_t set = H5Dcreate2(file, "/entry/data", H5T_NATIVE_UINT16, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
        H5Dwrite(set, H5T_NATIVE_UINT16, H5S_ALL, H5S_ALL, H5P_DEFAULT, v.data());
        H5Dclose(set), H5Sclose(space), H5Gclose(group), H5Fclose(file);
    }
    std::string s = "files " + at("alone.edf") + "\nmenu 40169\nframes pattern\ndump " + at("s1.txt") + "\n";
    s += "files " + at("bad.json") + "\nframes geometry\nframes pattern\ndump " + at("s2.txt") + "\n";
    s += "files " + at("setup.json") + "\nframes geometry\nframes pattern\ndump " + at("s3.txt") + "\n";
    // a mask from a file: one of the wrong size is refused, the left half of the image is taken
    std::ofstream(home / "small.edf") << "{\nDim_1 = 2 ;\nDim_2 = 1 ;\nDataType = UnsignedByte ;\n}\n" << std::string(2, '\1');
    {
        std::string bits(200 * 180, '\0');
        for (int j = 0; j < 180; ++j)
            for (int i = 0; i < 100; ++i) bits[static_cast<std::size_t>(j) * 200 + static_cast<std::size_t>(i)] = '\1';
        std::ofstream(home / "half.edf") << "{\nDim_1 = 200 ;\nDim_2 = 180 ;\nDataType = UnsignedByte ;\n}\n" << bits;
    }
    s += "files " + at("small.edf") + "\nframes mask\n";
    s += "files " + at("half.edf") + "\nframes mask\nframes pattern\ndump " + at("s4.txt") + "\nframes picture " + at("half.png") + "\n";
    s += "files " + at("run.h5") + "\ndialog 214 set 2141 /entry/nothing\ndialog 214 press 1\nframes open\n";
    s += "frames dump " + at("f1.txt") + "\n";
    s += "files " + at("run.h5") + "\ndialog 214 set 2141 /entry/data\ndialog 214 press 1\nframes open\n";
    s += "frames next\nframes dump " + at("f2.txt") + "\nquit\n";
    ASSERT_EQ(run(s), 0) << err;
    EXPECT_EQ(value(file("s1.txt"), "nperfiles"), "0");
    EXPECT_NE(out.find("needs its geometry"), std::string::npos) << out;
    EXPECT_NE(out.find("The geometry " + at("bad.json") + " is not used"), std::string::npos) << out;
    EXPECT_EQ(value(file("s2.txt"), "nperfiles"), "0");  // the refused geometry gave none
    EXPECT_EQ(value(file("s3.txt"), "nperfiles"), "1");
    EXPECT_NE(file("s3.txt").find("scat_var 2theta"), std::string::npos) << file("s3.txt");
    EXPECT_NE(out.find("The mask " + at("small.edf") + " is not used: it is not the size of the image"), std::string::npos) << out;
    const std::string s4 = file("s4.txt");
    EXPECT_EQ(value(s4, "nperfiles"), "2") << s4;
    const std::size_t first = s4.find("y_sum"), second = s4.find("y_sum", first + 1);
    ASSERT_NE(second, std::string::npos);
    EXPECT_NE(s4.substr(first, s4.find('\n', first) - first), s4.substr(second, s4.find('\n', second) - second));
    QImage half(QString::fromStdString(at("half.png")));
    ASSERT_FALSE(half.isNull());
    const QColor left = half.pixelColor(static_cast<int>(0.15 * half.width()), static_cast<int>(0.5 * half.height()));
    EXPECT_EQ(left.red(), 90) << "the masked half is drawn grey";
    // a data set that is not there is refused and the image stays; the right one gives 3 frames of 5 x 4
    EXPECT_EQ(value(file("f1.txt"), "size"), "200 180") << file("f1.txt");
    EXPECT_NE(out.find("/entry/nothing"), std::string::npos) << out;
    EXPECT_EQ(value(file("f2.txt"), "frames"), "3") << file("f2.txt");
    EXPECT_EQ(value(file("f2.txt"), "size"), "5 4");
    EXPECT_EQ(value(file("f2.txt"), "current"), "2");
}
