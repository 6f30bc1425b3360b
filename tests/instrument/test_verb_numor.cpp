// zendrite-batch numor, run as the program runs it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/batch/batch_verbs.h"
#include "powder_builders.h"
#include "temp_dir.h"

using namespace ztest;

namespace {

struct In_Dir {  // runs a test inside a directory
    explicit In_Dir(const std::string& dir) : old(std::filesystem::current_path()) { std::filesystem::current_path(dir); }
    ~In_Dir() { std::filesystem::current_path(old); }
    std::filesystem::path old;
};

std::string slurp(const std::string& path) {
    std::ifstream f(path);
    std::stringstream s;
    s << f.rdbuf();
    return s.str();
}

}  // namespace

TEST(VerbNumor, WritesOneXysPerNumorOrTheSum) {
    Scratch_Dir d;
    std::string a = d.Write("in/100001", KV8_Layout1(100001, {10, 20, 30}, 10.0f, 1.28f, 1000));
    std::string b = d.Write("in/100002", KV8_Layout1(100002, {30, 20, 10}, 10.0f, 1.28f, 1000));
    In_Dir here(d.Path());
    std::ostringstream out, err;
    ASSERT_EQ(zendrite::Batch_Main({"numor", a, b, "--instrument", "KV8"}, out, err), 0) << err.str();
    std::string x1 = slurp("100001.xys");
    EXPECT_EQ(x1.substr(0, 7), "XYDATA\n");
    EXPECT_NE(x1.find("Silicon standard"), std::string::npos);
    EXPECT_NE(x1.find("       10.4000"), std::string::npos);  // the last point: step 0.2 before run 102577
    EXPECT_TRUE(std::filesystem::exists("100002.xys"));

    std::ostringstream out2, err2;
    ASSERT_EQ(zendrite::Batch_Main({"numor", a, b, "--instrument", "kv8", "--add", "--monitor", "500", "--out", "sum.xys"},
                                   out2, err2),
              0)
        << err2.str();
    std::string sum = slurp("sum.xys");
    // 40 counts over a monitor of 2000, normalised to 500: 10, with sigma sqrt(40)/4.
    EXPECT_NE(sum.find("       10.0000           10.0000          1.5811"), std::string::npos) << sum;
}

TEST(VerbNumor, BadInputGivesMessages) {
    Scratch_Dir d;
    std::string a = d.Write("100001", KV8_Layout1(100001, {1, 2}, 10.0f, 1.28f));
    std::string b = d.Write("100002", KV8_Layout1(100002, {1, 2}, 10.0f, 1.5f));
    In_Dir here(d.Path());
    std::ostringstream out, err;
    EXPECT_EQ(zendrite::Batch_Main({"numor", a}, out, err), 2);
    EXPECT_NE(err.str().find("give --instrument NAME"), std::string::npos);
    EXPECT_EQ(zendrite::Batch_Main({"numor", a, "--instrument", "KV8", "--monitor", "lots"}, out, err), 2);
    EXPECT_EQ(zendrite::Batch_Main({"numor", a, b, "--instrument", "KV8", "--add"}, out, err), 1);
    EXPECT_NE(err.str().find("Not all Numors have the same Wavelength!"), std::string::npos);
    EXPECT_EQ(zendrite::Batch_Main({"numor", d.Path() + "missing", "--instrument", "KV9"}, out, err), 1);
    EXPECT_NE(err.str().find(" Problems trying to read the Numor for KV9 Instrument in file "), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists("missing.xys"));
}
