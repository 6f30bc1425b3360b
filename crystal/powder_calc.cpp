#include "crystal/powder_calc.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

#include "crystal/reflections.h"
#include "crystal/scattering.h"

namespace hxl {

bool Calc_Powder_Reflections(const STRUCTURE_TYPE& st, const POWDER_CALC_SETTINGS& set,
                             std::vector<CALC_REFLECTION_TYPE>& out, std::vector<std::string>& notes,
                             std::string& message) {
    if (!(set.lambda > 0) || !std::isfinite(set.lambda)) {
        message = "Bad wavelength";
        return false;
    }
    if (!(set.tth_min >= 0 && set.tth_max > set.tth_min && set.tth_max <= 180)) {
        message = "The 2theta range must rise within 0 to 180 degrees";
        return false;
    }
    const double deg = std::numbers::pi / 180;
    const double smin = std::sin(set.tth_min * deg / 2) / set.lambda;
    const double smax = std::sin(set.tth_max * deg / 2) / set.lambda;
    std::vector<SCATTERER_TYPE> sc(st.atoms.size());
    notes.clear();
    for (std::size_t j = 0; j < st.atoms.size(); ++j) {
        if (!Find_Scatterer(st.atoms[j].type, sc[j], message)) return false;
        if (set.neutron ? !sc[j].has_neutron : !sc[j].has_xray) {
            message = "Atom " + st.atoms[j].label + " (" + st.atoms[j].type + "): no " +
                      (set.neutron ? "neutron scattering length" : "X-ray form factor") + " in the tables";
            return false;
        }
        if (!set.neutron && sc[j].charge != 0 && !sc[j].ion_f0)
            notes.push_back("Atom " + st.atoms[j].label + ": f0 of neutral " + sc[j].element + " used for " +
                            st.atoms[j].type);
    }
    std::vector<HKL_GEN_TYPE> list;
    // Hkl_Generate keeps 0 < s <= smax; the lower limit is applied below.
    std::string msg;
    if (!Hkl_Generate(st.cell_rec, st.sg, 0.0f, static_cast<float>(smax), list, msg)) {
        message = msg;
        return false;
    }
    const int g = std::max(1, static_cast<int>(st.sg.seitz.size()));
    out.clear();
    for (const HKL_GEN_TYPE& r : list) {
        const double s = Hkl_S(st.cell_rec, r.h, r.k, r.l);
        if (s < smin || s > smax || s * set.lambda > 1) continue;
        std::complex<double> f = 0;
        for (std::size_t j = 0; j < st.atoms.size(); ++j) {
            const ATOM_SITE_TYPE& a = st.atoms[j];
            const double fj = set.neutron ? sc[j].b_fm : Xray_F0(sc[j], s);
            // Each distinct site appears g / mult times among the images.
            const double w = a.occ * fj * std::exp(-a.biso * s * s) * a.mult / g;
            std::complex<double> sum = 0;
            for (const SEITZ_TYPE& op : st.sg.seitz) {
                double phase = 0;
                const int hv[3] = {r.h, r.k, r.l};
                for (int i = 0; i < 3; ++i) {
                    const double xi = op.r[i][0] * a.x[0] + op.r[i][1] * a.x[1] + op.r[i][2] * a.x[2] +
                                      double(op.t[i]) / SEITZ_DEN;
                    phase += hv[i] * xi;
                }
                sum += std::polar(1.0, 2 * std::numbers::pi * phase);
            }
            f += w * sum;
        }
        CALC_REFLECTION_TYPE c;
        c.h = r.h;
        c.k = r.k;
        c.l = r.l;
        c.mult = r.mult;
        c.s = s;
        const double theta = std::asin(s * set.lambda);
        c.tth = 2 * theta / deg;
        c.f2 = std::norm(f);
        // Zero by the positions of the atoms (222 of diamond): not a line.
        if (c.f2 < 1e-6) continue;
        const double sin_t = std::sin(theta), cos_t = std::cos(theta), cos_2t = std::cos(2 * theta);
        double lp = 1 / (sin_t * sin_t * cos_t);
        if (!set.neutron) lp *= 1 + cos_2t * cos_2t;
        c.intensity = c.mult * c.f2 * lp;
        out.push_back(c);
    }
    std::sort(out.begin(), out.end(), [](const auto& a, const auto& b) { return a.tth < b.tth; });
    return true;
}

std::vector<POWDER_LINE_TYPE> Powder_Lines(const std::vector<CALC_REFLECTION_TYPE>& refl) {
    std::vector<POWDER_LINE_TYPE> lines;
    double top = 0;
    for (std::size_t i = 0; i < refl.size(); ++i) {
        if (lines.empty() || std::abs(lines.back().tth - refl[i].tth) >= 1e-4) lines.push_back({refl[i].tth, 0, {}});
        lines.back().intensity += refl[i].intensity;
        lines.back().refl.push_back(i);
        top = std::max(top, lines.back().intensity);
    }
    for (POWDER_LINE_TYPE& l : lines) l.intensity = top > 0 ? 100 * l.intensity / top : 0;
    return lines;
}

double Pseudo_Voigt(double dx, double fwhm, double eta) {
    const double hw = fwhm / 2;
    const double lor = 1 / (std::numbers::pi * hw * (1 + (dx / hw) * (dx / hw)));
    const double sg = fwhm / (2 * std::sqrt(2 * std::numbers::ln2));
    const double gau = std::exp(-dx * dx / (2 * sg * sg)) / (sg * std::sqrt(2 * std::numbers::pi));
    return eta * lor + (1 - eta) * gau;
}

double Caglioti_Fwhm(double u, double v, double w, double tth_deg) {
    const double t = std::tan(tth_deg * std::numbers::pi / 360);
    const double f2 = u * t * t + v * t + w;
    return f2 > 0 ? std::sqrt(f2) : 1e-4;
}

void Line_Width(const LINE_SHAPE_TYPE& shape, double tth_deg, double& fwhm, double& eta) {
    const double g = Caglioti_Fwhm(shape.u, shape.v, shape.w, tth_deg);
    const double th = tth_deg * std::numbers::pi / 360;
    if (!shape.tch) {
        fwhm = std::max(1e-4, g + shape.z / std::cos(th));
        eta = std::clamp(shape.eta + shape.eta_x * tth_deg, 0.0, 1.0);
        return;
    }
    const double l = std::max(0.0, shape.lx * std::tan(th) + shape.ly / std::cos(th));
    const double h5 = std::pow(g, 5) + 2.69269 * std::pow(g, 4) * l + 2.42843 * std::pow(g, 3) * l * l +
                      4.47163 * g * g * l * l * l + 0.07842 * g * std::pow(l, 4) + std::pow(l, 5);
    fwhm = std::pow(h5, 0.2);
    const double q = l / fwhm;
    eta = std::clamp(1.36603 * q - 0.47719 * q * q + 0.11116 * q * q * q, 0.0, 1.0);
}

void Calc_Profile(const std::vector<CALC_REFLECTION_TYPE>& refl, const double* x, int n, const LINE_SHAPE_TYPE& shape,
                  std::vector<double>& y) {
    y.assign(static_cast<std::size_t>(std::max(n, 0)), 0.0);
    for (const CALC_REFLECTION_TYPE& r : refl) {
        double fw = 0, eta = 0;
        Line_Width(shape, r.tth, fw, eta);
        // Lorentzian tails matter far out; 40 widths keep what a plot shows.
        const double reach = 40 * fw;
        const double* lo = std::lower_bound(x, x + n, r.tth - reach);
        const double* hi = std::upper_bound(x, x + n, r.tth + reach);
        for (const double* p = lo; p < hi; ++p) y[static_cast<std::size_t>(p - x)] += r.intensity * Pseudo_Voigt(*p - r.tth, fw, eta);
    }
}

double Scale_To_Data(const std::vector<double>& obs, const std::vector<double>& calc) {
    double oc = 0, cc = 0;  // sums in double: thousands of products
    for (std::size_t i = 0; i < obs.size() && i < calc.size(); ++i) {
        if (!std::isfinite(obs[i])) continue;
        oc += obs[i] * calc[i];
        cc += calc[i] * calc[i];
    }
    return cc > 0 ? oc / cc : 0;
}

}  // namespace hxl
