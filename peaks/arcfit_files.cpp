#include "peaks/arcfit_files.h"

#include <algorithm>
#include <filesystem>

#include "patterns/replace_file.h"
#include "peaks/arcfit_layout.h"
#include "peaks/arcfit_model.h"
#include "support/text_file.h"

namespace hxl {
namespace {

void Line(std::string& out, const char* text) {
    out += text;
    out += '\n';
}

}  // namespace

std::string Arc_Out_Head(const PIK_JOB_TYPE& j, int refined) {
    std::string out;
    const char* rule = "            ------------------------------------ ";
    Line(out, rule);
    Line(out, "     --- PROGRAM: ARCFIT (Embedded in Zendrite-2006 ---");
    Line(out, "            (Author: Ostrander, NRF)");
    Line(out, "                (version 5.0 November - 2015) ");
    Line(out, rule);
    const Layout two_texts("(/,a,a)"), one_text("(/,a)"), real("(a,1x,f12.6)"), count("(a,1x,i5)"),
        wave("(a,2f14.6)"), flagged("(a,f14.6,i3)"), back("(2f18.4,i4)"), peak("(f14.6,f14.2,2f14.6,5x,4i3)"),
        head("(/,a,/)"), total("(/,a,i4,/)");
    two_texts(out, " => TITLE: ", j.title);
    one_text(out, " => " + j.x_label + " range, peaks and cycles read ");
    real(out, " => " + j.x_label + "(init)    :", j.ang_init);
    real(out, " => " + j.x_label + "(fin )    :", j.ang_fin);
    count(out, " => Number of peaks :", j.npeak);
    count(out, " => Number of background points :", j.nbac);
    count(out, " => Number of cycles:", j.ncyc);
    wave(out, " => Wave (A)               :", j.lambda1, j.lambda2);
    one_text(out, " => Global parameters                 Flag");
    flagged(out, " => Kalph2/Kalph1 ratio    :", j.glob[1], j.gflag[1]);
    flagged(out, " => Asymmetry parameter S_L:", j.glob[2], j.gflag[2]);
    flagged(out, " => Asymmetry parameter D_L:", j.glob[3], j.gflag[3]);
    Line(out, "      Profile Parameters for Pseudo-Voigt");
    Line(out, "        pV(x) = ETA* L(x) + (1-ETA)* G(x)");
    Line(out, "    FWHM = SQRT((U tanT + V) tanT + W) + Z/cosT");
    Line(out, "    ETA  = Eta0 + X * 2T ");
    const char* names[6] = {" => Parameter  U           :", " => Parameter  V           :",
                            " => Parameter  W           :", " => Parameter  Z           :",
                            " => Parameter  Eta0        :", " => Parameter  X           :"};
    for (int i = 0; i < 6; ++i) flagged(out, names[i], j.glob[static_cast<std::size_t>(4 + i)], j.gflag[4 + i]);
    Line(out, " => Background parameters");
    Line(out, "      Scatt. Variable     Background  Flag");
    for (int i = 1; i <= std::min({j.nbac, j.bx.size(), j.bv.size(), j.bf.size()}); ++i)
        back(out, j.bx(i), j.bv(i), j.bf(i));
    head(out, "      Position      Intensity      D-Gamma         D-Eta          Flags");
    for (int k = 1; k <= std::min({j.npeak, j.pos.size(), j.pf.size(), j.inten.size(), j.shf_g.size(),
                                   j.shf_e.size()});
         ++k) {
        const std::array<int, 4>& f = j.pf(k);
        peak(out, j.pos(k), j.inten(k), j.shf_g(k), j.shf_e(k), f[0], f[1], f[2], f[3]);
    }
    total(out, " => Total number of refined parameters: ", refined);
    return out;
}

std::string Arc_Irf_Text(const std::vector<ARC_IRF_PEAK_TYPE>& peaks, float s_l, float d_l, bool is_new) {
    std::string out;
    if (is_new) Line(out, "! Resolution function (IRESO=8) : 2theta(deg.)   HG(deg.)   HL(deg.)   S_L   D_L");
    Layout("(5x,i3,a)")(out, static_cast<int>(peaks.size()), "    <<<< Include number of points in the following list");
    const Layout good("(1x,f12.6,1x,4f12.6)"), bad("(1x,f12.6,1x,2a,2f12.6)");
    for (const ARC_IRF_PEAK_TYPE& p : peaks) {
        if (p.ok)
            good(out, p.pos, p.hg, p.hl, s_l, d_l);
        else
            bad(out, p.pos, "    ******", "    ******", s_l, d_l);
    }
    return out;
}

bool Write_Arc_Irf(const std::string& file, const std::vector<ARC_IRF_PEAK_TYPE>& peaks, float s_l, float d_l,
                   std::string& message) {
    message.clear();
    std::error_code ec;
    const bool exists = std::filesystem::exists(file, ec);
    std::string text;
    if (exists) {
        TEXT_FILE_TYPE old;
        if (!Read_Text_File(file, kTextFileLimit, old, message)) return false;
        text = old.text;
        if (!text.empty() && text.back() != '\n') text += '\n';
    }
    text += Arc_Irf_Text(peaks, s_l, d_l, !exists);
    if (Replace_File(file, text)) return true;
    message = "ERROR opening the file: " + file;
    return false;
}

std::string Arc_Obscalc_Text(const Array1<float>& x, const Array1<float>& yobs, const Array1<float>& ycalc,
                             const Array1<float>& bgr, const std::vector<Array1<float>>& single) {
    const Layout row("(f12.4,17f12.2)");
    EDIT_FORMAT_TYPE one_line = row.Format();
    std::string out;
    const int n = std::min({x.size(), yobs.size(), ycalc.size(), bgr.size()});
    const std::size_t peaks = std::min<std::size_t>(single.size(), 14);
    for (int i = 1; i <= n; ++i) {
        Edit_Writer w(one_line, out);
        w.Real(x(i)).Real(yobs(i)).Real(ycalc(i)).Real(bgr(i));
        for (std::size_t k = 0; k < peaks; ++k) w.Real(i <= single[k].size() ? single[k](i) : 0.0f);
    }
    return out;
}

bool Write_Arc_Obscalc(const std::string& file, const Array1<float>& x, const Array1<float>& yobs,
                       const Array1<float>& ycalc, const Array1<float>& bgr, const std::vector<Array1<float>>& single,
                       std::string& message) {
    message.clear();
    if (Replace_File(file, Arc_Obscalc_Text(x, yobs, ycalc, bgr, single))) return true;
    message = "ERROR opening the file: " + file;
    return false;
}

}  // namespace hxl
