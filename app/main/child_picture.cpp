#include <algorithm>

#include "app/main/zendrite_app.h"
#include "app/present.h"

namespace zendrite {

void Child_Picture_Start(int window, int& bitmap) {
    WindowSelect(window);
    if (bitmap) WBitmapDestroy(bitmap);
    IGrPaletteBackground(0);
    WBitmapCreate(bitmap, std::max(WInfoWindow(1), 1), std::max(WInfoWindow(2), 1));
    IGrSelect(2, bitmap);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, 1, 1);
    IGrColour("black");
    IGrFillPattern(3);
    IGrRectangle(0, 0, 1, 1);
    IGrFillPattern(0);
}

}  // namespace zendrite
