#include "peaks/search_points.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include "peaks/peak_files.h"
#include "support/numerics.h"
#include "support/spline.h"

namespace hxl {

thread_local bool ERR_Search = false;
thread_local std::string ERR_Search_Mess;

namespace {

bool fail(const char* text) {
    ERR_Search = true;
    ERR_Search_Mess = text;
    return false;
}

// Evaluates a spline at rising abscissae, keeping the interval between calls:
// the same values as Spline_Value without a bisection per point, which is
// what keeps the search linear in the number of points.
class Spline_Walk {
public:
    Spline_Walk(const float* x, const float* y, const float* y2, int n) : x_(x), y_(y), y2_(y2), n_(n) {}
    float operator()(double t) {
        if (n_ == 1) return y_[0];
        while (k_ < n_ - 2 && x_[k_ + 1] <= t) ++k_;
        const double h = double(x_[k_ + 1]) - x_[k_];
        if (h == 0.0) return y_[k_];
        const double a = (x_[k_ + 1] - t) / h, b = (t - x_[k_]) / h;
        return static_cast<float>(a * y_[k_] + b * y_[k_ + 1] +
                                  ((a * a * a - a) * y2_[k_] + (b * b * b - b) * y2_[k_ + 1]) * (h * h) / 6.0);
    }

private:
    const float *x_, *y_, *y2_;
    int n_;
    int k_ = 0;  // 0-based lower end of the interval
};

// The first derivative of the spline through (x, y, y2) at each of its
// points, the step of the last interval kept for the last point.
void First_Derivative(const Array1<float>& x, const Array1<float>& y, const Array1<float>& y2, int n,
                      Array1<float>& d) {
    Spline_Walk up(x.data(), y.data(), y2.data(), n), down(x.data(), y.data(), y2.data(), n);
    double h = 0.0;
    for (int i = 1; i <= n; ++i) {
        if (i < n) h = double(x(i + 1)) - x(i);
        if (h == 0.0) {
            d(i) = 0.0f;
            continue;
        }
        const float s1 = up(double(x(i)) + h / 2.0), s0 = down(double(x(i)) - h / 2.0);
        d(i) = static_cast<float>((double(s1) - s0) / h);
    }
}

// The first index from `from` with x(a) > t, `to` when none before it (x rising).
int First_Above(const Array1<float>& x, int from, int to, float t) {
    const float* b = x.data() + (from - 1);
    const float* e = x.data() + (to - 1);
    return static_cast<int>(std::upper_bound(b, e, t) - x.data()) + 1;
}

struct PEAK {
    float x, y, bgr;
};

// Background points, one per zone at most (steps of the common stage).
void Background_Points(const Array1<float>& X, const Array1<float>& Y, int N, const Array1<float>& D1, int M,
                       float bkg_threshold, std::vector<float>& bx, std::vector<float>& by) {
    float G = -1e30f;
    for (int i = 1; i <= M - 3; ++i) G = std::max(G, std::fabs(D1(i) - D1(i + 2)));
    const float T = G * bkg_threshold;
    const int NB = static_cast<int>(std::sqrt(static_cast<double>(N)));
    int j = 2, jmin = 2;
    for (int k = 1; k <= NB; ++k) {
        const float end = X(1) + static_cast<float>(k) * (X(N) - X(1)) / static_cast<float>(NB);
        float lowest = 1e30f;
        bool any = false;
        while (j <= N - 1 && X(j) < end) {
            if (Y(j) < lowest) {
                jmin = j;
                lowest = Y(j);
            }
            any = true;
            ++j;
        }
        // An empty zone keeps the previous lowest point; taking it a second
        // time would put two equal abscissae into the background spline.
        if (!any) continue;
        const float a = D1(2 * jmin - 2), b = D1(2 * jmin - 1), c = D1(2 * jmin);
        if (std::max({a, b, c}) - std::min({a, b, c}) < T) {
            bx.push_back(X(jmin));
            by.push_back((Y(jmin - 1) + Y(jmin) + Y(jmin + 1)) / 3.0f);
        }
    }
}

// Maxima where the derivative crosses zero downwards with a swing above the
// threshold relative to the largest swing.
void Maxima(const Array1<float>& X2, const Array1<float>& Y2, const Array1<float>& D1, int n, float threshold,
            std::vector<PEAK>& peaks) {
    if (!(n - 2 > 1)) return;
    std::vector<std::pair<int, float>> cross;
    float Amax = -1e30f;
    for (int a = 2; a <= n - 2; ++a) {
        if (!(D1(a) > 0.0f && D1(a + 1) < 0.0f)) continue;
        int l = a;
        while (l > 2 && D1(l - 1) > D1(l)) --l;
        int r = a + 1;
        while (r < n - 1 && D1(r + 1) < D1(r)) ++r;
        const float A = D1(l) - D1(r);
        Amax = std::max(Amax, A);
        cross.emplace_back(a, A);
    }
    for (const auto& [a, A] : cross) {
        if (!(A > Amax * threshold)) continue;
        const double x0 = X2(a), x1 = X2(a + 1), d0 = D1(a), d1 = D1(a + 1);
        const double pos = x0 - d0 * (x1 - x0) / (d1 - d0);
        const double t = (x1 > x0) ? (pos - x0) / (x1 - x0) : 0.0;
        peaks.push_back({static_cast<float>(pos), static_cast<float>(Y2(a) + t * (double(Y2(a + 1)) - Y2(a))), 0.0f});
    }
}

// The largest range of the derivative over seven fine points around each background point.
float Noise_Level(const Array1<float>& X2, const Array1<float>& D1, int n, const std::vector<float>& bx) {
    float W = -1e30f;
    if (n < 7) return W;
    for (float pos : bx) {
        int a = First_Above(X2, 4, n - 2, pos);
        if (a >= n - 2) a = n - 3;
        float lo = D1(a - 3), hi = D1(a - 3);
        for (int i = a - 2; i <= a + 3; ++i) {
            lo = std::min(lo, D1(i));
            hi = std::max(hi, D1(i));
        }
        W = std::max(W, hi - lo);
    }
    return W;
}

// Humps of the derivative on falling (right) and rising (left) flanks.
void Shoulders(const Array1<float>& X2, const Array1<float>& Y2, const Array1<float>& D1, const Array1<float>& D2,
               int n, float limit, std::vector<PEAK>& peaks) {
    if (!(n - 3 >= 4)) return;
    for (int j = 0; j <= n - 7; ++j) {
        const float c = D1(j + 4);
        if (!(c < 0.0f && D1(j + 1) < D1(j + 2) && D1(j + 2) < D1(j + 3) && D1(j + 3) < c && c > D1(j + 5) &&
              D1(j + 5) > D1(j + 6) && D1(j + 6) > D1(j + 7)))
            continue;
        int e = j + 4;
        while (e + 1 <= n - 3 && D1(e + 1) < D1(e)) ++e;
        if (!(std::fabs(D1(e) - c) > limit)) continue;
        int f = j + 4;
        while (f + 1 <= n - 3 && D2(f + 1) < D2(f)) ++f;
        peaks.push_back({X2(f), Y2(f), 0.0f});
    }
    for (int j = 0; j <= n - 7; ++j) {
        const float c = D1(j + 4);
        if (!(c > 0.0f && D1(j + 1) > D1(j + 2) && D1(j + 2) > D1(j + 3) && D1(j + 3) > c && c < D1(j + 5) &&
              D1(j + 5) < D1(j + 6) && D1(j + 6) < D1(j + 7)))
            continue;
        int e = j + 4;
        while (e - 1 >= 4 && D1(e - 1) > D1(e)) --e;
        if (!(std::fabs(D1(e) - c) > limit)) continue;
        int f = j + 4;
        while (f - 1 >= 4 && D2(f - 1) < D2(f)) --f;
        peaks.push_back({X2(f), Y2(f), 0.0f});
    }
}

void Fill(PKB_TYPE& r, int np) {
    r.np = np;
    r.x.resize(np);
    r.y.resize(np);
    r.bgr.resize(np);
}

}  // namespace

void Smooth_Derivative(float* v, int n, int passes) {
    if (n < 7 || passes <= 0) return;
    std::vector<float> w(static_cast<std::size_t>(n) + 1);
    auto V = [v](int i) { return v[i - 1]; };
    for (int pass = 0; pass < passes; ++pass) {
        for (int i = 4; i <= n - 3; ++i)
            w[i] = (V(i - 3) + V(i + 3) + 5.0f * (V(i - 2) + V(i + 2)) + 10.0f * (V(i - 1) + V(i + 1))) / 32.0f;
        w[1] = (10.0f * V(2) + 5.0f * V(3) + V(4)) / 16.0f;
        w[2] = (10.0f * (V(1) + V(3)) + 5.0f * V(4) + V(5)) / 26.0f;
        w[3] = (10.0f * (V(2) + V(4)) + 5.0f * (V(1) + V(5)) + V(6)) / 31.0f;
        w[n] = (10.0f * V(n - 1) + 5.0f * V(n - 2) + V(n - 3)) / 16.0f;
        w[n - 1] = (10.0f * (V(n) + V(n - 2)) + 5.0f * V(n - 3) + V(n - 4)) / 26.0f;
        w[n - 2] = (10.0f * (V(n - 1) + V(n - 3)) + 5.0f * (V(n) + V(n - 4)) + V(n - 5)) / 31.0f;
        std::copy(w.begin() + 1, w.end(), v);
    }
}

WAVELENGTHS_TYPE Peak_Type_Wavelengths(int peak_type, float own) {
    switch (peak_type) {
    case 1: return {own, own, 1.0f};
    case 2: return {1.54059f, 1.54439f, 0.5f};
    case 3: return {0.70926f, 0.71354f, 0.5f};
    case 4: return {1.78892f, 1.79285f, 0.5f};
    default: return {1.54059f, 1.54059f, 1.0f};
    }
}

int Doublet_Filter(int peak_type, Array1<float>& x, Array1<float>& y, Array1<float>& bgr, int np) {
    const double r = peak_type == 2 ? 1.0025 : peak_type == 3 ? 1.006 : peak_type == 4 ? 1.0022 : 0.0;
    if (r == 0.0 || np < 2) return np;
    std::vector<bool> keep(static_cast<std::size_t>(np) + 1, true);
    for (int i = 1; i <= np - 1; ++i) {
        const double s0 = Sind(double(x(i)) / 2.0), s1 = Sind(double(x(i + 1)) / 2.0);
        const double h0 = double(y(i)) - bgr(i), h1 = double(y(i + 1)) - bgr(i + 1);
        if (s0 == 0.0 || h0 == 0.0) continue;
        if (std::fabs(s1 / s0 - r) < 0.005 && std::fabs(h1 / h0 - 0.5) < 0.2) keep[i + 1] = false;
    }
    int m = 0;
    for (int i = 1; i <= np; ++i) {
        if (!keep[i]) continue;
        ++m;
        x(m) = x(i);
        y(m) = y(i);
        bgr(m) = bgr(i);
    }
    return m;
}

int Search_Points(const DIFFRACTION_PATTERN_TYPE& p, float xmin, float xmax, const std::string& mode,
                  const SEARCH_CONDITIONS_TYPE& c, const SEARCH_FILE_TYPE& file, PKB_TYPE& result) {
    ERR_Search = false;
    ERR_Search_Mess.clear();
    const int npts = std::min({p.npts, p.x.size(), p.y.size()});
    int i0 = 1;
    while (i0 <= npts && xmin > p.x(i0)) ++i0;
    int N = 0;
    while (i0 + N <= npts && p.x(i0 + N) <= xmax) ++N;
    // Three points are the least the zone search can look at (a lowest point and its two neighbours).
    if (N < 3) return fail(kMsgFewBackground), 0;

    const bool satellites = mode.find("satellites") != std::string::npos;
    Array1<float> X(N), Y(N);
    for (int i = 1; i <= N; ++i) {
        const int k = i0 + i - 1;
        X(i) = p.x(k);
        float v = p.y(k);
        if (satellites) {
            const float calc = k <= p.ycalc.size() ? p.ycalc(k) : 0.0f;
            const float back = k <= p.bgr.size() ? p.bgr(k) : 0.0f;
            v = v - calc + back;
        }
        if (!std::isfinite(v)) return fail(kMsgBadIntensity), 0;
        Y(i) = v;
        if (i > 1 && !(X(i) > X(i - 1))) return fail(kMsgBadX), 0;
    }
    if (!std::isfinite(X(1)) || !std::isfinite(X(N))) return fail(kMsgBadX), 0;

    Array1<float> Ys2(N);
    Spline_Second_Derivative(X.data(), Y.data(), N, Ys2.data());
    const int M = 2 * N - 1;
    const double h = 0.5 * (double(X(N)) - X(1)) / (N - 1);
    Array1<float> X2(M), Y2(M);
    {
        Spline_Walk s(X.data(), Y.data(), Ys2.data(), N);
        for (int i = 1; i <= M - 1; ++i) {
            X2(i) = static_cast<float>(X(1) + (i - 1) * h);
            Y2(i) = s(X2(i));
        }
        X2(M) = X(N);
        Y2(M) = Y(N);
    }
    Array1<float> D2(M), D1(M);
    Spline_Second_Derivative(X2.data(), Y2.data(), M, D2.data());
    First_Derivative(X2, Y2, D2, M, D1);
    Smooth_Derivative(D1.data(), M - 1, c.iterations);

    std::vector<float> bx, by;
    Background_Points(X, Y, N, D1, M, c.bkg_threshold, bx, by);
    if (bx.size() < 2) return fail(kMsgFewBackground), 0;
    const int nb = static_cast<int>(bx.size());

    if (mode.find("background") != std::string::npos) {
        if (file.write) {
            std::string message;
            if (!Write_Background(Join_Folder(file.folder, "background.xy"), file.data_name, file.format_name,
                                  bx.data(), by.data(), nb, message))
                return fail(kMsgBgrOpen), 0;
        }
        Fill(result, nb);
        std::copy(bx.begin(), bx.end(), result.x.begin());
        std::copy(by.begin(), by.end(), result.y.begin());
        return nb;
    }

    Smooth_Derivative(D2.data(), M - 1, c.iterations);
    const int n = M - 1;
    std::vector<PEAK> peaks;
    Maxima(X2, Y2, D1, n, c.peak_threshold, peaks);
    const float W = Noise_Level(X2, D1, n, bx);
    Shoulders(X2, Y2, D1, D2, n, W * c.shoulder_threshold, peaks);
    std::stable_sort(peaks.begin(), peaks.end(), [](const PEAK& a, const PEAK& b) { return a.x < b.x; });
    if (peaks.empty()) return fail(kMsgNoPeak), 0;

    std::vector<float> b2(static_cast<std::size_t>(nb));
    Spline_Second_Derivative(bx.data(), by.data(), nb, b2.data());
    for (PEAK& pk : peaks) {
        if (!(pk.x > bx[0])) pk.bgr = -1.0f;
        else Spline_Value(bx.data(), by.data(), b2.data(), nb, pk.x, pk.bgr);
    }

    Array1<float> px, py, pb;
    for (const PEAK& pk : peaks) {
        if (pk.bgr < 0.0f || n < 5) continue;
        const int a = First_Above(X2, 4, n - 1, pk.x);
        const float limit = pk.bgr * (1.0f + c.peak_threshold);
        bool above = true;
        for (int i = a - 3; i <= a + 1; ++i) above = above && Y2(i) > limit;
        if (!above) continue;
        px.vec().push_back(pk.x);
        py.vec().push_back(pk.y);
        pb.vec().push_back(pk.bgr);
    }
    int np = px.size();
    if (c.peak_type != 1) np = Doublet_Filter(c.peak_type, px, py, pb, np);
    if (np == 0) return 0;

    if (file.write) {
        std::string message;
        std::vector<PEAK_POINT_TYPE> list(static_cast<std::size_t>(np));
        for (int i = 1; i <= np; ++i) list[static_cast<std::size_t>(i - 1)] = {px(i), py(i), pb(i)};
        if (!Write_Free_Peaks(Join_Folder(file.folder, "peak.aps"), file.data_name, file.format_name, list,
                              message))
            return fail(kMsgPeakOpen), 0;
    }
    Fill(result, np);
    for (int i = 1; i <= np; ++i) {
        result.x(i) = px(i);
        result.y(i) = py(i);
        result.bgr(i) = pb(i);
    }
    return np;
}

}  // namespace hxl
