// Ext. Applications, "Sequential Corvane run...": the form "Sequential mode of Corvane:",
// its script, and the run of the refinement program over the series.
#include <filesystem>

#include "app/main/configuration.h"
#include "app/main/launch.h"
#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "extprog/os_commands.h"
#include "extprog/sequential_run.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kSeqDialog = 1991, kPcr = 10, kSelectPcr = 11, kCode = 12, kFirst = 13, kLast = 14, kPrf = 15, kHkl = 16,
              kMic = 17, kDis = 18, kCalc = 19, kOut = 20, kTemp = 21, kSelectTemp = 22, kScript = 23;

// The form as last used, offered again.
hxl::SEQUENTIAL_FORM_TYPE& form() {
    static hxl::SEQUENTIAL_FORM_TYPE f;
    return f;
}

void define() {
    if (WDialogDefined(kSeqDialog)) return;
    WDialogDefine({kSeqDialog, "Sequential mode of Corvane:", {},
                   {Fld(kPcr, FIELD_KIND::Text, "Enter PCR filename :"), Fld(kSelectPcr, FIELD_KIND::PushButton, "Select PCR file"),
                    Fld(kCode, FIELD_KIND::Text, "Data file code [.ext] :"),
                    Fld(kFirst, FIELD_KIND::Integer, "Enter first number :"),
                    Fld(kLast, FIELD_KIND::Integer, "Enter last number :"),
                    Fld(kPrf, FIELD_KIND::CheckBox, "Save PRF files"), Fld(kHkl, FIELD_KIND::CheckBox, "Save HKL files"),
                    Fld(kMic, FIELD_KIND::CheckBox, "Save MIC/SIZ/STR files"), Fld(kDis, FIELD_KIND::CheckBox, "Save DIS files"),
                    Fld(kCalc, FIELD_KIND::CheckBox, "Generate CALC files"), Fld(kOut, FIELD_KIND::CheckBox, "Save OUT files"),
                    Fld(kTemp, FIELD_KIND::Text, "File with temperatures (if needed)"),
                    Fld(kSelectTemp, FIELD_KIND::PushButton, "Select Temperature file"),
                    Fld(kScript, FIELD_KIND::CheckBox, "Generate Script for FP-Seq"),
                    Fld(kIdOk, FIELD_KIND::PushButton, "OK"), Fld(kIdCancel, FIELD_KIND::PushButton, "Cancel")}});
}

void put(const hxl::SEQUENTIAL_FORM_TYPE& f) {
    WDialogPutString(kPcr, f.pcr);
    WDialogPutString(kCode, f.code);
    WDialogPutInteger(kFirst, f.first);
    WDialogPutInteger(kLast, f.last);
    const std::pair<int, bool> checks[] = {{kPrf, f.prf}, {kHkl, f.hkl}, {kMic, f.mic}, {kDis, f.dis},
                                           {kCalc, f.calc}, {kOut, f.out}, {kScript, f.script}};
    for (const auto& [field, on] : checks) WDialogPutCheckBox(field, on ? 1 : 0);
    WDialogPutString(kTemp, f.temperatures);
}

void get(hxl::SEQUENTIAL_FORM_TYPE& f) {
    WDialogGetString(kPcr, f.pcr);
    WDialogGetString(kCode, f.code);
    WDialogGetInteger(kFirst, f.first);
    WDialogGetInteger(kLast, f.last);
    const std::pair<int, bool*> checks[] = {{kPrf, &f.prf}, {kHkl, &f.hkl}, {kMic, &f.mic}, {kDis, &f.dis},
                                            {kCalc, &f.calc}, {kOut, &f.out}, {kScript, &f.script}};
    for (const auto& [field, on] : checks) {
        int v = *on ? 1 : 0;
        WDialogGetCheckBox(field, v);
        *on = v != 0;
    }
    WDialogGetString(kTemp, f.temperatures);
}

// A file chosen into a field of the form.
void select_into(int field, const char* filter, const char* title) {
    std::string name;
    WSelectFile(filter, LoadDialog, name, title);
    if (WInfoDialog(4) == kIdOk && !hxl::Is_Blank(name)) WDialogPutString(field, hxl::Trim(name));
}

}  // namespace

void Ext_Sequential_Run(int) {
    define();
    WDialogLoad(kSeqDialog);
    put(form());
    bool ok = false;
    for (;;) {
        WDialogShow(-1, -1, 0, Modal);
        const int button = WInfoDialog(4);
        if (button == kSelectPcr) {
            select_into(kPcr, "Input PCR File (*.pcr)|*.pcr|", "Select PCR file");
            continue;
        }
        if (button == kSelectTemp) {
            select_into(kTemp, "Input temp File |*.*|", "Select Temperature file");
            continue;
        }
        ok = button == kIdOk;
        break;
    }
    hxl::SEQUENTIAL_FORM_TYPE f = form();
    if (ok) get(f);
    WDialogUnload();
    if (!ok) {
        WindowOutStatusBar(1, "Cancelled");
        return;
    }
    form() = f;
    const std::string args = hxl::Sequential_Arguments(f);
    const std::string& tag = Configuration().os_tag;
    if (f.script) {
        std::string message;
        if (!hxl::Append_Sequential_Script(hxl::Sequential_Script_Name(f.pcr, tag), args, tag, message)) {
            Show_Message(message);
            return;
        }
    }
    std::vector<std::string> argv = {hxl::Sibling_Program(hxl::SIBLING::Corvane, tag)};
    for (const std::string& w : hxl::Sequential_Words(args)) argv.push_back(w);
    const std::filesystem::path folder = std::filesystem::path(hxl::Trim(f.pcr)).parent_path();
    int status = 0;
    if (Run_And_Wait(argv, folder.string(), status) == RUN_END::Ended)
        WindowOutStatusBar(1, "Sequential run ended, status " + std::to_string(status));
}

}  // namespace zendrite
