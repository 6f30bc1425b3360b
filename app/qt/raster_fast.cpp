#include "app/qt/raster_fast.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

#include "app/qt/present_state.h"

namespace zendrite {
namespace qt {

bool Raster_Direct(const QImage& img) {
    return img.format() == QImage::Format_RGB32 || img.format() == QImage::Format_ARGB32 ||
           img.format() == QImage::Format_ARGB32_Premultiplied;
}

void Raster_Polyline(QImage& img, const QRect& clip0, const QPointF* pts, int n, QRgb rgb) {
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
