// File, "Open folder of patterns...", the command line's folder and dropped files:
// every pattern file of a folder, read off the main thread with a progress dialog.
#include <algorithm>
#include <chrono>
#include <filesystem>

#include "app/main/progress_dialog.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/load_folder.h"
#include "app/store/zendrite_param_global.h"
#include "patterns/format_table.h"
#include "support/fixed_text.h"
#include "support/folder_files.h"

namespace zendrite {

namespace {

constexpr int kCountField = 10, kBarField = 11;

}  // namespace

void Open_Folder_Command(const std::string& name) {
    std::string dir = hxl::Trim(name);
    if (dir.empty()) {
        IOsDirName(dir);
        WSelectDir(0, dir, "Select the folder of patterns to open");
        if (WInfoDialog(4) != kIdOk) return;
        dir = hxl::Trim(dir);
    }
    if (!hxl::Is_Folder(dir)) {
        Show_Message("The folder " + dir + " doesn't exist");
        return;
    }
    const int id = Progress_Dialog("Loading the patterns of a folder", kCountField, kBarField);
    WDialogLoad(id);
    WDialogFieldState(kIdOk, 0);
    WDialogPutString(kCountField, "Reading the folder " + dir);
    WDialogShow(-1, -1, 0, Modeless);
    std::vector<WIN_MESSAGE> later;
    (void)Progress_Cancel_Pressed(id, later);  // paints the dialog before the first file
    using clock = std::chrono::steady_clock;
    auto shown = clock::now() - std::chrono::seconds(1);
    const FOLDER_LOAD_RESULT r = Load_Folder(dir, [&](int done, int total, const std::string& file) {
        WDialogSelect(id);
        // The text at most 20 times a second: a fast folder is not slowed by its own display.
        if (done == total || clock::now() - shown > std::chrono::milliseconds(50)) {
            shown = clock::now();
            WDialogPutString(kCountField, std::to_string(done) + " of " + std::to_string(total) + "   " + file);
        }
        WDialogRangeProgressBar(kBarField, 0, std::max(total, 1));
        WDialogPutProgressBar(kBarField, done);
        return !Progress_Cancel_Pressed(id, later);
    });
    Progress_Close(id, later);
    if (!r.error.empty()) {
        Show_Message(r.error);
        return;
    }
    if (r.files == 0 && r.failures.empty()) Show_Message("No pattern file in the folder " + dir);
    if (r.limit_reached) Show_Message(kMsgMaxProfiles);
    Show_Message(Folder_Failure_Message(r));
    Show_Recent_Files();
}

void Open_Dropped(const std::vector<std::string>& paths) {
    for (const std::string& p : paths) {
        if (hxl::Is_Folder(p)) {
            Open_Folder_Command(p);
            continue;
        }
        const std::string ext = hxl::Upper_Extension(std::filesystem::path(p).filename().string());
        if (ext == ".PRF" || ext == ".XRF") {
            Open_Prf_Command(p);
        } else if (ext == ".BUF") {
            Open_Buffer_Command(p);
        } else {
            bool error = false;
            std::string message;
            Open_Data_File(p, error, message);
            if (error) Show_Message(message);
        }
    }
}

}  // namespace zendrite
