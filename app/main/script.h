#pragma once
// Scripted runs: one command a line, feeding the main loop and answering its questions.
#include <string>
#include <vector>

namespace zendrite {

// Reads the script; false with a message when it cannot be read.
bool Load_Script(const std::string& file, std::string& message);
// Installs the script as the event source of the layer.
void Run_Script_Source();
// Splits a script line into words; "double quoted" words keep their blanks.
std::vector<std::string> Script_Words(const std::string& line);

}  // namespace zendrite
