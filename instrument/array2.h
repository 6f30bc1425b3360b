#pragma once
// A two-dimensional table indexed from 1, stored column by column, so that a
// run of rows past the end of a column continues into the next one as the
// numor layouts expect.
#include <cstddef>
#include <vector>

namespace hxl {

template <class T>
class Array2 {
public:
    Array2() = default;
    Array2(int rows, int cols) { resize(rows, cols); }

    void resize(int rows, int cols) {
        rows_ = rows > 0 ? rows : 0;
        cols_ = cols > 0 ? cols : 0;
        v_.assign(static_cast<std::size_t>(rows_) * static_cast<std::size_t>(cols_), T{});
    }
    void clear() {
        rows_ = cols_ = 0;
        std::vector<T>().swap(v_);
    }

    T& operator()(int i, int j) { return v_[flat(i, j)]; }
    const T& operator()(int i, int j) const { return v_[flat(i, j)]; }

    // True when (i, j) falls inside the storage, counting run-on rows.
    bool holds(int i, int j) const {
        if (i < 1 || j < 1) return false;
        return flat(i, j) < v_.size();
    }

    int rows() const { return rows_; }
    int cols() const { return cols_; }
    bool empty() const { return v_.empty(); }
    const std::vector<T>& vec() const { return v_; }

private:
    std::size_t flat(int i, int j) const {
        return static_cast<std::size_t>(j - 1) * static_cast<std::size_t>(rows_) + static_cast<std::size_t>(i - 1);
    }
    int rows_ = 0, cols_ = 0;
    std::vector<T> v_;
};

}  // namespace hxl
