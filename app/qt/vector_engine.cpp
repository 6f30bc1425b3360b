#include "app/qt/vector_engine.h"

#include <QPainterPath>
#include <QTextItem>
#include <algorithm>
#include <cmath>
#include <vector>

#include "app/qt/picture_devices.h"

namespace zendrite::qt {

namespace {

// The part of segment a-b inside r (Liang-Barsky); false when none is.
bool clip_segment(const QRectF& r, QPointF& a, QPointF& b) {
    double t0 = 0, t1 = 1;
    const double dx = b.x() - a.x(), dy = b.y() - a.y();
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {a.x() - r.left(), r.right() - a.x(), a.y() - r.top(), r.bottom() - a.y()};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0) return false;
            continue;
        }
        const double t = q[i] / p[i];
        if (p[i] < 0) t0 = std::max(t0, t);
        else t1 = std::min(t1, t);
        if (t0 > t1) return false;
    }
    const QPointF a0 = a;
    a = a0 + QPointF(dx, dy) * t0;
    b = a0 + QPointF(dx, dy) * t1;
    return true;
}

// The polygon cut to r (Sutherland-Hodgman), one edge of r at a time.
QPolygonF clip_polygon(const QPolygonF& poly, const QRectF& r) {
    QPolygonF out = poly;
    for (int edge = 0; edge < 4 && !out.isEmpty(); ++edge) {
        auto inside = [&](const QPointF& p) {
            switch (edge) {
            case 0: return p.x() >= r.left();
            case 1: return p.x() <= r.right();
            case 2: return p.y() >= r.top();
            default: return p.y() <= r.bottom();
            }
        };
        auto cross = [&](const QPointF& a, const QPointF& b) {
            const double t = edge == 0 ? (r.left() - a.x()) / (b.x() - a.x())
                             : edge == 1 ? (r.right() - a.x()) / (b.x() - a.x())
                             : edge == 2 ? (r.top() - a.y()) / (b.y() - a.y())
                                         : (r.bottom() - a.y()) / (b.y() - a.y());
            return a + (b - a) * t;
        };
        const QPolygonF in = out;
        out.clear();
        for (int i = 0; i < in.size(); ++i) {
            const QPointF& cur = in[i];
            const QPointF& prev = in[(i + in.size() - 1) % in.size()];
            if (inside(cur)) {
                if (!inside(prev)) out << cross(prev, cur);
                out << cur;
            } else if (inside(prev)) {
                out << cross(prev, cur);
            }
        }
    }
    return out;
}

int family_of(const QFont& f) {
    const QString fam = f.family().toLower();
    if (f.styleHint() == QFont::Monospace || fam.contains("mono") || fam.contains("courier")) return 3;
    if (f.styleHint() == QFont::Serif || (fam.contains("serif") && !fam.contains("sans")) || fam.contains("times")) return 2;
    return 1;
}

}  // namespace

Vector_Engine::Vector_Engine(std::unique_ptr<Vector_Writer> writer, QIODevice* out, int width, int height, int dpi)
    : QPaintEngine(QPaintEngine::AllFeatures), writer_(std::move(writer)), out_(out), width_(width), height_(height),
      dpi_(dpi) {}

bool Vector_Engine::begin(QPaintDevice*) {
    writer_->Begin(width_, height_, dpi_);
    setActive(true);
    return true;
}

bool Vector_Engine::end() {
    setActive(false);
    return writer_->End(*out_);
}

void Vector_Engine::updateState(const QPaintEngineState& s) {
    const QPaintEngine::DirtyFlags f = s.state();
    if (f & DirtyTransform) matrix_ = s.transform();
    if (f & DirtyPen) pen_ = s.pen();
    if (f & DirtyBrush) brush_ = s.brush();
    if (f & DirtyFont) font_ = s.font();
    if (f & DirtyClipEnabled) clipping_ = s.isClipEnabled();
    if (f & DirtyClipPath) {
        clipping_ = s.clipOperation() != Qt::NoClip;
        clip_ = matrix_.map(s.clipPath()).boundingRect();
    }
    if (f & DirtyClipRegion) {
        clipping_ = s.clipOperation() != Qt::NoClip;
        clip_ = matrix_.map(s.clipRegion()).boundingRect();
    }
}

void Vector_Engine::stroke(const QPolygonF& given, bool closed) {
    if (pen_.style() == Qt::NoPen || given.size() < 2) return;
    // A reduced curve repeats a point where a pixel column holds one: the file needs it once.
    QPolygonF pts;
    pts.reserve(given.size());
    for (const QPointF& q : given)
        if (pts.isEmpty() || pts.last() != q) pts << q;
    if (pts.size() < 2) pts << given.last();
    // Widths scale with the painter as the lines would; a cosmetic pen is one pixel.
    const double scale = std::sqrt(std::fabs(matrix_.determinant()));
    const double width = pen_.isCosmetic() ? 1.0 : std::max(pen_.widthF(), 1.0) * (scale > 0 ? scale : 1.0);
    const QColor colour = pen_.color();
    const Qt::PenStyle st = pen_.style();
    const int dash = st == Qt::DotLine ? 1 : st == Qt::DashLine ? 2 : st == Qt::DashDotLine ? 3 : st == Qt::DashDotDotLine ? 4 : 0;
    if (!clipping_) {
        writer_->Stroke(pts, closed, colour, width, dash);
        return;
    }
    QPolygonF all = pts;
    if (closed) all << pts.first();
    QPolygonF run;
    for (int i = 1; i < all.size(); ++i) {
        QPointF a = all[i - 1], b = all[i];
        if (!clip_segment(clip_, a, b)) {
            if (run.size() >= 2) writer_->Stroke(run, false, colour, width, dash);
            run.clear();
            continue;
        }
        if (run.isEmpty() || run.last() != a) {
            if (run.size() >= 2) writer_->Stroke(run, false, colour, width, dash);
            run.clear();
            run << a;
        }
        run << b;
    }
    if (run.size() >= 2) writer_->Stroke(run, false, colour, width, dash);
}

// Hatch lines across an upright rectangle, as the screen's brush draws them; false for
// another brush or shape, which is filled plain.
bool Vector_Engine::hatch(const QPolygonF& pts) {
    const Qt::BrushStyle b = brush_.style();
    const bool rising = b == Qt::BDiagPattern || b == Qt::DiagCrossPattern, falling = b == Qt::FDiagPattern || b == Qt::DiagCrossPattern;
    const bool level = b == Qt::HorPattern || b == Qt::CrossPattern, upright = b == Qt::VerPattern || b == Qt::CrossPattern;
    if (!(rising || falling || level || upright) || pts.size() != 4) return false;
    const QRectF r = pts.boundingRect();
    for (const QPointF& q : pts)
        if ((q.x() != r.left() && q.x() != r.right()) || (q.y() != r.top() && q.y() != r.bottom())) return false;
    QRectF area = clipping_ ? r.intersected(clip_) : r;
    if (area.isEmpty()) return true;
    const double step = 8.0 * dpi_ / 96.0;  // the screen's hatch spacing, in pixels of this device
    std::vector<std::pair<QPointF, QPointF>> lines;
    const double span = area.width() + area.height();
    for (double d = 0; d <= span; d += step) {
        if (level && d <= area.height()) lines.push_back({{area.left(), area.top() + d}, {area.right(), area.top() + d}});
        if (upright && d <= area.width()) lines.push_back({{area.left() + d, area.top()}, {area.left() + d, area.bottom()}});
        if (rising) lines.push_back({{area.left() + d - area.height(), area.bottom()}, {area.left() + d, area.top()}});
        if (falling) lines.push_back({{area.left() + d - area.height(), area.top()}, {area.left() + d, area.bottom()}});
    }
    const double width = std::max(1.0, dpi_ / 96.0);
    for (auto [a, c] : lines)
        if (clip_segment(area, a, c)) writer_->Stroke(QPolygonF({a, c}), false, brush_.color(), width, 0);
    return true;
}

void Vector_Engine::fill(const QPolygonF& pts) {
    if (brush_.style() == Qt::NoBrush || pts.size() < 3 || hatch(pts)) return;
    const QPolygonF p = clipping_ ? clip_polygon(pts, clip_) : pts;
    if (p.size() >= 3) writer_->Fill(p, brush_.color());
}

void Vector_Engine::drawPath(const QPainterPath& path) {
    if (brush_.style() != Qt::NoBrush)
        for (const QPolygonF& p : path.toFillPolygons(matrix_)) fill(p);
    if (pen_.style() == Qt::NoPen) return;
    for (const QPolygonF& p : path.toSubpathPolygons(matrix_)) {
        const bool closed = p.size() > 2 && p.first() == p.last();
        stroke(closed ? QPolygonF(p.mid(0, p.size() - 1)) : p, closed);
    }
}

void Vector_Engine::drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) {
    QPolygonF p;
    p.reserve(count);
    for (int i = 0; i < count; ++i) p << matrix_.map(points[i]);
    if (mode == PolylineMode) {
        stroke(p, false);
        return;
    }
    fill(p);
    stroke(p, true);
}

void Vector_Engine::drawLines(const QLineF* lines, int count) {
    for (int i = 0; i < count; ++i) stroke(QPolygonF({matrix_.map(lines[i].p1()), matrix_.map(lines[i].p2())}), false);
}

void Vector_Engine::drawRects(const QRectF* rects, int count) {
    for (int i = 0; i < count; ++i) {
        const QPolygonF p = matrix_.map(QPolygonF(rects[i]));
        const QPolygonF four = p.size() == 5 ? QPolygonF(p.mid(0, 4)) : p;
        fill(four);
        stroke(four, true);
    }
}

void Vector_Engine::drawPoints(const QPointF* points, int count) {
    for (int i = 0; i < count; ++i) {
        const QPointF c = matrix_.map(points[i]);
        stroke(QPolygonF({c, c + QPointF(0.5, 0)}), false);
    }
}

void Vector_Engine::drawTextItem(const QPointF& p, const QTextItem& item) {
    const QString text = item.text();
    if (text.isEmpty() || pen_.style() == Qt::NoPen) return;
    const QFont f = item.font();
    const double scale = std::sqrt(std::fabs(matrix_.determinant()));
    const double px = f.pixelSize() > 0 ? f.pixelSize() : f.pointSizeF() * dpi_ / 72.0;
    VECTOR_TEXT t;
    t.at = matrix_.map(p);
    if (clipping_ && !clip_.contains(t.at)) return;
    t.text = text;
    // Device Y runs down: a rotation of the painter by -a degrees is a text at +a on the page.
    t.angle = -std::atan2(matrix_.m12(), matrix_.m11()) * 180.0 / M_PI;
    t.size = px * (scale > 0 ? scale : 1.0);
    t.family = family_of(f);
    t.bold = f.bold();
    t.italic = f.italic();
    t.colour = pen_.color();
    writer_->Text(t);
}

Vector_Paint_Device::Vector_Paint_Device(std::unique_ptr<Vector_Writer> writer, QIODevice* out, int width, int height,
                                         int dpi)
    : engine_(std::make_unique<Vector_Engine>(std::move(writer), out, width, height, dpi)), width_(width),
      height_(height), dpi_(dpi) {}

int Vector_Paint_Device::metric(PaintDeviceMetric m) const {
    switch (m) {
    case PdmWidth: return width_;
    case PdmHeight: return height_;
    case PdmWidthMM: return static_cast<int>(std::lround(width_ * 25.4 / dpi_));
    case PdmHeightMM: return static_cast<int>(std::lround(height_ * 25.4 / dpi_));
    case PdmNumColors: return 1 << 24;
    case PdmDepth: return 24;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY: return dpi_;
    case PdmDevicePixelRatio: return 1;
    case PdmDevicePixelRatioScaled: return static_cast<int>(devicePixelRatioFScale());
    default: return 0;
    }
}

std::unique_ptr<QPaintDevice> Vector_Device(const std::string& format, QIODevice* out, int width, int height, int dpi) {
    std::unique_ptr<Vector_Writer> w;
    if (format == "eps" || format == "ps") w = Eps_Writer(format == "eps");
    else if (format == "emf") w = Emf_Writer();
    else if (format == "plt") w = Hpgl_Writer();
    else if (format == "dxf") w = Dxf_Writer();
    if (!w) return nullptr;
    return std::make_unique<Vector_Paint_Device>(std::move(w), out, width, height, dpi);
}

}  // namespace zendrite::qt
