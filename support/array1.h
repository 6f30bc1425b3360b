#pragma once
// A vector indexed from 1, so that formulas read as they were designed.
#include <cstddef>
#include <vector>

namespace hxl {

template <class T>
class Array1 {
public:
    Array1() = default;
    explicit Array1(int n, const T& init = T{}) : v_(n > 0 ? static_cast<std::size_t>(n) : 0u, init) {}

    T& operator()(int i) { return v_[static_cast<std::size_t>(i - 1)]; }
    const T& operator()(int i) const { return v_[static_cast<std::size_t>(i - 1)]; }

    int size() const { return static_cast<int>(v_.size()); }
    bool empty() const { return v_.empty(); }
    void resize(int n, const T& init = T{}) { v_.assign(n > 0 ? static_cast<std::size_t>(n) : 0u, init); }
    void clear() { std::vector<T>().swap(v_); }
    void fill(const T& value) { v_.assign(v_.size(), value); }

    T* data() { return v_.data(); }
    const T* data() const { return v_.data(); }
    auto begin() { return v_.begin(); }
    auto end() { return v_.end(); }
    auto begin() const { return v_.begin(); }
    auto end() const { return v_.end(); }
    std::vector<T>& vec() { return v_; }
    const std::vector<T>& vec() const { return v_; }

    bool operator==(const Array1&) const = default;

private:
    std::vector<T> v_;
};

}  // namespace hxl
