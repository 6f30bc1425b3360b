// Finding numors in the data tree, unpacking ".Z" files, and the logic of the
// Open Numor File and View Header Numor commands.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>

#include "instrument/locate_numor.h"
#include "instrument/nrf_blocks.h"
#include "instrument/open_numors.h"
#include "powder_builders.h"
#include "temp_dir.h"

using namespace hxl;
using namespace ztest;

namespace {

// Points NRFDATA and TEMP at `root` and `temp` for one test.
struct Environment {
    Environment(const std::string& root, const std::string& temp) {
        ::setenv("NRFDATA", root.c_str(), 1);
        ::setenv("TEMP", temp.c_str(), 1);
        Forget_Nrf_Locations();
        nrf_decompress_command = "gzip -dc";
    }
    ~Environment() {
        ::unsetenv("NRFDATA");
        ::unsetenv("TEMP");
        Forget_Nrf_Locations();
        nrf_decompress_command.clear();
    }
};

// A gzip stream under a ".Z" name: the decompression command reads both.
void gzip_to(const std::string& plain, const std::string& target) {
    std::string cmd = "gzip -c '" + plain + "' > '" + target + "'";
    ASSERT_EQ(std::system(cmd.c_str()), 0);
}

int two_digit_year() {
    std::time_t now = std::time(nullptr);
    std::tm tm{};
    localtime_r(&now, &tm);
    return (tm.tm_year + 1900) % 100;
}

}  // namespace

TEST(LocateNumor, DataTreeYearCycleAndSubDirectories) {
    Scratch_Dir root, temp;
    Environment env(root.Path(), temp.Path());
    std::string kv8 = root.Write("data/kv8/kv8_2/123456", KV8_Layout1(123456, {1, 2}, 5.0f));
    std::string kv7 = root.Write("data-1/kv7/012345", "x");
    std::string dated = root.Write("073/kw2/kw2_0/001234", "y");
    std::string path, plain;
    Locate_Numor_File(123456, "KV8", path);
    EXPECT_EQ(path, kv8);
    Locate_Numor_File(12345, "KV7", path);
    EXPECT_EQ(path, kv7);
    Locate_Numor_File(1234, "KW2", path, 2007, 3);
    EXPECT_EQ(path, dated);
    Locate_Numor_File(999, "KV7", path);
    EXPECT_EQ(path, "");  // not found down to year 72

    // Walking back through the cycles finds a compressed numor of this year
    // and unpacks it into the temporary directory.
    char yc[8];
    std::snprintf(yc, sizeof yc, "%02d%d", two_digit_year(), 5);
    std::string plain_text = root.Write("plain", KV8_Layout1(222222, {3}, 1.0f));
    std::filesystem::create_directories(root.Path() + yc + "/kv9");
    gzip_to(plain_text, root.Path() + yc + "/kv9/222222.Z");
    Locate_Numor_File(222222, "kv9", path, -1, -1, &plain);
    EXPECT_EQ(path, temp.Path() + "222222");
    EXPECT_EQ(plain, root.Path() + yc + "/kv9/222222");
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST(LocateNumor, InvalidRootGivesABlankPath) {
    Scratch_Dir temp;
    Environment env(temp.Path() + "no-such-root", temp.Path());
    std::string path = "old", name = "KV8";
    Locate_Numor_File(1, name, path);
    EXPECT_EQ(path, "");
    EXPECT_EQ(name, "KV8");
    EXPECT_FALSE(Find_Nrf_Locations().root_ok);
    EXPECT_TRUE(Find_Nrf_Locations().temp_ok);
}

TEST(OpenNumors, InstrumentFromThePath) {
    EXPECT_EQ(Instrument_From_Numor_Path("/nrf/data/kv8/kv8_2/123456"), "kv8");
    EXPECT_EQ(Instrument_From_Numor_Path("/nrf/073/kw2long/kw2_0/001234"), "kw2l");
    EXPECT_EQ(Instrument_From_Numor_Path("/nrf/data-1/KV7/012345.Z"), "KV7");
    EXPECT_EQ(Instrument_From_Numor_Path("/home/usr/012345"), "");  // "usr" is no year
    EXPECT_EQ(Instrument_From_Numor_Path("/x/data/012345"), "");    // nothing after "data" but the file
    EXPECT_EQ(Instrument_From_Numor_Path("012345"), "");
}

TEST(OpenNumors, EachNumorBecomesAProfile) {
    Scratch_Dir d, temp;
    Environment env(d.Path(), temp.Path());
    std::string a = d.Write("data/kv8/100001", KV8_Layout1(100001, {1, 2, 3}, 10.0f));
    std::string b = d.Write("data/kv8/100002", KV8_Layout1(100002, {4, 5, 6}, 10.0f));
    std::string bad = d.Write("data/kv8/100003", KV7_Numor(5, {}, [](int, int) { return 0; }));
    std::string plain = d.Write("p", KV8_Layout1(100004, {7, 8, 9}, 10.0f));
    gzip_to(plain, d.Path() + "data/kv8/100004.Z");
    std::string z = d.Path() + "data/kv8/100004.Z";

    OPEN_NUMORS_RESULT r = Open_Numor_Files({a, bad, b, z}, Instrument_From_Numor_Path(a), 10);
    ASSERT_EQ(r.profiles.size(), 3u);
    ASSERT_EQ(r.messages.size(), 1u);
    EXPECT_EQ(r.messages[0], "This numor does not correspond with KV8 Format");
    EXPECT_EQ(r.profiles[0].plot_title, "100001");
    EXPECT_EQ(r.profiles[0].prf_type, "DATA");
    EXPECT_EQ(r.profiles[0].instrument, "KV8");
    EXPECT_EQ(r.profiles[1].pattern.npts, 3);
    EXPECT_FLOAT_EQ(r.profiles[1].pattern.y(3), 6.0f);
    EXPECT_EQ(r.profiles[1].pattern.title.substr(0, 35), " Numors added from 100002 to 100002");
    EXPECT_FLOAT_EQ(r.profiles[2].pattern.y(1), 7.0f);  // read from the unpacked copy
    EXPECT_FALSE(std::filesystem::exists(temp.Path() + "100004"));  // which is removed afterwards

    // A store with room for one more.
    r = Open_Numor_Files({a, b}, "KV8", 1);
    EXPECT_EQ(r.profiles.size(), 1u);
    EXPECT_TRUE(r.limit_reached);
    ASSERT_EQ(r.messages.size(), 1u);
    EXPECT_EQ(r.messages[0], "The maximum number of profiles has been attained!");
}

TEST(OpenNumors, CompressedWithoutTemporaryDirectory) {
    Scratch_Dir d;
    ::unsetenv("TEMP");
    ::unsetenv("TMP");
    ::unsetenv("USERPROFILE");
    Forget_Nrf_Locations();
    OPEN_NUMORS_RESULT r = Open_Numor_Files({d.Path() + "012345.Z"}, "KV8", 5);
    ASSERT_EQ(r.messages.size(), 1u);
    EXPECT_EQ(r.messages[0], "No temporary directory was found in your system");
    EXPECT_TRUE(r.profiles.empty());
    Forget_Nrf_Locations();
}

TEST(OpenNumors, ViewHeader) {
    Scratch_Dir d;
    std::string p = d.Write("102600", KV8_Layout1(102600, {1, 2, 3}, 12.5f, 1.28f, 20000, 90.0f));
    std::vector<std::string> lines;
    std::string message;
    ASSERT_TRUE(View_Header_Numor(p, "KV8", lines, message)) << message;
    ASSERT_EQ(lines.size(), 11u);
    EXPECT_EQ(lines[0], "NUMOR: 102600");
    EXPECT_EQ(lines[1], "INTRUMENT: KV8");
    EXPECT_EQ(lines[2], "HEADER: martin       01-Jan-99 12:00:00");
    EXPECT_EQ(lines[3], "TITLE: Silicon standard");
    EXPECT_EQ(lines[5], "Principal  angle: 3");
    EXPECT_EQ(lines[7], "SCAN_START: 12.5000");
    EXPECT_EQ(lines[8], "SCAN_STEP : 0.1000");
    EXPECT_FALSE(View_Header_Numor(p, "KW1", lines, message));
    EXPECT_EQ(message, "This numor does not correspond with KW1 Format");
    EXPECT_TRUE(lines.empty());
}
