#pragma once
// Pieces the many-pattern views share: the rows taken from the store, the page layout
// and the texts around the frame.
#include <memory>
#include <string>
#include <vector>

#include "graphics/multi_map.h"
#include "graphics/multi_project.h"

namespace zendrite {

struct MULTI_ROWS_TYPE {
    std::vector<int> slots;                  // shown profiles in slot order
    std::vector<hxl::MAP_ROW_TYPE> rows;
    std::vector<double> values;              // slot numbers, sample temperatures or minutes from the first start
    bool by_temperature = false;
    bool by_time = false;
    double xlo = 0, xhi = 1;                 // X of all the rows together
};
// The shown profiles as rows; the Y axis is the temperature when every one has one and
// they rise or fall strictly, else the time from the first start when every one has an
// acquisition time and they rise strictly, else the slot number.
MULTI_ROWS_TYPE Shown_Rows();
// The name of that axis: "Sample temperature", "Time (min)" or "Pattern number".
const char* Row_Axis_Name(const MULTI_ROWS_TYPE& rows);

// The frame of the views: the zone of the plot settings, in page units and in pixels of
// a target of width x height.
struct MULTI_FRAME_TYPE {
    float left = 0, bottom = 0, right = 0, top = 0;  // page units
    int px_width = 1, px_height = 1;
};
MULTI_FRAME_TYPE Multi_Frame(int width, int height);

// The page cleared, the units set to the page.
void Begin_Multi_Page();
// The X legend of the store's space.
std::string Multi_X_Legend(int first_slot);
// A text in page units in the style of the axis texts (size in thousandths of the page).
void Multi_Text(float x, float y, const std::string& text, int align, float size = 12, float degrees = 0);
// A number as an axis shows it at a given step.
std::string Tick_Text(double value, double step);
// The rotation and elevation of the 3D views, and the offset of the stack.
hxl::VIEW_3D_TYPE Present_3D_View();

// Intensity of the last contour's map at row (from 1) and X; NaN for an empty cell.
float Contour_Value(int row_index, double x);

// The edges of the box of a 3D view in the frame, X ticks along the front, the row values
// and the intensity range at the ends of their edges, and the names of the axes.
void Draw_Box_Axes(const hxl::VIEW_3D_TYPE& view, const MULTI_FRAME_TYPE& f, double x1, double x2,
                   const MULTI_ROWS_TYPE& rows, double zlo, double zhi);

void Draw_Contour(bool log, int width, int height, const MULTI_ROWS_TYPE& rows);
void Draw_Stack(int width, int height, const MULTI_ROWS_TYPE& rows);
void Draw_Surface(int width, int height, const MULTI_ROWS_TYPE& rows);

// What every view starts from: the frame, the page cleared, and the map of the rows over
// the present X window with its intensity range (`any` false when no cell holds a number).
struct MULTI_PAGE_TYPE {
    MULTI_FRAME_TYPE f;
    std::shared_ptr<const hxl::MULTI_MAP_TYPE> map;  // shared with the redraw cache: never copied
    float zmin = 0, zmax = 0, zpos = 0;
    bool any = false;
};
void Start_Multi_Page(int width, int height, const MULTI_ROWS_TYPE& rows, MULTI_PAGE_TYPE& page);

// The map of the rows over the present X window (the whole range unless zoomed) and the
// intensity range of it; false when no cell holds a number.
bool Window_Map(const MULTI_ROWS_TYPE& rows, int max_cols, std::shared_ptr<const hxl::MULTI_MAP_TYPE>& map, float& zmin, float& zmax,
                float& lowest_positive);

}  // namespace zendrite
