// Text in user units: fonts sized as fractions of the target.
#include <QFontMetricsF>
#include <QPainter>

#include "app/qt/present_state.h"

namespace zendrite {
using namespace qt;

namespace {

QFont current_font() {
    const GR_STATE& g = L().gr;
    QFont f(g.font == 2 ? "Serif" : g.font == 3 ? "Monospace" : "Sans Serif");
    f.setStyleHint(g.font == 2 ? QFont::Serif : g.font == 3 ? QFont::Monospace : QFont::SansSerif);
    f.setPixelSize(Font_Pixels(g.font_h));
    f.setBold(g.font_style & 1);
    f.setItalic(g.font_style & 2);
    return f;
}

// align: 0 left, 1 centre, 2 right; the point is on the base line.
void draw_text(float x, float y, const std::string& text, int align) {
    Target_Painter tp;
    if (!tp) return;
    QPainter& p = *tp;
    p.setRenderHint(QPainter::TextAntialiasing, L().gr.plot_mode != PlotXor);
    if (L().gr.plot_mode == PlotXor) p.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    p.setPen(Colour(L().gr.colour));
    const QFont f = current_font();
    p.setFont(f);
    const QString s = Q(text);
    const double w = QFontMetricsF(f).horizontalAdvance(s);
    p.translate(To_Pixel(x, y));
    p.rotate(-L().gr.orientation);
    p.drawText(QPointF(align == 1 ? -w / 2 : align == 2 ? -w : 0, 0), s);
    if (L().gr.kind == 1) Refresh_Window(L().gr.handle);
}

}  // namespace

void WGrTextFont(int font, int style, float width, float height) {
    GR_STATE& g = L().gr;
    g.font = font;
    g.font_style = style;
    g.font_w = width > 0 ? width : g.font_w;
    g.font_h = height > 0 ? height : g.font_h;
}
void WGrTextOrientation(float degrees) { L().gr.orientation = degrees; }
void WGrTextString(float x, float y, const std::string& text) { draw_text(x, y, text, 0); }
void WGrTextCentre(float x, float y, const std::string& text) { draw_text(x, y, text, 1); }
void WGrTextRight(float x, float y, const std::string& text) { draw_text(x, y, text, 2); }

float WGrTextLength(const std::string& text) {
    const double px = QFontMetricsF(current_font()).horizontalAdvance(Q(text));
    const float ppu = Pixels_Per_Unit_X();
    return ppu > 0 ? static_cast<float>(px / ppu) : 0.0f;
}

}  // namespace zendrite
