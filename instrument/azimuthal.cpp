#include "instrument/azimuthal.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace hxl {

namespace {

constexpr double kDeg = 3.14159265358979323846 / 180.0;

// Laboratory position (mm) of a detector point; the beam runs along z.
void lab_point(const DETECTOR_GEOMETRY_TYPE& g, double px, double py, double r[3]) {
    double u = (px - g.beam_x) * g.pixel_x, v = (py - g.beam_y) * g.pixel_y;
    // Turn (u, v, 0) by `tilt` about the in-plane axis at `tilt_plane` from x.
    double ca = std::cos(g.tilt_plane * kDeg), sa = std::sin(g.tilt_plane * kDeg);
    double ct = std::cos(g.tilt * kDeg), st = std::sin(g.tilt * kDeg);
    double a = u * ca + v * sa;   // along the axis: unchanged
    double b = -u * sa + v * ca;  // across it: leans out of the plane
    double bx = b * ct, bz = b * st;
    r[0] = a * ca - bx * sa;
    r[1] = a * sa + bx * ca;
    r[2] = g.distance + bz;
}

// Part of a pixel's area where c + x*U + y*V < t, U and V uniform on
// (-1/2, 1/2): 2theta is linear across a pixel to a small fraction of its span.
double linear_cdf(double t, double c, double x, double y) {
    double B = std::max(std::fabs(x), std::fabs(y)), C = std::min(std::fabs(x), std::fabs(y));
    double s = t - c + (B + C) / 2;
    if (s <= 0) return 0;
    if (s >= B + C) return 1;
    if (C < 1e-12 * std::max(B, 1e-300)) return B > 0 ? s / B : 1;
    if (s < C) return s * s / (2 * B * C);
    if (s <= B) return C / (2 * B) + (s - C) / B;
    double r = B + C - s;
    return 1 - r * r / (2 * B * C);
}

}  // namespace

void Pixel_Angles(const DETECTOR_GEOMETRY_TYPE& g, double px, double py, double& two_theta, double& azimuth) {
    double r[3];
    lab_point(g, px, py, r);
    two_theta = std::atan2(std::hypot(r[0], r[1]), r[2]) / kDeg;
    azimuth = std::atan2(r[1], r[0]) / kDeg;
}

bool Check_Geometry(const DETECTOR_GEOMETRY_TYPE& g, int nx, int ny, std::string& message) {
    std::ostringstream s;
    if (!(g.distance > 0) || !(g.pixel_x > 0) || !(g.pixel_y > 0) || !(g.wavelength > 0) || !(g.bin > 0)) {
        message = "The geometry needs a distance, pixel sizes, a wavelength and a bin width above zero";
        return false;
    }
    if (!(std::fabs(g.tilt) < 60) || !(std::fabs(g.polarisation) <= 1) || !std::isfinite(g.beam_x) ||
        !std::isfinite(g.beam_y) || !std::isfinite(g.tilt_plane)) {
        message = "The tilt must be below 60 degrees and the polarisation between -1 and 1";
        return false;
    }
    if (!(g.bin >= 1e-4f) || !(g.bin <= 10)) {
        message = "The width of the bins must lie between 0.0001 and 10 degrees";
        return false;
    }
    // A beam centre far off the panel: the detector sees no ring around it, and
    // a whole panel behind the sample cannot be integrated.
    double reach = 4.0 * std::max(nx, ny);
    if (g.beam_x < -reach || g.beam_x > nx + reach || g.beam_y < -reach || g.beam_y > ny + reach) {
        s << "The beam centre (" << g.beam_x << ", " << g.beam_y << ") lies far off the detector of " << nx << " x "
          << ny << " pixels";
        message = s.str();
        return false;
    }
    return true;
}

bool Build_Integration_Table(const DETECTOR_GEOMETRY_TYPE& g, int nx, int ny, INTEGRATION_TABLE_TYPE& t,
                             std::string& message) {
    t = INTEGRATION_TABLE_TYPE{};
    if (!Frame_Size_Check(nx, ny, 1, message) || !Check_Geometry(g, nx, ny, message)) return false;
    // 2theta at the pixel corners, one row of corners at a time.
    std::vector<double> lo_row(static_cast<std::size_t>(nx) + 1), hi_row(lo_row.size());
    auto corners = [&](int j, std::vector<double>& row) {
        for (int i = 0; i <= nx; ++i) {
            double a, az;
            Pixel_Angles(g, i, j, a, az);
            row[static_cast<std::size_t>(i)] = a;
        }
    };
    double tmin = 1e9, tmax = -1e9;
    corners(0, lo_row);
    std::vector<double> centre(static_cast<std::size_t>(nx) * static_cast<std::size_t>(ny)), dx(centre.size()),
        dy(centre.size());
    for (int j = 1; j <= ny; ++j) {
        corners(j, hi_row);
        for (int i = 1; i <= nx; ++i) {
            std::size_t p = static_cast<std::size_t>(j - 1) * static_cast<std::size_t>(nx) + static_cast<std::size_t>(i - 1);
            double c00 = lo_row[static_cast<std::size_t>(i - 1)], c10 = lo_row[static_cast<std::size_t>(i)];
            double c01 = hi_row[static_cast<std::size_t>(i - 1)], c11 = hi_row[static_cast<std::size_t>(i)];
            centre[p] = (c00 + c10 + c01 + c11) / 4;
            dx[p] = (c10 - c00 + c11 - c01) / 2;
            dy[p] = (c01 - c00 + c11 - c10) / 2;
            tmin = std::min({tmin, c00, c10, c01, c11});
            tmax = std::max({tmax, c00, c10, c01, c11});
        }
        std::swap(lo_row, hi_row);
    }
    if (!(tmax < 179.0)) {
        message = "The detector reaches 180 degrees 2theta: the geometry puts it behind the sample";
        return false;
    }
    t.nx = nx;
    t.ny = ny;
    t.bin = g.bin;
    t.tth_min = std::floor(tmin / g.bin) * g.bin;
    t.n_bins = static_cast<int>(std::ceil((tmax - t.tth_min) / g.bin)) + 1;
    t.first.assign(centre.size() + 1, 0);
    t.bin_of.reserve(centre.size() * 2);
    t.weight.reserve(centre.size() * 2);
    t.correction.resize(centre.size());
    double n[3] = {0, 0, 1}, o[3];
    {
        // The detector normal: the lab image of a unit step out of the panel.
        double a[3], b[3], c[3];
        lab_point(g, g.beam_x, g.beam_y, a);
        lab_point(g, g.beam_x + 1 / g.pixel_x, g.beam_y, b);
        lab_point(g, g.beam_x, g.beam_y + 1 / g.pixel_y, c);
        double u[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]}, v[3] = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
        n[0] = u[1] * v[2] - u[2] * v[1];
        n[1] = u[2] * v[0] - u[0] * v[2];
        n[2] = u[0] * v[1] - u[1] * v[0];
        double len = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
        for (double& e : n) e /= len;
    }
    // The sample's distance from the detector plane, along its normal.
    double normal_distance = std::fabs(n[2] * g.distance);
    for (int j = 1; j <= ny; ++j)
        for (int i = 1; i <= nx; ++i) {
            std::size_t p = static_cast<std::size_t>(j - 1) * static_cast<std::size_t>(nx) + static_cast<std::size_t>(i - 1);
            double c = centre[p], hx = std::fabs(dx[p]) + std::fabs(dy[p]);
            int b0 = std::max(0, static_cast<int>(std::floor((c - hx / 2 - t.tth_min) / g.bin)));
            int b1 = std::min(t.n_bins - 1, static_cast<int>(std::floor((c + hx / 2 - t.tth_min) / g.bin)));
            double prev = 0;
            for (int b = b0; b <= b1; ++b) {
                double edge = t.tth_min + (b + 1) * t.bin;
                double f = b == b1 ? 1.0 : linear_cdf(edge, c, dx[p], dy[p]);
                if (f - prev > 1e-9) {
                    t.bin_of.push_back(b);
                    t.weight.push_back(static_cast<float>(f - prev));
                }
                prev = f;
            }
            t.first[p + 1] = static_cast<long long>(t.bin_of.size());
            double corr = 1;
            lab_point(g, i - 0.5, j - 0.5, o);
            double r = std::sqrt(o[0] * o[0] + o[1] * o[1] + o[2] * o[2]);
            if (g.solid_angle) {
                // Solid angle relative to a pixel met square-on at the normal distance.
                double cosn = normal_distance / r;
                corr *= cosn * cosn * cosn;
            }
            if (g.correct_polarisation) {
                double ct = o[2] / r, s2 = 1 - ct * ct;
                double chi = std::atan2(o[1], o[0]);
                corr *= 0.5 * (1 + ct * ct - g.polarisation * std::cos(2 * chi) * s2);
            }
            t.correction[p] = static_cast<float>(corr);
        }
    return true;
}

bool Integrate_Image(const INTEGRATION_TABLE_TYPE& t, const float* counts, const std::vector<unsigned char>* mask,
                     const DETECTOR_GEOMETRY_TYPE& g, DIFFRACTION_PATTERN_TYPE& pattern, std::string& message) {
    std::size_t n = static_cast<std::size_t>(t.nx) * static_cast<std::size_t>(t.ny);
    if (t.n_bins < 1 || t.first.size() != n + 1) {
        message = "The integration has no table for this image";
        return false;
    }
    if (mask && mask->size() != n) {
        message = "The mask is not the size of the image";
        return false;
    }
    // Sums in double: millions of pixels add into a few thousand bins.
    std::vector<double> signal(static_cast<std::size_t>(t.n_bins)), norm(signal.size()), var(signal.size());
    for (std::size_t p = 0; p < n; ++p) {
        float c = counts[p];
        if (c < 0 || !std::isfinite(c) || (mask && (*mask)[p])) continue;
        double corr = t.correction[p];
        for (long long e = t.first[p]; e < t.first[p + 1]; ++e) {
            std::size_t b = static_cast<std::size_t>(t.bin_of[static_cast<std::size_t>(e)]);
            double w = t.weight[static_cast<std::size_t>(e)];
            signal[b] += w * c;
            var[b] += w * w * c;
            norm[b] += w * corr;
        }
    }
    int kept = 0, b_first = -1, b_last = -1;
    for (int b = 0; b < t.n_bins; ++b)
        if (norm[static_cast<std::size_t>(b)] > 0) {
            ++kept;
            if (b_first < 0) b_first = b;
            b_last = b;
        }
    if (kept == 0) {
        message = "No pixel of the image is left to integrate";
        return false;
    }
    pattern = DIFFRACTION_PATTERN_TYPE{};
    Allocate_Pattern(pattern, kept);
    if (ERR_Pattern) {
        message = ERR_Pattern_Mess;
        return false;
    }
    int i = 0;
    for (int b = 0; b < t.n_bins; ++b) {
        double w = norm[static_cast<std::size_t>(b)];
        if (!(w > 0)) continue;
        ++i;
        pattern.x(i) = static_cast<float>(t.tth_min + (b + 0.5) * t.bin);
        pattern.y(i) = static_cast<float>(signal[static_cast<std::size_t>(b)] / w);
        pattern.sigma(i) = static_cast<float>(std::max(var[static_cast<std::size_t>(b)], 1e-12) / (w * w));
        pattern.istat(i) = 1;
    }
    pattern.sig_var = true;
    pattern.diff_kind = "xrays_cw";
    pattern.scat_var = "2theta";
    pattern.xax_text = "2theta(degrees)";
    pattern.yax_text = "Intensity (arb. units)";
    pattern.lambda1 = pattern.lambda2 = g.wavelength;
    pattern.step = static_cast<float>(t.bin);
    pattern.ct_step = kept == b_last - b_first + 1;
    pattern.xmin = pattern.x(1);
    pattern.xmax = pattern.x(pattern.npts);
    Pattern_Y_Limits(pattern);
    return true;
}

}  // namespace hxl
