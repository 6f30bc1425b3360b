// Vendor files of the "LIBRARY" row, block by block, against xyconv
// (xyconv_reference.txt, tests/tools/xyconv_reference.sh) and against the
// files read from their own layouts or text without xylib (hand_reference.txt,
// tests/tools/hand_reference.py); then what the route must refuse.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

#include "patterns/read_pattern.h"
#include "patterns/read_pattern_library.h"
#include "test_files.h"

using namespace hxl;
using zdtest::Sample;
using zdtest::Scratch_File;
using zdtest::Slurp;

namespace {

double tol(double v) { return 1e-5 * std::fabs(v) + 1e-5; }

struct Reference {
    std::string file;
    int block = 0, n = 0;
    double x1 = 0, xn = 0, y[3] = {};
};

std::vector<DIFFRACTION_PATTERN_TYPE> blocks(const std::string& path, int& left_out, int max = 2000) {
    std::vector<DIFFRACTION_PATTERN_TYPE> out;
    Read_Pattern_Blocks(path, "LIBRARY", out, max, left_out);
    return out;
}

// Checks every reference line against the blocks the route reads; `scale` maps our y to the reference's.
int check_lines(const std::vector<Reference>& refs, double (*scale)(const std::string& file)) {
    std::map<std::string, std::vector<DIFFRACTION_PATTERN_TYPE>> read;
    int checked = 0;
    for (const Reference& r : refs) {
        SCOPED_TRACE(r.file + " block " + std::to_string(r.block));
        if (!read.count(r.file)) {
            int left_out = -1;
            read[r.file] = blocks(Sample(r.file), left_out);
            EXPECT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
            EXPECT_EQ(left_out, 0);
        }
        const auto& set = read[r.file];
        if (r.block > static_cast<int>(set.size())) {
            ADD_FAILURE() << "block not read";
            continue;
        }
        const DIFFRACTION_PATTERN_TYPE& p = set[static_cast<std::size_t>(r.block - 1)];
        EXPECT_EQ(p.npts, r.n);
        if (p.npts != r.n) continue;
        EXPECT_NEAR(p.x(1), r.x1, tol(r.x1));
        EXPECT_NEAR(p.x(r.n), r.xn, tol(r.xn));
        EXPECT_NEAR(p.xmin, r.x1, tol(r.x1));
        EXPECT_NEAR(p.xmax, r.xn, tol(r.xn));
        const int at[3] = {1, (r.n + 1) / 2, r.n};
        for (int k = 0; k < 3; ++k)
            EXPECT_NEAR(p.y(at[k]) * scale(r.file), r.y[k], tol(r.y[k])) << "point " << at[k];
        ++checked;
    }
    return checked;
}

double same(const std::string&) { return 1.0; }

// xylib 1.6 reads the Canberra MCA counts in the wrong word order: 65536 times too high.
double xylib_mca(const std::string& file) { return file.ends_with(".mca") ? 65536.0 : 1.0; }

}  // namespace

TEST(LibraryFormats, EveryBlockAgreesWithXyconvAndWithTheFileReadByHand) {
    std::vector<Reference> xyconv, hand;
    {
        std::ifstream in(Sample("xyconv_reference.txt"));
        std::string line, mode, dash;
        while (std::getline(in, line)) {
            std::istringstream s(line);
            Reference r;
            if (!(s >> r.file >> mode) || mode != "LIBRARY") continue;
            s >> r.n >> r.x1 >> r.xn >> r.y[0] >> r.y[1] >> r.y[2] >> dash >> dash >> dash >> r.block;
            xyconv.push_back(r);
        }
    }
    {
        std::ifstream in(Sample("hand_reference.txt"));
        std::string line;
        while (std::getline(in, line)) {
            if (line.empty() || line[0] == '#') continue;
            std::istringstream s(line);
            Reference r;
            s >> r.file >> r.block >> r.n >> r.x1 >> r.xn >> r.y[0] >> r.y[1] >> r.y[2];
            hand.push_back(r);
        }
    }
    // 1 + 1 + 3 blocks of RAW, one MCA, one CNF, nine VAMAS blocks.
    EXPECT_EQ(check_lines(xyconv, xylib_mca), 16);
    // RAW from its layout, the MCA counts in PDP-11 word order, both RAS scans, VAMAS from its text.
    EXPECT_EQ(check_lines(hand, same), 17);
}

TEST(LibraryFormats, HeadsGiveWavelengthAxisAndVariance) {
    int left_out = -1;
    auto raw = blocks(Sample("BT86.raw"), left_out);
    ASSERT_EQ(raw.size(), 1u);
    const DIFFRACTION_PATTERN_TYPE& p = raw[0];
    EXPECT_FLOAT_EQ(p.lambda1, 1.5406f);  // "ALPHA1", "ALPHA2", "ALPHA_RATIO" of the head
    EXPECT_FLOAT_EQ(p.lambda2, 1.54439f);
    EXPECT_FLOAT_EQ(p.ratio, 0.5f);
    EXPECT_EQ(p.scat_var, "2theta");
    EXPECT_EQ(p.xax_text, "2theta(degrees)");
    EXPECT_EQ(p.yax_text, "Intensity (arb. units)");
    EXPECT_EQ(p.diff_kind, "xrays_cw");
    EXPECT_EQ(p.instr, " 15  - LIBRARY");
    EXPECT_EQ(p.title, "BT86.raw: BT86");
    EXPECT_EQ(p.filename, "BT86.raw");
    EXPECT_TRUE(p.ct_step);
    EXPECT_NEAR(p.step, 0.0155922, 1e-6);  // the head's step (hand_reference.py)
    EXPECT_TRUE(p.sig_var);
    EXPECT_FLOAT_EQ(p.sigma(1), 187.0f);  // counts: the variance is the count
    EXPECT_FLOAT_EQ(p.ymin, 145.0f);
    EXPECT_FLOAT_EQ(p.ymax, 5774.0f);

    // An XPS file: nine regions, on the kinetic energy named by the file.
    auto vms = blocks(Sample("mjr9_59c.vms"), left_out);
    ASSERT_EQ(vms.size(), 9u) << ERR_Pattern_Mess;
    EXPECT_EQ(vms[0].scat_var, "Energy");
    EXPECT_EQ(vms[0].xax_text, "Kinetic Energy (eV)");

    // Spectra: a zero count has variance 1; the axis is named without a unit.
    auto mca = blocks(Sample("03yag02.mca"), left_out);
    ASSERT_EQ(mca.size(), 1u);
    EXPECT_EQ(mca[0].scat_var, "Energy");
    EXPECT_EQ(mca[0].xax_text, "Energy");
    EXPECT_FLOAT_EQ(mca[0].sigma(1), 1.0f);
    EXPECT_FLOAT_EQ(mca[0].ymax, 2221.0f);
    auto cnf = blocks(Sample("SMP00011.CNF"), left_out);
    ASSERT_EQ(cnf.size(), 1u);
    EXPECT_EQ(cnf[0].title, "SMP00011.CNF: Sample #11");

    // The single-pattern entry takes the first block.
    DIFFRACTION_PATTERN_TYPE first;
    Read_Pattern(Sample("format1.raw"), first, "LIBRARY");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(first.npts, 101);
    EXPECT_EQ(first.title, "format1.raw block 1: SampleID");

    // Blocks past the limit are counted.
    auto two = blocks(Sample("format1.raw"), left_out, 2);
    EXPECT_EQ(two.size(), 2u);
    EXPECT_EQ(left_out, 1);
}

TEST(LibraryFormats, RealRasFileGivesBothScans) {
    int left_out = -1;
    auto ras = blocks(Sample("inas_layer_radial_002_004.ras"), left_out);
    ASSERT_EQ(ras.size(), 2u);
    EXPECT_EQ(left_out, 0);
    for (const auto& p : ras) {
        EXPECT_FLOAT_EQ(p.lambda1, 1.540593f);  // "Ka1": monochromated, no alpha2
        EXPECT_EQ(p.lambda2, 0.0f);
        EXPECT_EQ(p.scat_var, "2theta");  // "2-Theta/Omega"
        EXPECT_EQ(p.diff_kind, "xrays_cw");
        EXPECT_TRUE(p.ct_step);
        EXPECT_NEAR(p.step, 0.004, 1e-6);
        EXPECT_FLOAT_EQ(p.sigma(1), p.y(1));
    }
    EXPECT_EQ(ras[1].title, "inas_layer_radial_002_004.ras scan 2");
    // *MEAS_SCAN_START_TIME "12/05/15 22:01:01" and "12/06/15 00:32:20" (Python datetime, as UTC)
    EXPECT_DOUBLE_EQ(ras[0].acq_time, 1449352861.0);
    EXPECT_DOUBLE_EQ(ras[1].acq_time, 1449361940.0);
}

TEST(LibraryFormats, RasLayoutAtItsEdges) {
    const std::string head = "*RAS_DATA_START\r\n*RAS_HEADER_START\r\n*FILE_SAMPLE \"\x83\x54\x83\x93 InAs\"\r\n";
    const std::string axis = "*MEAS_SCAN_AXIS_X \"Omega\"\r\n*MEAS_SCAN_UNIT_X \"deg\"\r\n";
    const std::string two = "*MEAS_SCAN_AXIS_X \"2-Theta\"\r\n";
    int left_out = -1;
    // Descending rows, an attenuator factor of 100, Shift-JIS bytes in the head.
    auto p = blocks(Scratch_File("omega.ras", head + axis + "*RAS_HEADER_END\r\n*RAS_INT_START\r\n12 4 1\r\n"
                                                   "11 5 100\r\n10 0 1\r\n*RAS_INT_END\r\n*RAS_DATA_END\r\n"),
                    left_out);
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(p.size(), 1u);
    ASSERT_EQ(p[0].npts, 3);
    EXPECT_FLOAT_EQ(p[0].x(1), 10.0f);
    EXPECT_FLOAT_EQ(p[0].y(2), 500.0f);
    EXPECT_FLOAT_EQ(p[0].sigma(2), 5.0f * 100 * 100);  // the counts' variance scaled with them
    EXPECT_FLOAT_EQ(p[0].sigma(1), 1.0f);              // zero counts
    EXPECT_FLOAT_EQ(p[0].y(3), 4.0f);
    EXPECT_EQ(p[0].scat_var, "Omega");
    EXPECT_EQ(p[0].xax_text, "Omega (deg)");
    EXPECT_EQ(p[0].title, "omega.ras scan 1: InAs");
    EXPECT_EQ(p[0].lambda1, 0.0f);  // the head gives none

    // A one-point scan is left out and counted; the next one is read.
    const std::string scan2 = "*RAS_HEADER_START\r\n" + two + "*RAS_HEADER_END\r\n*RAS_INT_START\r\n1 2 1\r\n2 3 1\r\n"
                              "*RAS_INT_END\r\n";
    p = blocks(Scratch_File("one.ras", head + two + "*RAS_HEADER_END\r\n*RAS_INT_START\r\n1 2 1\r\n*RAS_INT_END\r\n" +
                                           scan2 + "*RAS_DATA_END\r\n"),
               left_out);
    ASSERT_EQ(p.size(), 1u);
    EXPECT_EQ(left_out, 1);
    EXPECT_EQ(p[0].title, "one.ras scan 2");  // each scan has its own head

    const std::string real = Slurp(Sample("inas_layer_radial_002_004.ras"));
    struct Bad {
        const char* name;
        std::string text;
        const char* message;
    } bad[] = {
        {"cut.ras", real.substr(0, real.find("*RAS_INT_START") + 5000),
         " RAS scan 1 is cut: its rows end without *RAS_INT_END"},
        {"nan.ras", head + two + "*RAS_HEADER_END\r\n*RAS_INT_START\r\n1 2 1\r\n2 nan 1\r\n*RAS_INT_END\r\n",
         " RAS scan 1: not a row of finite numbers at line 8"},
        {"big.ras", head + two + "*RAS_HEADER_END\r\n*RAS_INT_START\r\n1 2 1\r\n2 1e39 1\r\n*RAS_INT_END\r\n",
         " RAS scan 1: not a row of finite numbers at line 8"},
        {"att.ras", head + two + "*RAS_HEADER_END\r\n*RAS_INT_START\r\n1 2 0\r\n*RAS_INT_END\r\n",
         " RAS scan 1: an attenuator factor that is not a positive number at line 7"},
        {"nohead.ras", head + two, " RAS scan 1: the head has no *RAS_HEADER_END"},
        {"plain.ras", "1 2\n3 4\n", " Not a Rigaku RAS file: it does not begin with *RAS_DATA_START"},
    };
    for (const Bad& b : bad) {
        SCOPED_TRACE(b.name);
        p = blocks(Scratch_File(b.name, b.text), left_out);
        EXPECT_TRUE(ERR_Pattern);
        EXPECT_TRUE(p.empty());
        EXPECT_EQ(ERR_Pattern_Mess, b.message);
    }
}

TEST(LibraryFormats, BadFilesAreRefusedWithAMessage) {
    const std::string raw = Slurp(Sample("BT86.raw"));
    // The real CNF cut to 31132 bytes, with byte 317 set to 0xFC (found by
    // mutation), makes xylib 1.6 read far past its buffer: the library crashes,
    // in its own process.
    std::string cnf = Slurp(Sample("SMP00011.CNF"));
    ASSERT_GT(cnf.size(), 31132u);
    cnf.resize(31132);
    cnf[317] = static_cast<char>(0xFC);
    std::string noise(5000, '\0');
    unsigned state = 12345;
    for (char& c : noise) c = static_cast<char>((state = state * 1103515245u + 12345u) >> 16);
    struct Bad {
        const char* name;
        std::string bytes;
        const char* starts;
    } bad[] = {
        {"cut.raw", raw.substr(0, 3000), " Error reading the file through the format library: "},
        {"head.raw", raw.substr(0, 700), " Error reading the file through the format library: "},
        {"empty.raw", "", " The file is empty"},
        {"noise.cnf", noise, " The file is not a valid Canberra CNF file"},
        {"noise.mca", noise, " The file is not a valid Canberra MCA file"},
        {"noise.raw", noise, " The file is not a valid Siemens/Bruker RAW file"},
        {"detector.raw", "Si powder\nlambda : 1.2252\n\n\n0\n", " This is a raw detector file: open it with"},
        {"crash.cnf", cnf,
         " Error reading the file through the format library: the library failed on damaged data in the file"},
    };
    for (const Bad& b : bad) {
        SCOPED_TRACE(b.name);
        int left_out = -1;
        auto p = blocks(Scratch_File(b.name, b.bytes), left_out);
        EXPECT_TRUE(ERR_Pattern);
        EXPECT_TRUE(p.empty());
        EXPECT_EQ(ERR_Pattern_Mess.rfind(b.starts, 0), 0u) << ERR_Pattern_Mess;
    }
    // The route is whole after a crash of the library.
    int left_out = -1;
    EXPECT_EQ(blocks(Sample("SMP00011.CNF"), left_out).size(), 1u) << ERR_Pattern_Mess;
}
