// File menu: the first visible profile saved as ".dat" or ".xys", and the buffer file of the store.
#include "app/main/commands.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/buffer_files.h"
#include "app/store/zendrite_param_global.h"
#include "patterns/pattern_writers.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr const char* kCancelled = "Cancelled";

// The slot the writers work on; 0 when nothing is shown.
int first_visible_slot() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    for (int s = 1; s <= g.nperfiles; ++s)
        if (g.show_profile[static_cast<std::size_t>(s)]) return s;
    return 0;
}

// Asks for the file to write; blank at Cancel or when an existing file is to be kept.
std::string ask_target(const std::string& filter, const std::string& title, const std::string& extension,
                       const std::string& overwrite_title) {
    std::string name;
    WSelectFile(filter, SaveDialog, name, title);
    if (WInfoDialog(4) != kIdOk || hxl::Is_Blank(name)) return "";
    name = hxl::Export_File_Name(hxl::Trim(name), extension);
    if (IOsExists(name)) {
        WMessageBox(YesNo, QuestionIcon, 1, "The file exist,\rDo you want overwrite it?", overwrite_title);
        if (WInfoDialog(4) != kIdOk) return "";
    }
    return name;
}

int xy_dialog() {
    static int id = 0;
    if (!id) {
        DIALOG_TEMPLATE t;
        t.fields = {Fld(1674, FIELD_KIND::Real, "Xmin ="), Fld(1681, FIELD_KIND::Real, "Xmax ="),
                    Fld(1685, FIELD_KIND::Real, "A ="), Fld(1686, FIELD_KIND::Real, "B ="),
                    Fld(1753, FIELD_KIND::Real, "Multiplier for Y and sigma(Y)  Applied after subtractin")};
        id = WDialogDefineTitled("Export Data as *.xys", t);
    }
    return id;
}

// The dialog's answers over the defaults; false at Cancel.
bool ask_xy_options(hxl::XY_EXPORT_TYPE& o) {
    WDialogLoad(xy_dialog());
    WDialogPutReal(1674, o.xmin);
    WDialogPutReal(1681, o.xmax);
    WDialogPutReal(1685, o.a);
    WDialogPutReal(1686, o.b);
    WDialogPutReal(1753, o.multiplier);
    WDialogShow(-1, -1, 0, Modal);
    const bool ok = WInfoDialog(4) == kIdOk;
    if (ok) {
        WDialogGetReal(1674, o.xmin);
        WDialogGetReal(1681, o.xmax);
        WDialogGetReal(1685, o.a);
        WDialogGetReal(1686, o.b);
        WDialogGetReal(1753, o.multiplier);
    }
    WDialogUnload();
    return ok;
}

void no_profile(bool& error, std::string& message) {
    error = true;
    message = "Number of Points to Save was Wrong!";
}

}  // namespace

void Show_Command_Result(bool error, const std::string& message) {
    if (error && message != kCancelled) Show_Message(message);
}

void Save_Free_Format_Command(bool& error, std::string& message) {
    error = false;
    message.clear();
    const int slot = first_visible_slot();
    if (slot == 0) return no_profile(error, message);
    const std::string file = ask_target("Free Pattern File Format (Instrm=0) (*.dat)|*.dat|", "Export Pattern File",
                                        ".dat", "Overwrite DAT file?");
    if (file.empty()) {
        error = true;
        message = kCancelled;
        return;
    }
    error = !hxl::Save_Free_Format(file, zendrite_param_global().pattern[static_cast<std::size_t>(slot)], message);
}

void Save_XY_Command(bool& error, std::string& message) {
    error = false;
    message.clear();
    const int slot = first_visible_slot();
    if (slot == 0) return no_profile(error, message);
    const std::string file =
        ask_target("XY Pattern File Format (*.xys)|*.xys|", "Export Pattern File", ".xys", "Overwrite XY file?");
    const ZENDRITE_STORE& g = zendrite_param_global();
    const auto& pattern = g.pattern[static_cast<std::size_t>(slot)];
    hxl::XY_EXPORT_TYPE options = hxl::XY_Export_Defaults(pattern);
    if (file.empty() || !ask_xy_options(options)) {
        error = true;
        message = kCancelled;
        return;
    }
    const std::string prf_name = hxl::Trim(g.info[static_cast<std::size_t>(slot)].prf_name);
    error = !hxl::Save_XY(file, pattern, prf_name, options, message);
}

void Save_Buffer_Command(bool& error, std::string& message) {
    error = false;
    message.clear();
    const std::string file =
        ask_target("Buffer Data File (*.buf)|*.buf|", "Save Buffer Data File", ".buf", "Over Write BUF file?");
    if (file.empty()) {
        error = true;
        message = kCancelled;
        return;
    }
    error = !Save_Buffer(file, message);
}

}  // namespace zendrite
