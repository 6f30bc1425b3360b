// End-to-end: the real program driven by scripts, each run with a home directory of its own.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

const std::string kData = ZD_TEST_DATA "/gui/";

struct RUN {
    std::string out;  // standard output
    int status = -1;
};

struct Scripted : SCRIPTED_HOME {
    fs::path zdp() const { return home / ".zdp"; }
    // `args` are added as they stand (quoted by the caller).
    RUN run(const std::string& script, const std::string& args = "") {
        RUN r;
        r.status = SCRIPTED_HOME::run(script, "", args);
        r.out = out;
        return r;
    }
    std::string dump(const std::string& name = "dump.txt") const { return read(home / name); }
    static int png_width(const fs::path& f) {
        std::ifstream in(f, std::ios::binary);
        unsigned char h[24] = {};
        in.read(reinterpret_cast<char*>(h), 24);
        return (h[16] << 24) | (h[17] << 16) | (h[18] << 8) | h[19];
    }
};

const char* kFree = "dialog \"Format of the data file\" radio 101\ndialog \"Format of the data file\" press 1\n";

}  // namespace

TEST_F(Scripted, NoPreferenceFileWarnsAndExitWritesTheSettings) {
    const RUN r = run("dump " + (home / "dump.txt").string() + "\nquit\n");
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("MESSAGE Loading preferences file | WARNING: No preferences file. / Default preferences will "
                         "be used / Go to <Options> menu, click on <Preferences> / and then on <Save global "
                         "preferences>"),
              std::string::npos)
        << r.out;
    EXPECT_NE(dump().find("graph_mode none"), std::string::npos);
    EXPECT_NE(dump().find("nperfiles 0"), std::string::npos);
    EXPECT_TRUE(fs::is_directory(zdp()));
    EXPECT_EQ(read(zdp() / "zendrite.dir"), fs::canonical(home).string() + "\n");
    EXPECT_EQ(read(zdp() / "zendrite.mlf"), "-\n-\n-\n-\n-\n");
}

TEST_F(Scripted, PreferencesSavedAreReadBackWithoutMessage) {
    // Save global preferences from the Preferences command, then start again.
    run("dialog 115 press 1154\ndialog 115 press 2\nmenu 40033\n");
    const std::string first = read(zdp() / "zendrite-2006.set");
    ASSERT_FALSE(first.empty());
    EXPECT_EQ(count(first, "\n"), 59);
    const RUN r = run("dialog 115 press 1154\ndialog 115 press 2\nmenu 40033\n");
    EXPECT_EQ(r.out.find("MESSAGE Loading preferences file"), std::string::npos) << r.out;
    EXPECT_EQ(read(zdp() / "zendrite-2006.set"), first);
}

TEST_F(Scripted, PreferenceFileCutAfterLine30GivesDefaults) {
    run("dialog 115 press 1154\ndialog 115 press 2\nmenu 40033\n");
    std::istringstream full(read(zdp() / "zendrite-2006.set"));
    std::string cut, line;
    for (int i = 1; i <= 30 && std::getline(full, line); ++i)
        cut += (i == 4 ? std::string(" 1000 600 0 16777215 1") : line) + "\n";
    std::ofstream(zdp() / "zendrite-2006.set") << cut;
    const RUN r = run("picture 0 " + (home / "p.png").string() + "\n");
    EXPECT_NE(r.out.find("MESSAGE Loading preferences file | ERROR: loading preferences file. / " +
                         (zdp() / "zendrite-2006.set").string() + " / Default preferences will be used"),
              std::string::npos)
        << r.out;
    EXPECT_EQ(png_width(home / "p.png"), 800);  // the width of line 4 was not kept
}

TEST_F(Scripted, CommandLineFiles) {
    fs::copy_file(kData + "psi dmc.dat", home / "psi dmc.dat");
    fs::copy_file(kData + "PSI_DMC.dat", home / "nodot");
    fs::copy_file(kData + "PSI_DMC.dat", home / "pattern.zzz");
    const std::string d = "dump " + (home / "dump.txt").string() + "\n";
    // A quoted name with blanks loads the file.
    RUN r = run(std::string(kFree) + d, "'\"" + (home / "psi dmc.dat").string() + "\"'");
    EXPECT_NE(dump().find("nperfiles 1"), std::string::npos) << r.out;
    EXPECT_NE(dump().find("prf_name psi dmc.dat"), std::string::npos);
    EXPECT_NE(dump().find("npts 3200"), std::string::npos);
    EXPECT_NE(dump().find("graph_mode single"), std::string::npos);
    // A name without a dot.
    r = run(d, "nodot");
    EXPECT_NE(r.out.find("MESSAGE Zendrite-2006 | ERROR: Unkown Data File format"), std::string::npos) << r.out;
    EXPECT_NE(dump().find("nperfiles 0"), std::string::npos);
    // An unknown extension: nothing shown beyond the preference warning, nothing loaded.
    r = run(d, "pattern.zzz");
    EXPECT_EQ(count(r.out, "MESSAGE"), 1) << r.out;
    EXPECT_EQ(r.out.find("UNANSWERED"), std::string::npos);
    EXPECT_NE(dump().find("nperfiles 0"), std::string::npos);
    // A missing file is reported and the program goes on.
    r = run(std::string(kFree) + d, "missing.dat");
    EXPECT_NE(r.out.find("MESSAGE Zendrite-2006 | ERROR in file: missing.dat"), std::string::npos) << r.out;
    EXPECT_NE(dump().find("nperfiles 0"), std::string::npos);
}

TEST_F(Scripted, WindowSizeNeedsThreeArguments) {
    fs::copy_file(kData + "PSI_DMC.dat", home / "a.zzz");
    const std::string pic = "picture 0 " + (home / "p.png").string() + "\n";
    run(pic, "a.zzz 1000");
    EXPECT_EQ(png_width(home / "p.png"), 800);
    run(pic, "a.zzz 1000 700");
    EXPECT_EQ(png_width(home / "p.png"), 1000);
    run(pic, "a.zzz wide 700");  // a size that is not a number keeps the default
    EXPECT_EQ(png_width(home / "p.png"), 800);
}

TEST_F(Scripted, RecentFilesOrderAndReopen) {
    for (const char* n : {"a.dat", "b.dat", "c.dat"}) fs::copy_file(kData + "PSI_DMC.dat", home / n);
    std::string s;
    for (const char* n : {"a.dat", "b.dat", "a.dat", "c.dat"})
        s += "files " + (home / n).string() + "\n" + kFree + "menu 40014\n";
    s += "dump " + (home / "d1.txt").string() + "\n";
    s += std::string(kFree) + "menu 40068\n";  // entry 3: b.dat
    s += "dump " + (home / "d2.txt").string() + "\nquit\n";
    const RUN r = run(s);
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(dump("d1.txt").find("nperfiles 4"), std::string::npos) << r.out;
    EXPECT_NE(dump("d2.txt").find("nperfiles 5"), std::string::npos) << r.out;
    EXPECT_NE(dump("d2.txt").find("slot 5\n  prf_name b.dat"), std::string::npos);
    const std::string a = (home / "a.dat").string(), b = (home / "b.dat").string(), c = (home / "c.dat").string();
    EXPECT_EQ(read(zdp() / "zendrite.mlf"), b + "\n" + c + "\n" + a + "\n-\n-\n");
    // The next start reads the list back.
    const RUN again = run("menu 40038\ndump " + (home / "d3.txt").string() + "\n", "");
    EXPECT_NE(dump("d3.txt").find("nperfiles 0"), std::string::npos) << "no format answer: cancelled";
    EXPECT_NE(again.out.find("UNANSWERED Format of the data file"), std::string::npos);
}

TEST_F(Scripted, CommandsOfLaterWorkAndBadLines) {
    const RUN r = run("menu 40008\nmenu 49999\nbogus line\nmouse press 1 10 10\n");
    EXPECT_NE(r.out.find("MESSAGE Zendrite-2006 | This command is not available yet"), std::string::npos) << r.out;
    EXPECT_EQ(count(r.out, "not available yet"), 1);  // 49999 has no row: nothing
    EXPECT_NE(r.out.find("SCRIPT line 3: not understood: bogus line"), std::string::npos);
    EXPECT_EQ(r.status, 0);
}

TEST_F(Scripted, ResetEmptiesTheStoreAndMouseInNoneDoesNothing) {
    fs::copy_file(kData + "PSI_DMC.dat", home / "a.dat");
    const std::string s = "files " + (home / "a.dat").string() + "\n" + kFree + "menu 40014\n" + "dump " +
                          (home / "d1.txt").string() + "\nmenu 40019\nmouse press 1 page 600 400\n" +
                          "mouse release 1 page 700 400\ndump " + (home / "d2.txt").string() + "\n";
    const RUN r = run(s);
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(dump("d1.txt").find("nperfiles 1"), std::string::npos) << r.out;
    const std::string d2 = dump("d2.txt");
    EXPECT_NE(d2.find("nperfiles 0"), std::string::npos);
    EXPECT_NE(d2.find("graph_mode none"), std::string::npos);
    EXPECT_NE(d2.find("xspace ----"), std::string::npos);
    EXPECT_EQ(d2.find("slot 1"), std::string::npos);
}

TEST_F(Scripted, WindowCommandWithoutAPlotIsAFault) {
    // The toolbar's move-left has no window to move in the "none" mode: a fault ends the process.
    const std::string err = (home / "err.txt").string();
    const RUN r = run("menu 40106\n");
    EXPECT_NE(r.status, 0);
    EXPECT_NE(read(err).find("/Fault: /zendrite_win_root/ihand_winroot/035 Op. not permitted"), std::string::npos);
    EXPECT_FALSE(fs::exists(zdp() / "zendrite.mlf")) << "a fault saves nothing";
}

TEST_F(Scripted, EnvironmentDialogIsSavedWithThePreferences) {
    fs::create_directories(home / "suite");
    const std::string s = "dialog 115 press 1150\n"
                          "dialog 118 set 1233 emacs -nw\n"
                          "dialog 118 check 1236 0\n"
                          "dialog 118 press 1237\n"
                          "dir " + (home / "suite").string() + "\n"
                          "dialog 118 press 1\n"
                          "dialog 115 press 1154\n"
                          "dialog 115 press 2\n"
                          "menu 40033\n";
    const RUN r = run(s);
    EXPECT_EQ(r.out.find("UNANSWERED"), std::string::npos) << r.out;
    std::istringstream set(read(zdp() / "zendrite-2006.set"));
    std::vector<std::string> lines;
    for (std::string l; std::getline(set, l);) lines.push_back(l);
    ASSERT_EQ(lines.size(), 59u);
    EXPECT_EQ(lines[5], " 0 0");
    EXPECT_EQ(lines[6], (home / "suite").string());
    EXPECT_EQ(lines[7], "emacs -nw");
    // A cancelled dialog changes nothing.
    run("dialog 115 press 1150\ndialog 118 set 1233 vi\ndialog 118 press 2\ndialog 115 press 1154\n"
        "dialog 115 press 2\nmenu 40033\n");
    EXPECT_NE(read(zdp() / "zendrite-2006.set").find("\nemacs -nw\n"), std::string::npos);
}

TEST_F(Scripted, ProfileStylesGridWithAllRow) {
    const std::string s = "dialog 115 press 1151\n"
                          "dialog 116 grid 1600 13 2 3\n"   // row "All", column Pitch
                          "dialog 116 grid 1600 4 5 65280\n"  // style 4 colour
                          "dialog 116 press 1\n"
                          "dialog 115 press 1154\ndialog 115 press 2\nmenu 40033\n";
    run(s);
    std::istringstream set(read(zdp() / "zendrite-2006.set"));
    std::vector<std::string> lines;
    for (std::string l; std::getline(set, l);) lines.push_back(l);
    ASSERT_EQ(lines.size(), 59u);
    for (int st = 1; st <= 12; ++st) {
        std::istringstream is(lines[static_cast<std::size_t>(15 + st)]);
        int lc, lt, lw, mc;
        is >> lc >> lt >> lw >> mc;
        EXPECT_EQ(lw, 3) << st;
        EXPECT_EQ(mc, lc) << "Match keeps the marker colour with the line";
        if (st == 4) {
            EXPECT_EQ(lc, 65280);
        }
    }
}

TEST_F(Scripted, ProfileFileOnTheCommandLineAndBufferFiles) {
    fs::copy_file(kData + "two_phase.prf", home / "two_phase.prf");
    RUN r = run("dump " + (home / "d.txt").string() + "\n", "two_phase.prf");
    const std::string d = dump("d.txt");
    EXPECT_NE(d.find("prf_loaded 1"), std::string::npos) << r.out << d;
    EXPECT_NE(d.find("ProfilePRFactive 1"), std::string::npos);
    EXPECT_NE(d.find("prf_type PRF"), std::string::npos);
    EXPECT_NE(d.find("nperfiles 1"), std::string::npos);
    EXPECT_EQ(read(zdp() / "zendrite.mlf"), "two_phase.prf\n-\n-\n-\n-\n");  // the name as given
    // A buffer file lists data files; opening it empties the store first.
    fs::copy_file(kData + "PSI_DMC.dat", home / "a.dat");
    fs::copy_file(kData + "PSI_DMC.dat", home / "b.dat");
    std::ofstream(home / "set.buf") << (home / "a.dat").string() << "\n" << (home / "b.dat").string() << "\n";
    r = run("files " + (home / "set.buf").string() + "\n" + kFree + "menu 40015\ndump " + (home / "d2.txt").string() +
            "\nfiles " + (home / "none.buf").string() + "\nmenu 40015\n");
    const std::string d2 = dump("d2.txt");
    EXPECT_NE(d2.find("nperfiles 2"), std::string::npos) << r.out << d2;
    EXPECT_NE(d2.find("slot 2\n  prf_name b.dat"), std::string::npos);
    EXPECT_NE(r.out.find("MESSAGE File doesn't exist | File doesn't exist..."), std::string::npos) << r.out;
}

// --render writes a picture only of what it could read; otherwise it ends with status 1 and says why.
TEST_F(Scripted, RenderRefusesWhatItCannotDraw) {
    auto render = [&](const std::string& file) {
        const std::string h = home.string();
        const std::string cmd = "cd '" + h + "' && HOME='" + h + "' QT_QPA_PLATFORM=offscreen '" ZD_APP_BIN
                                "' --render '" + h + "/r.png' '" + file + "' > '" + h + "/out.txt' 2> '" + h +
                                "/err.txt'";
        status = std::system(cmd.c_str());
        err = read(home / "err.txt");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    };
    // A ".dat" file needs the format dialog, which a picture run cannot answer.
    fs::copy_file(kData + "PSI_DMC.dat", home / "run.dat");
    EXPECT_EQ(render(at("run.dat")), 1);
    EXPECT_NE(err.find("its extension does not tell its format"), std::string::npos) << err;
    EXPECT_FALSE(fs::exists(home / "r.png"));
    // Binary bytes under a pattern extension.
    std::ofstream(home / "noise.xy", std::ios::binary) << std::string("\x01\x02\xff\xfe\x00\x10", 6);
    EXPECT_EQ(render(at("noise.xy")), 1);
    EXPECT_NE(err.find("it could not be read"), std::string::npos) << err;
    // A readable file still gives its picture and status 0.
    fs::copy_file(kData + "PSI_DMC.dat", home / "run.sim");
    EXPECT_EQ(render(at("run.sim")), 0) << err;
    EXPECT_GT(png_width(home / "r.png"), 0);
}
