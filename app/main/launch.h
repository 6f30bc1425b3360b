#pragma once
// Starting the suite's programs and the system's helpers from the menus.
#include <string>
#include <vector>

namespace zendrite {

// The program directory of the preferences, else the suite's folder found at start.
std::string Program_Dir();

// Starts the program and leaves it running; a failure is shown. False when nothing runs.
bool Launch(const std::vector<std::string>& argv);

// `helper` (text editor, web browser, PDF viewer) as the preferences or the
// configuration name it, on one file or address that reaches it as one
// argument: a full name that exists is one program, blanks and all; any other
// text is split at its blanks ("open -a safari"). A blank helper, or one not
// found, is told in a message naming `role`, and nothing runs.
bool Launch_Helper(const std::string& helper, const std::string& role, const std::string& argument);

enum class RUN_END { Ended, Not_Started, Cancelled };

// Runs the program in `work_dir` until it ends, with a progress dialog whose
// Cancel stops it; the window stays alive meanwhile. `status` is its exit
// status. Not_Started and Cancelled have shown their message.
RUN_END Run_And_Wait(const std::vector<std::string>& argv, const std::string& work_dir, int& status);

}  // namespace zendrite
