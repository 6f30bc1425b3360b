#pragma once
// The 3D views of many patterns without a window system: the projection of the box
// X (0..1) by depth (first row 0, last row 1) by height (0..1), the removal of hidden
// lines of a stack, and a shaded surface rendered into a picture of pixels.
#include <vector>

namespace hxl {

struct VIEW_3D_TYPE {
    double rotation = 0;   // degrees about the vertical axis
    double elevation = 22; // degrees above the horizon
    double offset = 0;     // extra rise of the last row over the first, in heights of the box
    double height = 1;     // height of the box against its width and depth
};

struct PROJECTED_TYPE {
    double u = 0, w = 0;  // across and up the screen
    double depth = 0;     // larger is farther from the viewer
};
PROJECTED_TYPE Project(const VIEW_3D_TYPE& view, double x, double d, double h);
// The same with the angles' sines and cosines worked out once, for many points.
struct PROJECTOR_TYPE {
    explicit PROJECTOR_TYPE(const VIEW_3D_TYPE& view);
    PROJECTED_TYPE operator()(double x, double d, double h) const;
    double cr = 1, sr = 0, ce = 1, se = 0, height = 1, offset = 0;
};

// Extent on the screen of the whole box.
void Projected_Box(const VIEW_3D_TYPE& view, double& umin, double& umax, double& wmin, double& wmax);

// True when the first row is nearer the viewer than the last.
bool First_Row_In_Front(const VIEW_3D_TYPE& view);

// The floating horizon of a stack drawn front to back: per pixel column, the highest
// point drawn so far. A point hidden under it lies behind a nearer pattern.
struct HORIZON_TYPE {
    std::vector<float> top;
    std::vector<float> line;  // work space of Visible_Pieces
    void Reset(int width);
};

// Polylines kept one after another in two arrays (a stack of thousands of patterns makes
// tens of thousands of pieces: one allocation each would cost more than drawing them).
// Piece k runs from point start[k] to the next piece's start, the last to the end.
struct POLYLINES_TYPE {
    std::vector<float> u, w;
    std::vector<int> start;
    std::size_t Count() const { return start.size(); }
    std::size_t Size(std::size_t k) const {
        return (k + 1 < start.size() ? static_cast<std::size_t>(start[k + 1]) : u.size()) - static_cast<std::size_t>(start[k]);
    }
    float U(std::size_t k, std::size_t i) const { return u[static_cast<std::size_t>(start[k]) + i]; }
    float W(std::size_t k, std::size_t i) const { return w[static_cast<std::size_t>(start[k]) + i]; }
    void Clear() { u.clear(), w.clear(), start.clear(); }
};

// The parts of a polyline (pixel units, Y up) that rise above the horizon, added to `out`
// as polylines sampled at the centres of the pixel columns (x = column + 0.5), with the
// points where a part meets the horizon; the horizon is then raised under the whole line.
// A part of one point is not kept. Returns the number of parts added.
int Visible_Pieces(const std::vector<float>& u, const std::vector<float>& w, HORIZON_TYPE& horizon, POLYLINES_TYPE& out);

// The two stages of Visible_Pieces, so that the first, which needs no horizon, can run for
// many rows at once. Column_Line: the line at the centre of each of `width` columns it
// crosses (where it folds back, its highest point; -inf where it is not), and the first and
// last column it reaches (c0 > c1 when none). Visible_Line: the parts of such a line above
// the horizon, added to `out`, and the horizon raised under it.
void Column_Line(const float* u, const float* w, std::size_t n, int width, float* at, int& c0, int& c1);
int Visible_Line(const float* at, int c0, int c1, HORIZON_TYPE& horizon, POLYLINES_TYPE& out);

// A shaded surface of heights (rows x cols, row-major, 0..1, NaN empty) with colours
// per cell (0xRRGGBB), rendered with a depth buffer into width x height pixels (first row
// the top); pixels the surface does not cover hold `background`. The box is fitted to the
// picture as Projected_Box gives it.
void Render_Surface(const std::vector<float>& heights, const std::vector<unsigned>& colours, int rows, int cols,
                    const VIEW_3D_TYPE& view, int width, int height, unsigned background,
                    std::vector<unsigned>& picture);

// A grid averaged in blocks down to at most max_rows x max_cols (NaN cells left out).
void Reduce_Grid(const std::vector<float>& in, int rows, int cols, int max_rows, int max_cols, std::vector<float>& out,
                 int& out_rows, int& out_cols);

}  // namespace hxl
