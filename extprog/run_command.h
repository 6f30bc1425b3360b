#pragma once
// Starting a program without a shell: each argument reaches it as it stands.
#include <string>
#include <vector>

namespace hxl {

// The full name of `program`: as given when it holds a '/', else the first
// executable file of that name in `program_dir`, then in the folders of
// `path` (a PATH value). Empty when none; `looked` then says where it looked.
std::string Find_Program(const std::string& program, const std::string& program_dir, const std::string& path,
                         std::string& looked);

// The text for a program that was not found.
std::string Not_Found_Message(const std::string& program, const std::string& looked);

// Starts argv[0] (looked up as above, PATH from the environment) with the
// other arguments. With `wait` it waits for the end and `status` is the exit
// status; without, the child is left to run and is reaped when it ends. False
// with `message` when the program was not found or could not start; nothing
// runs then.
bool Run_Command(const std::vector<std::string>& argv, bool wait, const std::string& program_dir, int& status,
                 std::string& message);

// A program started by Start_Program, for a caller that keeps its window
// alive while it runs.
struct RUNNING_PROGRAM {
    int pid = 0;  // 0 once it has ended and been reaped
    std::string full_name;
};

// Starts argv[0] as Run_Command does, in `work_dir` when it is not empty (a
// refinement writes its results beside its input); false with `message` when
// nothing runs.
bool Start_Program(const std::vector<std::string>& argv, const std::string& program_dir, RUNNING_PROGRAM& program,
                   std::string& message, const std::string& work_dir = "");

// True once the program has ended (reaped); `status` is its exit status, -1
// when a signal ended it. Never waits.
bool Program_Ended(RUNNING_PROGRAM& program, int& status);

// Ends the program and what it started (SIGTERM to its process group, then
// SIGKILL after `grace_seconds`) and reaps it.
void Stop_Program(RUNNING_PROGRAM& program, double grace_seconds = 2.0);

}  // namespace hxl
