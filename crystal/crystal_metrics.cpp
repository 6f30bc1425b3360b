#include "crystal/crystal_metrics.h"

#include <cmath>
#include <cstdio>

#include "support/fixed_text.h"

namespace hxl {

bool ERR_Crys = false;
std::string ERR_Crys_Mess;

void Clear_Crys_Error() {
    ERR_Crys = false;
    ERR_Crys_Mess.clear();
}

void Set_Crys_Error(const std::string& message) {
    ERR_Crys = true;
    ERR_Crys_Mess = Cut(message, 150);
}

namespace {

constexpr double to_rad = 3.14159265358979323846 / 180.0;

using Mat3d = double[3][3];

bool invert3(const Mat3d a, Mat3d b) {
    const double det = a[0][0] * (a[1][1] * a[2][2] - a[1][2] * a[2][1]) -
                       a[0][1] * (a[1][0] * a[2][2] - a[1][2] * a[2][0]) +
                       a[0][2] * (a[1][0] * a[2][1] - a[1][1] * a[2][0]);
    double scale = 0;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) scale = std::fmax(scale, std::fabs(a[i][j]));
    if (!std::isfinite(det) || scale == 0 || std::fabs(det) <= 1e-10 * scale * scale * scale) return false;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            const int i1 = (j + 1) % 3, i2 = (j + 2) % 3, j1 = (i + 1) % 3, j2 = (i + 2) % 3;
            b[i][j] = (a[i1][j1] * a[i2][j2] - a[i1][j2] * a[i2][j1]) / det;
        }
    return true;
}

// Normalises the frame option; returns false when two letters name no frame.
bool normalise_cartype(std::string& t) {
    std::string s = Cut(Upper(Adjustl(t)), 2);
    s = Trim_Right(s);
    if (s.size() == 2) {
        if (s == "CA" || s == "AC" || s == "BC" || s == "BA" || s == "CB") {
            t = s;
            return true;
        }
        t = "CA";
        return false;
    }
    if (s == "A") t = "AC";
    else if (s == "B") t = "BC";
    else t = "CA";
    return true;
}

// The "CA" frame: columns are the cell axes in Cartesian components.
void orthog_ca(const double c[3], const double ang_deg[3], Mat3d m) {
    const double ca = std::cos(ang_deg[0] * to_rad), cb = std::cos(ang_deg[1] * to_rad),
                 cg = std::cos(ang_deg[2] * to_rad);
    const double sa = std::sin(ang_deg[0] * to_rad), sb = std::sin(ang_deg[1] * to_rad);
    const double cgs = (ca * cb - cg) / (sa * sb);
    const double sgs = std::sqrt(std::fabs(1.0 - cgs * cgs));
    m[0][0] = c[0] * sb * sgs; m[0][1] = 0;          m[0][2] = 0;
    m[1][0] = -c[0] * sb * cgs; m[1][1] = c[1] * sa; m[1][2] = 0;
    m[2][0] = c[0] * cb;       m[2][1] = c[1] * ca;  m[2][2] = c[2];
}

int axis_index(char c) { return c == 'A' ? 0 : (c == 'B' ? 1 : 2); }

// Any frame: rotate the "CA" one so that the named direct axis and the named
// reciprocal axis lie along their Cartesian axes.
bool orthog(const double c[3], const double ang_deg[3], const std::string& type, Mat3d m) {
    Mat3d m0, inv;
    orthog_ca(c, ang_deg, m0);
    if (type == "CA") {
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) m[i][j] = m0[i][j];
        return true;
    }
    if (!invert3(m0, inv)) return false;
    const int ip = axis_index(type[0]), iq = axis_index(type[1]), ir = 3 - ip - iq;
    double up[3], uq[3], w[3];
    double np = 0, nq = 0;
    for (int k = 0; k < 3; ++k) {
        up[k] = m0[k][ip];
        uq[k] = inv[iq][k];  // rows of the inverse are the reciprocal axes
        np += up[k] * up[k];
        nq += uq[k] * uq[k];
    }
    np = std::sqrt(np);
    nq = std::sqrt(nq);
    for (int k = 0; k < 3; ++k) {
        up[k] /= np;
        uq[k] /= nq;
    }
    const bool cyclic = (ip + 1) % 3 == iq;
    const double* u1 = cyclic ? up : uq;
    const double* u2 = cyclic ? uq : up;
    w[0] = u1[1] * u2[2] - u1[2] * u2[1];
    w[1] = u1[2] * u2[0] - u1[0] * u2[2];
    w[2] = u1[0] * u2[1] - u1[1] * u2[0];
    const double* rows[3];
    rows[ip] = up;
    rows[iq] = uq;
    rows[ir] = w;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            double s = 0;
            for (int k = 0; k < 3; ++k) s += rows[i][k] * m0[k][j];
            m[i][j] = s;
        }
    return true;
}

void to_double(const float in[3], double out[3]) {
    for (int i = 0; i < 3; ++i) out[i] = in[i];
}

}  // namespace

bool Invert_Matrix3(const float in[3][3], float out[3][3]) {
    Mat3d a, b;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) a[i][j] = in[i][j];
    if (!invert3(a, b)) return false;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) out[i][j] = static_cast<float>(b[i][j]);
    return true;
}

void Get_Cryst_Orthog_Matrix(const float cell[3], const float ang[3], float matrix[3][3], std::string& CarType) {
    Clear_Crys_Error();
    if (!normalise_cartype(CarType))
        Set_Crys_Error("Invalid CarType in call to Get_Cryst_Orthog_Matrix. Reset to default");
    double c[3], a[3];
    to_double(cell, c);
    to_double(ang, a);
    Mat3d m;
    if (!orthog(c, a, CarType, m)) {
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) matrix[i][j] = 0;
        return;
    }
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) matrix[i][j] = static_cast<float>(m[i][j]);
}

void Fill_Cell_Record(const float cell[3], const float ang[3], Cell_Record& r, const std::string& CarType,
                      const float* cell_std, const float* ang_std) {
    Clear_Crys_Error();
    double c[3], a[3];
    for (int i = 0; i < 3; ++i) {
        r.cell[i] = cell[i];
        r.ang[i] = ang[i] < 1e-5f ? 90.0f : ang[i];
        r.cell_std[i] = cell_std ? cell_std[i] : 0.0f;
        r.ang_std[i] = ang_std ? ang_std[i] : 0.0f;
        c[i] = r.cell[i];
        a[i] = r.ang[i];
    }
    double ca[3], sa[3];
    for (int i = 0; i < 3; ++i) {
        ca[i] = std::cos(a[i] * to_rad);
        sa[i] = std::sin(a[i] * to_rad);
    }
    const double d = std::fabs(1.0 - ca[0] * ca[0] - ca[1] * ca[1] - ca[2] * ca[2] + 2.0 * ca[0] * ca[1] * ca[2]);
    const double v = c[0] * c[1] * c[2] * std::sqrt(d);
    r.volume = static_cast<float>(v);
    r.recip_volume = v > 0 ? static_cast<float>(1.0 / v) : 0.0f;

    double rc[3], rca[3];
    for (int i = 0; i < 3; ++i) {
        const int j = (i + 1) % 3, k = (i + 2) % 3;
        rc[i] = v > 0 ? c[j] * c[k] * sa[i] / v : 0.0;
        const double den = sa[j] * sa[k];
        rca[i] = den != 0 ? (ca[j] * ca[k] - ca[i]) / den : 0.0;
        rca[i] = std::fmax(-1.0, std::fmin(1.0, rca[i]));
        r.recip_cell[i] = static_cast<float>(rc[i]);
        r.recip_ang[i] = static_cast<float>(std::acos(rca[i]) / to_rad);
    }

    std::string type = CarType;
    if (!normalise_cartype(type))
        Set_Crys_Error("Invalid CarType in call to Get_Cryst_Orthog_Matrix. Reset to default");
    r.CarType = type;
    Mat3d m, mi;
    if (!orthog(c, a, type, m) || !invert3(m, mi)) {
        Set_Crys_Error(" Bad cell parameters ");
        return;
    }
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            r.to_cartesian[i][j] = static_cast<float>(m[i][j]);
            r.from_cartesian[i][j] = static_cast<float>(mi[i][j]);
        }

    double sl = 0, sang = 0;
    for (int i = 0; i < 3; ++i) {
        sl += r.cell_std[i];
        sang += r.ang_std[i];
    }
    if (sl >= 1e-5 || sang >= 1e-5) {
        double sum = 0;
        for (int i = 0; i < 3; ++i) {
            const double rel = r.cell_std[i] / c[i];
            sum += rel * rel;
            const int j = (i + 1) % 3, k = (i + 2) % 3;
            const double t = sa[i] * (ca[i] - ca[j] * ca[k]) / d * (r.ang_std[i] * to_rad);
            sum += t * t;
        }
        r.volume_std = static_cast<float>(std::sqrt(sum) * v);
    } else {
        r.volume_std = 0;
    }

    for (int i = 0; i < 3; ++i) {
        r.metric_direct[i][i] = static_cast<float>(c[i] * c[i]);
        r.metric_recip[i][i] = static_cast<float>(rc[i] * rc[i]);
    }
    auto put = [](float g[3][3], int i, int j, double x) {
        g[i][j] = static_cast<float>(x);
        g[j][i] = static_cast<float>(x);
    };
    put(r.metric_direct, 0, 1, c[0] * c[1] * ca[2]);
    put(r.metric_direct, 0, 2, c[0] * c[2] * ca[1]);
    put(r.metric_direct, 1, 2, c[1] * c[2] * ca[0]);
    put(r.metric_recip, 0, 1, rc[0] * rc[1] * rca[2]);
    put(r.metric_recip, 0, 2, rc[0] * rc[2] * rca[1]);
    put(r.metric_recip, 1, 2, rc[1] * rc[2] * rca[0]);

    const double sgs = std::sqrt(std::fabs(1 - rca[2] * rca[2])), sbs = std::sqrt(std::fabs(1 - rca[1] * rca[1]));
    Mat3d bl = {{rc[0], rc[1] * rca[2], rc[2] * rca[1]},
                {0, rc[1] * sgs, -rc[2] * sbs * ca[0]},
                {0, 0, c[2] != 0 ? 1.0 / c[2] : 0.0}};
    Mat3d bli;
    if (!invert3(bl, bli)) {
        Set_Crys_Error(" Bad cell parameters ");
        return;
    }
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            r.busing_levy[i][j] = static_cast<float>(bl[i][j]);
            r.busing_levy_inv[i][j] = static_cast<float>(bli[i][j]);
        }
}

void Get_Deriv_Orth_Cell(const Cell_Record& record, float deriv[3][3][6], const std::string& CarType) {
    Clear_Crys_Error();
    std::string t = CarType;
    if (!normalise_cartype(t)) {
        Set_Crys_Error("Invalid CarType in call to Get_Deriv_Orth_Cell");
        return;
    }
    if (t != "CA" && t != "BA") {
        Set_Crys_Error("CarType not supported in  Get_Deriv_Orth_Cell");
        return;
    }
    // Central differences in double precision: the matrix is smooth in all six.
    double p[6];
    for (int i = 0; i < 3; ++i) {
        p[i] = record.cell[i];
        p[i + 3] = record.ang[i];
    }
    for (int k = 0; k < 6; ++k) {
        const double h = k < 3 ? 1e-5 * std::fmax(1.0, p[k]) : 1e-4;
        double q1[6], q2[6];
        for (int i = 0; i < 6; ++i) q1[i] = q2[i] = p[i];
        q1[k] += h;
        q2[k] -= h;
        Mat3d m1, m2;
        orthog(q1, q1 + 3, t, m1);
        orthog(q2, q2 + 3, t, m2);
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) deriv[i][j][k] = static_cast<float>((m1[i][j] - m2[i][j]) / (2 * h));
    }
}

namespace {

void put_matrix(std::ostream& u, const char* title, const float m[3][3]) {
    char buf[120];
    u << title << "\n";
    for (int i = 0; i < 3; ++i) {
        std::snprintf(buf, sizeof buf, "%16.6f%16.6f%16.6f", static_cast<double>(m[i][0]),
                      static_cast<double>(m[i][1]), static_cast<double>(m[i][2]));
        u << buf << "\n";
    }
}

}  // namespace

void List_Cell(const Cell_Record& r, std::ostream& u) {
    char buf[200];
    u << "\n" << "        Metric information:\n" << "        -------------------\n\n";
    u << " => Direct cell parameters:\n\n";
    std::snprintf(buf, sizeof buf, "         a = %10.4f      b = %10.4f      c = %10.4f\n", static_cast<double>(r.cell[0]),
                  static_cast<double>(r.cell[1]), static_cast<double>(r.cell[2]));
    u << buf;
    std::snprintf(buf, sizeof buf, "     alpha = %10.3f   beta = %10.3f  gamma = %10.3f\n", static_cast<double>(r.ang[0]),
                  static_cast<double>(r.ang[1]), static_cast<double>(r.ang[2]));
    u << buf;
    std::snprintf(buf, sizeof buf, "                        Direct Cell Volume = %12.4f\n\n", static_cast<double>(r.volume));
    u << buf;
    u << " => Reciprocal cell parameters:\n\n";
    std::snprintf(buf, sizeof buf, "         a*= %10.6f      b*= %10.6f      c*= %10.6f\n", static_cast<double>(r.recip_cell[0]),
                  static_cast<double>(r.recip_cell[1]), static_cast<double>(r.recip_cell[2]));
    u << buf;
    std::snprintf(buf, sizeof buf, "     alpha*= %10.3f   beta*= %10.3f  gamma*= %10.3f\n", static_cast<double>(r.recip_ang[0]),
                  static_cast<double>(r.recip_ang[1]), static_cast<double>(r.recip_ang[2]));
    u << buf;
    std::snprintf(buf, sizeof buf, "                    Reciprocal Cell Volume = %12.8f\n\n", static_cast<double>(r.recip_volume));
    u << buf;
    put_matrix(u, " => Direct and Reciprocal Metric Tensors:\n\n                   GD", r.metric_direct);
    put_matrix(u, "\n                   GR", r.metric_recip);
    u << "\n => Cartesian frame: " << r.CarType << "\n";
    put_matrix(u, "\n => Crystallographic to Cartesian matrix:", r.to_cartesian);
    put_matrix(u, "\n => Busing-Levy B-matrix:", r.busing_levy);
    put_matrix(u, "\n => Inverse of the Busing-Levy B-matrix:", r.busing_levy_inv);
}

}  // namespace hxl
