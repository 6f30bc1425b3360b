#pragma once
// The fixture of the end-to-end tests: a fresh home folder for each test, and the real program
// run on a script written into it, with its output kept.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

struct SCRIPT_LIMITS {
    float xmin = 0, xmax = 0, ymin = 0, ymax = 0;
};

struct SCRIPTED_HOME : ::testing::Test {
    std::filesystem::path home;
    std::string out, err;  // standard output and error of the last run
    int status = -1;

    void SetUp() override {
        const ::testing::TestInfo* t = ::testing::UnitTest::GetInstance()->current_test_info();
        home = std::filesystem::temp_directory_path() /
               ("zd_" + std::string(t->test_suite_name()) + "_" + std::to_string(::getpid()) + "_" + t->name());
        std::filesystem::remove_all(home);
        std::filesystem::create_directories(home);
    }
    void TearDown() override { std::filesystem::remove_all(home); }

    std::string at(const std::string& name) const { return (home / name).string(); }
    static std::string read(const std::filesystem::path& f) {
        std::ifstream in(f);
        std::stringstream s;
        s << in.rdbuf();
        return s.str();
    }
    std::string file(const std::string& name) const { return read(home / name); }
    static int count(const std::string& text, const std::string& what) {
        int n = 0;
        for (std::size_t p = text.find(what); p != std::string::npos; p = text.find(what, p + 1)) ++n;
        return n;
    }
    // The value after "<key> " on the line of a dump that starts with key.
    static std::string value(const std::string& dump, const std::string& key) {
        const std::size_t p = ("\n" + dump).find("\n" + key + " ");
        if (p == std::string::npos) return "?";
        const std::size_t b = p + key.size() + 1;
        return dump.substr(b, dump.find('\n', b) - b);
    }
    // Four limits written on the dump line `key` of the file `name`.
    SCRIPT_LIMITS limits(const std::string& name, const std::string& key) const {
        std::istringstream in(value(file(name), key));
        SCRIPT_LIMITS l;
        in >> l.xmin >> l.xmax >> l.ymin >> l.ymax;
        return l;
    }

    // A command the program is started through (xvfb-run for a display); none by default.
    std::string launcher;
    // Runs `zendrite --script` in home with HOME=home; `env` (assignments) and `args` (quoted by
    // the caller) are added as they stand.
    int run(const std::string& script, const std::string& env = "", const std::string& args = "") {
        const std::string h = home.string();
        std::ofstream(home / "script.txt") << script;
        const std::string cmd = "cd '" + h + "' && " + launcher + " env HOME='" + h + "' " + env + " QT_QPA_PLATFORM=offscreen '" ZD_APP_BIN
                                "' --script '" + h + "/script.txt' " + args + " > '" + h + "/out.txt' 2> '" + h +
                                "/err.txt'";
        status = std::system(cmd.c_str());
        out = read(home / "out.txt");
        err = read(home / "err.txt");
        return status;
    }
};
