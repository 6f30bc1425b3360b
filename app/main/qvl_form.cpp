// "Prepare a QVL file for Virelle": a structure and the pair-distribution
// settings, entered or imported, saved as the program's input and run.
#include <cmath>
#include <ctime>
#include <filesystem>

#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "crystal/structure.h"
#include "extprog/qvl_job.h"
#include "support/fixed_text.h"
#include "support/text_file.h"

namespace zendrite {

namespace {

constexpr int kQvlForm = 1985;
constexpr int kSpgr = 10, kCell = 11, kAtomsLabel = 12, kAtoms = 13, kRmin = 14, kRmax = 15, kRstep = 16, kQmax = 17,
              kQdamp = 18, kQbroad = 19, kNeutrons = 20, kXrays = 21, kDelta1 = 22, kDelta2 = 23, kOutput = 24,
              kTitle = 25, kImportCif = 30, kImportQvl = 31, kImportPcr = 32, kImportShelx = 33, kSave = 34,
              kRun = 35;

void define() {
    if (WDialogDefined(kQvlForm)) return;
    const DIALOG_FIELD neu = Radio(kNeutrons, "Neutrons", kNeutrons), xr = Radio(kXrays, "X-rays", kNeutrons);
    DIALOG_FIELD title = Fld(kTitle, FIELD_KIND::Label, "");
    title.wrap = true;
    WDialogDefine({kQvlForm, "Prepare a QVL file for Virelle", {},
                   {title, Fld(kSpgr, FIELD_KIND::Text, "Space Group:"), Fld(kCell, FIELD_KIND::Text, "Cell parameters"),
                    Fld(kAtomsLabel, FIELD_KIND::Label, "Atoms: Label  Type  X  Y  Z  Biso  Occ"),
                    Fld(kAtoms, FIELD_KIND::MultiText, ""), Fld(kRmin, FIELD_KIND::Real, "Rmin"),
                    Fld(kRmax, FIELD_KIND::Real, "Rmax"), Fld(kRstep, FIELD_KIND::Real, "step"),
                    Fld(kQmax, FIELD_KIND::Real, "Qmax"), Fld(kQdamp, FIELD_KIND::Real, "Qdamp"),
                    Fld(kQbroad, FIELD_KIND::Real, "Qbroad"), neu, xr,
                    Fld(kDelta1, FIELD_KIND::Real, "Delta1 (linear correlation sharpening)"),
                    Fld(kDelta2, FIELD_KIND::Real, "Delta2 (quadratic correlation sharpening)"),
                    Fld(kOutput, FIELD_KIND::Text, "Name of the output QVL file"),
                    Fld(kImportCif, FIELD_KIND::PushButton, "Import Cif"),
                    Fld(kImportQvl, FIELD_KIND::PushButton, "Import QVL"),
                    Fld(kImportPcr, FIELD_KIND::PushButton, "Import PCR"),
                    Fld(kImportShelx, FIELD_KIND::PushButton, "Import SHELX"),
                    Fld(kSave, FIELD_KIND::PushButton, "Save QVL"), Fld(kRun, FIELD_KIND::PushButton, "Run Virelle"),
                    Fld(kIdCancel, FIELD_KIND::PushButton, "Cancel")}});
}

// The form's values live here between two openings of the form.
hxl::PDF_JOB_TYPE& job_state() {
    static hxl::PDF_JOB_TYPE job;
    return job;
}
std::string& saved_file() {
    static std::string f;
    return f;
}

void put(const hxl::PDF_JOB_TYPE& j) {
    WDialogPutString(kTitle, j.title);
    WDialogPutString(kSpgr, j.spgr);
    WDialogPutString(kCell, j.cell);
    WDialogPutString(kAtoms, j.atoms);
    WDialogPutReal(kRmin, j.rmin, "(f10.4)");
    WDialogPutReal(kRmax, j.rmax, "(f10.4)");
    WDialogPutReal(kRstep, j.rstep, "(f10.4)");
    WDialogPutReal(kQmax, j.qmax, "(f10.4)");
    WDialogPutReal(kQdamp, j.qdamp, "(f10.4)");
    WDialogPutReal(kQbroad, j.qbroad, "(f10.4)");
    WDialogPutRadioButton(j.neutrons ? kNeutrons : kXrays);
    WDialogPutReal(kDelta1, j.delta1, "(f10.4)");
    WDialogPutReal(kDelta2, j.delta2, "(f10.4)");
    WDialogPutString(kOutput, j.output);
}

// The fields as they stand; false with the message on a number that is none.
bool get(hxl::PDF_JOB_TYPE& j, std::string& message) {
    WDialogGetString(kSpgr, j.spgr);
    WDialogGetString(kCell, j.cell);
    WDialogGetString(kAtoms, j.atoms);
    WDialogGetString(kOutput, j.output);
    const std::pair<int, float*> reals[] = {{kRmin, &j.rmin},   {kRmax, &j.rmax},     {kRstep, &j.rstep},
                                            {kQmax, &j.qmax},   {kQdamp, &j.qdamp},   {kQbroad, &j.qbroad},
                                            {kDelta1, &j.delta1}, {kDelta2, &j.delta2}};
    for (const auto& [id, v] : reals) {
        float x = -1e30f;
        WDialogGetReal(id, x);
        if (!std::isfinite(x) || x == -1e30f) {
            message = "A value of the form is not a number";
            return false;
        }
        *v = x;
    }
    int radio = 1;
    WDialogGetRadioButton(kNeutrons, radio);
    j.neutrons = radio == 1;
    if (!(j.rmin >= 0 && j.rmax > j.rmin && j.rstep > 0)) {
        message = "Rmin, step and Rmax must give a rising range";
        return false;
    }
    return true;
}

struct IMPORT {
    int button;
    const char* filter;
    const char* title;
};
const IMPORT kImports[] = {
    {kImportCif, "Select a CIF file (*.cif)|*.cif|", "Import a CIF file"},
    {kImportQvl, "Select a QVL file (*.qvl)|*.qvl|", "Import a QVL file"},
    {kImportPcr, "Select a PCR file (*.pcr)|*.pcr|", "Import a PCR file"},
    {kImportShelx, "Select a SHELX file (*.res,*.inp)|*.pcr|", "Import a SHELX file"},
};

void import(const IMPORT& im, hxl::PDF_JOB_TYPE& j) {
    std::string file;
    WSelectFile(im.filter, LoadDialog, file, im.title);
    if (WInfoDialog(4) != kIdOk || hxl::Is_Blank(file)) return;
    file = hxl::Trim(file);
    std::vector<hxl::STRUCTURE_TYPE> list;
    std::string message;
    bool ok = false;
    hxl::TEXT_FILE_TYPE t;
    if (im.button == kImportCif) {
        ok = hxl::Read_Cif_Structures(file, list, message);
    } else if (hxl::Read_Text_File(file, hxl::kTextFileLimit, t, message)) {
        hxl::STRUCTURE_TYPE st;
        if (im.button == kImportPcr) ok = hxl::Read_Pcr_Structures_Text(t.text, list, message);
        else if (im.button == kImportQvl) ok = hxl::Read_Qvl_Structure_Text(t.text, st, message);
        else ok = hxl::Read_Shelx_Structure_Text(t.text, st, message);
        if (ok && list.empty()) list.push_back(st);
    }
    if (!ok) {
        Show_Message(message);
        return;
    }
    hxl::Pdf_Job_From_Structure(list[0], j);
    if (im.button == kImportQvl) hxl::Read_Qvl_Job_Settings(t.text, j);
    j.title = "Title   QVL-file imported from file:" + file;
    put(j);
}

std::string today() {
    const std::time_t now = std::time(nullptr);
    char buf[64];
    std::strftime(buf, sizeof buf, " %d-%b-%Y %H:%M:%S", std::localtime(&now));
    return buf;
}

// True when the file was written.
bool save(hxl::PDF_JOB_TYPE& j) {
    std::string message, text;
    if (!get(j, message)) {
        Show_Message(message);
        return false;
    }
    if (hxl::Is_Blank(j.output)) {
        Show_Message("Give the name of the output QVL file");
        return false;
    }
    if (!hxl::Qvl_Job_Text(j, today(), text, message)) {
        Show_Message(message);
        return false;
    }
    std::string file = hxl::Trim(j.output);
    if (std::filesystem::path(file).extension().empty()) file += ".qvl";
    if (!hxl::Replace_File_Told(file, text, message)) {
        Show_Message(message);
        return false;
    }
    saved_file() = std::filesystem::absolute(file).string();
    Show_Message("QVL file written: " + saved_file());
    return true;
}

}  // namespace

void Ext_Prepare_Qvl(int) {
    define();
    hxl::PDF_JOB_TYPE& j = job_state();
    WDialogLoad(kQvlForm);
    put(j);
    std::string run_file;
    for (;;) {
        WDialogShow(-1, -1, 0, Modal);
        const int button = WInfoDialog(4);
        bool handled = false;
        for (const IMPORT& im : kImports)
            if (button == im.button) {
                std::string unused;
                get(j, unused);  // what was typed stays when an import is cancelled
                import(im, j);
                handled = true;
            }
        if (handled) continue;
        if (button == kSave) {
            save(j);
            continue;
        }
        if (button == kRun) {
            // The run takes the file just saved; the form is saved first when it changed.
            if (save(j)) {
                run_file = saved_file();
                break;
            }
            continue;
        }
        std::string unused;
        get(j, unused);
        break;
    }
    WDialogUnload();
    if (!run_file.empty()) Run_Virelle_On(run_file);
}

}  // namespace zendrite
