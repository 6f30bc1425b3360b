// zendrite-batch info FOLDER: the folder stands for its pattern files in natural order.
#include <gtest/gtest.h>

#include <sstream>

#include "../patterns/temp_files.h"
#include "app/batch/batch_verbs.h"
#include "app/store/zendrite_param_global.h"

TEST(BatchInfoFolder, FilesInNaturalOrderAndFailuresTold) {
    ztest::Temp_Dir d;
    for (int k : {10, 2, 1}) {
        std::string s;
        for (int i = 0; i < 12; ++i) s += std::to_string(5 + i) + " " + std::to_string(100 * k + i) + " 3\n";
        d.Write("scan_" + std::to_string(k) + ".xye", s);
    }
    d.Write("scan_3.xye", "");
    d.Write("log.txt", "nothing\n");
    zendrite::Reset_Store();
    std::ostringstream out, err;
    const int rc = zendrite::Batch_Main({"info", d.Path()}, out, err);
    EXPECT_EQ(rc, 1);  // a file of the folder did not load
    const std::string o = out.str(), e = err.str();
    const std::size_t a = o.find("scan_1.xye"), b = o.find("scan_2.xye"), c = o.find("scan_10.xye");
    ASSERT_NE(a, std::string::npos) << o;
    ASSERT_NE(b, std::string::npos) << o;
    ASSERT_NE(c, std::string::npos) << o;
    EXPECT_LT(a, b);
    EXPECT_LT(b, c);
    EXPECT_NE(o.find("slot 3\n"), std::string::npos);
    EXPECT_EQ(o.find("slot 4\n"), std::string::npos);
    EXPECT_NE(o.find("  ymin     1000\n"), std::string::npos) << o;  // scan_10 read whole
    EXPECT_NE(e.find("scan_3.xye"), std::string::npos) << e;
    EXPECT_NE(e.find("log.txt: format not known, skipped"), std::string::npos) << e;
    // A folder that is not there is a plain missing file.
    std::ostringstream o2, e2;
    EXPECT_NE(zendrite::Batch_Main({"info", d.Path() + "/none"}, o2, e2), 0);
    zendrite::Reset_Store();
}
