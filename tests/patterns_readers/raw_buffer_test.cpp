// Raw detector files and buffer-file lists.
#include <gtest/gtest.h>

#include "patterns/buffer_file.h"
#include "patterns/read_pattern_raw.h"
#include "support/fixed_text.h"
#include "test_files.h"

using namespace hxl;
using zdtest::Scratch_File;
using zdtest::Scratch_Path;

namespace {

std::string raw_head(const std::string& lambda_line) {
    return "KG2 raw run\n" + lambda_line + "\nline three\nline four\ndetectors shift : 0.25\n"
           "alpha1 divergency : 10\nmonitor value : 50000\nomega : 12.5\nsample temperature : 4.2\n"
           "sample owner : Someone\nline eleven\ndescriptors: 2theta counts\n";
}

}  // namespace

TEST(Raw, HeadAndDetectorBlocks) {
    const std::string text = raw_head("lambda : 2.52") + "Detector No. 1\n10.0 100\n10.1 110\nDetector No. 2\n"
                             "20.0 5\n20.1 0\n20.2 7\n";
    RAW_DATA_TYPE raw;
    std::string msg;
    ASSERT_TRUE(Read_Pattern_Raw(Scratch_File("a.kg2", text), raw, msg)) << msg;
    EXPECT_FLOAT_EQ(raw.lambda, 2.52f);
    EXPECT_FLOAT_EQ(raw.detectors_shift, 0.25f);
    EXPECT_FLOAT_EQ(raw.monitor, 50000.0f);
    EXPECT_FLOAT_EQ(raw.tsamp, 4.2f);
    EXPECT_EQ(raw.owner, "Someone");
    ASSERT_EQ(raw.detectors.size(), 2u);
    EXPECT_EQ(raw.detectors[1].number, 2);
    DIFFRACTION_PATTERN_TYPE p;
    ASSERT_TRUE(Raw_Detector_Pattern(raw, 2, p, msg)) << msg;
    EXPECT_EQ(p.npts, 3);
    EXPECT_FLOAT_EQ(p.xmax, 20.2f);
    EXPECT_FLOAT_EQ(p.sigma(2), 1.0f);
    EXPECT_FLOAT_EQ(p.lambda1, 2.52f);
    EXPECT_FALSE(Raw_Detector_Pattern(raw, 3, p, msg));
}

TEST(Raw, EachHeadLineHasItsMessage) {
    RAW_DATA_TYPE raw;
    std::string msg;
    EXPECT_FALSE(Read_Pattern_Raw(Scratch_File("e.kg2", ""), raw, msg));
    EXPECT_EQ(msg, "ERROR: Reading line #1");
    EXPECT_FALSE(Read_Pattern_Raw(Scratch_File("l.kg2", raw_head("wavelength 2.5")), raw, msg));
    EXPECT_EQ(msg, "ERROR: Reading line #2: wavelength");
    std::string bad = raw_head("lambda : 2.5");
    bad.replace(bad.find("omega : 12.5"), 12, "omega : none");
    EXPECT_FALSE(Read_Pattern_Raw(Scratch_File("o.kg2", bad), raw, msg));
    EXPECT_EQ(msg, "ERROR: Reading line #8: omega");
    EXPECT_FALSE(Read_Pattern_Raw(Scratch_File("t.kg3o", "t\nlambda : 1\n3\n4\ndetectors shift : 1\n"), raw, msg));
    EXPECT_EQ(msg, "ERROR: Reading line #6: alpha1 divergency");
    EXPECT_FALSE(Check_Raw_Selection({"a.kg2", "b.kg2"}, msg));
    EXPECT_EQ(msg, "Trying to select more than one file!");
    EXPECT_TRUE(Check_Raw_Selection({"a.kg2"}, msg));
}

TEST(BufferFile, HeadBodyAndDirectories) {
    const std::string text = "! saved list\nTITLE  My series\nCOMMENT  first run\n# more\n"
                             "a.dat\n/abs/dir/b.xy\n\nignored.dat\n";
    const std::string path = Scratch_File("list.buf", text);
    BUFFER_FILE_TYPE b;
    std::string msg;
    ASSERT_TRUE(Read_Buffer_File(path, b, msg)) << msg;
    EXPECT_EQ(b.head_lines, 4);
    ASSERT_EQ(b.titles.size(), 1u);
    EXPECT_EQ(b.titles[0], "My series");
    EXPECT_EQ(b.comments[0], "first run");
    ASSERT_EQ(b.names.size(), 2u);
    EXPECT_EQ(b.names[0], Buffer_Directory(path) + "a.dat");
    EXPECT_EQ(b.names[1], "/abs/dir/b.xy");
    EXPECT_FALSE(Read_Buffer_File(Scratch_Path("missing.buf"), b, msg));
    EXPECT_EQ(msg, "File doesn't exist...");
    EXPECT_FALSE(Write_Buffer_File("/nonexistent-dir/x.buf", {"a"}, msg));
    EXPECT_EQ(msg, "Unable to write buffer file!");
    ASSERT_TRUE(Write_Buffer_File(Scratch_Path("w.buf"), {"/d/one.dat", "/d/two.xy"}, msg));
    ASSERT_TRUE(Read_Buffer_File(Scratch_Path("w.buf"), b, msg));
    EXPECT_EQ(b.names, (std::vector<std::string>{"/d/one.dat", "/d/two.xy"}));
}
