#pragma once
// The layers of one frame, in the order plot_graph2d draws them.
#include <string>

namespace zendrite {

// The excluded regions of the shown profiles, hatched across the frame (page units).
void Draw_Excluded_Bands(int nperfiles, float xmin, float xmax);
// Curves of one slot: markers, error bars, line, calculated, background, difference, excluded points.
void Draw_Slot_Curves(int slot, float xmin, float xmax, bool log);
// Title, X scale, hiding of the Y scale under the band, Y scale, axis legends.
void Draw_Axes_And_Texts(int nperfiles);
// Calculated and difference curves, background and Bragg ticks of the active Rietveld profile.
void Draw_Rietveld_Layers(int nperfiles, float xmin, float xmax, float ymin, float ymax);
// Target at centre, frame, legend.
void Draw_Frame_And_Legend(int nperfiles);
// The second X axis along the top, with the title above it; false when none is drawn
// (no setting, or the constants of the first shown profile don't allow it).
bool Second_Axis_Wanted();
void Draw_Second_Axis(int nperfiles);

// Pieces shared with the Quick View, which draws a profile file the same way.
struct TEXT_STYLE;
// Colour and font of one text of the plot.
void Apply_Text_Style(const TEXT_STYLE& t);
// The title of the frame: the pattern's own with one profile, the multi title with more.
std::string Plot_Title(int nperfiles);
// Covers the Y numbers beside the band of the difference curve (below Y = 0).
void Hide_Y_Scale_Beside_Band();
// True while a picture is written into a file with a white background.
bool White_Picture();
// The colour of the picture's background: white for such a file, the setting otherwise.
int Picture_Background();
// The background of the picture and the plot zone in their colours.
void Paint_Plot_Zone();
// Widens a range of no width, which would make every conversion divide by zero.
void Open_Up_Range(float& low, float& high);

}  // namespace zendrite
