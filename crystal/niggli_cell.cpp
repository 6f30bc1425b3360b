#include "crystal/niggli_cell.h"

#include <cmath>

#include "support/fixed_text.h"

namespace hxl {

namespace {

constexpr double to_deg = 180.0 / 3.14159265358979323846;

void mul_trans(int t[3][3], const int m[3][3]) {
    int r[3][3];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            r[i][j] = 0;
            for (int k = 0; k < 3; ++k) r[i][j] += t[i][k] * m[k][j];
        }
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) t[i][j] = r[i][j];
}

double sgn(double x) { return x < 0 ? -1.0 : 1.0; }

// The Krivy-Gruber steps on A, B, C, xi, eta, zeta; true when reduced.
bool krivy_gruber(double& A, double& B, double& C, double& xi, double& eta, double& zeta, int t[3][3]) {
    const double eps = 1e-4 * std::cbrt(std::fabs(A * B * C));
    auto lt = [eps](double a, double b) { return a < b - eps; };
    auto gt = [eps](double a, double b) { return a > b + eps; };
    auto eq = [eps](double a, double b) { return std::fabs(a - b) <= eps; };
    auto sign3 = [eps](double x) { return x > eps ? 1 : (x < -eps ? -1 : 0); };
    for (int round = 1; round <= 100; ++round) {
        if (gt(A, B) || (eq(A, B) && gt(std::fabs(xi), std::fabs(eta)))) {  // A1
            std::swap(A, B);
            std::swap(xi, eta);
            const int m[3][3] = {{0, -1, 0}, {-1, 0, 0}, {0, 0, -1}};
            mul_trans(t, m);
        }
        if (gt(B, C) || (eq(B, C) && gt(std::fabs(eta), std::fabs(zeta)))) {  // A2
            std::swap(B, C);
            std::swap(eta, zeta);
            const int m[3][3] = {{-1, 0, 0}, {0, 0, -1}, {0, -1, 0}};
            mul_trans(t, m);
            continue;
        }
        const int l = sign3(xi), m = sign3(eta), n = sign3(zeta);
        if (l * m * n == 1) {  // A3
            const int d[3][3] = {{l, 0, 0}, {0, m, 0}, {0, 0, n}};
            mul_trans(t, d);
            xi = std::fabs(xi);
            eta = std::fabs(eta);
            zeta = std::fabs(zeta);
        } else {  // A4
            int f[3] = {1, 1, 1};
            int zero = -1;
            const int s[3] = {l, m, n};
            for (int i = 0; i < 3; ++i) {
                if (s[i] == 1) f[i] = -1;
                else if (s[i] == 0) zero = i;
            }
            if (f[0] * f[1] * f[2] < 0 && zero >= 0) f[zero] = -1;
            if (f[0] * f[1] * f[2] > 0) {
                const int d[3][3] = {{f[0], 0, 0}, {0, f[1], 0}, {0, 0, f[2]}};
                mul_trans(t, d);
            }
            xi = -std::fabs(xi);
            eta = -std::fabs(eta);
            zeta = -std::fabs(zeta);
        }
        if (gt(std::fabs(xi), B) || (eq(xi, B) && lt(2 * eta, zeta)) || (eq(xi, -B) && lt(zeta, 0))) {  // A5
            const double s = sgn(xi);
            C = B + C - xi * s;
            eta = eta - zeta * s;
            xi = xi - 2 * B * s;
            const int mm[3][3] = {{1, 0, 0}, {0, 1, -static_cast<int>(s)}, {0, 0, 1}};
            mul_trans(t, mm);
            continue;
        }
        if (gt(std::fabs(eta), A) || (eq(eta, A) && lt(2 * xi, zeta)) || (eq(eta, -A) && lt(zeta, 0))) {  // A6
            const double s = sgn(eta);
            C = A + C - eta * s;
            xi = xi - zeta * s;
            eta = eta - 2 * A * s;
            const int mm[3][3] = {{1, 0, -static_cast<int>(s)}, {0, 1, 0}, {0, 0, 1}};
            mul_trans(t, mm);
            continue;
        }
        if (gt(std::fabs(zeta), A) || (eq(zeta, A) && lt(2 * xi, eta)) || (eq(zeta, -A) && lt(eta, 0))) {  // A7
            const double s = sgn(zeta);
            B = A + B - zeta * s;
            xi = xi - eta * s;
            zeta = zeta - 2 * A * s;
            const int mm[3][3] = {{1, -static_cast<int>(s), 0}, {0, 1, 0}, {0, 0, 1}};
            mul_trans(t, mm);
            continue;
        }
        const double sum = xi + eta + zeta + A + B;
        if (lt(sum, 0) || (eq(sum, 0) && gt(2 * (A + eta) + zeta, 0))) {  // A8
            C = A + B + C + xi + eta + zeta;
            xi = 2 * B + xi + zeta;
            eta = 2 * A + eta + zeta;
            const int mm[3][3] = {{1, 0, 1}, {0, 1, 1}, {0, 0, 1}};
            mul_trans(t, mm);
            continue;
        }
        return true;
    }
    return false;
}

void cell_from_g(double A, double B, double C, double xi, double eta, double zeta, Cell_Record& r) {
    const float cell[3] = {static_cast<float>(std::sqrt(A)), static_cast<float>(std::sqrt(B)),
                           static_cast<float>(std::sqrt(C))};
    auto angle = [](double num, double den) {
        double c = den > 0 ? num / den : 0.0;
        c = std::fmax(-1.0, std::fmin(1.0, c));
        return static_cast<float>(std::acos(c) * to_deg);
    };
    const float ang[3] = {angle(xi, 2 * std::sqrt(B * C)), angle(eta, 2 * std::sqrt(A * C)),
                          angle(zeta, 2 * std::sqrt(A * B))};
    Fill_Cell_Record(cell, ang, r);
}

}  // namespace

void Niggli_Cell_NiggliMat(float g[3][3], Cell_Record& reduced, int trans[3][3]) {
    Clear_Crys_Error();
    double A = g[0][0], B = g[1][1], C = g[2][2], xi = 2.0 * g[1][2], eta = 2.0 * g[0][2], zeta = 2.0 * g[0][1];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) trans[i][j] = i == j ? 1 : 0;
    if (!(A > 0 && B > 0 && C > 0) || !std::isfinite(A * B * C)) {
        Set_Crys_Error(" Bad cell parameters ");
        return;
    }
    const bool done = krivy_gruber(A, B, C, xi, eta, zeta, trans);
    g[0][0] = static_cast<float>(A);
    g[1][1] = static_cast<float>(B);
    g[2][2] = static_cast<float>(C);
    g[1][2] = g[2][1] = static_cast<float>(xi / 2);
    g[0][2] = g[2][0] = static_cast<float>(eta / 2);
    g[0][1] = g[1][0] = static_cast<float>(zeta / 2);
    cell_from_g(A, B, C, xi, eta, zeta, reduced);
    if (!done) Set_Crys_Error(" The limit of iterations in Niggli_Cell_NiggliMat has been reached!");
}

void Niggli_Cell_Params(const float cell[3], const float ang[3], Cell_Record& reduced, int trans[3][3]) {
    Cell_Record r;
    Fill_Cell_Record(cell, ang, r);
    if (ERR_Crys) {
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) trans[i][j] = i == j ? 1 : 0;
        return;
    }
    float g[3][3];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) g[i][j] = r.metric_direct[i][j];
    Niggli_Cell_NiggliMat(g, reduced, trans);
}

void Cell_From_Vectors(const float v1[3], const float v2[3], const float v3[3], Cell_Record& record) {
    Clear_Crys_Error();
    const float* v[3] = {v1, v2, v3};
    double len[3], dot[3];
    for (int i = 0; i < 3; ++i) {
        double s = 0;
        for (int k = 0; k < 3; ++k) s += static_cast<double>(v[i][k]) * v[i][k];
        len[i] = std::sqrt(s);
    }
    const double det = static_cast<double>(v1[0]) * (v2[1] * v3[2] - v2[2] * v3[1]) -
                       static_cast<double>(v1[1]) * (v2[0] * v3[2] - v2[2] * v3[0]) +
                       static_cast<double>(v1[2]) * (v2[0] * v3[1] - v2[1] * v3[0]);
    if (!(std::fabs(det) > 1e-6 * len[0] * len[1] * len[2])) {
        Set_Crys_Error("The three input vectors are nor linearly independent!");
        return;
    }
    for (int i = 0; i < 3; ++i) {
        const float* p = v[(i + 1) % 3];
        const float* q = v[(i + 2) % 3];
        double s = 0;
        for (int k = 0; k < 3; ++k) s += static_cast<double>(p[k]) * q[k];
        dot[i] = s;
    }
    float cell[3], ang[3];
    for (int i = 0; i < 3; ++i) {
        cell[i] = static_cast<float>(len[i]);
        ang[i] = static_cast<float>(std::acos(dot[i] / (len[(i + 1) % 3] * len[(i + 2) % 3])) * to_deg);
    }
    Fill_Cell_Record(cell, ang, record);
}

bool Cell_Angles_Allowed(const float ang[3]) {
    Clear_Crys_Error();
    const double a = ang[0], b = ang[1], c = ang[2];
    const bool ok = a > 0 && b > 0 && c > 0 && a + b + c < 360.0 && a < b + c && b < a + c && c < a + b;
    if (!ok) Set_Crys_Error("The provided angles cannot set a unit cell!");
    return ok;
}

void Get_Crystal_Family(const std::string& name, std::string& family) {
    Clear_Crys_Error();
    static const char* const keys[7] = {"TRIC", "MONO", "ORTH", "TETR", "TRIG", "HEXA", "CUBI"};
    static const char* const names[7] = {"Triclinic", "Monoclinic", "Orthorhombic", "Tetragonal",
                                         "Trigonal",  "Hexagonal",  "Cubic"};
    const std::string key = Cut(Upper(Adjustl(name)), 4);
    for (int i = 0; i < 7; ++i)
        if (key == keys[i]) {
            family = names[i];
            return;
        }
    family.clear();
    Set_Crys_Error("Error obtaining Crystal Familiy");
}

}  // namespace hxl
