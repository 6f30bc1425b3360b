// Rietveld profile files and buffer files from the File menu, the command line and the recent list.
#include "app/main/configuration.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/buffer_files.h"
#include "app/store/open_prf.h"
#include "app/store/zendrite_param_global.h"
#include "support/fixed_text.h"

namespace zendrite {

void Open_Prf_Command(const std::string& name) {
    std::string file = hxl::Trim(name);
    if (file.empty()) {
        WSelectFile("Input PRF File (*.prf)|*.prf;*.xrf|", LoadDialog, file, "Select PRF files to open");
        if (WInfoDialog(4) != kIdOk) return;
    }
    const PRF_OPEN_RESULT r = Open_Prf_File(file);
    if (!r.ok) {
        Show_Message(r.message);
        return;
    }
    Configuration().prf_path = r.prf_path;
    Configuration().prf_stamp = r.prf_stamp;
    Show_Recent_Files();
}

void Open_Buffer_Command(const std::string& name) {
    std::string file = hxl::Trim(name);
    if (file.empty()) {
        WSelectFile("Buffer Data File (*.buf)|*.buf|", LoadDialog, file, "Load Buffer Data File");
        if (WInfoDialog(4) != kIdOk) return;
    }
    if (!IOsExists(file)) {
        WMessageBox(OkOnly, ExclamationIcon, 1, "File doesn't exist...", "File doesn't exist");
        return;
    }
    const int row = Format_Dialog_Row();
    if (row == 0) return;
    const BUFFER_LOAD_RESULT r = Open_Buffer(file, row);
    for (const std::string& m : r.messages) Show_Message(m);
    if (r.opened) {
        // The store was emptied for the buffer's files: the plot starts afresh.
        ZENDRITE_STORE& g = zendrite_param_global();
        if (g.graph_mode == "calculation" || g.graph_mode.starts_with("graph")) g.graph_mode = "single";
    }
    Show_Recent_Files();
}

bool Check_Prf_Reload() {
    CONFIGURATION_TYPE& c = Configuration();
    if (!zendrite_param_global().prf_loaded || c.prf_path.empty()) return false;
    const PRF_RELOAD_RESULT r = Reload_Prf_If_Changed(c.prf_path, c.prf_stamp);
    if (r.status == PRF_RELOAD_STATUS::Failed) Show_Message(r.message);
    return r.status == PRF_RELOAD_STATUS::Reloaded;
}

}  // namespace zendrite
