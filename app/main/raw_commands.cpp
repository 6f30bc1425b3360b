// File menu: a raw detector file opened as one profile per detector block.
#include <filesystem>

#include "app/main/commands.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/add_profile.h"
#include "app/store/zendrite_param_global.h"
#include "patterns/read_pattern_raw.h"
#include "support/fixed_text.h"

namespace zendrite {

void Open_Raw_Command(bool& error, std::string& message) {
    error = false;
    message.clear();
    std::string list;
    WSelectFile("Input RawData File (*.KG3,*.KG2,*.KG3o)|*.KG3;*.KG2|", LoadDialog | MultiFile, list,
                "Select RawData file to open");
    const std::vector<std::string> files = WInfoDialog(4) == kIdOk ? Selected_Files(list) : std::vector<std::string>{};
    if (files.empty()) {
        error = true;
        message = "Cancelled";
        return;
    }
    if (!hxl::Check_Raw_Selection(files, message)) {
        error = true;
        return;
    }
    hxl::RAW_DATA_TYPE raw;
    if (!hxl::Read_Pattern_Raw(files.front(), raw, message)) {
        error = true;
        return;
    }
    ZENDRITE_STORE& g = zendrite_param_global();
    const std::filesystem::path path(files.front());
    std::string dir = path.parent_path().string();
    if (!dir.empty()) dir += '/';
    std::vector<std::string> messages;
    for (int d = 1; d <= static_cast<int>(raw.detectors.size()); ++d) {
        if (g.nperfiles + 1 > kMaxProfiles) {
            messages.push_back(kMsgMaxProfiles);
            break;
        }
        const hxl::RAW_DETECTOR_TYPE& block = raw.detectors[static_cast<std::size_t>(d - 1)];
        if (block.counts.empty()) {  // a "Detector No." line followed by nothing
            messages.push_back("ERROR Opening file: " + files.front() + " Detector No. " +
                               std::to_string(block.number) + " has no data");
            continue;
        }
        DIFFRACTION_PATTERN_TYPE p;
        std::string why;
        if (!hxl::Raw_Detector_Pattern(raw, d, p, why)) {
            messages.push_back(why);
            continue;
        }
        p.filename = path.filename().string();
        p.filepath = dir;
        const int slot = ++g.nperfiles;
        g.pattern[static_cast<std::size_t>(slot)] = std::move(p);
        LOAD_RESULT r;
        if (Enter_Read_Profile(slot, 1, r)) {
            g.info[static_cast<std::size_t>(slot)].prf_format = "RAW";
            g.show_profile[static_cast<std::size_t>(slot)] = true;
        } else {
            --g.nperfiles;
        }
        messages.insert(messages.end(), r.messages.begin(), r.messages.end());
    }
    for (const std::string& m : messages) Show_Message(m);
    Show_Recent_Files();
}

}  // namespace zendrite
