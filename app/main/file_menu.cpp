// The File menu's routines: open, save, reset, recent files, exit.
#include "app/main/commands.h"
#include "app/main/menu_groups.h"
#include "app/main/root_menu.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"

namespace zendrite {

void File_Open_Data(int) {
    bool error = false;
    std::string message;
    Open_Data_File("", error, message);
    if (error && message != "Cancelled") Show_Message(message);
    Plot_ReMake();
}

void File_Open_Folder(int) {
    Open_Folder_Command("");
    Plot_ReMake();
}

void File_Open_Prf(int) {
    Open_Prf_Command("");
    Plot_ReMake();
}

void File_Open_Buffer(int) {
    Open_Buffer_Command("");
    Plot_ReMake();
}

// Commands that hand back an error and a text, with the redraw each needs.
void File_Result_Command(int item) {
    bool error = false;
    std::string message;
    switch (item) {
    case 40157: Open_Raw_Command(error, message); break;
    case 40212: Open_Numors_Command(error, message); break;
    case 40210: View_Header_Numor_Command(error, message); break;
    case 40208: Save_Free_Format_Command(error, message); break;
    case 40209: Save_XY_Command(error, message); break;
    case 40009: Save_Buffer_Command(error, message); break;
    default: return;
    }
    Show_Command_Result(error, message);
    if (item == 40157 || item == 40212) Plot_ReMake();
}

void File_Reset(int) {
    Reset_Store();
    Clear_Structure_Phases();
    Enter_None_Mode();
    Draw_Title_Screen();
    Update_Status_Bar();
}

void File_Recent(int item) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    for (int i = 0; i < 5; ++i)
        if (kRecentItems[i] == item) Open_Recent(g.recent[static_cast<std::size_t>(i + 1)]);
}

void File_Exit(int) { Shutdown(); }

}  // namespace zendrite
