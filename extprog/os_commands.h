#pragma once
// The helper programs of each system and the command lines of the sibling
// programs of the suite, as argument lists: a name is one argument whatever
// characters it holds, never text for a shell.
#include <string>
#include <vector>

namespace hxl {

struct OS_COMMAND_TABLE_TYPE {
    std::string file_explorer, web_browser, pdf_viewer, console, text_editor, unpacker;
};

// The table of a four-letter system tag ("WIND", "LINU", "MACO"); false for any other.
bool Os_Command_Table(const std::string& tag, OS_COMMAND_TABLE_TYPE& table);

enum class SIBLING { Corvane, Tessara, Glattiq, Quavor, Tindra, Atelier, Dicvol, Ito, Ombra, Treor, Pellan, Virelle };

// The program name of a sibling on a system (".exe" on Windows).
std::string Sibling_Program(SIBLING s, const std::string& tag);

// A file name as an argument that no program takes for an option: a leading
// '-' gets "./" in front.
std::string File_Argument(const std::string& file);

// The arguments of a sibling run on `file` (empty: the program alone); the
// program name first.
std::vector<std::string> Sibling_Command(SIBLING s, const std::string& tag, const std::string& file);

// A helper command of the table ("open -a finder") split at its blanks, then `extra`.
std::vector<std::string> Helper_Command(const std::string& helper, const std::vector<std::string>& extra);

}  // namespace hxl
