// The Quick View window: opening, its events, moving through the list, closing.
#include <algorithm>

#include "app/main/picture_commands.h"
#include "app/main/quick_view.h"
#include "app/main/zendrite_app.h"
#include "support/fixed_text.h"
#if ZD_WITH_PLOT
#include "graphics/plot_settings.h"
#include "graphics/plot_state.h"
#endif

namespace zendrite {

namespace {

void clear_picture() {
    QUICK_VIEW_TYPE& qv = Quick_View();
    Child_Picture_Start(qv.qv_window, qv.bitmap);
    IGrSelect(1, qv.qv_window);
    WBitmapPut(qv.bitmap, 0);
}

void redraw() {
    const QUICK_VIEW_TYPE& qv = Quick_View();
    if (qv.qv_count > 0 && qv.qv_pattern.npts > 0) Plot_Quick_View(qv.qv_xmin, qv.qv_xmax, qv.qv_ymin, qv.qv_ymax);
    else clear_picture();
}

void close_window() {
    QUICK_VIEW_TYPE& qv = Quick_View();
    WMenuSetState(40030, 2, 0);
    if (qv.bitmap) WBitmapDestroy(qv.bitmap);
    qv.bitmap = 0;
    qv.band = false;
    WindowCloseChild(qv.qv_window);
    qv.qv_window = 0;
}

// Previous (-1) or next (+1): the zoom of the view stays.
void move(int step) {
    QUICK_VIEW_TYPE& qv = Quick_View();
    const int item = step < 0 ? kQvPrevious : kQvNext;
    if (qv.qv_count < 1 || WMenuGetState(item, 1) == 0) return;
    const int k = qv.qv_current + step;
    if (k < 1 || k > qv.qv_count) return;
    qv.qv_current = k;
    std::string message;
    if (!Quick_View_Read(k, message)) {
        Quick_View_Show_Position();
        Show_Message(message);
        return;
    }
    Plot_Quick_View(qv.qv_xmin, qv.qv_xmax, qv.qv_ymin, qv.qv_ymax);
    Quick_View_Show_Position();
}

// The frame of the presentation graphs is one for all windows: the main plot's is put back,
// so that what converts with it afterwards (the reflection box, scripts) finds its own.
void restore_main_frame() {
#if ZD_WITH_PLOT
    const FRAME_LIMITS& f = Graphics_State().frame;
    if (!f.drawn) return;
    const PLOT_SETTINGS& s = Plot_Settings();
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, static_cast<float>(s.page_width), static_cast<float>(s.page_height));
    IPgArea(s.zone_left, s.zone_bottom, s.zone_right, s.zone_top);
    IPgUnits(f.xmin, f.ymin, f.xmax, f.ymax);
#endif
}

void key(int code) {
    const QUICK_VIEW_TYPE& qv = Quick_View();
    switch (code) {
    case kKeyUp: case kKeyLeft: case kKeyPageUp: move(-1); break;
    case kKeyDown: case kKeyRight: case kKeyPageDown: move(+1); break;
    case kKeyHome:
        if (qv.qv_count > 0) {
            Quick_View_Full_Range();
            redraw();
        }
        break;
    default: break;
    }
}

}  // namespace

void Quick_View_Show_Position() {
    const QUICK_VIEW_TYPE& qv = Quick_View();
    const int n = qv.qv_count, k = qv.qv_current;
    WMenuSetState(kQvPrevious, 1, n > 1 && k > 1 ? 1 : 0);
    WMenuSetState(kQvNext, 1, n > 1 && k < n ? 1 : 0);
    WMenuSetState(kQvToMain, 1, n > 0 ? 1 : 0);
    WindowSelect(qv.qv_window);
    if (n < 1) return;
    WindowOutStatusBar(1, "( " + std::to_string(k) + " / " + std::to_string(n) + " )");
    WindowOutStatusBar(2, hxl::Trim(qv.qv_files(k)));
    WindowOutStatusBar(3, hxl::Trim(qv.qv_temps(k)));
}

void Open_Quick_View() {
    QUICK_VIEW_TYPE& qv = Quick_View();
    WMenuSetState(40030, 2, 0);
    if (qv.qv_window != 0 && WindowExists(qv.qv_window)) {
        WindowSelect(qv.qv_window);
        return;
    }
    // The view starts empty: nothing is kept from an earlier window.
    qv = QUICK_VIEW_TYPE{};
    qv.qv_window = WindowOpenChild(ChildStatusBar, 60, 60, 900, 600, "Quick View PRF Window");
    WChildToolbar(qv.qv_window, {{kQvChooseDir, "open", "Select directory"},
                                 {0, "", ""},
                                 {kQvPrevious, "up", "Previous PRF file"},
                                 {kQvNext, "down", "Next PRF file"},
                                 {0, "", ""},
                                 {kQvToMain, "Main", "Set PRF file to Main Window"},
                                 {0, "", ""},
                                 {kQvSaveGraphic, "save", "Save Graphic into file..."},
                                 {kQvPrint, "print", "Print..."},
                                 {0, "", ""},
                                 {kQvClose, "exit", "Close"}});
    WMenuSetState(kQvPrevious, 1, 0);
    WMenuSetState(kQvNext, 1, 0);
    WMenuSetState(kQvToMain, 1, 0);
    WindowSelect(qv.qv_window);
    WindowOutStatusBar(1, "");
    clear_picture();
    WindowSelect(kRootWindow);
}

void ihand_winqvprf(int type, const WIN_MESSAGE& message) {
    QUICK_VIEW_TYPE& qv = Quick_View();
    if (qv.qv_window == 0 || message.win != qv.qv_window) return;
    WindowSelect(qv.qv_window);
    switch (type) {
    case MenuSelect:
        switch (message.value1) {
        case kQvChooseDir: Quick_View_Choose_Directory(); break;
        case kQvPrevious: move(-1); break;
        case kQvNext: move(+1); break;
        case kQvToMain:
            if (WMenuGetState(kQvToMain, 1) != 0) Quick_View_Hand_Over();
            break;
        case kQvClose: close_window(); break;
        case kQvSaveGraphic: Save_Graphic_Command(qv.qv_window); break;
        case kQvPrint: Print_Command(qv.qv_window); break;
        default: break;
        }
        break;
    case MouseButDown:
    case MouseButUp:
    case MouseMove: Quick_View_Mouse(message); break;
    case KeyDown: key(message.value1); break;
    case Expose:
        if (qv.bitmap) {
            IGrSelect(1, qv.qv_window);
            WBitmapPut(qv.bitmap, 0);
        }
        break;
    case Resize: redraw(); break;
    case CloseRequest: close_window(); break;
    default: break;
    }
    // The root window's commands draw and write where the selection is: give it back.
    WindowSelect(kRootWindow);
    IGrSelect(1, kRootWindow);
    restore_main_frame();
}

}  // namespace zendrite
