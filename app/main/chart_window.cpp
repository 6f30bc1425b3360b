// File, "Zendrite Generic Graphs" (and the toolbar's GG): the generic graphics mode. A child
// window, "Generic Graphics on Zendrite", shows a chart of a ".gdf" file, or of columns of a
// ".seq" file chosen in the dialog "Generic Graphics Plots"; Reload, Print, Export and Close.
#include "app/main/chart_window.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/main/fit_grid.h"
#include "app/main/menu_groups.h"
#include "app/main/menu_table.h"
#include "app/main/root_menu.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "graphics/chart_draw.h"
#include "graphics/chart_files.h"
#include "patterns/format_table.h"
#include "support/fixed_text.h"
#include "support/text_file.h"

namespace zendrite {

namespace {

constexpr int kPlotsDialog = 163, kPolyLine = 1638, kHistogram = 1639, kPolar = 1640, kXGrid = 1633, kYGrid = 1634,
              kTitle = 1635, kXText = 1636, kYText = 1637, kColumnsFile = 1743;

struct CHART_VIEW_TYPE {
    int window = 0, bitmap = 0;
    std::string file;
    hxl::CHART_TYPE chart;
    std::vector<hxl::SEQ_BLOCK_TYPE> blocks;
    // the choice of the dialog, kept for Reload
    int x = 0, kind = 1;
    std::vector<int> ys;
    std::vector<std::string> codes;  // the letter codes of each Y column
    std::string title, xtext, ytext;
    bool chosen = false;
    std::filesystem::file_time_type stamp{};  // of the file when it was last read whole
    std::string hover;                        // the point under the mouse, as the status bar says it
};
CHART_VIEW_TYPE& view() {
    static CHART_VIEW_TYPE v;
    return v;
}

void redraw() {
    CHART_VIEW_TYPE& v = view();
    if (v.window == 0) return;
    Child_Picture_Start(v.window, v.bitmap);
    if (!v.chart.curves.empty()) Draw_Chart(v.chart);
    // the mode's blue frame round the picture
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, 1, 1);
    IGrColourN(WRGB(0, 70, 200));
    IGrLineWidth(3);
    IGrFillPattern(0);
    IGrRectangle(0.003f, 0.004f, 0.997f, 0.996f);
    IGrLineWidth(1);
    WBitmapPut(v.bitmap, 0);
    WindowOutStatusBar(1, "Generic Graphics Mode");
    WindowOutStatusBar(2, v.file.empty() ? "" : std::filesystem::path(v.file).filename().string());
}

void define_plots_dialog() {
    if (WDialogDefined(kPlotsDialog)) return;
    WDialogDefine({kPlotsDialog, "Generic Graphics Plots", {},
                   {Radio(kPolyLine, "PolyLine", kPolyLine), Radio(kHistogram, "Histogram", kPolyLine),
                    Radio(kPolar, "Polar", kPolyLine),
                    Fit_Grid(kXGrid, "X Axis Plot", {{"Column", CELL_KIND::Text, {}}, {"X", CELL_KIND::CheckBox, {}}}, 0),
                    Fit_Grid(kYGrid, "Y Axis Plot",
                             {{"Column", CELL_KIND::Text, {}}, {"Y", CELL_KIND::CheckBox, {}},
                              {"E=Error bar;  M= Marker;   L=Legend", CELL_KIND::Text, {}}},
                             0),
                    Fld(kTitle, FIELD_KIND::Text, "Title:"), Fld(kXText, FIELD_KIND::Text, "X axis:"),
                    Fld(kYText, FIELD_KIND::Text, "Y axis:"),
                    Fld(kColumnsFile, FIELD_KIND::CheckBox, "Output Columns File with Plot Parameters"),
                    Fld(kIdOk, FIELD_KIND::PushButton, "OK"), Fld(kIdCancel, FIELD_KIND::PushButton, "Cancel")}});
}

// The chart of the chosen columns: the kind (1 polyline, 2 histogram, 3 polar), the texts
// that replace the column names when given, and the letter codes of each Y column (E error
// bars, M markers, L its legend in the key, R the second Y axis at the right).
bool make_chart(const std::vector<hxl::SEQ_BLOCK_TYPE>& blocks, int x, const std::vector<int>& ys,
                const std::vector<std::string>& codes, int kind, const std::string& title, const std::string& xtext,
                const std::string& ytext, hxl::CHART_TYPE& chart, std::string& message) {
    if (!hxl::Seq_Chart(blocks, x, ys, hxl::Trim(title), chart, message)) return false;
    const char* kinds[] = {"polyl", "histo", "polar"};
    chart.kind = kinds[std::clamp(kind, 1, 3) - 1];
    if (!hxl::Is_Blank(xtext)) chart.legend_x = hxl::Trim(xtext);
    if (!hxl::Is_Blank(ytext)) chart.legend_y = hxl::Trim(ytext);
    for (std::size_t k = 0; k < chart.curves.size() && k < codes.size(); ++k) {
        const std::string c = hxl::Upper(codes[k]);
        hxl::CHART_CURVE_TYPE& curve = chart.curves[k];
        curve.errbar = curve.errbar && c.find('E') != std::string::npos;
        curve.marker = c.find('M') != std::string::npos;
        curve.right = c.find('R') != std::string::npos;  // a second unit: the axis at the right
        if (c.find('L') == std::string::npos) curve.legend.clear();
    }
    return true;
}

// A ".gdf" file into `chart`, or a ".seq" file into `blocks`; false with the reader's text.
bool read_file(const std::string& file, hxl::CHART_TYPE& chart, std::vector<hxl::SEQ_BLOCK_TYPE>& blocks,
               std::string& message) {
    std::ifstream in(file, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return hxl::Upper_Extension(file) == ".GDF" ? hxl::Read_Gdf_Text(text.str(), chart, message)
                                                : hxl::Read_Seq_Text(text.str(), blocks, message);
}

// The columns of a sequence chosen in the dialog; false when given up or refused (said).
bool choose_columns() {
    CHART_VIEW_TYPE& v = view();
    const std::vector<std::string> cols = hxl::Seq_Columns(v.blocks);
    define_plots_dialog();
    WDialogLoad(kPlotsDialog);
    WDialogPutRadioButton(kPolyLine + v.kind - 1);
    for (int g : {kXGrid, kYGrid}) {
        WGridRows(g, static_cast<int>(cols.size()));
        WGridPutString(g, 1, cols);
    }
    WGridPutCellCheckBox(kXGrid, 2, v.x + 1, 1);
    for (int y : v.ys.empty() ? std::vector<int>{1} : v.ys) {
        WGridPutCellCheckBox(kYGrid, 2, y + 1, 1);
        WGridPutCellString(kYGrid, 3, y + 1, "EML");
    }
    WDialogPutString(kTitle, std::filesystem::path(v.file).filename().string());
    WDialogShow(-1, -1, 0, Modal);
    if (WInfoDialog(4) != kIdOk) {
        WDialogUnload();
        return false;
    }
    int kind = 1, xyy = 0;
    WDialogGetRadioButton(kPolyLine, kind);
    std::vector<int> xs_on, ys_on;
    WGridGetCheckBox(kXGrid, 2, xs_on);
    WGridGetCheckBox(kYGrid, 2, ys_on);
    std::string title, xtext, ytext;
    WDialogGetString(kTitle, title);
    WDialogGetString(kXText, xtext);
    WDialogGetString(kYText, ytext);
    WDialogGetCheckBox(kColumnsFile, xyy);
    std::vector<std::string> codes(cols.size());
    for (std::size_t r = 0; r < cols.size(); ++r) WGridGetCellString(kYGrid, 3, static_cast<int>(r) + 1, codes[r]);
    WDialogUnload();
    int x = -1;
    std::vector<int> ys;
    for (std::size_t r = 0; r < cols.size(); ++r) {
        if (r < xs_on.size() && xs_on[r] && x < 0) x = static_cast<int>(r);
        if (r < ys_on.size() && ys_on[r]) ys.push_back(static_cast<int>(r));
    }
    if (x < 0 || ys.empty()) {
        Show_Message("Choose one X column and at least one Y column");
        return false;
    }
    std::vector<std::string> ycodes;
    for (int y : ys) ycodes.push_back(codes[static_cast<std::size_t>(y)]);
    hxl::CHART_TYPE chart;
    std::string message;
    if (!make_chart(v.blocks, x, ys, ycodes, kind, title, xtext, ytext, chart, message)) {
        Show_Message(message);
        return false;
    }
    if (xyy) {
        std::vector<int> all = {x};
        all.insert(all.end(), ys.begin(), ys.end());
        const std::string name = std::filesystem::path(v.file).replace_extension(".xyy").string();
        if (!hxl::Replace_File_Told(name, hxl::Seq_Xyy_Text(v.blocks, all), message)) Show_Message(message);
    }
    v.chart = std::move(chart);
    v.x = x, v.ys = ys, v.kind = kind, v.codes = ycodes, v.title = title, v.xtext = xtext, v.ytext = ytext;
    v.chosen = true;
    return true;
}

// Reads the file into the view; a failure shows its text and leaves the window empty.
void load(const std::string& file, bool ask) {
    CHART_VIEW_TYPE& v = view();
    v.file = file;
    v.chart = hxl::CHART_TYPE{};
    v.blocks.clear();
    const std::string ext = hxl::Upper_Extension(file);
    if (ext != ".GDF" && ext != ".SEQ") {
        Show_Message("Incompatible format for Graphics representation!");
        redraw();
        return;
    }
    std::string message;
    const bool ok = read_file(file, v.chart, v.blocks, message);
    std::error_code ec;
    v.stamp = std::filesystem::last_write_time(file, ec);
    if (!ok) {
        Show_Message(message);
    } else if (ext == ".SEQ") {
        if (ask || !v.chosen) {
            if (!choose_columns()) v.chart = hxl::CHART_TYPE{};
        } else if (!make_chart(v.blocks, v.x, v.ys, v.codes, v.kind, v.title, v.xtext, v.ytext, v.chart, message)) {
            Show_Message(message);
        }
    }
    WindowSelect(v.window);
    WindowTitle("Generic Graphics on Zendrite: " + file);
    redraw();
}

// `kind` "ps" or "emf" names the file's kind when the name has no extension of its own.
void export_chart(bool print, const std::string& kind = "") {
    CHART_VIEW_TYPE& v = view();
    std::string message;
    const hxl::CHART_TYPE chart = v.chart;
    auto draw = [chart] { Draw_Chart(chart); };
    if (print) {
        if (!WPrintPicture(WPictureExportOptions(), false, draw, message)) Show_Message(message);
        return;
    }
    std::string name;
    WSelectFile("Graphic Plot File|*.ps; *.emf|", SaveDialog, name, "Export Graphics Files");
    if (WInfoDialog(4) != kIdOk || hxl::Is_Blank(name)) return;
    name = hxl::Trim(name);
    if (!kind.empty() && std::filesystem::path(name).extension().empty()) name += "." + kind;
    if (!WPictureExport(name, WPictureExportOptions(), draw, message)) Show_Message(message);
}

void close_window() {
    CHART_VIEW_TYPE& v = view();
    if (v.bitmap) WBitmapDestroy(v.bitmap);
    WindowCloseChild(v.window);
    v = CHART_VIEW_TYPE{};
    WindowShow(kRootWindow, true);
    WindowSelect(kRootWindow);
}

// A file that a running refinement is still writing: read again when its time stamp moves.
// A read that fails (a block half written) keeps the last chart and says so in the status bar.
void follow() {
    CHART_VIEW_TYPE& v = view();
    if (v.file.empty()) return;
    std::error_code ec;
    const std::filesystem::file_time_type t = std::filesystem::last_write_time(v.file, ec);
    if (ec || t == v.stamp) return;
    std::string message;
    hxl::CHART_TYPE chart;
    std::vector<hxl::SEQ_BLOCK_TYPE> blocks;
    const bool seq = hxl::Upper_Extension(v.file) == ".SEQ";
    const bool ok = read_file(v.file, chart, blocks, message) &&
                    (!seq || make_chart(blocks, v.x, v.ys, v.codes, v.kind, v.title, v.xtext, v.ytext, chart, message));
    if (!ok || (seq && !v.chosen)) {
        WindowOutStatusBar(3, "The file is being written: the last chart is kept (" + message + ")");
        return;
    }
    v.stamp = t;
    v.chart = std::move(chart);
    if (seq) v.blocks = std::move(blocks);
    redraw();
    WindowOutStatusBar(3, seq ? "Read again: " + std::to_string(v.blocks.size()) + " blocks" : "Read again");
}

// The point nearest the mouse (at most 2% of the frame away): its curve, X and Y, and for a
// sequence its block's file and temperature.
void hover(float gx, float gy) {
    CHART_VIEW_TYPE& v = view();
    const CHART_FRAME_TYPE& f = Last_Chart_Frame();
    v.hover.clear();
    if (!f.xy) return;
    const float fx = (gx - f.left) / (f.right - f.left), fy = (gy - f.bottom) / (f.top - f.bottom);
    float best = 0.02f * 0.02f;
    for (const hxl::CHART_CURVE_TYPE& c : v.chart.curves)
        for (std::size_t i = 0; i < c.x.size() && i < c.y.size(); ++i) {
            const float y = c.right ? f.Left_Of_Right(c.y[i]) : c.y[i];
            const float dx = (c.x[i] - f.x1) / (f.x2 - f.x1) - fx, dy = (y - f.y1) / (f.y2 - f.y1) - fy;
            if (!(dx * dx + dy * dy < best)) continue;
            best = dx * dx + dy * dy;
            char buf[200];
            std::snprintf(buf, sizeof buf, "%s: X= %.6g  Y= %.6g", c.legend.empty() ? "curve" : c.legend.c_str(), c.x[i], c.y[i]);
            v.hover = buf;
            if (i < c.sigma.size() && c.sigma[i] != 0) {
                std::snprintf(buf, sizeof buf, " (%.3g)", c.sigma[i]);
                v.hover += buf;
            }
            if (i < c.block.size() && c.block[i] >= 0 && static_cast<std::size_t>(c.block[i]) < v.blocks.size()) {
                const hxl::SEQ_BLOCK_TYPE& b = v.blocks[static_cast<std::size_t>(c.block[i])];
                v.hover += "   " + b.file;
                if (b.has_temperature) {
                    std::snprintf(buf, sizeof buf, "  T= %.2f", b.temperature);
                    v.hover += buf;
                }
            }
        }
    WindowOutStatusBar(3, v.hover);
}

}  // namespace

int Chart_Window() { return view().window; }

void Open_Generic_File(const std::string& given) {
    CHART_VIEW_TYPE& v = view();
    std::string name = given;
    if (hxl::Is_Blank(name)) {
        WSelectFile("Generic Data Files|*.gdf;*.seq|", LoadDialog, name, "Open Generic Data File");
        if (WInfoDialog(4) != kIdOk || hxl::Is_Blank(name)) return;
    }
    if (v.window == 0 || !WindowExists(v.window)) {
        v = CHART_VIEW_TYPE{};
        v.window = WindowOpenChild(ChildStatusBar, 40, 40, 1100, 760, "Generic Graphics on Zendrite");
        WindowShow(kRootWindow, false);  // the generic mode has the screen; Close brings the main window back
        WChildToolbar(v.window, {{kChOpen, "open", "Open a .gdf or .seq file"},
                                 {kChReload, "reset", "Reload Information for plots"},
                                 {kChColumns, "Cols", "Choose the columns of the sequence again"},
                                 {0, "", ""},
                                 {kChPrint, "print", "Print"},
                                 {kChExport, "save", "Export as PostScript (.ps) or Enhanced Windows Metafile (.emf)"},
                                 {0, "", ""},
                                 {kChClose, "exit", "Close"}});
        // menu 30004
        WChildMenu(v.window, {{MenuPopup, 0, "File"},
                              {MenuItem, kChOpen, "Open..."},
                              {MenuItem, kChCloseFile, "Close"},
                              {MenuItem, kChReload, "Reload Information for plots"},
                              {MenuItem, kChColumns, "Choose the columns again..."},
                              {MenuSeparator, 0, ""},
                              {MenuItem, kChPrint, "Print..."},
                              {MenuItem, kChExportPs, "Export as PostScript (.ps)..."},
                              {MenuItem, kChExportEmf, "Export as Enhanced Windows Metafile (.emf)..."},
                              {MenuSeparator, 0, ""},
                              {MenuItem, kChClose, "Exit"},
                              {MenuEnd, 0, ""},
                              {MenuPopup, 0, "Options"},
                              {MenuItem, kChPreferences, "Preferences..."},
                              {MenuEnd, 0, ""}});
    }
    load(hxl::Trim(name), true);
}

void Generic_Graphs(int) { Open_Generic_File(""); }

void Chart_Event(int type, const WIN_MESSAGE& m) {
    CHART_VIEW_TYPE& v = view();
    if (v.window == 0 || m.win != v.window) return;
    WindowSelect(v.window);
    if (type != CloseRequest && !(type == MenuSelect && m.value1 == kChReload)) follow();
    if (type == CloseRequest) {
        close_window();
        return;
    }
    if (type == Resize || type == Expose) {
        redraw();
        return;
    }
    if (type == MouseMove) {
        hover(m.gx, m.gy);
        return;
    }
    if (type != MenuSelect) return;
    switch (m.value1) {
    case kChOpen: Open_Generic_File(""); break;
    case kChReload:
        if (!v.file.empty()) load(v.file, false);
        break;
    case kChColumns:
        if (!v.blocks.empty() && choose_columns()) redraw();
        break;
    case kChPrint: export_chart(true); break;
    case kChExport: export_chart(false); break;
    case kChExportPs: export_chart(false, "ps"); break;
    case kChExportEmf: export_chart(false, "emf"); break;
    case kChCloseFile:
        v.file.clear(), v.chart = hxl::CHART_TYPE{}, v.blocks.clear(), v.chosen = false;
        redraw();
        break;
    case kChPreferences:
        if (MENU_ROUTINE r = Menu_Routine(kChPreferences)) r(kChPreferences);
        WindowSelect(v.window);
        redraw();
        break;
    case kChClose: close_window(); break;
    default: break;
    }
}

std::string Chart_Dump() {
    const CHART_VIEW_TYPE& v = view();
    std::ostringstream o;
    o << "chart_window " << (v.window != 0) << "\nfile " << v.file << "\nkind " << v.chart.kind << "\ntitle "
      << v.chart.title << "\ncurves " << v.chart.curves.size() << "\nhover " << v.hover << "\n";
    for (const hxl::CHART_CURVE_TYPE& c : v.chart.curves)
        o << "curve " << c.legend << " | points " << c.y.size() << " errbar " << c.errbar << " marker " << c.marker << "\n";
    return o.str();
}

}  // namespace zendrite
