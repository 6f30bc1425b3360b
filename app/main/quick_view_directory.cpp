// Item 40127 of the Quick View: the directory to browse and the list of its readable profile files.
#include "app/main/progress_dialog.h"
#include "app/main/quick_view.h"
#include "app/main/zendrite_app.h"
#include "prf/read_prf.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kProgressField = 10;

}  // namespace

void Quick_View_Choose_Directory() {
    QUICK_VIEW_TYPE& qv = Quick_View();
    std::string dir = hxl::Trim(qv.qv_dir);
    WSelectDir(0, dir, "Select Directory to Search");
    if (WInfoDialog(4) != kIdOk) return;
    dir = hxl::Trim(dir);

    const std::vector<std::string> names = Quick_View_Candidates(dir);
    const int total = static_cast<int>(names.size());
    if (total == 0) {
        Show_Message("No PRF/XRF file in the selected directory ");
        return;
    }
    if (total > kQvMaxFiles) {
        Show_Message("Too many PRF/XRF (> 400) files in the selected directory ");
        return;
    }

    // Each file is read whole; only those that read enter the list.
    std::vector<std::string> files, temps;
    std::string unknown;
    const int id = Progress_Dialog("Analizing directory for PRF files", 0, kProgressField);
    WDialogLoad(id);
    WDialogRangeProgressBar(kProgressField, 0, total);
    WDialogPutProgressBar(kProgressField, 0);
    WDialogShow(-1, -1, 0, Modeless);
    std::string sep = dir;
    if (!sep.empty() && sep.back() != '/' && sep.back() != '\\') sep += '/';
    for (int k = 1; k <= total; ++k) {
        const std::string& name = names[static_cast<std::size_t>(k - 1)];
        hxl::DIFFRACTION_PATTERN_TYPE pattern;
        hxl::PRF_INFO_ADD_TYPE info;
        bool error = true;
        std::string why;
        hxl::Read_Prf_File(sep + name, info, pattern, error, why);
        if (error) {
            unknown += (unknown.empty() ? "Unkown format files:" : "") + std::string("\r") + name;
        } else {
            files.push_back(hxl::Cut(name, 200));
            temps.push_back(Quick_View_Label(pattern.tsamp));
        }
        WDialogSelect(id);
        WDialogPutProgressBar(kProgressField, k);
        (void)WMessagePending();  // lets the bar move
    }
    WDialogSelect(id);
    WDialogUnload();

    if (!unknown.empty()) WMessageBox(OkOnly, ExclamationIcon, 1, unknown, "Attention");
    if (files.empty()) {
        Show_Message("No valid PRF file in the selected directory");
        return;
    }
    qv.qv_dir = hxl::Cut(dir, 250);
    qv.qv_count = static_cast<int>(files.size());
    for (int k = 1; k <= qv.qv_count; ++k) {
        qv.qv_files(k) = files[static_cast<std::size_t>(k - 1)];
        qv.qv_temps(k) = temps[static_cast<std::size_t>(k - 1)];
    }
    for (int k = qv.qv_count + 1; k <= kQvMaxFiles; ++k) qv.qv_files(k).clear(), qv.qv_temps(k).clear();
    qv.qv_current = 1;
    std::string message;
    if (!Quick_View_Read(1, message)) {  // changed since it was listed
        Show_Message(message);
        Quick_View_Show_Position();
        return;
    }
    Quick_View_Full_Range();
    Plot_Quick_View(qv.qv_xmin, qv.qv_xmax, qv.qv_ymin, qv.qv_ymax);
    Quick_View_Show_Position();
}

}  // namespace zendrite
