// Presentation graphs: a frame with data units, curves reduced to what the pixels show, axes.
#include <QPainter>
#include <cmath>
#include <optional>

#include "app/qt/present_state.h"
#include "app/qt/raster_fast.h"

namespace zendrite {
using namespace qt;

namespace {

// Switches the drawing units to the frame for the life of the object.
struct In_Frame {
    GR_STATE keep;
    In_Frame() : keep(L().gr) {
        const PG_STATE& pg = L().pg;
        GR_STATE& g = L().gr;
        g.ax1 = pg.gax1 + pg.left * (pg.gax2 - pg.gax1);
        g.ax2 = pg.gax1 + pg.right * (pg.gax2 - pg.gax1);
        g.ay1 = pg.gay1 + pg.bottom * (pg.gay2 - pg.gay1);
        g.ay2 = pg.gay1 + pg.top * (pg.gay2 - pg.gay1);
        g.ux1 = pg.x1;
        g.ux2 = pg.x2;
        g.uy1 = pg.y1;
        g.uy2 = pg.y2;
    }
    ~In_Frame() {
        const int c = L().gr.colour, w = L().gr.line_width, t = L().gr.line_type;
        L().gr = keep;
        L().gr.colour = c, L().gr.line_width = w, L().gr.line_type = t;
    }
    QRectF clip() const {
        const QPointF a = To_Pixel(L().pg.x1, L().pg.y1), b = To_Pixel(L().pg.x2, L().pg.y2);
        return QRectF(a, b).normalized();
    }
};

PG_SET& set_now() {
    PG_STATE& pg = L().pg;
    const std::size_t i = static_cast<std::size_t>(std::max(pg.current_set, 1));
    if (pg.sets.size() <= i) pg.sets.resize(i + 1);
    return pg.sets[i];
}

void polar_to_xy(float a, float r, float& x, float& y) {
    const double rad = a * M_PI / 180.0;
    x = static_cast<float>(r * std::cos(rad));
    y = static_cast<float>(r * std::sin(rad));
}

QPen set_pen(const PG_SET& s, bool markers) {
    QPen pen(Colour(s.colour));
    pen.setWidthF(std::clamp(markers ? 1 : s.line_width, 1, 5) * Line_Scale());
    if (!markers) {
        switch (s.line_type) {
        case -1: pen.setStyle(Qt::NoPen); break;
        case 1: pen.setStyle(Qt::DotLine); break;
        case 2: pen.setStyle(Qt::DashLine); break;
        case 3: pen.setStyle(Qt::DashDotLine); break;
        case 4: pen.setStyle(Qt::DashDotDotLine); break;
        default: break;
        }
    }
    return pen;
}

std::string number_text(double v, double step) {
    int dec = step >= 1 ? 0 : static_cast<int>(std::ceil(-std::log10(step) - 1e-9));
    dec = std::clamp(dec, 0, 8);
    if (std::fabs(v) < step * 1e-6) v = 0;
    const double a = std::fabs(v);
    char buf[64];
    if (a != 0 && (a >= 1e6 || a < 1e-4)) std::snprintf(buf, sizeof buf, "%.3g", v);
    else std::snprintf(buf, sizeof buf, "%.*f", dec, v);
    return buf;
}

void scale(bool xaxis, const std::string& code) {
    const PG_STATE& pg = L().pg;
    const bool ticks = code.find_first_of("Tt") != std::string::npos;
    const bool numbers = code.find_first_of("Nn") != std::string::npos;
    const float lo = xaxis ? std::min(pg.x1, pg.x2) : std::min(pg.y1, pg.y2);
    const float hi = xaxis ? std::max(pg.x1, pg.x2) : std::max(pg.y1, pg.y2);
    const double step = Nice_Tick_Step(lo, hi, xaxis ? 8 : 6);
    if (step <= 0) return;
    In_Frame f;
    Target_Painter tp;
    double W = 1, H = 1;
    if (!tp || !Target_Size(W, H)) return;
    QPainter& p = *tp;
    const QRectF fr = f.clip();
    const double tick = std::max(4.0 * Dot_Scale(), 0.012 * H);
    const float at = xaxis ? (pg.xtick_set ? pg.xtick_y : pg.y1) : (pg.ytick_set ? pg.ytick_x : pg.x1);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(Colour(L().gr.colour), Line_Scale()));
    QFont font("Sans Serif");
    font.setPixelSize(Font_Pixels(L().gr.font_h));
    p.setFont(font);
    const QFontMetricsF fm(font);
    // "P": the values are powers of ten; a label 10 with its exponent at each whole decade and
    // minor ticks at 2 to 9 times it, when at least one decade is in range
    if (code.find('P') != std::string::npos && std::floor(hi) >= std::ceil(lo)) {
        static const char* const sup[] = {"\u2070", "\u00b9", "\u00b2", "\u00b3", "\u2074",
                                          "\u2075", "\u2076", "\u2077", "\u2078", "\u2079"};
        const int every = std::max(1, static_cast<int>(std::ceil((hi - lo) / 8.0)));
        for (int d = static_cast<int>(std::floor(lo)); d <= static_cast<int>(std::ceil(hi)); ++d) {
            for (int m = 1; m <= 9; ++m) {
                const double v = d + std::log10(static_cast<double>(m));
                if (v < lo - 1e-9 || v > hi + 1e-9) continue;
                const QPointF q = xaxis ? To_Pixel(static_cast<float>(v), at) : To_Pixel(at, static_cast<float>(v));
                const double len = m == 1 ? tick : (every == 1 ? tick / 2 : 0);
                if (ticks && len > 0) {
                    if (xaxis) p.drawLine(q, q - QPointF(0, len));
                    else p.drawLine(q, q + QPointF(len, 0));
                }
                if (!numbers || m != 1 || (d % every) != 0) continue;
                std::string e = d < 0 ? "\u207b" : "";
                for (char c : std::to_string(std::abs(d))) e += sup[c - '0'];
                const QString s = Q("10" + e);
                const double w = fm.horizontalAdvance(s);
                if (xaxis) p.drawText(QPointF(q.x() - w / 2, q.y() + tick + fm.ascent()), s);
                else p.drawText(QPointF(q.x() - tick - w, q.y() + fm.ascent() / 2 - 1), s);
            }
        }
        return;
    }
    for (double v = std::ceil(lo / step - 1e-6) * step; v <= hi + step * 1e-6; v += step) {
        const QPointF q = xaxis ? To_Pixel(static_cast<float>(v), at) : To_Pixel(at, static_cast<float>(v));
        if (ticks) {
            if (xaxis) p.drawLine(q, q - QPointF(0, tick));
            else p.drawLine(q, q + QPointF(tick, 0));
            // minor ticks at the half steps
            const QPointF h = xaxis ? To_Pixel(static_cast<float>(v + step / 2), at) : To_Pixel(at, static_cast<float>(v + step / 2));
            if (v + step / 2 <= hi && (xaxis ? fr.contains(h.x(), fr.center().y()) : fr.contains(fr.center().x(), h.y()))) {
                if (xaxis) p.drawLine(h, h - QPointF(0, tick / 2));
                else p.drawLine(h, h + QPointF(tick / 2, 0));
            }
        }
        if (numbers) {
            const QString s = Q(number_text(v, step));
            const double w = fm.horizontalAdvance(s);
            if (xaxis) p.drawText(QPointF(q.x() - w / 2, q.y() + tick + fm.ascent()), s);
            else p.drawText(QPointF(q.x() - tick - w, q.y() + fm.ascent() / 2 - 1), s);
        }
    }
}

void frame_text(const std::string& text, const std::string& position, int where) {
    // where: 0 title (above), 1 X label (below), 2 Y label (left, rotated)
    if (text.empty() || position == "N" || position == "--") return;
    In_Frame f;
    Target_Painter tp;
    double W = 1, H = 1;
    if (!tp || !Target_Size(W, H)) return;
    QPainter& p = *tp;
    const QRectF fr = f.clip();
    p.setRenderHint(QPainter::TextAntialiasing);
    p.setPen(Colour(L().gr.colour));
    QFont font(L().gr.font == 2 ? "Serif" : "Sans Serif");
    font.setPixelSize(Font_Pixels(L().gr.font_h));
    font.setBold(L().gr.font_style & 1);
    font.setItalic(L().gr.font_style & 2);
    p.setFont(font);
    const QFontMetricsF fm(font);
    const QString s = Q(text);
    const double w = fm.horizontalAdvance(s);
    const char c = position.empty() ? 'C' : position[0];
    if (where == 2) {
        const double y = c == 'T' ? fr.top() + w / 2 : c == 'B' ? fr.bottom() - w / 2 : fr.center().y();
        p.translate(fr.left() - 0.075 * W, y);
        p.rotate(-90);
        p.drawText(QPointF(-w / 2, 0), s);
        return;
    }
    const double x = c == 'L' ? fr.left() : c == 'R' ? fr.right() - w : fr.center().x() - w / 2;
    const double y = where == 0 ? fr.top() - fm.descent() - 0.02 * H : fr.bottom() + 0.045 * H + fm.ascent();
    p.drawText(QPointF(x, y), s);
}

}  // namespace

double Nice_Tick_Step(double low, double high, int wanted) {
    const double range = std::fabs(high - low);
    if (!(range > 0) || !std::isfinite(range) || wanted < 1) return 0;
    const double raw = range / wanted;
    const double mag = std::pow(10.0, std::floor(std::log10(raw)));
    const double norm = raw / mag;
    const double nice = norm < 1.5 ? 1 : norm < 3.5 ? 2 : norm < 7.5 ? 5 : 10;
    return nice * mag;
}

void IPgArea(float left, float bottom, float right, float top) {
    PG_STATE& pg = L().pg;
    const GR_STATE& g = L().gr;
    pg.left = left, pg.bottom = bottom, pg.right = right, pg.top = top;
    pg.page_x1 = g.ux1, pg.page_y1 = g.uy1, pg.page_x2 = g.ux2, pg.page_y2 = g.uy2;
    pg.gax1 = g.ax1, pg.gay1 = g.ay1, pg.gax2 = g.ax2, pg.gay2 = g.ay2;
}

void IPgUnits(float x1, float y1, float x2, float y2) {
    PG_STATE& pg = L().pg;
    pg.x1 = x1, pg.y1 = y1;
    pg.x2 = x2 == x1 ? x1 + 1 : x2;
    pg.y2 = y2 == y1 ? y1 + 1 : y2;
    pg.polar = false;
    pg.xtick_set = pg.ytick_set = false;
}

void IPgUnitsPolar(float x1, float y1, float x2, float y2) {
    IPgUnits(x1, y1, x2, y2);
    L().pg.polar = true;
}

void IPgUnitsXYZ(float x1, float y1, float, float x2, float y2, float) { IPgUnits(x1, y1, x2, y2); }

void IPgStartGraph(int kind, int sets, int) {
    PG_STATE& pg = L().pg;
    pg.sets.assign(static_cast<std::size_t>(std::max(sets, 1) + 1), PG_SET{});
    pg.current_set = 1;
    if (kind == PgPolar) pg.polar = true;
}

void IPgStyle(int set, int fill, int marker, int colour, int line_type, int line_width, int marker_size) {
    PG_STATE& pg = L().pg;
    if (set < 1) return;
    if (pg.sets.size() <= static_cast<std::size_t>(set)) pg.sets.resize(static_cast<std::size_t>(set) + 1);
    pg.sets[static_cast<std::size_t>(set)] = PG_SET{fill, marker, colour & 0xFFFFFF, line_type, line_width, marker_size};
    pg.current_set = set;
}

void IPgMarker(int set, int marker) {
    PG_STATE& pg = L().pg;
    if (set < 1) return;
    if (pg.sets.size() <= static_cast<std::size_t>(set)) pg.sets.resize(static_cast<std::size_t>(set) + 1);
    pg.sets[static_cast<std::size_t>(set)].marker = marker;
}

void IPgNewSet(int set) { L().pg.current_set = std::max(set, 1); }

void IPgXYLine(const float* x, const float* y, int n) {
    if (!x || !y || n < 1) return;
    In_Frame f;
    double W = 1, H = 1;
    if (!Target_Size(W, H)) return;
    const PG_SET& s = set_now();
    if (s.line_type == -1) return;
    const QRectF clip = f.clip();
    const double cl = std::floor(clip.left()) - 1, cr = std::ceil(clip.right()) + 1;
    // One column of pixels keeps its first, lowest, highest and last point: the same
    // picture as every point joined, at a cost that follows the width.
    QPolygonF out;
    out.reserve(static_cast<int>(std::min<double>(n, 4 * (cr - cl + 3))));
    bool open = false;
    double col = 0;
    QPointF first, lo, hi, last;
    auto flush = [&] {
        if (!open) return;
        out << first;
        if (lo.y() != first.y() || hi.y() != first.y()) {
            if (lo.x() < hi.x() || (lo.x() == hi.x())) out << lo << hi;
            else out << hi << lo;
        }
        out << last;
    };
    const PIXEL_MAP map = Pixel_Map();
    const bool polar = L().pg.polar;
    for (int i = 0; i < n; ++i) {
        float px = x[i], py = y[i];
        if (!std::isfinite(px) || !std::isfinite(py)) continue;
        if (polar) polar_to_xy(x[i], y[i], px, py);
        QPointF q = map(px, py);
        q.setY(std::clamp(q.y(), -1e6, 1e6));
        const double c = std::clamp(std::floor(q.x()), cl, cr);
        if (open && c == col) {
            if (q.y() > lo.y()) lo = q;
            if (q.y() < hi.y()) hi = q;
            last = q;
            continue;
        }
        flush();
        open = true;
        col = c;
        first = lo = hi = last = q;
    }
    flush();
    // A dense curve is drawn pixel by pixel: smoothing would not show, and the
    // painter's cost per segment dominates when thousands of curves are drawn.
    const bool solid = s.line_type == 0 && std::clamp(s.line_width, 1, 5) == 1;
    QImage* t = L().ex.on ? nullptr : Target();
    if (t && solid && L().gr.plot_mode != PlotXor && Raster_Direct(*t) && out.size() >= clip.width()) {
        Raster_Polyline(*t, clip.toAlignedRect(), out.constData(), static_cast<int>(out.size()), Colour(s.colour).rgb());
        if (L().gr.kind == 1) Refresh_Window(L().gr.handle);
        return;
    }
    Target_Painter tp;
    if (!tp) return;
    QPainter& p = *tp;
    p.setClipRect(clip);
    if (L().gr.plot_mode == PlotXor) p.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    else p.setRenderHint(QPainter::Antialiasing);
    p.setPen(set_pen(s, false));
    p.drawPolyline(out);
    if (L().gr.kind == 1) Refresh_Window(L().gr.handle);
}

void IPgXYMarkers(const float* x, const float* y, int n) {
    if (!x || !y || n < 1) return;
    In_Frame f;
    double W = 1, H = 1;
    if (!Target_Size(W, H)) return;
    const PG_SET& s = set_now();
    if (s.marker <= 1) return;
    const QRectF clip = f.clip().adjusted(-1, -1, 1, 1);
    const int w = static_cast<int>(clip.width()) + 2, h = static_cast<int>(clip.height()) + 2;
    static Pixel_Marks used;  // reused: clearing a window-sized grid per curve would cost more than the curve
    used.Reset(w, h);
    std::vector<QPointF> pts;
    const PIXEL_MAP map = Pixel_Map();
    const bool polar = L().pg.polar;
    const double cx0 = clip.left(), cx1 = clip.right(), cy0 = clip.top(), cy1 = clip.bottom();
    for (int i = 0; i < n; ++i) {
        float px = x[i], py = y[i];
        if (!std::isfinite(px) || !std::isfinite(py)) continue;
        if (polar) polar_to_xy(x[i], y[i], px, py);
        const double qx = map.ox + map.sx * px, qy = map.oy + map.sy * py;
        if (!(qx >= cx0 && qx < cx1 && qy >= cy0 && qy < cy1)) continue;
        const QPointF q(qx, qy);
        const int ix = static_cast<int>(qx - cx0), iy = static_cast<int>(qy - cy0);
        if (!used.Mark(ix, iy)) continue;  // one marker per occupied pixel
        pts.push_back(q);
    }
    const double r = std::max(1.0, s.marker_size * 0.5) * Dot_Scale();
    // Many markers: the marker's pixels, drawn once without smoothing, are copied at every point.
    QImage* t = L().ex.on ? nullptr : Target();
    if (t && pts.size() > 500 && L().gr.plot_mode != PlotXor && Raster_Direct(*t)) {
        const int half = static_cast<int>(std::ceil(r)) + 1;
        Raster_Markers(*t, f.clip().toAlignedRect().adjusted(-half, -half, half, half), pts,
                       Marker_Offsets(s.marker, r, s.fill == 3), Colour(s.colour).rgb());
        if (L().gr.kind == 1) Refresh_Window(L().gr.handle);
        return;
    }
    Target_Painter tp;
    if (!tp) return;
    QPainter& p = *tp;
    const double m = s.marker_size * Dot_Scale();
    p.setClipRect(f.clip().adjusted(-m, -m, m, m));
    QPen pen(Colour(s.colour), Line_Scale());
    p.setPen(pen);
    p.setBrush(s.fill == 3 ? QBrush(Colour(s.colour)) : Qt::NoBrush);
    if (L().gr.plot_mode == PlotXor) p.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    else p.setRenderHint(QPainter::Antialiasing);
    for (const QPointF& q : pts) Draw_Marker(p, q, s.marker, r);
    if (L().gr.kind == 1) Refresh_Window(L().gr.handle);
}

void IPgPolylines(const std::vector<std::vector<float>>& x, const std::vector<std::vector<float>>& y,
                  const std::vector<int>& colours) {
    std::vector<float> fx, fy;
    std::vector<int> start;
    for (std::size_t k = 0; k < std::min(x.size(), y.size()); ++k) {
        start.push_back(static_cast<int>(fx.size()));
        const std::size_t n = std::min(x[k].size(), y[k].size());
        fx.insert(fx.end(), x[k].begin(), x[k].begin() + static_cast<std::ptrdiff_t>(n));
        fy.insert(fy.end(), y[k].begin(), y[k].begin() + static_cast<std::ptrdiff_t>(n));
    }
    IPgPolylines(fx, fy, start, colours);
}

void IPgPolylines(const std::vector<float>& x, const std::vector<float>& y, const std::vector<int>& start,
                  const std::vector<int>& colours) {
    In_Frame f;
    // hundreds of lines are denser than the pixels: smoothing would only blur them, and
    // one-pixel lines are then written straight into the picture (never into a file)
    const bool dense = start.size() > 400;
    QImage* t = L().ex.on ? nullptr : Target();
    const bool direct = t && dense && std::clamp(set_now().line_width, 1, 5) == 1 && set_now().line_type == 0 &&
                        L().gr.plot_mode != PlotXor && Raster_Direct(*t);
    std::optional<Target_Painter> tp;
    if (!direct) {
        tp.emplace();
        if (!*tp) return;
        (*tp)->setClipRect(f.clip());
        (*tp)->setRenderHint(QPainter::Antialiasing, !dense);
    }
    QPen pen = set_pen(set_now(), false);
    const PIXEL_MAP map = Pixel_Map();
    const QRect clip = f.clip().toAlignedRect();
    QPolygonF poly;
    const std::size_t points = std::min(x.size(), y.size());
    for (std::size_t k = 0; k < std::min(start.size(), colours.size()); ++k) {
        poly.clear();
        const std::size_t end = std::min(k + 1 < start.size() ? static_cast<std::size_t>(start[k + 1]) : points, points);
        for (std::size_t i = static_cast<std::size_t>(std::max(start[k], 0)); i < end; ++i)
            if (std::isfinite(x[i]) && std::isfinite(y[i])) poly << map(x[i], y[i]);
        if (poly.size() < 2) continue;
        if (direct) {
            Raster_Polyline(*t, clip, poly.constData(), static_cast<int>(poly.size()), Colour(colours[k]).rgb());
            continue;
        }
        pen.setColor(Colour(colours[k]));
        (*tp)->setPen(pen);
        (*tp)->drawPolyline(poly);
    }
    if (L().gr.kind == 1) Refresh_Window(L().gr.handle);
}

void IPgErrorBars(const float* x, const float* y_low, const float* y_high, int n) {
    if (!x || !y_low || !y_high || n < 1) return;
    In_Frame f;
    if (!L().ex.on && Queue_Bars(f.clip(), x, y_low, y_high, n, Colour(set_now().colour).rgb())) return;
    Target_Painter tp;
    if (!tp) return;
    QPainter& p = *tp;
    const QRectF clip = f.clip();
    std::map<int, std::pair<double, double>> cols;  // pixel column -> top, bottom
    const PIXEL_MAP map = Pixel_Map();
    for (int i = 0; i < n; ++i) {
        const QPointF a = map(x[i], y_low[i]), b = map(x[i], y_high[i]);
        if (a.x() < clip.left() - 1 || a.x() > clip.right() + 1) continue;
        const int c = static_cast<int>(std::floor(a.x()));
        auto [it, fresh] = cols.try_emplace(c, std::min(a.y(), b.y()), std::max(a.y(), b.y()));
        if (!fresh) {
            it->second.first = std::min(it->second.first, std::min(a.y(), b.y()));
            it->second.second = std::max(it->second.second, std::max(a.y(), b.y()));
        }
    }
    p.setClipRect(clip);
    if (L().gr.plot_mode == PlotXor) p.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    // One pixel wide at any resolution: bars side by side join, as they do on the screen.
    p.setPen(QPen(Colour(set_now().colour), 1));
    for (const auto& [c, tb] : cols) p.drawLine(QPointF(c + 0.5, tb.first), QPointF(c + 0.5, tb.second));
    if (L().gr.kind == 1) Refresh_Window(L().gr.handle);
}

void IPgTitle(const std::string& text, const std::string& position) { frame_text(text, position, 0); }
void IPgXLabel(const std::string& text, const std::string& position) { frame_text(text, position, 1); }
void IPgYLabel(const std::string& text, const std::string& position) { frame_text(text, position, 2); }
void IPgXScale(const std::string& code) { scale(true, code); }
void IPgYScale(const std::string& code) { scale(false, code); }
void IPgXTickPos(float y) {
    L().pg.xtick_y = y;
    L().pg.xtick_set = true;
}
void IPgYTickPos(float x) {
    L().pg.ytick_x = x;
    L().pg.ytick_set = true;
}

void IPgBorder() {
    In_Frame f;
    Target_Painter tp;
    if (!tp) return;
    tp->setPen(QPen(Colour(L().gr.colour), Line_Scale()));
    tp->drawRect(f.clip());
    if (L().gr.kind == 1) Refresh_Window(L().gr.handle);
}

void IPgToGrUnits() {
    In_Frame f;
    f.keep = L().gr;  // the frame units stay
}

void IPgXYToPage(float x, float y, float& px, float& py) {
    const PG_STATE& pg = L().pg;
    if (pg.polar) polar_to_xy(x, y, x, y);
    const double fx = pg.left + (x - pg.x1) / (pg.x2 - pg.x1) * (pg.right - pg.left);
    const double fy = pg.bottom + (y - pg.y1) / (pg.y2 - pg.y1) * (pg.top - pg.bottom);
    px = static_cast<float>(pg.page_x1 + fx * (pg.page_x2 - pg.page_x1));
    py = static_cast<float>(pg.page_y1 + fy * (pg.page_y2 - pg.page_y1));
}

void IPgPageToXY(float px, float py, float& x, float& y) {
    const PG_STATE& pg = L().pg;
    const double fx = (px - pg.page_x1) / (pg.page_x2 - pg.page_x1);
    const double fy = (py - pg.page_y1) / (pg.page_y2 - pg.page_y1);
    x = static_cast<float>(pg.x1 + (fx - pg.left) / (pg.right - pg.left) * (pg.x2 - pg.x1));
    y = static_cast<float>(pg.y1 + (fy - pg.bottom) / (pg.top - pg.bottom) * (pg.y2 - pg.y1));
}

void IPgLegendText(const std::string& position, float px, float py, const std::string& text) {
    GR_STATE keep = L().gr;
    const PG_STATE& pg = L().pg;
    L().gr.ax1 = pg.gax1, L().gr.ay1 = pg.gay1, L().gr.ax2 = pg.gax2, L().gr.ay2 = pg.gay2;
    L().gr.ux1 = pg.page_x1, L().gr.uy1 = pg.page_y1, L().gr.ux2 = pg.page_x2, L().gr.uy2 = pg.page_y2;
    const char c = position.empty() ? 'L' : position[0];
    if (c == 'C') WGrTextCentre(px, py, text);
    else if (c == 'R') WGrTextRight(px, py, text);
    else WGrTextString(px, py, text);
    L().gr = keep;
}

void IPgFrameLimits(float& x1, float& y1, float& x2, float& y2) {
    const PG_STATE& pg = L().pg;
    x1 = pg.x1, y1 = pg.y1, x2 = pg.x2, y2 = pg.y2;
}

}  // namespace zendrite
