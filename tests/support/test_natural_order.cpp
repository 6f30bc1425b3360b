#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

#include "support/folder_files.h"
#include "support/natural_order.h"

using hxl::Natural_Less;

namespace {
std::vector<std::string> sorted(std::vector<std::string> v) {
    std::sort(v.begin(), v.end(), [](const std::string& a, const std::string& b) { return Natural_Less(a, b); });
    return v;
}
}  // namespace

TEST(NaturalOrder, NumbersCaseAndTies) {
    // Digits by value, whatever their count.
    EXPECT_EQ(sorted({"run_10.xye", "run_2.xye", "run_1.xye", "run_100.xye", "run_9.xye"}),
              (std::vector<std::string>{"run_1.xye", "run_2.xye", "run_9.xye", "run_10.xye", "run_100.xye"}));
    // Several runs of digits: the first difference decides.
    EXPECT_EQ(sorted({"s2_t10", "s10_t1", "s2_t9", "s1_t100"}),
              (std::vector<std::string>{"s1_t100", "s2_t9", "s2_t10", "s10_t1"}));
    // Leading zeros do not count for the value; equal values fall back to the plain bytes.
    EXPECT_TRUE(Natural_Less("a007", "a8"));
    EXPECT_FALSE(Natural_Less("a0010", "a9"));
    EXPECT_TRUE(Natural_Less("a01", "a1"));  // same value: "a01" < "a1" by bytes
    EXPECT_FALSE(Natural_Less("a1", "a01"));
    EXPECT_EQ(sorted({"x000", "x0", "x00"}), (std::vector<std::string>{"x0", "x00", "x000"}));
    EXPECT_FALSE(Natural_Less("x000", "x00"));
    // Case does not count, but decides a tie so the order is total.
    EXPECT_EQ(sorted({"Run_3", "run_2", "RUN_1"}), (std::vector<std::string>{"RUN_1", "run_2", "Run_3"}));
    EXPECT_TRUE(Natural_Less("ABC", "abc"));
    EXPECT_FALSE(Natural_Less("abc", "ABC"));
    EXPECT_TRUE(Natural_Less("apple", "Banana"));
    // No digits: plain case-insensitive order; a prefix comes first.
    EXPECT_EQ(sorted({"beta", "Alpha", "alp", "gamma"}),
              (std::vector<std::string>{"alp", "Alpha", "beta", "gamma"}));
    // Digits against letters: by the character code, as in plain order.
    EXPECT_TRUE(Natural_Less("run_5", "run_a"));
    EXPECT_TRUE(Natural_Less("run", "run1"));
    // Runs far beyond any integer type still compare by value.
    const std::string big1 = "f" + std::string(40, '9') + ".dat";
    const std::string big2 = "f1" + std::string(40, '0') + ".dat";  // one more digit
    const std::string big3 = "f" + std::string(39, '9') + "8.dat";
    EXPECT_TRUE(Natural_Less(big1, big2));
    EXPECT_FALSE(Natural_Less(big2, big1));
    EXPECT_TRUE(Natural_Less(big3, big1));
    EXPECT_TRUE(Natural_Less("f" + std::string(60, '0') + "5", "f6"));
    // Irreflexive, and empty names first.
    EXPECT_FALSE(Natural_Less("run_7", "run_7"));
    EXPECT_TRUE(Natural_Less("", "a"));
    EXPECT_FALSE(Natural_Less("", ""));
}

TEST(NaturalOrder, StrictWeakOrderOnAMixedSet) {
    const std::vector<std::string> names = {"a1", "a01", "A1", "a001", "a10", "a2", "b", "B", "", "a", "a0", "1", "01",
                                            "10", "a1b", "a1B", "a1b2", "a1b10"};
    for (const auto& x : names) {
        EXPECT_FALSE(Natural_Less(x, x)) << x;
        for (const auto& y : names) {
            if (x == y) continue;
            // Total: exactly one of the two holds for distinct names.
            EXPECT_NE(Natural_Less(x, y), Natural_Less(y, x)) << x << " " << y;
            for (const auto& z : names) {
                if (Natural_Less(x, y) && Natural_Less(y, z)) {
                    EXPECT_TRUE(Natural_Less(x, z)) << x << " " << y << " " << z;
                }
            }
        }
    }
}

TEST(FolderFiles, RegularVisibleFilesInNaturalOrder) {
    namespace fs = std::filesystem;
    const fs::path d = fs::temp_directory_path() / ("zd-folder-files-" + std::to_string(::getpid()));
    fs::remove_all(d);
    fs::create_directories(d / "sub_1");
    for (const char* n : {"scan10.xy", "scan9.xy", "Scan11.xy", ".hidden.xy", "notes.txt"}) std::ofstream(d / n) << "1 2\n";
    std::ofstream(d / "sub_1" / "inner.xy") << "1 2\n";
    fs::create_symlink(d / "scan9.xy", d / "link_to_9.xy");
    fs::create_symlink(d / "missing.xy", d / "dangling.xy");
    std::vector<std::string> files;
    std::string error;
    ASSERT_TRUE(hxl::Folder_Files(d.string(), files, error)) << error;
    std::vector<std::string> names;
    for (const auto& f : files) names.push_back(fs::path(f).filename().string());
    EXPECT_EQ(names, (std::vector<std::string>{"link_to_9.xy", "notes.txt", "scan9.xy", "scan10.xy", "Scan11.xy"}));
    EXPECT_EQ(fs::path(files[0]).parent_path(), d);
    EXPECT_TRUE(hxl::Is_Folder(d.string()));
    EXPECT_FALSE(hxl::Is_Folder((d / "scan9.xy").string()));

    EXPECT_FALSE(hxl::Folder_Files((d / "none").string(), files, error));
    EXPECT_NE(error.find("Unable to read the folder"), std::string::npos);
    EXPECT_TRUE(files.empty());
    EXPECT_FALSE(hxl::Folder_Files((d / "scan9.xy").string(), files, error));  // a file is no folder
    fs::remove_all(d);
}
