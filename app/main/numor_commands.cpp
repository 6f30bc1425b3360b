// File menu: numors of the powder instruments opened as profiles, and the head of one numor.
#include <filesystem>
#include <system_error>

#include "app/main/commands.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/add_profile.h"
#include "app/store/zendrite_param_global.h"
#include "instrument/locate_numor.h"
#include "instrument/open_numors.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr const char* kCancelled = "Cancelled";
constexpr int kInstrumentCombo = 101;
const std::vector<std::string> kInstruments = {"KV7", "KV8", "KV9", "KW1", "KW2"};

// Where the selectors start: the data root, kept with its separator from the first use on.
const std::string& data_dir() {
    static std::string dir;
    static bool known = false;
    if (!known) {
        known = true;
        const hxl::NRF_LOCATIONS& l = hxl::Find_Nrf_Locations();
        dir = l.root_ok ? l.root : "";
        if (!dir.empty() && dir.back() != '/' && dir.back() != '\\') dir += '/';
    }
    return dir;
}

int instrument_dialog() {
    static int id = 0;
    if (!id) {
        DIALOG_TEMPLATE t;
        t.fields = {Fld(100, FIELD_KIND::Label, "Instrument name:"), Fld(kInstrumentCombo, FIELD_KIND::Combo, "")};
        id = WDialogDefineTitled("Instrument of the Numors", t);
    }
    return id;
}

// The instrument of the numors: from the directory of `first`, else asked; blank ends the command.
std::string instrument_for(const std::string& first) {
    std::string name = hxl::Trim(hxl::Instrument_From_Numor_Path(first));
    if (!name.empty()) return name;
    WDialogLoad(instrument_dialog());
    WDialogPutMenu(kInstrumentCombo, kInstruments, 0);
    WDialogShow(-1, -1, 0, Modal);
    int chosen = 0;
    if (WInfoDialog(4) == kIdOk) WDialogGetMenu(kInstrumentCombo, chosen);
    WDialogUnload();
    if (chosen < 1 || chosen > static_cast<int>(kInstruments.size())) return "";
    return kInstruments[static_cast<std::size_t>(chosen - 1)];
}

std::vector<std::string> select_numors(int flags, const std::string& title) {
    std::string list = data_dir();
    WSelectFile(hxl::kNumorFileFilter, LoadDialog | flags, list, title);
    if (WInfoDialog(4) != kIdOk) return {};
    return Selected_Files(list);
}

// A numor profile enters the next slot as every loaded file does.
void enter_profile(hxl::NUMOR_PROFILE& p, std::vector<std::string>& messages) {
    ZENDRITE_STORE& g = zendrite_param_global();
    const int slot = ++g.nperfiles;
    g.pattern[static_cast<std::size_t>(slot)] = std::move(p.pattern);
    LOAD_RESULT r;
    if (!Enter_Read_Profile(slot, 1, r)) {
        --g.nperfiles;
    } else {
        auto& info = g.info[static_cast<std::size_t>(slot)];
        info.prf_type = p.prf_type;
        info.prf_format = p.instrument;
        g.show_profile[static_cast<std::size_t>(slot)] = true;
        Add_Recent_File(p.file);
    }
    messages.insert(messages.end(), r.messages.begin(), r.messages.end());
}

}  // namespace

std::string Temp_Folder() {
    const hxl::NRF_LOCATIONS& l = hxl::Find_Nrf_Locations();
    if (l.temp_ok) return l.temp_dir;
    std::error_code ec;
    std::string t = std::filesystem::temp_directory_path(ec).string();
    if (ec) t = ".";
    return t.back() == '/' ? t : t + "/";
}

void Open_Numors_Command(bool& error, std::string& message) {
    error = false;
    message.clear();
    const std::vector<std::string> files = select_numors(MultiFile, hxl::kNumorFileTitle);
    const std::string instrument = files.empty() ? "" : instrument_for(files.front());
    if (instrument.empty()) {
        error = true;
        message = kCancelled;
        return;
    }
    ZENDRITE_STORE& g = zendrite_param_global();
    hxl::OPEN_NUMORS_RESULT r = hxl::Open_Numor_Files(files, instrument, kMaxProfiles - g.nperfiles);
    std::vector<std::string> messages = r.messages;
    for (hxl::NUMOR_PROFILE& p : r.profiles) enter_profile(p, messages);
    for (const std::string& m : messages) Show_Message(m);
    Show_Recent_Files();
}

void View_Header_Numor_Command(bool& error, std::string& message) {
    error = false;
    message.clear();
    const std::vector<std::string> files = select_numors(0, "Select Numor to view its header");
    const std::string instrument = files.empty() ? "" : instrument_for(files.front());
    if (instrument.empty()) {
        error = true;
        message = kCancelled;
        return;
    }
    std::vector<std::string> lines;
    if (!hxl::View_Header_Numor(files.front(), instrument, lines, message)) {
        error = true;
        return;
    }
    std::string text;
    for (const std::string& l : lines) text += l + "\n";
    const std::string file = Temp_Folder() + std::filesystem::path(files.front()).filename().string() + "_header.txt";
    if (!Write_File_Replace(file, text)) {
        error = true;
        message = "Unable to write the header file " + file;
        return;
    }
    WEditFile(file, true);
}

}  // namespace zendrite
