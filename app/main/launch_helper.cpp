#include "app/main/launch_helper.h"

#include <vector>

#include "app/main/configuration.h"
#include "app/main/preferences.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "extprog/os_commands.h"
#include "extprog/run_command.h"
#include "support/fixed_text.h"

namespace zendrite {

std::string Suite_Dir() {
    const std::string p = hxl::Trim(Preferences().corvane_dir);
    return p.empty() ? hxl::Trim(Configuration().corvane_dir) : p;
}

bool Launch_Helper(const std::string& helper, const std::string& role, const std::string& argument) {
    const std::string h = hxl::Trim(helper);
    if (h.empty()) {
        Show_Message("No " + role + " is named: give one in Options, Preferences, Environment.");
        return false;
    }
    const std::string arg = hxl::File_Argument(argument);
    const std::vector<std::string> argv =
        h.find('/') != std::string::npos && IOsExists(h) ? std::vector<std::string>{h, arg} : hxl::Helper_Command(h, {arg});
    int status = 0;
    std::string message;
    if (hxl::Run_Command(argv, false, Suite_Dir(), status, message)) return true;
    Show_Message(message);
    return false;
}

}  // namespace zendrite
