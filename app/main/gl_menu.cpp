// "OpenGL 3D model": the shown profiles as a lit solid in a window of its own.
#include <memory>

#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/present_gl.h"
#if ZD_WITH_PLOT
#include "graphics/gl_model.h"
#include "graphics/multi_parts.h"
#include "graphics/multi_views.h"
#endif

namespace zendrite {

void Plot_Gl_Model(int) {
#if ZD_WITH_PLOT
    const std::string refusal = Multi_View_Refusal();
    if (!refusal.empty()) {
        Show_Message("ERROR: " + refusal);
        return;
    }
    const MULTI_ROWS_TYPE rows = Shown_Rows();
    // The map at the finest the window will ask for; each mesh is decimated from it, so that
    // memory stays with the map (2000 rows x 1200 columns at most), whatever the profiles hold.
    auto map = std::make_shared<hxl::MULTI_MAP_TYPE>();
    hxl::Build_Multi_Map(rows.rows, rows.xlo, rows.xhi, 1200, *map);
    float zmin = 0, zmax = 0, zpos = 0;
    if (!hxl::Map_Z_Range(*map, zmin, zmax, zpos)) {
        Show_Message("ERROR: The shown profiles hold no intensity to show");
        return;
    }
    GL_MODEL_LINK link;
    link.build = [map, zmin, zmax, zpos](const GL_VIEW_TYPE& view, int max_rows, int max_cols, GL_MESH_TYPE& mesh) {
        GL_GRID_TYPE grid;
        Gl_Grid(*map, max_rows, max_cols, view.log, zmin, zmax, zpos, grid);
        Gl_Mesh(grid, view, mesh);
    };
    link.save_model = Write_Gl_Model;
    link.view_text = Gl_View_Text;
    link.read_view = Read_Gl_View_Text;
    link.x_low = map->xlo, link.x_high = map->xhi;
    link.row_low = rows.values.front(), link.row_high = rows.values.back();
    link.z_low = zmin, link.z_high = zmax;
    link.x_legend = Multi_X_Legend(rows.slots.front());
    link.row_legend = Row_Axis_Name(rows);
    link.nrows = map->nrows;
    std::string message;
    if (!GlModelOpen(link, GL_VIEW_TYPE{}, message)) Show_Message(message);
#else
    Show_Message("This command is not available yet");
#endif
}

}  // namespace zendrite
