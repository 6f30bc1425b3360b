// Laboratory exports and powder CIF on small hand-written files.
#include <gtest/gtest.h>

#include <cmath>

#include "patterns/format_table.h"
#include "read_text.h"
#include "support/fixed_text.h"

using namespace hxl;
using zdtest::Read_Text;

TEST(VendorReaders, CsvKeywordsAndRows) {
    const std::string text =
        "[Measurement conditions]\nTitle 1,Quartz\nK-Alpha1 wavelength,1.5406\nK-Alpha2 wavelength,1.5444\n"
        "Ratio K-Alpha2/K-Alpha1,0.5\nData angle range,10.0,10.2\nScan step size,0.1\nNo. of points,3\n"
        "[Scan points]\nAngle,Intensity\n10.0,5\n10.1,6\n10.2,7\n";
    DIFFRACTION_PATTERN_TYPE p = Read_Text("q.csv", text, "PANALYTICAL");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(Trim(p.title), "Quartz");
    EXPECT_FLOAT_EQ(p.ratio, 0.5f);
    EXPECT_FLOAT_EQ(p.lambda2, 1.5444f);
    ASSERT_EQ(p.npts, 3);
    EXPECT_FLOAT_EQ(p.y(3), 7.0f);
    EXPECT_FLOAT_EQ(p.step, 0.1f);
    EXPECT_EQ(Trim_Right(p.instr), " 13  - PANALYTICAL");
    Read_Text("e.csv", "Title 1,x\n", "PANALYTICAL");
    EXPECT_EQ(ERR_Pattern_Mess, " Error reading a profile CSV-DATA file: end of file");
    Read_Text("z.csv", "No. of points,0\n[Scan points]\nAngle,Intensity\n1,2\n", "PANALYTICAL");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in (Csv)Intensity file, Number of points negative or zero!");
}

TEST(VendorReaders, UdfAndJcampGridFiles) {
    std::string udf = "SampleIdent,Corundum ,/\nLabdaAlpha1, 1.54056,/\nDataAngleRange, 10.0000, 10.9000,/\n"
                      "ScanStepSize, 0.100,/\nRawScan\n";
    udf += "       1,       2,       3,       4,       5,       6,       7,       8\n       9,      10/\n";
    DIFFRACTION_PATTERN_TYPE p = Read_Text("c.udf", udf, "PANALYTICAL");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.npts, 10);
    EXPECT_FLOAT_EQ(p.y(9), 9.0f);
    EXPECT_FLOAT_EQ(p.y(10), 10.0f);
    EXPECT_FLOAT_EQ(p.lambda1, 1.54056f);
    Read_Text("c2.udf", "DataAngleRange, 10.0, 10.9,/\nScanStepSize, 0.1,/\nRawScan\n       1,\n", "PANALYTICAL");
    EXPECT_EQ(ERR_Pattern_Mess, " Error reading a profile UDF-DATA file: end of file");

    std::string jcp = "##TITLE= sample\n##$WAVELENGTH ALPHA1= 1.5406\n## FIRSTX= 20.0\n## LASTX= 20.9\n"
                      "## DELTAX= 0.1\n## NPOINTS= 10\n## XYDATA= X++<Y..Y>\n";
    jcp += "   20.000      1.000      2.000      3.000      4.000      5.000\n";
    jcp += "   20.500      6.000      7.000      8.000      9.000     10.000\n##END=\n";
    DIFFRACTION_PATTERN_TYPE j = Read_Text("s.jcp", jcp, "PANALYTICAL");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(j.npts, 10);
    EXPECT_FLOAT_EQ(j.y(7), 7.0f);
    EXPECT_NEAR(j.x(6), 20.5f, 1e-5);
    EXPECT_FLOAT_EQ(j.lambda1, 1.5406f);
    Read_Text("s2.jcp", "nothing\n", "PANALYTICAL");
    EXPECT_EQ(ERR_Pattern_Mess, " Error reading a profile XRDML-DATA file: end of file");
    Read_Text("s3.jcp", "## NPOINTS= 10\n", "PANALYTICAL");
    EXPECT_EQ(ERR_Pattern_Mess, " Error reading a profile  file: end of file");
    Read_Text("s4.jcp", "## NPOINTS= 10\n## XYDATA= X++<Y..Y>\n   20.000      1.000\n", "PANALYTICAL");
    EXPECT_EQ(ERR_Pattern_Mess, " Error reading a profile JCP-DATA file: end of file");
}

TEST(VendorReaders, JcampPeakTableOfPairs) {
    // Pairs one a line, several a line, "x,y" with semicolons; X as written.
    const std::string head = "##TITLE= converted\n##XUNITS=2theta\n##NPOINTS=5\n##PEAK TABLE=(XY..XY)\n";
    DIFFRACTION_PATTERN_TYPE p =
        Read_Text("t.jdx", head + "20 1096\n20.0246 1150 20.0491 1159\n20.07,1200; 20.1,-3\n##END=\n", "PANALYTICAL");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(p.npts, 5);
    EXPECT_EQ(Trim(p.title), "converted");
    EXPECT_FLOAT_EQ(p.x(3), 20.0491f);
    EXPECT_FLOAT_EQ(p.y(4), 1200.0f);
    EXPECT_FLOAT_EQ(p.xmax, 20.1f);
    EXPECT_NEAR(p.step, 0.025f, 1e-6);
    EXPECT_FLOAT_EQ(p.sigma(5), 3.0f);
    EXPECT_FLOAT_EQ(p.ymin, -3.0f);
    EXPECT_EQ(Trim_Right(p.instr), " 13  - PANALYTICAL");
    // The same file under the vendor's extension, and ".dx", open the same way.
    EXPECT_EQ(Read_Text("t.JCP", head + "1 2\n", "PANALYTICAL").npts, 1);
    EXPECT_EQ(Read_Text("t.dx", head + "1 2\n", "PANALYTICAL").npts, 1);
    EXPECT_EQ(Format_Row_From_Extension(".jdx"), kRowPanalytical);
    Read_Text("odd.jdx", head + "20 1096 20.02\n##END=\n", "PANALYTICAL");
    EXPECT_EQ(ERR_Pattern_Mess, " Error reading a profile JCP-DATA file: end of file");
    Read_Text("bad.jdx", head + "20 1096\n20.02 ?\n", "PANALYTICAL");
    EXPECT_EQ(ERR_Pattern_Mess, " Error reading a profile JCP-DATA file: bad value");
    Read_Text("none.jdx", head + "##END=\n", "PANALYTICAL");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, Number of points negative or zero!");
}

TEST(VendorReaders, XrdmlTagsInOrder) {
    const std::string head = "<xrdMeasurement>\n<kAlpha1 unit=\"Angstrom\">1.5405980</kAlpha1>\n"
                             "<kAlpha2 unit=\"Angstrom\">1.5444260</kAlpha2><kBeta unit=\"Angstrom\">1.39225</kBeta>\n"
                             "<ratioKAlpha2KAlpha1>0.5000</ratioKAlpha2KAlpha1>\n";
    const std::string pos = "<positions axis=\"2Theta\" unit=\"deg\">\n<startPosition>10.00</startPosition>\n"
                            "<endPosition>10.40</endPosition>\n</positions>\n";
    DIFFRACTION_PATTERN_TYPE p =
        Read_Text("a.xrdml", head + pos + "<counts unit=\"counts\">5 6 7\n8 9</counts>\n</xrdMeasurement>\n", "PANALYTICAL");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(p.npts, 5);
    EXPECT_NEAR(p.step, 0.1f, 1e-6);
    EXPECT_FLOAT_EQ(p.lambda_beta, 1.39225f);
    EXPECT_FLOAT_EQ(p.sigma(4), 8.0f);
    Read_Text("b.xrdml", "<xrdMeasurement/>\n", "PANALYTICAL");
    EXPECT_EQ(ERR_Pattern_Mess,
              " Error reading a profile XRDML-DATA file: end of file while trying to read Wavelength");
    Read_Text("c.xrdml", head, "PANALYTICAL");
    EXPECT_EQ(ERR_Pattern_Mess,
              " Error reading a profile XRDML-DATA file: end of file while trying to read positions axis=\"2Theta\"");
    Read_Text("d.xrdml", head + pos, "PANALYTICAL");
    EXPECT_EQ(ERR_Pattern_Mess,
              " Error reading a profile XRDML-DATA file: end of file while trying to read <intensities unit=\"counts\">");
    Read_Text("e.xrdml", head + pos + "<intensities unit=\"counts\"></intensities>", "PANALYTICAL");
    EXPECT_EQ(ERR_Pattern_Mess, " Error reading a profile XRDML-DATA file: npts <= 0 !!! ");
    // Another extension under this mode reads nothing and says so through the frame's checks.
    DIFFRACTION_PATTERN_TYPE none = Read_Text("f.txt", head, "PANALYTICAL");
    EXPECT_EQ(none.npts, 0);
}

TEST(VendorReaders, UxdPairsCountsAndMessages) {
    DIFFRACTION_PATTERN_TYPE p = Read_Text(
        "a.uxd", "; converted\n_SAMPLE='Si'\n_WL1=1.5406\n_STEPTIME=2.0\n_STEPSIZE=0.02\n_2THETACPS\n"
                 "10.00 50\n10.02 60\n10.04 70\n; next range\n_2THETACPS\n20.0 1\n",
        "SOCABIM");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(Trim(p.title), "Si");
    ASSERT_EQ(p.npts, 3);
    EXPECT_FLOAT_EQ(p.sigma(1), 25.0f);  // counts per second over 2 s
    EXPECT_NEAR(p.step, 0.02f, 1e-6);
    DIFFRACTION_PATTERN_TYPE q =
        Read_Text("b.uxd", "_START=20.0\n_STEPSIZE=0.5\n_STEPCOUNT=5\n_COUNTS\n 1 2 3\n 4 5 6 7\n", "SOCABIM");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(q.npts, 5);
    EXPECT_FLOAT_EQ(q.x(5), 22.0f);
    Read_Text("c.uxd", "_START=20.0\n", "SOCABIM");
    EXPECT_EQ(ERR_Pattern_Mess, " Error on Socabim UXD Intensity file, check your mode parameter!");
    Read_Text("d.uxd", "_2THETACOUNTS\n1 x\n", "SOCABIM");
    EXPECT_EQ(ERR_Pattern_Mess, " Error on Socabim UXD Intensity file, check your instr parameter!");
    Read_Text("e.uxd", "_2THETACOUNTS\n", "SOCABIM");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, Number of points negative or zero!");
}

TEST(VendorReaders, CifColumnsUncertaintiesAndChiSquare) {
    std::string cif = "data_x\n_pd_block_id  Demo|block\n_diffrn_radiation_probe  neutron\n"
                      "_pd_proc_number_of_points 4\n# a\n# b\n# c\nloop_\n_pd_proc_point_id\n"
                      "_pd_proc_2theta_corrected\n_pd_proc_intensity_total\n_pd_calc_intensity_total\n"
                      "_pd_proc_intensity_bkg_calc\n";
    cif += "1 10.0 100(10) 90 5\n2 10.1 200(20) 220 6\n3 10.2 50.0(5) 50.0 7\n4 10.3 7 7 8\n";
    cif += "5 10.4 0.0000001 5 9\n";  // sigma below 0.001: left out of the chi-square
    DIFFRACTION_PATTERN_TYPE p = Read_Text("demo.cif", cif, "CIF");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(p.npts, 5);
    EXPECT_FLOAT_EQ(p.sigma(1), 100.0f);     // (10)^2
    EXPECT_FLOAT_EQ(p.sigma(3), 0.25f);      // 50.0(5): 0.5
    EXPECT_FLOAT_EQ(p.ycalc(2), 220.0f);
    EXPECT_FLOAT_EQ(p.bgr(4), 8.0f);
    EXPECT_FALSE(p.ct_step);
    // ((100-90)/10)^2 + ((200-220)/20)^2 = 2, over 5 points.
    EXPECT_EQ(Trim(p.title), "Demo|block  Chi2(free) =   0.4000E+00");
    EXPECT_EQ(Trim(p.diff_kind), "neutron");
    EXPECT_EQ(Trim_Right(p.instr), "  XY  - CIF");

    Read_Text("short.cif", "data_x\nloop_\n", "CIF");
    EXPECT_EQ(ERR_Pattern_Mess, " Number of lines too small to hold a diffraction pattern, check your CIF file!");
    std::string no_y = "data_x\n#\n#\n#\n#\n#\n#\n#\nloop_\n_pd_proc_2theta_corrected\n1 2\n";
    Read_Text("noy.cif", no_y, "CIF");
    EXPECT_EQ(ERR_Pattern_Mess, " Error: experimental data are lacking, check your CIF file!");
}
