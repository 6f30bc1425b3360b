#include "support/matrix_inverse.h"

namespace hxl {

void Invert_Matrix(Eigen::MatrixXd& a, bool& singular) {
    singular = true;
    if (a.rows() != a.cols() || a.rows() == 0 || !a.allFinite()) return;
    // Full pivoting sees a rank loss that partial pivoting can hide.
    Eigen::FullPivLU<Eigen::MatrixXd> lu(a);
    if (!lu.isInvertible()) return;
    Eigen::MatrixXd inv = lu.inverse();
    if (!inv.allFinite()) return;
    a = std::move(inv);
    singular = false;
}

void Invert_Matrix(double* a, int n, bool& singular) {
    singular = true;
    if (n <= 0) return;
    Eigen::Map<Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>> m(a, n, n);
    Eigen::MatrixXd work = m;
    Invert_Matrix(work, singular);
    if (!singular) m = work;
}

void Invert_Matrix(float* a, int n, bool& singular) {
    singular = true;
    if (n <= 0) return;
    Eigen::Map<Eigen::Matrix<float, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>> m(a, n, n);
    Eigen::MatrixXd work = m.cast<double>();
    Invert_Matrix(work, singular);
    if (!singular) m = work.cast<float>();
}

}  // namespace hxl
