#include "graphics/gl_model.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <sstream>

#include "support/text_file.h"

namespace zendrite {

void Gl_Grid(const hxl::MULTI_MAP_TYPE& map, int max_rows, int max_cols, bool log, float zmin, float zmax, float zpos,
             GL_GRID_TYPE& grid) {
    // Blocks keep their highest cell: a peak narrower than a block keeps its height as it
    // moves from pattern to pattern, where a mean would rise and fall with where it falls.
    grid.rows = std::clamp(map.nrows, 0, std::max(max_rows, 1));
    grid.cols = std::clamp(map.ncols, 0, std::max(max_cols, 2));
    std::vector<float> reduced(static_cast<std::size_t>(grid.rows) * static_cast<std::size_t>(grid.cols),
                               std::numeric_limits<float>::quiet_NaN());
    for (int r = 0; r < grid.rows; ++r) {
        const int r0 = r * map.nrows / grid.rows, r1 = std::max(r0 + 1, (r + 1) * map.nrows / grid.rows);
        for (int c = 0; c < grid.cols; ++c) {
            const int c0 = c * map.ncols / grid.cols, c1 = std::max(c0 + 1, (c + 1) * map.ncols / grid.cols);
            float top = std::numeric_limits<float>::quiet_NaN();
            for (int i = r0; i < r1; ++i)
                for (int k = c0; k < c1; ++k) {
                    const float z = map.z[static_cast<std::size_t>(i) * static_cast<std::size_t>(map.ncols) + static_cast<std::size_t>(k)];
                    if (std::isfinite(z) && !(z <= top)) top = z;
                }
            reduced[static_cast<std::size_t>(r) * static_cast<std::size_t>(grid.cols) + static_cast<std::size_t>(c)] = top;
        }
    }
    grid.h.assign(reduced.size(), 0.0f);
    const bool use_log = log && zpos > 0 && zmax > zpos;
    for (std::size_t i = 0; i < reduced.size(); ++i) {
        const double f = use_log ? hxl::Scale_Fraction(reduced[i], zpos, zmax, true)
                                 : hxl::Scale_Fraction(reduced[i], zmin, zmax > zmin ? zmax : zmin + 1, false);
        grid.h[i] = std::isfinite(f) ? static_cast<float>(std::clamp(f, 0.0, 1.0)) : 0.0f;
    }
}

namespace {

void colour_of(const GL_VIEW_TYPE& view, float h, std::vector<float>& out) {
    const unsigned rgb = hxl::Scale_Colour(view.colour_scale, h);
    out.push_back(static_cast<float>(rgb >> 16 & 0xFF) / 255.0f);
    out.push_back(static_cast<float>(rgb >> 8 & 0xFF) / 255.0f);
    out.push_back(static_cast<float>(rgb & 0xFF) / 255.0f);
}

void put3(std::vector<float>& v, float a, float b, float c) { v.push_back(a), v.push_back(b), v.push_back(c); }

}  // namespace

void Gl_Mesh(const GL_GRID_TYPE& g, const GL_VIEW_TYPE& view, GL_MESH_TYPE& m) {
    m = GL_MESH_TYPE{};
    m.rows = g.rows, m.cols = g.cols;
    if (g.rows < 1 || g.cols < 2) return;
    const float height = static_cast<float>(view.height);
    const float dx = 2.0f / static_cast<float>(g.cols - 1), dz = g.rows > 1 ? 2.0f / static_cast<float>(g.rows - 1) : 2.0f;
    auto xs = [&](int c) { return -1.0f + dx * static_cast<float>(c); };
    auto zs = [&](int r) { return g.rows > 1 ? -1.0f + dz * static_cast<float>(r) : 0.0f; };
    const std::size_t n = static_cast<std::size_t>(g.rows) * static_cast<std::size_t>(g.cols);
    if (view.render == MODEL_RENDER::Ribbons) {
        // a curtain per row, from the floor up to the pattern, facing the rows' axis
        m.primitive = GL_MESH_TYPE::Triangles;
        for (int r = 0; r < g.rows; ++r)
            for (int c = 0; c < g.cols; ++c) {
                const float h = g.At(r, c);
                for (int top = 0; top < 2; ++top) {
                    put3(m.position, xs(c), top ? height * h : 0.0f, zs(r));
                    put3(m.normal, 0.0f, 0.25f, 0.97f);
                    colour_of(view, h, m.colour);
                    m.row.push_back(static_cast<float>(r + 1));
                }
                if (c + 1 < g.cols) {
                    const unsigned a = static_cast<unsigned>((static_cast<std::size_t>(r) * g.cols + c) * 2);
                    for (unsigned k : {a, a + 2, a + 1, a + 1, a + 2, a + 3}) m.index.push_back(k);
                }
            }
        return;
    }
    m.position.reserve(3 * n), m.normal.reserve(3 * n), m.colour.reserve(3 * n), m.row.reserve(n);
    for (int r = 0; r < g.rows; ++r)
        for (int c = 0; c < g.cols; ++c) {
            const float h = g.At(r, c);
            put3(m.position, xs(c), height * h, zs(r));
            // the normal from the slopes across and along the rows
            const float sx = height * (g.At(r, std::min(c + 1, g.cols - 1)) - g.At(r, std::max(c - 1, 0))) /
                             (dx * static_cast<float>(std::min(c + 1, g.cols - 1) - std::max(c - 1, 0)));
            const float sz = g.rows > 1 ? height * (g.At(std::min(r + 1, g.rows - 1), c) - g.At(std::max(r - 1, 0), c)) /
                                              (dz * static_cast<float>(std::min(r + 1, g.rows - 1) - std::max(r - 1, 0)))
                                        : 0.0f;
            const float len = std::sqrt(sx * sx + 1 + sz * sz);
            put3(m.normal, -sx / len, 1 / len, -sz / len);
            colour_of(view, h, m.colour);
            m.row.push_back(static_cast<float>(r + 1));
        }
    auto at = [&](int r, int c) { return static_cast<unsigned>(static_cast<std::size_t>(r) * g.cols + c); };
    switch (view.render) {
    case MODEL_RENDER::Points:
        m.primitive = GL_MESH_TYPE::Points;
        for (std::size_t i = 0; i < n; ++i) m.index.push_back(static_cast<unsigned>(i));
        break;
    case MODEL_RENDER::Wire:
        m.primitive = GL_MESH_TYPE::Lines;
        for (int r = 0; r < g.rows; ++r)
            for (int c = 0; c < g.cols; ++c) {
                if (c + 1 < g.cols) m.index.push_back(at(r, c)), m.index.push_back(at(r, c + 1));
                if (r + 1 < g.rows) m.index.push_back(at(r, c)), m.index.push_back(at(r + 1, c));
            }
        break;
    default:
        m.primitive = GL_MESH_TYPE::Triangles;
        for (int r = 0; r + 1 < g.rows; ++r)
            for (int c = 0; c + 1 < g.cols; ++c)
                for (unsigned k : {at(r, c), at(r, c + 1), at(r + 1, c), at(r + 1, c), at(r, c + 1), at(r + 1, c + 1)})
                    m.index.push_back(k);
        break;
    }
}

bool Write_Gl_Model(const GL_MESH_TYPE& m, const std::string& file, std::string& message) {
    std::string ext = file.size() >= 4 ? file.substr(file.size() - 4) : "";
    for (char& ch : ext) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
    const std::size_t nv = m.position.size() / 3;
    const std::size_t per = m.primitive == GL_MESH_TYPE::Triangles ? 3 : m.primitive == GL_MESH_TYPE::Lines ? 2 : 1;
    const std::size_t nf = m.index.size() / per;
    std::string t;
    t.reserve(nv * 64 + nf * 24);
    char buf[160];
    if (ext == ".obj") {
        t += "# Zendrite model: " + std::to_string(m.rows) + " patterns x " + std::to_string(m.cols) + " columns\n";
        for (std::size_t i = 0; i < nv; ++i) {
            // vertex colours after the position, as many readers take them
            std::snprintf(buf, sizeof buf, "v %.5f %.5f %.5f %.4f %.4f %.4f\n", m.position[3 * i], m.position[3 * i + 1],
                          m.position[3 * i + 2], m.colour[3 * i], m.colour[3 * i + 1], m.colour[3 * i + 2]);
            t += buf;
        }
        if (m.primitive == GL_MESH_TYPE::Triangles)
            for (std::size_t i = 0; i < nv; ++i) {
                std::snprintf(buf, sizeof buf, "vn %.5f %.5f %.5f\n", m.normal[3 * i], m.normal[3 * i + 1], m.normal[3 * i + 2]);
                t += buf;
            }
        const char* kind = per == 3 ? "f" : per == 2 ? "l" : "p";
        for (std::size_t f = 0; f < nf; ++f) {
            t += kind;
            for (std::size_t k = 0; k < per; ++k) {
                const unsigned v = m.index[f * per + k] + 1;
                std::snprintf(buf, sizeof buf, per == 3 ? " %u//%u" : " %u", v, v);
                t += buf;
            }
            t += '\n';
        }
    } else if (ext == ".ply") {
        t += "ply\nformat ascii 1.0\ncomment Zendrite model\nelement vertex " + std::to_string(nv) +
             "\nproperty float x\nproperty float y\nproperty float z\nproperty uchar red\nproperty uchar green\n"
             "property uchar blue\n";
        if (per >= 2) t += std::string("element ") + (per == 3 ? "face" : "edge") + " " + std::to_string(nf) + "\n";
        if (per == 3) t += "property list uchar int vertex_indices\n";
        if (per == 2) t += "property int vertex1\nproperty int vertex2\n";
        t += "end_header\n";
        for (std::size_t i = 0; i < nv; ++i) {
            auto byte = [&](float v) { return static_cast<int>(std::lround(std::clamp(v, 0.0f, 1.0f) * 255)); };
            std::snprintf(buf, sizeof buf, "%.5f %.5f %.5f %d %d %d\n", m.position[3 * i], m.position[3 * i + 1],
                          m.position[3 * i + 2], byte(m.colour[3 * i]), byte(m.colour[3 * i + 1]), byte(m.colour[3 * i + 2]));
            t += buf;
        }
        for (std::size_t f = 0; f < nf && per >= 2; ++f) {
            if (per == 3) std::snprintf(buf, sizeof buf, "3 %u %u %u\n", m.index[3 * f], m.index[3 * f + 1], m.index[3 * f + 2]);
            else std::snprintf(buf, sizeof buf, "%u %u\n", m.index[2 * f], m.index[2 * f + 1]);
            t += buf;
        }
    } else {
        message = "A model is saved as .obj or .ply: " + file;
        return false;
    }
    return hxl::Replace_File_Told(file, t, message);
}

namespace {
const char* kRenderNames[] = {"points", "wire", "flat", "smooth", "ribbons"};
}

std::string Gl_View_Text(const GL_VIEW_TYPE& v) {
    std::ostringstream o;
    o << "# Zendrite OpenGL view\n";
    o << "render " << kRenderNames[static_cast<int>(v.render) - 1] << "\n";
    o << "log " << (v.log ? 1 : 0) << "\nheight " << v.height << "\nrotation " << v.rotation << "\nelevation "
      << v.elevation << "\nzoom " << v.zoom << "\nlight_azimuth " << v.light_azimuth << "\nlight_elevation "
      << v.light_elevation << "\nambient " << v.ambient << "\ndiffuse " << v.diffuse << "\nspecular " << v.specular
      << "\ncolour_scale " << v.colour_scale << "\nturn_speed " << v.turn_speed << "\n";
    return o.str();
}

bool Read_Gl_View_Text(const std::string& text, GL_VIEW_TYPE& view, std::string& message) {
    GL_VIEW_TYPE v = view;
    std::istringstream in(text);
    int lno = 0;
    for (std::string line; std::getline(in, line);) {
        ++lno;
        std::istringstream w(line);
        std::string key;
        if (!(w >> key) || key[0] == '#') continue;
        auto bad = [&] {
            message = "View file, line " + std::to_string(lno) + ": cannot read \"" + line + "\"";
            return false;
        };
        if (key == "render") {
            std::string name;
            w >> name;
            const auto* it = std::find(std::begin(kRenderNames), std::end(kRenderNames), name);
            if (it == std::end(kRenderNames)) return bad();
            v.render = static_cast<MODEL_RENDER>(it - std::begin(kRenderNames) + 1);
            continue;
        }
        double x = 0;
        if (!(w >> x) || !std::isfinite(x)) return bad();
        struct FIELD {
            const char* key;
            double* at;
            double lo, hi;
        };
        const FIELD fields[] = {{"height", &v.height, 0.01, 10},       {"rotation", &v.rotation, -3600, 3600},
                                {"elevation", &v.elevation, -90, 90},   {"zoom", &v.zoom, 0.05, 50},
                                {"light_azimuth", &v.light_azimuth, -360, 360},
                                {"light_elevation", &v.light_elevation, -90, 90},
                                {"ambient", &v.ambient, 0, 1},          {"diffuse", &v.diffuse, 0, 1},
                                {"specular", &v.specular, 0, 1},        {"turn_speed", &v.turn_speed, -720, 720}};
        bool taken = false;
        for (const FIELD& f : fields)
            if (key == f.key) {
                if (x < f.lo || x > f.hi) return bad();
                *f.at = x, taken = true;
            }
        if (key == "log") v.log = x != 0, taken = true;
        if (key == "colour_scale") {
            if (x != 1 && x != 2) return bad();
            v.colour_scale = static_cast<int>(x), taken = true;
        }
        if (!taken) return bad();
    }
    view = v;
    return true;
}

}  // namespace zendrite
