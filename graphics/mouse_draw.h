#pragma once
// Rubber bands on the window, in page units and exclusive-or "Yellow", and the box
// that names the reflections under the mouse.
#include <string>
#include <vector>

namespace zendrite {

void Band_Mode_On();   // exclusive-or drawing on the window, page units
void Band_Mode_Off();  // back to normal drawing
void Band_Rectangle(float x1, float y1, float x2, float y2);
void Band_Strip(float x1, float x2);           // a filled band across the height of the zone
void Band_Line(float x1, float y1, float x2, float y2);
void Band_Vertical(float x);                   // from the bottom of the zone to the top
// Keeps a page point inside the zone of the frame.
void Clamp_To_Zone(float& px, float& py);
// A box of lines beside the data point (x, y), drawn normally on the window.
void Reflection_Box(float x, float y, const std::vector<std::string>& lines);

}  // namespace zendrite
