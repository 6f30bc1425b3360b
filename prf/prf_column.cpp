// The ordinary column layout: a head of counts, propagation vectors and
// excluded regions, a heading whose length names the layout, then the
// profile and the reflections.
#include <vector>

#include "prf/prf_labels.h"
#include "prf/prf_read_state.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {
namespace {

constexpr const char* kProfile = "(f12.4,4(a1,f8.0))";
constexpr const char* kReflection = "(f12.4,37x,i8,a1,a1,3i3,a1,a1,2i3)";
constexpr const char* kJoined = "(f12.4,4(a1,f8.0),a1,f12.4,a1,i8,a1,a1,3i3,a1,a1,2i3)";
constexpr const char* kJoinedTail = "(f12.4,4(a1,f8.0),a1,f12.4)";

std::vector<std::string> words(const std::string& line) {
    std::vector<std::string> w;
    std::size_t i = 0;
    while (i < line.size()) {
        while (i < line.size() && (line[i] == ' ' || line[i] == '\t')) ++i;
        const std::size_t b = i;
        while (i < line.size() && line[i] != ' ' && line[i] != '\t') ++i;
        if (i > b) w.push_back(line.substr(b, i - b));
    }
    return w;
}

// One reflection as the file gives it.
struct REFL_ROW {
    float pos = 0;
    int code = 0;
    int hkl[6] = {0, 0, 0, 0, 0, 0};
    int extra = 0;   // indices beyond hkl
    int kind = 0;
    int lambda = 0;
    int phase = 0;   // from a ":" marker; 0 when the line has none
};

struct COLUMN_READER {
    PRF_READ_STATE& s;
    PRF_INFO_ADD_TYPE& info;
    DIFFRACTION_PATTERN_TYPE& pat;
    std::string& message;

    bool fail(const std::string& m) {
        message = m;
        return false;
    }
    float shift(float x) const { return Prf_Shift(x, s.zero, s.c1, s.c2, Prf_Zero_Only(pat)); }

    void store(int j, const REFL_ROW& r) {
        int phase = 1, vector = 0;
        if (r.phase > 0) {
            phase = r.phase;
            if (s.has_k > 0) Prf_Phase_From_Code(r.code, s.nvk, vector);
        } else if (s.has_k > 0) {
            phase = Prf_Phase_From_Code(r.code, s.nvk, vector);
        } else {
            phase = r.code;
        }
        if (phase < 1 || phase > info.nphases) phase = 1;  // a phase the head does not declare: the first row
        info.refl_pos(j) = r.pos - shift(r.pos);
        info.refl_code(j) = s.has_k > 0 ? phase : r.code;
        info.refl_kind(j) = r.kind;
        info.refl_phase(j) = phase;
        std::string label;
        if (r.extra > 0) {
            label = Prf_Label_Super(r.hkl, r.extra, phase, r.lambda, r.kind);
        } else if (s.has_k > 0) {
            float k[3] = {0, 0, 0};
            const auto& kv = info.kvec[static_cast<std::size_t>(phase - 1)];
            if (vector > 0 && kv.size() >= 3 * vector)
                for (int c = 0; c < 3; ++c) k[c] = kv(3 * (vector - 1) + 1 + c);
            label = Prf_Label_Kvec(r.hkl, phase, k, r.lambda);
        } else if (r.kind != 0) {
            label = Prf_Label_Kind(r.hkl, phase, r.kind);
        } else {
            label = Prf_Label_Lambda(r.hkl, phase, r.lambda);
        }
        info.refl_label(j) = Cut(label, 180);
    }

    bool read_head();
    bool read_counts();
    bool read_vectors();
    bool read_excluded();
    bool read_profile_46();
    bool read_reflections_46();
    bool read_reflections_53();
    bool read_joined_52();
    bool run();
};

bool COLUMN_READER::read_head() {
    const std::vector<std::string> w = words(s.line2);
    int nph = 0, npts = 0, iv = 0;
    float l1 = 0, l2 = 0;
    if (w.size() == 7 || w.size() == 8) {
        const bool eight = w.size() == 8;
        Edit_Reader r(Prf_Format(eight ? "(i3,i7,5f12.5,i5)" : "(i3,i7,5f12.5)"), s.line2);
        bool ok = r.Int(nph) && r.Int(npts) && r.Real(l1) && r.Real(l2) && r.Real(s.zero) && r.Real(s.c1) &&
                  r.Real(s.c2) && (!eight || r.Int(iv));
        if (!ok || nph < 0)
            return fail(eight ? "Error reading (col=8): nphases,npts,lambda1,lambda2, glb1, ..."
                              : "Error reading (col=7): nphases,npts,lambda1,lambda2, glb1, ...");
        const bool tof = eight ? iv == 1 : s.c1 > 10.0f;
        if (tof) {
            pat.scat_var = "TOF";
            pat.lambda1 = s.c1;  // Dtt1 and Dtt2
            pat.lambda2 = s.c2;
        } else if (eight && iv == 2) {
            pat.scat_var = "Energy";
            pat.xax_text = "Energy (KeV)";
            pat.lambda1 = s.c1;
            pat.lambda2 = s.c2;
        } else {
            pat.scat_var = "2theta";
            pat.lambda1 = l1;
            pat.lambda2 = l2;
        }
    } else {
        return fail("Error in number of columns");
    }
    if (npts < 1) return fail("ERROR Format Special: npts <= 0");
    if (Prf_Implausible(s.unit, npts)) return fail("ERROR Format Special: npts larger than the file can hold");
    info.nphases = nph;
    pat.npts = npts;
    pat.x.resize(npts);
    pat.y.resize(npts);
    pat.ycalc.resize(npts);
    pat.bgr.resize(npts);
    pat.al_x = pat.al_y = pat.al_ycalc = pat.al_bgr = true;
    pat.gy = pat.gycalc = pat.gbgr = true;
    return true;
}

bool COLUMN_READER::read_counts() {
    const int n = info.nphases;
    std::vector<int> ic(static_cast<std::size_t>(n)), nvk(static_cast<std::size_t>(n));
    int nexcl = 0;
    auto read_part = [&](int from, int to, bool last) {
        const int m = to - from;
        std::vector<int> buf(static_cast<std::size_t>(2 * m + (last ? 1 : 0)));
        if (List_Read(s.unit, buf.data(), static_cast<int>(buf.size())) != List_Result::Ok) return false;
        for (int i = 0; i < m; ++i) {
            ic[static_cast<std::size_t>(from + i)] = buf[static_cast<std::size_t>(i)];
            nvk[static_cast<std::size_t>(from + i)] = buf[static_cast<std::size_t>(m + i)];
        }
        if (last) nexcl = buf.back();
        return true;
    };
    bool ok = n <= 8 ? read_part(0, n, true) : (read_part(0, 8, false) && read_part(8, n, true));
    long long nrefl = 0, has_k = 0;
    for (int i = 0; ok && i < n; ++i) {
        if (ic[static_cast<std::size_t>(i)] < 0 || nvk[static_cast<std::size_t>(i)] < 0) ok = false;
        nrefl += ic[static_cast<std::size_t>(i)];
        has_k += nvk[static_cast<std::size_t>(i)];
    }
    if (!ok || nexcl < 0 || Prf_Implausible(s.unit, nrefl) || Prf_Implausible(s.unit, has_k) ||
        Prf_Implausible(s.unit, nexcl))
        return fail("Error reading: ic, nvk");
    info.refl_count.resize(n);
    s.nvk.resize(n);
    s.superspace.resize(n, 0);
    info.kvec.assign(static_cast<std::size_t>(n), Array1<float>());
    for (int i = 1; i <= n; ++i) {
        info.refl_count(i) = ic[static_cast<std::size_t>(i - 1)];
        s.nvk(i) = nvk[static_cast<std::size_t>(i - 1)];
    }
    info.nrefl = static_cast<int>(nrefl);
    s.has_k = static_cast<int>(has_k);
    s.nexcl = nexcl;
    return true;
}

bool COLUMN_READER::read_vectors() {
    if (s.has_k == 0) return true;
    for (int p = 1; p <= info.nphases; ++p) {
        auto& kv = info.kvec[static_cast<std::size_t>(p - 1)];
        kv.resize(3 * s.nvk(p));
        for (int j = 1; j <= s.nvk(p); ++j) {
            Edit_Reader r(Prf_Format("(3f10.5,a)"), s.unit);
            std::string rest;
            if (!(r.Real(kv(3 * j - 2)) && r.Real(kv(3 * j - 1)) && r.Real(kv(3 * j)) && r.Text(rest)))
                return fail("Error reading propagation vectors");
            if (Same(Cut(Adjustl(rest), 60), "superspace")) s.superspace(p) = 1;
        }
        if (s.superspace(p) != 0 && s.nvk(p) > 3) return fail("Error reading propagation vectors");
    }
    return true;
}

bool COLUMN_READER::read_excluded() {
    Prf_Excluded_Room(info, s.nexcl);
    info.nexcl = s.nexcl;
    for (int i = 1; i <= s.nexcl; ++i) {
        Edit_Reader r(Prf_Format("(2f14.5)"), s.unit);
        float lo = 0, hi = 0;
        if (!(r.Real(lo) && r.Real(hi))) return fail("Error reading excluded regions");
        info.excl_low(i) = lo - shift(lo);
        info.excl_high(i) = hi - shift(hi);
    }
    return true;
}

// x, sep, y, sep, ycalc, sep, difference, sep, bgr.
bool read_points(Edit_Reader& r, DIFFRACTION_PATTERN_TYPE& pat, int i) {
    std::string sep;
    float diff = 0;
    return r.Real(pat.x(i)) && r.Text(sep) && r.Real(pat.y(i)) && r.Text(sep) && r.Real(pat.ycalc(i)) &&
           r.Text(sep) && r.Real(diff) && r.Text(sep) && r.Real(pat.bgr(i));
}

// code, two separators, hkl, two separators, kind and wavelength number.
bool read_reflection_tail(Edit_Reader& r, REFL_ROW& row) {
    std::string sep;
    return r.Int(row.code) && r.Text(sep) && r.Text(sep) && r.Int(row.hkl[0]) && r.Int(row.hkl[1]) &&
           r.Int(row.hkl[2]) && r.Text(sep) && r.Text(sep) && r.Int(row.kind) && r.Int(row.lambda);
}

bool COLUMN_READER::read_profile_46() {
    for (int i = 1; i <= pat.npts; ++i) {
        Edit_Reader r(Prf_Format(kProfile), s.unit);
        if (!read_points(r, pat, i)) return fail("Error reading profile for Prf=+3");
        pat.x(i) -= shift(pat.x(i));
    }
    return true;
}

bool COLUMN_READER::read_reflections_46() {
    for (int j = 1; j <= info.nrefl; ++j) {
        Edit_Reader r(Prf_Format(kReflection), s.unit);
        REFL_ROW row;
        if (!(r.Real(row.pos) && read_reflection_tail(r, row))) {
            if (j == 1) return fail("Error reading first reflections for Prf=+3");
            Prf_Cut_Reflections(info, j - 1);  // a list that ends early is no failure
            break;
        }
        store(j, row);
    }
    return true;
}

bool COLUMN_READER::read_reflections_53() {
    for (int j = 1; j <= info.nrefl; ++j) {
        std::string line;
        if (!Prf_Line(s.unit, line)) return fail("Error reading reflections for Prf=+3 ");
        REFL_ROW row;
        if (auto at = line.find(':'); at != std::string::npos) {
            if (List_Read(std::string_view(line).substr(at + 1), &row.phase, 1) != List_Result::Ok || row.phase < 1 ||
                row.phase > info.nphases)
                return fail("Error reading reflections for Prf=+3 ");
        } else {
            row.phase = 1;
        }
        const int ph = row.phase > 0 ? row.phase : 1;
        bool ok;
        if (ph <= info.nphases && s.superspace(ph) != 0) {
            row.extra = s.nvk(ph);
            const std::string fmt = "(f12.4,i10,a1," + std::to_string(3 + row.extra) + "i4,a1,2i4,a1,i3)";
            Edit_Reader r(Prf_Format(fmt), line);
            std::string sep;
            ok = r.Real(row.pos) && r.Int(row.code) && r.Text(sep);
            for (int k = 0; ok && k < 3 + row.extra; ++k) ok = r.Int(row.hkl[k]);
            ok = ok && r.Text(sep) && r.Int(row.kind) && r.Int(row.lambda);
        } else {
            Edit_Reader r(Prf_Format(kReflection), line);
            ok = r.Real(row.pos) && read_reflection_tail(r, row);
        }
        if (!ok) return fail("Error reading reflections for Prf=+3 ");
        store(j, row);
    }
    return true;
}

bool COLUMN_READER::read_joined_52() {
    if (info.nrefl > pat.npts) Prf_Cut_Reflections(info, pat.npts);  // one reflection per point at most
    for (int i = 1; i <= pat.npts; ++i) {
        const bool with_refl = i <= info.nrefl;
        Edit_Reader r(Prf_Format(with_refl ? kJoined : kJoinedTail), s.unit);
        REFL_ROW row;
        std::string sep;
        bool ok = read_points(r, pat, i) && r.Text(sep) && r.Real(row.pos);
        if (ok && with_refl) ok = r.Text(sep) && read_reflection_tail(r, row);
        if (!ok) return fail("Error reading profile for Prf=-3");
        pat.x(i) -= shift(pat.x(i));
        if (with_refl) store(i, row);
    }
    return true;
}

bool COLUMN_READER::run() {
    if (!(read_head() && read_counts() && read_vectors())) return false;
    Prf_Allocate_Reflections(info, info.nrefl);
    if (!read_excluded()) return false;
    std::string heading;
    if (!Prf_Line(s.unit, heading, 200)) return fail("Error reading headings of columns");
    std::size_t L = Trim_Right(heading).size();
    if (heading.find("r.l.u.") != std::string::npos) {
        pat.scat_var = "r.l.u.";
        pat.xax_text = "Reciprocal Lattice Units (r.l.u.)";
        pat.yax_text = heading.find("Log") != std::string::npos ? "Log(Intensity)(arb. units)"
                                                                : " Intensity (arb. units)";
        L = 46;
    }
    bool ok;
    if (L == 46) {
        ok = read_profile_46() && read_reflections_46();
    } else if (L == 53) {
        ok = read_profile_46() && read_reflections_53();
    } else if (L == 52) {
        ok = read_joined_52();
    } else {
        return fail("Error! Prf is not => Prf=+3 or Prf=-3!\rLine read: " + heading);
    }
    if (!ok) return false;
    Prf_Ranges(info, pat);
    return true;
}

}  // namespace

bool Read_Prf_Column(PRF_READ_STATE& s, PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& pat, std::string& message) {
    COLUMN_READER c{s, info, pat, message};
    return c.run();
}

}  // namespace hxl
