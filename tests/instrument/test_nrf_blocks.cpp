// The block scanner and the seven block readers, on built files and on a cut
// of a real run.
#include <gtest/gtest.h>

#include "instrument/nrf_blocks.h"
#include "numor_builder.h"
#include "temp_dir.h"

using namespace hxl;
using ztest::Numor_Builder;

namespace {

void scan(const std::string& text, NUMOR_LINES& lines, int& n) {
    Read_Numor_Text(text, lines, n);
    Count_Block_Types(lines, n);
    Index_Blocks(lines, n);
}

const std::string kReal = std::string(ZD_TEST_DATA) + "/instrument/numor_121459_2frames.txt";

}  // namespace

TEST(NumorBlocks, CountsAndIndexFollowTheMarkers) {
    Numor_Builder b;
    b.R(4711).A("KV8 user date").A("a title").S().F({1, 2, 3}).I({5, 6}).F({7}).I({8}).J({9}).Raw("VVVVVVVVVV free text follows").Raw("line one").Raw("line two");
    NUMOR_LINES lines;
    int n = 0;
    scan(b.Text(), lines, n);
    EXPECT_EQ(n, lines.size());
    std::array<int, 7> want{1, 2, 1, 2, 2, 1, 1};
    EXPECT_EQ(nrf.block_count, want);
    // Each block ends on the line before the next marker of any letter.
    EXPECT_EQ(Block_Start(kBlockR, 1), 1);
    EXPECT_EQ(Block_End(kBlockR, 1), 2);
    EXPECT_EQ(Block_Start(kBlockA, 2), 7);
    EXPECT_EQ(Block_End(kBlockA, 1), 6);
    EXPECT_EQ(Block_Start(kBlockF, 2), Block_End(kBlockI, 1) + 1);
    // The last block of the file ends on the last line.
    EXPECT_EQ(Block_Start(kBlockV, 1), n - 2);
    EXPECT_EQ(Block_End(kBlockV, 1), n);
    EXPECT_EQ(Block_Start(kBlockJ, 2), 0);
}

TEST(NumorBlocks, MarkerAnywhereAndFirstLetterWins) {
    NUMOR_LINES lines;
    int n = 0;
    scan("xx RRRRRRRRRR yy\n"
         "      12       0\n"
         "  IIIIIIIIII and FFFFFFFFFF in one line\n"
         "       0       0\n"
         "RRRRRRRRR is nine letters only\n",
         lines, n);
    std::array<int, 7> want{1, 0, 0, 1, 0, 0, 0};
    EXPECT_EQ(nrf.block_count, want);
    EXPECT_EQ(Marker_Letter("FFFFFFFFFFIIIIIIIIII"), kBlockF);
    EXPECT_EQ(Marker_Letter("JJJJJJJJJ"), 0);
    int numor = -1, third = -1;
    Read_R_Block(lines, Block_Start(kBlockR, 1), Block_End(kBlockR, 1), numor, third);
    EXPECT_FALSE(ERR_Nrf);
    EXPECT_EQ(numor, 12);
}

TEST(NumorBlocks, FBlockValuesTextAndShortLastLine) {
    Numor_Builder b;
    b.F({1.5f, -2.25f, 3e5f, 4, 5, 6, 7}, 2);
    NUMOR_LINES lines;
    int n = 0;
    scan(b.Text(), lines, n);
    Clear_Nrf_Error();
    Read_F_Block(lines, 1, n);
    EXPECT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    ASSERT_EQ(nrf.n_real, 7);
    EXPECT_EQ(nrf.n_text, 2);
    EXPECT_FLOAT_EQ(nrf.real_values(1), 1.5f);
    EXPECT_FLOAT_EQ(nrf.real_values(2), -2.25f);
    EXPECT_FLOAT_EQ(nrf.real_values(3), 3e5f);
    EXPECT_FLOAT_EQ(nrf.real_values(7), 7.0f);

    // A header that announces more values than the lines hold leaves zeros;
    // the last line gives only what is left.
    NUMOR_LINES l2;
    scan("FFFFFFFFFF\n       8       0\n  0.10000000E+01  0.20000000E+01\n  0.30000000E+01  0.40000000E+01  0.50000000E+01  0.60000000E+01\n",
         l2, n);
    Read_F_Block(l2, 1, n);
    ASSERT_EQ(nrf.n_real, 8);
    EXPECT_FLOAT_EQ(nrf.real_values(2), 2.0f);
    EXPECT_FLOAT_EQ(nrf.real_values(3), 0.0f);  // empty column of an earlier line
    EXPECT_FLOAT_EQ(nrf.real_values(6), 3.0f);
    EXPECT_FLOAT_EQ(nrf.real_values(8), 5.0f);  // three left for the last line: the sixth field is not read

    // n_real 0: no array, no error.
    NUMOR_LINES l3;
    scan("FFFFFFFFFF\n       0       0\n", l3, n);
    Read_F_Block(l3, 1, n);
    EXPECT_FALSE(ERR_Nrf);
    EXPECT_EQ(nrf.n_real, 0);
    EXPECT_TRUE(nrf.real_values.empty());
}

TEST(NumorBlocks, IAndJBlocksAndTrailingBlankLines) {
    std::vector<int> v;
    for (int i = 1; i <= 23; ++i) v.push_back(i * 1000003 % 99991);
    Numor_Builder b;
    b.I(v, 1).J(v);
    NUMOR_LINES lines;
    int n = 0;
    scan(b.Text() + "\n\n", lines, n);
    Read_I_Block(lines, Block_Start(kBlockI, 1), Block_End(kBlockI, 1));
    ASSERT_EQ(nrf.n_int, 23);
    EXPECT_EQ(nrf.int_values.vec(), v);
    EXPECT_EQ(nrf.n_text, 1);
    Read_J_Block(lines, Block_Start(kBlockJ, 1), Block_End(kBlockJ, 1));
    ASSERT_EQ(nrf.n_int, 23);
    EXPECT_EQ(nrf.int_values.vec(), v);
    EXPECT_EQ(Block_End(kBlockJ, 1), n);  // the blank lines belong to the last block

    // Trailing blank lines count as data lines and read as zeros.
    scan("IIIIIIIIII\n      12       0\n       1       2       3       4       5       6       7       8       9      10\n\n", lines, n);
    Read_I_Block(lines, 1, n);
    ASSERT_EQ(nrf.n_int, 12);
    EXPECT_EQ(nrf.int_values(10), 10);
    EXPECT_EQ(nrf.int_values(11), 0);
}

TEST(NumorBlocks, BadMarkersAndShortBlocksGiveTheMessages) {
    NUMOR_LINES lines;
    int n = 0;
    scan("not a marker\n       1       0\nRRRRRRRRRR\n       7       3\ntext one\n", lines, n);
    int numor = 0, third = 0;
    Read_R_Block(lines, 1, 2, numor, third);
    EXPECT_TRUE(ERR_Nrf);
    EXPECT_EQ(ERR_Nrf_Mess, " A bad Block R-Type has been found");
    Clear_Nrf_Error();
    Read_R_Block(lines, 3, 5, numor, third);
    EXPECT_EQ(numor, 7);
    EXPECT_EQ(ERR_Nrf_Mess, "  Impossible to read a line for this block!");
    EXPECT_EQ(nrf.n_text, 1);  // the lines read so far are kept
    EXPECT_EQ(nrf.text_lines(1), "text one");

    const char* letters = "ASFIJV";
    const char* names[] = {"A", "S", "F", "I", "J", "V"};
    for (int k = 0; k < 6; ++k) {
        Clear_Nrf_Error();
        std::array<int, 5> s{};
        int nc = 0;
        std::string t;
        switch (letters[k]) {
            case 'A': Read_A_Block(lines, 1, 2, nc, t); break;
            case 'S': Read_S_Block(lines, 1, 2, s); break;
            case 'F': Read_F_Block(lines, 1, 2); break;
            case 'I': Read_I_Block(lines, 1, 2); break;
            case 'J': Read_J_Block(lines, 1, 2); break;
            default: Read_V_Block(lines, 1, 2); break;
        }
        EXPECT_EQ(ERR_Nrf_Mess, std::string(" A bad Block ") + names[k] + "-Type has been found");
    }

    // An A block whose text runs past the block's end.
    scan("AAAAAAAAAA\n      80       3\ndescriptor\nonly one\nSSSSSSSSSS\n       1       2       3       4       0       6\n", lines, n);
    int nc = 0;
    std::string text;
    Clear_Nrf_Error();
    Read_A_Block(lines, Block_Start(kBlockA, 1), Block_End(kBlockA, 1), nc, text);
    EXPECT_EQ(ERR_Nrf_Mess, " Impossible to read a line for this block!");
    std::array<int, 5> s{};
    Read_S_Block(lines, Block_Start(kBlockS, 1), Block_End(kBlockS, 1), s);
    std::array<int, 5> want{1, 2, 3, 4, 6};
    EXPECT_EQ(s, want);
}

TEST(NumorBlocks, PackedTextOfTheABlock) {
    NUMOR_LINES lines;
    int n = 0;
    Numor_Builder b;
    b.A_Lines({"first line of the packed text", "second line"});
    scan(b.Text(), lines, n);
    int nc = 0;
    std::string wide, narrow;
    Read_A_Block(lines, 1, n, nc, wide, 1024);
    EXPECT_EQ(nc, 160);
    // The full 80 columns of the first line, a line feed, then the second line.
    ASSERT_GE(wide.size(), 82u);
    EXPECT_EQ(wide.substr(0, 29), "first line of the packed text");
    EXPECT_EQ(wide[80], '\n');
    EXPECT_EQ(wide.substr(81, 11), "second line");
    Read_A_Block(lines, 1, n, nc, narrow, 80);
    EXPECT_EQ(narrow.size(), 80u);  // the second line does not fit an 80-character field
    EXPECT_EQ(narrow.substr(0, 10), "first line");
}

TEST(NumorBlocks, RealRunCut) {
    NUMOR_LINES lines;
    int n = 0;
    Read_Numor_Lines(kReal, lines, n);
    ASSERT_EQ(n, 3338);
    Count_Block_Types(lines, n);
    Index_Blocks(lines, n);
    std::array<int, 7> want{1, 2, 2, 3, 3, 0, 0};
    EXPECT_EQ(nrf.block_count, want);
    int numor = 0, third = 0;
    Read_R_Block(lines, Block_Start(kBlockR, 1), Block_End(kBlockR, 1), numor, third);
    EXPECT_EQ(numor, 121459);
    EXPECT_EQ(third, 4);
    int nc = 0;
    std::string a1;
    Read_A_Block(lines, Block_Start(kBlockA, 1), Block_End(kBlockA, 1), nc, a1);
    EXPECT_EQ(a1.substr(0, 32), "D2B suard nass26-Jun-13 21:19:49");
    Read_I_Block(lines, Block_Start(kBlockI, 1), Block_End(kBlockI, 1));
    EXPECT_EQ(nrf.n_int, 31);
    EXPECT_EQ(nrf.n_text, 4);
    EXPECT_EQ(nrf.int_values(5), 3);      // angles moved
    EXPECT_EQ(nrf.int_values(7), 25);     // frames
    EXPECT_EQ(nrf.int_values(24), 16384);  // cells
    Read_F_Block(lines, Block_Start(kBlockF, 1), Block_End(kBlockF, 1));
    EXPECT_EQ(nrf.n_real, 50);
    EXPECT_FLOAT_EQ(nrf.real_values(18), 1.59f);
    EXPECT_FLOAT_EQ(nrf.real_values(37), 0.05f);
    EXPECT_FLOAT_EQ(nrf.real_values(46), 152.49f);
    Read_I_Block(lines, Block_Start(kBlockI, 3), Block_End(kBlockI, 3));
    EXPECT_EQ(nrf.n_int, 16384);
    EXPECT_EQ(nrf.int_values(16384), 1);  // the last line holds four values
    EXPECT_EQ(nrf.int_values(16381), 0);
    EXPECT_EQ(nrf.int_values(16379), 2);
}
