#pragma once
// The check --render makes before it writes its picture.
#include <string>

namespace zendrite {

// True when the command-line file gave at least one profile; otherwise
// prints on stderr why nothing of it can be drawn and returns false.
bool Render_File_Loaded(const std::string& file);

}  // namespace zendrite
