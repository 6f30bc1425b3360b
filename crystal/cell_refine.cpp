// Gauss-Newton refinement of the free cell parameters (and a zero shift) on peak positions.
#include "crystal/cell_refine.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "support/matrix_inverse.h"

namespace hxl {

namespace {

constexpr double rad = 3.14159265358979323846 / 180.0;

// Which parameter each of a b c alpha beta gamma follows (-1: fixed at `fixed`).
struct CELL_MAP {
    int of[6] = {-1, -1, -1, -1, -1, -1};
    double fixed[6] = {0, 0, 0, 90, 90, 90};
    int n = 0;
};

bool close_len(double x, double y) { return std::fabs(x - y) <= 1e-4 * std::max(std::fabs(x), std::fabs(y)); }
bool close_ang(double x, double y) { return std::fabs(x - y) <= 0.01; }

// The axis a monoclinic group keeps: its twofold axis or the normal of its mirror.
int unique_axis(const SPACE_GROUP_TYPE& sg) {
    for (const SEITZ_TYPE& s : sg.seitz) {
        int plus = 0, minus = 0, pi = -1, mi = -1;
        bool diagonal = true;
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j)
                if (i != j && s.r[i][j] != 0) diagonal = false;
        if (!diagonal) continue;
        for (int i = 0; i < 3; ++i) {
            if (s.r[i][i] == 1) ++plus, pi = i;
            else ++minus, mi = i;
        }
        if (plus == 1 && minus == 2) return pi;
        if (plus == 2 && minus == 1) return mi;
    }
    return 1;
}

// The map for the group's system, or a text saying which rule the cell breaks.
std::string build_map(const double c[6], const SPACE_GROUP_TYPE& sg, CELL_MAP& m) {
    const std::string& sys = sg.crystal_system;
    auto free_param = [&](std::initializer_list<int> comps) {
        for (int i : comps) m.of[i] = m.n;
        ++m.n;
    };
    auto angles = [&](double al, double be, double ga) {
        m.fixed[3] = al, m.fixed[4] = be, m.fixed[5] = ga;
    };
    if (sys == "Cubic") {
        if (!close_len(c[0], c[1]) || !close_len(c[0], c[2])) return "a cubic cell needs a = b = c";
        free_param({0, 1, 2});
    } else if (sys == "Tetragonal" || sys == "Hexagonal" || sys == "Trigonal") {
        const bool rhombohedral = sys == "Trigonal" && close_len(c[0], c[1]) && close_len(c[0], c[2]) &&
                                  close_ang(c[3], c[4]) && close_ang(c[3], c[5]) && !close_ang(c[5], 120);
        if (rhombohedral) {
            free_param({0, 1, 2});
            free_param({3, 4, 5});
            return "";
        }
        if (!close_len(c[0], c[1])) return "a " + sys + " cell needs a = b";
        const double ga = sys == "Tetragonal" ? 90 : 120;
        if (!close_ang(c[3], 90) || !close_ang(c[4], 90) || !close_ang(c[5], ga))
            return "a " + sys + " cell needs alpha = beta = 90 and gamma = " + (ga == 90 ? "90" : "120");
        free_param({0, 1});
        free_param({2});
        angles(90, 90, ga);
    } else if (sys == "Orthorhombic") {
        if (!close_ang(c[3], 90) || !close_ang(c[4], 90) || !close_ang(c[5], 90))
            return "an orthorhombic cell needs its angles at 90";
        free_param({0});
        free_param({1});
        free_param({2});
    } else if (sys == "Monoclinic") {
        const int u = unique_axis(sg);
        for (int i = 0; i < 3; ++i)
            if (i != u && !close_ang(c[3 + i], 90))
                return std::string("a monoclinic cell with unique axis ") + "abc"[u] + " needs the other angles at 90";
        free_param({0});
        free_param({1});
        free_param({2});
        free_param({3 + u});
    } else {
        for (int i = 0; i < 6; ++i) free_param({i});
    }
    return "";
}

// The direct metric of a cell and its inverse; false when the cell is none.
bool metrics(const double c[6], Eigen::Matrix3d& gs) {
    for (int i = 0; i < 3; ++i)
        if (!(c[i] > 0) || !(c[3 + i] > 0 && c[3 + i] < 180)) return false;
    const double ca = std::cos(c[3] * rad), cb = std::cos(c[4] * rad), cg = std::cos(c[5] * rad);
    const double v2 = 1 - ca * ca - cb * cb - cg * cg + 2 * ca * cb * cg;
    if (!(v2 > 1e-10)) return false;
    Eigen::Matrix3d g;
    g << c[0] * c[0], c[0] * c[1] * cg, c[0] * c[2] * cb, c[0] * c[1] * cg, c[1] * c[1], c[1] * c[2] * ca,
        c[0] * c[2] * cb, c[1] * c[2] * ca, c[2] * c[2];
    gs = g.inverse();
    return gs.allFinite();
}

struct MATCH {
    int obs;
    int h, k, l;
    bool operator==(const MATCH&) const = default;
};

// Each peak with the reflection nearest to it within the tolerance.
bool match(const std::vector<double>& x_obs, const double c[6], double zero, const SPACE_GROUP_TYPE& sg,
           const CELL_REFINE_SETTINGS_TYPE& st, std::vector<MATCH>& out, std::string& message) {
    out.clear();
    float cf[3], af[3];
    for (int i = 0; i < 3; ++i) cf[i] = static_cast<float>(c[i]), af[i] = static_cast<float>(c[3 + i]);
    Cell_Record rec;
    Fill_Cell_Record(cf, af, rec);
    if (ERR_Crys || !(rec.volume > 0)) {
        message = "Wrong cell parameters";
        return false;
    }
    double qmax = 0;
    std::vector<double> q(x_obs.size(), -1);
    for (std::size_t i = 0; i < x_obs.size(); ++i)
        if (std::isfinite(x_obs[i]) && Q_Of_X(st.x, x_obs[i] - zero, q[i])) qmax = std::max(qmax, q[i]);
    if (!(qmax > 0)) {
        message = "No peak to compare with";
        return false;
    }
    std::vector<HKL_GEN_TYPE> refl;
    if (!Reflections_To_Q(rec, sg, st.x, qmax * 1.05 + 1e-6, refl, message)) return false;
    for (std::size_t i = 0; i < x_obs.size(); ++i) {
        if (q[i] < 0) continue;
        const double x = x_obs[i] - zero;
        const int j = Nearest_Reflection(refl, st.x.space, x);
        const double tol = st.tolerance > 0 ? st.tolerance : Default_Peak_Tolerance(st.x, x);
        if (j >= 0 && std::fabs(refl[j].pos - x) <= tol) out.push_back({static_cast<int>(i), refl[j].h, refl[j].k, refl[j].l});
    }
    return true;
}

// Residuals x_obs - x_calc and, when `jac` is given, their derivatives with
// respect to the parameters (the model's, so with the sign of x_calc).
bool model(const std::vector<double>& x_obs, const std::vector<MATCH>& mt, const CELL_MAP& m, const Eigen::VectorXd& p,
           bool zero_free, const PEAK_XSPACE_TYPE& xs, Eigen::VectorXd& res, Eigen::MatrixXd* jac) {
    double c[6];
    for (int i = 0; i < 6; ++i) c[i] = m.of[i] >= 0 ? p[m.of[i]] : m.fixed[i];
    Eigen::Matrix3d gs;
    if (!metrics(c, gs)) return false;
    const double zero = zero_free ? p[m.n] : xs.zero;
    PEAK_XSPACE_TYPE x0 = xs;
    x0.zero = 0;
    const double ca = std::cos(c[3] * rad), cb = std::cos(c[4] * rad), cg = std::cos(c[5] * rad);
    const double sa = std::sin(c[3] * rad), sb = std::sin(c[4] * rad), sg = std::sin(c[5] * rad);
    const int n = static_cast<int>(mt.size());
    res.resize(n);
    if (jac) jac->setZero(n, p.size());
    for (int i = 0; i < n; ++i) {
        const Eigen::Vector3d h(mt[i].h, mt[i].k, mt[i].l);
        const Eigen::Vector3d v = gs * h;
        const double q = h.dot(v);
        double x = 0, dxdq = 0;
        if (!X_Of_Q(x0, q, x, &dxdq)) return false;
        res[i] = x_obs[mt[i].obs] - (x + zero);
        if (!jac) continue;
        // dQ/dt = -v' (dG/dt) v for each cell parameter t (angles in degrees).
        const double dq[6] = {
            -(2 * c[0] * v[0] * v[0] + 2 * v[0] * v[1] * c[1] * cg + 2 * v[0] * v[2] * c[2] * cb),
            -(2 * c[1] * v[1] * v[1] + 2 * v[0] * v[1] * c[0] * cg + 2 * v[1] * v[2] * c[2] * ca),
            -(2 * c[2] * v[2] * v[2] + 2 * v[0] * v[2] * c[0] * cb + 2 * v[1] * v[2] * c[1] * ca),
            2 * v[1] * v[2] * c[1] * c[2] * sa * rad,
            2 * v[0] * v[2] * c[0] * c[2] * sb * rad,
            2 * v[0] * v[1] * c[0] * c[1] * sg * rad,
        };
        for (int k = 0; k < 6; ++k)
            if (m.of[k] >= 0) (*jac)(i, m.of[k]) += dxdq * dq[k];
        if (zero_free) (*jac)(i, m.n) = 1;
    }
    return res.allFinite();
}

std::string columns(const double v[6], const char* f) {
    std::string out;
    char buf[32];
    for (int i = 0; i < 6; ++i) {
        std::snprintf(buf, sizeof buf, f, v[i]);
        out += (i ? " " : "") + std::string(buf);
    }
    return out;
}

}  // namespace

std::string Cell_Constraint_Problem(const double cell[6], const SPACE_GROUP_TYPE& sg) {
    CELL_MAP m;
    return build_map(cell, sg, m);
}

bool Refine_Cell(const std::vector<double>& x_obs, const double cell[6], const SPACE_GROUP_TYPE& sg,
                 const CELL_REFINE_SETTINGS_TYPE& st, CELL_REFINE_RESULT_TYPE& result) {
    result = CELL_REFINE_RESULT_TYPE{};
    if (!Check_Peak_XSpace(st.x, result.message)) return false;
    Eigen::Matrix3d gs;
    if (!metrics(cell, gs)) {
        result.message = "Wrong cell parameters";
        return false;
    }
    CELL_MAP m;
    if (const std::string why = build_map(cell, sg, m); !why.empty()) {
        result.message = "The cell does not keep its crystal system: " + why;
        return false;
    }
    const int np = m.n + (st.refine_zero ? 1 : 0);
    Eigen::VectorXd p(np);
    for (int i = 5; i >= 0; --i)
        if (m.of[i] >= 0) p[m.of[i]] = cell[i];
    if (st.refine_zero) p[m.n] = st.x.zero;
    auto cell_of = [&](const Eigen::VectorXd& q, double c[6]) {
        for (int i = 0; i < 6; ++i) c[i] = m.of[i] >= 0 ? q[m.of[i]] : m.fixed[i];
    };
    auto zero_of = [&](const Eigen::VectorXd& q) { return st.refine_zero ? q[m.n] : st.x.zero; };

    std::vector<MATCH> mt;
    double c[6];
    cell_of(p, c);
    if (!match(x_obs, c, zero_of(p), sg, st, mt, result.message)) return false;
    Eigen::MatrixXd cov;
    Eigen::VectorXd res;
    double ss = 0;
    for (int round = 0; round < 6; ++round) {
        if (static_cast<int>(mt.size()) <= np) {
            result.message = "Too few peaks matched to reflections for the refinement: " + std::to_string(mt.size()) +
                             " for " + std::to_string(np) + " parameters";
            return false;
        }
        Eigen::MatrixXd jac;
        if (!model(x_obs, mt, m, p, st.refine_zero, st.x, res, &jac)) {
            result.message = "Wrong cell parameters";
            return false;
        }
        ss = res.squaredNorm();
        for (int it = 0; it < st.max_iterations; ++it) {
            ++result.iterations;
            // Scaled normal equations, so that edges in angstrom, angles in
            // degrees and the zero weigh alike in the pivoting.
            Eigen::MatrixXd nm = jac.transpose() * jac;
            Eigen::VectorXd scale(np);
            for (int j = 0; j < np; ++j) {
                if (!(nm(j, j) > 0)) {
                    result.message = "The matched peaks do not fix the cell: the normal matrix is singular";
                    return false;
                }
                scale[j] = 1 / std::sqrt(nm(j, j));
            }
            Eigen::MatrixXd ns = scale.asDiagonal() * nm * scale.asDiagonal();
            bool singular = true;
            Invert_Matrix(ns, singular);
            if (singular) {
                result.message = "The matched peaks do not fix the cell: the normal matrix is singular";
                return false;
            }
            cov = scale.asDiagonal() * ns * scale.asDiagonal();
            Eigen::VectorXd step = cov * (jac.transpose() * res);
            // Halve a step that makes the fit worse or leaves the cells.
            Eigen::VectorXd trial, tres;
            Eigen::MatrixXd tjac;
            double tss = 0;
            bool better = false;
            for (int half = 0; half < 30 && !better; ++half, step *= 0.5) {
                trial = p + step;
                if (model(x_obs, mt, m, trial, st.refine_zero, st.x, tres, &tjac)) {
                    tss = tres.squaredNorm();
                    better = tss <= ss * (1 + 1e-12) || tss < 1e-300;
                }
            }
            if (!better) break;
            const double change = (step.array() / scale.array()).abs().maxCoeff();
            p = trial;
            res = tres;
            jac = tjac;
            const double old = ss;
            ss = tss;
            if (change < 1e-9 || old - ss <= 1e-14 * old) break;
        }
        // Match again with the refined cell; done when nothing changes.
        std::vector<MATCH> again;
        cell_of(p, c);
        if (!match(x_obs, c, zero_of(p), sg, st, again, result.message)) return false;
        if (again == mt) break;
        mt = again;
    }
    // The covariance at the final parameters.
    Eigen::MatrixXd jac;
    if (!model(x_obs, mt, m, p, st.refine_zero, st.x, res, &jac)) {
        result.message = "Wrong cell parameters";
        return false;
    }
    cov = jac.transpose() * jac;
    bool singular = true;
    Invert_Matrix(cov, singular);
    if (singular) {
        result.message = "The matched peaks do not fix the cell: the normal matrix is singular";
        return false;
    }
    const int n = static_cast<int>(mt.size());
    result.n_used = n;
    result.n_par = np;
    result.chi2 = res.squaredNorm() / (n - np);
    cell_of(p, result.cell);
    for (int i = 0; i < 6; ++i)
        result.cell_std[i] = m.of[i] >= 0 ? std::sqrt(std::max(0.0, cov(m.of[i], m.of[i]) * result.chi2)) : 0;
    result.zero = zero_of(p);
    result.zero_std = st.refine_zero ? std::sqrt(std::max(0.0, cov(m.n, m.n) * result.chi2)) : 0;
    for (const MATCH& x : mt) result.used.push_back(x.obs);
    result.cell_text = columns(result.cell, "%.6f");
    result.std_text = columns(result.cell_std, "%.6f");
    result.ok = true;
    return true;
}

}  // namespace hxl
