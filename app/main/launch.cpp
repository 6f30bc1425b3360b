#include "app/main/launch.h"

#include <chrono>
#include <thread>

#include "app/main/configuration.h"
#include "app/main/preferences.h"
#include "app/main/progress_dialog.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "extprog/os_commands.h"
#include "extprog/run_command.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
constexpr int kTextField = 10, kBarField = 11;
}

std::string Program_Dir() {
    const std::string p = hxl::Trim(Preferences().corvane_dir);
    return p.empty() ? hxl::Trim(Configuration().corvane_dir) : p;
}

bool Launch(const std::vector<std::string>& argv) {
    int status = 0;
    std::string message;
    if (hxl::Run_Command(argv, false, Program_Dir(), status, message)) return true;
    Show_Message(message);
    return false;
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
    return Launch(argv);
}

RUN_END Run_And_Wait(const std::vector<std::string>& argv, const std::string& work_dir, int& status) {
    status = -1;
    hxl::RUNNING_PROGRAM program;
    std::string message;
    if (!hxl::Start_Program(argv, Program_Dir(), program, message, work_dir)) {
        Show_Message(message);
        return RUN_END::Not_Started;
    }
    const std::string name = argv[0];
    const int id = Progress_Dialog("Running a program of the suite", kTextField, kBarField);
    WDialogLoad(id);
    WDialogFieldState(kIdOk, 0);
    WDialogPutString(kTextField, "Running " + name + (argv.size() > 1 ? " on " + argv.back() : std::string()));
    WDialogRangeProgressBar(kBarField, 0, 0);  // no end known: a busy bar
    WDialogPutProgressBar(kBarField, 0);
    WDialogShow(-1, -1, 0, Modeless);
    std::vector<WIN_MESSAGE> later;
    bool cancelled = false;
    while (!hxl::Program_Ended(program, status)) {
        if (Progress_Cancel_Pressed(id, later)) {
            hxl::Stop_Program(program);
            cancelled = true;
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    Progress_Close(id, later);
    if (cancelled) {
        Show_Message("The run of " + name + " was stopped");
        return RUN_END::Cancelled;
    }
    return RUN_END::Ended;
}

}  // namespace zendrite
