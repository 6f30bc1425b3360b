#include "graphics/curve_draw.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <cmath>
#include <deque>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#include "app/present.h"
#include "graphics/plot_settings.h"
#include "support/covered_rows.h"

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
    COLUMN_ROWS line, band;  // kept between frames: a frame of thousands of curves allocates once
};

// A curve's runs in one colour, at its place in the order of drawing. The painter's curves
// (sparse ones, patterned lines) end a stretch: runs of one stretch are drawn before them.
struct LAYER {
    const COLUMN_ROWS* rows;
    int colour, stretch;
};

// A part of a run that no later run covers: what the picture shows of it.
struct PIECE {
    int column, top, bottom, layer;
};

// Per column the rows already final, sorted and disjoint; one set a thread.
struct COVER {
    std::vector<COVERED_ROWS> rows;
    // the rows covered when they are one run (else none), for a test a whole block at a time
    std::vector<std::int16_t> first, last;
    std::vector<PIECE> pieces;
};

struct BATCH {
    std::vector<CURVE_JOB> jobs;
    int pending = 0;
    bool open = false;
    std::deque<std::vector<float>> scratch;
    std::size_t scratch_used = 0;
    std::vector<LAYER> layers;
    std::vector<int> painted;  // jobs drawn by the painter, one a stretch
    COVER cover[2];
    std::vector<PIECE> pieces;
    COLUMN_SPANS spans;
};

BATCH& batch() {
    static BATCH b;
    return b;
}

// Enough waiting curves to keep both threads busy, few enough to stay in the caches.
constexpr int kBatchCurves = 4096;
// Below this many points in all, a second thread costs more than it saves.
constexpr long kThreadPoints = 200000;

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
        Reduce_Error_Bars_Rows(m, j.x, j.y, j.high, j.n, j.band);
        return;
    }
    const double radius = std::max(1.0, j.look.marker_size * 0.5);
    j.inside = Reduce_Curve_Rows(m, j.x, j.y, j.n, j.log, radius, j.line_runs ? &j.line : nullptr,
                                 j.look.marker > 1 ? &j.band : nullptr, j.joined);
}

// What the painter draws of a curve that is not all runs: all of it, or its patterned line.
void paint(const CURVE_JOB& j) {
    const CURVE_LOOK& look = j.look;
    if (j.bars) {
        IPgStyle(1, PgLine, 1, look.line_colour, 0, 1, look.marker_size);
        IPgErrorBars(j.x, j.y, j.high, j.n);
        return;
    }
    std::vector<float> keep;
    const float* y = j.log ? logarithm_of(j.y, j.n, keep) : j.y;
    if (j.reduce && j.inside >= frame().Columns()) draw_points(j.x, y, j.n, look, false, true);
    else draw_points(j.x, y, j.n, look, look.marker > 1, look.line_type != -1);
}

// The layers of the reduced curves in the order given, and the curves the painter draws.
void make_layers(BATCH& b, int count) {
    b.layers.clear();
    b.painted.clear();
    const int columns = frame().Columns();
    for (int k = 0; k < count; ++k) {
        const CURVE_JOB& j = b.jobs[static_cast<std::size_t>(k)];
        const int stretch = static_cast<int>(b.painted.size());
        if (j.bars && j.reduce) {
            b.layers.push_back(LAYER{&j.band, j.look.line_colour, stretch});
            continue;
        }
        if (!j.bars && j.reduce && j.inside >= columns) {
            if (j.look.marker > 1) b.layers.push_back(LAYER{&j.band, j.look.marker_colour, stretch});
            if (j.line_runs) b.layers.push_back(LAYER{&j.line, j.look.line_colour, stretch});
            else if (j.look.line_type != -1 && !j.joined) b.painted.push_back(k);
            continue;
        }
        b.painted.push_back(k);
    }
}

// Columns from..to-1 of every layer, from the last layer to the first: a later run covers an
// earlier one, so each pixel is given once. Columns go in blocks, so that the runs read stay
// in the cache while all the layers pass over them.
void cover_columns(const BATCH& b, COVER& cv, int from, int to) {
    cv.pieces.clear();
    const std::size_t width = static_cast<std::size_t>(std::max(to - from, 0));
    if (cv.rows.size() < width) cv.rows.resize(width);
    for (std::size_t c = 0; c < width; ++c) cv.rows[c].Clear();
    cv.first.assign(width, INT16_MAX);
    cv.last.assign(width, INT16_MIN);
    std::int16_t *first = cv.first.data() - from, *last = cv.last.data() - from;
    constexpr int kBlock = 64;
    for (int c0 = from; c0 < to; c0 += kBlock) {
        const int c1 = std::min(c0 + kBlock, to);
        for (int l = static_cast<int>(b.layers.size()) - 1; l >= 0; --l) {
            const COLUMN_ROWS& r = *b.layers[static_cast<std::size_t>(l)].rows;
            if (r.Columns() < to) continue;
            const std::int16_t *top = r.top.data(), *bottom = r.bottom.data();
            // deep in a dense frame, every run of the block lies in rows already final
            bool hidden = true;
            for (int c = c0; c < c1; ++c) hidden &= (top[c] > bottom[c]) | ((top[c] >= first[c]) & (bottom[c] <= last[c]));
            if (hidden) continue;
            for (int c = c0; c < c1; ++c) {
                const int t = top[c], z = bottom[c];
                if (t > z || (t >= first[c] && z <= last[c])) continue;
                COVERED_ROWS& covered = cv.rows[static_cast<std::size_t>(c - from)];
                covered.Cover(t, z, [&cv, c, l](int a, int b) { cv.pieces.push_back(PIECE{c, a, b, l}); });
                int a = INT16_MAX, b = INT16_MIN;
                covered.One(a, b);
                first[c] = static_cast<std::int16_t>(a), last[c] = static_cast<std::int16_t>(b);
            }
        }
    }
}

// The pieces of one stretch, a colour at a time, as bars through the pixel centres.
void draw_pieces(BATCH& b, std::size_t& next, int stretch) {
    const CURVE_PIXELS& m = frame();
    const std::vector<float>& cx = Column_Centres(m);
    const float* cy = Row_Centres(m).data() - m.top;
    std::vector<PIECE>& p = b.pieces;
    while (next < p.size() && b.layers[static_cast<std::size_t>(p[next].layer)].stretch == stretch) {
        const int colour = b.layers[static_cast<std::size_t>(p[next].layer)].colour;
        COLUMN_SPANS& s = b.spans;
        s.Clear();
        for (; next < p.size(); ++next) {
            const LAYER& l = b.layers[static_cast<std::size_t>(p[next].layer)];
            if (l.stretch != stretch || l.colour != colour) break;
            s.x.push_back(cx[static_cast<std::size_t>(p[next].column)]);
            s.low.push_back(cy[p[next].bottom]), s.high.push_back(cy[p[next].top]);
        }
        IPgStartGraph(PgXY, 1, s.Count());
        IPgStyle(1, PgLine, 1, colour, 0, 1, 1);
        IPgErrorBars(s.x.data(), s.low.data(), s.high.data(), s.Count());
    }
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

// Reduces the waiting curves and draws them as if one after the other: when they are many,
// on two threads, which then share the columns to find what each curve leaves visible.
void run_pending() {
    BATCH& b = batch();
    const int count = b.pending;
    long points = 0;
    for (int k = 0; k < count; ++k)
        if (b.jobs[static_cast<std::size_t>(k)].reduce) points += b.jobs[static_cast<std::size_t>(k)].n;
    std::atomic<int> next{0};
    auto claim = [&b, &next, count] {
        for (int k = next.fetch_add(1, std::memory_order_relaxed); k < count; k = next.fetch_add(1, std::memory_order_relaxed))
            reduce(b.jobs[static_cast<std::size_t>(k)]);
    };
    const bool helped = count > 1 && points >= kThreadPoints && reducer().Start(claim);
    claim();
    if (helped) reducer().Wait();

    make_layers(b, count);
    const int columns = frame().Valid() ? frame().Columns() : 0;
    const int half = helped ? columns / 2 : columns;
    bool split = false;
    b.cover[0].pieces.clear();
    if (!b.layers.empty()) {
        split = helped && reducer().Start([&b, half, columns] { cover_columns(b, b.cover[1], half, columns); });
        cover_columns(b, b.cover[0], 0, split ? half : columns);
        if (split) reducer().Wait();
    }
    // the pieces in the order they are drawn: by stretch, then by colour
    b.pieces.assign(b.cover[0].pieces.begin(), b.cover[0].pieces.end());
    if (split) b.pieces.insert(b.pieces.end(), b.cover[1].pieces.begin(), b.cover[1].pieces.end());
    std::stable_sort(b.pieces.begin(), b.pieces.end(), [&b](const PIECE& p, const PIECE& q) {
        const LAYER &a = b.layers[static_cast<std::size_t>(p.layer)], &c = b.layers[static_cast<std::size_t>(q.layer)];
        return a.stretch != c.stretch ? a.stretch < c.stretch : a.colour < c.colour;
    });
    std::size_t shown = 0;
    for (std::size_t s = 0; s <= b.painted.size(); ++s) {
        draw_pieces(b, shown, static_cast<int>(s));
        if (s < b.painted.size()) paint(b.jobs[static_cast<std::size_t>(b.painted[s])]);
    }
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
    if (m.Rows_Fit() && n >= m.Columns() && (markers || line_runs_fit)) {
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
    j.reduce = m.Rows_Fit() && n >= m.Columns();
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
