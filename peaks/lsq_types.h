#pragma once
// The records of the least-squares engines: the control record, the parameter
// record of a fit, the Jacobian forms the model fills and what a run leaves
// for the report.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "support/array1.h"

namespace hxl {

struct LSQ_CONDITIONS_TYPE {
    bool reached = false;  // set when the solver converged
    int corrmax = 70;      // correlations listed above this, in per cent
    int icyc = 0;          // the most evaluations of the model (iflag 1); <= 0: 100 (n + 1)
    int npvar = 0;         // free parameters; set by the solver from the flags
    float tol = 1e-5f;     // ftol = xtol = tol, gtol = 0
};

struct LSQ_STATE_VECTOR_TYPE {
    int np = 0;                  // parameters in the vector, free or not
    Array1<float> pv;            // values
    Array1<float> spv;           // standard deviations
    Array1<float> dpv;           // derivatives of the model at the present point, for the model's own use
    Array1<std::int16_t> code;   // 1: refined
    Array1<std::string> nampar;  // names
};

// Sizes every array of `vs` to `np`, all zero.
void Allocate_State_Vector(LSQ_STATE_VECTOR_TYPE& vs, int np);

// A dense Jacobian, fjac(i, j) for observation i and free parameter j, both
// from 1, stored by columns.
class LSQ_DENSE_JACOBIAN_TYPE {
public:
    void Resize(int m, int n) { m_ = m; v_.assign(static_cast<std::size_t>(m) * static_cast<std::size_t>(n), 0.0f); }
    float& operator()(int i, int j) { return v_[static_cast<std::size_t>(j - 1) * m_ + static_cast<std::size_t>(i - 1)]; }
    float operator()(int i, int j) const { return v_[static_cast<std::size_t>(j - 1) * m_ + static_cast<std::size_t>(i - 1)]; }
    const float* data() const { return v_.data(); }

private:
    std::size_t m_ = 0;
    std::vector<float> v_;
};

// A Jacobian given row by row: for each observation the free parameters it
// depends on and the values. Observations come in rising order (one may be
// left out: its row is zero); within one a parameter given twice is summed.
class LSQ_SPARSE_JACOBIAN_TYPE {
public:
    void Clear(int m, int n);
    // Adds fjac(i, j) = value; i from 1 to m, never below the last i given,
    // j from 1 to n. A call out of these bounds marks the Jacobian as bad.
    void Add(int i, int j, float value);
    // Closes the rows (sorted, duplicates summed). False when a call was out of bounds.
    bool Finish();

    int Rows() const { return m_; }
    int Cols() const { return n_; }
    // After Finish(): row i (from 0) holds entries row_start[i] .. row_start[i+1]-1.
    const std::vector<int>& Row_Start() const { return start_; }
    const std::vector<int>& Col() const { return col_; }  // from 0
    const std::vector<float>& Val() const { return val_; }

private:
    int m_ = 0, n_ = 0, row_ = 0;
    bool bad_ = false;
    std::vector<int> start_, col_;
    std::vector<float> val_;
};

// The model. With iflag 1 it fills fvec(i) = (yobs - ycalc)/sigma at x (the
// free parameters, 1..n); with iflag 2 the Jacobian -(d ycalc/d x(j))/sigma;
// with iflag 0, called once at each new point the solver accepts, x and fvec
// are that point, for a progress line. Setting iflag below 0 stops the
// solver, which keeps the best point reached.
using LSQ_MODEL_FUNCTION = std::function<void(int m, int n, const Array1<float>& x, Array1<float>& fvec,
                                              LSQ_DENSE_JACOBIAN_TYPE& fjac, int& iflag)>;
using LSQ_SPARSE_MODEL_FUNCTION = std::function<void(int m, int n, const Array1<float>& x, Array1<float>& fvec,
                                                     LSQ_SPARSE_JACOBIAN_TYPE& fjac, int& iflag)>;
// The model of the forward-difference forms: fvec only.
using LSQ_FUNCTION = std::function<void(int m, int n, const Array1<float>& x, Array1<float>& fvec, int& iflag)>;

// How the damped normal step is found.
enum class Lsq_Route { Automatic, Dense, Sparse };

// What a run leaves for the report.
struct LSQ_OUTCOME_TYPE {
    int info = 0;               // 0 bad input, 1..8 the stop tests, -1 stopped by the model, -2 NaN
    int nfev = 0;               // evaluations with iflag 1
    int njev = 0;               // Jacobians
    int iterations = 0;         // points accepted
    double lambda = 0.0;        // the last Levenberg parameter (the report's F-Lambda)
    bool sparse = false;        // the sparse route ran
    float initial_chi2 = 0.0f;
    int n = 0;                  // free parameters
    std::vector<float> covar;   // inverse curvature matrix, n by n by columns; empty when not formed
    bool singular = false;      // the final curvature matrix could not be inverted
    int singular_index = 0;     // the free parameter (from 1) at which it failed
};

}  // namespace hxl
