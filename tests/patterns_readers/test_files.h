#pragma once
// Scratch files for the reader tests, and the path of the committed samples.
#include <string>

namespace zdtest {

// Writes `text` to a fresh file named `name` in a per-process scratch folder; the full path.
std::string Scratch_File(const std::string& name, const std::string& text);
std::string Scratch_Path(const std::string& name);
std::string Sample(const std::string& name);  // tests/data/patterns/<name>
std::string Slurp(const std::string& path);

}  // namespace zdtest
