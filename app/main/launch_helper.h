#pragma once
// Starting a helper program of the configuration (text editor, web browser,
// PDF viewer) on one file or address, which reaches it as one argument.
#include <string>

namespace zendrite {

// The suite's folder: the preference "Path Corvane", else the one found at start.
std::string Suite_Dir();

// `helper` as the preferences or the configuration name it: a full name that
// exists is one program, blanks and all; any other text is split at its
// blanks ("open -a safari"). A blank helper, or one not found, is told in a
// message naming `role`, and nothing runs. True when the program started.
bool Launch_Helper(const std::string& helper, const std::string& role, const std::string& argument);

}  // namespace zendrite
