#pragma once
// Direct pixel writing for dense curves: where thousands of curves of thousands
// of points are drawn, a painter call per segment or marker costs more than the
// pixels themselves. Used only for opaque, solid, one-pixel drawing in normal mode.
#include <QImage>
#include <QPointF>
#include <QRect>
#include <QRectF>
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

// The picture the drawing operations paint on, without writing the queued runs first:
// for operations that only queue runs or ask for the size.
QImage* Span_Target();

// Vertical bars from y_low to y_high at x (user units of the frame), inside `clip`, queued as
// runs of one pixel's width. Runs are written when the picture is next used, from the last to
// the first, so that a pixel a later run covers is written once: thousands of overlapping
// curves cost about one write per pixel of the frame. False when the target or the mode
// (exclusive-or) needs the painter.
bool Queue_Bars(const QRectF& clip, const float* x, const float* y_low, const float* y_high, int n, QRgb rgb);
// Writes the queued runs into their picture; every use of a picture but queuing does this first.
void Flush_Spans();
// Forgets the runs of a bitmap that is destroyed.
void Drop_Spans(int bitmap);

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
