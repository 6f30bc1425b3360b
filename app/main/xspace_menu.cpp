// The X space menu: conversions, the grids of the wavelengths and of dtt1/dtt2, the states by space.
#include <cmath>

#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/x_space.h"
#include "app/store/zendrite_param_global.h"
#include "calc/xspace.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int k2theta = 40042, kOmega = 40228, kTof = 40043, kEnergy = 40229, kD = 40017, kQ = 40089, kS = 40081,
              kLambda = 40087, kDtt = 40088;
constexpr int kGrid = 10, kAll1 = 11, kFill = 12, kAll2 = 13;
constexpr int kColName = 1, kCol1 = 2, kCol2 = 3;

std::size_t at(int slot) { return static_cast<std::size_t>(slot); }

const char* target_of(int item) {
    switch (item) {
    case k2theta: return "2theta";
    case kOmega: return "Omega";
    case kTof: return "TOF";
    case kEnergy: return "Energy";
    case kD: return "d-space";
    case kQ: return "q-space";
    default: return "s-space";
    }
}

int constants_dialog(bool dtt) {
    auto grid = [dtt] {
        DIALOG_FIELD f = Fld(kGrid, FIELD_KIND::Grid, "Profiles");
        f.columns = {{"Profile", CELL_KIND::Text, {}}, {dtt ? "Dtt1" : "Lambda", CELL_KIND::Real, {}}};
        if (dtt) f.columns.push_back({"Dtt2", CELL_KIND::Real, {}});
        return f;
    };
    DIALOG_TEMPLATE t;
    if (dtt) {
        t.fields = {grid(), Fld(kAll1, FIELD_KIND::Real, "Dtt1 for all profiles"),
                    Fld(kAll2, FIELD_KIND::Real, "Dtt2 for all profiles"),
                    Fld(kFill, FIELD_KIND::PushButton, "Put into all rows")};
        static const int id = WDialogDefineTitled("Change ddt1/dtt2", t);
        return id;
    }
    t.fields = {grid(), Fld(kAll1, FIELD_KIND::Real, "Lambda for all profiles"),
                Fld(kFill, FIELD_KIND::PushButton, "Put into all rows")};
    static const int id = WDialogDefineTitled("Change wavelength", t);
    return id;
}

// A finite number read from a text field or a grid cell.
bool number(const std::string& text, float& value) {
    int err = 0;
    const double v = IStringToReal(hxl::Trim(text), err);
    if (err != 0 || hxl::Is_Blank(text) || !std::isfinite(v) || std::fabs(v) > 3.4e38) return false;
    value = static_cast<float>(v);
    return true;
}

// The grid of the constants of `slots`; OK copies it into the records when every cell is a number.
bool edit_constants(bool dtt, const std::vector<int>& slots) {
    ZENDRITE_STORE& g = zendrite_param_global();
    const int columns = dtt ? 2 : 1;
    WDialogLoad(constants_dialog(dtt));
    WGridRows(kGrid, static_cast<int>(slots.size()));
    for (std::size_t r = 0; r < slots.size(); ++r) {
        const int row = static_cast<int>(r) + 1;
        const DIFFRACTION_PATTERN_TYPE& p = g.pattern[at(slots[r])];
        WGridPutCellString(kGrid, kColName, row, hxl::Trim(g.info[at(slots[r])].prf_name));
        WGridPutCellReal(kGrid, kCol1, row, p.lambda1);
        if (dtt) WGridPutCellReal(kGrid, kCol2, row, p.lambda2);
    }
    int button = 0;
    for (;;) {
        WDialogShow(-1, -1, 0, Modal);
        button = WInfoDialog(4);
        if (button != kFill) break;
        for (int c = 1; c <= columns; ++c) {
            std::string text;
            float v = 0;
            WDialogGetString(c == 1 ? kAll1 : kAll2, text);
            if (!number(text, v)) continue;  // an empty field leaves its column
            for (std::size_t r = 0; r < slots.size(); ++r)
                WGridPutCellReal(kGrid, c == 1 ? kCol1 : kCol2, static_cast<int>(r) + 1, v);
        }
    }
    std::vector<float> values(slots.size() * 2, 0.0f);
    bool numbers = true;
    if (button == kIdOk)
        for (std::size_t r = 0; r < slots.size(); ++r)
            for (int c = 1; c <= columns; ++c) {
                std::string text;
                WGridGetCellString(kGrid, c == 1 ? kCol1 : kCol2, static_cast<int>(r) + 1, text);
                if (!number(text, values[2 * r + static_cast<std::size_t>(c - 1)])) numbers = false;
            }
    WDialogUnload();
    if (button != kIdOk) return false;
    if (!numbers) {
        Show_Message("Every cell of the grid must hold a number: the values were not changed");
        return false;
    }
    for (std::size_t r = 0; r < slots.size(); ++r) {
        g.pattern[at(slots[r])].lambda1 = values[2 * r];
        if (dtt) g.pattern[at(slots[r])].lambda2 = values[2 * r + 1];
    }
    return true;
}

bool origin_is(bool (*test)(const std::string&)) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    for (int s = 1; s <= g.nperfiles; ++s)
        if (test(hxl::X_Space_Name(g.pattern[at(s)].scat_var))) return true;
    return false;
}
bool angle_name(const std::string& v) { return v == "2theta" || v == "Omega"; }
bool time_name(const std::string& v) { return v == "TOF" || v == "Energy"; }

void state(int item, bool on) {
    if (WMenuHasItem(item)) WMenuSetState(item, 1, on ? 1 : 0);
}

// What each space enables follows the conversions that exist from it; d, q and s go back
// only to the space the profiles came from.
void menu_states() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const std::string x = hxl::Trim(g.xspace);
    const bool any = g.nperfiles > 0;
    const bool reciprocal = x == "d-space" || x == "q-space" || x == "s-space";
    const bool angles = any && (angle_name(x) || (reciprocal && origin_is(angle_name)));
    const bool times = any && (time_name(x) || (reciprocal && origin_is(time_name)));
    const bool to_reciprocal = any && (angle_name(x) || time_name(x) || reciprocal);
    state(k2theta, angles && !g.mixed_scat_var && x != "Omega");
    state(kOmega, angles && !g.mixed_scat_var && x != "2theta");
    state(kTof, times && !g.mixed_scat_var && x != "Energy");
    state(kEnergy, times && !g.mixed_scat_var && x != "TOF");
    state(kD, to_reciprocal && x != "d-space");
    state(kQ, to_reciprocal && x != "q-space");
    state(kS, to_reciprocal && x != "s-space");
    state(kLambda, angles);
    state(kDtt, times);
    const int checks[4] = {k2theta, kOmega, kTof, kEnergy};
    for (int item : checks)
        if (WMenuHasItem(item)) WMenuSetState(item, 2, x == target_of(item) ? 1 : 0);
}

}  // namespace

void Install_X_Space_Hooks() {
    X_Space_Hooks().edit_constants = edit_constants;
    X_Space_Hooks().menu_states = menu_states;
    X_Space_Hooks().message = [](const std::string& text) { Show_Message(text); };
}

void XSpace_Convert(int item) {
    bool error = false;
    std::string message;
    Convert_X_Space(target_of(item), error, message);
    if (error) Show_Message(message);
    Plot_ReMake();
}

void XSpace_Constants(int item) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    if (g.nperfiles < 1) return;
    std::vector<int> slots;
    for (int s = 1; s <= g.nperfiles; ++s) slots.push_back(s);
    edit_constants(item == kDtt, slots);
    Plot_Again();
}

}  // namespace zendrite
