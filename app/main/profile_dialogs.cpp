// The dialogs of the Profiles menu that list the slots: Focus, GRAPH SHOW, sorting, deletion.
#include <algorithm>
#include <numeric>

#include "app/main/plot_link.h"
#include "app/main/profile_commands.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

// Field numbers shared by the dialogs.
constexpr int kGrid = 10;
constexpr int kColNo = 1, kColFile = 2, kColChoice = 3;
constexpr int kYcalc = 11, kYdiff = 12, kReflexions = 13, kBackground = 14;
constexpr int kByFile = 21, kByTitle = 22, kByOrder = 23;
constexpr int kColTitle = 3, kColOrder = 4;

std::size_t at(int slot) { return static_cast<std::size_t>(slot); }

DIALOG_FIELD slot_grid(const std::vector<GRID_COLUMN>& extra) {
    DIALOG_FIELD f = Fld(kGrid, FIELD_KIND::Grid, "Profiles");
    f.columns = {{"No.", CELL_KIND::Integer, {}}, {"File", CELL_KIND::Text, {}}};
    f.columns.insert(f.columns.end(), extra.begin(), extra.end());
    return f;
}

// Loads dialog `id` with one row per slot: number and file name.
void load_slots(int id) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    WDialogLoad(id);
    WGridRows(kGrid, g.nperfiles);
    for (int s = 1; s <= g.nperfiles; ++s) {
        WGridPutCellInteger(kGrid, kColNo, s, s);
        WGridPutCellString(kGrid, kColFile, s, hxl::Trim(g.info[at(s)].prf_name));
    }
}

bool shown_ok() {
    WDialogShow(-1, -1, 0, Modal);
    return WInfoDialog(4) == kIdOk;
}

std::vector<bool> checked_rows(int col) {
    const int n = zendrite_param_global().nperfiles;
    std::vector<bool> out(at(n), false);
    for (int s = 1; s <= n; ++s) {
        int v = 0;
        WGridGetCellCheckBox(kGrid, col, s, v);
        out[at(s - 1)] = v != 0;
    }
    return out;
}

int define(const std::string& title, std::vector<DIALOG_FIELD> fields) {
    DIALOG_TEMPLATE t;
    t.fields = std::move(fields);
    return WDialogDefineTitled(title, t);
}

}  // namespace

void Focus_Profile_Command() {
    ZENDRITE_STORE& g = zendrite_param_global();
    static const int id = define("Focus", {Fld(9, FIELD_KIND::Label, "Profiles to focus Y on"),
                                           slot_grid({{"Focus", CELL_KIND::CheckBox, {}}})});
    load_slots(id);
    for (int s = 1; s <= g.nperfiles; ++s) WGridPutCellCheckBox(kGrid, kColChoice, s, g.show_profile[at(s)] ? 1 : 0);
    const bool ok = shown_ok();
    const std::vector<bool> chosen = checked_rows(kColChoice);
    WDialogUnload();
    if (!ok) return;
    if (!Focus_Slots(chosen)) Show_Message("The chosen profiles have no point inside the window");
    Plot_Again();
}

void Graph_Show_Command() {
    ZENDRITE_STORE& g = zendrite_param_global();
    static const int id = define("GRAPH SHOW", {slot_grid({{"Show", CELL_KIND::CheckBox, {}}}),
                                                Fld(kYcalc, FIELD_KIND::CheckBox, "Y calc."),
                                                Fld(kYdiff, FIELD_KIND::CheckBox, "Y obs. - Y calc."),
                                                Fld(kReflexions, FIELD_KIND::CheckBox, "Reflexions"),
                                                Fld(kBackground, FIELD_KIND::CheckBox, "Background")});
    load_slots(id);
    for (int s = 1; s <= g.nperfiles; ++s) WGridPutCellCheckBox(kGrid, kColChoice, s, g.show_profile[at(s)] ? 1 : 0);
    WDialogPutCheckBox(kYcalc, g.show_ycalc);
    WDialogPutCheckBox(kYdiff, g.show_ydiff);
    WDialogPutCheckBox(kReflexions, g.show_reflexions);
    WDialogPutCheckBox(kBackground, g.show_background);
    if (shown_ok()) {
        const std::vector<bool> show = checked_rows(kColChoice);
        for (int s = 1; s <= g.nperfiles; ++s) g.show_profile[at(s)] = show[at(s - 1)];
        int v = 0;
        WDialogGetCheckBox(kYcalc, v), g.show_ycalc = v != 0;
        WDialogGetCheckBox(kYdiff, v), g.show_ydiff = v != 0;
        WDialogGetCheckBox(kReflexions, v), g.show_reflexions = v != 0;
        WDialogGetCheckBox(kBackground, v), g.show_background = v != 0;
    }
    WDialogUnload();
    Plot_Again();
}

void Sorting_Command() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    auto radio = [](int field, const char* label) {
        DIALOG_FIELD f = Fld(field, FIELD_KIND::Radio, label);
        f.group = kByFile;
        return f;
    };
    static const int id =
        define("Sorting profiles", {slot_grid({{"Title", CELL_KIND::Text, {}}, {"Order", CELL_KIND::Integer, {}}}),
                                    radio(kByFile, "By file name"), radio(kByTitle, "By title"),
                                    radio(kByOrder, "In the order given")});
    load_slots(id);
    for (int s = 1; s <= g.nperfiles; ++s) {
        WGridPutCellString(kGrid, kColTitle, s, hxl::Trim(g.pattern[at(s)].title));
        WGridPutCellInteger(kGrid, kColOrder, s, s);
    }
    WDialogPutRadioButton(kByFile);
    if (shown_ok()) {
        int how = 1;
        WDialogGetRadioButton(kByFile, how);
        std::vector<int> key(at(g.nperfiles + 1), 0);
        for (int s = 1; s <= g.nperfiles; ++s) {
            key[at(s)] = s;
            WGridGetCellInteger(kGrid, kColOrder, s, key[at(s)]);
        }
        std::vector<int> order(at(g.nperfiles));
        std::iota(order.begin(), order.end(), 1);
        std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
            if (how == 2) return hxl::Trim(g.pattern[at(a)].title) < hxl::Trim(g.pattern[at(b)].title);
            if (how == 3) return key[at(a)] < key[at(b)];
            return hxl::Trim(g.info[at(a)].prf_name) < hxl::Trim(g.info[at(b)].prf_name);
        });
        Reorder_Slots(order);
    }
    WDialogUnload();
    Plot_Again();
}

void Delete_Profiles_Command() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    static const int id = define("Delete profiles", {Fld(9, FIELD_KIND::Label, "Check the profiles to delete"),
                                                     slot_grid({{"Delete", CELL_KIND::CheckBox, {}}})});
    load_slots(id);
    const bool ok = shown_ok();
    const std::vector<bool> remove = checked_rows(kColChoice);
    WDialogUnload();
    if (!ok) return;
    Remove_Slots(remove);
    if (g.nperfiles == 0) Enter_None_Mode();
    Plot_ReMake();
}

}  // namespace zendrite
