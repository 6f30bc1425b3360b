#include "calc/efficiency_file.h"

#include <algorithm>
#include <cmath>
#include <fstream>

#include "support/edit_format.h"
#include "support/list_read.h"

namespace hxl {

namespace {
constexpr float kSmallestEfficiency = 0.0001f;
}

bool Read_Efficiency_File(const std::string& file, int n, Array1<float>& e, int& read, std::string& message) {
    read = 0;
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        message = "ERROR opening the file " + file;
        return false;
    }
    e.resize(n, 1.0f);
    std::string line;
    // One line a point: a line read across two lines would shift every later point.
    while (read < n && std::getline(in, line)) {
        float v[3] = {0, 0, 0};
        if (List_Read(line, v, 3) != List_Result::Ok || !std::isfinite(v[2])) break;
        ++read;
        e(read) = v[2] < kSmallestEfficiency ? 1.0f : v[2];
    }
    return true;
}

void Apply_Efficiency_Pattern(DIFFRACTION_PATTERN_TYPE& p, const Array1<float>& e) {
    const int n = std::min({p.npts, p.y.size(), e.size()});
    const bool sigma = p.sigma.size() >= n;
    for (int i = 1; i <= n; ++i) {
        p.y(i) /= e(i);
        // sigma holds variances while sig_var is set
        if (sigma) p.sigma(i) /= p.sig_var ? e(i) * e(i) : e(i);
    }
}

std::string Efficiency_Lines(const std::vector<float>& a, const std::vector<float>& b) {
    static const EDIT_FORMAT_TYPE format = [] {
        EDIT_FORMAT_TYPE f;
        std::string m;
        Parse_Edit_Format("(i5,2f14.5)", f, m);
        return f;
    }();
    std::string out;
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
        Edit_Writer w(format, out);
        w.Int(static_cast<long long>(i + 1)).Real(a[i]).Real(b[i]);
    }
    return out;
}

std::string Smoothing_Efficiency_Text(const Array1<float>& raw, const Array1<float>& smoothed, int n) {
    std::vector<float> a, b;
    float last = 1.0f;
    for (int i = 1; i <= n && i <= raw.size() && i <= smoothed.size(); ++i) {
        if (smoothed(i) != 0.0f) last = raw(i) / smoothed(i);
        a.push_back(raw(i));
        b.push_back(last);
    }
    return Efficiency_Lines(a, b);
}

}  // namespace hxl
