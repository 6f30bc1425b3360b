// The CIF structure reader on real and hand-made files, its refusals, and the
// round trip through the writer.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>

#include "crystal/structure.h"

namespace {

const std::string kDir = std::string(ZD_TEST_DATA) + "/crystal/structures/";

std::vector<hxl::STRUCTURE_TYPE> read_ok(const std::string& file) {
    std::vector<hxl::STRUCTURE_TYPE> out;
    std::string msg;
    EXPECT_TRUE(hxl::Read_Structure_File(file, out, msg)) << file << ": " << msg;
    return out;
}

std::string refusal(const std::string& text) {
    std::vector<hxl::STRUCTURE_TYPE> out;
    std::string msg;
    EXPECT_FALSE(hxl::Read_Cif_Structures_Text(text, "test", out, msg)) << text;
    return msg;
}

TEST(StructureCif, RealFilesGiveCellGroupAndAtoms) {
    // Corundum: R -3 c by its symbol alone, Uiso in the file.
    auto al = read_ok(kDir + "ALUMINA.cif");
    ASSERT_EQ(al.size(), 1u);
    EXPECT_EQ(al[0].block, "ALUMINA_publ");
    EXPECT_FLOAT_EQ(al[0].cell[0], 4.760773f);
    EXPECT_FLOAT_EQ(al[0].cell_std[0], 0.000025f);  // "4.760773(25)"
    EXPECT_FLOAT_EQ(al[0].cell[2], 12.99719f);
    EXPECT_FLOAT_EQ(al[0].cell[5], 120.0f);
    EXPECT_EQ(al[0].sg.number, 167);
    EXPECT_EQ(al[0].sg.seitz.size(), 36u);
    ASSERT_EQ(al[0].atoms.size(), 2u);
    EXPECT_EQ(al[0].atoms[0].label, "Al1");
    EXPECT_EQ(al[0].atoms[0].mult, 12);  // the file says 12 as well
    EXPECT_EQ(al[0].atoms[0].wyckoff, 'c');
    EXPECT_EQ(al[0].atoms[1].mult, 18);
    EXPECT_EQ(al[0].atoms[1].wyckoff, 'e');
    // B = 8 pi^2 U: 78.9568 * 0.00218
    EXPECT_NEAR(al[0].atoms[0].biso, 0.172126, 1e-5);
    EXPECT_NEAR(al[0].atoms[1].x[0], 0.30655, 1e-7);
    EXPECT_NEAR(al[0].atoms[1].x_std[0], 0.00008, 1e-9);

    // A COD powder CIF: operators listed, R -3 in hexagonal axes, 9 atoms on 18f.
    auto zn = read_ok(std::string(ZD_TEST_DATA) + "/patterns/1517474.cif");
    ASSERT_EQ(zn.size(), 1u);
    EXPECT_EQ(zn[0].sg.number, 148);
    EXPECT_EQ(zn[0].sg.seitz.size(), 18u);
    ASSERT_EQ(zn[0].atoms.size(), 9u);
    for (const auto& a : zn[0].atoms) EXPECT_EQ(a.mult, 18) << a.label;
    EXPECT_FLOAT_EQ(zn[0].cell[0], 25.9292f);

    // Six blocks, three of them phases; the diffractograms are passed over.
    auto multi = read_ok(std::string(ZD_TEST_DATA) + "/patterns/multi_one.cif");
    ASSERT_EQ(multi.size(), 3u);
    EXPECT_EQ(multi[0].block, "Selenium_0");
    EXPECT_EQ(multi[0].sg.number, 166);
    EXPECT_EQ(multi[1].sg.number, 139);
    EXPECT_EQ(multi[2].block, "This_is_a_unique_string");
}

TEST(StructureCif, EveryWayOfNamingTheGroup) {
    // Operators win: the symbol of PbSO4 is there, the operators decide.
    auto pb = read_ok(kDir + "PbSO4.cif");
    EXPECT_EQ(pb[0].sg.number, 62);
    EXPECT_EQ(pb[0].symops.size(), 8u);
    EXPECT_EQ(pb[0].atoms[4].mult, 8);
    EXPECT_EQ(pb[0].atoms[4].wyckoff, 'd');
    EXPECT_EQ(pb[0].atoms[0].wyckoff, 'c');
    // Hall symbol, ions as types.
    auto ce = read_ok(kDir + "CeO2.cif");
    EXPECT_EQ(ce[0].sg.number, 225);
    EXPECT_EQ(ce[0].atoms[0].mult, 4);
    EXPECT_EQ(ce[0].atoms[1].mult, 8);
    EXPECT_EQ(ce[0].atoms[1].wyckoff, 'c');
    // Dot names, an old cubic spelling "Pm3m", U with uncertainties.
    auto lab = read_ok(kDir + "LaB6.cif");
    EXPECT_EQ(lab[0].sg.number, 221);
    EXPECT_EQ(lab[0].atoms[1].mult, 6);
    EXPECT_EQ(lab[0].atoms[1].wyckoff, 'f');
    EXPECT_NEAR(lab[0].atoms[1].biso_std, 0.0003 * 78.95684, 1e-6);
    // The origin choice written after the symbol.
    auto si = read_ok(kDir + "Si.cif");
    EXPECT_EQ(si[0].sg.number, 227);
    EXPECT_EQ(si[0].atoms[0].mult, 8);
    EXPECT_EQ(si[0].atoms[0].wyckoff, 'a');
    // A number alone, and the symbol of the old names with " H".
    const std::string head = "data_x\n_cell_length_a 5\n_cell_length_b 5\n_cell_length_c 7\n_cell_angle_gamma 120\n";
    const std::string atoms = "loop_\n_atom_site_label\n_atom_site_fract_x\n_atom_site_fract_y\n_atom_site_fract_z\nFe1 0 0 0.1\n";
    std::vector<hxl::STRUCTURE_TYPE> out;
    std::string msg;
    ASSERT_TRUE(hxl::Read_Cif_Structures_Text(head + "_symmetry_Int_Tables_number 148\n" + atoms, "t", out, msg)) << msg;
    EXPECT_EQ(out[0].sg.seitz.size(), 18u);
    EXPECT_EQ(out[0].atoms[0].type, "Fe1");  // no type: the label names the element
    EXPECT_EQ(out[0].atoms[0].mult, 6);
    ASSERT_TRUE(hxl::Read_Cif_Structures_Text(head + "_symmetry_space_group_name_H-M 'R -3 H'\n" + atoms, "t", out, msg)) << msg;
    EXPECT_EQ(out[0].sg.number, 148);
}

TEST(StructureCif, BadFilesAreRefusedNamingBlockAndItem) {
    const std::string cell = "_cell_length_a 5\n_cell_length_b 5\n_cell_length_c 5\n";
    const std::string sg = "_symmetry_space_group_name_H-M 'P 1'\n";
    const std::string loop = "loop_\n_atom_site_label\n_atom_site_type_symbol\n_atom_site_fract_x\n_atom_site_fract_y\n_atom_site_fract_z\n";
    std::string m = refusal("data_pat\n" + cell + sg);
    EXPECT_NE(m.find("No data block"), std::string::npos) << m;
    m = refusal("data_nocell\n" + sg + loop + "O1 O 0 0 0\n");
    EXPECT_NE(m.find("block nocell, item _cell_length_a"), std::string::npos) << m;
    m = refusal("data_dup\n" + cell + "_cell_length_a 6\n" + sg + loop + "O1 O 0 0 0\n");
    EXPECT_NE(m.find("block dup, item _cell_length_a: given twice"), std::string::npos) << m;
    // The same value twice is harmless.
    std::vector<hxl::STRUCTURE_TYPE> out;
    EXPECT_TRUE(hxl::Read_Cif_Structures_Text("data_d\n" + cell + "_cell_length_a 5\n" + sg + loop + "O1 O 0 0 0\n", "t", out, m)) << m;
    m = refusal("data_ops\n" + cell + "loop_\n_symmetry_equiv_pos_as_xyz\nx,y,z\n'-x,y,q'\n" + loop + "O1 O 0 0 0\n");
    EXPECT_NE(m.find("block ops, item _symmetry_equiv_pos_as_xyz: \"-x,y,q\" is not an operator"), std::string::npos) << m;
    m = refusal("data_el\n" + cell + sg + loop + "Q1 Qq 0 0 0\n");
    EXPECT_NE(m.find("block el, item _atom_site_type_symbol, atom Q1: unknown element"), std::string::npos) << m;
    m = refusal("data_xyz\n" + cell + sg + loop + "O1 O 0.1 ? 0\n");
    EXPECT_NE(m.find("block xyz, item _atom_site_fract_y, atom O1: no coordinate"), std::string::npos) << m;
    m = refusal("data_num\n" + cell + sg + loop + "O1 O 0.1 0.2x 0\n");
    EXPECT_NE(m.find("item _atom_site_fract_y, atom O1: \"0.2x\" is not a number"), std::string::npos) << m;
    m = refusal("data_grp\n" + cell + "_symmetry_space_group_name_H-M 'P 7 2 2'\n" + loop + "O1 O 0 0 0\n");
    EXPECT_NE(m.find("block grp: the space group \"P 7 2 2\" cannot be read"), std::string::npos) << m;
    m = refusal("data_nogrp\n" + cell + loop + "O1 O 0 0 0\n");
    EXPECT_NE(m.find("block nogrp: no space group"), std::string::npos) << m;
    m = refusal("data_cut\n" + cell + loop + "O1 O 0 0\n");
    EXPECT_NE(m.find("cannot be read"), std::string::npos) << m;
    m = refusal("data_neg\n_cell_length_a -5\n_cell_length_b 5\n_cell_length_c 5\n" + sg + loop + "O1 O 0 0 0\n");
    EXPECT_NE(m.find("block neg"), std::string::npos) << m;
    // Bytes that CIF does not allow outside quotes.
    m = refusal("data_bytes\n" + cell + sg + loop + "Cl1 Cl\xff\xff 0 0 0\n");
    EXPECT_NE(m.find("The CIF file cannot be read: test:"), std::string::npos) << m;
    m = refusal("");
    EXPECT_NE(m.find("no data block"), std::string::npos) << m;
}

TEST(StructureCif, ValuesWithUncertainties) {
    double v = 0, s = 0;
    ASSERT_TRUE(hxl::Read_Value_Std("1.234(5)", v, s));
    EXPECT_DOUBLE_EQ(v, 1.234);
    EXPECT_NEAR(s, 0.005, 1e-15);
    ASSERT_TRUE(hxl::Read_Value_Std("-0.5(12)", v, s));
    EXPECT_NEAR(s, 1.2, 1e-12);
    ASSERT_TRUE(hxl::Read_Value_Std("1200(30)", v, s));
    EXPECT_NEAR(s, 30, 1e-12);
    ASSERT_TRUE(hxl::Read_Value_Std("1.5e-3(2)", v, s));
    EXPECT_NEAR(s, 0.0002, 1e-15);
    ASSERT_TRUE(hxl::Read_Value_Std("90", v, s));
    EXPECT_EQ(s, 0);
    for (const char* bad : {"?", ".", "", "1.2.3", "1.2(3", "1.2(a)", "(3)", "nan", "1.2()", "1(1234567890123456789)"})
        EXPECT_FALSE(hxl::Read_Value_Std(bad, v, s)) << bad;
    // An uncertainty far larger than the value (found by fuzzing: the writer gave 12 digits
    // the reader refused) is written so that it reads back.
    hxl::STRUCTURE_TYPE st;
    std::vector<hxl::STRUCTURE_TYPE> list, back;
    std::string m;
    ASSERT_TRUE(hxl::Read_Cif_Structures_Text("data_x\n_cell_length_a 4.15689\n_cell_length_b 4.15689\n"
                                              "_cell_length_c 4.15689\n_cell_angle_alpha 90\n_cell_angle_beta 90\n"
                                              "_cell_angle_gamma 90\n_space_group_name_H-M_alt 'P m -3 m'\nloop_\n"
                                              "_atom_site_label\n_atom_site_type_symbol\n_atom_site_fract_x\n"
                                              "_atom_site_fract_y\n_atom_site_fract_z\n_atom_site_U_iso_or_equiv\n"
                                              "La1 La 0 0 0 0.0050(200043)\nB1 B 0.2 0.5 0.5 0.01(7)\n",
                                              "big", list, m))
        << m;
    for (const auto& one : list) {
        ASSERT_TRUE(hxl::Read_Cif_Structures_Text(hxl::Cif_Structure_Text(one), "back", back, m)) << m;
        ASSERT_EQ(back.size(), 1u);
        EXPECT_NEAR(back[0].atoms[0].biso_std, one.atoms[0].biso_std, 1e-6 * one.atoms[0].biso_std);
    }
}

void expect_same(const hxl::STRUCTURE_TYPE& a, const hxl::STRUCTURE_TYPE& b) {
    EXPECT_EQ(a.title, b.title);
    for (int k = 0; k < 6; ++k) {
        EXPECT_EQ(a.cell[k], b.cell[k]) << k;
        EXPECT_EQ(a.cell_std[k], b.cell_std[k]) << k;
    }
    EXPECT_EQ(a.sg.seitz.size(), b.sg.seitz.size());
    EXPECT_EQ(a.sg.number, b.sg.number);
    EXPECT_EQ(a.sg_symbol, b.sg_symbol);
    ASSERT_EQ(a.atoms.size(), b.atoms.size());
    for (std::size_t i = 0; i < a.atoms.size(); ++i) {
        const auto &p = a.atoms[i], &q = b.atoms[i];
        EXPECT_EQ(p.label, q.label);
        EXPECT_EQ(p.type, q.type);
        for (int k = 0; k < 3; ++k) {
            EXPECT_EQ(p.x[k], q.x[k]);
            EXPECT_EQ(p.x_std[k], q.x_std[k]);
        }
        EXPECT_EQ(p.biso, q.biso) << p.label;
        EXPECT_EQ(p.biso_std, q.biso_std) << p.label;
        EXPECT_EQ(p.occ, q.occ);
        EXPECT_EQ(p.mult, q.mult);
        EXPECT_EQ(p.wyckoff, q.wyckoff);
        EXPECT_EQ(p.aniso, q.aniso);
        for (int k = 0; k < 6; ++k) EXPECT_EQ(p.u[k], q.u[k]);
    }
}

TEST(StructureCif, RoundTripThroughTheWriterIsIdentical) {
    const std::string tmp = (std::filesystem::temp_directory_path() / "zd_struct_roundtrip.cif").string();
    std::string msg;
    for (const std::string& f : {kDir + "ALUMINA.cif", kDir + "PbSO4.cif", kDir + "LaB6.cif", kDir + "CeO2.cif",
                                std::string(ZD_TEST_DATA) + "/patterns/1517474.cif"}) {
        auto first = read_ok(f);
        ASSERT_FALSE(first.empty());
        ASSERT_TRUE(hxl::Write_Cif_Structure(tmp, first[0], msg)) << msg;
        std::vector<hxl::STRUCTURE_TYPE> second;
        ASSERT_TRUE(hxl::Read_Structure_File(tmp, second, msg)) << f << ": " << msg;
        ASSERT_EQ(second.size(), 1u);
        SCOPED_TRACE(f);
        expect_same(first[0], second[0]);
    }
    // What CIF cannot hold is written so that the file still reads.
    hxl::STRUCTURE_TYPE odd = read_ok(kDir + "LaB6.cif")[0];
    odd.block = "a block#with 'odd' names";
    odd.title = "tab\tand \"both\" 'quotes'";
    std::vector<hxl::STRUCTURE_TYPE> again;
    ASSERT_TRUE(hxl::Read_Cif_Structures_Text(hxl::Cif_Structure_Text(odd), "t", again, msg)) << msg;
    EXPECT_EQ(again[0].block, "a_block_with__odd__names");
    EXPECT_EQ(again[0].title, "tab?and \"both\" 'quotes'");
    // Anisotropic U survives too, and gives Biso from Ueq when no iso value is given:
    // orthogonal cell, Ueq = (U11 + U22 + U33) / 3 = 0.02.
    const std::string aniso =
        "data_an\n_cell_length_a 4\n_cell_length_b 5\n_cell_length_c 6\n_symmetry_space_group_name_H-M 'P 1'\n"
        "loop_\n_atom_site_label\n_atom_site_type_symbol\n_atom_site_fract_x\n_atom_site_fract_y\n_atom_site_fract_z\n"
        "Cu1 Cu 0.1 0.2 0.3\nloop_\n_atom_site_aniso_label\n_atom_site_aniso_U_11\n_atom_site_aniso_U_22\n"
        "_atom_site_aniso_U_33\n_atom_site_aniso_U_12\n_atom_site_aniso_U_13\n_atom_site_aniso_U_23\n"
        "Cu1 0.01 0.02 0.03 0.001 0 0\n";
    std::vector<hxl::STRUCTURE_TYPE> a, b;
    ASSERT_TRUE(hxl::Read_Cif_Structures_Text(aniso, "t", a, msg)) << msg;
    EXPECT_NEAR(a[0].atoms[0].biso, 0.02 * 78.956835, 1e-5);
    ASSERT_TRUE(hxl::Read_Cif_Structures_Text(hxl::Cif_Structure_Text(a[0]), "t", b, msg)) << msg;
    expect_same(a[0], b[0]);
    std::filesystem::remove(tmp);
}

}  // namespace
