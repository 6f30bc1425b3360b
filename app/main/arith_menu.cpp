// The Calculations and Smoothing menus' routines: pattern arithmetic, efficiency,
// monitor, offset and scaling dialogs, and the two filters, each with its redraw.
#include "app/main/arith_commands.h"
#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "graphics/mouse.h"

namespace zendrite {

namespace {
void show(const std::string& text) {
    if (!text.empty() && text != "Cancelled") Show_Message(text);
}
}  // namespace

void Arith_Sum(int item) {
    int status = 0;
    std::string text;
    Sum_Profiles(item == 40123 ? 1 : 0, status, text);
    show(text);
    if (status == 0)
        Plot_ReMake();
    else
        Plot_Again();
}

void Arith_Difference(int) {
    int status = 0;
    std::string text;
    Difference_Profiles(status, text);
    show(text);
    Plot_ReMake();
}

void Arith_Multiply_Efficiency(int item) {
    int status = 0;
    std::string text;
    if (item == 40162)
        Multiply_Shift_Panel(status, text);
    else
        Apply_Efficiency(status, text);
    show(text);
    Plot_Again();
}

void Arith_Normalize_Monitor(int) {
    int status = 0;
    std::string text;
    Normalize_Monitor(status, text);
    show(text);
    Plot_ReMake();
}

void Arith_Shift(int) {
    int status = 0;
    std::string text;
    Shift_Profiles(status, text);
    show(text);
    Plot_ReMake();
}

void Arith_Offset_Scale(int item) {
    const int kind = item == 40149 ? 3 : item == 40115 ? 4 : 5;
    int status = 0;
    bool mouse = false;
    std::string text;
    Offset_Scale_Dialog(kind, mouse, status, text);
    show(text);
    if (mouse) {
        zendrite_param_global().MoveMode = kind;
        if (kind == 4) WindowOutStatusBar(4, "Select pivot reference point to scaling Y");
        if (kind == 5) WindowOutStatusBar(4, "Select pivot reference point to scaling X");
    }
    Plot_Again();
}

void Arith_Smoothing(int item) {
    int status = 0;
    std::string text;
    if (item == 40020)
        Smooth_Fourier(status, text);
    else
        Smooth_Polynomial(status, text);
    show(text);
    if (zendrite_param_global().nperfiles > 1) Enter_Multi_Mode();
    Plot_Again();
}

}  // namespace zendrite
