#include "peaks/pik_file.h"

#include <algorithm>
#include <cmath>

#include "patterns/replace_file.h"
#include "peaks/arcfit_layout.h"
#include "peaks/arcfit_model.h"
#include "support/edit_format.h"
#include "support/fixed_text.h"
#include "support/list_read.h"
#include "support/text_file.h"
#include "support/text_unit.h"

namespace hxl {
namespace {

const char* const kHead =
    "! Ang_init   Ang_fin  Nbac Npeak  Ncyc   Inte  Inst  Jobt  Cont Weight Corr Constr   Percent";
const char* const kGlobalLabels[kArcGlobals] = {
    " <= Kalph2/Kalph1 ratio  &  Flag ", " <= Asymmetry-1(S_L)     &    '  ", " <= Asymmetry-2(D_L)     &    '  ",
    " <= Parameter  U         &    '  ", " <= Parameter  V         &    '  ", " <= Parameter  W         &    '  ",
    " <= Parameter  Z         &    '  ", " <= Parameter Eta0       &    '  ", " <= Parameter  X         &    '  "};
const char* const kBackTail = "        Background   Flag ";
const char* const kPeakTail = "     Intensity    Shift-FWHM     Shift-Eta    Flags ";
const char* const kChi2 = "!  Chi2 = ";

const Layout kFmtTitle("(a)"), kFmtRange("(2f10.4,13i6)"), kFmtWave("(2f12.6,a)"), kFmtGlobal("(f14.6,4x,i2,5x,a)"),
    kFmtBack("(2f14.4,i6)"), kFmtPeak("(f14.6,f14.3,2f14.6,4i3)"), kFmtChi2("(a,f14.6)");

bool Is_Comment(std::string_view line) {
    const std::size_t i = line.find_first_not_of(" \t");
    return i != std::string_view::npos && line[i] == '!';
}

// The next line that is not a comment; the comments passed over go to `comments`.
bool Next_Data(Text_Unit& u, std::string& line, std::vector<std::string>* comments = nullptr) {
    while (u.Read_Line(line)) {
        if (!Is_Comment(line)) return true;
        if (comments) comments->push_back(line);
    }
    return false;
}

// Reads the reals and then the integers of one line in a fixed layout; values
// must be finite and flags 0 or 1.
bool Read_Fields(const Layout& layout, const std::string& line, std::initializer_list<float*> reals,
                 std::initializer_list<int*> flags) {
    Edit_Reader r(layout.Format(), std::string_view(line));
    for (float* v : reals)
        if (!r.Real(*v) || !std::isfinite(*v)) return false;
    for (int* f : flags)
        if (!r.Int(*f) || (*f != 0 && *f != 1)) return false;
    return true;
}

bool Fail(std::string& message, const std::string& text) {
    message = text;
    return false;
}

}  // namespace

bool Read_Pik_Text(const std::string& text, PIK_JOB_TYPE& job, std::string& message) {
    message.clear();
    if (text.find('\0') != std::string::npos) return Fail(message, "  => Error in pik input file at reading TITLE !");
    Text_Unit u;
    u.Set_Text(text);
    PIK_JOB_TYPE j;  // filled apart, handed over only when whole
    if (!u.Read_Line(j.title)) return Fail(message, " => End of pik-file at reading, title in file: ");
    // A byte-order mark is no part of the title: the file may hold several when
    // editors added one each, and the text unit takes off only the first.
    while (Starts_With(j.title, "\xEF\xBB\xBF")) j.title.erase(0, 3);

    const char* const range_error = " => Error at reading: tof/2theta_ini, tof/2theta_fin, n_ba, etc ! ";
    std::vector<std::string> comments;
    std::string line;
    if (!Next_Data(u, line, &comments)) return Fail(message, range_error);
    j.constant_wavelength = std::any_of(comments.begin(), comments.end(),
                                        [](const std::string& c) { return c.find("Ang_init") != std::string::npos; });
    double v[13];
    if (List_Read(std::string_view(line), v, 13) != List_Result::Ok) return Fail(message, range_error);
    int* ints[11] = {&j.nbac, &j.npeak, &j.ncyc, &j.inte, &j.inst, &j.jobt, &j.cont, &j.weight, &j.corr, &j.constr,
                     &j.percent};
    // Values the line's layout (2f10.4,13i6) could not write back with a blank
    // before them are refused: the job file written after a run would not read.
    if (!(std::fabs(v[0]) < 10000.0) || !(v[1] > -1000.0 && v[1] < 10000.0)) return Fail(message, range_error);
    j.ang_init = static_cast<float>(v[0]);
    j.ang_fin = static_cast<float>(v[1]);
    for (int i = 0; i < 11; ++i) {
        if (!(v[i + 2] >= -9999.0 && v[i + 2] <= 99999.0) || v[i + 2] != std::floor(v[i + 2]))
            return Fail(message, range_error);
        *ints[i] = static_cast<int>(v[i + 2]);
    }
    if (j.nbac < 0 || j.npeak < 0 || j.npeak > kArcMaxPeaks) return Fail(message, range_error);
    if (j.nbac > kArcMaxBackground) return Fail(message, " => Error: too many background parameters ! ");

    if (!Next_Data(u, line) || !Read_Fields(kFmtWave, line, {&j.lambda1, &j.lambda2}, {}))
        return Fail(message, " => Error at reading: Lambda1,Lambda2 or d2tof ! ");

    for (int i = 1; i <= kArcGlobals; ++i) {
        if (!Next_Data(u, line) || !Read_Fields(kFmtGlobal, line, {&j.glob[i]}, {&j.gflag[i]})) {
            const char* what = i == 1   ? " => Error at reading Ka2/Ka1 ratio: "
                               : i <= 3 ? " => Error at reading asymmetry parameter: "
                                        : " => Error at reading global parameter: ";
            return Fail(message, what + line);
        }
    }

    comments.clear();
    j.bx.resize(j.nbac);
    j.bv.resize(j.nbac);
    j.bf.resize(j.nbac);
    for (int i = 1; i <= j.nbac; ++i) {
        if (!Next_Data(u, line, &comments) || !Read_Fields(kFmtBack, line, {&j.bx(i), &j.bv(i)}, {&j.bf(i)}))
            return Fail(message, " => Error at reading background parameter: " + std::to_string(i));
    }
    for (const std::string& c : comments) {
        const std::size_t at = c.find("Background");
        if (at != std::string::npos && c.find('!') < at) {
            const std::string label = Trim(c.substr(c.find('!') + 1, at - c.find('!') - 1));
            if (!label.empty()) j.x_label = label;
        }
    }

    j.pos.resize(j.npeak);
    j.inten.resize(j.npeak);
    j.shf_g.resize(j.npeak);
    j.shf_e.resize(j.npeak);
    j.pf.resize(j.npeak);
    for (int k = 1; k <= j.npeak; ++k) {
        std::array<int, 4>& f = j.pf(k);
        if (!Next_Data(u, line) || !Read_Fields(kFmtPeak, line, {&j.pos(k), &j.inten(k), &j.shf_g(k), &j.shf_e(k)},
                                                {&f[0], &f[1], &f[2], &f[3]}))
            return Fail(message, " => Error at reading peak parameter: " + std::to_string(k));
    }
    while (u.Read_Line(line)) {
        if (!Starts_With(line, kChi2)) continue;
        float chi2 = 0;
        if (Parse_Real(Trim(line.substr(std::string(kChi2).size())), chi2)) {
            j.has_chi2 = true;
            j.chi2 = chi2;
        }
    }
    job = std::move(j);
    return true;
}

bool Read_Pik(const std::string& file, PIK_JOB_TYPE& job, std::string& message) {
    TEXT_FILE_TYPE t;
    std::string why;
    if (!Read_Text_File(file, kTextFileLimit, t, why)) {
        message = "ERROR opening the file: " + file;
        return false;
    }
    return Read_Pik_Text(t.text, job, message);
}

std::string Pik_Text(const PIK_JOB_TYPE& j) {
    std::string out;
    kFmtTitle(out, j.title);
    out += kHead;
    out += '\n';
    const int nb = std::min({j.nbac, kArcMaxBackground, j.bx.size(), j.bv.size(), j.bf.size()});
    const int np = std::min({j.npeak, j.pos.size(), j.inten.size(), j.shf_g.size(), j.shf_e.size(), j.pf.size()});
    // Inte, Inst and Jobt go out as 0: a written job reads back with no second line.
    kFmtRange(out, j.ang_init, j.ang_fin, nb, np, j.ncyc, 0, 0, 0, j.cont, j.weight, j.corr, j.constr, j.percent);
    kFmtWave(out, j.lambda1, j.lambda2, "  <=  Lambda1 & Lambda2");
    out += "!  Global Profile Parameters:\n";
    for (int i = 1; i <= kArcGlobals; ++i) kFmtGlobal(out, j.glob[i], j.gflag[i], kGlobalLabels[i - 1]);
    out += "!  Background Parameters:\n";
    out += "!     " + j.x_label + kBackTail + "\n";
    for (int i = 1; i <= nb; ++i) kFmtBack(out, j.bx(i), j.bv(i), j.bf(i));
    out += "!  Reflection Parameters:\n";
    out += "!       " + j.x_label + kPeakTail + "\n";
    for (int k = 1; k <= np; ++k) {
        const std::array<int, 4>& f = j.pf(k);
        kFmtPeak(out, j.pos(k), j.inten(k), j.shf_g(k), j.shf_e(k), f[0], f[1], f[2], f[3]);
    }
    if (j.has_chi2) kFmtChi2(out, kChi2, j.chi2);
    return out;
}

bool Write_Pik(const std::string& file, const PIK_JOB_TYPE& job, std::string& message) {
    message.clear();
    if (Replace_File(file, Pik_Text(job))) return true;
    message = "ERROR opening the file: " + file;
    return false;
}

void Size_Peak_Lists(PIK_JOB_TYPE& j) {
    j.pos = Array1<float>(j.npeak);
    j.inten = Array1<float>(j.npeak);
    j.shf_g = Array1<float>(j.npeak);
    j.shf_e = Array1<float>(j.npeak);
    j.pf = Array1<std::array<int, 4>>(j.npeak);
}

}  // namespace hxl
