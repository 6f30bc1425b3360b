// The formats a picture file's name gives and the sizes its options allow, at the edges.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "app/present.h"

namespace {

using zendrite::PICTURE_OPTIONS;

TEST(PictureOptions, FormatByExtensionWhateverItsCase) {
    EXPECT_EQ(zendrite::Picture_Format("a/b/plot.PNG"), "png");
    EXPECT_EQ(zendrite::Picture_Format("plot.jpeg"), "jpg");
    EXPECT_EQ(zendrite::Picture_Format("plot.TIFF"), "tif");
    EXPECT_EQ(zendrite::Picture_Format("plot.hpgl"), "plt");
    EXPECT_EQ(zendrite::Picture_Format("plot.eps"), "eps");
    EXPECT_EQ(zendrite::Picture_Format("plot.dxf"), "dxf");
    EXPECT_EQ(zendrite::Picture_Format("plot.pcl"), "");   // not written
    EXPECT_EQ(zendrite::Picture_Format("plot"), "");
    EXPECT_EQ(zendrite::Picture_Format("plot."), "");
    EXPECT_EQ(zendrite::Picture_Format(".png"), "");       // a hidden file without extension
    EXPECT_EQ(zendrite::Picture_Format("dir.png/plot"), "");
}

TEST(PictureOptions, SizesAndResolutionsInsideTheirBoundsOnly) {
    auto pixels = [](double w, double h, bool px, int dpi, int& W, int& H, std::string& m) {
        PICTURE_OPTIONS o;
        o.width = w, o.height = h, o.pixels = px, o.dpi = dpi;
        return zendrite::Picture_Pixels(o, W, H, m);
    };
    int W = 0, H = 0;
    std::string m;
    // 160 x 107 mm at 300 dpi: 1889.76 and 1263.78 pixels, rounded.
    ASSERT_TRUE(pixels(160, 107, false, 300, W, H, m)) << m;
    EXPECT_EQ(W, 1890);
    EXPECT_EQ(H, 1264);
    EXPECT_TRUE(pixels(10, 1000, false, 36, W, H, m)) << m;
    EXPECT_FALSE(pixels(9.99, 50, false, 300, W, H, m));
    EXPECT_NE(m.find("between 10 and 1000 mm"), std::string::npos) << m;
    EXPECT_FALSE(pixels(50, 1000.1, false, 300, W, H, m));
    EXPECT_FALSE(pixels(0, 0, false, 300, W, H, m));
    EXPECT_FALSE(pixels(1e6, 100, false, 300, W, H, m));
    EXPECT_FALSE(pixels(std::numeric_limits<double>::quiet_NaN(), 100, false, 300, W, H, m));
    // 1000 mm at 1200 dpi would be 47244 pixels a side.
    EXPECT_FALSE(pixels(1000, 100, false, 1200, W, H, m));
    EXPECT_NE(m.find("choose a lower resolution"), std::string::npos) << m;
    ASSERT_TRUE(pixels(423, 100, false, 1200, W, H, m)) << m;  // 19984 pixels
    EXPECT_EQ(W, 19984);
    EXPECT_FALSE(pixels(100, 100, false, 35, W, H, m));
    EXPECT_FALSE(pixels(100, 100, false, 1201, W, H, m));
    EXPECT_NE(m.find("between 36 and 1200 dpi"), std::string::npos) << m;
    ASSERT_TRUE(pixels(16, 20000, true, 300, W, H, m)) << m;
    EXPECT_EQ(W, 16);
    EXPECT_EQ(H, 20000);
    EXPECT_FALSE(pixels(15, 100, true, 300, W, H, m));
    EXPECT_FALSE(pixels(100, 20001, true, 300, W, H, m));
    PICTURE_OPTIONS o;
    o.line_factor = 0;
    EXPECT_FALSE(zendrite::Picture_Pixels(o, W, H, m));
    o.line_factor = 1, o.font_scale = 11;
    EXPECT_FALSE(zendrite::Picture_Pixels(o, W, H, m));
}

}  // namespace
