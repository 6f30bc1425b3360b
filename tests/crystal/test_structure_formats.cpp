// SHELX, QVL and PCR structures: values worked by hand from the lines given.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>

#include "crystal/structure.h"

namespace {

constexpr double k8pi2 = 78.95683520871486;

const char* kShelx =
    "TITL test in P21/c\n"
    "CELL 0.71073 5.0 6.0 7.0 90.0 90.0 90.0\n"
    "ZERR 4 0.001 0.002 0.003 0 0 0\n"
    "LATT 1\n"
    "SYMM -X, 1/2+Y, 1/2-Z\n"
    "SFAC C H O NA\n"
    "UNIT 4 4 4 2\n"
    "L.S. 10\n"
    "FVAR 1.0 0.75\n"
    "C1 1 0.2 0.3 0.4 21.0 0.01 0.02 =\n"
    "   0.03 0.0 0.0 0.0\n"
    "H1 2 0.25 0.35 0.45 11.0 -1.5\n"
    "O1 3 0.1 0.2 0.3 11.0 0.02 ! a comment\n"
    "NA1 4 0.0 0.0 0.0 10.5 0.01\n"
    "HKLF 4\n"
    "END\n"
    "Q1 1 0.5 0.5 0.5 11.0 0.05\n";

TEST(StructureFormats, ShelxAtomsWithFreeVariablesRidingAndSpecialSites) {
    hxl::STRUCTURE_TYPE st;
    std::string msg;
    ASSERT_TRUE(hxl::Read_Shelx_Structure_Text(kShelx, st, msg)) << msg;
    EXPECT_EQ(st.title, "test in P21/c");
    EXPECT_EQ(st.sg.number, 14);
    EXPECT_EQ(st.sg.seitz.size(), 4u);
    EXPECT_FLOAT_EQ(st.cell[1], 6.0f);
    EXPECT_FLOAT_EQ(st.cell_std[2], 0.003f);
    ASSERT_EQ(st.atoms.size(), 4u);  // nothing after END
    const auto& c = st.atoms[0];
    EXPECT_EQ(c.type, "C");
    EXPECT_NEAR(c.occ, 0.75, 1e-6);            // 21.0 = 1 x fv(2)
    EXPECT_NEAR(c.biso, 0.02 * k8pi2, 1e-4);   // Ueq of an orthogonal cell
    EXPECT_TRUE(c.aniso);
    EXPECT_FLOAT_EQ(c.u[2], 0.03f);
    EXPECT_NEAR(st.atoms[1].biso, 1.5 * 0.02 * k8pi2, 1e-4);  // rides on C1
    EXPECT_NEAR(st.atoms[2].biso, 0.02 * k8pi2, 1e-4);
    EXPECT_FLOAT_EQ(st.atoms[2].x[2], 0.3f);
    EXPECT_EQ(st.atoms[3].mult, 2);  // on the inversion centre
    EXPECT_NEAR(st.atoms[3].occ, 1.0, 1e-6);  // sof 0.5 is a full half-site
    EXPECT_EQ(st.atoms[3].type, "NA");

    std::string bad = kShelx;
    bad.replace(bad.find("NA1 4"), 5, "NA1 7");
    EXPECT_FALSE(hxl::Read_Shelx_Structure_Text(bad, st, msg));
    EXPECT_NE(msg.find("atom NA1 names scattering factor 7, and SFAC gives 4"), std::string::npos) << msg;
    bad = kShelx;
    bad.replace(bad.find("21.0"), 4, "31.0");
    EXPECT_FALSE(hxl::Read_Shelx_Structure_Text(bad, st, msg));
    EXPECT_NE(msg.find("free variable 3"), std::string::npos) << msg;
    // Between 5 and 10 a value is neither a coordinate nor a code of a free variable.
    bad = kShelx;
    bad.replace(bad.find("0.1 0.2 0.3 11.0"), 3, "7.5");
    EXPECT_FALSE(hxl::Read_Shelx_Structure_Text(bad, st, msg));
    EXPECT_NE(msg.find("atom O1: the value 7.5"), std::string::npos) << msg;
    // A code far beyond any free variable (found by fuzzing: it overflowed an int).
    bad = kShelx;
    bad.replace(bad.find("0.1 0.2 0.3 11.0"), 3, "44444444444440.1");
    EXPECT_FALSE(hxl::Read_Shelx_Structure_Text(bad, st, msg));
    EXPECT_NE(msg.find("names no free variable"), std::string::npos) << msg;
    EXPECT_FALSE(hxl::Read_Shelx_Structure_Text("TITL x\nSFAC C\nC1 1 0 0 0 11 0.01\n", st, msg));
    EXPECT_EQ(msg, "The SHELX file has no CELL line");
    EXPECT_FALSE(hxl::Read_Shelx_Structure_Text("CELL 1 5 5 5 90 90 90\nSYMM x,y\nSFAC C\nC1 1 0 0 0\n", st, msg));
    EXPECT_NE(msg.find("is not an operator"), std::string::npos) << msg;
}

TEST(StructureFormats, QvlRecordsHaveTheirLayoutAndReadBack) {
    hxl::ATOM_SITE_TYPE a;
    a.label = "O1";
    a.type = "O";
    a.x[0] = 0.25f;
    a.x[1] = 0.5f;
    a.x[2] = 0.125f;
    a.biso = 0.5f;
    EXPECT_EQ(hxl::Qvl_Atom_Record(a), "Atom   O1     O        0.25000  0.50000  0.12500  0.50000  1.00000\n");
    hxl::STRUCTURE_TYPE st;
    st.title = "rock salt";
    st.sg_symbol = "F m -3 m";
    for (int k = 0; k < 3; ++k) st.cell[k] = 5.64f;
    hxl::ATOM_SITE_TYPE na;
    na.label = "Na1";
    na.type = "Na";
    hxl::ATOM_SITE_TYPE cl = na;
    cl.label = "Cl1";
    cl.type = "Cl";
    cl.x[0] = cl.x[1] = cl.x[2] = 0.5f;
    st.atoms = {na, cl};
    const std::string rec = hxl::Qvl_Structure_Records(st);
    EXPECT_EQ(rec.substr(0, rec.find('\n', rec.find("Cell")) + 1),
              "Spgr  F m -3 m\nCell        5.640000    5.640000    5.640000   90.000000   90.000000   90.000000\n");
    hxl::STRUCTURE_TYPE back;
    std::string msg;
    ASSERT_TRUE(hxl::Read_Qvl_Structure_Text("PATTERN_1   1.00\nTitle   rock salt\nPHASE_01   1.00\n" + rec, back, msg)) << msg;
    EXPECT_EQ(back.title, "rock salt");
    EXPECT_EQ(back.sg.number, 225);
    ASSERT_EQ(back.atoms.size(), 2u);
    EXPECT_EQ(back.atoms[1].label, "Cl1");
    EXPECT_EQ(back.atoms[1].type, "Cl");
    EXPECT_EQ(back.atoms[1].mult, 4);
    EXPECT_EQ(back.atoms[1].wyckoff, 'b');
    EXPECT_FLOAT_EQ(back.cell[2], 5.64f);
    EXPECT_FALSE(hxl::Read_Qvl_Structure_Text("Spgr P 1\nAtom O1 O 0 0 0 1 1\n", back, msg));
    EXPECT_EQ(msg, "The QVL file has no \"Cell\" record");
    EXPECT_FALSE(hxl::Read_Qvl_Structure_Text("Spgr P 1\nCell 5 5 5 90 90 90\nAtom O1 O 0 0,1 0 1 1\n", back, msg));
    EXPECT_NE(msg.find("QVL line 3:"), std::string::npos) << msg;
    EXPECT_FALSE(hxl::Read_Qvl_Structure_Text("Spgr P 1\nCell 5 5 5 90 90\nAtom O1 O 0 0 0\n", back, msg));
    EXPECT_NE(msg.find("six numbers"), std::string::npos) << msg;
    // A type that starts like an element but goes on with bytes no file should hold.
    EXPECT_FALSE(hxl::Read_Qvl_Structure_Text("Spgr P 1\nCell 5 5 5 90 90 90\nAtom Cl1 Cl\xff\xff 0 0 0 1 1\n", back, msg));
    EXPECT_NE(msg.find("atom Cl1: the label or the type holds a character that is not printable"), std::string::npos)
        << msg;
    // The panel's free words: type and occupancy may be left out.
    ASSERT_TRUE(hxl::Read_Atom_Words("Fe2  0.1 0.2 0.3 0.4", a, msg)) << msg;
    EXPECT_EQ(a.type, "Fe2");
    EXPECT_FLOAT_EQ(a.occ, 1.0f);
    EXPECT_FALSE(hxl::Read_Atom_Words("Fe2 Fe 0.1 0.2", a, msg));
    EXPECT_FALSE(hxl::Read_Atom_Words("0.1 0.2 0.3 0.4", a, msg));
}

const char* kPcr =
    "COMM PbSO4 test\n"
    "!-------------------------------------------------------------------------------\n"
    "!  Data for PHASE number:   1  ==> Current R_Bragg for Pattern#  1:     3.96\n"
    "!-------------------------------------------------------------------------------\n"
    "PbSO4\n"
    "!\n"
    "!Nat Dis Ang Pr1 Pr2 Pr3 Jbt Irf Isy Str Furth       ATZ    Nvk Npr More\n"
    "   2   0   0 0.0 0.0 1.0   0   0   0   0   0       1213.8    0   5   0\n"
    "!\n"
    "P n m a                  <--Space group symbol\n"
    "!Atom   Typ       X        Y        Z     Biso       Occ     In Fin N_t Spc /Codes\n"
    "Pb     PB      0.18749  0.25000  0.16719  1.45134   0.50000   0   0   0    0\n"
    "                 171.00     0.00   181.00   191.00     0.00\n"
    "O3     O       0.08100  0.02700  0.80900  1.30000   1.00000   0   0   2    0\n"
    "                   0.00     0.00     0.00     0.00     0.00\n"
    "  0.00100  0.00200  0.00300  0.00000  0.00000  0.00000\n"
    "     0.00     0.00     0.00     0.00     0.00     0.00\n"
    "!-------> Profile Parameters for Pattern #  1\n"
    "!  Scale        Shape1      Bov      Str1      Str2      Str3   Strain-Model\n"
    "  0.14   0.0  0.0 0.0 0.0 0.0 0\n"
    "!     a          b         c        alpha      beta       gamma      #Cell Info\n"
    "   8.477997   5.396924   6.957989  90.000000  90.000000  90.000000\n"
    "    0.00000    0.00000    0.00000    0.00000    0.00000    0.00000\n";

TEST(StructureFormats, PcrPhaseWithItsAtomsAndCell) {
    std::vector<hxl::STRUCTURE_TYPE> out;
    std::string msg;
    ASSERT_TRUE(hxl::Read_Pcr_Structures_Text(kPcr, out, msg)) << msg;
    ASSERT_EQ(out.size(), 1u);
    const auto& st = out[0];
    EXPECT_EQ(st.title, "PbSO4");
    EXPECT_EQ(st.sg.number, 62);
    EXPECT_FLOAT_EQ(st.cell[0], 8.477997f);
    EXPECT_FLOAT_EQ(st.cell[2], 6.957989f);
    ASSERT_EQ(st.atoms.size(), 2u);
    EXPECT_EQ(st.atoms[0].type, "PB");
    EXPECT_FLOAT_EQ(st.atoms[0].x[2], 0.16719f);
    EXPECT_FLOAT_EQ(st.atoms[0].biso, 1.45134f);
    EXPECT_NEAR(st.atoms[0].occ, 1.0, 1e-6);  // 0.5 of a site of 4 in a group of 8
    EXPECT_EQ(st.atoms[1].label, "O3");        // after the two lines of betas
    EXPECT_NEAR(st.atoms[1].occ, 1.0, 1e-6);

    std::string none = kPcr;
    const std::size_t a = none.find("Pb     PB"), b = none.find("!-------> Profile");
    none.erase(a, b - a);
    EXPECT_FALSE(hxl::Read_Pcr_Structures_Text(none, out, msg));
    EXPECT_EQ(msg, "The number of atoms is zero!, Check the PCR file ");
    EXPECT_FALSE(hxl::Read_Pcr_Structures_Text("COMM nothing\n", out, msg));
    EXPECT_NE(msg.find("<--Space group symbol"), std::string::npos);
    std::string badcell = kPcr;
    badcell.replace(badcell.find("5.396924"), 8, "5.39x924");
    EXPECT_FALSE(hxl::Read_Pcr_Structures_Text(badcell, out, msg));
    EXPECT_NE(msg.find("PCR line 22"), std::string::npos) << msg;

    // The ending of the file picks the reader.
    const auto dir = std::filesystem::temp_directory_path();
    const std::string pcr = (dir / "zd_struct_test.pcr").string(), res = (dir / "zd_struct_test.res").string(),
                      odd = (dir / "zd_struct_test.xyz").string();
    std::ofstream(pcr) << kPcr;
    std::ofstream(res) << kShelx;
    std::ofstream(odd) << kShelx;
    ASSERT_TRUE(hxl::Read_Structure_File(pcr, out, msg)) << msg;
    EXPECT_EQ(out[0].sg.number, 62);
    ASSERT_TRUE(hxl::Read_Structure_File(res, out, msg)) << msg;
    EXPECT_EQ(out[0].block, "zd_struct_test");
    EXPECT_EQ(out[0].sg.number, 14);
    EXPECT_FALSE(hxl::Read_Structure_File(odd, out, msg));
    EXPECT_FALSE(hxl::Read_Structure_File((dir / "zd_no_such_file.qvl").string(), out, msg));
    EXPECT_FALSE(hxl::Read_Structure_File((dir / "zd_no_such_file.cif").string(), out, msg));
    EXPECT_NE(msg.find("The CIF file cannot be read"), std::string::npos) << msg;
    for (const auto& f : {pcr, res, odd}) std::filesystem::remove(f);
}

}  // namespace
