#pragma once
// The 2D plot: the redraw routines every command ends with.
namespace zendrite {

// Limits computed afresh from the store, window placed on them, and drawn.
void Plot_ReMake();
// Drawn in the present graph mode with the present window.
void Plot_Again();
// The frame itself for "single", "multi" and "multi_log"; the limits are those of the frame
// (Y in logarithm when `log` is true) and are kept for the mouse.
void plot_graph2d(int nperfiles, float xmin, float xmax, float ymin, float ymax, bool log = false);
// The command Focus: Y limits from the points inside the present X window.
void Focus_Y();
// The repaint event: the picture copied again and the overlay of the calculation mode redrawn.
void Plot_Repaint();

// The parts of Plot_ReMake that compute without drawing.
void Compute_Plot_Limits();
void Compute_Tick_Rows(float band, int nphases);
void Update_X_Space_Menus();
// Draws the overlay of the present calc_mode on the window.
void Draw_Calc_Overlay();

}  // namespace zendrite
