#pragma once
// The layers of one frame, in the order plot_graph2d draws them.
namespace zendrite {

// Curves of one slot: markers, error bars, line, calculated, background, difference, excluded points.
void Draw_Slot_Curves(int slot, float xmin, float xmax, bool log);
// Title, X scale, hiding of the Y scale under the band, Y scale, axis legends.
void Draw_Axes_And_Texts(int nperfiles);
// Calculated and difference curves, background and Bragg ticks of the active Rietveld profile.
void Draw_Rietveld_Layers(int nperfiles, float xmin, float xmax, float ymin, float ymax);
// Target at centre, frame, legend.
void Draw_Frame_And_Legend(int nperfiles);

}  // namespace zendrite
