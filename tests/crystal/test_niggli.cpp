// Niggli reduction on lattices whose reduced cell is known, and the cell tools.
#include <gtest/gtest.h>

#include <cmath>

#include "crystal/niggli_cell.h"

namespace {

using namespace hxl;

void metric(const float cell[3], const float ang[3], double g[3][3]) {
    Cell_Record r;
    Fill_Cell_Record(cell, ang, r);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) g[i][j] = r.metric_direct[i][j];
}

// Every other basis of the same lattice reduces to the same cell, and the
// returned matrix takes the given basis to the reduced one.
TEST(Niggli, EveryNonReducedSettingReducesToTheSameCell) {
    const struct {
        float cell[3], ang[3];
    } lattices[] = {{{4.0f, 5.0f, 6.0f}, {90, 90, 90}},
                    {{3.0f, 4.0f, 5.0f}, {80, 85, 75}},
                    {{3.5f, 3.5f, 3.5f}, {60, 60, 60}},     // cubic F primitive cell
                    {{5.0f, 5.0f, 7.0f}, {90, 90, 120}},
                    {{4.2f, 5.3f, 6.1f}, {100, 110, 95}}};
    const int bases[][3][3] = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                               {{1, 1, 0}, {0, 1, 0}, {0, 0, 1}},
                               {{1, 0, 2}, {0, 1, -1}, {0, 0, 1}},
                               {{2, 1, 1}, {1, 1, 0}, {1, 1, 1}},
                               {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}},
                               {{1, -3, 1}, {0, 1, 2}, {0, 0, 1}},
                               {{-1, 0, 0}, {0, 1, 0}, {0, 0, -1}},
                               {{3, 2, 0}, {1, 1, 0}, {1, 2, 1}}};
    for (const auto& lat : lattices) {
        Cell_Record ref;
        int t0[3][3];
        Niggli_Cell_Params(lat.cell, lat.ang, ref, t0);
        ASSERT_FALSE(ERR_Crys) << ERR_Crys_Mess;
        double g[3][3];
        metric(lat.cell, lat.ang, g);
        for (const auto& m : bases) {
            // G' = M^T G M for the basis whose columns are the rows of M transposed.
            float gp[3][3];
            for (int i = 0; i < 3; ++i)
                for (int j = 0; j < 3; ++j) {
                    double s = 0;
                    for (int k = 0; k < 3; ++k)
                        for (int l = 0; l < 3; ++l) s += m[k][i] * g[k][l] * m[l][j];
                    gp[i][j] = static_cast<float>(s);
                }
            float g0[3][3];
            for (int i = 0; i < 3; ++i)
                for (int j = 0; j < 3; ++j) g0[i][j] = gp[i][j];
            Cell_Record red;
            int t[3][3];
            Niggli_Cell_NiggliMat(gp, red, t);
            ASSERT_FALSE(ERR_Crys) << ERR_Crys_Mess;
            for (int i = 0; i < 3; ++i) {
                EXPECT_NEAR(red.cell[i], ref.cell[i], 2e-3 * ref.cell[i]);
                EXPECT_NEAR(red.ang[i], ref.ang[i], 0.05);
            }
            EXPECT_NEAR(red.volume, ref.volume, 1e-3 * ref.volume);
            for (int i = 0; i < 3; ++i)
                for (int j = 0; j < 3; ++j) {
                    double s = 0;
                    for (int k = 0; k < 3; ++k)
                        for (int l = 0; l < 3; ++l) s += t[k][i] * double(g0[k][l]) * t[l][j];
                    EXPECT_NEAR(s, gp[i][j], 2e-3 * (1 + std::fabs(s)));
                }
        }
    }
    // The reduced form of the 60-degree rhombohedron: three equal axes, all 60.
    const float c[3] = {3.5f, 3.5f, 3.5f}, a[3] = {60, 60, 60};
    Cell_Record r;
    int t[3][3];
    Niggli_Cell_Params(c, a, r, t);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(r.ang[i], 60.0f, 1e-3);
    // A body-centred setting of a tetragonal lattice reduces to its conventional axes.
    const float ct[3] = {4, 4, 9}, at[3] = {90, 90, 90};
    double gt[3][3];
    metric(ct, at, gt);
    const int mb[3][3] = {{1, 0, 1}, {0, 1, 1}, {0, 0, 1}};
    float g2[3][3];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            double s = 0;
            for (int k = 0; k < 3; ++k)
                for (int l = 0; l < 3; ++l) s += mb[k][i] * gt[k][l] * mb[l][j];
            g2[i][j] = float(s);
        }
    Niggli_Cell_NiggliMat(g2, r, t);
    EXPECT_NEAR(r.cell[0], 4.0f, 1e-3);
    EXPECT_NEAR(r.cell[1], 4.0f, 1e-3);
    EXPECT_NEAR(r.cell[2], 9.0f, 1e-3);
}

TEST(Niggli, BadInputAndTheCellTools) {
    float g[3][3] = {{0, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    Cell_Record r;
    int t[3][3];
    Niggli_Cell_NiggliMat(g, r, t);
    EXPECT_TRUE(ERR_Crys);
    EXPECT_EQ(t[0][0], 1);

    const float v1[3] = {1, 0, 0}, v2[3] = {0, 2, 0}, v3[3] = {1, 2, 0}, v4[3] = {0.5f, 0, 3};
    Cell_From_Vectors(v1, v2, v3, r);
    EXPECT_TRUE(ERR_Crys);
    EXPECT_EQ(ERR_Crys_Mess, "The three input vectors are nor linearly independent!");
    Cell_From_Vectors(v1, v2, v4, r);
    EXPECT_FALSE(ERR_Crys);
    EXPECT_NEAR(r.cell[2], std::sqrt(9.25f), 1e-5);
    EXPECT_NEAR(r.ang[1], std::acos(0.5 / std::sqrt(9.25)) * 180 / M_PI, 1e-3);
    EXPECT_NEAR(r.volume, 6.0f, 1e-4);

    const float ok[3] = {100, 100, 100}, bad[3] = {150, 150, 100}, worse[3] = {20, 20, 60};
    EXPECT_TRUE(Cell_Angles_Allowed(ok));
    EXPECT_FALSE(Cell_Angles_Allowed(bad));
    EXPECT_EQ(ERR_Crys_Mess, "The provided angles cannot set a unit cell!");
    EXPECT_FALSE(Cell_Angles_Allowed(worse));

    std::string fam;
    Get_Crystal_Family("hexagonal", fam);
    EXPECT_EQ(fam, "Hexagonal");
    Get_Crystal_Family("CUBI", fam);
    EXPECT_EQ(fam, "Cubic");
    Get_Crystal_Family("ROMB", fam);
    EXPECT_TRUE(ERR_Crys);
    EXPECT_EQ(ERR_Crys_Mess, "Error obtaining Crystal Familiy");
}

}  // namespace
