// End-to-end: the internal text editor and the items that open a file in an
// editor, a browser or a PDF viewer, run through the real program.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

const std::string kData = ZD_TEST_DATA;
const std::string kBox = "MESSAGE Zendrite text editor | ";

struct Editor : SCRIPTED_HOME {
    std::string copy(const std::string& data, const std::string& name) const {
        fs::copy_file(kData + "/" + data, home / name);
        return at(name);
    }
    static std::string bytes(const fs::path& f) {
        std::ifstream in(f, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }
    // A stand-in for a helper program: appends its arguments, one "[...]" a line, and "--".
    void fake_program(const std::string& name) const {
        fs::create_directories(home / "bin");
        // One write per call: the programs run at the same time, and lines written
        // one by one by two of them could interleave in the log.
        std::ofstream(home / "bin" / name) << "#!/bin/sh\nrec=$(for a in \"$@\"; do printf '[%s]\\n' \"$a\"; done; echo --)\n"
                                           << "printf '%s\\n' \"$rec\" >> '" << at(name + ".log") << "'\n";
        fs::permissions(home / "bin" / name, fs::perms::owner_all);
    }
    // The calls a stand-in recorded, sorted (the programs are not waited for), once `n` have come.
    std::vector<std::string> calls(const std::string& name, int n) const {
        std::string log;
        for (int i = 0; i < 100; ++i) {
            log = bytes(home / (name + ".log"));
            if (count(log, "--\n") >= n) break;
            ::usleep(50000);
        }
        std::vector<std::string> v;
        for (std::size_t p = 0, e; (e = log.find("--\n", p)) != std::string::npos; p = e + 3) v.push_back(log.substr(p, e - p));
        std::sort(v.begin(), v.end());
        return v;
    }
};

}  // namespace

// A Latin-1 file with CR LF line ends of two scans from an instrument: found in, edited, saved; the bytes on
// disk are the old ones and the new line, in the file's own encoding and line ends. A UTF-8 file with
// a byte-order mark saved as another name unchanged is the same bytes.
TEST_F(Editor, EditFindAndSaveRealFiles) {
    const std::string ras = copy("patterns/inas_layer_radial_002_004.ras", "inas.ras");
    const std::string xrdml = copy("patterns/simpack_xrd_AlGaAs.xrdml", "algaas.xrdml");
    const std::string before = bytes(ras);
    const std::string s = "files " + ras + "\nmenu 40107\neditor state " + at("s1") +
                          "\neditor find *file_md5\neditor state " + at("s2") +
                          // two scans, two matches: the third search goes round the end, and back
                          "\neditor next\neditor state " + at("s3") + "\neditor next\neditor state " + at("s3b") +
                          "\neditor previous\neditor state " + at("s4") +
                          "\neditor find no-such-word\neditor state " + at("s5") +
                          "\neditor end\neditor type \"\\n*ZD_NOTE 20\xC2\xB0" "C\"\neditor state " + at("s6") +
                          "\neditor save\neditor state " + at("s7") + "\nfiles " + xrdml + "\nmenu 40107\nfiles " +
                          at("copy.xrdml") + "\neditor saveas\neditor state " + at("s8") + "\n" +
                          // a no-break space stays one, not a blank
                          "files " + at("nbsp.txt") + "\nmenu 40107\neditor type Z\neditor save\n";
    std::ofstream(home / "nbsp.txt", std::ios::binary) << "T=20\xA0\xB0" "C\r\n";
    ASSERT_EQ(run(s), 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_EQ(out.find("SCRIPT"), std::string::npos) << out;
    EXPECT_EQ(file("s1"), "title Zendrite text editor - inas.ras\nfile " + ras +
                              "\nchanged 0\ncursor 1 1\nselection \nfind \n");
    EXPECT_NE(file("s2").find("cursor 23 10\nselection *FILE_MD5\nfind \n"), std::string::npos) << file("s2");
    EXPECT_NE(file("s3").find("cursor 1874 10\nselection *FILE_MD5\nfind \n"), std::string::npos) << file("s3");
    EXPECT_NE(file("s3b").find("cursor 23 10\nselection *FILE_MD5\nfind Went round from the end to the start\n"),
              std::string::npos)
        << file("s3b");
    EXPECT_NE(file("s4").find("cursor 1874 10\nselection *FILE_MD5\nfind Went round from the start to the end\n"),
              std::string::npos)
        << file("s4");
    // nothing found: the selection stays where it was
    EXPECT_NE(file("s5").find("selection *FILE_MD5\nfind \"no-such-word\" not found\n"), std::string::npos) << file("s5");
    EXPECT_NE(file("s6").find("title Zendrite text editor - inas.ras *\n"), std::string::npos) << file("s6");
    EXPECT_NE(file("s6").find("changed 1\n"), std::string::npos);
    EXPECT_NE(file("s7").find("title Zendrite text editor - inas.ras\n"), std::string::npos) << file("s7");
    EXPECT_NE(file("s7").find("changed 0\n"), std::string::npos);
    ASSERT_EQ(before.substr(before.size() - 2), "\r\n");
    EXPECT_EQ(bytes(ras), before + "\r\n*ZD_NOTE 20\xB0" "C");
    EXPECT_EQ(bytes(at("nbsp.txt")), "ZT=20\xA0\xB0" "C\r\n");
    EXPECT_EQ(bytes(at("copy.xrdml")), bytes(xrdml));
    EXPECT_EQ(bytes(at("copy.xrdml")).substr(0, 3), "\xEF\xBB\xBF");
    EXPECT_NE(file("s8").find("title Zendrite text editor - copy.xrdml\nfile " + at("copy.xrdml") + "\nchanged 0\n"),
              std::string::npos)
        << file("s8");
}

// Closing, opening another file and leaving the program over unsaved changes ask Save, Discard or
// Cancel: Cancel keeps all, Save writes before going on, Discard leaves the file as it was.
TEST_F(Editor, UnsavedChangesAreAskedFor) {
    const std::string cwn = copy("patterns/PBSO4.CWN", "PBSO4.CWN");
    const std::string xy = copy("patterns/xy_text.txt", "xy_text.txt");
    const std::string cwn_before = bytes(cwn), xy_before = bytes(xy);
    const std::string s = "files " + cwn + "\nmenu 40107\neditor type X\n" +
                          "answer 3\neditor close\neditor state " + at("s1") + "\n" +
                          "files " + xy + "\nanswer 3\nmenu 40107\neditor state " + at("s2") + "\n" +
                          "answer 3\nquit\neditor state " + at("s3") + "\n" +
                          "files " + xy + "\nanswer 1\nmenu 40107\neditor state " + at("s4") + "\n" +
                          "editor type Y\nanswer 2\neditor close\neditor state " + at("s5") + "\n" +
                          // a file saved without change is not asked about
                          "files " + xy + "\nmenu 40107\neditor close\neditor state " + at("s6") + "\n";
    ASSERT_EQ(run(s), 0) << out << err;
    EXPECT_EQ(out.find("SCRIPT"), std::string::npos) << out;
    for (const char* f : {"s1", "s2", "s3"})
        EXPECT_EQ(file(f).substr(0, file(f).find('\n')), "title Zendrite text editor - PBSO4.CWN *") << f;
    EXPECT_EQ(count(out, kBox + "The text of PBSO4.CWN has changed. / Save it before it is left?"), 4) << out;
    EXPECT_EQ(count(out, kBox + "The text of xy_text.txt has changed. / Save it before it is left?"), 1) << out;
    EXPECT_NE(file("s4").find("title Zendrite text editor - xy_text.txt\n"), std::string::npos) << file("s4");
    EXPECT_EQ(file("s5"), "closed\n");
    EXPECT_EQ(file("s6"), "closed\n");
    EXPECT_EQ(bytes(cwn), "X" + cwn_before);
    EXPECT_EQ(bytes(xy), xy_before);
}

// Files that cannot be shown are named and nothing opens; a cancelled selector does nothing; the last
// control file is opened, its ".pcr" found when the name was kept without it.
TEST_F(Editor, RefusalsAndTheLastControlFile) {
    const std::string raw = copy("patterns/BT86.raw", "BT86.raw");
    std::ofstream(home / "job.pcr") << "COMM job\n";
    const std::string s = "files " + raw + "\nmenu 40107\neditor state " + at("s1") + "\nmenu 40104\nmenu 40107\n" +
                          "menu 40225\neditor state " + at("s2") + "\n";
    ASSERT_EQ(run(s), 0) << out << err;
    EXPECT_NE(out.find(kBox + "The file " + raw + " is not a text file: it is not opened"), std::string::npos) << out;
    EXPECT_EQ(file("s1"), "closed\n");
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | No control file of a refinement is known yet: it is the one named in "
                       "corvane.dir of " + at(".zdp")),
              std::string::npos)
        << out;
    EXPECT_NE(out.find("UNANSWERED Zendrite text editor\n"), std::string::npos) << out;
    EXPECT_NE(out.find("UNANSWERED Select PIK/NEW file to open\n"), std::string::npos) << out;
    EXPECT_EQ(file("s2"), "closed\n");

    // the control file kept by the suite, without its extension
    fs::create_directories(home / ".zdp");
    std::ofstream(home / ".zdp" / "corvane.dir") << "first line\n" << at("job") << "\n";
    ASSERT_EQ(run("menu 40104\neditor state " + at("s3") + "\n"), 0) << out << err;
    EXPECT_NE(file("s3").find("title Zendrite text editor - job.pcr\nfile " + at("job.pcr") + "\n"), std::string::npos)
        << file("s3") << out;
    std::ofstream(home / ".zdp" / "corvane.dir") << "first line\n" << at("gone.pcr") << "\n";
    ASSERT_EQ(run("menu 40104\n"), 0) << out << err;
    EXPECT_NE(out.find(kBox + "The file " + at("gone.pcr") + " does not exist"), std::string::npos) << out;
}

// A save into a folder the user may not write leaves the old file and says why; Save As elsewhere
// keeps the text. Run as an ordinary user, since the superuser writes anywhere.
TEST_F(Editor, FailedSaveLeavesTheOldFile) {
    fs::create_directories(home / "ro");
    std::ofstream(home / "ro" / "f.txt") << "old\n";
    ::chmod((home / "ro" / "f.txt").c_str(), 0666);
    ::chmod((home / "ro").c_str(), 0555);
    ::chmod(home.c_str(), 0777);
    const std::string as_user = ::geteuid() == 0 ? "setpriv --reuid=65534 --regid=65534 --clear-groups env" : "";
    const std::string s = "files " + at("ro/f.txt") + "\nmenu 40107\neditor end\neditor type new\neditor save\n" +
                          "editor state " + at("s1") + "\nfiles " + at("copy.txt") + "\neditor saveas\neditor state " +
                          at("s2") + "\n";
    ASSERT_EQ(run(s, as_user), 0) << out << err;
    EXPECT_NE(out.find(kBox + "Unable to save " + at("ro/f.txt") +
                       ": Permission denied / The file on disk is as it was; the text stays in the editor."),
              std::string::npos)
        << out << err;
    EXPECT_EQ(bytes(home / "ro" / "f.txt"), "old\n");
    EXPECT_EQ(std::distance(fs::directory_iterator(home / "ro"), fs::directory_iterator()), 1);
    EXPECT_NE(file("s1").find("title Zendrite text editor - f.txt *\n"), std::string::npos) << file("s1");
    EXPECT_EQ(bytes(home / "copy.txt"), "old\nnew");
    EXPECT_NE(file("s2").find("title Zendrite text editor - copy.txt\n"), std::string::npos) << file("s2");
    ::chmod((home / "ro").c_str(), 0755);
}

// With the internal editor switched off, the text editor program gets the file as one argument
// whatever its name holds; the guides and the web site go to the browser and the PDF viewer of the
// preferences; a missing file or program is named and nothing runs.
TEST_F(Editor, HelperProgramsGetOneArgument) {
    fake_program("zd-edit");
    fake_program("zd-browse");
    const std::string hostile = at("x; touch $(echo ran) `touch ran2` 'q' .pik");
    std::ofstream(hostile) << "1\n";
    const std::string relative = "-run; $(touch ran3) 'q'.pcr";
    std::ofstream(home / relative) << "2\n";
    fs::create_directories(home / ".zdp");
    std::ofstream(home / ".zdp" / "corvane.dir") << "first line\n" << relative << "\n";
    fs::create_directories(home / "suite" / "Docs");
    std::ofstream(home / "suite" / "Docs" / "cvnews.txt") << "news\n";
    std::ofstream(home / "suite" / "Docs" / "corvane_manual.pdf") << "%PDF-1.4\n";
    const std::string s = std::string("dialog 115 press 1150\ndialog 118 set 1233 zd-edit\n") +
                          "dialog 118 set 1234 zd-browse\ndialog 118 set 1387 zd-pdf\ndialog 118 check 1236 0\n" +
                          "dialog 118 press 1\ndialog 115 press 2\nmenu 40033\n" +
                          "files \"" + hostile + "\"\nmenu 40107\nmenu 40104\nmenu 40121\nmenu 40156\nmenu 40130\n" +
                          "menu 40085\nmenu 40086\nfiles\nmenu 40107\nfiles \"" + hostile + "\"\nmenu 40225\n" +
                          "files " + at("none.txt") + "\nmenu 40107\n";
    run(s, "CORVANE='" + at("suite") + "' PATH='" + at("bin") + "':\"$PATH\"");
    ASSERT_EQ(status, 0) << out << err;
    std::vector<std::string> edits = {"[./" + relative + "]\n", "[" + at("suite/Docs/cvnews.txt") + "]\n",
                                      "[" + hostile + "]\n", "[" + hostile + "]\n"};
    std::sort(edits.begin(), edits.end());
    EXPECT_EQ(calls("zd-edit", 4), edits);
    EXPECT_EQ(calls("zd-browse", 1), std::vector<std::string>{"[https://zendrite.example.org]\n"});
    for (const char* f : {"ran", "ran2", "ran3"}) EXPECT_FALSE(fs::exists(home / f)) << f;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | The file " + at("suite/Docs/cvnews.html") + " was not found"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | The program \"zd-pdf\" was not found. / Looked in: "), std::string::npos)
        << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | The file " + at("suite/Docs/cv_atelier_guide.pdf") + " was not found"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | The file " + at("none.txt") + " does not exist"), std::string::npos) << out;
    EXPECT_EQ(count(out, "MESSAGE"), 5) << out;  // the start's and the four above
}

// Without the suite's folder, its files cannot be named; the external editor that is not installed
// is named with the places looked in.
TEST_F(Editor, NoSuiteFolderAndNoEditorProgram) {
    std::ofstream(home / "a.txt") << "a\n";
    const std::string s = std::string("dialog 115 press 1150\ndialog 118 set 1233 zd-none-editor\n") +
                          "dialog 118 check 1236 0\ndialog 118 press 1\ndialog 115 press 2\nmenu 40033\n" +
                          "menu 40121\nfiles " + at("a.txt") + "\nmenu 40107\n";
    ASSERT_EQ(run(s, "CORVANE="), 0) << out << err;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | The file Docs/cvnews.txt of the suite cannot be found: the folder of "
                       "the suite is not known"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | The program \"zd-none-editor\" was not found. / Looked in: "),
              std::string::npos)
        << out;
}
