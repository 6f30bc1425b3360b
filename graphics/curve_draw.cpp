#include "graphics/curve_draw.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cmath>
#include <deque>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#include "app/present.h"
#include "graphics/plot_settings.h"

namespace zendrite {

namespace {
CURVE_PIXELS& frame() {
    static CURVE_PIXELS m;
    return m;
}

// One curve or set of error bars waiting to be drawn, with the runs it was reduced to.
struct CURVE_JOB {
    bool bars = false;
    const float *x = nullptr, *y = nullptr, *high = nullptr;  // bars: y is the low end
    int n = 0;
    bool log = false;
    CURVE_LOOK look;
    bool reduce = false, line_runs = false, joined = false;
    int inside = 0;
    COLUMN_SPANS line, band;  // kept between frames: a frame of thousands of curves allocates once
};

struct BATCH {
    std::vector<CURVE_JOB> jobs;
    int pending = 0;
    bool open = false;
    std::vector<std::atomic<bool>> done;  // by job: reduced
    std::deque<std::vector<float>> scratch;
    std::size_t scratch_used = 0;
};

BATCH& batch() {
    static BATCH b;
    return b;
}

// Enough waiting curves to keep both threads busy, few enough to stay in the caches.
constexpr int kBatchCurves = 4096;
// Below this many points in all, a second thread costs more than it saves.
constexpr long kThreadPoints = 200000;

void draw_runs(const COLUMN_SPANS& s, int colour, int marker_size) {
    if (s.Count() < 1) return;
    IPgStartGraph(PgXY, 1, s.Count());
    IPgStyle(1, PgLine, 1, colour, 0, 1, marker_size);
    IPgErrorBars(s.x.data(), s.low.data(), s.high.data(), s.Count());
}

const float* logarithm_of(const float* y, int n, std::vector<float>& keep) {
    keep.resize(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) keep[static_cast<std::size_t>(i)] = y[i] > 1.0f ? std::log10(y[i]) : 0.0f;
    return keep.data();
}

void draw_points(const float* x, const float* y, int n, const CURVE_LOOK& look, bool markers, bool line) {
    IPgStartGraph(PgXY, 1, n);
    if (markers) {
        IPgStyle(1, PgNoFill, look.marker, look.marker_colour, look.line_type, look.line_width, look.marker_size);
        IPgXYMarkers(x, y, n);
    }
    if (line) {
        IPgStyle(1, PgLine, 1, look.line_colour, look.line_type, look.line_width, look.marker_size);
        IPgXYLine(x, y, n);
    }
}

// Touches nothing but the job and the frame: may run off the main thread.
void reduce(CURVE_JOB& j) {
    if (!j.reduce) return;
    const CURVE_PIXELS& m = frame();
    if (j.bars) {
        Reduce_Error_Bars(m, j.x, j.y, j.high, j.n, j.band);
        return;
    }
    const double radius = std::max(1.0, j.look.marker_size * 0.5);
    j.inside = Reduce_Curve(m, j.x, j.y, j.n, j.log, radius, j.line_runs ? &j.line : nullptr,
                            j.look.marker > 1 ? &j.band : nullptr, j.joined);
}

void present(const CURVE_JOB& j) {
    const CURVE_LOOK& look = j.look;
    if (j.bars) {
        if (j.reduce && j.band.Count() > 0) {
            draw_runs(j.band, look.line_colour, look.marker_size);
            return;
        }
        IPgStyle(1, PgLine, 1, look.line_colour, 0, 1, look.marker_size);
        IPgErrorBars(j.x, j.y, j.high, j.n);
        return;
    }
    const bool markers = look.marker > 1, line = look.line_type != -1;
    std::vector<float> keep;
    if (j.reduce && j.inside >= frame().Columns()) {
        if (markers) draw_runs(j.band, look.marker_colour, look.marker_size);
        if (j.line_runs) draw_runs(j.line, look.line_colour, look.marker_size);
        else if (line && !j.joined)
            draw_points(j.x, j.log ? logarithm_of(j.y, j.n, keep) : j.y, j.n, look, false, true);
        return;
    }
    draw_points(j.x, j.log ? logarithm_of(j.y, j.n, keep) : j.y, j.n, look, markers, line);
}

// The second thread, started once and kept: a new thread a frame would find its buffers
// empty and fault in their pages again.
class REDUCER {
public:
    ~REDUCER() {
        {
            std::lock_guard<std::mutex> lock(mu_);
            stop_ = true;
        }
        wake_.notify_all();
        if (thread_.joinable()) thread_.join();
    }
    // Runs `task` on the thread; false when no thread can be had.
    bool Start(std::function<void()> task) {
        try {
            if (!thread_.joinable()) thread_ = std::thread([this] { loop(); });
        } catch (const std::system_error&) {
            return false;
        }
        {
            std::lock_guard<std::mutex> lock(mu_);
            task_ = std::move(task);
            busy_ = true;
        }
        wake_.notify_all();
        return true;
    }
    void Wait() {
        std::unique_lock<std::mutex> lock(mu_);
        done_.wait(lock, [this] { return !busy_; });
    }

private:
    void loop() {
        std::unique_lock<std::mutex> lock(mu_);
        while (true) {
            wake_.wait(lock, [this] { return stop_ || task_; });
            if (stop_) return;
            std::function<void()> task = std::move(task_);
            task_ = nullptr;
            lock.unlock();
            task();
            lock.lock();
            busy_ = false;
            done_.notify_all();
        }
    }
    std::mutex mu_;
    std::condition_variable wake_, done_;
    std::function<void()> task_;
    bool busy_ = false, stop_ = false;
    std::thread thread_;
};

REDUCER& reducer() {
    static REDUCER r;
    return r;
}

// Reduces the waiting curves and draws them in order. When they are many, a second thread
// reduces too, while this one draws each curve as soon as it and those before it are ready.
void run_pending() {
    BATCH& b = batch();
    const int count = b.pending;
    long points = 0;
    for (int k = 0; k < count; ++k)
        if (b.jobs[static_cast<std::size_t>(k)].reduce) points += b.jobs[static_cast<std::size_t>(k)].n;
    std::atomic<int> next{0};
    const std::size_t jobs = static_cast<std::size_t>(count);
    if (b.done.size() < jobs) b.done = std::vector<std::atomic<bool>>(jobs);
    for (int k = 0; k < count; ++k) b.done[static_cast<std::size_t>(k)].store(false, std::memory_order_relaxed);
    auto claim = [&b, &next, count] {
        const int k = next.fetch_add(1, std::memory_order_relaxed);
        if (k >= count) return false;
        reduce(b.jobs[static_cast<std::size_t>(k)]);
        b.done[static_cast<std::size_t>(k)].store(true, std::memory_order_release);
        return true;
    };
    const bool helped = count > 1 && points >= kThreadPoints && reducer().Start([&claim] {
        while (claim()) {
        }
    });
    for (int shown = 0; shown < count;) {
        if (b.done[static_cast<std::size_t>(shown)].load(std::memory_order_acquire)) {
            present(b.jobs[static_cast<std::size_t>(shown++)]);
        } else if (!claim()) {
            std::this_thread::yield();  // the helper is on the next curve to draw
        }
    }
    if (helped) reducer().Wait();
    b.pending = 0;
    b.scratch_used = 0;
}

CURVE_JOB& new_job() {
    BATCH& b = batch();
    if (static_cast<std::size_t>(b.pending) == b.jobs.size()) b.jobs.emplace_back();
    CURVE_JOB& j = b.jobs[static_cast<std::size_t>(b.pending++)];
    j.inside = 0;
    j.reduce = j.line_runs = j.joined = false;
    return j;
}

void queued() {
    BATCH& b = batch();
    if (!b.open || b.pending >= kBatchCurves) run_pending();
}
}  // namespace

void Set_Frame_Pixels(float xmin, float xmax, float ymin, float ymax, int width, int height) {
    // the waiting curves belong to the frame they were given in
    if (batch().pending > 0) run_pending();
    const PLOT_SETTINGS& s = Plot_Settings();
    CURVE_PIXELS& m = frame();
    m = CURVE_PIXELS{};
    if (!(xmax != xmin) || !(ymax != ymin) || width < 1 || height < 1 || s.page_width <= 0 || s.page_height <= 0) return;
    float px0 = 0, py0 = 0, px1 = 0, py1 = 0;
    IPgXYToPage(xmin, ymin, px0, py0);
    IPgXYToPage(xmax, ymax, px1, py1);
    const double kx = width / static_cast<double>(s.page_width), ky = height / static_cast<double>(s.page_height);
    const double left = px0 * kx, right = px1 * kx, bottom = height - py0 * ky, top = height - py1 * ky;
    if (!std::isfinite(left) || !std::isfinite(right) || !std::isfinite(top) || !std::isfinite(bottom) ||
        std::fabs(right - left) < 1 || std::fabs(bottom - top) < 1 || std::max(right, left) > 1.0e6 ||
        std::max(top, bottom) > 1.0e6 || std::min(left, right) < -1.0e6 || std::min(top, bottom) < -1.0e6)
        return;  // no frame to reduce to: curves are drawn point by point
    m.sx = (right - left) / (static_cast<double>(xmax) - xmin);
    m.ox = left - m.sx * xmin;
    m.sy = (top - bottom) / (static_cast<double>(ymax) - ymin);
    m.oy = bottom - m.sy * ymin;
    m.left = static_cast<int>(std::floor(std::min(left, right)));
    m.right = static_cast<int>(std::ceil(std::max(left, right))) - 1;
    m.top = static_cast<int>(std::floor(std::min(top, bottom)));
    m.bottom = static_cast<int>(std::ceil(std::max(top, bottom))) - 1;
}

void Draw_Curve(const float* x, const float* y, int n, bool log, const CURVE_LOOK& look) {
    if (!x || !y || n < 1) return;
    const bool markers = look.marker > 1, line = look.line_type != -1;
    if (!markers && !line) return;
    const CURVE_PIXELS& m = frame();
    CURVE_JOB& j = new_job();
    j.bars = false, j.x = x, j.y = y, j.high = nullptr, j.n = n, j.log = log, j.look = look;
    // Runs stand for a line only when it is solid and one pixel wide.
    const bool line_runs_fit = look.line_type == 0 && look.line_width <= 1;
    if (m.Valid() && n >= m.Columns() && (markers || line_runs_fit)) {
        j.reduce = true;
        j.line_runs = line && line_runs_fit;
        // a line in the colour of its markers lies within their band: one run a column shows both
        j.joined = j.line_runs && markers && look.line_colour == look.marker_colour;
        if (j.joined) j.line_runs = false;
    }
    queued();
}

void Draw_Error_Bars(const float* x, const float* low, const float* high, int n, int colour, int marker_size) {
    if (!x || !low || !high || n < 1) return;
    const CURVE_PIXELS& m = frame();
    CURVE_JOB& j = new_job();
    j.bars = true, j.x = x, j.y = low, j.high = high, j.n = n, j.log = false;
    j.look = CURVE_LOOK{};
    j.look.line_colour = colour, j.look.marker_size = marker_size;
    j.reduce = m.Valid() && n >= m.Columns();
    queued();
}

void Begin_Curve_Batch() { batch().open = true; }

void End_Curve_Batch() {
    BATCH& b = batch();
    b.open = false;
    if (b.pending > 0) run_pending();
    b.scratch_used = 0;
}

float* Curve_Scratch(int n) {
    BATCH& b = batch();
    if (b.scratch_used == b.scratch.size()) b.scratch.emplace_back();
    std::vector<float>& v = b.scratch[b.scratch_used++];
    v.resize(static_cast<std::size_t>(std::max(n, 1)));
    return v.data();
}

}  // namespace zendrite
