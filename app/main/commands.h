#pragma once
// File-menu commands that save profiles, load raw detector files and numors.
// Each hands back the command result: `error` with a text, "Cancelled" when the user gave up.
#include <string>

namespace zendrite {

// The command result: shown with Show_Message unless it is "Cancelled" or there is no error.
void Show_Command_Result(bool error, const std::string& message);

// The first visible profile as a free-format ".dat" file or an "XYDATA" ".xys" file.
void Save_Free_Format_Command(bool& error, std::string& message);
void Save_XY_Command(bool& error, std::string& message);
// The files of the loaded "DATA" profiles as a buffer file.
void Save_Buffer_Command(bool& error, std::string& message);

// One raw detector file (".kg2", ".kg3o"): a profile per detector block.
void Open_Raw_Command(bool& error, std::string& message);

// Numors of a powder instrument, one profile each; the instrument comes from the
// directory or is asked for.
void Open_Numors_Command(bool& error, std::string& message);
// The folder of temporary files (TEMP, TMP, else the system's), ending in '/'.
std::string Temp_Folder();
// The head of one numor, shown read-only in the internal editor.
void View_Header_Numor_Command(bool& error, std::string& message);

}  // namespace zendrite
