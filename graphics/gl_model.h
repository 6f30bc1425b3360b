#pragma once
// The model of the OpenGL window: the many-pattern map decimated to a grid of heights,
// its meshes for each render method, the model files (Wavefront OBJ, PLY) and the view
// settings file.
#include <string>
#include <vector>

#include "app/present_gl.h"
#include "graphics/multi_map.h"

namespace zendrite {

// Heights from 0 (lowest intensity) to 1 (highest), rows front to back.
struct GL_GRID_TYPE {
    int rows = 0, cols = 0;
    std::vector<float> h;
    float At(int r, int c) const { return h[static_cast<std::size_t>(r) * static_cast<std::size_t>(cols) + static_cast<std::size_t>(c)]; }
};

// The map reduced in blocks (the highest cell of each) to at most max_rows x max_cols, its intensities placed
// between zmin and zmax (log10 from the lowest positive `zpos` in log); empty cells, NaN
// and, in log, zero or negative intensities lie at the bottom.
void Gl_Grid(const hxl::MULTI_MAP_TYPE& map, int max_rows, int max_cols, bool log, float zmin, float zmax, float zpos,
             GL_GRID_TYPE& grid);

// The mesh of a render method, coloured by height on the view's colour scale.
void Gl_Mesh(const GL_GRID_TYPE& grid, const GL_VIEW_TYPE& view, GL_MESH_TYPE& mesh);

// The mesh as a Wavefront OBJ (by ".obj") or an ASCII PLY (by ".ply") file, with its
// colours; through a temporary file. False with a message.
bool Write_Gl_Model(const GL_MESH_TYPE& mesh, const std::string& file, std::string& message);

// The view settings as "key value" lines, and back; a line that cannot be read refuses
// the whole file with its number, and the view stays as it was.
std::string Gl_View_Text(const GL_VIEW_TYPE& view);
bool Read_Gl_View_Text(const std::string& text, GL_VIEW_TYPE& view, std::string& message);

}  // namespace zendrite
