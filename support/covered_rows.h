#pragma once
// The rows of one pixel column already painted by later runs, for drawing runs from the last
// to the first so that each pixel is written once.
#include <algorithm>
#include <utility>
#include <vector>

namespace zendrite {

class COVERED_ROWS {
public:
    void Clear() { runs_.clear(); }
    // The run a..b (inclusive) itself lies within rows already covered.
    bool Hides(int a, int b) const { return runs_.size() == 1 && runs_[0].first <= a && runs_[0].second >= b; }
    // The rows covered when they are one run; false when none or several.
    bool One(int& a, int& b) const {
        if (runs_.size() != 1) return false;
        a = runs_[0].first, b = runs_[0].second;
        return true;
    }
    // Gives `uncovered(from, to)` each part of a..b not yet covered, top down, then covers a..b.
    template <typename F>
    void Cover(int a, int b, F&& uncovered) {
        int pos = a;
        for (const auto& [s, e] : runs_) {
            if (e < pos) continue;
            if (s > b) break;
            if (s > pos) uncovered(pos, s - 1);
            pos = e + 1;
            if (pos > b) break;
        }
        if (pos <= b) uncovered(pos, b);
        merge(a, b);
    }

private:
    // a..b into the sorted, disjoint list
    void merge(int a, int b) {
        merged_.clear();
        std::size_t i = 0;
        const std::size_t m = runs_.size();
        while (i < m && runs_[i].second < a - 1) merged_.push_back(runs_[i++]);
        int lo = a, hi = b;
        while (i < m && runs_[i].first <= b + 1) {
            lo = std::min(lo, runs_[i].first);
            hi = std::max(hi, runs_[i].second);
            ++i;
        }
        merged_.emplace_back(lo, hi);
        while (i < m) merged_.push_back(runs_[i++]);
        runs_.swap(merged_);
    }
    std::vector<std::pair<int, int>> runs_, merged_;
};

}  // namespace zendrite
