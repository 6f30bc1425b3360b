#pragma once
// Inversion of small dense matrices (the curvature matrix of the fits).
#include <Eigen/Dense>

namespace hxl {

// Replaces the n by n matrix `a` (row by row) by its inverse. When it is
// singular to working precision, or holds a value that is not a number,
// `singular` is true and `a` is left as it was.
void Invert_Matrix(double* a, int n, bool& singular);
void Invert_Matrix(float* a, int n, bool& singular);
void Invert_Matrix(Eigen::MatrixXd& a, bool& singular);

}  // namespace hxl
