// Cell metrics against the independent oracle, the Cartesian frames and the messages.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

#include "crystal/crystal_metrics.h"

namespace {

using namespace hxl;

TEST(CellMetrics, VolumesReciprocalCellsAndTensorsMatchTheOracle) {
    std::ifstream in(std::string(ZD_TEST_DATA) + "/crystal/cells.txt");
    ASSERT_TRUE(in.good());
    int n = 0;
    for (std::string line; std::getline(in, line);) {
        std::istringstream s(line);
        double v[25];
        for (double& x : v) s >> x;
        ASSERT_TRUE(s) << line;
        const float cell[3] = {float(v[0]), float(v[1]), float(v[2])}, ang[3] = {float(v[3]), float(v[4]), float(v[5])};
        Cell_Record r;
        Fill_Cell_Record(cell, ang, r);
        ASSERT_FALSE(ERR_Crys) << ERR_Crys_Mess;
        SCOPED_TRACE(line);
        EXPECT_NEAR(r.volume, v[6], 1e-5 * v[6]);
        EXPECT_NEAR(r.recip_volume * v[6], 1.0, 1e-5);
        for (int i = 0; i < 3; ++i) {
            EXPECT_NEAR(r.recip_cell[i], v[7 + i], 1e-5 * v[7 + i]);
            EXPECT_NEAR(r.recip_ang[i], v[10 + i], 2e-3);
            EXPECT_NEAR(r.metric_direct[i][i], v[13 + i], 1e-5 * v[13 + i]);
            EXPECT_NEAR(r.metric_recip[i][i], v[19 + i], 1e-5 * v[19 + i]);
        }
        const int off[3][2] = {{0, 1}, {0, 2}, {1, 2}};
        for (int k = 0; k < 3; ++k) {
            const int i = off[k][0], j = off[k][1];
            EXPECT_NEAR(r.metric_direct[i][j], v[16 + k], 1e-4 + 1e-5 * std::fabs(v[16 + k]));
            EXPECT_NEAR(r.metric_direct[j][i], r.metric_direct[i][j], 0);
            EXPECT_NEAR(r.metric_recip[i][j], v[22 + k], 1e-7 + 1e-5 * std::fabs(v[22 + k]));
        }
        ++n;
    }
    EXPECT_EQ(n, 8);
}

// Columns of to_cartesian are the axes; rows of from_cartesian the reciprocal axes.
void expect_frame(const Cell_Record& r, int direct_axis, int recip_axis) {
    for (int i = 0; i < 3; ++i) {
        if (i != direct_axis) {
            EXPECT_NEAR(r.to_cartesian[i][direct_axis], 0.0f, 1e-5) << r.CarType;
        }
    }
    EXPECT_GT(r.to_cartesian[direct_axis][direct_axis], 0.0f);
    for (int j = 0; j < 3; ++j) {
        if (j != recip_axis) {
            EXPECT_NEAR(r.from_cartesian[recip_axis][j], 0.0f, 1e-6) << r.CarType;
        }
    }
    // Lengths and the right hand are kept by every frame.
    for (int c = 0; c < 3; ++c) {
        double l = 0;
        for (int i = 0; i < 3; ++i) l += double(r.to_cartesian[i][c]) * r.to_cartesian[i][c];
        EXPECT_NEAR(std::sqrt(l), r.cell[c], 1e-4);
    }
    const auto& m = r.to_cartesian;
    const double det = m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) - m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
                       m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
    EXPECT_NEAR(det, r.volume, 1e-3);
}

TEST(CellMetrics, CartesianFramesAndTheirNormalisation) {
    const float cell[3] = {5.1f, 6.2f, 7.3f}, ang[3] = {81, 95.5f, 103.2f};
    const struct {
        const char* in;
        const char* out;
        int d, r;
    } cases[] = {{"", "CA", 2, 0},  {"CA", "CA", 2, 0}, {"ca", "CA", 2, 0}, {" ac", "AC", 0, 2}, {"BC", "BC", 1, 2},
                 {"BA", "BA", 1, 0}, {"CB", "CB", 2, 1}, {"B", "BC", 1, 2},  {"A", "AC", 0, 2},  {"C", "CA", 2, 0},
                 {"Q", "CA", 2, 0}};
    for (const auto& c : cases) {
        Cell_Record r;
        Fill_Cell_Record(cell, ang, r, c.in);
        EXPECT_FALSE(ERR_Crys) << c.in;
        EXPECT_EQ(r.CarType, c.out);
        expect_frame(r, c.d, c.r);
    }
    Cell_Record r;
    Fill_Cell_Record(cell, ang, r, "XY");
    EXPECT_TRUE(ERR_Crys);
    EXPECT_EQ(ERR_Crys_Mess, "Invalid CarType in call to Get_Cryst_Orthog_Matrix. Reset to default");
    EXPECT_EQ(r.CarType, "CA");
    std::string t = "zz";
    float m[3][3];
    Get_Cryst_Orthog_Matrix(cell, ang, m, t);
    EXPECT_TRUE(ERR_Crys);
    EXPECT_EQ(t, "CA");
    EXPECT_NEAR(m[0][1], 0.0f, 1e-6);
}

TEST(CellMetrics, AnglesStdBusingLevyAndBadCells) {
    const float cell[3] = {4, 5, 6}, zero[3] = {0, 0, 0};
    Cell_Record r;
    Fill_Cell_Record(cell, zero, r);
    for (float a : r.ang) EXPECT_EQ(a, 90.0f);
    EXPECT_NEAR(r.volume, 120.0f, 1e-4);
    EXPECT_EQ(r.volume_std, 0.0f);

    const float c3[3] = {10, 10, 10}, sd[3] = {0.01f, 0, 0}, ang[3] = {90, 90, 90}, angsd[3] = {0, 0, 0};
    Fill_Cell_Record(c3, ang, r, "", sd, angsd);
    EXPECT_NEAR(r.volume_std, 1.0f, 1e-4);  // V = abc: sigma V = bc sigma a
    const float angsd2[3] = {0, 0.1f, 0};
    const float mono[3] = {90, 100, 90};
    Fill_Cell_Record(c3, mono, r, "", zero, angsd2);
    // V = abc sin(beta): sigma V = abc |cos(beta)| sigma beta (radians)
    EXPECT_NEAR(r.volume_std, 1000.0 * std::fabs(std::cos(100 * M_PI / 180)) * 0.1 * M_PI / 180, 1e-3);

    // B h has the length of the reciprocal vector, and B times its inverse is one.
    const float tcell[3] = {5.1f, 6.2f, 7.3f}, tang[3] = {81, 95.5f, 103.2f};
    Fill_Cell_Record(tcell, tang, r);
    const int h[3] = {2, -1, 3};
    double bh[3] = {0, 0, 0}, q = 0;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            bh[i] += r.busing_levy[i][j] * h[j];
            q += h[i] * double(r.metric_recip[i][j]) * h[j];
        }
    EXPECT_NEAR(bh[0] * bh[0] + bh[1] * bh[1] + bh[2] * bh[2], q, 1e-5);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            double s = 0;
            for (int k = 0; k < 3; ++k) s += double(r.busing_levy[i][k]) * r.busing_levy_inv[k][j];
            EXPECT_NEAR(s, i == j ? 1.0 : 0.0, 1e-5);
        }

    const float flat[3] = {4, 0, 6};
    Fill_Cell_Record(flat, ang, r);
    EXPECT_TRUE(ERR_Crys);
    EXPECT_EQ(ERR_Crys_Mess, " Bad cell parameters ");
    EXPECT_EQ(r.volume, 0.0f);
}

TEST(CellMetrics, DerivativesOfTheOrthogonalMatrixAndTheListing) {
    const float cell[3] = {5.1f, 6.2f, 7.3f}, ang[3] = {81, 95.5f, 103.2f};
    Cell_Record r;
    Fill_Cell_Record(cell, ang, r);
    float d[3][3][6];
    Get_Deriv_Orth_Cell(r, d, "CA");
    EXPECT_FALSE(ERR_Crys);
    // The "CA" matrix is linear in c: d/dc of column c is (0,0,1).
    EXPECT_NEAR(d[2][2][2], 1.0f, 1e-3);
    EXPECT_NEAR(d[0][0][2], 0.0f, 1e-3);
    Get_Deriv_Orth_Cell(r, d, "CB");
    EXPECT_EQ(ERR_Crys_Mess, "CarType not supported in  Get_Deriv_Orth_Cell");
    Get_Deriv_Orth_Cell(r, d, "QQ");
    EXPECT_EQ(ERR_Crys_Mess, "Invalid CarType in call to Get_Deriv_Orth_Cell");

    std::ostringstream o;
    List_Cell(r, o);
    const std::string s = o.str();
    for (const char* label : {"Metric information:", "=> Direct cell parameters:", "=> Reciprocal cell parameters:",
                              "Busing-Levy"})
        EXPECT_NE(s.find(label), std::string::npos) << label;
    EXPECT_NE(s.find("5.1000"), std::string::npos);
}

}  // namespace
