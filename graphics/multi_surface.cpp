// The shaded surface: the map as heights, coloured by intensity, rendered in software and
// put on the target as one picture under the box axes.
#include <algorithm>
#include <cmath>

#include "app/present.h"
#include "graphics/multi_parts.h"
#include "graphics/multi_views.h"
#include "graphics/plot_settings.h"

namespace zendrite {

void Draw_Surface(int width, int height, const MULTI_ROWS_TYPE& rows) {
    const PLOT_SETTINGS& s = Plot_Settings();
    MULTI_PAGE_TYPE page;
    Start_Multi_Page(width, height, rows, page);
    const MULTI_FRAME_TYPE& f = page.f;
    // a cell smaller than two pixels would not show its shading, only cost time
    std::vector<float> grid;
    int gr = 0, gc = 0;
    hxl::Reduce_Grid(page.map->z, page.map->nrows, page.map->ncols, std::max(2, f.px_height / 2), std::max(2, f.px_width / 2), grid, gr, gc);
    const double zr = page.zmax > page.zmin ? page.zmax - page.zmin : 1;
    std::vector<unsigned> colours(grid.size());
    for (std::size_t i = 0; i < grid.size(); ++i) {
        if (std::isfinite(grid[i])) grid[i] = static_cast<float>((grid[i] - page.zmin) / zr);
        colours[i] = hxl::Scale_Colour(Multi_View_State().colour_scale, std::isfinite(grid[i]) ? grid[i] : 0);
    }
    const hxl::VIEW_3D_TYPE view = Present_3D_View();
    std::vector<unsigned> picture;
    if (page.any) hxl::Render_Surface(grid, colours, gr, gc, view, f.px_width, f.px_height, kNoPixel, picture);
    if (!picture.empty()) IGrImage(f.left, f.bottom, f.right, f.top, f.px_width, f.px_height, picture);
    Draw_Box_Axes(view, f, page.map->xlo, page.map->xhi, rows, page.zmin, page.zmax);
    std::string title = "Surface of " + std::to_string(rows.slots.size()) + " patterns";
    if (!page.any) title += ": no intensity to show";
    Multi_Text(0.5f * (f.left + f.right), f.top + 0.03f * static_cast<float>(s.page_height), title, 0, 14);
}

}  // namespace zendrite
