#include "peaks/timefit_pik.h"

#include <algorithm>
#include <cmath>

#include "patterns/replace_file.h"
#include "peaks/arcfit_layout.h"
#include "peaks/timefit_model.h"
#include "support/edit_format.h"
#include "support/fixed_text.h"
#include "support/list_read.h"
#include "support/text_file.h"
#include "support/text_unit.h"

namespace hxl {
namespace {

const char* const kHead =
    "!    TOF_init       TOF_fin      Nbac Npeak  Ncyc  Inst  Jobt  Cont Weight Corr Constr Percent ";
const char* const kGlobalLabels[kTofGlobals] = {" <= Global-Alpha &  Flag ", " <= Global-Beta  &       ",
                                                " <= Sig-2        &       ", " <= Sig-1        &       ",
                                                " <= Sig-0        &       ", " <= Eta          &       "};
const char* const kChi2 = "!  Chi2 = ";
const Layout kFmtRange("(2f15.4,10i6)"), kFmtDtt("(f14.6,a)"), kFmtGlobal("(f14.4,4x,i2,5x,a)"),
    kFmtBack("(2f14.4,i6)"), kFmtPeak("(6f14.4,2x,6i2)"), kFmtChi2("(a,f14.6)");

bool Is_Comment(std::string_view line) {
    const std::size_t i = line.find_first_not_of(" \t");
    return i != std::string_view::npos && line[i] == '!';
}

bool Next_Data(Text_Unit& u, std::string& line) {
    while (u.Read_Line(line))
        if (!Is_Comment(line)) return true;
    return false;
}

// The values of a line in its layout: finite reals, flags 0 or 1.
bool Read_Fields(const Layout& layout, const std::string& line, float* reals, int nr, int* flags, int nf) {
    Edit_Reader r(layout.Format(), std::string_view(line));
    for (int i = 0; i < nr; ++i)
        if (!r.Real(reals[i]) || !std::isfinite(reals[i])) return false;
    for (int i = 0; i < nf; ++i)
        if (!r.Int(flags[i]) || (flags[i] != 0 && flags[i] != 1)) return false;
    return true;
}

bool Fail(std::string& message, const std::string& text) {
    message = text;
    return false;
}

}  // namespace

void Size_Tof_Peaks(TOF_JOB_TYPE& j) {
    j.pk = Array1<std::array<float, 6>>(j.npeak);
    j.pf = Array1<std::array<int, 6>>(j.npeak);
}

bool Pik_Text_Is_Tof(const std::string& text) {
    Text_Unit u;
    u.Set_Text(text);
    std::string line;
    if (!u.Read_Line(line)) return false;  // the title
    while (u.Read_Line(line)) {
        if (!Is_Comment(line)) return false;
        return line.find("TOF_init") != std::string::npos;
    }
    return false;
}

bool Read_Tof_Pik_Text(const std::string& text, TOF_JOB_TYPE& job, std::string& message) {
    message.clear();
    if (text.find('\0') != std::string::npos) return Fail(message, "  => Error in pik input file at reading TITLE !");
    Text_Unit u;
    u.Set_Text(text);
    TOF_JOB_TYPE j;
    if (!u.Read_Line(j.title)) return Fail(message, " => End of pik-file at reading, title in file: ");
    while (Starts_With(j.title, "\xEF\xBB\xBF")) j.title.erase(0, 3);
    const char* const range_error = " => Error at reading: tof/2theta_ini, tof/2theta_fin, n_ba, etc ! ";
    std::string line;
    double v[12];
    if (!Next_Data(u, line) || List_Read(std::string_view(line), v, 12) != List_Result::Ok)
        return Fail(message, range_error);
    // What the line's layout (2f15.4,10i6) could not write back is refused.
    if (!(std::fabs(v[0]) < 1e9) || !(std::fabs(v[1]) < 1e9)) return Fail(message, range_error);
    int* ints[10] = {&j.nbac, &j.npeak, &j.ncyc, &j.inst, &j.jobt, &j.cont, &j.weight, &j.corr, &j.constr, &j.percent};
    for (int i = 0; i < 10; ++i) {
        if (!(v[i + 2] >= -9999.0 && v[i + 2] <= 99999.0) || v[i + 2] != std::floor(v[i + 2]))
            return Fail(message, range_error);
        *ints[i] = static_cast<int>(v[i + 2]);
    }
    j.tof_init = static_cast<float>(v[0]);
    j.tof_fin = static_cast<float>(v[1]);
    if (j.nbac < 0 || j.npeak < 0 || j.npeak > kTofMaxPeaks) return Fail(message, range_error);
    if (j.nbac > kTofMaxBackground) return Fail(message, " => Error: too many background parameters ! ");
    // (f14.6) holds it only below 10^7
    if (!Next_Data(u, line) || List_Read(std::string_view(line), v, 1) != List_Result::Ok ||
        !(std::fabs(v[0]) < 999999.0))
        return Fail(message, " => Error at reading: Lambda1,Lambda2 or d2tof ! ");
    j.dtt = static_cast<float>(v[0]);
    for (int i = 1; i <= kTofGlobals; ++i)
        if (!Next_Data(u, line) || !Read_Fields(kFmtGlobal, line, &j.glob[static_cast<std::size_t>(i)], 1,
                                                &j.gflag[static_cast<std::size_t>(i)], 1))
            return Fail(message, " => Error at reading global parameter: " + line);
    j.bx.resize(j.nbac);
    j.bv.resize(j.nbac);
    j.bf.resize(j.nbac);
    for (int i = 1; i <= j.nbac; ++i) {
        float xy[2];
        if (!Next_Data(u, line) || !Read_Fields(kFmtBack, line, xy, 2, &j.bf(i), 1))
            return Fail(message, " => Error at reading background parameter: " + std::to_string(i));
        j.bx(i) = xy[0], j.bv(i) = xy[1];
    }
    Size_Tof_Peaks(j);
    for (int k = 1; k <= j.npeak; ++k)
        if (!Next_Data(u, line) || !Read_Fields(kFmtPeak, line, j.pk(k).data(), 6, j.pf(k).data(), 6))
            return Fail(message, " => Error at reading peak parameter: " + std::to_string(k));
    while (u.Read_Line(line)) {
        if (!Starts_With(line, kChi2)) continue;
        float chi2 = 0;
        if (Parse_Real(Trim(line.substr(std::string(kChi2).size())), chi2)) j.has_chi2 = true, j.chi2 = chi2;
    }
    job = std::move(j);
    return true;
}

std::string Tof_Pik_Text(const TOF_JOB_TYPE& j) {
    std::string out;
    Layout("(a)")(out, j.title);
    out += kHead;
    out += '\n';
    const int nb = std::min({j.nbac, kTofMaxBackground, j.bx.size(), j.bv.size(), j.bf.size()});
    const int np = std::min({j.npeak, j.pk.size(), j.pf.size()});
    kFmtRange(out, j.tof_init, j.tof_fin, nb, np, j.ncyc, j.inst, j.jobt, j.cont, j.weight, j.corr, j.constr, j.percent);
    kFmtDtt(out, j.dtt, "  <=  d to T.O.F. coefficient");
    out += "!  Global Profile Parameters:\n";
    for (int i = 1; i <= kTofGlobals; ++i)
        kFmtGlobal(out, j.glob[static_cast<std::size_t>(i)], j.gflag[static_cast<std::size_t>(i)], kGlobalLabels[i - 1]);
    out += "!  Background Parameters:\n";
    out += "!       TOF        Background   Flag \n";
    for (int i = 1; i <= nb; ++i) kFmtBack(out, j.bx(i), j.bv(i), j.bf(i));
    out += "!  Reflection Parameters:\n";
    out += "!    TOF-Bragg     Intensity   Shift-sigma   Shift-alpha    Shift-beta    Shift-eta   Flags\n";
    for (int k = 1; k <= np; ++k) {
        const auto& p = j.pk(k);
        const auto& f = j.pf(k);
        kFmtPeak(out, p[0], p[1], p[2], p[3], p[4], p[5], f[0], f[1], f[2], f[3], f[4], f[5]);
    }
    if (j.has_chi2) kFmtChi2(out, kChi2, j.chi2);
    return out;
}

bool Write_Tof_Pik(const std::string& file, const TOF_JOB_TYPE& job, std::string& message) {
    message.clear();
    if (Replace_File(file, Tof_Pik_Text(job))) return true;
    message = "ERROR opening the file: " + file;
    return false;
}

bool Read_Any_Pik(const std::string& file, PIK_JOB_TYPE& cw, TOF_JOB_TYPE& tof_job, bool& tof, std::string& message) {
    TEXT_FILE_TYPE t;
    std::string why;
    if (!Read_Text_File(file, kTextFileLimit, t, why)) {
        message = "ERROR opening the file: " + file;
        return false;
    }
    tof = Pik_Text_Is_Tof(t.text);
    return tof ? Read_Tof_Pik_Text(t.text, tof_job, message) : Read_Pik_Text(t.text, cw, message);
}

}  // namespace hxl
