#include "peaks/lsq_report.h"

#include <cmath>
#include <cstdio>
#include <vector>

#include "support/text_file.h"

namespace hxl {

namespace {

std::string Format(const char* fmt, auto... v) {
    char buf[256];
    std::snprintf(buf, sizeof buf, fmt, v...);
    return buf;
}

// Whole per cent, as the listing shows them.
int Percent(double c) { return static_cast<int>(std::lround(100.0 * c)); }

}  // namespace

bool Info_LSQ_LM(float chi2, std::ostream& lun, int m, const Array1<float>& x, const Array1<float>& y,
                 const Array1<float>& yc, const Array1<float>& w, const LSQ_CONDITIONS_TYPE& conditions,
                 const LSQ_STATE_VECTOR_TYPE& vs, const LSQ_OUTCOME_TYPE& outcome, const std::string& xy_file,
                 bool matrix, std::string& message) {
    message.clear();
    m = std::min({m, x.size(), y.size(), yc.size(), w.size()});
    std::vector<int> free;
    for (int k = 1; k <= std::min(vs.np, vs.code.size()); ++k)
        if (vs.code(k) == 1) free.push_back(k);
    const int n = static_cast<int>(free.size());

    // sums in double: tens of thousands of float terms
    double sum_abs = 0.0, sum_y = 0.0, sum_wd2 = 0.0, sum_wy2 = 0.0;
    for (int i = 1; i <= m; ++i) {
        const double d = static_cast<double>(y(i)) - yc(i);
        sum_abs += std::fabs(d);
        sum_y += std::fabs(static_cast<double>(y(i)));
        sum_wd2 += w(i) * d * d;
        sum_wy2 += w(i) * static_cast<double>(y(i)) * y(i);
    }
    const double rfact = sum_y > 0.0 ? 100.0 * sum_abs / sum_y : 0.0;
    const double rwfact = sum_wy2 > 0.0 ? 100.0 * std::sqrt(sum_wd2 / sum_wy2) : 0.0;
    const double rex = sum_wy2 > 0.0 ? 100.0 * std::sqrt(std::max(m - n, 0) / sum_wy2) : 0.0;
    lun << Format("  Rfact= %10.4f   Rwfact= %10.4f   Rex= %10.4f\n", rfact, rwfact, rex);
    lun << "  Final value of Marquardt F-Lambda = " << Format("%.5g", outcome.lambda) << "\n";

    const bool have = outcome.n == n && outcome.covar.size() == static_cast<std::size_t>(n) * static_cast<std::size_t>(n);
    auto corr = [&](int i, int j) {
        const auto at = [&](int r, int c) { return static_cast<double>(outcome.covar[static_cast<std::size_t>(c) * n + r]); };
        const double d = std::sqrt(at(i, i) * at(j, j));
        return d > 0.0 ? at(i, j) / d : 0.0;
    };
    if (have) {
        if (matrix) {
            lun << " => Correlation Matrix: \n";
            for (int i = 0; i < n; ++i) {
                for (int j = 0; j < n; ++j) {
                    lun << Format("%4d", Percent(corr(i, j)));
                    if ((j + 1) % 25 == 0 && j + 1 < n) lun << "\n";
                }
                lun << "\n";
            }
        }
        int count = 0;
        for (int i = 0; i < n; ++i)
            for (int j = i + 1; j < n; ++j) {
                const int p = Percent(corr(i, j));
                if (std::abs(p) <= conditions.corrmax) continue;
                if (count == 0)
                    lun << "\n    Correlation:" << " > " << conditions.corrmax << "% for parameters:   \n";
                ++count;
                lun << "      " << vs.nampar(free[static_cast<std::size_t>(i)]) << " & "
                    << vs.nampar(free[static_cast<std::size_t>(j)]) << Format("%6d", p) << "\n";
            }
        if (count == 0)
            lun << " => There is no correlations greater than " << conditions.corrmax << "\n";
        else
            lun << " => There are " << count << " values of Correlation > " << conditions.corrmax << "\n";
    }

    lun << "\n      FINAL LIST OF REFINED PARAMETERS AND STANDARD DEVIATIONS\n"
        << "      --------------------------------------------------------\n\n"
        << "    #   Parameter name                       No.(Model)         Final-Value   Standard Deviation\n\n";
    for (int j = 0; j < n; ++j) {
        const int k = free[static_cast<std::size_t>(j)];
        const std::string name = k <= vs.nampar.size() ? vs.nampar(k) : std::string();
        lun << Format("%5d   %-37s%10d%20.6f%21.6f\n", j + 1, name.c_str(), k, static_cast<double>(vs.pv(k)),
                      k <= vs.spv.size() ? static_cast<double>(vs.spv(k)) : 0.0);
    }
    lun << "\n => Final value of Chi2: " << Format("%.5f", static_cast<double>(chi2)) << "\n";

    if (xy_file.empty()) return true;
    std::string text = "!        X             Y-obs          Y-calc           Sigma\n";
    for (int i = 1; i <= m; ++i) {
        const double s = w(i) > 0.0f ? 1.0 / std::sqrt(static_cast<double>(w(i))) : 0.0;
        text += Format("%14.5f%16.5f%16.5f%16.5f\n", static_cast<double>(x(i)), static_cast<double>(y(i)),
                       static_cast<double>(yc(i)), s);
    }
    return Replace_File_Told(xy_file, text, message);
}

}  // namespace hxl
