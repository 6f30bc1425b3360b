// Single-crystal lists: one line per reflection with observed and
// calculated values, drawn as a profile of type "MONO".
#include <cmath>
#include <vector>

#include "prf/prf_labels.h"
#include "prf/prf_read_state.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {

bool Read_Prf_Sin(PRF_READ_STATE& s, PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& pat, std::string& message) {
    std::string line;
    s.unit.Rewind();
    long long count = 0;
    while (Prf_Line(s.unit, line)) ++count;
    s.unit.Rewind();
    Prf_Line(s.unit, line);

    int nk = 0;
    const bool super = line.find("superspace") != std::string::npos;
    if (super) {
        const auto at = line.find("superspace");
        if (List_Read(std::string_view(line).substr(at + 10), &nk, 1) != List_Result::Ok || nk < 1 || nk > 3) {
            message = "ERROR: The number of k-vector for superspace is not provided";
            return false;
        }
        pat.title = Cut(line.substr(0, at), kTitleLen);
        for (int i = 0; i < nk; ++i) Prf_Line(s.unit, line);
        count -= 2 + nk;
    } else if (s.sx) {
        Prf_Line(s.unit, line);
        count -= 3;
    } else {
        count -= 2;
    }
    Prf_Line(s.unit, line);  // heading
    if (count < 1) {
        message = "ERROR Format Special: npts <= 0";
        return false;
    }
    const int n = static_cast<int>(count);
    pat.x.resize(n);
    pat.y.resize(n);
    pat.ycalc.resize(n);
    pat.sigma.resize(n);
    pat.al_x = pat.al_y = pat.al_ycalc = pat.al_sigma = true;
    pat.gy = pat.gycalc = pat.gsigma = true;
    const bool with_refl = n > 6;
    if (with_refl) Prf_Allocate_Reflections(info, n);

    int got = 0;
    const int nidx = 3 + nk;
    while (got < n && Prf_Line(s.unit, line)) {
        const int i = got + 1;
        std::string label;
        float discard = 0;
        if (s.sx) {
            Edit_Reader r(Prf_Format("(f12.5,4f12.2,a)"), line);
            if (!(r.Real(pat.x(i)) && r.Real(pat.y(i)) && r.Real(pat.ycalc(i)) && r.Real(pat.sigma(i)) &&
                  r.Real(discard) && r.Text(label)))
                break;
            label = Cut(label, 180);
        } else {
            float v[5];
            int hkl[6] = {0, 0, 0, 0, 0, 0};
            if (List_Read(line, v, 5) != List_Result::Ok) break;
            // the indices follow the five values on the same line
            std::string_view rest = line;
            for (int w = 0; w < 5; ++w) {
                const auto b = rest.find_first_not_of(" \t,");
                if (b == std::string_view::npos) break;
                const auto e = rest.find_first_of(" \t,", b);
                rest = e == std::string_view::npos ? std::string_view() : rest.substr(e);
            }
            if (List_Read(rest, hkl, nidx) != List_Result::Ok) break;
            pat.x(i) = v[0];
            pat.y(i) = v[1];
            pat.ycalc(i) = v[2];
            pat.sigma(i) = v[3];
            label = " (";
            for (int k = 0; k < nidx; ++k) label += Prf_I(hkl[k], 4);
            label += ") ";
            if (super) {
                int kind = 0;
                if (auto at = line.find("Code_mag_nuc:"); at != std::string::npos)
                    List_Read(std::string_view(line).substr(at + 13), &kind, 1);
                label += Prf_Kind_Name(kind);
            }
            label = Trim_Right(label);
        }
        if (with_refl) {
            info.refl_label(i) = label;
            info.refl_pos(i) = pat.x(i);
            info.refl_phase(i) = 1;
            info.refl_code(i) = 1;
        }
        ++got;
    }
    if (got < 1) {
        message = "ERROR Format Special: npts <= 0";
        return false;
    }
    pat.npts = got;
    for (auto* a : {&pat.x, &pat.y, &pat.ycalc, &pat.sigma}) a->vec().resize(static_cast<std::size_t>(got));
    if (with_refl) {
        Prf_Cut_Reflections(info, got);
        info.nphases = 1;
        info.refl_count.resize(1, got);
        info.kvec.assign(1, Array1<float>());
    }
    info.prf_type = "MONO";
    pat.scat_var = "mono";
    float xl = pat.x(1), xh = xl, yl = pat.y(1), yh = yl;
    for (int i = 1; i <= got; ++i) {
        xl = std::fmin(xl, pat.x(i));
        xh = std::fmax(xh, pat.x(i));
        yl = std::fmin(yl, std::fmin(pat.y(i), pat.ycalc(i)));
        yh = std::fmax(yh, std::fmax(pat.y(i), pat.ycalc(i)));
    }
    pat.xmin = xl;
    pat.xmax = xh;
    pat.ymin = yl;
    pat.ymax = yh;
    pat.step = got > 1 ? (xh - xl) / static_cast<float>(got - 1) : 0.0f;
    return true;
}

}  // namespace hxl
