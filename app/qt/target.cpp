// What the drawing operations paint on: a window's picture, a bitmap, or a picture
// being written into a file or a printer.
#include <algorithm>
#include <cmath>

#include "app/qt/present_state.h"
#include "app/qt/raster_fast.h"

namespace zendrite::qt {

Target_Painter::Target_Painter() {
    LAYER& l = L();
    if (l.ex.on) {
        if (!l.ex.painter || l.gr.plot_mode == PlotXor) return;
        p_ = l.ex.painter;
        shared_ = true;
        p_->save();
        p_->setPen(QPen(Qt::black));
        p_->setBrush(Qt::NoBrush);
        return;
    }
    if (QImage* t = Target()) {
        own_.begin(t);
        p_ = &own_;
    }
}

Target_Painter::~Target_Painter() {
    if (shared_) p_->restore();
}

bool Target_Size(double& width, double& height) {
    const LAYER& l = L();
    if (l.ex.on) {
        width = l.ex.width, height = l.ex.height;
        return true;
    }
    const QImage* t = Span_Target();
    width = t ? t->width() : 1, height = t ? t->height() : 1;
    return t != nullptr;
}

double Dot_Scale() { return L().ex.on ? L().ex.dot_scale : 1.0; }

double Line_Scale() { return L().ex.on ? L().ex.dot_scale * std::clamp(L().ex.options.line_factor, 0.1, 10.0) : 1.0; }

int Font_Pixels(double fraction) {
    double w = 0, h = 0;
    if (!Target_Size(w, h)) h = 600;
    const float scale = L().ex.on ? static_cast<float>(std::clamp(L().ex.options.font_scale, 0.1, 10.0)) : 1.0f;
    return std::max(static_cast<int>(std::lround(6 * Dot_Scale())),
                    static_cast<int>(static_cast<float>(fraction) * static_cast<float>(h) * 0.8f * scale));
}

}  // namespace zendrite::qt
