// The older fixed layout: a constant step, blocks of observed and calculated
// values, and reflection codes that hold the phase in their high bits.
#include <vector>

#include "prf/prf_labels.h"
#include "prf/prf_read_state.h"
#include "support/fixed_text.h"

namespace hxl {

bool Read_Prf_3111(PRF_READ_STATE& s, PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& pat, std::string& message) {
    auto fail = [&](const char* m) {
        message = m;
        return false;
    };
    float thmax = 0, thmin = 0, step = 0;
    int ivers = 0;  // read and not used
    {
        Edit_Reader r(Prf_Format("(2f8.3,f8.5,i8)"), s.unit);
        if (!(r.Real(thmax) && r.Real(thmin) && r.Real(step) && r.Int(ivers))) return fail("ERROR: thmax,thmin,ste,ivers");
    }
    int nph = 0, npts = 0;
    {
        Edit_Reader r(Prf_Format("(i3,i7,5f10.5)"), s.unit);
        if (!(r.Int(nph) && r.Int(npts) && r.Real(pat.lambda1) && r.Real(pat.lambda2) && r.Real(s.zero) &&
              r.Real(s.c1) && r.Real(s.c2)) || nph < 0)
            return fail("ERROR: nphases,npts,lambda1,lambda2,glb1,glb8,glb9");
    }
    if (npts < 1) return fail("ERROR: npts <= 0");
    if (Prf_Implausible(s.unit, npts)) return fail("ERROR: reading Yobs values");

    // Phase counts: eight of each on one line, the rest on a line of their own.
    std::vector<int> ic(static_cast<std::size_t>(nph > 8 ? nph : 8)), nvk(ic.size());
    {
        Edit_Reader r(Prf_Format("(8i5,8i3)"), s.unit);
        bool ok = true;
        for (int i = 0; ok && i < 8; ++i) ok = r.Int(ic[static_cast<std::size_t>(i)]);
        for (int i = 0; ok && i < 8; ++i) ok = r.Int(nvk[static_cast<std::size_t>(i)]);
        if (!ok) return fail(nph <= 8 ? "ERROR: reading nphases <= 8" : "ERROR: reading nphases > 8 (Part 1)");
    }
    if (nph > 8) {
        const std::string n = std::to_string(nph - 8);
        Edit_Reader r(Prf_Format("(" + n + "i5," + n + "i5,i5)"), s.unit);
        bool ok = true;
        for (int i = 8; ok && i < nph; ++i) ok = r.Int(ic[static_cast<std::size_t>(i)]);
        for (int i = 8; ok && i < nph; ++i) ok = r.Int(nvk[static_cast<std::size_t>(i)]);
        int nexcl_unused = 0;  // the count that matters comes later in the file
        if (!(ok && r.Int(nexcl_unused))) return fail("ERROR: reading nphases > 8 (Part 2)");
    }
    long long nrefl = 0, has_k = 0;
    for (int i = 0; i < nph; ++i) {
        if (ic[static_cast<std::size_t>(i)] < 0 || nvk[static_cast<std::size_t>(i)] < 0)
            return fail(nph <= 8 ? "ERROR: reading nphases <= 8" : "ERROR: reading nphases > 8 (Part 2)");
        nrefl += ic[static_cast<std::size_t>(i)];
        has_k += nvk[static_cast<std::size_t>(i)];
    }
    if (Prf_Implausible(s.unit, nrefl)) return fail("ERROR: loading reflection codes");
    if (Prf_Implausible(s.unit, has_k)) return fail("ERROR: reading propagation vectors");

    info.nphases = nph;
    info.refl_count.resize(nph);
    s.nvk.resize(nph);
    info.kvec.assign(static_cast<std::size_t>(nph), Array1<float>());
    for (int i = 1; i <= nph; ++i) {
        info.refl_count(i) = ic[static_cast<std::size_t>(i - 1)];
        s.nvk(i) = nvk[static_cast<std::size_t>(i - 1)];
    }
    info.nrefl = static_cast<int>(nrefl);
    s.has_k = static_cast<int>(has_k);

    pat.npts = npts;
    pat.x.resize(npts);
    pat.y.resize(npts);
    pat.ycalc.resize(npts);
    pat.bgr.resize(npts);
    pat.al_x = pat.al_y = pat.al_ycalc = pat.al_bgr = true;
    pat.gy = pat.gycalc = pat.gbgr = true;
    std::string why;
    if (Edit_Read(s.unit, Prf_Format("(8(f7.0,1x))"), pat.y.data(), npts, why) != Edit_Result::Ok)
        return fail("ERROR: reading Yobs values");
    if (Edit_Read(s.unit, Prf_Format("(8(f7.0,1x))"), pat.ycalc.data(), npts, why) != Edit_Result::Ok)
        return fail("ERROR: reading Ycalc values");

    Prf_Allocate_Reflections(info, info.nrefl);
    if (info.nrefl > 0) {
        if (Edit_Read(s.unit, Prf_Format("(8i10)"), info.refl_code.data(), info.nrefl, why) != Edit_Result::Ok)
            return fail("ERROR: loading reflection codes");
        if (Edit_Read(s.unit, Prf_Format("(10f8.3)"), info.refl_pos.data(), info.nrefl, why) != Edit_Result::Ok)
            return fail("ERROR: loading angular positions of reflections");
    }
    int nexcl = 0;
    {
        Edit_Reader r(Prf_Format("(i8)"), s.unit);
        if (!r.Int(nexcl) || nexcl < 0 || Prf_Implausible(s.unit, nexcl))
            return fail("ERROR: reading number of excluded regions");
    }
    Prf_Excluded_Room(info, nexcl);
    info.nexcl = nexcl;
    for (int i = 1; i <= nexcl; ++i) {
        Edit_Reader r(Prf_Format("(2f8.2)"), s.unit);
        if (!(r.Real(info.excl_low(i)) && r.Real(info.excl_high(i)))) return fail("ERROR: reading excluded regions");
        info.excl_low(i) -= Prf_Shift(info.excl_low(i), s.zero, s.c1, s.c2);
        info.excl_high(i) -= Prf_Shift(info.excl_high(i), s.zero, s.c1, s.c2);
    }
    if (s.has_k > 0) {
        for (int p = 1; p <= nph; ++p) {
            auto& kv = info.kvec[static_cast<std::size_t>(p - 1)];
            kv.resize(3 * s.nvk(p));
            for (int j = 1; j <= s.nvk(p); ++j) {
                Edit_Reader r(Prf_Format("(3f10.5)"), s.unit);
                if (!(r.Real(kv(3 * j - 2)) && r.Real(kv(3 * j - 1)) && r.Real(kv(3 * j))))
                    return fail("ERROR: reading propagation vectors");
            }
        }
        Edit_Reader r(Prf_Format("(24i3)"), s.unit);
        int index = 0;
        if (!r.Int(index)) return fail("ERROR: reading indices of propagation vectors");
    }

    for (int i = 1; i <= npts; ++i) {
        const float x = thmin + static_cast<float>(i - 1) * step;
        pat.x(i) = x - Prf_Shift(x, s.zero, s.c1, s.c2);
    }
    for (int j = 1; j <= info.nrefl; ++j) {
        int phase = Prf_Phase_From_3111_Code(info.refl_code(j));
        if (phase < 1 || phase > nph) phase = 1;  // a phase the head does not declare: the first row
        info.refl_phase(j) = phase;
        info.refl_code(j) = phase;
        info.refl_kind(j) = 0;
        info.refl_pos(j) -= Prf_Shift(info.refl_pos(j), s.zero, s.c1, s.c2);
        // the layout keeps no indices: the label names the phase and the position
        info.refl_label(j) = " ph:" + Prf_I(phase, 2) + "  Pos: " + Prf_F(info.refl_pos(j), 10, 3);
    }
    Prf_Ranges(info, pat);
    pat.step = step;
    pat.scat_var = pat.x(1) <= 180.0f ? "2theta" : "TOF";
    return true;
}

}  // namespace hxl
