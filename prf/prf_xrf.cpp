// The output of the peak-fitting procedure (".xrf"): a profile whose first
// lines carry the peaks with their fitted parameters.
#include <cmath>

#include "prf/prf_labels.h"
#include "prf/prf_read_state.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {

bool Read_Prf_Xrf(PRF_READ_STATE& s, PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& pat, std::string& message) {
    auto fail = [&](const std::string& m) {
        message = m;
        return false;
    };
    std::string line;
    if (!Prf_Line(s.unit, line)) return fail("ERROR: Reading line 3 in XRF file");
    pat.scat_var = "2Theta";
    pat.yax_text = "Intensity (arb.units)";
    if (auto at = line.find("Scattering Variable:"); at != std::string::npos) {
        pat.scat_var = Cut(Trim(line.substr(at + 20)), kScatLen);
        if (Same(pat.scat_var, "Distance")) pat.xax_text = "Distance (Pixels)";
        if (Same(pat.scat_var, "Omega")) pat.xax_text = "Omega (Deg)";
        if (Same(pat.scat_var, "Energy")) pat.xax_text = "Energy (KeV)";
    }

    if (!Prf_Line(s.unit, line)) return fail("ERROR: Reading line 4 in XRF file containing Lambdas");
    auto colon = line.find(':');
    if (colon == std::string::npos) return fail("ERROR: Reading lambdas in XRF file, ':' is missing!");
    float lambda[2] = {0, 0};
    if (List_Read(std::string_view(line).substr(colon + 1), lambda, 2) != List_Result::Ok) {
        if (line.find("Numb.of.points") == std::string::npos) return fail("ERROR: Reading lambdas in XRF file");
        lambda[0] = lambda[1] = 0;
    }
    if (lambda[0] >= 0.0001f) {
        pat.lambda1 = lambda[0];
        pat.lambda2 = lambda[1];
    }
    if (line.find("Dtt1") != std::string::npos) pat.xax_text = "TOF(usec)";

    int npts = 0, npeaks = 0;
    if (!Prf_Line(s.unit, line)) return fail("ERROR: Reading line5 in XRF file containing npts");
    colon = line.find(':');
    if (colon == std::string::npos) return fail("ERROR: Reading npts in XRF file, ':' is missing!");
    if (List_Read(std::string_view(line).substr(colon + 1), &npts, 1) != List_Result::Ok || npts < 1 ||
        Prf_Implausible(s.unit, npts))
        return fail("ERROR: Reading npts in XRF file");
    if (!Prf_Line(s.unit, line) || (colon = line.find(':')) == std::string::npos)
        return fail("ERROR: Reading npeaks in XRF file, ':' is missing!");
    if (List_Read(std::string_view(line).substr(colon + 1), &npeaks, 1) != List_Result::Ok || npeaks < 0)
        return fail("ERROR: Reading npeaks in XRF file");
    if (npeaks > npts) npeaks = npts;  // a peak has its own point line
    Prf_Line(s.unit, line);

    pat.npts = npts;
    pat.x.resize(npts);
    pat.y.resize(npts);
    pat.ycalc.resize(npts);
    pat.bgr.resize(npts);
    pat.al_x = pat.al_y = pat.al_ycalc = pat.al_bgr = true;
    pat.gy = pat.gycalc = pat.gbgr = true;
    Prf_Allocate_Reflections(info, npeaks);
    for (int i = 1; i <= npts; ++i) {
        if (!Prf_Line(s.unit, line, 200)) return fail("ERROR: Reading line #" + std::to_string(i) + " in XRF file");
        float v[10];
        const int n = i <= npeaks ? 10 : 5;
        if (List_Read(line, v, n) != List_Result::Ok)
            return fail("ERROR: Reading numeric line #" + std::to_string(i) + " in XRF file");
        pat.x(i) = v[0];
        pat.y(i) = v[1];
        pat.ycalc(i) = v[2];
        pat.bgr(i) = v[4];
        if (i <= npeaks) {
            const auto at = line.find('(');
            const std::string text = at == std::string::npos ? std::string() : Trim(line.substr(at));
            info.refl_pos(i) = v[5];
            info.refl_phase(i) = 1;
            info.refl_code(i) = 1;
            info.refl_label(i) = Cut(Prf_I(i, 4) + "   " + text + " Int.:" + Prf_F(v[7], 12, 2) + " Fwhm:" +
                                         Prf_F(v[8], 9, 5) + " Eta:" + Prf_F(v[9], 7, 4), 180);
        }
    }
    info.nrefl = npeaks;
    if (npeaks > 0) {
        info.nphases = 1;
        info.refl_count.resize(1, npeaks);
        info.kvec.assign(1, Array1<float>());
    }
    Prf_Ranges(info, pat);
    return true;
}

}  // namespace hxl
