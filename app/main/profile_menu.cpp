// The Profiles menu's routines and the calculation-mode items.
#include "app/main/calc_mode_commands.h"
#include "app/main/menu_groups.h"
#include "app/main/profile_commands.h"
#include "app/main/quick_view.h"
#include "app/main/zendrite_app.h"

namespace zendrite {

void Profile_Copy(int) {
    std::string message;
    if (!Copy_Profile(message)) Show_Message(message);
    Plot_ReMake();
}

void Profile_Quick_View(int) { Open_Quick_View(); }
void Profile_Focus(int) { Focus_Profile_Command(); }
void Profile_Graph_Show(int) { Graph_Show_Command(); }
void Profile_Sorting(int) { Sorting_Command(); }
void Profile_Delete(int) { Delete_Profiles_Command(); }
void Profile_Playing(int) { Playing_Command(); }
void Profile_Calculation_Mode(int item) { Calculation_Mode_Command(item); }

}  // namespace zendrite
