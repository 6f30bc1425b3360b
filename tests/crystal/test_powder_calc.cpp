// Scattering data against the published tables, and calculated powder
// intensities of five standards against gemmi's structure factors
// (tests/data/crystal/powder_reference.py).
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <numbers>
#include <sstream>

#include "crystal/powder_calc.h"
#include "crystal/reflections.h"
#include "crystal/scattering.h"
#include "crystal/structure.h"

namespace {

TEST(PowderCalc, ScatteringTypesAndTheirTables) {
    hxl::SCATTERER_TYPE s;
    std::string msg;
    struct CASE {
        const char* type;
        const char* element;
        int z, charge, mass;
        double b_fm;  // Sears 1992; isotopes from python3-periodictable 1.6.0
    };
    const CASE cases[] = {{"Si", "Si", 14, 0, 0, 4.1491}, {"FE", "Fe", 26, 0, 0, 9.45},  {"Fe3+", "Fe", 26, 3, 0, 9.45},
                          {"O2-", "O", 8, -2, 0, 5.803},  {"O-2", "O", 8, -2, 0, 5.803}, {"Cl-", "Cl", 17, -1, 0, 9.577},
                          {"D", "H", 1, 0, 2, 6.674},     {"7Li", "Li", 3, 0, 7, -2.22}, {"60Ni", "Ni", 28, 0, 60, 2.8},
                          {"11B", "B", 5, 0, 11, 6.65},   {"V", "V", 23, 0, 0, -0.3824}, {"O1", "O", 8, 0, 0, 5.803},
                          {"Ca2", "Ca", 20, 0, 0, 4.70},  {"H", "H", 1, 0, 0, -3.739}};
    for (const CASE& c : cases) {
        ASSERT_TRUE(hxl::Find_Scatterer(c.type, s, msg)) << c.type << ": " << msg;
        EXPECT_EQ(s.element, c.element) << c.type;
        EXPECT_EQ(s.z, c.z) << c.type;
        EXPECT_EQ(s.charge, c.charge) << c.type;
        EXPECT_EQ(s.mass, c.mass) << c.type;
        EXPECT_NEAR(s.b_fm, c.b_fm, 1e-3) << c.type;
        // f0(0) is the number of electrons of the atom or ion (the fit holds it to 0.3%).
        EXPECT_NEAR(hxl::Xray_F0(s, 0), c.z - c.charge, 0.003 * c.z + 0.01) << c.type;
        EXPECT_LT(hxl::Xray_F0(s, 1.0), hxl::Xray_F0(s, 0.2)) << c.type;
    }
    for (const char* bad : {"", "Qq", "12", "Fe9+", "99Ni", "+"}) EXPECT_FALSE(hxl::Find_Scatterer(bad, s, msg)) << bad;
}

// Ions have their own f0 (Waasmaier & Kirfel), which counts the ion's electrons at s = 0 and
// follows python3-periodictable's evaluation (ion_f0_reference.py); an ion the table lacks
// keeps the neutral atom's and says so.
TEST(PowderCalc, IonsHaveTheirOwnFormFactor) {
    std::ifstream in(std::string(ZD_TEST_DATA) + "/crystal/ion_f0_reference.txt");
    ASSERT_TRUE(in) << "ion_f0_reference.txt";
    hxl::SCATTERER_TYPE s;
    std::string msg;
    int rows = 0;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream w(line);
        std::string type;
        double stl = 0, f0 = 0;
        ASSERT_TRUE(w >> type >> stl >> f0) << line;
        ASSERT_TRUE(hxl::Find_Scatterer(type, s, msg)) << type << ": " << msg;
        EXPECT_TRUE(s.ion_f0) << type;
        EXPECT_NEAR(hxl::Xray_F0(s, stl), f0, 1e-5 * std::max(1.0, f0)) << type << " at " << stl;
        if (stl == 0) {
            EXPECT_NEAR(hxl::Xray_F0(s, 0), s.z - s.charge, 0.01) << type;
        }
        ++rows;
    }
    EXPECT_EQ(rows, 60);
    // Spellings of one ion give one f0; O2- differs from O where the outer electrons scatter.
    hxl::SCATTERER_TYPE o, o2;
    ASSERT_TRUE(hxl::Find_Scatterer("O-2", o2, msg) && hxl::Find_Scatterer("O", o, msg));
    ASSERT_TRUE(hxl::Find_Scatterer("O2-", s, msg));
    EXPECT_DOUBLE_EQ(hxl::Xray_F0(s, 0.2), hxl::Xray_F0(o2, 0.2));
    EXPECT_GT(hxl::Xray_F0(o2, 0.1) - hxl::Xray_F0(o, 0.1), 0.5);
    EXPECT_NEAR(hxl::Xray_F0(o2, 1.0), hxl::Xray_F0(o, 1.0), 0.05);
    ASSERT_TRUE(hxl::Find_Scatterer("Fe4+", s, msg));
    EXPECT_FALSE(s.ion_f0);
    EXPECT_NEAR(hxl::Xray_F0(s, 0), 26, 0.1);
}

TEST(PowderCalc, StandardsAgreeWithGemmiWithinOnePercent) {
    std::ifstream in(std::string(ZD_TEST_DATA) + "/crystal/powder_reference.txt");
    ASSERT_TRUE(in) << "powder_reference.txt";
    struct REF {
        double lambda = 0, tth = 0, inten = 0;
        bool neutron = false;
    };
    std::map<std::string, std::vector<REF>> ref;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream w(line);
        std::string file;
        REF r;
        int n = 0;
        w >> file >> r.lambda >> n >> r.tth >> r.inten;
        r.neutron = n != 0;
        ref[file].push_back(r);
    }
    ASSERT_EQ(ref.size(), 5u);
    const std::map<std::string, std::pair<double, double>> range = {{"Si.cif", {10, 140}},    {"LaB6.cif", {10, 140}},
                                                                   {"CeO2.cif", {10, 140}},  {"ALUMINA.cif", {10, 120}},
                                                                   {"PbSO4.cif", {10, 155}}};
    for (const auto& [file, lines] : ref) {
        SCOPED_TRACE(file);
        std::vector<hxl::STRUCTURE_TYPE> st;
        std::string msg;
        ASSERT_TRUE(hxl::Read_Structure_File(std::string(ZD_TEST_DATA) + "/crystal/structures/" + file, st, msg)) << msg;
        hxl::POWDER_CALC_SETTINGS set;
        set.lambda = lines[0].lambda;
        set.neutron = lines[0].neutron;
        set.tth_min = range.at(file).first;
        set.tth_max = range.at(file).second;
        std::vector<hxl::CALC_REFLECTION_TYPE> refl;
        std::vector<std::string> notes;
        ASSERT_TRUE(hxl::Calc_Powder_Reflections(st[0], set, refl, notes, msg)) << msg;
        EXPECT_TRUE(notes.empty()) << notes.front();  // Ce4+ and O2- have their own f0
        const auto ours = hxl::Powder_Lines(refl);
        std::size_t strong = 0;
        for (const auto& l : ours) strong += l.intensity >= 0.05;
        EXPECT_EQ(strong, lines.size());
        for (const REF& r : lines) {
            const hxl::POWDER_LINE_TYPE* match = nullptr;
            for (const auto& l : ours)
                if (std::abs(l.tth - r.tth) < 2e-4) match = &l;
            ASSERT_NE(match, nullptr) << r.tth;
            EXPECT_NEAR(match->intensity, r.inten, 0.01 * r.inten + 0.005) << r.tth;
        }
    }
}

TEST(PowderCalc, ProfileShapesAndScale) {
    // A pseudo-Voigt has unit area and its full width at half maximum is the width given.
    for (double eta : {0.0, 0.4, 1.0}) {
        double area = 0;
        for (double x = -200; x <= 200; x += 0.0005) area += hxl::Pseudo_Voigt(x, 0.1, eta) * 0.0005;
        EXPECT_NEAR(area, 1.0, 2e-4) << eta;  // the Lorentzian tails beyond 200 hold 1.6e-4
        EXPECT_NEAR(hxl::Pseudo_Voigt(0.05, 0.1, eta) / hxl::Pseudo_Voigt(0, 0.1, eta), 0.5, 1e-9) << eta;
    }
    // Caglioti at 2theta 90: tan 45 = 1, so FWHM^2 = U + V + W.
    EXPECT_NEAR(hxl::Caglioti_Fwhm(0.02, -0.01, 0.005, 90), std::sqrt(0.015), 1e-12);
    EXPECT_GT(hxl::Caglioti_Fwhm(0, -1, 0, 90), 0);
    // The scale alone: data = 3 calc gives 3, whatever the calc.
    const std::vector<double> c = {1, 4, 2, 0.5}, o = {3, 12, 6, 1.5};
    EXPECT_NEAR(hxl::Scale_To_Data(o, c), 3.0, 1e-12);
    EXPECT_EQ(hxl::Scale_To_Data(o, {0, 0, 0, 0}), 0);
}

// The width laws worked by hand: the fit's at 90 degrees, where tan 45 = 1; the resolution
// file's with HG = HL = 0.1, so H = 0.1 (1 + 2.69269 + 2.42843 + 4.47163 + 0.07842 + 1)^(1/5).
TEST(PowderCalc, WidthLawsAndTheTwoThetaOfEachXSpace) {
    hxl::LINE_SHAPE_TYPE fit;
    fit.u = 0.004, fit.v = -0.002, fit.w = 0.003, fit.z = 0.01, fit.eta = 0.3, fit.eta_x = 0.002;
    double fwhm = 0, eta = 0;
    hxl::Line_Width(fit, 90, fwhm, eta);
    EXPECT_NEAR(fwhm, std::sqrt(0.005) + 0.01 / std::cos(std::numbers::pi / 4), 1e-12);
    EXPECT_NEAR(eta, 0.48, 1e-12);
    fit.eta_x = 0.02;  // eta is held to [0, 1]
    hxl::Line_Width(fit, 90, fwhm, eta);
    EXPECT_EQ(eta, 1.0);
    hxl::LINE_SHAPE_TYPE tch;
    tch.tch = true;
    tch.u = tch.v = 0, tch.w = 0.01, tch.lx = 0, tch.ly = 0.1 * std::cos(std::numbers::pi / 6);
    hxl::Line_Width(tch, 60, fwhm, eta);
    EXPECT_NEAR(fwhm, 0.163464285, 1e-8);
    EXPECT_NEAR(eta, 0.682539192, 1e-8);
    tch.ly = 0;  // no Lorentzian: the Gaussian alone
    hxl::Line_Width(tch, 60, fwhm, eta);
    EXPECT_NEAR(fwhm, 0.1, 1e-12);
    EXPECT_EQ(eta, 0.0);
    // 2theta 60 at 1.5406 A is d 1.5406, Q 4.078401, s (1/d) 0.649098.
    double tth = 0;
    const std::pair<hxl::HKL_XSPACE, double> at60[] = {{hxl::HKL_XSPACE::TWOTHETA, 60},
                                                       {hxl::HKL_XSPACE::D, 1.5406},
                                                       {hxl::HKL_XSPACE::Q, 4.078401471621},
                                                       {hxl::HKL_XSPACE::S, 0.649097754122}};
    for (const auto& [space, x] : at60) {
        ASSERT_TRUE(hxl::Hkl_Two_Theta(space, x, 1.5406, tth));
        EXPECT_NEAR(tth, 60, 1e-9);
    }
    EXPECT_FALSE(hxl::Hkl_Two_Theta(hxl::HKL_XSPACE::D, 0.7, 1.5406, tth));  // below lambda / 2
    EXPECT_FALSE(hxl::Hkl_Two_Theta(hxl::HKL_XSPACE::D, 0, 1.5406, tth));
    EXPECT_FALSE(hxl::Hkl_Two_Theta(hxl::HKL_XSPACE::TOF, 5000, 1.5406, tth));
    EXPECT_FALSE(hxl::Hkl_Two_Theta(hxl::HKL_XSPACE::TWOTHETA, 180, 1.5406, tth));
}

TEST(PowderCalc, BadSettingsAreRefused) {
    std::vector<hxl::STRUCTURE_TYPE> st;
    std::string msg;
    ASSERT_TRUE(hxl::Read_Structure_File(std::string(ZD_TEST_DATA) + "/crystal/structures/Si.cif", st, msg)) << msg;
    std::vector<hxl::CALC_REFLECTION_TYPE> refl;
    std::vector<std::string> notes;
    hxl::POWDER_CALC_SETTINGS set;
    set.lambda = 0;
    EXPECT_FALSE(hxl::Calc_Powder_Reflections(st[0], set, refl, notes, msg));
    EXPECT_EQ(msg, "Bad wavelength");
    set.lambda = 1.54;
    set.tth_min = 50;
    set.tth_max = 40;
    EXPECT_FALSE(hxl::Calc_Powder_Reflections(st[0], set, refl, notes, msg));
    set.tth_min = 10;
    set.tth_max = 20;  // below the first line of Si
    ASSERT_TRUE(hxl::Calc_Powder_Reflections(st[0], set, refl, notes, msg)) << msg;
    EXPECT_TRUE(refl.empty());
    // An ion the tables lack is computed as its neutral atom, with a note.
    st[0].atoms[0].type = "Si2+";
    set.tth_max = 60;
    ASSERT_TRUE(hxl::Calc_Powder_Reflections(st[0], set, refl, notes, msg)) << msg;
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(notes[0], "Atom " + st[0].atoms[0].label + ": f0 of neutral Si used for Si2+");
}

}  // namespace
