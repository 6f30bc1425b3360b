#include "peaks/timefit_listing.h"

#include <algorithm>

#include "peaks/arcfit_layout.h"
#include "peaks/timefit_model.h"

namespace hxl {
namespace {

void Line(std::string& out, const char* text) {
    out += text;
    out += '\n';
}

const char* const kRule = "            ------------------------------------ ";

}  // namespace

std::string Tof_Out_Head(const TOF_JOB_TYPE& j, int refined) {
    std::string out;
    Line(out, kRule);
    Line(out, "                  --- PROGRAM: TIMEFIT ---");
    Line(out, "            (Author: Ostrander, NRF)");
    Line(out, "                 (version 4.0 June - 2015) ");
    Line(out, kRule);
    const Layout two_texts("(/,a,a)"), one_text("(/,a)"), real("(a,f14.4)"), count("(a,1x,i5)"),
        flagged("(a,f16.6,i6)"), back("(2f18.4,i4)"), total("(/,a,i4,/)");
    two_texts(out, " => TITLE: ", j.title);
    one_text(out, " => TOF range, peaks and cycles read ");
    real(out, " => TOF(init)       : ", j.tof_init);
    real(out, " => TOF(fin )       : ", j.tof_fin);
    count(out, " => Number of peaks : ", j.npeak);
    count(out, " => Number of background points : ", j.nbac);
    count(out, " => Number of cycles: ", j.ncyc);
    Layout("(a,f14.6)")(out, " => d to T.O.F. coefficient: ", j.dtt);
    one_text(out, " => Global parameters          Flag");
    const char* names[kTofGlobals] = {" => Global-Alpha", " => Global-Beta ", " => Sig-2       ",
                                      " => Sig-1       ", " => Sig-0       ", " => Global-Eta  "};
    for (int i = 1; i <= kTofGlobals; ++i)
        flagged(out, names[i - 1], j.glob[static_cast<std::size_t>(i)], j.gflag[static_cast<std::size_t>(i)]);
    Line(out, " => Background parameters");
    Line(out, "      Scatt. Variable     Background  Flag");
    for (int i = 1; i <= std::min({j.nbac, j.bx.size(), j.bv.size(), j.bf.size()}); ++i) back(out, j.bx(i), j.bv(i), j.bf(i));
    total(out, " => Total number of refined parameters: ", refined);
    return out;
}

std::string Tof_Final_Table(const TOF_JOB_TYPE& j, const LSQ_STATE_VECTOR_TYPE& vs, float scale) {
    std::string out;
    const char* rule = "  ----------------------------------------";
    Line(out, rule);
    Line(out, "  Final parameters and Standard Deviations");
    Line(out, rule);
    Line(out, "  Global Profile Parameters:  ");
    const Layout global("(a,2f16.6)");
    const char* names[kTofGlobals] = {"     Global-Alpha  : ", "     Global-Beta   : ", "        Sig-2      : ",
                                      "        Sig-1      : ", "        Sig-0      : ", "  Eta (PV-function): "};
    for (int i = 1; i <= kTofGlobals; ++i) global(out, names[i - 1], vs.pv(i), vs.spv(i));
    Line(out, "  Background Parameters:");
    Line(out, "        TOF        Background ");
    const Layout back("(f14.4,2f14.4)");
    for (int i = 1; i <= std::min(j.nbac, j.bx.size()); ++i) back(out, j.bx(i), vs.pv(kTofGlobals + i), vs.spv(kTofGlobals + i));
    Layout("(a,f12.5)")(out, "  Scale factor applied to all integrated intensities:", scale);
    Line(out, "  Reflection Parameters:");
    Line(out, "     TOF-Bragg    Sigma       Intensity      Sigma   Shift-sigma   Sigma  Shift-alpha    Sigma"
              "   Shift-beta    Sigma    Shift-eta    Sigma");
    const Layout row("(f14.4,f10.4,f14.3,f12.3,4(f12.5,f10.5))");
    for (int k = 1; k <= j.npeak; ++k) {
        const int b = Tof_Peak_Base(j.nbac, k);
        row(out, vs.pv(b), vs.spv(b), vs.pv(b + 1) * scale, vs.spv(b + 1) * scale, vs.pv(b + 2), vs.spv(b + 2),
            vs.pv(b + 3), vs.spv(b + 3), vs.pv(b + 4), vs.spv(b + 4), vs.pv(b + 5), vs.spv(b + 5));
    }
    return out;
}

}  // namespace hxl
