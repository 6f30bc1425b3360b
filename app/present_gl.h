#pragma once
// The OpenGL model window of the presentation layer: a set of patterns as a lit solid.
// The layer draws and turns what it is given; the model itself (decimation, meshes,
// files) is built by the caller through the links.
#include <functional>
#include <string>
#include <vector>

namespace zendrite {

enum class MODEL_RENDER { Points = 1, Wire, Flat, Smooth, Ribbons };

struct GL_VIEW_TYPE {
    MODEL_RENDER render = MODEL_RENDER::Smooth;
    bool log = false;
    double height = 0.6;                    // of the box, as a fraction of its width
    double rotation = -35, elevation = 30;  // degrees
    double zoom = 1;
    double light_azimuth = 45, light_elevation = 50;  // degrees, from the viewer's side
    double ambient = 0.35, diffuse = 0.65, specular = 0.25;
    int colour_scale = 1;                   // 1 viridis, 2 grey
    double turn_speed = 30;                 // degrees per second while turning
};

// Vertices in the model box: x across [-1, 1], y up [0, height], z along the rows [-1, 1].
struct GL_MESH_TYPE {
    enum PRIMITIVE { Points, Lines, Triangles };
    PRIMITIVE primitive = Triangles;
    std::vector<float> position, normal, colour;  // 3 floats a vertex each
    std::vector<float> row;                       // the row of each vertex, from 1 (the sweep lights one)
    std::vector<unsigned> index;
    int rows = 0, cols = 0;                       // of the grid the mesh was made from
};

// What the window asks of its caller.
struct GL_MODEL_LINK {
    // The mesh of a view, decimated to at most max_rows x max_cols.
    std::function<void(const GL_VIEW_TYPE& view, int max_rows, int max_cols, GL_MESH_TYPE& mesh)> build;
    std::function<bool(const GL_MESH_TYPE& mesh, const std::string& file, std::string& message)> save_model;
    std::function<std::string(const GL_VIEW_TYPE& view)> view_text;
    std::function<bool(const std::string& text, GL_VIEW_TYPE& view, std::string& message)> read_view;
    // The axes: X in the profiles' space, the rows, and the intensity.
    double x_low = 0, x_high = 1, row_low = 1, row_high = 2, z_low = 0, z_high = 1;
    std::string x_legend, row_legend, z_legend = "Intensity";
    int nrows = 0;
};

// Opens (or refills) the window; false with a message when the machine gives no usable
// OpenGL 3.3 (or ES 3) context.
bool GlModelOpen(const GL_MODEL_LINK& link, const GL_VIEW_TYPE& view, std::string& message);
bool GlModelIsOpen();
void GlModelClose();
// The scripted mode's commands: "render points|wire|flat|smooth|ribbons", "rotation R",
// "elevation E", "zoom Z", "height H", "log on|off", "picture FILE.png [W H]",
// "model FILE.obj|ply", "view save|load FILE", "turn on|off", "sweep on|off", "frames N"
// (draws N turning frames and says how long they took). False with a message.
bool GlModelCommand(const std::vector<std::string>& words, std::string& message);

}  // namespace zendrite
