// The Preferences command: environment (118), profile styles (116), graph 2D tabs (117), saving.
#include "app/main/configuration.h"
#include "app/main/preferences.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"

namespace zendrite {

namespace {

constexpr int kPrefMenu = 115, kEnv = 118, kStyles = 116, kGraph = 117;
constexpr int kGrid = 1600, kMatch = 1601;

void define_dialogs() {
    if (WDialogDefined(kPrefMenu)) return;
    WDialogDefine({kPrefMenu, "Preferences", {},
                   {Fld(1150, FIELD_KIND::PushButton, "Environment..."),
                    Fld(1151, FIELD_KIND::PushButton, "Profile styles..."),
                    Fld(1152, FIELD_KIND::PushButton, "Graph 2D..."),
                    Fld(1153, FIELD_KIND::PushButton, "Save local preferences"),
                    Fld(1154, FIELD_KIND::PushButton, "Save global preferences"),
                    Fld(kIdCancel, FIELD_KIND::PushButton, "Close"),
                    Fld(kIdOk, FIELD_KIND::PushButton, "OK")}});
    WDialogDefine({kEnv, "Environment preferences", {},
                   {Fld(1232, FIELD_KIND::Text, "Path Corvane"),
                    Fld(1237, FIELD_KIND::PushButton, "Search..."),
                    Fld(1233, FIELD_KIND::Text, "Text editor"),
                    Fld(1234, FIELD_KIND::Text, "Web navigator"),
                    Fld(1387, FIELD_KIND::Text, "PDF reader"),
                    Fld(1389, FIELD_KIND::Text, "CIF viewer"),
                    Fld(1391, FIELD_KIND::Text, "PS viewer"),
                    Fld(1563, FIELD_KIND::Text, "Corvane exe"),
                    Fld(1564, FIELD_KIND::PushButton, "Search exe..."),
                    Fld(1576, FIELD_KIND::Text, "Prefix command for invoking console programs"),
                    Fld(1645, FIELD_KIND::Text, "Compression"),
                    Fld(1646, FIELD_KIND::PushButton, "Search compression..."),
                    Fld(1235, FIELD_KIND::CheckBox, "Always save context"),
                    Fld(1236, FIELD_KIND::CheckBox, "Use internal text editor")}});
    DIALOG_FIELD grid = Fld(kGrid, FIELD_KIND::Grid, "Profile styles");
    grid.rows = 13;
    grid.columns = {{"Style", CELL_KIND::Integer, {}}, {"Pitch", CELL_KIND::Integer, {}}, {"Type", CELL_KIND::Integer, {}},
                    {"Size", CELL_KIND::Integer, {}}, {"Color", CELL_KIND::Integer, {}}};
    WDialogDefine({kStyles, "Profile styles", {}, {grid, Fld(kMatch, FIELD_KIND::CheckBox, "Match")}});
    WDialogDefine({kGraph, "Graph 2D preferences", {"Graph 2D", "Rietveld profile", "Main window"},
                   {Fld(1701, FIELD_KIND::Text, "Title of a single plot", 1),
                    Fld(1702, FIELD_KIND::Text, "Title of a multi plot", 1),
                    Fld(1703, FIELD_KIND::Integer, "Background colour", 1),
                    Fld(1704, FIELD_KIND::Integer, "Plot zone colour", 1),
                    Fld(1705, FIELD_KIND::CheckBox, "Excluded regions drawn", 1),
                    Fld(1706, FIELD_KIND::Integer, "Excluded colour", 1),
                    Fld(1711, FIELD_KIND::Integer, "Calculated curve colour", 2),
                    Fld(1712, FIELD_KIND::Integer, "Difference curve colour", 2),
                    Fld(1713, FIELD_KIND::Integer, "Bragg tick colour", 2),
                    Fld(1714, FIELD_KIND::CheckBox, "Excluded regions limit the range", 2),
                    Fld(1715, FIELD_KIND::CheckBox, "Hide Y scale under the pattern", 2),
                    Fld(1721, FIELD_KIND::Integer, "Window width", 3),
                    Fld(1722, FIELD_KIND::Integer, "Window height", 3)}});
}

void environment() {
    PREFERENCES_TYPE& p = Preferences();
    WDialogLoad(kEnv);
    WDialogPutString(1232, p.corvane_dir);
    WDialogPutString(1233, p.text_editor);
    WDialogPutString(1234, p.web_browser);
    WDialogPutString(1387, p.pdf_viewer);
    WDialogPutString(1389, p.cif_viewer);
    WDialogPutString(1391, p.ps_viewer);
    WDialogPutString(1563, p.corvane_exe);
    WDialogPutString(1576, p.cmd_prefix);
    WDialogPutString(1645, p.compressor);
    WDialogPutCheckBox(1235, p.always_save_context);
    WDialogPutCheckBox(1236, p.internal_editor);
    for (;;) {
        WDialogShow(-1, -1, 0, Modal);
        const int b = WInfoDialog(4);
        if (b == kIdOk || b == kIdCancel) {
            if (b == kIdOk) {
                WDialogSelect(kEnv);
                WDialogGetString(1232, p.corvane_dir);
                WDialogGetString(1233, p.text_editor);
                WDialogGetString(1234, p.web_browser);
                WDialogGetString(1387, p.pdf_viewer);
                WDialogGetString(1389, p.cif_viewer);
                WDialogGetString(1391, p.ps_viewer);
                WDialogGetString(1563, p.corvane_exe);
                WDialogGetString(1576, p.cmd_prefix);
                WDialogGetString(1645, p.compressor);
                WDialogGetCheckBox(1235, p.always_save_context);
                WDialogGetCheckBox(1236, p.internal_editor);
                Configuration().internal_editor = p.internal_editor != 0;
            }
            break;
        }
        std::string name;
        if (b == 1237) {
            WSelectDir(0, name, "Select Corvane Directory");
            WDialogSelect(kEnv);
            if (WInfoDialog(4) == kIdOk) WDialogPutString(1232, name);
        } else if (b == 1564 || b == 1646) {
            WSelectFile(b == 1564 ? "Input executable Corvane File |*.exe|" : "Programs files|*.exe;*|", LoadDialog,
                        name, b == 1564 ? "Select Corvane Executable file" : "Select Compression program");
            WDialogSelect(kEnv);
            if (WInfoDialog(4) == kIdOk) WDialogPutString(b == 1564 ? 1563 : 1645, name);
        }
    }
    WDialogSelect(kEnv);
    WDialogUnload();
}

void styles() {
    PREFERENCES_TYPE& p = Preferences();
    WDialogLoad(kStyles);
    for (int r = 1; r <= 12; ++r) {
        const PROFILE_STYLE_TYPE& s = p.style[static_cast<std::size_t>(r)];
        WGridLabelRow(kGrid, r, std::to_string(r));
        WGridPutCellInteger(kGrid, 1, r, s.line_type);
        WGridPutCellInteger(kGrid, 2, r, s.line_width);
        WGridPutCellInteger(kGrid, 3, r, s.marker);
        WGridPutCellInteger(kGrid, 4, r, s.marker_size);
        WGridPutCellInteger(kGrid, 5, r, s.line_colour);
    }
    WGridLabelRow(kGrid, 13, "All");
    WDialogPutCheckBox(kMatch, 1);
    WDialogShow(-1, -1, 0, Modal);
    if (WInfoDialog(4) == kIdOk) {
        int match = 0;
        WDialogGetCheckBox(kMatch, match);
        // A value in the row "All" goes to the twelve styles.
        for (int c = 1; c <= 5; ++c) {
            std::string all;
            WGridGetCellString(kGrid, c, 13, all);
            if (all.empty()) continue;
            for (int r = 1; r <= 12; ++r) WGridPutCellString(kGrid, c, r, all);
        }
        for (int r = 1; r <= 12; ++r) {
            PROFILE_STYLE_TYPE& s = p.style[static_cast<std::size_t>(r)];
            WGridGetCellInteger(kGrid, 1, r, s.line_type);
            WGridGetCellInteger(kGrid, 2, r, s.line_width);
            WGridGetCellInteger(kGrid, 3, r, s.marker);
            WGridGetCellInteger(kGrid, 4, r, s.marker_size);
            WGridGetCellInteger(kGrid, 5, r, s.line_colour);
            s.line_type = std::clamp(s.line_type, -1, 4);
            s.line_width = std::clamp(s.line_width, 1, 5);
            s.marker = std::clamp(s.marker, 1, 8);
            s.marker_size = std::clamp(s.marker_size, 1, 50);
            if (match) s.marker_colour = s.line_colour;
        }
    }
    WDialogUnload();
}

void graph2d() {
    PREFERENCES_TYPE& p = Preferences();
    WDialogLoad(kGraph);
    WDialogPutString(1701, p.single_title);
    WDialogPutString(1702, p.multi_title);
    WDialogPutInteger(1703, p.background);
    WDialogPutInteger(1704, p.zone_colour);
    WDialogPutCheckBox(1705, p.excluded_drawn);
    WDialogPutInteger(1706, p.excluded_colour);
    WDialogPutInteger(1711, p.calc_curve.colour);
    WDialogPutInteger(1712, p.diff_curve.colour);
    WDialogPutInteger(1713, p.tick_colour);
    WDialogPutCheckBox(1714, p.excluded_limit_range);
    WDialogPutCheckBox(1715, p.hide_yscale);
    WDialogPutInteger(1721, p.win_width);
    WDialogPutInteger(1722, p.win_height);
    WDialogShow(-1, -1, 0, Modal);
    if (WInfoDialog(4) == kIdOk) {
        WDialogGetString(1701, p.single_title);
        WDialogGetString(1702, p.multi_title);
        WDialogGetInteger(1703, p.background);
        WDialogGetInteger(1704, p.zone_colour);
        WDialogGetCheckBox(1705, p.excluded_drawn);
        WDialogGetInteger(1706, p.excluded_colour);
        WDialogGetInteger(1711, p.calc_curve.colour);
        WDialogGetInteger(1712, p.diff_curve.colour);
        WDialogGetInteger(1713, p.tick_colour);
        WDialogGetCheckBox(1714, p.excluded_limit_range);
        WDialogGetCheckBox(1715, p.hide_yscale);
        int w = p.win_width, h = p.win_height;
        WDialogGetInteger(1721, w);
        WDialogGetInteger(1722, h);
        if (w >= 200 && h >= 150) p.win_width = w, p.win_height = h;
    }
    WDialogUnload();
}

}  // namespace

void Preferences_Command() {
    define_dialogs();
    for (;;) {
        WDialogLoad(kPrefMenu);
        WDialogShow(-1, -1, 0, Modal);
        const int b = WInfoDialog(4);
        WDialogUnload();
        bool error = false;
        std::string message;
        switch (b) {
        case 1150: environment(); break;
        case 1151: styles(); break;
        case 1152: graph2d(); break;
        case 1153:
        case 1154:
            Write_Preferences(b == 1153 ? "local" : "", error, message);
            if (error) Show_Message(message);
            break;
        default:
            Plot_Again();
            return;
        }
        Plot_Again();
    }
}

}  // namespace zendrite
