// The modeless panel of the HKL generator: a slider and an edit per cell parameter,
// tied by the metric constraints of the crystal system; each change regenerates and redraws.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "app/main/hkl_gen.h"
#include "app/main/zendrite_app.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/plot.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kLow = 1600, kHigh = 1609, kSlider = 1601, kEdit = 1611, kFine = 1620, kSystem = 1621, kGroup = 1622,
              kMerit = 1623, kRefine = 1624, kCount = 1625, kZero = 1626, kRefined = 1627, kSigma = 1628,
              kUse = 1629, kMeritTitle = 1630, kChange = 1631, kStart = 1632, kStop = 1633,
              kClose = 1634;
constexpr int kSteps = 400;                   // slider positions on each side of the middle
constexpr float kCoarse = 0.40f, kFineRange = 0.04f;  // the reach of a slider, as a fraction
const char* const kNames[6] = {"a :", "b :", "c :", "alpha :", "beta :", "gamma :"};

enum { A, B, C, AL, BE, GA };

bool fine() {
    int on = 0;
    WDialogGetCheckBox(kFine, on);
    return on != 0;
}

// The axis a monoclinic group keeps: the diagonal entry of its two-fold (or mirror)
// whose sign differs from the other two.
int unique_axis(const hxl::SPACE_GROUP_TYPE& sg) {
    for (const hxl::SEITZ_TYPE& op : sg.seitz) {
        const int d[3] = {op.r[0][0], op.r[1][1], op.r[2][2]};
        if (std::abs(d[0]) != 1 || std::abs(d[1]) != 1 || std::abs(d[2]) != 1) continue;
        for (int i = 0; i < 3; ++i)
            if (d[i] != d[(i + 1) % 3] && d[(i + 1) % 3] == d[(i + 2) % 3]) return i;
    }
    return 1;
}

bool rhombohedral_axes(const HKL_GEN_STATE& s) {
    return hxl::Same(s.sg.lattice_symbol, "R") && hxl::Same(s.sg.setting_choice, "R");
}

// Which parameters the system leaves free.
std::array<bool, 6> free_parameters(const HKL_GEN_STATE& s) {
    const std::string& sys = s.crystal_system;
    if (hxl::Same(sys, "Cubic")) return {true, false, false, false, false, false};
    if (hxl::Same(sys, "Trigonal") && rhombohedral_axes(s)) return {true, false, false, true, false, false};
    if (hxl::Same(sys, "Tetragonal") || hxl::Same(sys, "Trigonal") || hxl::Same(sys, "Hexagonal"))
        return {true, false, true, false, false, false};
    if (hxl::Same(sys, "Orthorhombic")) return {true, true, true, false, false, false};
    if (hxl::Same(sys, "Monoclinic")) {
        std::array<bool, 6> f{true, true, true, false, false, false};
        f[static_cast<std::size_t>(3 + unique_axis(s.sg))] = true;
        return f;
    }
    return {true, true, true, true, true, true};
}

// The cell made to obey the system, from its free parameters.
void Constrain_Cell(const HKL_GEN_STATE& s, float c[6]) {
    const std::string& sys = s.crystal_system;
    auto right = [&] { c[AL] = c[BE] = c[GA] = 90; };
    if (hxl::Same(sys, "Cubic")) {
        c[B] = c[C] = c[A];
        right();
    } else if (hxl::Same(sys, "Trigonal") && rhombohedral_axes(s)) {
        c[B] = c[C] = c[A];
        c[BE] = c[GA] = c[AL];
    } else if (hxl::Same(sys, "Tetragonal")) {
        c[B] = c[A];
        right();
    } else if (hxl::Same(sys, "Trigonal") || hxl::Same(sys, "Hexagonal")) {
        c[B] = c[A];
        c[AL] = c[BE] = 90;
        c[GA] = 120;
    } else if (hxl::Same(sys, "Orthorhombic")) {
        right();
    } else if (hxl::Same(sys, "Monoclinic")) {
        const int u = unique_axis(s.sg);
        for (int i = 0; i < 3; ++i)
            if (i != u) c[3 + i] = 90;
    }
}

void define() {
    if (WDialogDefined(kHklPanel)) return;
    std::vector<DIALOG_FIELD> f;
    f.push_back(Fld(kLow, FIELD_KIND::Label, "-40%"));
    for (int i = 0; i < 6; ++i) {
        DIALOG_FIELD sl = Fld(kSlider + i, FIELD_KIND::Slider, kNames[i]);
        sl.low = -kSteps;
        sl.high = kSteps;
        sl.value = "0";
        sl.notify = true;
        f.push_back(sl);
        DIALOG_FIELD ed = Fld(kEdit + i, FIELD_KIND::Real, " ");
        ed.notify = true;
        f.push_back(ed);
    }
    f.push_back(Fld(kHigh, FIELD_KIND::Label, "+40%"));
    DIALOG_FIELD fn = Fld(kFine, FIELD_KIND::CheckBox, "Fine");
    fn.notify = true;
    f.push_back(fn);
    f.push_back(Fld(kSystem, FIELD_KIND::Text, "Crystal system :"));
    f.push_back(Fld(kGroup, FIELD_KIND::Text, "Space group :"));
    // the figure of merit and the refinement come broken into lines by `Panel_Lines`
    auto line = [&](int id) { f.push_back(Fld(id, FIELD_KIND::Label, " ")); };
    f.push_back(Fld(kMeritTitle, FIELD_KIND::Label, "Figure of merit"));
    line(kMerit);
    f.push_back(Fld(kRefine, FIELD_KIND::PushButton, "Refine cell"));
    f.push_back(Fld(kZero, FIELD_KIND::CheckBox, "Refine zero"));
    line(kRefined);
    line(kSigma);
    f.push_back(Fld(kUse, FIELD_KIND::PushButton, "Use"));
    f.push_back(Fld(kCount, FIELD_KIND::Label, " "));
    for (auto [id, label] : {std::pair{kChange, "Change"}, {kStart, "Start HKL Gen"}, {kStop, "Stop HKL Gen"},
                             {kClose, "Close"}})
        f.push_back(Fld(id, FIELD_KIND::PushButton, label));
    WDialogDefine({kHklPanel, "HKL Gen", {}, f});
}

float reach() { return fine() ? kFineRange : kCoarse; }

// Lines of at most `width` characters, broken between the parts of a text (three blanks) and,
// within a longer part, at a blank. A label that wraps by itself is measured before its text
// grows and comes out clipped; one with its own line ends is not.
std::string Panel_Lines(const std::string& text, std::size_t width = 46) {
    std::vector<std::string> lines(1);
    auto add = [&](const std::string& piece, const char* gap) {
        std::string& last = lines.back();
        if (last.empty()) last = piece;
        else if (last.size() + std::strlen(gap) + piece.size() <= width) last += gap + piece;
        else lines.push_back(piece);
    };
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t end = std::min(text.find("   ", i), text.size());
        const std::string part = text.substr(i, end - i);
        if (!part.empty() && part.size() <= width) add(part, "   ");
        else if (!part.empty()) {
            bool first = true;
            for (std::size_t j = 0; j < part.size();) {
                const std::size_t e = std::min(part.find(' ', j), part.size());
                if (e > j) add(part.substr(j, e - j), first ? "   " : " ");
                first = false;
                j = e + 1;
            }
        }
        i = text.find_first_not_of(' ', end);
        if (i == std::string::npos) break;
    }
    std::string out;
    for (const std::string& l : lines) out += (out.empty() ? "" : "\n") + l;
    return out;
}

// Sliders, edits and read-outs from the state.
void show_state(const std::string& note) {
    const HKL_GEN_STATE& s = Hkl_Gen_State();
    WDialogSelect(kHklPanel);
    const std::array<bool, 6> free = free_parameters(s);
    for (int i = 0; i < 6; ++i) {
        const float r = s.base[i] != 0 ? s.cell[i] / s.base[i] - 1.0f : 0.0f;
        WDialogPutTrackbar(kSlider + i, static_cast<int>(std::lround(std::clamp(r / reach(), -1.0f, 1.0f) * kSteps)));
        WDialogPutReal(kEdit + i, s.cell[i], "(f10.5)");
        WDialogFieldState(kSlider + i, free[static_cast<std::size_t>(i)] ? 1 : 0);
        WDialogFieldState(kEdit + i, free[static_cast<std::size_t>(i)] ? 1 : 0);
    }
    WDialogPutString(kLow, fine() ? "-4%" : "-40%");
    WDialogPutString(kHigh, fine() ? "+4%" : "+40%");
    WDialogPutString(kSystem, s.crystal_system);
    WDialogPutString(kGroup, s.spgr);
    WDialogPutString(kMerit, Panel_Lines(Hkl_Gen_Merit()));
    WDialogPutString(kRefined, s.refined ? Panel_Lines(s.refined_text) : " ");
    WDialogPutString(kSigma, s.refined ? Panel_Lines(s.sigma_text) : " ");
    WDialogFieldState(kSystem, 0);
    WDialogFieldState(kGroup, 0);
    WDialogFieldState(kUse, s.refined ? 1 : 0);
    WDialogPutString(kCount, note.empty() ? "Reflections: " + std::to_string(s.list.size()) : note);
}

void rebase() {
    HKL_GEN_STATE& s = Hkl_Gen_State();
    std::copy(s.cell, s.cell + 6, s.base);
}

// A new trial cell: kept with its list when it gives one, else the old cell and list stay.
bool try_cell(const float c[6]) {
    HKL_GEN_STATE& s = Hkl_Gen_State();
    float old[6];
    std::copy(s.cell, s.cell + 6, old);
    std::copy(c, c + 6, s.cell);
    Constrain_Cell(s, s.cell);
    std::string text;
    if (!Hkl_Gen_Update(text)) {
        std::copy(old, old + 6, s.cell);
        show_state(text);
        Show_Message(text);
        return false;
    }
    show_state("");
    Plot_Again();
    return true;
}

void refine() {
    int zero = 0;
    WDialogGetCheckBox(kZero, zero);
    std::string text;
    if (!Hkl_Gen_Refine(zero != 0, text)) {
        Show_Message(text);
        return;
    }
    show_state("");
}

// The refined cell becomes the trial cell and the middle of the sliders.
void use_refined() {
    HKL_GEN_STATE& s = Hkl_Gen_State();
    if (!s.refined) return;
    if (try_cell(s.refined_cell)) {
        s.refined = false;
        rebase();
        show_state("");
    }
}

void close_panel() {
    Hkl_Gen_State().drawing = false;
    WDialogSelect(kHklPanel);
    WDialogUnload();
    Enter_Calculation_Mode(0);
    Enter_Single_Mode(0);
    Plot_Again();
}

void change_setup() {
    HKL_GEN_STATE& s = Hkl_Gen_State();
    const HKL_GEN_STATE keep = s;
    std::string text;
    if (!Hkl_Gen_Setup(text)) {
        if (text != "Cancelled") Show_Message(text);
        return;
    }
    Constrain_Cell(s, s.cell);
    if (!Hkl_Gen_Update(text)) {
        s = keep;  // a setup that gives no list leaves everything as it was
        Show_Message(text);
    } else {
        rebase();
    }
    show_state("");
    Plot_Again();
}

}  // namespace

void Tools_Hkl_Gen(int) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    if (g.nperfiles < 1 || WDialogOpen(kHklPanel)) return;
    HKL_GEN_STATE& s = Hkl_Gen_State();
    std::string text;
    if (!Hkl_Gen_Setup(text)) {
        if (text != "Cancelled") Show_Message(text);
        return;
    }
    Constrain_Cell(s, s.cell);
    rebase();
    Enter_Calculation_Mode(4);
    define();
    WDialogLoad(kHklPanel);
    s.drawing = true;
    std::string note;
    if (!Hkl_Gen_Update(note)) {
        // the panel opens all the same, so that the cell can be put right
        s.list.clear();
        Show_Message(note);
    }
    show_state(note);
    WDialogShow(-1, -1, 0, Modeless);
    Plot_Again();
}

void Hkl_Gen_Refresh_Merit() {
    if (!WDialogOpen(kHklPanel)) return;
    const std::string before = Hkl_Gen_State().merit;
    const std::string now = Hkl_Gen_Merit();
    if (now == before) return;
    const int keep = WDialogSelected();
    WDialogSelect(kHklPanel);
    WDialogPutString(kMerit, Panel_Lines(now));
    WDialogSelect(keep);
}

void Hkl_Gen_Panel_Event(int type, const WIN_MESSAGE& m) {
    HKL_GEN_STATE& s = Hkl_Gen_State();
    WDialogSelect(kHklPanel);
    if (type == CloseRequest) {
        close_panel();
        return;
    }
    if (type != PushButton) return;
    const int b = m.value1;
    if (b >= kSlider && b < kSlider + 6) {
        const int i = b - kSlider;
        int pos = 0;
        WDialogGetTrackbar(b, pos);
        float c[6];
        std::copy(s.cell, s.cell + 6, c);
        c[i] = s.base[i] * (1.0f + reach() * static_cast<float>(std::clamp(pos, -kSteps, kSteps)) / kSteps);
        try_cell(c);
    } else if (b >= kEdit && b < kEdit + 6) {
        const int i = b - kEdit;
        float v = NAN;
        WDialogGetReal(b, v);
        float c[6];
        std::copy(s.cell, s.cell + 6, c);
        c[i] = v;
        // a typed value becomes the middle of its slider
        if (try_cell(c)) {
            rebase();
            show_state("");
        }
    } else if (b == kFine) {
        rebase();
        show_state("");
    } else if (b == kRefine) {
        refine();
    } else if (b == kUse) {
        use_refined();
    } else if (b == kChange) {
        change_setup();
    } else if (b == kStart || b == kIdOk) {
        s.drawing = true;
        std::string text;
        if (!Hkl_Gen_Update(text)) Show_Message(text);
        show_state(text);
        Plot_Again();
    } else if (b == kStop) {
        s.drawing = false;
        Plot_Again();
    } else if (b == kClose || b == kIdCancel) {
        close_panel();
    }
}

}  // namespace zendrite
