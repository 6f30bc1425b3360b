// End-to-end: Run Corvane and Run Virelle through stand-in programs on PATH
// (the refinement runs in the folder of its input and its profile file is
// loaded), the refusals of a missing, stale or unreadable result, a run
// stopped from its progress dialog, and the suite's windows on the last
// control file.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

struct SuiteRuns : SCRIPTED_HOME {
    // A stand-in that writes its arguments, one a line in brackets, then its
    // working folder, into `record`, and then runs `then`.
    void program(const std::string& name, const std::string& record, const std::string& then) {
        fs::create_directories(home / "bin");
        std::ofstream(home / "bin" / name) << "#!/bin/sh\nfor a in \"$@\"; do printf '[%s]\\n' \"$a\"; done > '"
                                          << at(record) << ".tmp'\npwd >> '" << at(record) << ".tmp'\nmv '"
                                          << at(record) << ".tmp' '" << at(record) << "'\n"
                                          << then << "\n";
        fs::permissions(home / "bin" / name, fs::perms::owner_all);
    }
    std::string path() const { return "PATH='" + at("bin") + "':\"$PATH\""; }
};

}  // namespace

TEST_F(SuiteRuns, RunCorvaneLoadsTheProfileItWrote) {
    const std::string prf = std::string(ZD_TEST_DATA) + "/gui/two_phase.prf";
    fs::create_directories(home / "job dir");
    std::ofstream(home / "job dir" / "a;b.pcr") << "COMM stand-in control file\n";
    std::ofstream(home / "job dir" / "a;b1.fst") << "structure\n";
    std::ofstream(home / "other.xy") << "1 5\n2 6\n3 7\n";
    // The stand-in writes the profile file beside its input, as a refinement does.
    program("corvane2k", "args.txt", "cp '" + prf + "' \"${1%.*}.prf\"");
    program("cv_atelier", "atelier.txt", "");
    program("tessara", "tessara.txt", "");
    const std::string s = "files " + at("other.xy") + "\nmenu 40014\n" +  // replaced by the run's result
                          "files \"" + at("job dir/a;b.pcr") + "\"\nmenu 40135\ndump " + at("d.txt") + "\n" +
                          "menu 40108\nmenu 40117\nmenu 40129\n";
    run(s, path());
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_EQ(file("args.txt"), "[" + at("job dir/a;b.pcr") + "]\n" + at("job dir") + "\n");
    const std::string d = file("d.txt");
    EXPECT_EQ(value(d, "prf_loaded"), "1") << d;
    EXPECT_EQ(value(d, "nperfiles"), "1") << d;
    EXPECT_NE(d.find("prf_name a;b.prf"), std::string::npos) << d;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006"), 1) << out;  // the gLattiq input is missing: only that is said
    // The suite's windows open the control file's companions that exist.
    for (int i = 0; i < 100 && !(fs::exists(home / "atelier.txt") && fs::exists(home / "tessara.txt")); ++i)
        ::usleep(50000);
    EXPECT_EQ(file("atelier.txt").substr(0, file("atelier.txt").find('\n')), "[" + at("job dir/a;b1.fst") + "]");
    EXPECT_EQ(file("tessara.txt").substr(0, file("tessara.txt").find('\n')), "[" + at("job dir/a;b.pcr") + "]");
    EXPECT_NE(out.find("The program \"gLattiq\" was not found."), std::string::npos) << out;
}

TEST_F(SuiteRuns, ResultsThatAreNotThisRunsAreRefused) {
    std::ofstream(home / "j.pcr") << "x\n";
    std::ofstream(home / "j.prf") << "left by an earlier run\n";
    fs::last_write_time(home / "j.prf", fs::file_time_type::clock::now() - std::chrono::hours(2));
    program("corvane2k", "args.txt", "exit 3");
    run("files " + at("j.pcr") + "\nmenu 40135\ndump " + at("d1.txt") + "\n", path());
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Error loading PRF file ... / " + at("j.prf") +
                       " was not written by this run (exit status 3)"),
              std::string::npos)
        << out;
    EXPECT_EQ(value(file("d1.txt"), "nperfiles"), "0");

    // A result that is no profile file: the reader's text.
    program("corvane2k", "args.txt", "echo 'not a profile' > \"${1%.*}.prf\"");
    run("files " + at("j.pcr") + "\nmenu 40135\ndump " + at("d2.txt") + "\n", path());
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Error loading PRF file ... / "), std::string::npos) << out;
    EXPECT_EQ(value(file("d2.txt"), "prf_loaded"), "0");

    // No output at all; a cancelled selector launches nothing.
    fs::remove(home / "j.prf");
    fs::remove(home / "args.txt");
    program("corvane2k", "args.txt", "");
    run("files " + at("j.pcr") + "\nmenu 40135\nfiles\nmenu 40135\n", path());
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_NE(out.find("Error loading PRF file ... / The run wrote no file " + at("j.prf")), std::string::npos)
        << out;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006"), 1) << out;

    // Virelle, not installed: named with the places looked in; nothing else happens.
    std::ofstream(home / "s.qvl") << "x\n";
    run("files " + at("s.qvl") + "\nmenu 40207\n", "PATH=/nonexistent_zd");
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_NE(out.find("The program \"virelle\" was not found. / Looked in: "), std::string::npos) << out;
    EXPECT_EQ(count(out, "MESSAGE Zendrite-2006"), 1) << out;
}

TEST_F(SuiteRuns, ARunCanBeStoppedFromItsDialog) {
    std::ofstream(home / "long.pcr") << "x\n";
    program("corvane2k", "args.txt", "sleep 2; touch '" + at("finished") + "'");
    run("progress \"Running a program of the suite\" 0 2\nfiles " + at("long.pcr") + "\nmenu 40135\ndump " +
            at("d.txt") + "\n",
        path());
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | The run of corvane2k was stopped"), std::string::npos) << out;
    ::sleep(3);  // what the program started was stopped with it
    EXPECT_FALSE(fs::exists(home / "finished"));
    EXPECT_EQ(value(file("d.txt"), "nperfiles"), "0");
}

// The sequential form: its fields answered, the script written beside the control file, and the
// refinement program run in its folder with the argument words.
TEST_F(SuiteRuns, SequentialRunComposesItsArgumentsAndScript) {
    fs::create_directories(home / "seq");
    std::ofstream(home / "seq" / "ni.pcr") << "COMM stand-in control file\n";
    program("corvane2k", "args.txt", "");
    const std::string d = "dialog \"Sequential mode of Corvane:\" ";
    const std::string s = "files " + at("seq/ni.pcr") + "\n" + d + "press 11\n" + d + "set 12 ni_.dat\n" + d +
                          "set 13 7\n" + d + "set 14 3\n" + d + "check 16 1\n" + d + "check 20 1\n" + d +
                          "set 21 t.txt\n" + d + "check 23 1\n" + d + "press 1\nmenu 40245\nstatus " + at("st.txt") +
                          "\n" + d + "press 2\nmenu 40245\n";
    run(s, path());
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_EQ(file("args.txt"), "[seq]\n[" + at("seq/ni.pcr") + "]\n[ni_.dat]\n[7]\n[3]\n[Y]\n[Y]\n[N]\n[N]\n[N]\n[+OUT]\n"
                                "[-temp]\n[t.txt]\n" + at("seq") + "\n");
    EXPECT_EQ(file("seq/ni.pcr_FPseq.sh"), "corvane2k seq " + at("seq/ni.pcr") + " ni_.dat 7 3 Y Y N N N +OUT -temp t.txt\n");
    EXPECT_NE(fs::status(home / "seq" / "ni.pcr_FPseq.sh").permissions() & fs::perms::owner_exec, fs::perms::none);
    // Cancelled the second time: nothing more is written.
    EXPECT_EQ(count(file("seq/ni.pcr_FPseq.sh"), "corvane2k"), 1);
}

