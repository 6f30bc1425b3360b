// The command that opens data files: selector, format, one load per file.
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/add_profile.h"
#include "app/store/zendrite_param_global.h"
#include "patterns/format_guess.h"
#include "patterns/format_table.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kFirstFormatRadio = 101;
constexpr int kGuessNote = 117;  // under the radio group: the guess, or why a read failed
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
        DIALOG_FIELD note = Fld(kGuessNote, FIELD_KIND::Label, "");
        note.wrap = true;
        t.fields.push_back(note);
        id = WDialogDefineTitled("Format of the data file", t);
    }
    return id;
}

// The dialog with `preset` selected and `note` under the radio group; the row, 0 at Cancel.
int ask_row(int preset, const std::string& note) {
    WDialogLoad(format_dialog());
    WDialogPutRadioButton(kFirstFormatRadio + (preset >= 1 && preset <= hxl::kFormatRows ? preset : 1) - 1);
    WDialogPutString(kGuessNote, note);
    WDialogShow(-1, -1, 0, Modal);
    int row = 0;
    if (WInfoDialog(4) == kIdOk) WDialogGetRadioButton(kFirstFormatRadio, row);
    WDialogUnload();
    if (row >= 1 && row <= hxl::kFormatRows) format_preset = row;
    return WInfoDialog(4) == kIdOk ? row : 0;
}

// The guess of a file's format as the dialog shows it, and the row it preselects.
std::string guess_note(const std::string& file, int& preset) {
    const hxl::FORMAT_GUESS_TYPE g = hxl::Guess_Pattern_Format(file);
    if (g.row == 0) return "No guess: " + g.reason;
    preset = g.row;
    return "Guess: " + g.reason;
}

// A row chosen in the dialog is tried, not trusted: when the read fails, its
// message is shown and the dialog asks again for this file. 0 at Cancel.
int load_with_retry(const std::string& file, int row, LOAD_RESULT& r) {
    while (true) {
        r = Load_Data_File(file, row);
        for (const std::string& m : r.messages) Show_Message(m);
        if (!r.slots.empty() || r.limit_reached) return row;
        int preset = row;  // the guess, when there is one, is offered again
        const std::string guess = guess_note(file, preset);
        const std::string why = r.messages.empty() ? std::string("nothing was read") : r.messages.front();
        row = ask_row(preset, "Read as \"" + std::string(hxl::Format_Row(row).label) + "\" failed: " + hxl::Trim(why) +
                                  "\n" + guess);
        if (row == 0) return 0;
    }
}

}  // namespace

int Format_Dialog_Row() { return ask_row(format_preset, ""); }

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
    // The extension decides when the table knows it; otherwise the dialog
    // asks, with the guess from the first file's content preselected.
    int row = hxl::Format_Row_From_Extension(hxl::Upper_Extension(files[0]));
    const bool asked = row == 0;
    if (asked) {
        int preset = format_preset;
        const std::string note = guess_note(files[0], preset);
        row = ask_row(preset, note);
    }
    if (row == 0) {
        error = true;
        message = "Cancelled";
        return;
    }
    int left_out = 0;
    for (const std::string& f : files) {
        LOAD_RESULT r;
        if (asked) {
            row = load_with_retry(f, row, r);
            if (row == 0) break;  // Cancel ends the command; what was read stays
        } else {
            r = Load_Data_File(f, row);
            for (const std::string& m : r.messages) Show_Message(m);
        }
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
