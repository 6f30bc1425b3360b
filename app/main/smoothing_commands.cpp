// The Smoothing menu: the polynomial and the Fourier filters through dialog 140,
// on the first profile (in place or into a new slot) or on all profiles.
#include "app/main/arith_commands.h"
#include "app/present.h"
#include "calc/efficiency_file.h"
#include "calc/smoothing.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kDialog = 140, kLabel = 1329, kParameter = 1282, kFirst = 1020, kAll = 1021, kFrame = 1001,
              kNewSlot = 1330, kEffFile = 1647;

std::size_t at(int slot) { return static_cast<std::size_t>(slot); }

void define_dialog() {
    if (WDialogDefined(kDialog)) return;
    DIALOG_FIELD parameter = Fld(kParameter, FIELD_KIND::Spin, "");
    parameter.value = "5";
    parameter.low = -100000;
    parameter.high = 100000000;
    DIALOG_FIELD first = Fld(kFirst, FIELD_KIND::Radio, "First profile");
    first.group = kFirst;
    DIALOG_FIELD all = Fld(kAll, FIELD_KIND::Radio, "All profiles");
    all.group = kFirst;
    WDialogDefine({kDialog, "Smoothing", {},
                   {Fld(kLabel, FIELD_KIND::Label, "Select order polynomial"), parameter,
                    Fld(kFrame, FIELD_KIND::Label, "Apply over"), first, all,
                    Fld(kNewSlot, FIELD_KIND::CheckBox, "Create a new smoothed profile"),
                    Fld(kEffFile, FIELD_KIND::CheckBox, "Efficiency file: Raw/Smoothed")}});
}

struct SMOOTH_CHOICE {
    bool ok = false;
    int parameter = 5;
    bool all = false;
    bool new_slot = false;
    bool eff_file = false;
};

SMOOTH_CHOICE ask(bool fourier) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    define_dialog();
    WDialogLoad(kDialog);
    WDialogPutString(kLabel, fourier ? "No. points for Fourier window" : "Select order polynomial");
    WDialogPutInteger(kParameter, 5);
    WDialogPutRadioButton(kFirst);
    const bool single = g.graph_mode == "single";
    if (single) WDialogFieldState(kAll, 0);  // only the first profile can be smoothed
    WDialogFieldState(kEffFile, fourier ? 1 : 0);
    WDialogShow(-1, -1, 0, Modal);
    SMOOTH_CHOICE c;
    c.ok = WInfoDialog(4) == kIdOk;
    int radio = 1, check = 0;
    WDialogGetInteger(kParameter, c.parameter);
    WDialogGetRadioButton(kFirst, radio);
    c.all = radio == 2 && !single;
    WDialogGetCheckBox(kNewSlot, check);
    c.new_slot = check != 0 && !c.all;  // enabled only with "First profile"
    WDialogGetCheckBox(kEffFile, check);
    c.eff_file = fourier && check != 0;
    WDialogUnload();
    return c;
}

// Slot 1 copied to a new slot as the smoothed profile; its number, 0 when the store is full.
int new_smoothed_slot() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    DIFFRACTION_PATTERN_TYPE copy;
    Copy_Pattern_Record(g.pattern[1], copy);
    copy.title = hxl::Cut("Smoothing Fourier of " + hxl::Trim(g.pattern[1].title), hxl::kTitleLen);
    return Add_Synthetic_Profile(std::move(copy), g.info[1], "SMOO", "<smoothing>");
}

int points(const DIFFRACTION_PATTERN_TYPE& p) { return std::max(0, std::min(p.npts, p.y.size())); }

// Both filters: the same dialog, targets and new slot; they differ in the
// parameter's test, the types they take and the kernel.
void Smooth_Command(bool fourier, int& status, std::string& text) {
    ZENDRITE_STORE& g = zendrite_param_global();
    status = -1;
    text = "Cancelled";
    if (g.nperfiles < 1) return;
    const SMOOTH_CHOICE c = ask(fourier);
    if (!c.ok) return;
    text.clear();
    const float window = static_cast<float>(c.parameter);
    if (fourier ? !hxl::Check_Fourier_Window(window, g.pattern[1].npts, text)
                : !hxl::Check_Polynomial_Order(c.parameter, text))
        return;
    auto accepted = [&g, fourier](int s) {
        const std::string& type = g.info[at(s)].prf_type;
        return fourier ? hxl::Same(type, "DATA") || hxl::Same(type, "SMOO") : !Prf_Like(g.info[at(s)]);
    };
    auto smooth = [&g, fourier, window](int s) {
        DIFFRACTION_PATTERN_TYPE& p = g.pattern[at(s)];
        if (fourier)
            hxl::Fourier_Smooth(p.y, points(p), window);
        else
            hxl::Smooth_5Point(p.y, points(p));
    };
    if (c.all) {
        for (int s = 1; s <= g.nperfiles; ++s) {
            if (accepted(s)) {
                smooth(s);
                continue;
            }
            text += (text.empty() ? "" : "\r") + std::string("Profile ") + std::to_string(s) +
                    (fourier ? "is not of DATA type. It will be ignored" : "is of PRF type. It will be ignored");
        }
        status = 0;
        return;
    }
    if (!accepted(1)) {
        text = "Operation not permitted over this profile type";
        return;
    }
    int s = 1;
    if (c.new_slot && (s = new_smoothed_slot()) == 0) {
        text = kMsgMaxProfiles;
        return;
    }
    smooth(s);
    status = 0;
    if (c.eff_file && c.new_slot) {
        const std::string lines = hxl::Smoothing_Efficiency_Text(g.pattern[1].y, g.pattern[at(s)].y, points(g.pattern[1]));
        if (!Write_File_Replace(hxl::kEfficiencyFile, lines))
            text = std::string("ERROR writing the file ") + hxl::kEfficiencyFile;
    }
}

}  // namespace

void Smooth_Polynomial(int& status, std::string& text) { Smooth_Command(false, status, text); }
void Smooth_Fourier(int& status, std::string& text) { Smooth_Command(true, status, text); }

}  // namespace zendrite
