#include "peaks/lsq_types.h"

#include <algorithm>
#include <numeric>

namespace hxl {

void Allocate_State_Vector(LSQ_STATE_VECTOR_TYPE& vs, int np) {
    vs.np = std::max(np, 0);
    vs.pv.resize(vs.np);
    vs.spv.resize(vs.np);
    vs.dpv.resize(vs.np);
    vs.code.resize(vs.np);
    vs.nampar.resize(vs.np);
}

void LSQ_SPARSE_JACOBIAN_TYPE::Clear(int m, int n) {
    m_ = std::max(m, 0);
    n_ = std::max(n, 0);
    row_ = 0;
    bad_ = false;
    start_.assign(1, 0);
    col_.clear();
    val_.clear();
}

void LSQ_SPARSE_JACOBIAN_TYPE::Add(int i, int j, float value) {
    if (i < 1 || i > m_ || i < row_ || j < 1 || j > n_) {
        bad_ = true;
        return;
    }
    while (row_ < i) {  // close the rows before i
        start_.push_back(static_cast<int>(col_.size()));
        ++row_;
    }
    // start_ holds the start of rows 1..row_ and one more entry per closed row
    col_.push_back(j - 1);
    val_.push_back(value);
}

bool LSQ_SPARSE_JACOBIAN_TYPE::Finish() {
    // start_[k] for k = 1..row_ is the start of row k (from 1); make it the
    // usual m+1 offsets with row 0's start at 0.
    std::vector<int> start(static_cast<std::size_t>(m_) + 1, 0);
    for (int k = 1; k <= row_; ++k) start[static_cast<std::size_t>(k) - 1] = start_[static_cast<std::size_t>(k)];
    for (int k = row_; k <= m_; ++k) start[static_cast<std::size_t>(k)] = static_cast<int>(col_.size());
    std::vector<int> col;
    std::vector<float> val;
    col.reserve(col_.size());
    val.reserve(val_.size());
    std::vector<int> order;
    std::vector<int> out_start(static_cast<std::size_t>(m_) + 1, 0);
    for (int r = 0; r < m_; ++r) {
        const int b = start[static_cast<std::size_t>(r)], e = start[static_cast<std::size_t>(r) + 1];
        order.resize(static_cast<std::size_t>(e - b));
        std::iota(order.begin(), order.end(), b);
        std::sort(order.begin(), order.end(), [&](int a, int c) { return col_[static_cast<std::size_t>(a)] < col_[static_cast<std::size_t>(c)]; });
        for (int k : order) {
            const int c = col_[static_cast<std::size_t>(k)];
            if (!col.empty() && static_cast<int>(col.size()) > out_start[static_cast<std::size_t>(r)] && col.back() == c)
                val.back() += val_[static_cast<std::size_t>(k)];
            else {
                col.push_back(c);
                val.push_back(val_[static_cast<std::size_t>(k)]);
            }
        }
        out_start[static_cast<std::size_t>(r) + 1] = static_cast<int>(col.size());
    }
    start_ = std::move(out_start);
    col_ = std::move(col);
    val_ = std::move(val);
    row_ = m_;
    return !bad_;
}

}  // namespace hxl
