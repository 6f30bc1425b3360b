// Sum, average and difference of profiles into a new slot (dialogs 141 and 139).
#include "app/main/arith_commands.h"
#include "app/present.h"
#include "calc/arithmetic.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kSumDialog = 141, kSumGrid = 1331, kSelectAll = 1332, kDeselectAll = 1333, kSumLabel = 1338,
              kInterpolate = 1339;
constexpr int kColName = 1, kColType = 2, kColPoints = 3, kColCheck = 4;
constexpr int kDiffDialog = 139, kListA = 1226, kListB = 1227;

std::size_t at(int slot) { return static_cast<std::size_t>(slot); }

void define_dialogs() {
    static bool done = false;
    if (done) return;
    done = true;
    DIALOG_FIELD grid = Fld(kSumGrid, FIELD_KIND::Grid, "Profiles");
    grid.columns = {{"Profile", CELL_KIND::Text, {}},
                    {"Type", CELL_KIND::Text, {}},
                    {"Points", CELL_KIND::Integer, {}},
                    {"Use", CELL_KIND::CheckBox, {}}};
    WDialogDefine({kSumDialog, "Sum/Average of profiles", {},
                   {Fld(kSumLabel, FIELD_KIND::Label, "Sum of profiles"), grid,
                    Fld(kSelectAll, FIELD_KIND::PushButton, "Selec. All"),
                    Fld(kDeselectAll, FIELD_KIND::PushButton, "Deselec. All"),
                    Fld(kInterpolate, FIELD_KIND::CheckBox, "Interpolate onto the grid of the first profile")}});
    WDialogDefine({kDiffDialog, "Difference of profiles", {},
                   {Fld(kListA, FIELD_KIND::Combo, "Profile A"), Fld(kListB, FIELD_KIND::Combo, "Profile B")}});
}

void tick_rows(bool on) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    for (int s = 1; s <= g.nperfiles; ++s) WGridPutCellCheckBox(kSumGrid, kColCheck, s, on && !Prf_Like(g.info[at(s)]));
}

}  // namespace

bool Prf_Like(const PRF_INFO_ADD_TYPE& info) { return hxl::Same(info.prf_type, "PRF") || hxl::Same(info.prf_type, "MONO"); }

int Add_Synthetic_Profile(DIFFRACTION_PATTERN_TYPE&& pattern, const PRF_INFO_ADD_TYPE& from_info,
                          const std::string& type, const std::string& name) {
    ZENDRITE_STORE& g = zendrite_param_global();
    if (g.nperfiles >= kMaxProfiles) return 0;
    const int s = ++g.nperfiles;
    Clear_Pattern_Record(g.pattern[at(s)]);
    Clear_Prf_Info(g.info[at(s)]);
    g.pattern[at(s)] = std::move(pattern);
    Copy_Prf_Info(from_info, g.info[at(s)]);
    g.info[at(s)].prf_type = type;
    g.info[at(s)].prf_name = name;
    g.info[at(s)].prf_dir.clear();
    g.show_profile[at(s)] = true;
    g.plot_calc[at(s)] = g.plot_bgr[at(s)] = false;
    Reset_Slot_Totals(s);
    return s;
}

void Sum_Profiles(int mode, int& status, std::string& text) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const bool average = mode != 0;
    status = -1;
    define_dialogs();
    WDialogLoad(kSumDialog);
    WDialogPutString(kSumLabel, average ? "Average of profiles" : "Sum of profiles");
    WGridRows(kSumGrid, g.nperfiles);
    for (int s = 1; s <= g.nperfiles; ++s) {
        WGridPutCellString(kSumGrid, kColName, s, hxl::Trim(g.info[at(s)].prf_name));
        WGridPutCellString(kSumGrid, kColType, s, hxl::Trim(g.info[at(s)].prf_type));
        WGridPutCellInteger(kSumGrid, kColPoints, s, g.pattern[at(s)].npts);
        WGridPutCellCheckBox(kSumGrid, kColCheck, s, 0);
        if (Prf_Like(g.info[at(s)])) WGridStateCell(kSumGrid, kColCheck, s, 0);
    }
    int button = 0;
    for (;;) {
        WDialogShow(-1, -1, 0, Modal);
        button = WInfoDialog(4);
        if (button == kSelectAll || button == kDeselectAll) {
            tick_rows(button == kSelectAll);
            continue;
        }
        if (button == kIdOk || button == kIdCancel) break;
    }
    std::vector<const DIFFRACTION_PATTERN_TYPE*> set;
    int interpolate = 0;
    if (button == kIdOk) {
        for (int s = 1; s <= g.nperfiles; ++s) {
            int v = 0;
            WGridGetCellCheckBox(kSumGrid, kColCheck, s, v);
            // a disabled cell cannot be ticked, whatever the grid says
            if (v && !Prf_Like(g.info[at(s)])) set.push_back(&g.pattern[at(s)]);
        }
        WDialogGetCheckBox(kInterpolate, interpolate);
    }
    WDialogUnload();
    if (button != kIdOk) {
        text = "Cancelled";
        return;
    }
    DIFFRACTION_PATTERN_TYPE result;
    hxl::SUM_LEFT_OUT_TYPE left_out;
    const bool ok = interpolate ? hxl::Sum_Patterns_Interpolated(set, average, result, left_out, text)
                                : hxl::Sum_Patterns(set, average, result, text);
    if (!ok) return;
    const int first = static_cast<int>(set.front() - &g.pattern[0]);
    const int s = Add_Synthetic_Profile(std::move(result), g.info[at(first)], average ? "AVER" : "SUMM",
                                        average ? "<Average>" : "<summation>");
    if (s == 0) {
        text = kMsgMaxProfiles;
        return;
    }
    status = 0;
    text.clear();
    if (interpolate) {
        text = std::string(average ? "Average" : "Sum") + " of " + std::to_string(set.size()) +
               " profiles in slot " + std::to_string(s) + " on the grid of the first profile";
        if (left_out.beyond_first > 0)
            text += ": " + std::to_string(left_out.beyond_first) +
                    " points outside the range of the first profile were left out";
        if (left_out.not_covered > 0)
            text += (left_out.beyond_first > 0 ? "; " : ": ") + std::to_string(left_out.not_covered) +
                    " points of the first profile outside another profile's range were left out";
        WindowOutStatusBar(1, text);
        // what was left out is said in a message; a clean interpolation only in the status bar
        if (left_out.beyond_first == 0 && left_out.not_covered == 0) text.clear();
    }
}

void Difference_Profiles(int& status, std::string& text) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    status = -1;
    define_dialogs();
    WDialogLoad(kDiffDialog);
    std::vector<std::string> names;
    for (int s = 1; s <= g.nperfiles; ++s) names.push_back(std::to_string(s) + ": " + hxl::Trim(g.info[at(s)].prf_name));
    WDialogPutMenu(kListA, names, 1);
    WDialogPutMenu(kListB, names, g.nperfiles >= 2 ? 2 : 1);
    WDialogShow(-1, -1, 0, Modal);
    const bool ok = WInfoDialog(4) == kIdOk;
    int a = 0, b = 0;
    WDialogGetMenu(kListA, a);
    WDialogGetMenu(kListB, b);
    WDialogUnload();
    if (!ok) {
        text = "Cancelled";
        return;
    }
    if (a < 1 || a > g.nperfiles || b < 1 || b > g.nperfiles) {
        text = "Select the profiles A and B";
        return;
    }
    for (int s : {a, b})
        for (const char* type : {"PRF", "MONO"})
            if (hxl::Same(g.info[at(s)].prf_type, type)) {
                text = "Difference operation in PRF file is not permitted";
                return;
            }
    DIFFRACTION_PATTERN_TYPE result;
    if (!hxl::Difference_Patterns(g.pattern[at(a)], g.pattern[at(b)], result, text)) return;
    result.title = hxl::Cut("Difference of profiles: " + hxl::Trim(g.info[at(a)].prf_name) + " - " +
                                hxl::Trim(g.info[at(b)].prf_name),
                            hxl::kTitleLen);
    if (Add_Synthetic_Profile(std::move(result), g.info[at(a)], "DIFF", "<difference>") == 0) {
        text = kMsgMaxProfiles;
        return;
    }
    status = 0;
    text.clear();
}

}  // namespace zendrite
