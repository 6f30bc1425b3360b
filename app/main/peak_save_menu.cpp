// Save peaks (five formats), Save background and Save for all indexing
// programs: the parameter dialogs, the file selector with its default name and
// the overwrite question, over the writers of the peaks layer.
#include <algorithm>
#include <string>
#include <vector>

#include "app/main/commands.h"
#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "patterns/pattern_writers.h"
#include "patterns/replace_file.h"
#include "peaks/peak_files.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr const char* kCancelled = "Cancelled";
constexpr int kDicvolDialog = 1962, kItoDialog = 1963, kTreorDialog = 1964, kOmbraDialog = 1965;

const hxl::DIFFRACTION_PATTERN_TYPE& profile() { return zendrite_param_global().pattern[1]; }

std::vector<hxl::PEAK_POINT_TYPE> peak_list() {
    const PEAK_LIST_TYPE& l = zendrite_param_global().Peak_List;
    std::vector<hxl::PEAK_POINT_TYPE> v;
    for (int i = 1; i <= std::clamp(l.count, 0, kMaxPeaks + 1); ++i) {
        const PEAK_RECORD& p = l.p[static_cast<std::size_t>(i)];
        v.push_back({p.x, p.y, p.bgr});
    }
    return v;
}

// The profile's file name without its extension.
std::string base_name(const hxl::DIFFRACTION_PATTERN_TYPE& p) {
    std::string n = hxl::Trim(p.filename);
    const std::size_t dot = n.rfind('.');
    if (dot != std::string::npos && dot > 0) n.erase(dot);
    return n.empty() ? "peaks" : n;
}

// The file chosen for writing; blank when the user gave up or kept an existing file.
std::string ask_file(const std::string& filter, const std::string& title, const std::string& default_name,
                     const std::string& extension) {
    std::string name = hxl::Join_Folder(hxl::Trim(profile().filepath), default_name);
    WSelectFile(filter, SaveDialog, name, title);
    if (WInfoDialog(4) != kIdOk || hxl::Is_Blank(name)) return "";
    name = hxl::Trim(name);
    if (!extension.empty()) name = hxl::Export_File_Name(name, extension);
    if (IOsExists(name)) {
        WMessageBox(YesNo, QuestionIcon, 1, "The file exist,\rDo you want overwrite it?", "Over Write this file?");
        if (WInfoDialog(4) != kIdOk) return "";
    }
    return name;
}

DIALOG_FIELD real(int id, const char* label) { return Fld(id, FIELD_KIND::Real, label); }
DIALOG_FIELD radio(int id, int group, const char* label) {
    DIALOG_FIELD r = Fld(id, FIELD_KIND::Radio, label);
    r.group = group;
    return r;
}

// Field numbers of the dialogs: 1 title, 10.. radio buttons, 20.. check boxes, 30.. values.
constexpr int kTitle = 1, kLines = 2, kRadio = 10, kCheck = 20, kValue = 30;

bool show_dialog() {
    WDialogShow(-1, -1, 0, Modal);
    return WInfoDialog(4) == kIdOk;
}

int chosen_radio() {
    int k = 0;
    WDialogGetRadioButton(kRadio, k);
    return k;
}

bool check(int field) {
    int v = 0;
    WDialogGetCheckBox(field, v);
    return v != 0;
}

bool ask_dicvol(hxl::DICVOL_INPUT_TYPE& d) {
    if (!WDialogDefined(kDicvolDialog)) {
        std::vector<DIALOG_FIELD> f = {Fld(kTitle, FIELD_KIND::Text, "Title"),
                                       Fld(kLines, FIELD_KIND::Integer, "# of lines used")};
        const char* spacing[] = {"Theta Bragg", "2-theta angle", "d-spacing", "Q specified"};
        for (int k = 0; k < 4; ++k) f.push_back(radio(kRadio + k, kRadio, spacing[k]));
        const char* systems[] = {"Cubic", "Tetragonal", "Hexagonal", "Orthorhombic", "Monoclinic", "Triclinic"};
        for (int k = 0; k < 6; ++k) f.push_back(Fld(kCheck + k, FIELD_KIND::CheckBox, systems[k]));
        const char* values[] = {": Amax (A)",         ": Bmax (A)",        ": Cmax (A)",
                                ": BEmin (o)",        ": BEmax (o)",       ": VOLmin (A3)",
                                ": VOLmax (A3)",      ": Wavelength (A)",  ": Mol. weight (g)",
                                ": Density (g/cm3)",  ": Density error",   ": Data absolute error (EPS)",
                                ": Lower figure of merit (FOM)"};
        for (int k = 0; k < 13; ++k) f.push_back(real(kValue + k, values[k]));
        f.push_back(Fld(kValue + 13, FIELD_KIND::Integer, ": # Max. impurity lines (eg. 3 or -3)"));
        f.push_back(Fld(kCheck + 6, FIELD_KIND::CheckBox, "A priori search of zero shift"));
        f.push_back(Fld(kCheck + 7, FIELD_KIND::CheckBox, "Zero shift refinement"));
        f.push_back(Fld(kCheck + 8, FIELD_KIND::CheckBox, "DicVOL06 option"));
        WDialogDefine({kDicvolDialog, "Input parameters for DICVOL", {}, f});
    }
    float* values[] = {&d.amax, &d.bmax, &d.cmax, &d.bemin, &d.bemax, &d.volmin,  &d.volmax,
                       &d.wave, &d.molw, &d.dens, &d.delden, &d.eps,  &d.fom};
    bool* flags[] = {&d.systems[0], &d.systems[1], &d.systems[2], &d.systems[3],   &d.systems[4],
                     &d.systems[5], &d.zero_search, &d.zero_refine, &d.dicvol06};
    WDialogLoad(kDicvolDialog);
    WDialogPutString(kTitle, d.title);
    WDialogPutInteger(kLines, d.n);
    if (d.itype >= 1 && d.itype <= 4) WDialogPutRadioButton(kRadio + d.itype - 1);
    for (int k = 0; k < 9; ++k) WDialogPutCheckBox(kCheck + k, *flags[k] ? 1 : 0);
    for (int k = 0; k < 13; ++k) WDialogPutReal(kValue + k, *values[k]);
    WDialogPutInteger(kValue + 13, d.n_imp);
    const bool ok = show_dialog();
    if (ok) {
        WDialogGetString(kTitle, d.title);
        WDialogGetInteger(kLines, d.n);
        const int k = chosen_radio();
        if (k >= 1 && k <= 4) d.itype = k;
        for (int i = 0; i < 9; ++i) *flags[i] = check(kCheck + i);
        for (int i = 0; i < 13; ++i) WDialogGetReal(kValue + i, *values[i]);
        WDialogGetInteger(kValue + 13, d.n_imp);
    }
    WDialogUnload();
    return ok;
}

bool ask_ito(hxl::ITO_INPUT_TYPE& d) {
    if (!WDialogDefined(kItoDialog))
        WDialogDefine({kItoDialog,
                       "Input parameters for ITO",
                       {},
                       {Fld(kTitle, FIELD_KIND::Text, "Title"), real(kValue, "Wavelength (A):"),
                        real(kValue + 1, "zero shift:")}});
    WDialogLoad(kItoDialog);
    WDialogPutString(kTitle, d.title);
    WDialogPutReal(kValue, d.wave);
    WDialogPutReal(kValue + 1, d.zero);
    const bool ok = show_dialog();
    if (ok) {
        WDialogGetString(kTitle, d.title);
        WDialogGetReal(kValue, d.wave);
        WDialogGetReal(kValue + 1, d.zero);
    }
    WDialogUnload();
    return ok;
}

bool ask_treor(hxl::TREOR_INPUT_TYPE& d) {
    if (!WDialogDefined(kTreorDialog)) {
        std::vector<DIALOG_FIELD> f = {Fld(kTitle, FIELD_KIND::Text, "Title")};
        const char* spacing[] = {"Theta Bragg (º)", "2Theta angle (º)", "d- spacing (A)"};
        for (int k = 0; k < 3; ++k) f.push_back(radio(kRadio + k, kRadio, spacing[k]));
        const char* values[] = {"Cell edge max (A):", "Vol_max (A**3):", "Beta_max (º):",
                                "Wavelength (A):",    "Zero shift:",     "F.O.M.:"};
        for (int k = 0; k < 6; ++k) f.push_back(real(kValue + k, values[k]));
        WDialogDefine({kTreorDialog, "Input paramaters for TREOR", {}, f});
    }
    float* values[] = {&d.cem, &d.vol, &d.beta, &d.wave, &d.zero, &d.merit};
    WDialogLoad(kTreorDialog);
    WDialogPutString(kTitle, d.title);
    WDialogPutRadioButton(kRadio + std::clamp(d.choice, 1, 3) - 1);
    for (int k = 0; k < 6; ++k) WDialogPutReal(kValue + k, *values[k]);
    const bool ok = show_dialog();
    if (ok) {
        WDialogGetString(kTitle, d.title);
        const int k = chosen_radio();
        if (k >= 1 && k <= 3) d.choice = k;
        for (int i = 0; i < 6; ++i) WDialogGetReal(kValue + i, *values[i]);
    }
    WDialogUnload();
    return ok;
}

bool ask_ombra(hxl::OMBRA_INPUT_TYPE& d) {
    std::string* texts[] = {&d.title, &d.lattice, &d.cell, &d.tolerance, &d.krange, &d.kdiv, &d.wave};
    if (!WDialogDefined(kOmbraDialog)) {
        const char* labels[] = {"Title",   "Lattice", "Cell", "Tolerance", "K range", "K divisions",
                                "Wavelength (CW) / Dtt1(TOF)"};
        std::vector<DIALOG_FIELD> f;
        for (int k = 0; k < 7; ++k) f.push_back(Fld(kValue + k, FIELD_KIND::Text, labels[k]));
        const char* outputs[] = {"Short Output", "Long Output", "No output of intermediate calculations"};
        for (int k = 0; k < 3; ++k) f.push_back(radio(kRadio + k, kRadio, outputs[k]));
        f.push_back(Fld(kCheck, FIELD_KIND::CheckBox, "Search only special k-vectors"));
        WDialogDefine({kOmbraDialog, "Input parameters for Ombra", {}, f});
    }
    WDialogLoad(kOmbraDialog);
    for (int k = 0; k < 7; ++k) WDialogPutString(kValue + k, *texts[k]);
    WDialogPutRadioButton(kRadio + std::clamp(d.output, 1, 3) - 1);
    WDialogPutCheckBox(kCheck, d.commensurate ? 1 : 0);
    const bool ok = show_dialog();
    if (ok) {
        for (int k = 0; k < 7; ++k) WDialogGetString(kValue + k, *texts[k]);
        const int k = chosen_radio();
        if (k >= 1 && k <= 3) d.output = k;
        d.commensurate = check(kCheck);
    }
    WDialogUnload();
    return ok;
}

// The text of one format after its dialog; false when the user cancelled.
bool format_text(const std::string& word, const std::vector<hxl::PEAK_POINT_TYPE>& list, std::string& text) {
    const hxl::DIFFRACTION_PATTERN_TYPE& p = profile();
    const int type = Peak_Search_Type();
    if (word == "FreeFormat") {
        text = hxl::Free_Peaks_Text(p.filename, p.instr, list);
    } else if (word == "DicvolFormat") {
        hxl::DICVOL_INPUT_TYPE d = hxl::Dicvol_Defaults(p, type, static_cast<int>(list.size()));
        if (!ask_dicvol(d)) return false;
        d.title = hxl::Cut(d.title, 30);
        text = hxl::Dicvol_Text(d, p.filename, p.instr, hxl::Peak_Type_Wavelengths(type, p.lambda1),
                                hxl::Date_Stamp_Now(), list);
    } else if (word == "ItoFormat") {
        hxl::ITO_INPUT_TYPE d = hxl::Ito_Defaults(p, type);
        if (!ask_ito(d)) return false;
        text = hxl::Ito_Text(d, list);
    } else if (word == "TreorFormat") {
        hxl::TREOR_INPUT_TYPE d = hxl::Treor_Defaults(p, type);
        if (!ask_treor(d)) return false;
        text = hxl::Treor_Text(d, p.filename, p.instr, hxl::Treor_Wavelengths(type, p.lambda1), list);
    } else {
        hxl::OMBRA_INPUT_TYPE d = hxl::Ombra_Defaults(p);
        if (!ask_ombra(d)) return false;
        text = hxl::Ombra_Text(d, hxl::Join_Folder(p.filepath, p.filename), p.scat_var, hxl::Date_Stamp_Now(),
                               list);
    }
    return true;
}

}  // namespace

bool Save_Peaks(const std::string& format, std::string& status, std::string& file) {
    status.clear();
    file.clear();
    hxl::PEAK_FORMAT_TYPE f{};
    if (!hxl::Peak_Format_Of(format, f)) {
        status = "File format unknow!";
        return false;
    }
    const std::vector<hxl::PEAK_POINT_TYPE> list = peak_list();
    if (list.empty() || zendrite_param_global().nperfiles < 1) {
        status = "No peaks has been selected";
        return false;
    }
    const std::string word = f.word;
    std::string text;
    if (!format_text(word, list, text)) {
        status = kCancelled;
        return false;
    }
    const bool free = word == "FreeFormat", ombra = word == "ombraFormat";
    const std::string name = free ? "peak.aps" : ombra ? "ombra.sat" : base_name(profile()) + f.extension;
    file = ask_file(f.filter, f.title, name, free ? "" : f.extension);
    if (file.empty()) {
        status = kCancelled;
        return false;
    }
    if (!hxl::Replace_File(file, text)) {
        status = f.failure;
        file.clear();
        return false;
    }
    status = file;
    return true;
}

bool Save_Background(std::string& status) {
    status.clear();
    const ZENDRITE_STORE& g = zendrite_param_global();
    const int n = std::clamp(g.Bgr_List.count, 0, kMaxBgrPoints);
    if (n == 0 || g.nperfiles < 1) {
        status = "No background points has been selected";
        return false;
    }
    const std::string file = ask_file("Background points data file (*.bgr)|*.bgr|",
                                      "Save Background Points Data File", "background.bgr", ".bgr");
    if (file.empty()) {
        status = kCancelled;
        return false;
    }
    std::vector<float> x, y;
    for (int i = 1; i <= n; ++i) {
        x.push_back(g.Bgr_List.p[static_cast<std::size_t>(i)].x);
        y.push_back(g.Bgr_List.p[static_cast<std::size_t>(i)].y);
    }
    const hxl::DIFFRACTION_PATTERN_TYPE& p = profile();
    if (!hxl::Write_Background(file, p.filename, p.instr, x.data(), y.data(), n, status)) return false;
    status = file;
    return true;
}

// The four indexing inputs with the dialogs' defaults, in one chosen folder.
bool Save_All_Indexing(std::string& status) {
    status.clear();
    const std::vector<hxl::PEAK_POINT_TYPE> list = peak_list();
    if (list.empty() || zendrite_param_global().nperfiles < 1) {
        status = "No peaks has been selected";
        return false;
    }
    const hxl::DIFFRACTION_PATTERN_TYPE& p = profile();
    std::string folder = hxl::Trim(p.filepath);
    WSelectDir(0, folder, "Folder of the indexing inputs");
    if (WInfoDialog(4) != kIdOk || hxl::Is_Blank(folder)) {
        status = kCancelled;
        return false;
    }
    const char* words[] = {"DicvolFormat", "ItoFormat", "TreorFormat", "ombraFormat"};
    std::vector<std::string> files, texts;
    bool exists = false;
    for (const char* w : words) {
        hxl::PEAK_FORMAT_TYPE f{};
        hxl::Peak_Format_Of(w, f);
        std::string text;
        hxl::Default_Peak_File_Text(w, p, Peak_Search_Type(), list, hxl::Date_Stamp_Now(), text);
        files.push_back(hxl::Join_Folder(hxl::Trim(folder), base_name(p) + f.extension));
        texts.push_back(text);
        exists = exists || IOsExists(files.back());
    }
    if (exists) {
        WMessageBox(YesNo, QuestionIcon, 1, "The file exist,\rDo you want overwrite it?", "Over Write this file?");
        if (WInfoDialog(4) != kIdOk) {
            status = kCancelled;
            return false;
        }
    }
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (!hxl::Replace_File(files[i], texts[i])) {
            hxl::PEAK_FORMAT_TYPE f{};
            hxl::Peak_Format_Of(words[i], f);
            status = std::string(f.failure) + "\r" + files[i];
            return false;
        }
    }
    status = "Written in " + hxl::Trim(folder) + ":";
    for (const std::string& f : files) status += "\r" + f.substr(f.find_last_of('/') + 1);
    return true;
}

void Peak_Save(int item) {
    std::string status, file;
    bool ok = false;
    switch (item) {
    case 40010: ok = Save_Peaks("FreeFormat", status, file); break;
    case 40098: ok = Save_Peaks("DicvolFormat", status, file); break;
    case 40160: ok = Save_Peaks("ItoFormat", status, file); break;
    case 40177: ok = Save_Peaks("ombraFormat", status, file); break;
    case 40191: ok = Save_Peaks("TreorFormat", status, file); break;
    case 40002: ok = Save_Background(status); break;
    case kSaveAllIndexingItem:
        ok = Save_All_Indexing(status);
        if (ok) Show_Message(status);
        return;
    default: return;
    }
    Show_Command_Result(!ok, status);
    if (ok) After_Peak_Save(item, file);
}

}  // namespace zendrite
