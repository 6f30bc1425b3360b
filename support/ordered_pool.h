#pragma once
// Jobs 0..n-1 run on a few worker threads; their results are handed back in
// job order. At most `ahead` results wait beyond the one handed next, so the
// memory held stays bounded however many jobs there are.
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

namespace hxl {

enum class POOL_STATE { Ready, Waiting, End };

template <class RESULT>
class ORDERED_POOL {
public:
    // `job` must not throw and must touch no state shared with the caller.
    ORDERED_POOL(int count, int workers, int ahead, std::function<RESULT(int)> job)
        : count_(std::max(count, 0)), ahead_(std::max(ahead, 1)), job_(std::move(job)) {
        const int n = std::clamp(workers, 1, std::max(count_, 1));
        for (int i = 0; i < n; ++i) threads_.emplace_back([this] { work(); });
    }
    ORDERED_POOL(const ORDERED_POOL&) = delete;
    ORDERED_POOL& operator=(const ORDERED_POOL&) = delete;
    ~ORDERED_POOL() { Stop(); }

    // The next result in job order: Ready with `out` filled, Waiting when it did
    // not come within `wait`, End when every result was handed or Stop was called.
    POOL_STATE Next(RESULT& out, std::chrono::milliseconds wait) {
        std::unique_lock<std::mutex> lock(mutex_);
        if (stopped_ || given_ >= count_) return POOL_STATE::End;
        if (!done_.wait_for(lock, wait, [this] { return done_results_.count(given_) > 0; })) return POOL_STATE::Waiting;
        auto it = done_results_.find(given_);
        out = std::move(it->second);
        done_results_.erase(it);
        ++given_;
        lock.unlock();
        room_.notify_all();
        return POOL_STATE::Ready;
    }

    // No job starts any more; the running ones finish and are thrown away.
    void Stop() {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            stopped_ = true;
        }
        room_.notify_all();
        for (auto& t : threads_)
            if (t.joinable()) t.join();
        threads_.clear();
        done_results_.clear();
    }

private:
    void work() {
        for (;;) {
            int index = 0;
            {
                std::unique_lock<std::mutex> lock(mutex_);
                room_.wait(lock, [this] { return stopped_ || started_ >= count_ || started_ < given_ + ahead_; });
                if (stopped_ || started_ >= count_) return;
                index = started_++;
            }
            RESULT r = job_(index);
            {
                std::lock_guard<std::mutex> lock(mutex_);
                if (stopped_) return;
                done_results_.emplace(index, std::move(r));
            }
            done_.notify_all();
        }
    }

    const int count_, ahead_;
    std::function<RESULT(int)> job_;
    std::mutex mutex_;
    std::condition_variable room_, done_;
    std::map<int, RESULT> done_results_;
    int started_ = 0, given_ = 0;
    bool stopped_ = false;
    std::vector<std::thread> threads_;
};

}  // namespace hxl
