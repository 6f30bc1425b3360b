// The setup of the HKL generator (dialog "HKL Gen"): group, wavelength or dtt1/dtt2, X space.
#include <cmath>

#include "app/main/hkl_gen.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kGroup = 1551, kLambda = 1552, kDtt1 = 1553, kDtt2 = 1554, kXLabel = 1550, kTwoTheta = 1555,
              kTof = 1556;

void define() {
    if (WDialogDefined(kHklSetupDialog)) return;
    const DIALOG_FIELD tth = Radio(kTwoTheta, "2theta", kTwoTheta), tof = Radio(kTof, "TOF", kTwoTheta);
    WDialogDefine({kHklSetupDialog, "HKL Gen", {},
                   {Fld(kGroup, FIELD_KIND::Text, "Sp. group"), Fld(kLambda, FIELD_KIND::Real, ": Wavelength"),
                    Fld(kDtt1, FIELD_KIND::Real, ": dtt1"), Fld(kDtt2, FIELD_KIND::Real, ": dtt2"),
                    Fld(kXLabel, FIELD_KIND::Label, "X space"), tth, tof}});
}

}  // namespace

bool Hkl_Gen_Setup(std::string& text) {
    HKL_GEN_STATE& s = Hkl_Gen_State();
    const ZENDRITE_STORE& g = zendrite_param_global();
    const int k = First_Shown_Slot();
    if (k < 1) {
        text = "No profile is shown";
        return false;
    }
    const DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(k)];
    hxl::HKL_XSPACE space = hxl::HKL_XSPACE::TWOTHETA;
    // the space the profiles are shown in now, which a conversion changes; not the file's own
    if (!hxl::Hkl_XSpace_From_Name(g.xspace, space, text)) return false;
    define();
    WDialogLoad(kHklSetupDialog);
    WDialogPutString(kGroup, s.spgr);
    // a TOF pattern keeps its constants in the wavelength fields
    const bool tof = space == hxl::HKL_XSPACE::TOF;
    WDialogPutReal(kLambda, tof ? s.lambda : (p.lambda1 > 0 ? p.lambda1 : s.lambda), "(f10.5)");
    WDialogPutReal(kDtt1, tof ? p.lambda1 : s.dtt1, "(f12.4)");
    WDialogPutReal(kDtt2, tof ? p.lambda2 : s.dtt2, "(f12.4)");
    WDialogPutRadioButton(tof ? kTof : kTwoTheta);
    WDialogShow(-1, -1, 0, Modal);
    if (WInfoDialog(4) != kIdOk) {
        WDialogUnload();
        text = "Cancelled";
        return false;
    }
    std::string spgr;
    float lambda = -1, dtt1 = 0, dtt2 = 0;
    WDialogGetString(kGroup, spgr);
    WDialogGetReal(kLambda, lambda);
    WDialogGetReal(kDtt1, dtt1);
    WDialogGetReal(kDtt2, dtt2);
    WDialogUnload();
    spgr = hxl::Cut(hxl::Trim(spgr), 30);
    if (!hxl::Hkl_Check_Setup(spgr, space, lambda, text)) return false;
    if (tof && !(std::isfinite(dtt1) && std::isfinite(dtt2) && (dtt1 != 0 || dtt2 != 0))) {
        text = "Bad wavelength";
        return false;
    }
    hxl::SPACE_GROUP_TYPE sg;
    hxl::Set_SpaceGroup(spgr, sg);
    if (hxl::ERR_Symm) {
        text = " Problems in SpaceGroup: " + hxl::Trim(hxl::ERR_Symm_Mess);
        return false;
    }
    s.spgr = spgr;
    s.sg = sg;
    s.crystal_system = hxl::Trim(sg.crystal_system);
    s.space = space;
    s.lambda = lambda;
    s.dtt1 = dtt1;
    s.dtt2 = dtt2;
    text.clear();
    return true;
}

}  // namespace zendrite
