// The model of the OpenGL window: decimation, heights (log with empty and non-positive
// cells), the meshes of each render method, the model files read back, the view file.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

#include "graphics/gl_model.h"

namespace {

using namespace zendrite;

hxl::MULTI_MAP_TYPE ramp_map(int rows, int cols) {
    hxl::MULTI_MAP_TYPE m;
    m.nrows = rows, m.ncols = cols, m.xlo = 10, m.xhi = 20, m.step = 10.0 / cols;
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < cols; ++c) m.z.push_back(static_cast<float>(c));  // rises along X only
    return m;
}

TEST(GlModel, GridHeightsAndDecimation) {
    GL_GRID_TYPE g;
    Gl_Grid(ramp_map(40, 101), 1000, 1000, false, 0, 100, 1, g);
    ASSERT_EQ(g.rows, 40);
    ASSERT_EQ(g.cols, 101);
    EXPECT_FLOAT_EQ(g.At(0, 0), 0.0f);
    EXPECT_FLOAT_EQ(g.At(7, 50), 0.5f);
    EXPECT_FLOAT_EQ(g.At(39, 100), 1.0f);
    // decimated to at most 10 x 20, each block by its highest cell
    Gl_Grid(ramp_map(2000, 1200), 10, 20, false, 0, 1199, 1, g);
    EXPECT_EQ(g.rows, 10);
    EXPECT_EQ(g.cols, 20);
    EXPECT_NEAR(g.At(3, 0), 59.0 / 1199, 1e-6);  // columns 0..59
    EXPECT_NEAR(g.At(9, 19), 1.0, 1e-6);
    // a narrow peak keeps its height in whichever column of the block it stands
    hxl::MULTI_MAP_TYPE spike;
    spike.nrows = 4, spike.ncols = 40, spike.z.assign(160, 0.0f);
    for (int r = 0; r < 4; ++r) spike.z[static_cast<std::size_t>(r * 40 + 10 + 2 * r)] = 100;
    Gl_Grid(spike, 4, 4, false, 0, 100, 1, g);
    for (int r = 0; r < 4; ++r) EXPECT_FLOAT_EQ(g.At(r, 1), 1.0f) << r;
    // log: decades between the lowest positive and the top; NaN, zero and negative at the floor
    hxl::MULTI_MAP_TYPE m;
    m.nrows = 1, m.ncols = 5, m.z = {std::numeric_limits<float>::quiet_NaN(), 0, -5, 10, 1000};
    Gl_Grid(m, 10, 10, true, -5, 1000, 10, g);
    ASSERT_EQ(g.h.size(), 5u);
    EXPECT_EQ(g.h[0], 0.0f);
    EXPECT_EQ(g.h[1], 0.0f);
    EXPECT_EQ(g.h[2], 0.0f);
    EXPECT_FLOAT_EQ(g.h[3], 0.0f);
    EXPECT_FLOAT_EQ(g.h[4], 1.0f);
    m.z[3] = 100;  // one decade of two: half way
    Gl_Grid(m, 10, 10, true, -5, 1000, 10, g);
    EXPECT_FLOAT_EQ(g.h[3], 0.5f);
    // nothing but NaN: a flat floor, no NaN in the model
    m.z.assign(5, std::numeric_limits<float>::quiet_NaN());
    Gl_Grid(m, 10, 10, false, 0, 0, 0, g);
    for (float h : g.h) EXPECT_EQ(h, 0.0f);
}

TEST(GlModel, MeshOfEachRenderMethod) {
    GL_GRID_TYPE g;
    g.rows = 3, g.cols = 4;
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 4; ++c) g.h.push_back(0.25f * static_cast<float>(c));  // a plane rising along X
    GL_VIEW_TYPE v;
    v.height = 0.6;
    GL_MESH_TYPE m;
    struct CASE {
        MODEL_RENDER render;
        GL_MESH_TYPE::PRIMITIVE primitive;
        std::size_t vertices, indices;
    };
    // triangles: 2 a cell of (3-1)(4-1); wire: 3 rows of 3 segments and 4 columns of 2;
    // ribbons: 2 vertices a point, 2 triangles a step along each row
    const CASE cases[] = {{MODEL_RENDER::Points, GL_MESH_TYPE::Points, 12, 12},
                          {MODEL_RENDER::Wire, GL_MESH_TYPE::Lines, 12, 2 * (9 + 8)},
                          {MODEL_RENDER::Flat, GL_MESH_TYPE::Triangles, 12, 36},
                          {MODEL_RENDER::Smooth, GL_MESH_TYPE::Triangles, 12, 36},
                          {MODEL_RENDER::Ribbons, GL_MESH_TYPE::Triangles, 24, 3 * 3 * 6}};
    for (const CASE& c : cases) {
        v.render = c.render;
        Gl_Mesh(g, v, m);
        EXPECT_EQ(m.primitive, c.primitive);
        EXPECT_EQ(m.position.size(), 3 * c.vertices);
        EXPECT_EQ(m.colour.size(), 3 * c.vertices);
        EXPECT_EQ(m.row.size(), c.vertices);
        EXPECT_EQ(m.index.size(), c.indices);
        for (unsigned i : m.index) EXPECT_LT(i, c.vertices);
    }
    // The plane y = 0.6 * 0.25 c at x = -1 + 2c/3 has slope 0.6 * 0.25 * 1.5 = 0.225 along x:
    // its normal is (-0.225, 1, 0) / sqrt(1 + 0.225^2), at every vertex.
    v.render = MODEL_RENDER::Smooth;
    Gl_Mesh(g, v, m);
    const double len = std::sqrt(1 + 0.225 * 0.225);
    for (std::size_t i = 0; i < 12; ++i) {
        EXPECT_NEAR(m.normal[3 * i], -0.225 / len, 1e-6);
        EXPECT_NEAR(m.normal[3 * i + 1], 1 / len, 1e-6);
        EXPECT_NEAR(m.normal[3 * i + 2], 0, 1e-6);
    }
    EXPECT_FLOAT_EQ(m.position[3 * 3 + 1], 0.6f * 0.75f);  // row 1, column 4: y
    EXPECT_FLOAT_EQ(m.position[3 * 11 + 2], 1.0f);           // the last row at z = 1
    EXPECT_FLOAT_EQ(m.row[11], 3.0f);
}

TEST(GlModel, ModelFilesReadBackAndViewFile) {
    GL_GRID_TYPE g;
    g.rows = 5, g.cols = 7;
    g.h.assign(35, 0.5f);
    GL_VIEW_TYPE v;
    GL_MESH_TYPE m;
    Gl_Mesh(g, v, m);
    const std::filesystem::path dir = std::filesystem::temp_directory_path() / "zd_gl_model";
    std::filesystem::create_directories(dir);
    std::string msg;
    ASSERT_TRUE(Write_Gl_Model(m, (dir / "m.obj").string(), msg)) << msg;
    ASSERT_TRUE(Write_Gl_Model(m, (dir / "m.PLY").string(), msg)) << msg;
    int v_lines = 0, f_lines = 0, vn_lines = 0;
    std::ifstream obj(dir / "m.obj");
    for (std::string line; std::getline(obj, line);) {
        std::istringstream w(line);
        std::string k;
        w >> k;
        if (k == "v") ++v_lines;
        if (k == "vn") ++vn_lines;
        if (k == "f") {
            ++f_lines;
            for (std::string ref; w >> ref;) {
                const int at = std::stoi(ref.substr(0, ref.find('/')));
                EXPECT_TRUE(at >= 1 && at <= 35) << line;
            }
        }
    }
    EXPECT_EQ(v_lines, 35);
    EXPECT_EQ(vn_lines, 35);
    EXPECT_EQ(f_lines, 2 * 4 * 6);
    std::ifstream ply(dir / "m.PLY");
    std::string text((std::istreambuf_iterator<char>(ply)), std::istreambuf_iterator<char>());
    EXPECT_NE(text.find("element vertex 35\n"), std::string::npos);
    EXPECT_NE(text.find("element face 48\n"), std::string::npos);
    EXPECT_FALSE(Write_Gl_Model(m, (dir / "m.stl").string(), msg));
    EXPECT_FALSE(std::filesystem::exists(dir / "m.stl"));
    std::filesystem::remove_all(dir);

    // the view file round trip, and a bad line that changes nothing
    v.render = MODEL_RENDER::Ribbons, v.log = true, v.rotation = 12.5, v.elevation = -20, v.specular = 0.7;
    v.colour_scale = 2;
    GL_VIEW_TYPE back;
    ASSERT_TRUE(Read_Gl_View_Text(Gl_View_Text(v), back, msg)) << msg;
    EXPECT_EQ(Gl_View_Text(back), Gl_View_Text(v));
    const std::string before = Gl_View_Text(back);
    for (const char* bad : {"elevation 95\n", "render cubes\n", "zoom x\n", "colour_scale 3\n", "shininess 4\n"}) {
        EXPECT_FALSE(Read_Gl_View_Text(std::string("rotation 40\n") + bad, back, msg)) << bad;
        EXPECT_NE(msg.find("line 2"), std::string::npos) << msg;
        EXPECT_EQ(Gl_View_Text(back), before);
    }
}

}  // namespace
