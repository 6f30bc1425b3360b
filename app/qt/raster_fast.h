#pragma once
// Direct pixel writing for dense curves: where thousands of curves of thousands
// of points are drawn, a painter call per segment or marker costs more than the
// pixels themselves. Used only for opaque, solid, one-pixel drawing in normal mode.
#include <QImage>
#include <QPointF>
#include <QRect>
#include <vector>

namespace zendrite::qt {

// True when `img` takes direct 32-bit pixel writes.
bool Raster_Direct(const QImage& img);

// Joins the points by one-pixel lines in `rgb`, inside `clip`.
void Raster_Polyline(QImage& img, const QRect& clip, const QPointF* pts, int n, QRgb rgb);

// The pixel offsets of a marker drawn without smoothing, cached by its look.
const std::vector<std::pair<int, int>>& Marker_Offsets(int marker, double radius, bool filled);

// Copies the marker offsets at every point, inside `clip`.
void Raster_Markers(QImage& img, const QRect& clip, const std::vector<QPointF>& pts,
                    const std::vector<std::pair<int, int>>& offsets, QRgb rgb);

// A grid of pixel flags that is cleared in constant time between curves.
class Pixel_Marks {
public:
    void Reset(int width, int height);
    // True the first time a pixel is marked since the last Reset.
    bool Mark(int x, int y);

private:
    std::vector<unsigned> stamp_;
    unsigned epoch_ = 0;
    int width_ = 0, height_ = 0;
};

}  // namespace zendrite::qt
