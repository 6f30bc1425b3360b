// The store side of opening a profile file, and its reload when a
// refinement rewrites the file.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

#include "app/store/open_prf.h"
#include "app/store/zendrite_param_global.h"
#include "prf_test_files.h"

using namespace zendrite;
namespace fs = std::filesystem;

namespace {

class OpenPrf : public ::testing::Test {
protected:
    void SetUp() override {
        Reset_Store();
        dir_ = fs::temp_directory_path() / ("zendrite-prf-" + std::to_string(::getpid()));
        fs::create_directories(dir_);
    }
    void TearDown() override {
        Reset_Store();
        Prf_Reload_Wait() = [] {};
        std::error_code ec;
        fs::remove_all(dir_, ec);
    }
    std::string put(const std::string& name, const std::string& text) {
        const fs::path p = dir_ / name;
        std::ofstream(p, std::ios::binary) << text;
        return p.string();
    }
    // Moves the file's modification time by `seconds`, as a later rewrite would.
    static void age(const std::string& path, int seconds) {
        fs::last_write_time(path, fs::last_write_time(path) + std::chrono::seconds(seconds));
    }
    fs::path dir_;
};

std::string data(const std::string& name) { return ztest::Slurp(ztest::Prf_Data(name)); }

}  // namespace

TEST_F(OpenPrf, EntersTheFileAndReplacesItInPlace) {
    ZENDRITE_STORE& g = zendrite_param_global();
    g.nperfiles = 1;  // a pattern already loaded
    g.pattern[1].title = "data";
    const std::string a = put("a.prf", data("two_phase_46.prf"));
    PRF_OPEN_RESULT r = Open_Prf_File(a);
    ASSERT_TRUE(r.ok) << r.message;
    EXPECT_EQ(r.slot, 2);
    EXPECT_FALSE(r.replaced);
    EXPECT_EQ(g.nperfiles, 2);
    EXPECT_TRUE(g.prf_loaded);
    EXPECT_EQ(g.ProfilePRFactive, 2);
    EXPECT_EQ(g.info[2].prf_type, "PRF");
    EXPECT_EQ(g.info[2].nphases, 2);
    EXPECT_EQ(g.recent[1], a);
    EXPECT_EQ(r.prf_path, a);
    EXPECT_EQ(r.prf_stamp, Prf_File_Stamp(a).stamp);
    EXPECT_GE(r.prf_stamp, 0);

    // An integrated-intensity file can't join a store in 2theta: the loaded file stays.
    const std::string m = put("m.prf", data("sin_list.prf"));
    r = Open_Prf_File(m);
    EXPECT_FALSE(r.ok);
    EXPECT_EQ(r.message, "Present Space: 2theta, file type Integrated Intensity,\rconversion of xspace is not permitted");
    EXPECT_EQ(g.info[2].prf_type, "PRF");
    EXPECT_EQ(g.recent[1], a);

    const std::string b = put("b.prf", data("two_phase_46.prf"));
    r = Open_Prf_File(b);
    ASSERT_TRUE(r.ok) << r.message;
    EXPECT_TRUE(r.replaced);
    EXPECT_EQ(r.slot, 2);
    EXPECT_EQ(g.nperfiles, 2);
    EXPECT_EQ(g.info[2].prf_type, "PRF");
    EXPECT_EQ(g.pattern[2].npts, 200);
    EXPECT_EQ(g.pattern[1].title, "data");
    EXPECT_EQ(g.recent[1], b);
    EXPECT_EQ(g.recent[2], a);
}

TEST_F(OpenPrf, FailureLeavesTheStoreAsItWas) {
    ZENDRITE_STORE& g = zendrite_param_global();
    const std::string a = put("a.prf", data("two_phase_46.prf"));
    ASSERT_TRUE(Open_Prf_File(a).ok);
    PRF_OPEN_RESULT r = Open_Prf_File(put("bad.prf", data("heading47.prf")));
    EXPECT_FALSE(r.ok);
    EXPECT_NE(r.message.find("Error! Prf is not"), std::string::npos);
    EXPECT_EQ(g.nperfiles, 1);
    EXPECT_EQ(g.pattern[1].npts, 200);
    EXPECT_EQ(g.recent[1], a);  // a file that failed does not enter the recent list

    r = Open_Prf_File(dir_.string() + "/x.prf" + std::string(1, '\0') + "y.prf");
    EXPECT_EQ(r.message, "Trying to select more than one file!");
    r = Open_Prf_File(dir_.string() + "/missing.prf");
    EXPECT_EQ(r.message, "ERROR 00: File not found");
    EXPECT_EQ(g.nperfiles, 1);
}

TEST_F(OpenPrf, FullStoreRefusesANewButReplacesTheLoadedFile) {
    ZENDRITE_STORE& g = zendrite_param_global();
    g.nperfiles = kMaxProfiles;
    PRF_OPEN_RESULT r = Open_Prf_File(put("a.prf", data("two_phase_46.prf")));
    EXPECT_FALSE(r.ok);
    EXPECT_EQ(r.message, kMsgMaxProfiles);
    EXPECT_FALSE(g.prf_loaded);
    g.prf_loaded = true;
    g.ProfilePRFactive = 7;
    r = Open_Prf_File(put("b.prf", data("joined_52.prf")));
    ASSERT_TRUE(r.ok) << r.message;
    EXPECT_EQ(r.slot, 7);
    EXPECT_EQ(g.nperfiles, kMaxProfiles);
    g.nperfiles = 0;
}

TEST_F(OpenPrf, ReloadsAFileRewrittenAtAnotherTimeOfDay) {
    ZENDRITE_STORE& g = zendrite_param_global();
    const std::string a = put("run.prf", data("two_phase_46.prf"));
    PRF_OPEN_RESULT r = Open_Prf_File(a);
    ASSERT_TRUE(r.ok);
    int stamp = r.prf_stamp;
    EXPECT_EQ(Reload_Prf_If_Changed(a, stamp).status, PRF_RELOAD_STATUS::Unchanged);

    put("run.prf", data("joined_52.prf"));
    age(a, 5);
    PRF_RELOAD_RESULT rr = Reload_Prf_If_Changed(a, stamp);
    ASSERT_EQ(rr.status, PRF_RELOAD_STATUS::Reloaded) << rr.message;
    EXPECT_EQ(stamp, Prf_File_Stamp(a).stamp);
    EXPECT_NE(stamp, r.prf_stamp);
    EXPECT_EQ(g.nperfiles, 1);
    EXPECT_EQ(g.pattern[1].npts, 30);
    EXPECT_EQ(Reload_Prf_If_Changed(a, stamp).status, PRF_RELOAD_STATUS::Unchanged);

    // the same time of day on another date is not a change
    age(a, 24 * 3600);
    EXPECT_EQ(Reload_Prf_If_Changed(a, stamp).status, PRF_RELOAD_STATUS::Unchanged);
    EXPECT_EQ(g.pattern[1].npts, 30);
}

TEST_F(OpenPrf, HalfWrittenFileIsNeverShownHalfRead) {
    ZENDRITE_STORE& g = zendrite_param_global();
    const std::string a = put("run.prf", data("joined_52.prf"));
    PRF_OPEN_RESULT r = Open_Prf_File(a);
    ASSERT_TRUE(r.ok);
    int stamp = r.prf_stamp;
    const std::string full = data("two_phase_46.prf");
    put("run.prf", full.substr(0, full.size() / 2));  // the refinement is half way
    age(a, 7);
    int waits = 0;
    Prf_Reload_Wait() = [&] {
        ++waits;
        // while we wait the old profile stays in the store
        EXPECT_EQ(g.pattern[1].npts, 30);
        if (waits == 2) {
            put("run.prf", full);
            age(a, 9);
        }
    };
    PRF_RELOAD_RESULT rr = Reload_Prf_If_Changed(a, stamp);
    ASSERT_EQ(rr.status, PRF_RELOAD_STATUS::Reloaded) << rr.message;
    EXPECT_EQ(waits, 2);
    EXPECT_EQ(g.pattern[1].npts, 200);
    EXPECT_EQ(g.info[1].nrefl, 5);
}

TEST_F(OpenPrf, FileThatStaysBrokenIsReportedOnce) {
    ZENDRITE_STORE& g = zendrite_param_global();
    const std::string a = put("run.prf", data("joined_52.prf"));
    PRF_OPEN_RESULT r = Open_Prf_File(a);
    ASSERT_TRUE(r.ok);
    int stamp = r.prf_stamp;
    put("run.prf", data("heading47.prf"));
    age(a, 11);
    int waits = 0;
    Prf_Reload_Wait() = [&] { ++waits; };
    PRF_RELOAD_RESULT rr = Reload_Prf_If_Changed(a, stamp);
    EXPECT_EQ(rr.status, PRF_RELOAD_STATUS::Failed);
    EXPECT_EQ(waits, kPrfReloadTries - 1);
    EXPECT_NE(rr.message.find("Error! Prf is not"), std::string::npos);
    EXPECT_EQ(g.pattern[1].npts, 30);
    EXPECT_EQ(stamp, r.prf_stamp);
    EXPECT_EQ(Reload_Prf_If_Changed(a, stamp).status, PRF_RELOAD_STATUS::Unchanged);

    put("run.prf", data("two_phase_46.prf"));  // the next run writes it whole
    age(a, 13);
    EXPECT_EQ(Reload_Prf_If_Changed(a, stamp).status, PRF_RELOAD_STATUS::Reloaded);
    EXPECT_EQ(g.pattern[1].npts, 200);
}
