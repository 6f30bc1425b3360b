#include "app/qt/raster_fast.h"

#include <QPainter>
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <map>
#include <tuple>

#include "app/qt/present_state.h"
#include "support/covered_rows.h"

namespace zendrite {
namespace qt {

bool Raster_Direct(const QImage& img) {
    return img.format() == QImage::Format_RGB32 || img.format() == QImage::Format_ARGB32 ||
           img.format() == QImage::Format_ARGB32_Premultiplied;
}

void Raster_Polyline(QImage& img, const QRect& clip0, const QPointF* pts, int n, QRgb rgb) {
    Flush_Spans();
    const QRect clip = clip0.intersected(img.rect());
    if (clip.isEmpty() || n < 1) return;
    const int stride = static_cast<int>(img.bytesPerLine() / 4);
    QRgb* bits = reinterpret_cast<QRgb*>(img.bits());
    const int left = clip.left(), right = clip.right(), top = clip.top(), bottom = clip.bottom();
    auto plot = [&](int x, int y) {
        if (x >= left && x <= right && y >= top && y <= bottom)
            bits[static_cast<std::size_t>(y) * static_cast<std::size_t>(stride) + static_cast<std::size_t>(x)] = rgb;
    };
    auto pixel = [](double v) { return static_cast<int>(std::floor(std::clamp(v, -1.0e6, 1.0e6))); };
    int x0 = pixel(pts[0].x()), y0 = pixel(pts[0].y());
    if (n == 1) plot(x0, y0);
    for (int i = 1; i < n; ++i) {
        const int x1 = pixel(pts[i].x()), y1 = pixel(pts[i].y());
        // A segment wholly on one side of the clip draws nothing.
        if (x0 == x1 && x0 >= left && x0 <= right) {
            // Within one column, as most segments of a dense curve are.
            const int ya = std::max(std::min(y0, y1), top), yb = std::min(std::max(y0, y1), bottom);
            QRgb* px = bits + static_cast<std::ptrdiff_t>(ya) * stride + x0;
            for (int y = ya; y <= yb; ++y, px += stride) *px = rgb;
        } else if (!((x0 < left && x1 < left) || (x0 > right && x1 > right) || (y0 < top && y1 < top) ||
              (y0 > bottom && y1 > bottom))) {
            int dx = std::abs(x1 - x0), dy = -std::abs(y1 - y0);
            const int sx = x0 < x1 ? 1 : -1, sy = y0 < y1 ? 1 : -1;
            int err = dx + dy, x = x0, y = y0;
            while (true) {
                plot(x, y);
                if (x == x1 && y == y1) break;
                const int e2 = 2 * err;
                if (e2 >= dy) { err += dy; x += sx; }
                if (e2 <= dx) { err += dx; y += sy; }
            }
        }
        x0 = x1;
        y0 = y1;
    }
}

const std::vector<std::pair<int, int>>& Marker_Offsets(int marker, double radius, bool filled) {
    static std::map<std::tuple<int, int, bool>, std::vector<std::pair<int, int>>> cache;
    const int r10 = static_cast<int>(std::lround(radius * 10));
    auto key = std::make_tuple(marker, r10, filled);
    auto it = cache.find(key);
    if (it != cache.end()) return it->second;
    const int half = static_cast<int>(std::ceil(radius)) + 1;
    QImage stamp(2 * half + 1, 2 * half + 1, QImage::Format_ARGB32);
    stamp.fill(Qt::transparent);
    {
        QPainter sp(&stamp);
        sp.setPen(QPen(Qt::black, 1));
        sp.setBrush(filled ? QBrush(Qt::black) : Qt::NoBrush);
        Draw_Marker(sp, QPointF(half + 0.5, half + 0.5), marker, radius);
    }
    std::vector<std::pair<int, int>> offsets;
    for (int y = 0; y < stamp.height(); ++y)
        for (int x = 0; x < stamp.width(); ++x)
            if (qAlpha(stamp.pixel(x, y)) > 127) offsets.emplace_back(x - half, y - half);
    return cache.emplace(key, std::move(offsets)).first->second;
}

void Raster_Markers(QImage& img, const QRect& clip0, const std::vector<QPointF>& pts,
                    const std::vector<std::pair<int, int>>& offsets, QRgb rgb) {
    Flush_Spans();
    const QRect clip = clip0.intersected(img.rect());
    if (clip.isEmpty()) return;
    const int stride = static_cast<int>(img.bytesPerLine() / 4);
    QRgb* bits = reinterpret_cast<QRgb*>(img.bits());
    int reach = 0;
    for (const auto& [dx, dy] : offsets) reach = std::max({reach, std::abs(dx), std::abs(dy)});
    for (const QPointF& q : pts) {
        const int cx = static_cast<int>(std::floor(q.x())), cy = static_cast<int>(std::floor(q.y()));
        if (cx - reach >= clip.left() && cx + reach <= clip.right() && cy - reach >= clip.top() &&
            cy + reach <= clip.bottom()) {
            QRgb* centre = bits + static_cast<std::ptrdiff_t>(cy) * stride + cx;
            for (const auto& [dx, dy] : offsets) centre[static_cast<std::ptrdiff_t>(dy) * stride + dx] = rgb;
            continue;
        }
        for (const auto& [dx, dy] : offsets) {
            const int px = cx + dx, py = cy + dy;
            if (px < clip.left() || px > clip.right() || py < clip.top() || py > clip.bottom()) continue;
            bits[static_cast<std::size_t>(py) * static_cast<std::size_t>(stride) + static_cast<std::size_t>(px)] = rgb;
        }
    }
}

namespace {

struct SPAN {
    SPAN() {}  // left unset: the queue grows by whole curves and writes every run it keeps
    SPAN(std::uint16_t c, std::uint16_t t, std::uint16_t b, QRgb colour) : column(c), top(t), bottom(b), rgb(colour) {}
    std::uint16_t column, top, bottom;
    QRgb rgb;
};

// The runs waiting for one picture: the target kind (1 window, 2 bitmap) and its handle.
struct SPAN_QUEUE {
    int kind = 0, handle = 0;
    QSize size;  // of the picture when the runs were queued
    std::vector<SPAN> spans;
    std::vector<COVERED_ROWS> covered;  // per column, rows already final
};

SPAN_QUEUE& queue() {
    static SPAN_QUEUE q;
    return q;
}

QImage* image_of(int kind, int handle) {
    LAYER& l = L();
    if (kind == 2) {
        auto it = l.bitmaps.find(handle);
        return it == l.bitmaps.end() ? nullptr : &it->second;
    }
    WINDOW_STATE* w = Window(handle);
    return w ? &w->front : nullptr;
}

}  // namespace

QImage* Span_Target() {
    LAYER& l = L();
    if (l.gr.kind == 2) return image_of(2, l.gr.handle);
    WINDOW_STATE* w = Window(l.gr.handle);
    if (!w) w = Window(l.selected_window);
    return w ? &w->front : nullptr;
}

void Flush_Spans() {
    SPAN_QUEUE& q = queue();
    if (q.spans.empty()) return;
    QImage* img = image_of(q.kind, q.handle);
    // a picture replaced or resized since takes none of the runs
    if (!img || !Raster_Direct(*img) || img->size() != q.size) {
        q.spans.clear();
        return;
    }
    const int width = img->width(), stride = static_cast<int>(img->bytesPerLine() / 4);
    QRgb* bits = reinterpret_cast<QRgb*>(img->bits());
    if (q.covered.size() < static_cast<std::size_t>(width)) q.covered.resize(static_cast<std::size_t>(width));
    for (auto& c : q.covered) c.Clear();
    for (auto it = q.spans.rbegin(); it != q.spans.rend(); ++it) {
        const SPAN& s = *it;
        COVERED_ROWS& covered = q.covered[s.column];
        // most runs of a dense frame fall inside rows already final
        if (covered.Hides(s.top, s.bottom)) continue;
        QRgb* column = bits + s.column;
        covered.Cover(s.top, s.bottom, [column, stride, rgb = s.rgb](int from, int to) {
            QRgb* px = column + static_cast<std::ptrdiff_t>(from) * stride;
            for (int y = from; y <= to; ++y, px += stride) *px = rgb;
        });
    }
    q.spans.clear();
}

void Drop_Spans(int bitmap) {
    SPAN_QUEUE& q = queue();
    if (q.kind == 2 && q.handle == bitmap) q.spans.clear();
}

bool Queue_Bars(const QRectF& clip0, const float* x, const float* y_low, const float* y_high, int n, QRgb rgb) {
    const LAYER& l = L();
    QImage* img = Span_Target();
    if (!img || l.gr.plot_mode == PlotXor || !Raster_Direct(*img) || img->width() > 65535 || img->height() > 65535)
        return false;
    const int kind = l.gr.kind == 2 ? 2 : 1;
    const int handle = kind == 2 ? l.gr.handle : (Window(l.gr.handle) ? l.gr.handle : l.selected_window);
    SPAN_QUEUE& q = queue();
    if (!q.spans.empty() && (q.kind != kind || q.handle != handle || q.size != img->size())) Flush_Spans();
    q.kind = kind, q.handle = handle, q.size = img->size();
    const QRect clip = clip0.toAlignedRect().intersected(img->rect());
    if (clip.isEmpty()) return true;
    const PIXEL_MAP map = Pixel_Map();
    const double ox = map.ox, sx = map.sx, oy = map.oy, sy = map.sy;
    const double left = clip.left(), right = clip.right() + 1;
    const int ctop = clip.top(), cbottom = clip.bottom();
    const double top_row = ctop, past_bottom = cbottom + 1.0;
    std::size_t used = q.spans.size();
    q.spans.resize(used + static_cast<std::size_t>(n));
    SPAN* out = q.spans.data();
    for (int i = 0; i < n; ++i) {
        const double px = ox + sx * x[i];
        if (!(px >= left && px < right)) continue;
        const double pa = oy + sy * y_low[i], pb = oy + sy * y_high[i];
        if (!(std::fabs(pa) <= DBL_MAX && std::fabs(pb) <= DBL_MAX)) continue;  // nor infinite nor missing
        const double lo = std::min(pa, pb), hi = std::max(pa, pb);
        if (hi < top_row || lo >= past_bottom) continue;
        // shifted so that truncation floors, without a call to floor
        const int top = lo <= top_row ? ctop : static_cast<int>(lo + 16777216.0) - 16777216;
        const int bottom = hi >= cbottom ? cbottom : static_cast<int>(hi + 16777216.0) - 16777216;
        out[used++] = SPAN{static_cast<std::uint16_t>(px), static_cast<std::uint16_t>(top),
                           static_cast<std::uint16_t>(bottom), rgb};
    }
    q.spans.resize(used);
    // a window shows what it is given at once
    if (kind == 1) {
        Flush_Spans();
        Refresh_Window(handle);
    }
    return true;
}

void Pixel_Marks::Reset(int width, int height) {
    const std::size_t size = static_cast<std::size_t>(std::max(width, 0)) * static_cast<std::size_t>(std::max(height, 0));
    if (size != stamp_.size() || ++epoch_ == 0) {
        stamp_.assign(size, 0u);
        epoch_ = 1;
    }
    width_ = width;
    height_ = height;
}

bool Pixel_Marks::Mark(int x, int y) {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return false;
    unsigned& s = stamp_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)];
    if (s == epoch_) return false;
    s = epoch_;
    return true;
}

}  // namespace qt
}  // namespace zendrite
