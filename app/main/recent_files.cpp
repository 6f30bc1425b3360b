// The list of the five most recent files and folders: file, menu items, reopening.
#include <fstream>

#include "app/main/configuration.h"
#include "app/main/root_menu.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "patterns/format_table.h"
#include "support/fixed_text.h"

namespace zendrite {

std::string Beside_Preference_File(const std::string& name) {
    const CONFIGURATION_TYPE& c = Configuration();
    const std::string pref = Preference_File_Name();
    const std::size_t cut = pref.find_last_of(c.dir_sep);
    return (cut == std::string::npos ? std::string(".") : pref.substr(0, cut)) + c.dir_sep + name;
}

namespace {
std::string recent_file() { return Beside_Preference_File(Configuration().recent_name); }
}  // namespace

void Read_Recent_Files() {
    auto& r = zendrite_param_global().recent;
    std::ifstream in(recent_file());
    if (!in) return;
    std::string line;
    for (int i = 1; i <= kMaxRecent && std::getline(in, line); ++i) {
        line = hxl::Trim(line);
        r[static_cast<std::size_t>(i)] = line.empty() ? "-" : hxl::Cut(line, 200);
    }
}

void Write_Recent_Files() {
    const auto& r = zendrite_param_global().recent;
    std::string text;
    for (int i = 1; i <= kMaxRecent; ++i) text += hxl::Trim(r[static_cast<std::size_t>(i)]) + "\n";
    Write_File_Replace(recent_file(), text);
}

void Show_Recent_Files() {
    const auto& r = zendrite_param_global().recent;
    for (int i = 1; i <= kMaxRecent; ++i) {
        const std::string& n = r[static_cast<std::size_t>(i)];
        const bool empty = hxl::Trim(n) == "-" || hxl::Is_Blank(n);
        WMenuSetString(kRecentItems[i - 1], std::to_string(i) + ". " + (empty ? std::string("<Empty>") : n));
        WMenuSetState(kRecentItems[i - 1], 1, empty ? 0 : 1);
    }
}

void Open_Recent(const std::string& name) {
    const std::string n = hxl::Trim(name);
    // A folder entry ends in a separator; an older list holds files only, and reads as before.
    if (!n.empty() && (n.back() == '/' || n.back() == '\\')) {
        Open_Folder_Command(n);
        Plot_ReMake();
        return;
    }
    const std::size_t dot = n.find_last_of('.');
    const std::size_t sep = n.find_last_of("/\\");
    if (dot == std::string::npos || (sep != std::string::npos && dot < sep)) {
        Show_Message("Bad name: without extension");
        return;
    }
    const std::string ext = n.substr(dot);
    bool error = false;
    std::string message;
    if (ext == ".dat" || ext == ".DAT" || ext == ".xys" || ext == ".XYS" || ext == ".bac" || ext == ".BAC" ||
        ext == ".gss" || ext == ".GSS") {
        Open_Data_File(n, error, message);
    } else if (ext == ".buf" || ext == ".BUF") {
        Open_Buffer_Command(n);
    } else if (ext == ".prf" || ext == ".PRF") {
        Open_Prf_Command(n);
    }
    if (error && message != "Cancelled" && !message.empty()) Show_Message(message);
    Plot_ReMake();
}

}  // namespace zendrite
