#pragma once
// The application shell: start-up, main loop, root handler, the commands it owns.
#include <string>
#include <vector>

namespace zendrite {

// Start-up in its fixed order; `args` are the command-line arguments after the program name.
void Zendrite_Start(const std::vector<std::string>& args);
[[noreturn]] void Main_Loop();
// The extensions (lower case, without the dot) of the data files the command line opens.
bool Command_Line_Data_Extension(const std::string& ext);
// Ends the process, unless the user keeps an editor with unsaved changes open.
void Shutdown();
void ihand_winroot(int type, const struct WIN_MESSAGE& message);

void Draw_Title_Screen();
void Read_Recent_Files();
// A file of that name in the folder of the preference file.
std::string Beside_Preference_File(const std::string& name);
void Write_Recent_Files();
void Show_Recent_Files();
void Open_Recent(const std::string& name);
// A black off-screen picture of the child window's size, selected for drawing
// in units 0 to 1; the window's old picture is freed.
void Child_Picture_Start(int window, int& bitmap);
// The status `error`/`message` pair of a command: shown unless it is "Cancelled".
void Show_Message(const std::string& message, const std::string& title = "Zendrite-2006");
// Opens data files: `name` blank asks the selector; otherwise the file given.
void Open_Data_File(const std::string& name, bool& error, std::string& message);
// Every pattern file of a folder, in natural order, with a progress dialog; `name` blank
// asks with the folder selector. Messages are shown.
void Open_Folder_Command(const std::string& name);
// Files and folders dropped on the window: folders as above, ".prf"/".xrf" and ".buf"
// by their own loaders, other files as Open_Data_File.
void Open_Dropped(const std::vector<std::string>& paths);
// The dialog "Format of the data file": the row chosen (1..15), 0 at Cancel; the choice is the next preset.
int Format_Dialog_Row();
// Rietveld profile files and buffer files; `name` blank asks the selector. Messages are shown.
void Open_Prf_Command(const std::string& name);
void Open_Buffer_Command(const std::string& name);
// The main loop's check of the loaded profile file; true when it was read again.
bool Check_Prf_Reload();
// Redraws after the store changed (limits anew) or after a change of view.
void Plot_ReMake();
void Plot_Again();
// Installs the store hooks and the menu states of the modes.
void Install_Mode_Hooks();
void Preferences_Command();
void Update_Status_Bar();
// The store as text, for scripts.
std::string Store_Dump();
// A number as the dumps write it: six significant digits.
std::string Dump_Number(double v);

}  // namespace zendrite
