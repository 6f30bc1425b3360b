// The format guess: every real file of the test data against the row it is
// known to be (from its provenance), and written heads of the layouts no real
// file covers. Each guessed row is also read by its reader, so that a guess
// the reader refuses shows here.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "patterns/format_guess.h"
#include "patterns/format_table.h"
#include "patterns/read_pattern.h"
#include "tests/patterns/temp_files.h"

namespace fs = std::filesystem;
using hxl::Guess_Pattern_Format;
using hxl::Guess_Pattern_Format_Text;

namespace {

const std::string kData = ZD_TEST_DATA;

// What each file is, from tests/data/PROVENANCE.md; 0: no pattern file.
const std::map<std::string, int> kExpected = {
    {"patterns/1517474.cif", 15},               // COD powder CIF
    {"patterns/210520step1_30min.csv", 12},     // PANalytical CSV export
    {"patterns/210520step1_30min.xrdml", 12},   // XRDML 1.6
    {"patterns/210520step1_30min.xy", 9},       // plain two columns
    {"patterns/BT86_.UXD", 8},                  // UXD with _2THETACOUNTS
    {"patterns/CeO2_Pilatus1M.xy", 9},          // pyFAI export, long "#" head
    {"patterns/D1A5.dat", 4},                   // ILL D1A in the KG1 layout
    {"patterns/D1A_at_ILL.xye", 9},             // xye with a "#" title
    {"patterns/DMC_n_Unknown_578.dat", 7},      // PSI DMC, counts of 10-11 digits
    {"patterns/PBSO4.CWN", 10},                 // GSAS raw STD, CONST bins
    {"patterns/PBSO4.XRA", 10},                 // GSAS raw STD, CONST bins
    {"patterns/PSI_DMC.dat", 7},                // PSI HRPT with its error block
    {"patterns/ZrP_1.csv", 9},                  // apostrophe head, "x,y" rows: XY, not the vendor CSV
    {"patterns/d1a.cif", 15},                   // pdCIF with dotted names
    {"patterns/empyrean.xrdml", 12},            // XRDML 1.5
    {"patterns/experiment_polarized.xye", 9},   // five columns
    {"patterns/hrpt.xye", 9},                   // xye, one "#" line
    {"patterns/LaB6_d500_si_psd.xye", 9},       // xye, no head, TABs and CR LF
    {"patterns/pesa.txt", 9},                   // CR-only lines, tabs
    {"patterns/simpack_xrd_AlGaAs.xrdml", 12},  // BOM, CRLF
    {"patterns/test.jdx", 12},                  // JCAMP-DX peak table
    {"patterns/test_scan.xrdml", 12},           // XRDML 1.0
    {"patterns/with_commas.txt", 9},            // decimal commas, read as XY
    {"patterns/with_sigma.txt", 9},             // x y sigma, three points
    {"patterns/xy_text.txt", 9},                // two columns, CRLF
    {"patterns/xyconv_reference.txt", 0},       // a table of reference numbers
    {"patterns/hand_reference.txt", 0},         // the same, read by hand
    {"patterns/multi_one_blocks.txt", 0},       // the same, of the CIF blocks
    {"patterns/mtex_polefigure.xrdml", 12},     // XRDML 1.2, 30 Phi scans
    {"patterns/multi_one.cif", 15},             // pdCIF of six blocks
    {"patterns/NISI.cif", 15},                  // pdCIF of two TOF banks and their fits
    {"patterns/BT86.raw", 16},                  // Siemens/Bruker RAW version 1, binary
    {"patterns/Cu3Au-1.raw", 16},               // Bruker RAW, binary
    {"patterns/format1.raw", 16},               // Bruker RAW, binary
    {"patterns/03yag02.mca", 16},               // Canberra MCA, binary
    {"patterns/SMP00011.CNF", 16},              // Canberra CNF, binary
    {"patterns/mjr9_59c.vms", 16},              // VAMAS text, nine regions
    {"patterns/inas_layer_radial_002_004.ras", 16},  // Rigaku SmartLab RAS, two scans
    {"support/PBSO4.CWN", 10},                  // GSAS raw STD
    {"gui/PSI_DMC.dat", 7},                     // PSI HRPT
    {"gui/psi dmc.dat", 7},                     // the same
};

// Reads `file` with the row: true when at least one pattern came out.
bool reads(const std::string& file, int row, std::string& why) {
    std::vector<hxl::DIFFRACTION_PATTERN_TYPE> set;
    int left_out = 0;
    hxl::Read_Pattern_Blocks(file, std::string(hxl::Format_Row(row).mode), set, 4, left_out);
    why = hxl::ERR_Pattern_Mess;
    return !hxl::ERR_Pattern && !set.empty() && set[0].npts >= 1;
}

std::string fmt(const char* f, double a, double b = 0, double c = 0, double d = 0) {
    char buf[256];
    std::snprintf(buf, sizeof buf, f, a, b, c, d);
    return buf;
}

}  // namespace

TEST(FormatGuess, EveryRealFileOfTheTestData) {
    std::vector<std::string> files;
    for (const char* dir : {"patterns", "support"})
        for (const auto& e : fs::directory_iterator(kData + "/" + dir))
            if (e.is_regular_file() && e.path().filename() != "PROVENANCE.md") files.push_back(std::string(dir) + "/" + e.path().filename().string());
    for (const auto& e : fs::directory_iterator(kData + "/gui"))
        if (e.is_regular_file() && e.path().extension() == ".dat") files.push_back("gui/" + e.path().filename().string());
    ASSERT_GE(files.size(), kExpected.size());
    std::string table = "\nfile | expected | guessed | reason\n";
    int wrong = 0;
    for (const std::string& f : files) {
        const auto it = kExpected.find(f);
        const hxl::FORMAT_GUESS_TYPE g = Guess_Pattern_Format(kData + "/" + f);
        table += f + " | " + (it == kExpected.end() ? "?" : std::to_string(it->second)) + " | " + std::to_string(g.row) +
                 " | " + g.reason + "\n";
        EXPECT_NE(it, kExpected.end()) << f << ": a new file; add what it is to the table";
        if (it == kExpected.end() || it->second != g.row) ++wrong;
        EXPECT_FALSE(g.reason.empty()) << f;
        if (g.row == 0) continue;
        std::string why;
        EXPECT_TRUE(reads(kData + "/" + f, g.row, why)) << f << " guessed " << g.row << " but:" << why;
    }
    EXPECT_EQ(wrong, 0) << table;
    std::printf("%s", table.c_str());
}

TEST(FormatGuess, InstrumentLayoutsWrittenHere) {
    ztest::Temp_Dir dir;
    auto check = [&](const std::string& name, const std::string& text, int row, const char* word) {
        const std::string file = dir.Write(name, text);
        const hxl::FORMAT_GUESS_TYPE g = Guess_Pattern_Format(file);
        EXPECT_EQ(g.row, row) << name << ": " << g.reason;
        EXPECT_NE(g.reason.find(word), std::string::npos) << name << ": " << g.reason;
        std::string why;
        if (row) {
            EXPECT_TRUE(reads(file, row, why)) << name << " does not read as row " << row << ":" << why;
        }
        return g;
    };
    // KV8: monitor "(f13.0,10x,f8.3,45x,4f9.3)", the count "(i4)", pairs "(10(i2,f8.0))".
    std::string kv8 = "KV8 run\nline two\nsample title\nmore title\n" +
                      fmt("%13.0f", 50000) + std::string(10, ' ') + fmt("%8.3f", 10.0) + std::string(45, ' ') +
                      fmt("%9.3f%9.3f%9.3f%9.3f", 0.1, 290, 0, 291) + "\n  20\n";
    for (int i = 0; i < 20; ++i) kv8 += fmt("%2.0f%8.0f", 1 + i % 2, 100 + i) + ((i % 10 == 9) ? "\n" : "");
    check("kv8.dat", kv8 + "end\n", 2, "KV8");
    // KG1: count line of six numbers, then limits that agree with the count.
    check("kg1.dat", "KG1 title\nident\n  20  1.5  2.0  0  100000.0  0.0\n 10.0 0.1 11.9\n" + ztest::Counts(20, 100), 4,
          "KG1");
    // KV7: step in columns 17-24, start "(f8.3)", norm and monitor "(2f8.0)", pairs "(10(i2,f6.0))"; 18/step*10 points.
    std::string kv7 = "KV7 title\n" + std::string(16, ' ') + fmt("%8.3f", 6.0) + "\n" + fmt("%8.3f", 10.0) + "\n" +
                      fmt("%8.0f%8.0f%8.0f", 1000, 2000, 0) + "\n";
    for (int i = 0; i < 30; ++i) kv7 += fmt("%2.0f%6.0f", 1, 200 + i) + ((i % 10 == 9) ? "\n" : "");
    check("kv7.dat", kv7, 5, "KV7");
    // Old KV7: title, "step start end", pairs.
    std::string old = "old KV7\n 0.1 10.0 11.9\n";
    for (int i = 0; i < 20; ++i) old += fmt("%2.0f%6.0f", 2, 300 + i) + ((i % 10 == 9) ? "\n" : "");
    check("old.dat", old, 6, "old KV7");
    // NLS: a row of counts, then a row of their sigma, in turn.
    std::string nls = "NLS title\n! a comment\n 10.0 0.1 11.9\n";
    for (int r = 0; r < 2; ++r) {
        std::string y, s;
        for (int i = 0; i < 10; ++i) {
            const double c = 400 + 30 * i + 7 * r;
            y += fmt("%8.0f", c);
            s += fmt("%8.1f", std::sqrt(c));
        }
        nls += y + "\n" + s + "\n";
    }
    check("nls.dat", nls, 3, "NLS");
    // Variable counting time: three head lines, limits, "(5(f6.0,f10.0))" pairs of time and count.
    std::string tv = "time title\nsecond\nthird\n 10.0 0.1 10.9\n";
    for (int i = 0; i < 10; ++i) tv += fmt("%6.0f%10.0f", 10 + i % 3, 500 + 10 * i) + ((i % 5 == 4) ? "\n" : "");
    check("tv.dat", tv, 13, "variable counting time");
    // Free format as the program writes it, and behind two head lines (where the DMC layout fits too).
    const hxl::FORMAT_GUESS_TYPE free1 = check("free.dat", " 10.0 0.1 11.9 my title\n" + ztest::Counts(20), 1, "free format");
    EXPECT_FALSE(free1.weak);
    const hxl::FORMAT_GUESS_TYPE dmc = check("two.dat", "title\nsecond\n 10.0 0.1 11.9\n" + ztest::Counts(20), 7, "DMC");
    EXPECT_TRUE(dmc.weak);
    EXPECT_NE(dmc.reason.find("weak guess"), std::string::npos);
    // XY columns, X falling; and a first row that would pass as "start step end".
    check("down.txt", "30 5\n29 6\n28 7\n27 8\n", 9, "falling");
    check("xyz.txt", "1.0 2.0 300.0\n1.1 2.5 310.0\n1.2 2.7 320.0\n1.3 2.9 330.0\n", 9, "XY columns");
}

TEST(FormatGuess, VendorAndGsasHeads) {
    auto g = [](std::string_view text, std::string_view name = "x.dat") { return Guess_Pattern_Format_Text(text, name); };
    // GSAS: bins decide; time-of-flight bins go to the row that reads every bank.
    EXPECT_EQ(g("title\nBANK 1 4 1 RALF 32000 100 32000 0.0005 ALT\n").row, 14);
    EXPECT_EQ(g("title\nBANK 1 2487 2487 SLOG 5000.0 60000.0 0.0008 0 FXYE\n").row, 14);
    const auto cw = g("title\nBANK 1 10 1 CONST 1000 5 0 0 ESD\n 1 2\nBANK 2 10 1 CONST 1000 5 0 0 ESD\n");
    EXPECT_EQ(cw.row, 10);
    EXPECT_NE(cw.reason.find("2 banks"), std::string::npos) << cw.reason;
    // A stray NUL in a title (as some facility files have) leaves the file text.
    std::string nul = std::string("la7c3 title ") + '\0' + "\x1d\x80 x\nBANK 1 20 4 CONST 300.00 5.00 0 0 ESD\n";
    for (int i = 0; i < 4; ++i) nul += "    344.     38.    375.     40.    317.     37.    389.     41.    321.     37.\n";
    EXPECT_EQ(g(nul).row, 10) << g(nul).reason;
    // PANALYTICAL content reads only under its extension: elsewhere no row, and the reason says why.
    const std::string udf = "SampleIdent,abc ,/\nDataAngleRange, 10.0, 20.0,/\nScanStepSize, 0.02,/\nRawScan\n";
    EXPECT_EQ(g(udf, "s.udf").row, 12);
    const auto wrong = g(udf, "s.dat");
    EXPECT_EQ(wrong.row, 0);
    EXPECT_NE(wrong.reason.find(".udf"), std::string::npos) << wrong.reason;
    EXPECT_EQ(g("<?xml version=\"1.0\"?>\n<xrdMeasurements>\n<xrdMeasurement>\n", "a.XRDML").row, 12);
    EXPECT_EQ(g("<?xml version=\"1.0\"?>\n<xrdMeasurements>\n<xrdMeasurement>\n", "a.txt").row, 0);
    // Library formats by their signatures.
    const auto ras = g("*RAS_DATA_START\r\n*RAS_HEADER_START\r\n*FILE_COMMENT \"\"\r\n");
    EXPECT_EQ(ras.row, 16);
    EXPECT_EQ(ras.library, "ras");
    const auto vms = g("VAMAS Surface Chemical Analysis Standard Data Transfer Format 1988 May 4\nNot Specified\n");
    EXPECT_EQ(vms.row, 16);
    EXPECT_EQ(vms.library, "vamas");
    EXPECT_NE(vms.reason.find("VAMAS"), std::string::npos) << vms.reason;
    for (std::string magic : {std::string("RAW1.01"), std::string("RAW2"), std::string("RAW ")}) {
        std::string bin = magic + std::string(64, '\0') + "\x01\x02\x03";
        const auto raw = g(bin, "a.bin");
        EXPECT_EQ(raw.row, 16) << magic;
        EXPECT_EQ(raw.library, "bruker_raw") << magic;
    }
    std::string noise;
    for (int i = 0; i < 4000; ++i) noise += static_cast<char>((i * 7919) % 256);
    const auto bin = g(noise);
    EXPECT_EQ(bin.row, 0);
    EXPECT_NE(bin.reason.find("binary"), std::string::npos);
    // Too little to tell.
    EXPECT_EQ(g("").row, 0);
    EXPECT_NE(g("").reason.find("empty"), std::string::npos);
    EXPECT_EQ(g("10 20 30\n").row, 0);
    EXPECT_NE(g("10 20 30").reason.find("one line"), std::string::npos);
    EXPECT_EQ(g("\n\n  \n").row, 0);
    // A structure CIF is no powder pattern.
    EXPECT_EQ(g("data_x\n_cell_length_a 5.0\n").row, 0);
}

TEST(FormatGuess, OnlyTheHeadIsRead) {
    ztest::Temp_Dir dir;
    // 20 KiB of XY rows, then binary bytes: the guess stops before them.
    std::string text;
    for (int i = 0; text.size() < 20 * 1024; ++i) text += std::to_string(10 + i * 0.01) + " " + std::to_string(100 + i) + "\n";
    text += std::string(1000, '\0');
    const auto g = Guess_Pattern_Format(dir.Write("big.txt", text));
    EXPECT_EQ(g.row, 9) << g.reason;
    EXPECT_EQ(Guess_Pattern_Format(dir.Path()).row, 0);
    EXPECT_NE(Guess_Pattern_Format(dir.Path()).reason.find("folder"), std::string::npos);
    EXPECT_EQ(Guess_Pattern_Format(dir.Path() + "/none.dat").row, 0);
}
