// Save Graphic into file... and Print...: the picture of a window drawn again by the
// routines that drew it, on the file's or the printer's own device.
#include "app/main/picture_commands.h"

#include <cstdio>
#include <fstream>

#include "app/main/menu_groups.h"
#include "app/main/quick_view.h"
#include "app/main/zendrite_app.h"
#include "app/store/zendrite_param_global.h"
#if ZD_WITH_PLOT
#include "graphics/plot.h"
#endif

namespace zendrite {

namespace {

std::string options_file() { return Beside_Preference_File("zendrite.picture"); }

// Field numbers of the options dialog.
constexpr int kWidth = 10, kHeight = 11, kMm = 12, kPixels = 13, kDpi = 14, kColour = 15, kGrey = 16, kWhite = 17,
              kWindowBg = 18, kLines = 19, kFonts = 20, kPreview = 21;

DIALOG_FIELD radio(int id, int group, const char* label) {
    DIALOG_FIELD r = Fld(id, FIELD_KIND::Radio, label);
    r.group = group;
    return r;
}

int options_dialog(bool print) {
    DIALOG_TEMPLATE t;
    t.fields = {Fld(kWidth, FIELD_KIND::Real, "Width"),
                Fld(kHeight, FIELD_KIND::Real, "Height"),
                radio(kMm, kMm, "mm"),
                radio(kPixels, kMm, "pixels"),
                Fld(kDpi, FIELD_KIND::Integer, "Resolution (dpi)"),
                radio(kColour, kColour, "Colour"),
                radio(kGrey, kColour, "Grey"),
                radio(kWhite, kWhite, "White background"),
                radio(kWindowBg, kWhite, "Window background"),
                Fld(kLines, FIELD_KIND::Real, "Line-width factor"),
                Fld(kFonts, FIELD_KIND::Real, "Font scale")};
    if (print) t.fields.push_back(Fld(kPreview, FIELD_KIND::CheckBox, "Print preview"));
    return WDialogDefineTitled(print ? "Print options" : "Picture options", t);
}

// The options dialog, started from the kept options; false when cancelled.
bool ask_options(PICTURE_OPTIONS& o, bool print, bool& preview) {
    WDialogLoad(options_dialog(print));
    WDialogPutReal(kWidth, o.width);
    WDialogPutReal(kHeight, o.height);
    WDialogPutRadioButton(o.pixels ? kPixels : kMm);
    WDialogPutInteger(kDpi, o.dpi);
    WDialogPutRadioButton(o.grey ? kGrey : kColour);
    WDialogPutRadioButton(o.white ? kWhite : kWindowBg);
    WDialogPutReal(kLines, o.line_factor);
    WDialogPutReal(kFonts, o.font_scale);
    if (print) WDialogPutCheckBox(kPreview, preview ? 1 : 0);
    WDialogShow(-1, -1, 0, Modal);
    const bool ok = WInfoDialog(4) == kIdOk;
    if (ok) {
        int k = 0, check = 0;
        WDialogGetReal(kWidth, o.width);
        WDialogGetReal(kHeight, o.height);
        WDialogGetRadioButton(kMm, k);
        o.pixels = k == 2;
        WDialogGetInteger(kDpi, o.dpi);
        WDialogGetRadioButton(kColour, k);
        o.grey = k == 2;
        WDialogGetRadioButton(kWhite, k);
        o.white = k == 1;
        WDialogGetReal(kLines, o.line_factor);
        WDialogGetReal(kFonts, o.font_scale);
        if (print) WDialogGetCheckBox(kPreview, check);
        preview = check != 0;
    }
    WDialogUnload();
    return ok;
}

// Draws the window's picture on the present target: the routine that made it.
void draw_window(int win) {
#if ZD_WITH_PLOT
    if (win == kRootWindow) {
        Plot_Again();
        return;
    }
#endif
    const QUICK_VIEW_TYPE& qv = Quick_View();
    if (win == qv.qv_window && qv.qv_count > 0 && qv.qv_pattern.npts > 0)
        Plot_Quick_View(qv.qv_xmin, qv.qv_xmax, qv.qv_ymin, qv.qv_ymax);
}

bool drawable(int win, std::string& message) {
    const QUICK_VIEW_TYPE& qv = Quick_View();
    if (win == kRootWindow || (win != 0 && win == qv.qv_window)) return true;
    message = "No window " + std::to_string(win) + " with a picture";
    return false;
}

}  // namespace

PICTURE_OPTIONS Picture_Options() {
    PICTURE_OPTIONS o, r;
    std::ifstream in(options_file());
    int pixels = 0, grey = 0, white = 1;
    // A file that does not read whole, or holds values out of bounds, gives the defaults.
    if (in >> r.width >> r.height >> pixels >> r.dpi >> grey >> white >> r.line_factor >> r.font_scale) {
        r.pixels = pixels == 1, r.grey = grey == 1, r.white = white == 1;
        int w = 0, h = 0;
        std::string unused;
        if (Picture_Pixels(r, w, h, unused)) o = r;
    }
    return o;
}

bool Keep_Picture_Options(const PICTURE_OPTIONS& o) {
    char buf[160];
    std::snprintf(buf, sizeof buf, "%g %g %d %d %d %d %g %g\n", o.width, o.height, o.pixels ? 1 : 0, o.dpi,
                  o.grey ? 1 : 0, o.white ? 1 : 0, o.line_factor, o.font_scale);
    return Write_File_Replace(options_file(), buf);
}

bool Export_Window_Picture(int win, const std::string& file, const PICTURE_OPTIONS& o, std::string& message) {
    if (!drawable(win, message)) return false;
    const int keep = WindowSelected();
    const bool ok = WPictureExport(file, o, [win] { draw_window(win); }, message);
    // The bitmap the window copies from was drawn into the file: the window draws it again.
    draw_window(win);
    if (WindowExists(keep)) WindowSelect(keep);
    return ok;
}

void Save_Graphic_Command(int win) {
    std::string file;
    WSelectFile("PNG picture (*.png)|*.png|TIFF picture (*.tif)|*.tif;*.tiff|JPEG picture (*.jpg)|*.jpg;*.jpeg|"
                "BMP picture (*.bmp)|*.bmp|SVG drawing (*.svg)|*.svg|PDF document (*.pdf)|*.pdf|"
                "Encapsulated PostScript (*.eps)|*.eps|PostScript (*.ps)|*.ps|Enhanced metafile (*.emf)|*.emf|"
                "HP-GL plot (*.plt)|*.plt;*.hpgl|DXF drawing (*.dxf)|*.dxf|",
                SaveDialog | PromptOn, file, "Save Graphic into file");
    if (file.empty() || WInfoDialog(4) == kIdCancel) return;
    if (Picture_Format(file).empty()) {
        Show_Message("Unable to write " + file +
                     ": its extension names no picture format (png, jpg, bmp, tif, svg, pdf, eps, ps, emf, plt, dxf)");
        return;
    }
    PICTURE_OPTIONS o = Picture_Options();
    bool preview = false;
    if (!ask_options(o, false, preview)) return;
    int w = 0, h = 0;
    std::string message;
    if (!Picture_Pixels(o, w, h, message)) {
        Show_Message(message);
        return;
    }
    if (!Keep_Picture_Options(o)) Show_Message("Unable to write setting file");
    if (!Export_Window_Picture(win, file, o, message)) Show_Message(message);
}

void Print_Command(int win) {
    std::string message;
    if (!drawable(win, message)) return;
    PICTURE_OPTIONS o = Picture_Options();
    bool preview = !WUnattended();
    if (!ask_options(o, true, preview)) return;
    int w = 0, h = 0;
    if (!Picture_Pixels(o, w, h, message)) {
        Show_Message(message);
        return;
    }
    if (!Keep_Picture_Options(o)) Show_Message("Unable to write setting file");
    const int keep = WindowSelected();
    const bool ok = WPrintPicture(o, preview, [win] { draw_window(win); }, message);
    draw_window(win);
    if (WindowExists(keep)) WindowSelect(keep);
    if (!ok && message != "Cancelled") Show_Message(message);
}

void File_Save_Graphic(int) { Save_Graphic_Command(kRootWindow); }
void File_Print(int) { Print_Command(kRootWindow); }

}  // namespace zendrite
