// End-to-end: a folder of 300 patterns opened from the File menu with its progress
// dialog, the same folder cancelled half way, files and a folder dropped on the window,
// the folder in the recent list and reopened from it, and a folder on the command line.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <vector>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kProgress = "\"Loading the patterns of a folder\"";

struct Folder : SCRIPTED_HOME {
    // run_1.xye ... run_N.xye, each with its number in the counts of the first point.
    void write_series(const std::string& dir, int n) const {
        fs::create_directories(home / dir);
        for (int k = 1; k <= n; ++k) {
            std::ofstream out(home / dir / ("run_" + std::to_string(k) + ".xye"));
            for (int i = 0; i < 40; ++i) {
                const double y = (i == 0 ? k : 100.0 + 80.0 * std::exp(-std::pow((i - 20 - 0.02 * k) / 2.0, 2)));
                out << 20 + 0.1 * i << " " << y << " " << std::sqrt(y) << "\n";
            }
        }
    }
    std::string dump(const std::string& name) const { return "dump " + at(name) + "\n"; }
    // The prf_name of every slot of a dump, in slot order.
    std::vector<std::string> names(const std::string& dump_file) const {
        std::vector<std::string> v;
        std::istringstream in(file(dump_file));
        for (std::string line; std::getline(in, line);)
            if (line.rfind("  prf_name ", 0) == 0) v.push_back(line.substr(11));
        return v;
    }
    static std::vector<std::string> series(int from, int to) {
        std::vector<std::string> v;
        for (int k = from; k <= to; ++k) v.push_back("run_" + std::to_string(k) + ".xye");
        return v;
    }
};

}  // namespace

TEST_F(Folder, ThreeHundredPatternsThenCancelledHalfWay) {
    write_series("series", 300);
    std::string s = "dir " + at("series") + "\nmenu 40230\n" + dump("all.txt") + "picture 0 " + at("all.png") + "\n";
    s += "menu 40019\ndir " + at("series") + "\nprogress " + kProgress + " 150 2\nmenu 40230\n" + dump("cut.txt");
    // The script must still be read after a cancel: the next command works.
    s += "menu 40019\n" + dump("reset.txt");
    // Cancel of the folder selector: nothing happens, no message.
    s += "dir\nmenu 40230\n" + dump("none.txt");
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(value(file("all.txt"), "nperfiles"), "300");
    EXPECT_EQ(names("all.txt"), series(1, 300));  // natural order: run_2 before run_10
    const std::string all = file("all.txt");
    EXPECT_EQ(value(all.substr(all.find("slot 10\n")), "  ymin"), "10");  // run_10's counts in slot 10
    EXPECT_TRUE(fs::file_size(home / "all.png") > 0);

    const std::vector<std::string> cut = names("cut.txt");
    EXPECT_GE(cut.size(), 1u);
    EXPECT_LE(cut.size(), 299u);
    EXPECT_EQ(cut, series(1, static_cast<int>(cut.size())));  // what was loaded stays, in order
    EXPECT_EQ(value(file("cut.txt"), "nperfiles"), std::to_string(cut.size()));
    EXPECT_EQ(value(file("reset.txt"), "nperfiles"), "0");
    EXPECT_EQ(value(file("none.txt"), "nperfiles"), "0");
    // A clean folder and a cancel tell nothing.
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006"), 0) << out;
    EXPECT_EQ(count(out, "SCRIPT line"), 0) << out;
}

TEST_F(Folder, DropFilesAndAFolderThenReopenFromRecentList) {
    write_series("series", 12);
    write_series("loose", 2);
    std::ofstream(home / "series" / "run_5b.xye") << "";               // empty: listed, the rest loads
    std::ofstream(home / "series" / "readme.txt") << "the log book\n";  // no format: listed as skipped
    std::string s = "drop " + at("loose/run_2.xye") + " " + at("loose/run_1.xye") + " " + at("series") + "\n" +
                    dump("drop.txt");
    s += "menu 40019\nmenu 40038\n" + dump("recent.txt") + "quit\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    std::vector<std::string> want = {"run_2.xye", "run_1.xye"};
    for (const auto& n : series(1, 12)) want.push_back(n);
    EXPECT_EQ(names("drop.txt"), want);
    // One message for the folder's failures, with file and reason, at each of its two loads.
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006 | 2 files of the folder were not loaded"), 2) << out;
    EXPECT_NE(out.find("run_5b.xye: empty file"), std::string::npos) << out;
    EXPECT_NE(out.find("readme.txt: format not known"), std::string::npos) << out;
    // The folder heads the recent list, the dropped files follow; choosing it reloads the folder.
    EXPECT_EQ(names("recent.txt"), series(1, 12));
    const std::string mlf = file(".zdp/zendrite.mlf");
    EXPECT_EQ(mlf.substr(0, mlf.find('\n')), at("series") + "/") << mlf;
    EXPECT_NE(mlf.find(at("loose/run_1.xye")), std::string::npos) << mlf;
}

TEST_F(Folder, CommandLineFolderAndOldRecentList) {
    write_series("series", 5);
    // A recent list written before folders could be listed still reads; a folder entry reopens.
    fs::create_directories(home / ".zdp");
    std::ofstream(home / "one.dat") << "10 1 20 one\n1 2 3 4 5 6 7 8 9 10 11\n";
    std::ofstream(home / ".zdp" / "zendrite.mlf") << at("series") + "/\n" << at("one.dat") << "\n-\n-\n-\n";
    run(dump("cmd.txt") + "menu 40019\ndialog \"Format of the data file\" radio 101\nmenu 40067\n" + dump("r2.txt") + "menu 40019\nmenu 40067\n" + dump("r1.txt"), "",
        "'" + at("series") + "'");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(names("cmd.txt"), series(1, 5));
    EXPECT_EQ(names("r2.txt"), (std::vector<std::string>{"one.dat"}));
    EXPECT_EQ(names("r1.txt"), series(1, 5));  // the file went to the top, the folder is second
}
