// Curves given between Begin_Curve_Batch and End_Curve_Batch are reduced on two threads:
// the picture must be the one drawn curve by curve, in the order the curves were given.
#include <algorithm>

#include "plot_fixture.h"

using namespace ptest;

namespace {

struct CURVES {
    std::vector<std::vector<float>> x, y;
    std::vector<CURVE_LOOK> look;
    std::vector<bool> log;
};

// Dense overlapping curves in many colours, with a sparse one, a log one, one whose X goes
// back and forth, a patterned line and a thick one among them: each kind takes its own path
// through the reduction, and the painter's curves fall between the runs of the others.
CURVES Many_Curves() {
    CURVES c;
    for (int k = 0; k < 80; ++k) {
        const int n = k == 40 ? 60 : 5000;
        std::vector<float> x(static_cast<std::size_t>(n)), y(static_cast<std::size_t>(n));
        for (int i = 0; i < n; ++i) {
            const int j = k == 50 ? (i * 37) % n : i;  // X out of order
            const float xi = -5.0f + 110.0f * static_cast<float>(j) / static_cast<float>(n - 1);
            const float peak = std::fmod(xi + 20.0f, 10.0f) - 5.0f;
            x[static_cast<std::size_t>(i)] = xi;
            y[static_cast<std::size_t>(i)] = 100.0f + 8.0f * static_cast<float>(k) + 300.0f * std::exp(-peak * peak) +
                                             static_cast<float>((j * 7919) % 53);
        }
        if (k == 60) y[2500] = 990.0f;  // a spike
        CURVE_LOOK look;
        look.marker = k % 3 == 0 ? 1 : 2, look.marker_colour = 0x010101 * (k * 3) + 0x0000FF * (k % 2);
        look.line_type = k % 4 == 1 ? -1 : 0, look.line_colour = k % 5 == 0 ? look.marker_colour : 0x00FF00 - k;
        // a patterned line and a thick one: the painter draws them between the runs
        if (k == 22) look.line_type = 2;
        if (k == 34) look.line_width = 3;
        c.x.push_back(std::move(x)), c.y.push_back(std::move(y)), c.look.push_back(look), c.log.push_back(k == 70);
    }
    return c;
}

// Error bars and a difference curve from arrays that live only until they are drawn.
void Draw_From_Scratch(const CURVES& c, int k) {
    const std::vector<float>& x = c.x[static_cast<std::size_t>(k)];
    const int n = static_cast<int>(x.size());
    float* low = Curve_Scratch(n);
    float* high = Curve_Scratch(n);
    for (int i = 0; i < n; ++i)
        low[i] = 500.0f - static_cast<float>(i % 40), high[i] = 520.0f + static_cast<float>(i % 30);
    Draw_Error_Bars(x.data(), low, high, n, 0x808000, 5);
    float* d = Curve_Scratch(n);
    for (int i = 0; i < n; ++i) d[i] = c.y[static_cast<std::size_t>(k)][static_cast<std::size_t>(i)] - 50.0f;
    CURVE_LOOK look;
    look.line_type = 0, look.line_colour = 0x0000AA;
    Draw_Curve(x.data(), d, n, false, look);
}

void Draw_All(const CURVES& c) {
    for (std::size_t k = 0; k < c.x.size(); ++k) {
        Draw_Curve(c.x[k].data(), c.y[k].data(), static_cast<int>(c.x[k].size()), c.log[k], c.look[k]);
        if (k % 10 == 3) Draw_From_Scratch(c, static_cast<int>(k));
    }
}

}  // namespace

TEST(CurveBatch, TwoThreadsDrawTheSamePictureInTheOrderGiven) {
    const CURVES c = Many_Curves();
    Frame_On_Window(100, 1000);
    Draw_All(c);
    const std::vector<int> one_by_one = Picture();
    ASSERT_GT(std::count_if(one_by_one.begin(), one_by_one.end(), [](int p) { return p != 0xFFFFFF; }), 50000);

    for (int round = 0; round < 3; ++round) {  // the second thread is kept between frames
        Frame_On_Window(100, 1000);
        Begin_Curve_Batch();
        Draw_All(c);
        End_Curve_Batch();
        EXPECT_TRUE(Picture() == one_by_one) << "round " << round;
    }

    // a frame set while curves wait draws them in the frame they were given in
    Frame_On_Window(100, 1000);
    Begin_Curve_Batch();
    Draw_All(c);
    const std::vector<int> waiting = Picture();
    Set_Frame_Pixels(0, 50, 0, 500, WInfoWindow(1), WInfoWindow(2));
    EXPECT_TRUE(Picture() != waiting);  // they were drawn when the frame changed
    End_Curve_Batch();
    EXPECT_TRUE(Picture() == one_by_one);
}
