// The mouse in the Quick View: rubber-band zoom, right button for the whole range, position read-out.
#include <algorithm>

#include "app/main/quick_view.h"
#include "support/edit_format.h"

namespace zendrite {

namespace {

constexpr int kLeft = 1, kRight = 2;

std::string by_format(const char* layout, float value) {
    hxl::EDIT_FORMAT_TYPE format;
    std::string out, unused;
    if (!hxl::Parse_Edit_Format(layout, format, unused)) return out;
    {
        hxl::Edit_Writer w(format, out);
        w.Real(value);
    }
    if (!out.empty() && out.back() == '\n') out.pop_back();
    return out;
}

// The band is drawn on the window itself in exclusive-or, so drawing it twice removes it.
void draw_band(const QUICK_VIEW_TYPE& qv) {
    WindowSelect(qv.qv_window);
    IGrSelect(1, qv.qv_window);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, qv.page_w, qv.page_h);
    IGrPlotMode(PlotXor);
    IGrColour("Yellow");
    IGrLineWidth(1);
    IGrFillPattern(0);
    IGrRectangle(std::min(qv.band_x0, qv.band_x1), std::min(qv.band_y0, qv.band_y1), std::max(qv.band_x0, qv.band_x1),
                 std::max(qv.band_y0, qv.band_y1));
    IGrPlotMode(PlotNormal);
}

}  // namespace

void Quick_View_Mouse(const WIN_MESSAGE& e) {
    QUICK_VIEW_TYPE& qv = Quick_View();
    if (qv.qv_count < 1 || !qv.drawn) return;
    if (e.type == MouseButDown && e.value1 == kLeft) {
        qv.band = true;
        qv.band_x0 = qv.band_x1 = e.gx;
        qv.band_y0 = qv.band_y1 = e.gy;
        draw_band(qv);
    } else if (e.type == MouseMove && qv.band) {
        draw_band(qv);
        qv.band_x1 = e.gx;
        qv.band_y1 = e.gy;
        draw_band(qv);
    } else if (e.type == MouseMove) {
        float x = 0, y = 0;
        Quick_View_Page_To_Data(e.gx, e.gy, x, y);
        WindowSelect(qv.qv_window);
        WindowOutStatusBar(4, "X= " + by_format("(f12.4)", x));
        WindowOutStatusBar(5, "Y= " + by_format("(f12.1)", y));
    } else if (e.type == MouseButUp && e.value1 == kLeft && qv.band) {
        draw_band(qv);
        qv.band = false;
        // a band without width or height is a click, not a window
        if (e.gx == qv.band_x0 || e.gy == qv.band_y0) return;
        float x1 = 0, y1 = 0, x2 = 0, y2 = 0;
        Quick_View_Page_To_Data(qv.band_x0, qv.band_y0, x1, y1);
        Quick_View_Page_To_Data(e.gx, e.gy, x2, y2);
        Plot_Quick_View(std::min(x1, x2), std::max(x1, x2), std::min(y1, y2), std::max(y1, y2));
    } else if (e.type == MouseButDown && e.value1 == kRight) {
        if (qv.band) {
            draw_band(qv);
            qv.band = false;
        }
        Quick_View_Full_Range();
        Plot_Quick_View(qv.qv_xmin, qv.qv_xmax, qv.qv_ymin, qv.qv_ymax);
    }
}

}  // namespace zendrite
