// Drawing primitives in user units on the selected target (window picture or bitmap).
#include <QPainter>
#include <QPainterPath>
#include <cmath>

#include "app/qt/present_state.h"
#include "app/qt/raster_fast.h"

namespace zendrite {
using namespace qt;

namespace qt {

QColor Colour(int rgb) {
    const int r = rgb & 0xFF, g = (rgb >> 8) & 0xFF, b = (rgb >> 16) & 0xFF;
    if (L().ex.on && L().ex.options.grey) {
        const int k = qGray(r, g, b);
        return QColor(k, k, k);
    }
    return QColor(r, g, b);
}

QImage* Target() {
    // the picture is about to be painted or read: queued runs go first
    Flush_Spans();
    return Span_Target();
}

QPointF To_Pixel(float x, float y) {
    const GR_STATE& g = L().gr;
    double W = 1, H = 1;
    Target_Size(W, H);
    const double fx = g.ax1 + (x - g.ux1) / (g.ux2 - g.ux1 == 0 ? 1 : g.ux2 - g.ux1) * (g.ax2 - g.ax1);
    const double fy = g.ay1 + (y - g.uy1) / (g.uy2 - g.uy1 == 0 ? 1 : g.uy2 - g.uy1) * (g.ay2 - g.ay1);
    return QPointF(fx * W, (1.0 - fy) * H);
}

PIXEL_MAP Pixel_Map() {
    const GR_STATE& g = L().gr;
    double W = 1, H = 1;
    Target_Size(W, H);
    const double ux = g.ux2 - g.ux1 == 0 ? 1 : g.ux2 - g.ux1, uy = g.uy2 - g.uy1 == 0 ? 1 : g.uy2 - g.uy1;
    PIXEL_MAP m;
    m.sx = (g.ax2 - g.ax1) / ux * W;
    m.ox = (g.ax1 - g.ux1 * (g.ax2 - g.ax1) / ux) * W;
    m.sy = -(g.ay2 - g.ay1) / uy * H;
    m.oy = (1.0 - (g.ay1 - g.uy1 * (g.ay2 - g.ay1) / uy)) * H;
    return m;
}

void Draw_Marker(QPainter& p, const QPointF& c, int marker, double r) {
    switch (marker) {
    case 2: p.drawEllipse(c, r, r); break;
    case 3: p.drawRect(QRectF(c.x() - r, c.y() - r, 2 * r, 2 * r)); break;
    case 4: p.drawPolygon(QPolygonF({{c.x(), c.y() - r}, {c.x() + r, c.y() + r}, {c.x() - r, c.y() + r}})); break;
    case 5: p.drawPolygon(QPolygonF({{c.x(), c.y() - r}, {c.x() + r, c.y()}, {c.x(), c.y() + r}, {c.x() - r, c.y()}})); break;
    case 6:
        p.drawLine(QPointF(c.x() - r, c.y()), QPointF(c.x() + r, c.y()));
        p.drawLine(QPointF(c.x(), c.y() - r), QPointF(c.x(), c.y() + r));
        break;
    case 7:
        p.drawLine(QPointF(c.x() - r, c.y() - r), QPointF(c.x() + r, c.y() + r));
        p.drawLine(QPointF(c.x() - r, c.y() + r), QPointF(c.x() + r, c.y() - r));
        break;
    default: {
        const QBrush keep = p.brush();
        p.setBrush(p.pen().color());
        p.drawEllipse(c, r, r);
        p.setBrush(keep);
    }
    }
}

void From_Pixel(const QPointF& p, float& x, float& y) {
    const GR_STATE& g = L().gr;
    double W = 1, H = 1;
    Target_Size(W, H);
    const double fx = p.x() / W, fy = 1.0 - p.y() / H;
    x = static_cast<float>(g.ux1 + (fx - g.ax1) / (g.ax2 - g.ax1) * (g.ux2 - g.ux1));
    y = static_cast<float>(g.uy1 + (fy - g.ay1) / (g.ay2 - g.ay1) * (g.uy2 - g.uy1));
}

float Pixels_Per_Unit_X() {
    const GR_STATE& g = L().gr;
    double W = 1, H = 1;
    Target_Size(W, H);
    return static_cast<float>(W * (g.ax2 - g.ax1) / std::fabs(g.ux2 - g.ux1 == 0 ? 1 : g.ux2 - g.ux1));
}
float Pixels_Per_Unit_Y() {
    const GR_STATE& g = L().gr;
    double W = 1, H = 1;
    Target_Size(W, H);
    return static_cast<float>(H * (g.ay2 - g.ay1) / std::fabs(g.uy2 - g.uy1 == 0 ? 1 : g.uy2 - g.uy1));
}

}  // namespace qt

namespace {

Qt::PenStyle pen_style(int type) {
    switch (type) {
    case -1: return Qt::NoPen;
    case 1: return Qt::DotLine;
    case 2: return Qt::DashLine;
    case 3: return Qt::DashDotLine;
    case 4: return Qt::DashDotDotLine;
    default: return Qt::SolidLine;
    }
}

// Fill 3 solid; 1 hatched (direction 0 rising, 1 falling, 2 level, 3 upright);
// 2 cross-hatched; anything else none.
QBrush fill_brush(const GR_STATE& g) {
    static constexpr Qt::BrushStyle kHatch[] = {Qt::BDiagPattern, Qt::FDiagPattern, Qt::HorPattern, Qt::VerPattern};
    switch (g.fill) {
    case 3: return QBrush(Colour(g.colour));
    case 1: return QBrush(Colour(g.colour), kHatch[std::clamp(g.fill_direction, 0, 3)]);
    case 2: return QBrush(Colour(g.colour), Qt::DiagCrossPattern);
    default: return Qt::NoBrush;
    }
}

// A painter set up with the present colour, line and mode; exclusive-or drawing is not smoothed,
// so that drawing the same thing twice gives back every pixel.
struct Pen_Painter {
    Target_Painter tp;
    QPainter* p = nullptr;
    Pen_Painter() {
        if (!tp) return;
        p = &*tp;
        const GR_STATE& g = L().gr;
        QPen pen(Colour(g.colour));
        pen.setWidthF(std::clamp(g.line_width, 1, 5) * Line_Scale());
        pen.setStyle(pen_style(g.line_type));
        pen.setCapStyle(Qt::FlatCap);
        p->setPen(pen);
        p->setBrush(fill_brush(g));
        if (g.plot_mode == PlotXor) p->setCompositionMode(QPainter::RasterOp_SourceXorDestination);
        else p->setRenderHint(QPainter::Antialiasing, true);
    }
    explicit operator bool() const { return static_cast<bool>(tp); }
};

void touched() {
    const GR_STATE& g = L().gr;
    if (g.kind == 1) Refresh_Window(g.handle);
}

}  // namespace

int WRGB(int r, int g, int b) { return (r & 0xFF) | ((g & 0xFF) << 8) | ((b & 0xFF) << 16); }
void WRGBsplit(int rgb, int& r, int& g, int& b) {
    r = rgb & 0xFF;
    g = (rgb >> 8) & 0xFF;
    b = (rgb >> 16) & 0xFF;
}

void IGrSelect(int kind, int handle) {
    LAYER& l = L();
    l.gr.kind = kind == 2 ? 2 : 1;
    l.gr.handle = kind == 2 ? handle : (Window(handle) ? handle : l.selected_window);
}

void IGrArea(float x1, float y1, float x2, float y2) {
    GR_STATE& g = L().gr;
    g.ax1 = std::clamp(x1, 0.0f, 1.0f);
    g.ay1 = std::clamp(y1, 0.0f, 1.0f);
    g.ax2 = std::clamp(x2, 0.0f, 1.0f);
    g.ay2 = std::clamp(y2, 0.0f, 1.0f);
    if (g.ax2 <= g.ax1) g.ax2 = std::min(1.0f, g.ax1 + 1e-6f);
    if (g.ay2 <= g.ay1) g.ay2 = std::min(1.0f, g.ay1 + 1e-6f);
}

void IGrUnits(float x1, float y1, float x2, float y2) {
    LAYER& l = L();
    GR_STATE& g = l.gr;
    g.ux1 = x1;
    g.uy1 = y1;
    g.ux2 = x2 == x1 ? x1 + 1 : x2;
    g.uy2 = y2 == y1 ? y1 + 1 : y2;
    // The whole target in these units is the page of the window that shows it.
    if (g.ax1 == 0 && g.ay1 == 0 && g.ax2 == 1 && g.ay2 == 1 && x1 == 0 && y1 == 0 && x2 > 0 && y2 > 0) {
        const int win = g.kind == 1 ? g.handle : l.selected_window;
        if (WINDOW_STATE* w = Window(win)) {
            w->page_w = x2;
            w->page_h = y2;
        }
    }
}

void IGrColourN(int rgb) { L().gr.colour = rgb & 0xFFFFFF; }

void IGrColour(const std::string& name) {
    std::string n = name;
    for (char& c : n) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    int rgb = 0;
    if (n == "yellow") rgb = WRGB(255, 255, 0);
    else if (n == "green") rgb = WRGB(0, 255, 0);
    else if (n == "magenta") rgb = WRGB(255, 0, 255);
    else if (n == "cyan") rgb = WRGB(0, 255, 255);
    else if (n == "blue") rgb = WRGB(0, 0, 255);
    else if (n == "red") rgb = WRGB(255, 0, 0);
    else if (n == "white") rgb = WRGB(255, 255, 255);
    L().gr.colour = rgb;
}

void IGrPaletteBackground(int rgb) { L().gr.background = rgb & 0xFFFFFF; }

void IGrAreaClear() {
    Target_Painter p;
    double W = 1, H = 1;
    if (!p || !Target_Size(W, H)) return;
    const GR_STATE& g = L().gr;
    const QRectF r(g.ax1 * W, (1 - g.ay2) * H, (g.ax2 - g.ax1) * W, (g.ay2 - g.ay1) * H);
    p->fillRect(r, Colour(g.background));
    touched();
}

void IGrLineWidth(int width) { L().gr.line_width = std::clamp(width, 1, 5); }
void IGrLineType(int type) { L().gr.line_type = type; }
void IGrFillPattern(int pattern, int, int direction) {
    L().gr.fill = pattern;
    L().gr.fill_direction = direction;
}
void IGrPlotMode(int mode) { L().gr.plot_mode = mode == PlotXor ? PlotXor : PlotNormal; }

void IGrMoveTo(float x, float y) {
    L().gr.cx = x;
    L().gr.cy = y;
}

void IGrLineTo(float x, float y) {
    GR_STATE& g = L().gr;
    if (Pen_Painter pp; pp) {
        pp.p->drawLine(To_Pixel(g.cx, g.cy), To_Pixel(x, y));
        touched();
    }
    g.cx = x;
    g.cy = y;
}

void IGrPoint(float x, float y) {
    if (Pen_Painter pp; pp) {
        pp.p->drawPoint(To_Pixel(x, y));
        touched();
    }
}

void IGrRectangle(float x1, float y1, float x2, float y2) {
    if (Pen_Painter pp; pp) {
        pp.p->drawRect(QRectF(To_Pixel(x1, y1), To_Pixel(x2, y2)).normalized());
        touched();
    }
}

void IGrCircle(float x, float y, float radius) { IGrEllipse(x, y, radius, 1.0f); }

void IGrEllipse(float x, float y, float radius, float ratio) {
    if (Pen_Painter pp; pp) {
        const float rx = radius * Pixels_Per_Unit_X();
        pp.p->drawEllipse(To_Pixel(x, y), rx, rx * ratio);
        touched();
    }
}

void IGrArc(float x, float y, float radius, float start_angle, float sweep) {
    if (Pen_Painter pp; pp) {
        const float r = radius * Pixels_Per_Unit_X();
        const QPointF c = To_Pixel(x, y);
        pp.p->drawArc(QRectF(c.x() - r, c.y() - r, 2 * r, 2 * r), static_cast<int>(start_angle * 16),
                     static_cast<int>(sweep * 16));
        touched();
    }
}

void IGrPolygonSimple(const std::vector<float>& x, const std::vector<float>& y) {
    Pen_Painter pp;
    if (!pp) return;
    QPolygonF poly;
    for (std::size_t i = 0; i < std::min(x.size(), y.size()); ++i) poly << To_Pixel(x[i], y[i]);
    pp.p->drawPolygon(poly);
    touched();
}

void IGrPolygonShaded(const std::vector<float>& x, const std::vector<float>& y) {
    const int keep = L().gr.fill;
    L().gr.fill = 3;
    IGrPolygonSimple(x, y);
    L().gr.fill = keep;
}

void IGrImageRGB(float x1, float y1, float x2, float y2, int width, int height, const std::vector<std::uint8_t>& rgb) {
    if (width < 1 || height < 1 || rgb.size() < static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3) return;
    std::vector<unsigned> packed(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (std::size_t i = 0; i < packed.size(); ++i)
        packed[i] = (unsigned{rgb[3 * i]} << 16) | (unsigned{rgb[3 * i + 1]} << 8) | unsigned{rgb[3 * i + 2]};
    IGrImage(x1, y1, x2, y2, width, height, packed);
}

void IGrPolygonGrad(const std::vector<float>& x, const std::vector<float>& y, int rgb_from, int rgb_to) {
    Target_Painter p;
    if (!p || x.empty()) return;
    QPolygonF poly;
    for (std::size_t i = 0; i < std::min(x.size(), y.size()); ++i) poly << To_Pixel(x[i], y[i]);
    const QRectF b = poly.boundingRect();
    QLinearGradient grad(b.bottomLeft(), b.topLeft());
    grad.setColorAt(0, Colour(rgb_from));
    grad.setColorAt(1, Colour(rgb_to));
    p->setPen(Qt::NoPen);
    p->setBrush(grad);
    p->drawPolygon(poly);
    touched();
}

void IGrTriangle(float x1, float y1, float x2, float y2, float x3, float y3) {
    IGrPolygonSimple({x1, x2, x3}, {y1, y2, y3});
}
void IGrTrapezium(float x1, float y1, float x2, float y2, float x3, float y3, float x4, float y4) {
    IGrPolygonSimple({x1, x2, x3, x4}, {y1, y2, y3, y4});
}

void IGrMarker(float x, float y, int marker, float size) {
    if (marker <= 1) return;
    Pen_Painter pp;
    if (!pp) return;
    Draw_Marker(*pp.p, To_Pixel(x, y), marker, std::max(1.0, size * 0.5) * Dot_Scale());
    touched();
}

void WBitmapCreate(int& handle, int width, int height) {
    LAYER& l = L();
    handle = l.next_bitmap++;
    // While a picture is exported every operation paints on it: the bitmap stands empty.
    if (l.ex.on) width = height = 1;
    QImage img(std::max(width, 1), std::max(height, 1), QImage::Format_RGB32);
    img.fill(Colour(l.gr.background));
    l.bitmaps[handle] = img;
}

void WBitmapDestroy(int handle) {
    LAYER& l = L();
    Drop_Spans(handle);
    l.bitmaps.erase(handle);
    if (l.gr.kind == 2 && l.gr.handle == handle) IGrSelect(1, l.selected_window);
}

void WBitmapPut(int handle, int /*mode*/) {
    LAYER& l = L();
    if (l.ex.on) return;  // the exported picture has it already; the window stays as it was
    Flush_Spans();
    auto it = l.bitmaps.find(handle);
    WINDOW_STATE* w = Window(l.selected_window);
    if (it == l.bitmaps.end() || !w) return;
    if (w->front.size() != it->second.size() || w->front.isNull()) {
        w->front = it->second.copy();
    } else {
        QPainter p(&w->front);
        p.drawImage(QPoint(0, 0), it->second);
    }
    Refresh_Window(l.selected_window);
}

void IGrLoadImageData(const std::string& file, int& error) {
    QImage img(Q(file));
    Target_Painter p;
    double W = 1, H = 1;
    error = img.isNull() || !p || !Target_Size(W, H) ? 1 : 0;
    if (error) return;
    const GR_STATE& g = L().gr;
    p->drawImage(QRectF(g.ax1 * W, (1 - g.ay2) * H, (g.ax2 - g.ax1) * W, (g.ay2 - g.ay1) * H), img);
    touched();
}

int IGrGetPixelRGB(int px, int py) {
    QImage* t = Target();
    if (!t || !t->valid(px, py)) return -1;
    const QRgb c = t->pixel(px, py);
    return WRGB(qRed(c), qGreen(c), qBlue(c));
}

}  // namespace zendrite

namespace zendrite {

void IGrImage(float x1, float y1, float x2, float y2, int width, int height, const std::vector<unsigned>& rgb) {
    if (width < 1 || height < 1 || rgb.size() < static_cast<std::size_t>(width) * height) return;
    Target_Painter p;
    if (!p) return;
    QImage img(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        QRgb* line = reinterpret_cast<QRgb*>(img.scanLine(y));
        const unsigned* from = rgb.data() + static_cast<std::size_t>(y) * width;
        for (int x = 0; x < width; ++x) line[x] = from[x] == kNoPixel ? 0u : (0xFF000000u | (from[x] & 0xFFFFFFu));
    }
    // Detector pixels and map cells stay square blocks: no smoothing between them.
    p->setRenderHint(QPainter::SmoothPixmapTransform, false);
    p->drawImage(QRectF(To_Pixel(x1, y2), To_Pixel(x2, y1)).normalized(), img);
    touched();
}

}  // namespace zendrite
