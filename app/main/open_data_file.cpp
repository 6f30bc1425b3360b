// The command that opens data files: selector, format, one load per file.
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/add_profile.h"
#include "app/store/zendrite_param_global.h"
#include "patterns/format_table.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kFirstFormatRadio = 101;
int format_preset = 1;

int format_dialog() {
    static int id = 0;
    if (!id) {
        DIALOG_TEMPLATE t;
        t.fields.push_back(Fld(100, FIELD_KIND::Label, "Select the format of the data file"));
        for (int r = 1; r <= hxl::kFormatRows; ++r) {
            DIALOG_FIELD f = Fld(kFirstFormatRadio + r - 1, FIELD_KIND::Radio, std::string(hxl::Format_Row(r).label));
            f.group = kFirstFormatRadio;
            t.fields.push_back(f);
        }
        id = WDialogDefineTitled("Format of the data file", t);
    }
    return id;
}

// The row for the files, by the extension of the first one or by the dialog; 0 at Cancel.
// A ".gss" file goes to the multi-pattern reader, deliberately.
int choose_row(const std::string& first) {
    const int row = hxl::Format_Row_From_Extension(hxl::Upper_Extension(first));
    return row ? row : Format_Dialog_Row();
}

}  // namespace

int Format_Dialog_Row() {
    WDialogLoad(format_dialog());
    WDialogPutRadioButton(kFirstFormatRadio + format_preset - 1);
    WDialogShow(-1, -1, 0, Modal);
    int row = 0;
    if (WInfoDialog(4) == kIdOk) WDialogGetRadioButton(kFirstFormatRadio, row);
    WDialogUnload();
    if (row >= 1 && row <= hxl::kFormatRows) format_preset = row;
    return WInfoDialog(4) == kIdOk ? row : 0;
}

void Open_Data_File(const std::string& name, bool& error, std::string& message) {
    error = false;
    message.clear();
    std::vector<std::string> files;
    if (hxl::Is_Blank(name)) {
        std::string list;
        WSelectFile("Input Data File |*.dat;*.xy;*.xys;*.xye;*.gr;*.uxd;*.sub;*.udf;*.csv;*.xrdml;*.bac;*.gsa;*.gss;"
                    "*.sim;*.mdi;*prof.cif|JCAMP-DX files|*.jcp;*.jdx;*.dx|All files|*|",
                    LoadDialog | MultiFile | PromptOn, list, "Select data files to open");
        if (WInfoDialog(4) != kIdOk) {
            error = true;
            message = "Cancelled";
            return;
        }
        files = Selected_Files(list);
    } else {
        files.push_back(hxl::Trim(name));
    }
    if (files.empty()) {
        error = true;
        message = "Cancelled";
        return;
    }
    const int row = choose_row(files[0]);
    if (row == 0) {
        error = true;
        message = "Cancelled";
        return;
    }
    int left_out = 0;
    for (const std::string& f : files) {
        const LOAD_RESULT r = Load_Data_File(f, row);
        for (const std::string& m : r.messages) Show_Message(m);
        left_out += r.left_out;
        if (r.limit_reached) break;
    }
    // Blocks that were not read are said, never dropped without a word.
    if (left_out > 0)
        WindowOutStatusBar(2, std::to_string(left_out) + (left_out == 1 ? " block" : " blocks") +
                                  " of the file could not be read as profiles and were left out");
    Show_Recent_Files();
}

}  // namespace zendrite
