// "Settings of the many-pattern views": the colour scale of the contour map and the
// surface, the iso-line levels of the contour map and the rise of the stack, in one dialog.
#include <cstdio>
#include <sstream>

#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#if ZD_WITH_PLOT
#include "graphics/multi_views.h"
#endif

namespace zendrite {

namespace {

constexpr int kDialog = 1990, kViridis = 10, kGrey = 11, kLevels = 12, kOffset = 13;

void define_dialog() {
    if (WDialogDefined(kDialog)) return;
    const DIALOG_FIELD viridis = Radio(kViridis, "Viridis", kViridis), grey = Radio(kGrey, "Grey", kViridis);
    WDialogDefine({kDialog, "Settings of the many-pattern views", {},
                   {Fld(1, FIELD_KIND::Label, "Colour scale of the contour map and the surface"), viridis, grey,
                    Fld(2, FIELD_KIND::Label, "Iso-lines of the contour map at the intensities (none when empty)"),
                    Fld(kLevels, FIELD_KIND::Text, ""),
                    Fld(3, FIELD_KIND::Label, "Rise of the last pattern of the stack over the first (0 to 5 box heights)"),
                    Fld(kOffset, FIELD_KIND::Real, "")}});
}

std::vector<std::string> words_of(const std::string& head, const std::string& text) {
    std::vector<std::string> w{"view", head};
    std::istringstream s(text);
    for (std::string t; s >> t;) w.push_back(t);
    return w;
}

}  // namespace

void Multi_View_Settings(int /*item*/) {
#if ZD_WITH_PLOT
    const MULTI_VIEW_STATE before = Multi_View_State();
    define_dialog();
    WDialogLoad(kDialog);
    WDialogPutRadioButton(before.colour_scale == 2 ? kGrey : kViridis);
    std::string levels;
    for (double v : before.levels) {
        char buf[32];
        std::snprintf(buf, sizeof buf, "%g", v);
        levels += (levels.empty() ? "" : " ") + std::string(buf);
    }
    WDialogPutString(kLevels, levels);
    WDialogPutReal(kOffset, before.offset, "%.3f");
    WDialogShow(-1, -1, 0, Modal);
    if (WInfoDialog(4) != kIdOk) {
        WDialogUnload();
        return;
    }
    int radio = 1;
    double offset = 0;
    WDialogGetRadioButton(kViridis, radio);
    WDialogGetString(kLevels, levels);
    WDialogGetReal(kOffset, offset);
    WDialogUnload();
    // every value is read into a copy, so that a refused one changes nothing, and the view
    // is drawn once
    MULTI_VIEW_STATE next = before;
    if (!Read_View_Setting(words_of("levels", levels), next)) {
        Show_Message("The iso-line levels must be numbers");
        return;
    }
    if (!Read_View_Setting(words_of("offset", std::to_string(offset)), next)) {
        Show_Message("The rise of the stack must lie between 0 and 5");
        return;
    }
    Read_View_Setting({"view", "scale", radio == 2 ? "grey" : "viridis"}, next);
    Multi_View_State() = next;
    Redraw_Multi_View();
#else
    Show_Message("This command is not available yet");
#endif
}

}  // namespace zendrite
