// End-to-end: the save, buffer, raw and numor commands of the File menu, run through the real program.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "../instrument/powder_builders.h"

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

const std::string kData = ZD_TEST_DATA;
const std::string kFreeFormat = "dialog \"Format of the data file\" radio 101\n";

struct Commands : SCRIPTED_HOME {
    static std::vector<std::string> lines(const std::string& text) {
        std::istringstream in(text);
        std::vector<std::string> v;
        for (std::string l; std::getline(in, l);) v.push_back(l);
        return v;
    }
    // The numor data root and temporary directory are home too.
    int run(const std::string& script) {
        const std::string h = home.string();
        return SCRIPTED_HOME::run(script, "TEMP='" + h + "' NRFDATA='" + h + "'");
    }
    std::string open_file(const std::string& name, const std::string& answers = "") const {
        return "files " + at(name) + "\n" + answers + "menu 40014\n";
    }
    std::string dump(const std::string& name) const { return "dump " + at(name) + "\n"; }
    // A value of the dump line `key` in the section of slot `slot` (0: the store's head).
    std::string value(const std::string& dump_text, int slot, const std::string& key) const {
        std::size_t from = slot ? dump_text.find("slot " + std::to_string(slot) + "\n") : 0;
        if (from == std::string::npos) return "<no slot>";
        const std::size_t end = dump_text.find("\nslot ", from + 1);
        for (const std::string& l : lines(dump_text.substr(from, end == std::string::npos ? end : end - from))) {
            const std::size_t k = l.find_first_not_of(' ');
            if (k != std::string::npos && l.compare(k, key.size() + 1, key + " ") == 0) return l.substr(k + key.size() + 1);
        }
        return "<no " + key + ">";
    }
};

// Six points with unequal steps, read through the extension ".xy".
void write_uneven_xy(const fs::path& f) {
    std::ofstream(f) << "10.0 5\n10.1 7\n10.3 20\n10.4 40\n10.6 12\n11.0 6\n";
}

// Thirteen points with unequal steps on the line y = 100 (x - 10) + 5, which a natural spline keeps.
void write_uneven_line(const fs::path& f) {
    std::ofstream o(f);
    for (double x : {10.0, 10.1, 10.25, 10.3, 10.4, 10.5, 10.65, 10.7, 10.8, 10.9, 11.0, 11.05, 11.2})
        o << x << ' ' << 100.0 * (x - 10.0) + 5.0 << "\n";
}

}  // namespace

TEST_F(Commands, SavedDatAndXysFilesReadBack) {
    write_uneven_line(home / "uneven.xy");
    const std::string s = open_file("uneven.xy") +
                          "files " + at("resampled") + "\nmenu 40208\n" +
                          "files " + at("part.xys") + "\n"
                          "dialog \"Export Data as *.xys\" set 1674 10.25\n"
                          "dialog \"Export Data as *.xys\" set 1681 10.5\n"
                          "dialog \"Export Data as *.xys\" set 1753 2\n"
                          "dialog \"Export Data as *.xys\" press 1\nmenu 40209\n" +
                          "menu 40019\n" + open_file("resampled.dat", kFreeFormat) + open_file("part.xys") +
                          dump("d.txt");
    ASSERT_EQ(run(s), 0) << out;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;

    // The name without a dot got ".dat"; the unequal steps became the mean step over the same 13 points,
    // ten values a line with three decimals for a largest value of 125.
    const std::vector<std::string> dat = lines(read(home / "resampled.dat"));
    ASSERT_EQ(dat.size(), 3u);
    std::istringstream head(dat[0]);
    double x1 = 0, h = 0, xn = 0;
    head >> x1 >> h >> xn;
    EXPECT_DOUBLE_EQ(x1, 10.0);
    EXPECT_NEAR(h, 0.1, 1e-6);
    EXPECT_NEAR(xn, 11.2, 1e-5);
    EXPECT_EQ(dat[1].size(), 80u);
    EXPECT_EQ(dat[1].substr(0, 16), "   5.000  15.000");
    EXPECT_EQ(dat[2], " 105.000 115.000 125.000");

    // The X limits keep the points that lie on them; Y is doubled and the file says so.
    const std::string text = read(home / "part.xys");
    const std::vector<std::string> xys = lines(text);
    ASSERT_EQ(xys.size(), 11u) << text;
    EXPECT_EQ(xys[0], "XYDATA");
    EXPECT_EQ(xys[2], "! File saved from Zendrite-2006");
    EXPECT_EQ(xys[3], "! File name: uneven.xy");
    EXPECT_EQ(count(text, "! The original data and sigma have been multiplied by: "), 1);

    const std::string d = read(home / "d.txt");
    EXPECT_EQ(value(d, 0, "nperfiles"), "2") << out << d;
    EXPECT_EQ(value(d, 1, "prf_name"), "resampled.dat");
    EXPECT_EQ(value(d, 1, "npts"), "13");
    EXPECT_EQ(value(d, 1, "xmin"), "10");
    EXPECT_EQ(value(d, 1, "xmax"), "11.2");
    EXPECT_EQ(value(d, 1, "ymax"), "125");
    EXPECT_EQ(value(d, 2, "npts"), "4");
    EXPECT_EQ(value(d, 2, "xmin"), "10.25");
    EXPECT_EQ(value(d, 2, "xmax"), "10.5");
    EXPECT_EQ(value(d, 2, "ymin"), "60");
    EXPECT_EQ(value(d, 2, "ymax"), "110");
}

TEST_F(Commands, ExistingFileIsKeptUnlessTheUserAgrees) {
    write_uneven_xy(home / "uneven.xy");
    std::ofstream(home / "keep.dat") << "keep me\n";
    std::ofstream(home / "keep.buf") << "keep me\n";
    const std::string s = open_file("uneven.xy") + "files " + at("keep.dat") + "\nanswer 2\nmenu 40208\n" +
                          "files " + at("keep.buf") + "\nanswer 2\nmenu 40009\n";
    ASSERT_EQ(run(s), 0);
    EXPECT_NE(out.find("MESSAGE Overwrite DAT file? | The file exist, / Do you want overwrite it?"), std::string::npos)
        << out;
    EXPECT_NE(out.find("MESSAGE Over Write BUF file? | The file exist, / Do you want overwrite it?"), std::string::npos);
    EXPECT_EQ(read(home / "keep.dat"), "keep me\n");
    EXPECT_EQ(read(home / "keep.buf"), "keep me\n");
    // "No" is a cancel: nothing else is shown beyond the preference warning and the two questions.
    EXPECT_EQ(count(out, "MESSAGE"), 3) << out;

    ASSERT_EQ(run(open_file("uneven.xy") + "files " + at("keep.dat") + "\nanswer 1\nmenu 40208\n"), 0);
    EXPECT_NE(read(home / "keep.dat").find("10.000000"), std::string::npos);
}

TEST_F(Commands, BufferSavedAndReopenedAfterReset) {
    write_uneven_xy(home / "a.xy");
    std::ofstream(home / "b.xy") << "20 1\n21 2\n22 3\n23 2\n";
    const std::string xy_format = "dialog \"Format of the data file\" radio 109\n";
    const std::string s = open_file("a.xy") + open_file("b.xy") + "files " + at("set") + "\nmenu 40009\n" +
                          "menu 40019\n" + dump("empty.txt") + "files " + at("set.buf") + "\n" + xy_format +
                          "menu 40015\n" + dump("d.txt");
    ASSERT_EQ(run(s), 0);
    EXPECT_EQ(lines(read(home / "set.buf")), (std::vector<std::string>{at("a.xy"), at("b.xy")})) << out;
    EXPECT_EQ(value(read(home / "empty.txt"), 0, "nperfiles"), "0");
    const std::string d = read(home / "d.txt");
    EXPECT_EQ(value(d, 0, "nperfiles"), "2") << out << d;
    EXPECT_EQ(value(d, 1, "prf_name"), "a.xy");
    EXPECT_EQ(value(d, 1, "npts"), "6");
    EXPECT_EQ(value(d, 2, "prf_name"), "b.xy");
    EXPECT_EQ(value(d, 2, "npts"), "4");
    EXPECT_EQ(value(d, 2, "xmax"), "23");
}

TEST_F(Commands, CancelledSelectorsShowNothingAndChangeNothing) {
    write_uneven_xy(home / "uneven.xy");
    const std::string s = open_file("uneven.xy") + "dir\nmenu 40208\ndir\nmenu 40209\n" +
                          "files " + at("x.xys") + "\ndialog \"Export Data as *.xys\" press 2\nmenu 40209\n" +
                          "dir\nmenu 40009\ndir\nmenu 40157\ndir\nmenu 40212\ndir\nmenu 40210\n" + dump("d.txt");
    ASSERT_EQ(run(s), 0);
    EXPECT_EQ(count(out, "MESSAGE"), 1) << out;  // the missing-preferences warning only
    EXPECT_FALSE(fs::exists(home / "x.xys"));
    EXPECT_EQ(value(read(home / "d.txt"), 0, "nperfiles"), "1");
}

TEST_F(Commands, SavingWithoutAProfileIsRefused) {
    ASSERT_EQ(run("files " + at("none.dat") + "\nmenu 40208\n"), 0);
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Number of Points to Save was Wrong!"), std::string::npos) << out;
    EXPECT_FALSE(fs::exists(home / "none.dat"));
}

TEST_F(Commands, NumorsFromTheDataTreeAndFromElsewhere) {
    using ztest::Frame;
    const auto counts = [](int k, int j) { return 100 + 10 * k + j; };
    fs::create_directories(home / "data/kv9");
    std::ofstream(home / "data/kv9/123456")
        << ztest::KV9_Numor(123456, 2, {{1000, 60.0f, 10.0f}, {1000, 60.0f, 10.05f}}, 8, counts);
    fs::create_directories(home / "loose");
    std::ofstream(home / "loose/000777")
        << ztest::KV7_Numor(777, {{500, 30.0f, 20.0f}, {500, 30.0f, 20.1f}}, counts);
    fs::copy_file(kData + "/instrument/numor_121459_2frames.txt", home / "loose/121459");

    const std::string ask = "dialog \"Instrument of the Numors\" ";
    const std::string s = "files " + at("data/kv9/123456") + "\nmenu 40212\n" +  // instrument from the path
                          "files " + at("loose/000777") + "\n" + ask + "set 101 1\n" + ask + "press 1\nmenu 40212\n" +
                          "files " + at("loose/121459") + "\n" + ask + "set 101 3\n" + ask + "press 1\nmenu 40212\n" +
                          "files " + at("loose/000777") + "\n" + ask + "press 1\nmenu 40212\n" +  // blank answer
                          dump("d.txt") + "quit\n";
    ASSERT_EQ(run(s), 0);
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | This numor does not correspond to KV9 Format"), std::string::npos)
        << out;
    EXPECT_EQ(count(out, "MESSAGE"), 2) << out;  // the blank instrument is a cancel
    const std::string d = read(home / "d.txt");
    EXPECT_EQ(value(d, 0, "nperfiles"), "2") << out << d;
    EXPECT_EQ(value(d, 1, "prf_name"), "123456");
    EXPECT_EQ(value(d, 1, "prf_type"), "DATA");
    EXPECT_EQ(value(d, 1, "prf_format"), "KV9");
    EXPECT_EQ(value(d, 1, "scat_var"), "2theta");
    EXPECT_EQ(value(d, 1, "lambda1"), "1.594");
    EXPECT_EQ(value(d, 2, "prf_name"), "000777");
    EXPECT_EQ(value(d, 2, "prf_format"), "KV7");
    EXPECT_EQ(value(d, 2, "lambda1"), "2.52");
    EXPECT_NE(value(d, 2, "npts"), "0");
    // The numors entered the recent list, newest first.
    const std::vector<std::string> recent = lines(read(home / ".zdp/zendrite.mlf"));
    ASSERT_EQ(recent.size(), 5u);
    EXPECT_EQ(recent[0], at("loose/000777"));
    EXPECT_EQ(recent[1], at("data/kv9/123456"));
}

TEST_F(Commands, HeaderOfANumorInTheEditor) {
    fs::create_directories(home / "data/kv9");
    std::ofstream(home / "data/kv9/123456")
        << ztest::KV9_Numor(123456, 1, {{1000, 60.0f, 10.0f}}, 4, [](int k, int) { return k; });
    fs::copy_file(kData + "/instrument/numor_121459_2frames.txt", home / "121459");
    const std::string s = "files " + at("data/kv9/123456") + "\nmenu 40210\n" + "files " + at("121459") +
                          "\ndialog \"Instrument of the Numors\" set 101 3\nmenu 40210\n" + dump("d.txt");
    ASSERT_EQ(run(s), 0);
    const std::vector<std::string> head = lines(read(home / "123456_header.txt"));
    ASSERT_GE(head.size(), 4u) << out;
    EXPECT_EQ(head[0], "NUMOR: 123456");
    EXPECT_EQ(head[1], "INTRUMENT: KV9");
    EXPECT_EQ(head[3], "TITLE: Garnet, high resolution");
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | This numor does not correspond to KV9 Format"), std::string::npos)
        << out;
    EXPECT_FALSE(fs::exists(home / "121459_header.txt"));
    EXPECT_EQ(value(read(home / "d.txt"), 0, "nperfiles"), "0") << "viewing a head loads nothing";
}

TEST_F(Commands, RawDetectorFileGivesAProfilePerDetector) {
    std::ofstream(home / "run.kg3o") << "Silicon reference\n"
                                        "lambda : 1.2250\n"
                                        "\n"
                                        "\n"
                                        "detectors shift : 0.5\n"
                                        "alpha1 divergency : 10\n"
                                        "monitor value : 50000\n"
                                        "omega : 15\n"
                                        "sample temperature : 295\n"
                                        "sample owner : lab\n"
                                        "\n"
                                        "angle counts\n"
                                        "Detector No. 1\n"
                                        "10.0 100\n10.1 120\n10.2 110\n"
                                        "Detector No. 2\n"
                                        "30.0 50\n30.1 55\n";
    std::ofstream(home / "short.kg2") << "Truncated\n";
    // The same head with a first detector block that holds no rows.
    std::string hollow = read(home / "run.kg3o");
    hollow = hollow.substr(0, hollow.find("Detector No. 1")) + "Detector No. 1\nDetector No. 2\n40.0 7\n40.2 9\n";
    std::ofstream(home / "hollow.kg3o") << hollow;
    const std::string s = "files " + at("run.kg3o") + "\nmenu 40157\n" + "files " + at("hollow.kg3o") +
                          "\nmenu 40157\n" + "files " + at("short.kg2") +
                          "\nmenu 40157\n" + "files " + at("run.kg3o") + " " + at("short.kg2") + "\nmenu 40157\n" +
                          dump("d.txt");
    ASSERT_EQ(run(s), 0);
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | ERROR: Reading line #2: wavelength"), std::string::npos) << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Trying to select more than one file!"), std::string::npos);
    const std::string d = read(home / "d.txt");
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | ERROR Opening file: " + at("hollow.kg3o") +
                       " Detector No. 1 has no data"),
              std::string::npos);
    EXPECT_EQ(value(d, 0, "nperfiles"), "3") << out << d;
    EXPECT_EQ(value(d, 3, "prf_name"), "hollow.kg3o");
    EXPECT_EQ(value(d, 3, "xmax"), "40.2");
    EXPECT_EQ(value(d, 1, "prf_name"), "run.kg3o");
    EXPECT_EQ(value(d, 1, "npts"), "3");
    EXPECT_EQ(value(d, 1, "lambda1"), "1.225");
    EXPECT_EQ(value(d, 2, "npts"), "2");
    EXPECT_EQ(value(d, 2, "xmin"), "30");
}
