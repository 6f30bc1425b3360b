// The Shift dialog (143): the profiles drawn as a stack, their data untouched.
#include <cmath>

#include "app/main/arith_commands.h"
#include "app/present.h"
#include "app/store/profile_shift.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kShiftDialog = 143, kLastX = 1334, kLastY = 1335, kNewX = 1336, kNewY = 1337;

void define_dialog() {
    static bool done = false;
    if (done) return;
    done = true;
    DIALOG_FIELD new_x = Fld(kNewX, FIELD_KIND::Real, "New shift X");
    DIALOG_FIELD new_y = Fld(kNewY, FIELD_KIND::Real, "New shift Y");
    new_x.value = new_y.value = "0";
    WDialogDefine({kShiftDialog, "Shift profiles", {},
                   {Fld(1338, FIELD_KIND::Label, "Last shift X"), Fld(kLastX, FIELD_KIND::Label, ""),
                    Fld(1339, FIELD_KIND::Label, "Last shift Y"), Fld(kLastY, FIELD_KIND::Label, ""), new_x, new_y}});
}

bool read_real(int field, float& value) {
    std::string t;
    WDialogGetString(field, t);
    int err = 0;
    const double d = IStringToReal(hxl::Trim(t), err);
    value = static_cast<float>(d);
    return err == 0 && std::isfinite(d) && std::isfinite(value);
}

}  // namespace

void Shift_Profiles(int& status, std::string& text) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    status = -1;
    if (g.prf_loaded) {
        text = "Profile PRF in memory. Operation not permitted";
        return;
    }
    define_dialog();
    WDialogLoad(kShiftDialog);
    WDialogPutString(kLastX, IRealToString(g.shift_x_last));
    WDialogPutString(kLastY, IRealToString(g.shift_y_last));
    WDialogPutReal(kNewX, g.shift_x_last);
    WDialogPutReal(kNewY, g.shift_y_last);
    WDialogShow(-1, -1, 0, Modal);
    const bool ok = WInfoDialog(4) == kIdOk;
    float x = 0, y = 0;
    const bool good_x = read_real(kNewX, x);
    const bool good = read_real(kNewY, y) && good_x;
    WDialogUnload();
    if (!ok) {
        text = "Cancelled";
        return;
    }
    if (!good || !Apply_Profile_Shift(x, y)) {
        text = "The shifts must be numbers";
        return;
    }
    status = 0;
    text.clear();
}

}  // namespace zendrite
