// The Edit menu: Undo, Redo and History, and the steps that the commands of the other
// menus record around themselves.
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "app/main/menu_groups.h"
#include "app/main/root_menu.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/history.h"
#include "app/store/x_space.h"
#include "app/store/zendrite_param_global.h"
#include "support/fixed_text.h"
#if ZD_WITH_PLOT
#include "graphics/multi_views.h"
#endif

namespace zendrite {

namespace {

struct RECORDED_COMMAND {
    int item;
    const char* name;
    unsigned arrays;  // the arrays of the loaded slots the command may change
};

constexpr unsigned kAll = kHistoryArrays;
// The commands that add a profile and leave the others as they are: the new slot is kept
// whole, and nothing of the loaded ones need be copied before.
constexpr unsigned kNew = 0;

// The commands that change the store. Views, saves and the windows of their own are not steps.
const std::vector<RECORDED_COMMAND>& recorded() {
    static const std::vector<RECORDED_COMMAND> t = {
        {40014, "Open pattern file", kAll},
        {kOpenFolderItem, "Open folder", kAll},
        {40016, "Open profile file", kAll},
        {40015, "Open buffer file", kAll},
        {40157, "Open raw data file", kAll},
        {40212, "Open numor file", kAll},
        {40211, "Numors extraction", kAll},
        {40019, "Reset", kAll},
        {40038, "Open recent file", kAll},
        {40067, "Open recent file", kAll},
        {40068, "Open recent file", kAll},
        {40069, "Open recent file", kAll},
        {40070, "Open recent file", kAll},
        {40141, "Shift", 0},
        {40149, "Offset/Align", kAll},
        {40124, "Scaling X", kAll},
        {40115, "Scaling Y", kAll},
        {40026, "Normalize (monitor)", kAll},
        {40102, "Copy profile", kNew},
        {40023, "Show", 0},
        {40025, "Sorting", kAll},
        {40037, "Delete", kAll},
        {40100, "Summation", kNew},
        {40123, "Average", kNew},
        {40101, "Difference", kNew},
        {40162, "Multiply Y / Shift X", kAll},
        {40163, "Efficiency correction", kAll},
        // The filters change y alone (and may add the smoothed copy, which is a new slot).
        {40020, "Fourier filtering", kHistoryY},
        {40090, "Polynomial filtering", kHistoryY},
        {40042, "Conversion to 2theta", kAll},
        {40228, "Conversion to Omega", kAll},
        {40043, "Conversion to TOF", kAll},
        {40229, "Conversion to energy", kAll},
        {40017, "Conversion to d", kAll},
        {40089, "Conversion to Q", kAll},
        {40081, "Conversion to s", kAll},
        {40087, "Change wavelength", kAll},
        {40088, "Change dtt1/dtt2", kAll},
        {40151, "Insert excluded regions", 0},
        {40034, "Admin excluded regions", 0},
        {40092, "Peak auto detection", kAll},
        {40180, "Satellites detection", kAll},
        {40159, "Background auto detection", kAll},
        {40147, "Clear all peaks", 0},
        {40148, "Clear all background points", 0},
        {40096, "Peak detection mode", 0},
        {40097, "Peak detection mode", 0},
        {40138, "Background mode", 0},
        {40139, "Background mode", 0},
        {40095, "Profile fitting mode", 0},
        {40099, "Profile fitting mode", 0},
        {40194, "Fit auto detection", kAll},
        {40146, "Clear all (fit)", kAll},
        {40150, "Profile fitting", kAll},
        {40224, "Load PIK file", kAll},
    };
    return t;
}

const RECORDED_COMMAND* recorded_command(int item) {
    for (const RECORDED_COMMAND& c : recorded())
        if (c.item == item) return &c;
    return nullptr;
}

std::string limits_file() { return Beside_Preference_File("zendrite.history"); }

std::string megabytes(std::size_t bytes) {
    char b[32];
    if (bytes < 1048576u / 10) std::snprintf(b, sizeof b, "%.0f kB", static_cast<double>(bytes) / 1024.0);
    else std::snprintf(b, sizeof b, "%.1f MB", static_cast<double>(bytes) / 1048576.0);
    return b;
}

// What the mouse did between a press and a release, for the step's name.
struct MOUSE_MARK {
    int peaks = 0, bgr = 0, excluded = 0;
} mouse_mark;

int excluded_total() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    int n = 0;
    for (int s = 1; s <= g.nperfiles; ++s) n += g.info[static_cast<std::size_t>(s)].nexcl;
    return n;
}

// The menus, plot and status bar of the store as undo or redo left it.
void after_move(const std::string& what) {
    const ZENDRITE_STORE& g = zendrite_param_global();
#if ZD_WITH_PLOT
    Multi_Data_Changed();
#endif
    if (g.graph_mode == "none" || g.nperfiles == 0) {
        if (Store_Hooks().after_none_mode) Store_Hooks().after_none_mode();
        Draw_Title_Screen();
    } else {
        Grey_Data_Menus(true);
        if (X_Space_Hooks().menu_states) X_Space_Hooks().menu_states();
        Calculation_Mode_Menus(g.graph_mode == "calculation" ? g.calc_mode : 0);
        if (Store_Hooks().after_mode_change) Store_Hooks().after_mode_change();
        Plot_Again();
    }
    Update_Status_Bar();
    History_Menus();
    WindowOutStatusBar(1, what);
}

}  // namespace

void History_Menus() {
    const std::string undo = History_Undo_Name(), redo = History_Redo_Name();
    WMenuSetString(kUndoItem, undo.empty() ? "Undo" : "Undo " + undo);
    WMenuSetString(kRedoItem, redo.empty() ? "Redo" : "Redo " + redo);
    WMenuSetState(kUndoItem, 1, undo.empty() ? 0 : 1);
    WMenuSetState(kRedoItem, 1, redo.empty() ? 0 : 1);
}

void Read_History_Limits() {
    std::ifstream in(limits_file());
    HISTORY_LIMITS l;
    // A file that does not read whole, or holds values out of bounds, gives the defaults.
    if (in >> l.steps >> l.megabytes && l.steps >= 1 && l.steps <= 10000 && l.megabytes >= 1 && l.megabytes <= 1e6)
        History_Limits() = l;
}

void Command_Begin(int item) {
    if (const RECORDED_COMMAND* c = recorded_command(item)) History_Begin(c->name, c->arrays);
}

void Command_End() {
    if (!History_Recording()) return;
    History_End();
    History_Menus();
}

void Mouse_Edit_Begin() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    mouse_mark = {g.Peak_List.count, g.Bgr_List.count, excluded_total()};
    // the drags handed over by the Profiles dialogs change the data of the slots
    const bool drag = g.graph_mode != "calculation" && g.MoveMode >= 3 && g.MoveMode <= 5;
    const char* name = !drag ? "Mouse edit" : g.MoveMode == 3 ? "Offset/Align by the mouse"
                                            : g.MoveMode == 4 ? "Scaling Y by the mouse" : "Scaling X by the mouse";
    History_Begin(name, drag ? kHistoryArrays : 0);
}

void Mouse_Edit_End() {
    if (!History_Recording()) return;
    const ZENDRITE_STORE& g = zendrite_param_global();
    const int excl = excluded_total();
    std::string name = History_Open_Name();
    if (g.Peak_List.count != mouse_mark.peaks)
        name = g.Peak_List.count > mouse_mark.peaks ? "Insert peak" : "Delete peak";
    else if (g.Bgr_List.count != mouse_mark.bgr)
        name = g.Bgr_List.count > mouse_mark.bgr ? "Insert background point" : "Delete background point";
    else if (excl != mouse_mark.excluded)
        name = excl > mouse_mark.excluded ? "Excluded region" : "Delete excluded region";
    History_Rename(name);
    Command_End();
}

void Edit_Undo(int) {
    Command_End();  // a press of the mouse whose release never came
    const std::string name = History_Undo_Name();
    if (name.empty() || !History_Undo()) {
        WindowOutStatusBar(1, "Nothing to undo");
        return;
    }
    after_move("Undone: " + name);
}

void Edit_Redo(int) {
    Command_End();
    const std::string name = History_Redo_Name();
    if (name.empty() || !History_Redo()) {
        WindowOutStatusBar(1, "Nothing to redo");
        return;
    }
    after_move("Redone: " + name);
}

std::string History_Dump() {
    std::string s = "position " + std::to_string(History_Position()) + "\nsteps " + std::to_string(History_Count()) +
                    "\nbytes " + std::to_string(History_Bytes()) + "\n";
    const std::vector<std::string> names = History_Names();
    for (std::size_t i = 0; i < names.size(); ++i) s += "  " + names[i] + "\n";
    return s;
}

void Edit_History(int) {
    Command_End();
    constexpr int kSummary = 10, kSteps = 11, kMaxSteps = 12, kMaxMb = 13;
    DIALOG_TEMPLATE t;
    DIALOG_FIELD summary = Fld(kSummary, FIELD_KIND::Label, "");
    summary.wrap = true;
    DIALOG_FIELD steps_list = Fld(kSteps, FIELD_KIND::Tree, "Steps");
    steps_list.notify = true;  // a double-click goes to the step
    t.fields = {summary, steps_list, Fld(kMaxSteps, FIELD_KIND::Integer, "Steps kept at most"),
                Fld(kMaxMb, FIELD_KIND::Real, "Megabytes kept at most"), Fld(1, FIELD_KIND::PushButton, "Go to step"),
                Fld(2, FIELD_KIND::PushButton, "Close")};
    WDialogLoad(WDialogDefineTitled("History", t));
    const std::vector<std::string> names = History_Names();
    const int now = History_Position();
    std::vector<std::string> lines = {std::string("0. Start") + (now == 0 ? "   <- now" : "")};
    for (int i = 1; i <= static_cast<int>(names.size()); ++i)
        lines.push_back(std::to_string(i) + ". " + names[static_cast<std::size_t>(i - 1)] + "   (" +
                        megabytes(History_Step_Bytes(i)) + ")" + (i == now ? "   <- now" : i > now ? "   undone" : ""));
    WDialogPutMenu(kSteps, lines, now + 1);
    const HISTORY_LIMITS l = History_Limits();
    WDialogPutString(kSummary, "The history holds " + megabytes(History_Bytes()) + " in " + std::to_string(names.size()) +
                                   " steps. Double-click a step, or choose it and press \"Go to step\", to undo or redo up to it.");
    WDialogPutInteger(kMaxSteps, l.steps);
    WDialogPutReal(kMaxMb, l.megabytes);
    WDialogShow(-1, -1, 0, Modal);
    const int button = WInfoDialog(4);
    int chosen = 0, steps = l.steps;
    double mb = l.megabytes;
    WDialogGetMenu(kSteps, chosen);
    WDialogGetInteger(kMaxSteps, steps);
    WDialogGetReal(kMaxMb, mb);
    WDialogUnload();
    if (button != 1 && button != 2) return;
    std::string where;
    if (button == 1 && chosen >= 1 && chosen - 1 != History_Position()) {
        History_Go(chosen - 1);
        where = "History: at step " + std::to_string(chosen - 1);
    }
    if (steps != l.steps || mb != l.megabytes) {
        if (steps < 1 || steps > 10000 || !(mb >= 1 && mb <= 1e6)) {
            Show_Message("The history keeps from 1 to 10000 steps and from 1 to 1000000 megabytes");
        } else {
            History_Limits() = {steps, mb};
            History_Apply_Limits();
            char text[64];
            std::snprintf(text, sizeof text, "%d %.6g\n", steps, mb);
            if (!Write_File_Replace(limits_file(), text)) Show_Message("Unable to write " + limits_file());
            History_Menus();
        }
    }
    if (where.empty()) return;
    after_move(where);
}

}  // namespace zendrite
