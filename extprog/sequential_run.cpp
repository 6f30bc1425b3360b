#include "extprog/sequential_run.h"

#include <filesystem>
#include <fstream>
#include <algorithm>
#include <system_error>

#include "support/fixed_text.h"
#include "support/text_utils.h"

namespace hxl {

std::string Sequential_Arguments(const SEQUENTIAL_FORM_TYPE& f) {
    std::string args = "seq";
    args += " " + Trim(f.pcr) + " " + Trim(f.code) + " " + std::to_string(f.first) + " " + std::to_string(f.last);
    for (bool on : {f.prf, f.hkl, f.mic, f.dis, f.calc}) args += on ? " Y" : " N";
    if (f.out) args += " +OUT";
    if (!Is_Blank(f.temperatures)) args += " -temp " + Trim(f.temperatures);
    return args;
}

std::string Sequential_Script_Name(const std::string& pcr, const std::string& os_tag) {
    return Trim(pcr) + (os_tag == "WIND" ? "_FPseq.bat" : "_FPseq.sh");
}

bool Append_Sequential_Script(const std::string& script, const std::string& args, const std::string& os_tag,
                              std::string& message) {
    {
        std::ofstream out(script, std::ios::app);
        out << "corvane2k " << args << "\n";
        if (!out) {
            message = "The script " + script + " could not be written";
            return false;
        }
    }
    if (os_tag != "WIND") {
        std::error_code ec;
        std::filesystem::permissions(script,
                                     std::filesystem::perms::owner_exec | std::filesystem::perms::group_exec |
                                         std::filesystem::perms::others_exec,
                                     std::filesystem::perm_options::add, ec);
        if (ec) {
            message = "The script " + script + " was written but cannot be made executable: " + ec.message();
            return false;
        }
    }
    return true;
}

std::vector<std::string> Sequential_Words(const std::string& args) {
    std::vector<std::string> words;
    int count = 0;
    Get_Words(args, words, count);
    words.resize(static_cast<std::size_t>(std::max(count, 0)));
    return words;
}

}  // namespace hxl
