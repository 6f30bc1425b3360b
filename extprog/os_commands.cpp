#include "extprog/os_commands.h"

#include <sstream>

namespace hxl {

bool Os_Command_Table(const std::string& tag, OS_COMMAND_TABLE_TYPE& t) {
    if (tag == "WIND") t = {"explorer.exe", "C:\\Program Files\\Internet Explorer\\iexplore.exe", "", "cmd.exe",
                            "notepad.exe", "7zFM "};
    else if (tag == "LINU") t = {"gnome-open", "firefox", "evince", "xterm", "gedit", "gzip"};
    else if (tag == "MACO") t = {"open -a finder", "open -a safari", "open", "xterm", "textedit", ""};
    else return false;
    return true;
}

std::string Sibling_Program(SIBLING s, const std::string& tag) {
    const bool win = tag == "WIND";
    const char* base = "";
    switch (s) {
    case SIBLING::Corvane: base = win ? "wcorvane2k" : "corvane2k"; break;
    case SIBLING::Tessara: base = "tessara"; break;
    case SIBLING::Glattiq: base = "gLattiq"; break;
    case SIBLING::Quavor: base = "gquavor"; break;
    case SIBLING::Tindra: base = "tindra"; break;
    case SIBLING::Atelier: base = "cv_atelier"; break;
    case SIBLING::Dicvol: base = "dicvol06"; break;
    case SIBLING::Ito: base = "ito15"; break;
    case SIBLING::Ombra: base = "ombra"; break;
    case SIBLING::Treor: base = "treor90"; break;
    case SIBLING::Pellan: base = "pellan"; break;
    case SIBLING::Virelle: base = "virelle"; break;
    }
    return std::string(base) + (win ? ".exe" : "");
}

std::string File_Argument(const std::string& file) { return !file.empty() && file[0] == '-' ? "./" + file : file; }

std::vector<std::string> Sibling_Command(SIBLING s, const std::string& tag, const std::string& file) {
    std::vector<std::string> argv{Sibling_Program(s, tag)};
    if (file.empty()) return argv;
    if (s == SIBLING::Pellan) argv.push_back("-fil");
    argv.push_back(File_Argument(file));
    return argv;
}

std::vector<std::string> Helper_Command(const std::string& helper, const std::vector<std::string>& extra) {
    std::vector<std::string> argv;
    std::istringstream in(helper);
    for (std::string w; in >> w;) argv.push_back(w);
    for (const std::string& e : extra) argv.push_back(File_Argument(e));
    return argv;
}

}  // namespace hxl
