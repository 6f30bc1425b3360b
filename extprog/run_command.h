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

}  // namespace hxl
