// The dialogs "Add exclude region" and "Admin. Excluded Regions".
#include <cmath>
#include <utility>

#include "app/main/menu_groups.h"
#include "app/main/preferences.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "calc/excluded_regions.h"
#include "support/edit_format.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kAddDialog = 121, kAddGrid = 1228, kSelectAll = 1332, kDeselectAll = 1333, kFrom = 1224, kTo = 1225;
constexpr int kColName = 1, kColType = 2, kColCheck = 3;
constexpr int kAdminDialog = 110, kTree = 1319, kReturn = 1, kInsert = 1320, kDelete = 1321, kDeleteAll = 1322;

std::size_t at(int slot) { return static_cast<std::size_t>(slot); }

// One value written by an edit descriptor such as "(i5)" or "(f12.4)".
std::string edit(const char* layout, double value, bool integer) {
    hxl::EDIT_FORMAT_TYPE format;
    std::string out, unused;
    if (!hxl::Parse_Edit_Format(layout, format, unused)) return out;
    {
        hxl::Edit_Writer w(format, out);
        if (integer) w.Int(static_cast<long long>(value));
        else w.Real(value);
    }
    if (!out.empty() && out.back() == '\n') out.pop_back();
    return out;
}

void define_add() {
    if (WDialogDefined(kAddDialog)) return;
    DIALOG_TEMPLATE t;
    t.id = kAddDialog;
    t.title = "Add exclude region";
    DIALOG_FIELD grid = Fld(kAddGrid, FIELD_KIND::Grid, "Profiles");
    grid.columns = {{"Profile", CELL_KIND::Text, {}}, {"Type", CELL_KIND::Text, {}}, {"Add", CELL_KIND::CheckBox, {}}};
    t.fields = {grid,
                Fld(kSelectAll, FIELD_KIND::PushButton, "Selec all"),
                Fld(kDeselectAll, FIELD_KIND::PushButton, "Deselect all"),
                Fld(kFrom, FIELD_KIND::Real, "New excluded region:  from"),
                Fld(kTo, FIELD_KIND::Real, "to")};
    WDialogDefine(t);
}

void define_admin() {
    if (WDialogDefined(kAdminDialog)) return;
    DIALOG_TEMPLATE t;
    t.id = kAdminDialog;
    t.title = "Admin. Excluded Regions";
    t.fields = {Fld(kTree, FIELD_KIND::Tree, "Excluded regions"), Fld(kReturn, FIELD_KIND::PushButton, "Return"),
                Fld(kInsert, FIELD_KIND::PushButton, "Insert"), Fld(kDelete, FIELD_KIND::PushButton, "Delete"),
                Fld(kDeleteAll, FIELD_KIND::PushButton, "Delete all")};
    WDialogDefine(t);
}

// A limit typed in the dialog: blank or not a finite number is none.
bool limit(int field, float& value) {
    std::string text;
    WDialogGetString(field, text);
    int err = 0;
    const double v = IStringToReal(hxl::Trim(text), err);
    if (err != 0 || hxl::Is_Blank(text) || !std::isfinite(v) || std::fabs(v) > 3.4e38) return false;
    value = static_cast<float>(v);
    return true;
}

// Adds the region to each chosen slot in ascending order; a full profile is told and skipped.
void add_to(const std::vector<int>& slots, float low, float high) {
    ZENDRITE_STORE& g = zendrite_param_global();
    for (int s : slots)
        if (!hxl::Append_Excluded_Region(g.info[at(s)], low, high))
            Show_Message("Profile No " + edit("(i5)", s, true) + kMsgTooManyExcl);
}

int single_shown_slot() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    int found = 0;
    for (int s = 1; s <= g.nperfiles; ++s)
        if (g.show_profile[at(s)]) {
            if (found) return 0;
            found = s;
        }
    return found;
}

// The tree: per profile its name, then "No ii  low  high" per region. `where` maps each line to
// (slot, region); region 0 is the profile's own line or its "No excluded regions".
std::vector<std::string> tree_lines(std::vector<std::pair<int, int>>& where) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    std::vector<std::string> lines;
    where.clear();
    for (int s = 1; s <= g.nperfiles; ++s) {
        const PRF_INFO_ADD_TYPE& info = g.info[at(s)];
        lines.push_back(hxl::Trim(info.prf_name));
        where.emplace_back(s, 0);
        if (info.nexcl < 1) {
            lines.push_back("  No excluded regions");
            where.emplace_back(s, 0);
        }
        for (int j = 1; j <= info.nexcl && j <= hxl::kMaxExcluded; ++j) {
            lines.push_back("  No " + edit("(i2)", j, true) + edit("(f12.4)", info.excl_low(j), false) +
                            edit("(f12.4)", info.excl_high(j), false));
            where.emplace_back(s, j);
        }
    }
    return lines;
}

bool confirmed(const std::string& text) {
    WMessageBox(YesNo, QuestionIcon, 1, text, "Confirmation....");
    return WInfoDialog(4) == 1;
}

void delete_all(int slot) {
    ZENDRITE_STORE& g = zendrite_param_global();
    if (slot > 0) {
        if (confirmed("Do you want to delete ALL excluded regions\rof profile: " + hxl::Trim(g.info[at(slot)].prf_name)))
            g.info[at(slot)].nexcl = 0;
        return;
    }
    if (confirmed("Do you want to delete ALL excluded regions\rof ALL profiles?"))
        for (int s = 1; s <= g.nperfiles; ++s) g.info[at(s)].nexcl = 0;
}

}  // namespace

void Add_Excluded_Region(float xlow, float xhigh, bool& error, std::string& text, bool from_mouse) {
    ZENDRITE_STORE& g = zendrite_param_global();
    error = false;
    text.clear();
    if (xlow > xhigh) std::swap(xlow, xhigh);
    if (from_mouse) {
        if (const int only = single_shown_slot()) {
            add_to({only}, xlow, xhigh);
            return;
        }
    }
    define_add();
    WDialogLoad(kAddDialog);
    WGridRows(kAddGrid, g.nperfiles);
    for (int s = 1; s <= g.nperfiles; ++s) {
        WGridPutCellString(kAddGrid, kColName, s, hxl::Trim(g.info[at(s)].prf_name));
        WGridPutCellString(kAddGrid, kColType, s, hxl::Trim(g.info[at(s)].prf_type));
        WGridPutCellCheckBox(kAddGrid, kColCheck, s, 1);
    }
    if (from_mouse) {
        WDialogPutReal(kFrom, xlow);
        WDialogPutReal(kTo, xhigh);
    }
    int button = 0;
    for (;;) {
        WDialogShow(-1, -1, 0, Modal);
        button = WInfoDialog(4);
        if (button != kSelectAll && button != kDeselectAll) break;
        for (int s = 1; s <= g.nperfiles; ++s) WGridPutCellCheckBox(kAddGrid, kColCheck, s, button == kSelectAll);
    }
    float low = 0, high = 0;
    const bool numbers = limit(kFrom, low) && limit(kTo, high);
    std::vector<int> chosen;
    for (int s = 1; s <= g.nperfiles; ++s) {
        int v = 0;
        WGridGetCellCheckBox(kAddGrid, kColCheck, s, v);
        if (v) chosen.push_back(s);
    }
    WDialogUnload();
    error = true;
    if (button != kIdOk) {
        text = "Cancelled";
    } else if (!numbers) {
        text = "ERROR: the limits of the excluded region must be numbers";
    } else if (low >= high) {
        text = "ERROR: minimal X value >= maximal X value";
    } else if (chosen.empty()) {
        text = "ERROR: No profile selected to add excluded region";
    } else {
        error = false;
        add_to(chosen, low, high);
    }
}

void Admin_Excluded_Regions() {
    ZENDRITE_STORE& g = zendrite_param_global();
    define_admin();
    for (;;) {
        std::vector<std::pair<int, int>> where;
        const std::vector<std::string> lines = tree_lines(where);
        WDialogLoad(kAdminDialog);
        WDialogPutMenu(kTree, lines, 0);
        WDialogShow(-1, -1, 0, Modal);
        const int button = WInfoDialog(4);
        int line = 0;
        WDialogGetMenu(kTree, line);
        WDialogUnload();
        const bool picked = line >= 1 && static_cast<std::size_t>(line) <= where.size();
        const int slot = picked ? where[at(line - 1)].first : 0;
        const int region = picked ? where[at(line - 1)].second : 0;
        if (button == kInsert) {
            bool error = false;
            std::string text;
            Add_Excluded_Region(0.0f, 0.0f, error, text, false);
            if (error) Show_Message(text);
        } else if (button == kDelete) {
            if (region > 0 && confirmed("Do you want to delete the excluded region" + edit("(i3)", region, true) +
                                        " of profile: " + hxl::Trim(g.info[at(slot)].prf_name)))
                hxl::Delete_Excluded_Region(g.info[at(slot)], region);
        } else if (button == kDeleteAll) {
            delete_all(slot);
        } else {
            return;
        }
    }
}

void Excluded_Insert(int) {
    bool error = false;
    std::string text;
    Add_Excluded_Region(0.0f, 0.0f, error, text, false);
    if (error) Show_Message(text);
    if (zendrite_param_global().nperfiles < 1) return;
    if (Preferences().excluded_limit_range) Plot_ReMake();
    else Plot_Again();
}

void Excluded_Admin(int) {
    if (zendrite_param_global().nperfiles < 1) return;
    Admin_Excluded_Regions();
    Plot_ReMake();
}

}  // namespace zendrite
