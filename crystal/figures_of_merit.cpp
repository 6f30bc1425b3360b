// de Wolff's M(20), Smith and Snyder's F(N) and the unexplained peaks of a trial cell.
#include "crystal/figures_of_merit.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace hxl {

namespace {

constexpr double pi = 3.14159265358979323846;

// Q of hkl in double from the reciprocal metric: small integers times the
// float tensor are exact in double, so equal lines come out equal.
double q_of(const Cell_Record& c, const HKL_GEN_TYPE& r) {
    const double h = r.h, k = r.k, l = r.l;
    const auto& g = c.metric_recip;
    return h * h * g[0][0] + k * k * g[1][1] + l * l * g[2][2] + 2.0 * (h * k * g[0][1] + h * l * g[0][2] + k * l * g[1][2]);
}

// The distinct values of a rising list, counted up to qmax.
int distinct_up_to(const std::vector<double>& q, double qmax) {
    int n = 0;
    double last = -1;
    for (double v : q) {
        if (v > qmax * (1 + 1e-9)) break;
        if (n == 0 || v - last > 1e-9 * v) ++n;
        last = v;
    }
    return n;
}

std::string fmt(const char* f, double a) {
    char buf[64];
    std::snprintf(buf, sizeof buf, f, a);
    return buf;
}

}  // namespace

const char* XSpace_Unit_Name(HKL_XSPACE space) {
    switch (space) {
        case HKL_XSPACE::TWOTHETA: return "2theta";
        case HKL_XSPACE::D: return "d";
        case HKL_XSPACE::Q: return "Q";
        case HKL_XSPACE::S: return "s";
        case HKL_XSPACE::TOF: return "TOF";
    }
    return "";
}

bool Check_Peak_XSpace(const PEAK_XSPACE_TYPE& x, std::string& message) {
    message.clear();
    if (!std::isfinite(x.zero)) message = "Bad zero shift";
    else if (x.space == HKL_XSPACE::TWOTHETA && !(x.lambda > 0 && std::isfinite(x.lambda))) message = "Bad wavelength";
    else if (x.space == HKL_XSPACE::TOF &&
             (!std::isfinite(x.dtt1) || !std::isfinite(x.dtt2) || !(x.dtt1 > 0 || (x.dtt1 == 0 && x.dtt2 > 0)) || x.dtt2 < 0))
        message = "Bad dtt1/dtt2";
    return message.empty();
}

bool Q_Of_X(const PEAK_XSPACE_TYPE& x, double pos, double& q) {
    double d = 0;
    switch (x.space) {
        case HKL_XSPACE::TWOTHETA: {
            const double st = std::sin(pos * pi / 360.0);
            if (!(pos > 0 && pos < 180) || !(x.lambda > 0)) return false;
            d = x.lambda / (2 * st);
            break;
        }
        case HKL_XSPACE::D: d = pos; break;
        case HKL_XSPACE::Q: d = pos > 0 ? 2 * pi / pos : 0; break;
        case HKL_XSPACE::S: d = pos > 0 ? 1 / pos : 0; break;
        case HKL_XSPACE::TOF:
            if (x.dtt2 == 0) d = x.dtt1 > 0 ? pos / x.dtt1 : 0;
            else {
                const double disc = x.dtt1 * x.dtt1 + 4 * x.dtt2 * pos;
                d = disc >= 0 ? (-x.dtt1 + std::sqrt(disc)) / (2 * x.dtt2) : 0;
            }
            break;
    }
    if (!(d > 0) || !std::isfinite(d)) return false;
    q = 1 / (d * d);
    return true;
}

bool X_Of_Q(const PEAK_XSPACE_TYPE& x, double q, double& pos, double* dxdq) {
    if (!(q > 0) || !std::isfinite(q)) return false;
    const double rq = std::sqrt(q);
    double p = 0, der = 0;
    switch (x.space) {
        case HKL_XSPACE::TWOTHETA: {
            const double st = x.lambda * rq / 2;  // sin(theta)
            if (!(st < 1) || !(x.lambda > 0)) return false;
            p = 360.0 / pi * std::asin(st);
            der = 360.0 / pi * (x.lambda / (4 * rq)) / std::sqrt(1 - st * st);
            break;
        }
        case HKL_XSPACE::D: p = 1 / rq; der = -0.5 / (q * rq); break;
        case HKL_XSPACE::Q: p = 2 * pi * rq; der = pi / rq; break;
        case HKL_XSPACE::S: p = rq; der = 0.5 / rq; break;
        case HKL_XSPACE::TOF: {
            const double d = 1 / rq;
            p = x.dtt1 * d + x.dtt2 * d * d;
            der = (x.dtt1 + 2 * x.dtt2 * d) * (-0.5 / (q * rq));
            break;
        }
    }
    pos = p;
    if (dxdq) *dxdq = der;
    return std::isfinite(p);
}

double Default_Peak_Tolerance(const PEAK_XSPACE_TYPE& x, double pos) {
    return x.space == HKL_XSPACE::TWOTHETA ? 0.05 : 1e-3 * std::fabs(pos);
}

bool Reflections_To_Q(const Cell_Record& cell, const SPACE_GROUP_TYPE& sg, const PEAK_XSPACE_TYPE& x, double qmax,
                      std::vector<HKL_GEN_TYPE>& list, std::string& message) {
    std::vector<HKL_GEN_TYPE> out;
    if (!Hkl_Generate(cell, sg, 0.0f, static_cast<float>(0.5 * std::sqrt(qmax)), out, message)) return false;
    for (auto& r : out) {
        double p = 0;
        r.pos = X_Of_Q(x, 4.0 * r.s * r.s, p) ? static_cast<float>(p) : NAN;
    }
    list.swap(out);
    return true;
}

int Nearest_Reflection(const std::vector<HKL_GEN_TYPE>& list, HKL_XSPACE space, double pos) {
    if (list.empty()) return -1;
    // Positions rise with s but in d and TOF, where they fall.
    const bool falls = space == HKL_XSPACE::D || space == HKL_XSPACE::TOF;
    const auto it = std::lower_bound(list.begin(), list.end(), pos, [falls](const HKL_GEN_TYPE& r, double p) {
        return falls ? r.pos > p : r.pos < p;
    });
    const int i = static_cast<int>(it - list.begin());
    int best = -1;
    for (int j : {i - 1, i})
        if (j >= 0 && j < static_cast<int>(list.size()) && std::isfinite(list[j].pos) &&
            (best < 0 || std::fabs(list[j].pos - pos) < std::fabs(list[best].pos - pos)))
            best = j;
    return best;
}

bool Figures_Of_Merit(const std::vector<double>& x_obs, const Cell_Record& cell, const SPACE_GROUP_TYPE& sg,
                      const FOM_SETTINGS_TYPE& settings, FOM_RESULT_TYPE& result) {
    result = FOM_RESULT_TYPE{};
    const PEAK_XSPACE_TYPE& xs = settings.x;
    if (!Check_Peak_XSpace(xs, result.message)) return false;
    // The observed lines that have a place in the space, by rising Q.
    struct OBS {
        double x, q;
        int index;
    };
    std::vector<OBS> obs;
    for (std::size_t i = 0; i < x_obs.size(); ++i) {
        double q = 0;
        if (std::isfinite(x_obs[i]) && Q_Of_X(xs, x_obs[i] - xs.zero, q)) obs.push_back({x_obs[i] - xs.zero, q, static_cast<int>(i)});
    }
    if (obs.empty()) {
        result.message = "No peak to compare with";
        return false;
    }
    std::sort(obs.begin(), obs.end(), [](const OBS& a, const OBS& b) { return a.q < b.q; });
    // A little beyond the last line, so that its nearest reflection can lie past it.
    if (!Reflections_To_Q(cell, sg, xs, obs.back().q * 1.05 + 1e-6, result.reflections, result.message)) return false;
    const auto& refl = result.reflections;
    std::vector<double> qc(refl.size());
    for (std::size_t i = 0; i < refl.size(); ++i) qc[i] = q_of(cell, refl[i]);

    const int n = static_cast<int>(obs.size());
    result.n_obs = n;
    result.nearest.assign(x_obs.size(), -1);
    result.explained.assign(x_obs.size(), false);
    std::vector<double> dq(n, 0), dx(n, 0);
    bool all_near = !refl.empty();
    for (int i = 0; i < n; ++i) {
        const int j = Nearest_Reflection(refl, xs.space, obs[i].x);
        result.nearest[obs[i].index] = j;
        if (j < 0) {
            all_near = false;
            ++result.unexplained;
            continue;
        }
        dx[i] = std::fabs(obs[i].x - refl[j].pos);
        dq[i] = std::fabs(obs[i].q - qc[j]);
        const double tol = settings.tolerance > 0 ? settings.tolerance : Default_Peak_Tolerance(xs, obs[i].x);
        if (dx[i] <= tol) result.explained[obs[i].index] = true;
        else ++result.unexplained;
    }
    // M(20)
    if (n >= 20 && all_near) {
        double sum = 0;
        for (int i = 0; i < 20; ++i) sum += dq[i];
        result.m20_eps = sum / 20;
        result.q20 = obs[19].q;
        result.n20 = distinct_up_to(qc, result.q20);
        result.m20 = result.m20_eps > 0 ? result.q20 / (2 * result.m20_eps * result.n20) : INFINITY;
        result.m20_valid = true;
        result.m20_text = "M(20) = " + fmt("%.1f", result.m20);
    } else if (n < 20) {
        result.m20_text = "M(20): fewer than 20 peaks (" + std::to_string(n) + ")";
    } else {
        result.m20_text = "M(20): no reflection near the peaks";
    }
    // F(N)
    const int want = settings.fn_lines > 0 ? settings.fn_lines : n;
    const std::string fname = "F(" + std::to_string(want) + ")";
    if (n >= want && all_near) {
        double sum = 0;
        for (int i = 0; i < want; ++i) sum += dx[i];
        result.fn_n = want;
        result.fn_mean_delta = sum / want;
        result.fn_poss = distinct_up_to(qc, obs[want - 1].q);
        result.fn = result.fn_mean_delta > 0 ? want / (result.fn_mean_delta * result.fn_poss) : INFINITY;
        result.fn_valid = true;
        result.fn_text = fname + " = " + fmt("%.1f", result.fn) + " (" + fmt("%.4f", result.fn_mean_delta) + ", " +
                         std::to_string(result.fn_poss) + ")";
        if (xs.space != HKL_XSPACE::TWOTHETA) result.fn_text += std::string(" in ") + XSpace_Unit_Name(xs.space);
    } else if (n < want) {
        result.fn_text = fname + ": fewer than " + std::to_string(want) + " peaks (" + std::to_string(n) + ")";
    } else {
        result.fn_text = fname + ": no reflection near the peaks";
    }
    result.text = result.m20_text + "   " + result.fn_text + "   unexplained peaks: " + std::to_string(result.unexplained) +
                  " of " + std::to_string(n);
    result.ok = true;
    return true;
}

}  // namespace hxl
