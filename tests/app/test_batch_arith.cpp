// The verbs sum, average, difference, smooth and scale: results on a real scan
// and the refusals with the program's texts and status 1.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/batch/batch_verbs.h"

namespace fs = std::filesystem;

namespace {

const std::string kScan = std::string(ZD_TEST_DATA) + "/patterns/210520step1_30min.xy";

int batch(const std::vector<std::string>& args, std::string& err) {
    std::ostringstream o, e;
    const int status = zendrite::Batch_Main(args, o, e);
    err = e.str();
    return status;
}

// y column of an .xys file written by the verbs (x, y, sigma after a head line).
std::vector<double> ys(const fs::path& f) {
    std::ifstream in(f);
    std::vector<double> v;
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream s(line);
        double x = 0, y = 0, sg = 0;
        if (s >> x >> y >> sg) v.push_back(y);
    }
    return v;
}

}  // namespace

TEST(BatchArith, ResultsAndRefusals) {
    const fs::path dir = fs::temp_directory_path() / ("zd_batch_arith_" + std::to_string(::getpid()));
    fs::create_directories(dir);
    const std::string a = (dir / "a.xy").string(), shorter = (dir / "short.xy").string();
    fs::copy_file(kScan, a, fs::copy_options::overwrite_existing);
    std::ofstream(shorter) << "5.0 1\n5.1 2\n5.2 3\n5.3 4\n5.4 5\n";
    std::string err;
    const std::vector<double> raw = [&] {
        EXPECT_EQ(batch({"scale", a, "--factor", "1", "--out", (dir / "raw.xys").string()}, err), 0) << err;
        return ys(dir / "raw.xys");
    }();
    ASSERT_EQ(raw.size(), 4489u);
    ASSERT_EQ(batch({"sum", a, a, a, "--out", (dir / "sum.xys").string()}, err), 0) << err;
    const std::vector<double> sum = ys(dir / "sum.xys");
    ASSERT_EQ(sum.size(), raw.size());
    EXPECT_NEAR(sum[100], 3 * raw[100], 1e-3 * raw[100]);
    ASSERT_EQ(batch({"average", a, a, "--out", (dir / "avg.xys").string()}, err), 0) << err;
    EXPECT_NEAR(ys(dir / "avg.xys")[7], raw[7], 1e-3 * raw[7]);
    ASSERT_EQ(batch({"difference", a, a, "--out", (dir / "diff.xys").string()}, err), 0) << err;
    EXPECT_EQ(ys(dir / "diff.xys")[50], 0.0);
    ASSERT_EQ(batch({"scale", a, "--factor", "2", "--shift", "0.5", "--out", (dir / "s.xys").string()}, err), 0) << err;
    EXPECT_NEAR(ys(dir / "s.xys")[0], 2 * raw[0], 1e-3 * raw[0]);
    ASSERT_EQ(batch({"smooth", "poly", a, "--param", "20", "--out", (dir / "p.xys").string()}, err), 0) << err;
    // the two first points survive; the third is the five-point value of the table
    EXPECT_NEAR(ys(dir / "p.xys")[1], raw[1], 1e-3);
    EXPECT_NEAR(ys(dir / "p.xys")[2], 1726.142857, 1e-2);
    ASSERT_EQ(batch({"smooth", "fourier", a, "--param", "5", "--out", (dir / "f.xys").string(), "--eff",
                     (dir / "x.eff").string()},
                    err),
              0)
        << err;
    EXPECT_NEAR(ys(dir / "f.xys")[0], 1734.085726, 0.05);
    EXPECT_TRUE(fs::exists(dir / "x.eff"));

    EXPECT_EQ(batch({"sum", a, shorter, "--out", (dir / "no.xys").string()}, err), 1);
    EXPECT_EQ(err, "ERROR: The X step size of selected profiles are not equal\n");
    EXPECT_EQ(batch({"sum", a, "--out", (dir / "no.xys").string()}, err), 1);
    EXPECT_EQ(err, "ERROR: Only one profile selected to make sum/average\n");
    EXPECT_EQ(batch({"difference", a, shorter, "--out", (dir / "no.xys").string()}, err), 1);
    EXPECT_EQ(err, "Size of selected profiles must be the same\n");
    EXPECT_EQ(batch({"smooth", "fourier", a, "--param", "0", "--out", (dir / "no.xys").string()}, err), 1);
    EXPECT_EQ(err, "Incorrect value of Fourier Windows: FW > Npoints/2 ! Diminish the value of FW !\n");
    EXPECT_EQ(batch({"smooth", "fourier", a, "--param", "2245", "--out", (dir / "no.xys").string()}, err), 1);
    EXPECT_EQ(batch({"smooth", "poly", a, "--param", "21", "--out", (dir / "no.xys").string()}, err), 1);
    EXPECT_EQ(err, "Incorrect value of parameter \n");
    EXPECT_EQ(batch({"scale", a, "--factor", "nan", "--out", (dir / "no.xys").string()}, err), 1);
    EXPECT_FALSE(fs::exists(dir / "no.xys"));

    // Usage errors end with status 2 and name the verb.
    const std::string no = (dir / "no.xys").string();
    EXPECT_EQ(batch({"scale", a, "--factor", "2", "--out"}, err), 2);
    EXPECT_EQ(batch({"smooth", "poly", a, "--width", "3", "--out", no}, err), 2);
    EXPECT_EQ(err, "zendrite-batch smooth: unknown option --width\n");
    EXPECT_EQ(batch({"sum", a, a, "--interpolate", "--mean", "--out", no}, err), 2);
    EXPECT_EQ(err, "zendrite-batch sum: unknown option --mean\n");
    EXPECT_EQ(batch({"difference", a, "--out", no}, err), 2);
    EXPECT_EQ(batch({"smooth", "fourier", a, "--param"}, err), 2);
    // A flag takes no value: the word after it is a file.
    EXPECT_EQ(batch({"average", a, "--interpolate", a, "--out", (dir / "i.xys").string()}, err), 0) << err;
    EXPECT_NEAR(ys(dir / "i.xys")[7], raw[7], 1e-3 * raw[7]);
    EXPECT_FALSE(fs::exists(no));
    fs::remove_all(dir);
}
