// The settings of a calculated pattern: radiation, wavelength and the width law
// of its lines (one width, the law of the last profile fit or of a job file, or
// the U V W X Y of a resolution file).
#include "app/main/structure_settings.h"

#include <cmath>
#include <limits>
#include <numbers>

#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "peaks/pik_file.h"
#include "prf/read_irf.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kPhaseDialog = 1986, kXrays = 10, kNeutrons = 11, kLambda = 12, kFwhm = 13, kEta = 14, kOneWidth = 15,
              kFitLaw = 16, kIrfLaw = 17, kU = 18, kV = 19, kW = 20, kZ = 21, kEta0 = 22, kEtaX = 23, kIrfX = 24,
              kIrfY = 25, kLoadIrf = 26, kLoadPik = 27;

// What the user chose last time, offered again.
struct LAST_TYPE {
    int law = 1;
    double fwhm = 0.1, eta = 0.5;
    hxl::LINE_SHAPE_TYPE shape;
};
LAST_TYPE& last() {
    static LAST_TYPE l;
    return l;
}

void define() {
    if (WDialogDefined(kPhaseDialog)) return;
    WDialogDefine({kPhaseDialog, "Calculated pattern of a structure", {},
                   {Radio(kXrays, "X-rays", kXrays), Radio(kNeutrons, "Neutrons", kXrays),
                    Fld(kLambda, FIELD_KIND::Real, "Wavelength (A)"), Fld(kFwhm, FIELD_KIND::Real, "FWHM (deg)"),
                    Fld(kEta, FIELD_KIND::Real, "Eta (Lorentzian fraction)"),
                    Radio(kOneWidth, "One width for every line (FWHM, Eta)", kOneWidth),
                    Radio(kFitLaw, "Width law of the profile fit (U, V, W, Z, Eta0, X)", kOneWidth),
                    Radio(kIrfLaw, "Resolution file (U, V, W, X, Y; Thompson-Cox-Hastings)", kOneWidth),
                    Fld(kU, FIELD_KIND::Real, "U"), Fld(kV, FIELD_KIND::Real, "V"), Fld(kW, FIELD_KIND::Real, "W"),
                    Fld(kZ, FIELD_KIND::Real, "Z"), Fld(kEta0, FIELD_KIND::Real, "Eta0"),
                    Fld(kEtaX, FIELD_KIND::Real, "X (Eta slope, per degree)"),
                    Fld(kIrfX, FIELD_KIND::Real, "X (Lorentzian, resolution file)"),
                    Fld(kIrfY, FIELD_KIND::Real, "Y (Lorentzian, resolution file)"),
                    Fld(kLoadIrf, FIELD_KIND::PushButton, "Load IRF file"),
                    Fld(kLoadPik, FIELD_KIND::PushButton, "Width law of a job file (.pik)")}});
}

void put_law(const hxl::LINE_SHAPE_TYPE& s) {
    const std::pair<int, double> values[] = {{kU, s.u},     {kV, s.v},       {kW, s.w},      {kZ, s.z},
                                             {kEta0, s.eta}, {kEtaX, s.eta_x}, {kIrfX, s.lx}, {kIrfY, s.ly}};
    for (const auto& [field, v] : values) WDialogPutReal(field, v, "(g14.6)");
}

// The globals of a fit's job: 4 U, 5 V, 6 W, 7 Z, 8 Eta0, 9 X.
hxl::LINE_SHAPE_TYPE law_of(const hxl::PIK_JOB_TYPE& job) {
    hxl::LINE_SHAPE_TYPE s;
    s.u = job.glob[4], s.v = job.glob[5], s.w = job.glob[6], s.z = job.glob[7];
    s.eta = job.glob[8], s.eta_x = job.glob[9];
    return s;
}

void load_irf() {
    std::string name;
    WSelectFile("Instrumental Resolution Files|*.irf|", LoadDialog, name, "Select IRF file to open");
    if (WInfoDialog(4) != kIdOk || hxl::Is_Blank(name)) return;
    hxl::IRF_TYPE irf;
    bool status = false;
    std::string text;
    hxl::Read_Irf(hxl::Trim(name), irf, status, text);
    if (!status) {
        Show_Message(text);
        return;
    }
    if (!irf.has_uvwxy || irf.n_uvwxy < 3) {
        Show_Message("The IRF file gives no U, V, W");
        return;
    }
    hxl::LINE_SHAPE_TYPE s;
    s.u = irf.uvwxy[0], s.v = irf.uvwxy[1], s.w = irf.uvwxy[2], s.lx = irf.uvwxy[3], s.ly = irf.uvwxy[4];
    put_law(s);
    WDialogPutRadioButton(kIrfLaw);
    if (irf.has_wave && irf.wave[0] > 0) WDialogPutReal(kLambda, irf.wave[0], "(f10.5)");
}

void load_pik() {
    std::string name;
    WSelectFile("Input PIK/NEW File (*.pik,*.new)|*.pik;*.new|", LoadDialog, name, "Select PIK/NEW file to open");
    if (WInfoDialog(4) != kIdOk || hxl::Is_Blank(name)) return;
    hxl::PIK_JOB_TYPE job;
    std::string message;
    if (!hxl::Read_Pik(hxl::Trim(name), job, message)) {
        Show_Message(message);
        return;
    }
    if (!job.constant_wavelength) {
        Show_Message("The job file is not of a constant-wavelength fit");
        return;
    }
    put_law(law_of(job));
    WDialogPutRadioButton(kFitLaw);
    if (job.lambda1 > 0) WDialogPutReal(kLambda, job.lambda1, "(f10.5)");
}

// The values of the dialog; a refusal text when one cannot be used.
std::string read_back(PHASE_SETTINGS& out, LAST_TYPE& l) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    int radio = 1;
    double lambda = nan;
    WDialogGetRadioButton(kXrays, radio);
    WDialogGetReal(kLambda, lambda);
    WDialogGetRadioButton(kOneWidth, l.law);
    l.fwhm = l.eta = nan;
    WDialogGetReal(kFwhm, l.fwhm);
    WDialogGetReal(kEta, l.eta);
    hxl::LINE_SHAPE_TYPE& s = l.shape;
    s = {};
    double* law[] = {&s.u, &s.v, &s.w, &s.z, &s.eta, &s.eta_x, &s.lx, &s.ly};
    const int fields[] = {kU, kV, kW, kZ, kEta0, kEtaX, kIrfX, kIrfY};
    for (int k = 0; k < 8; ++k) {
        *law[k] = nan;
        WDialogGetReal(fields[k], *law[k]);
    }
    out.calc.neutron = radio == 2;
    out.calc.lambda = lambda;
    if (!(lambda > 0 && lambda < 100)) return "Bad wavelength";
    if (l.law == 1) {
        if (!(l.fwhm > 0 && l.fwhm < 45) || !(l.eta >= 0 && l.eta <= 1))
            return "The FWHM must be positive and Eta between 0 and 1";
        out.shape = {};
        out.shape.w = l.fwhm * l.fwhm, out.shape.eta = l.eta;
        return "";
    }
    for (double* v : law)
        if (!std::isfinite(*v)) return "U, V, W, Z, Eta0, X and Y must be numbers";
    out.shape = s;
    out.shape.tch = l.law == 3;
    // The law must give every line of the range a width.
    for (double tth = 1; tth < 179; tth += 1) {
        double fwhm = 0, eta = 0;
        const double t = std::tan(tth * std::numbers::pi / 360);
        if ((s.u * t + s.v) * t + s.w < 0)
            return "U, V and W give no width at 2theta " + std::to_string(static_cast<int>(tth)) + " degrees";
        hxl::Line_Width(out.shape, tth, fwhm, eta);
        if (!(fwhm > 0 && fwhm < 45))
            return "The width law gives no usable width at 2theta " + std::to_string(static_cast<int>(tth)) + " degrees";
    }
    return "";
}

}  // namespace

bool Structure_Phase_Settings(const DIFFRACTION_PATTERN_TYPE& p, PHASE_SETTINGS& out) {
    define();
    WDialogLoad(kPhaseDialog);
    LAST_TYPE& l = last();
    WDialogPutRadioButton(hxl::Starts_With(hxl::Lower(p.diff_kind), "neutron") ? kNeutrons : kXrays);
    WDialogPutReal(kLambda, p.lambda1 > 0 ? p.lambda1 : 1.5406f, "(f10.5)");
    WDialogPutReal(kFwhm, l.fwhm > 0 ? l.fwhm : 0.1, "(f10.4)");
    WDialogPutReal(kEta, l.eta >= 0 ? l.eta : 0.5, "(f10.4)");
    // A finished profile fit offers its own width law.
    const hxl::PIK_JOB_TYPE* fit = Last_Profile_Fit();
    put_law(fit ? law_of(*fit) : l.shape);
    WDialogPutRadioButton(fit ? kFitLaw : kOneWidth + l.law - 1);
    bool ok = false;
    for (;;) {
        WDialogShow(-1, -1, 0, Modal);
        const int button = WInfoDialog(4);
        if (button == kLoadIrf || button == kLoadPik) {
            button == kLoadIrf ? load_irf() : load_pik();
            continue;
        }
        if (button != kIdOk) break;
        LAST_TYPE next = l;
        const std::string refusal = read_back(out, next);
        if (refusal.empty()) {
            l = next;
            ok = true;
            break;
        }
        Show_Message(refusal);
        break;
    }
    WDialogUnload();
    return ok;
}

}  // namespace zendrite
