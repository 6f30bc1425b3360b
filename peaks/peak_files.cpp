#include "peaks/peak_files.h"

#include <algorithm>
#include <sstream>

#include "patterns/replace_file.h"
#include "peaks/arcfit_layout.h"
#include "support/edit_format.h"
#include "support/fixed_text.h"

namespace hxl {
namespace {

void line(std::string& out, const std::string& text) {
    out += text;
    out += '\n';
}

void head(std::string& out, const std::string& data_name, const std::string& format_name) {
    line(out, "! Data file : " + Trim(data_name));
    line(out, "! Format    : " + Trim(format_name));
}

bool write(const std::string& path, const std::string& text, const char* failure, std::string& message) {
    message.clear();
    if (Replace_File(path, text)) return true;
    message = failure;
    return false;
}

const PEAK_FORMAT_TYPE kFormats[] = {
    {"FreeFormat", ".aps", "Peaks data file (*.*)|*.*|", "Save Peaks Data File", "Unable to write peaks data file!"},
    {"DicvolFormat", ".dic", "DicVol data file (*.dic)|*.dic;*.dic04;*.dic06|", "DicVol Data File",
     "Unable to write peaks data file!"},
    {"ItoFormat", ".ito", "Ito 15 data file (*.ito)|*.ito|", "Ito15 Data File", "Unable to write peaks data file!"},
    {"TreorFormat", ".inp", "Treor90 data file (*.inp)|*.inp|", "Treor90 Data File",
     "Unable to write peaks data file!"},
    {"ombraFormat", ".sat", "ombra data file (*.sat)|*.sat|", "Save Satellites Data File",
     "Unable to write Satellites data file!"},
};

// The wavelength of the Ito input, fixed for that program apart from type 1.
float Ito_Wave(int peak_type, float own) {
    switch (peak_type) {
    case 1: return own;
    case 2: return 1.54059f;
    case 3: return 0.71354f;
    case 4: return 1.79278f;
    default: return 1.54059f;
    }
}

std::string Title_Or(const std::string& title, const char* fallback) {
    const std::string t = Trim(title);
    return t.empty() ? fallback : t;
}

}  // namespace

std::string Join_Folder(const std::string& folder, const std::string& name) {
    if (folder.empty()) return name;
    return folder.back() == '/' ? folder + name : folder + "/" + name;
}

std::string Date_Stamp(const std::tm& t) {
    std::string out;
    static const Layout f("(i2,a,i2,a,i4,a,3(i2,a))");
    f(out, t.tm_mday, "/", t.tm_mon + 1, "/", t.tm_year + 1900, " at ", t.tm_hour, ":", t.tm_min, ":", t.tm_sec,
      " ");
    out.pop_back();  // the writer's end of line
    return out;
}

std::string Free_Peaks_Text(const std::string& data_name, const std::string& format_name,
                            const std::vector<PEAK_POINT_TYPE>& list) {
    std::string out;
    head(out, data_name, format_name);
    line(out, "! peak_position   peak_intensity    peak_background");
    static const Layout f("(3f15.5)");
    for (const auto& p : list) f(out, p.x, p.y, p.bgr);
    return out;
}

std::string Background_Text(const std::string& data_name, const std::string& format_name, const float* x,
                            const float* y, int n) {
    std::string out;
    head(out, data_name, format_name);
    line(out, "! Position      Background_value");
    static const Layout f("(2f15.5)");
    for (int i = 0; i < n; ++i) f(out, x[i], y[i]);
    return out;
}

bool Write_Free_Peaks(const std::string& path, const std::string& data_name, const std::string& format_name,
                      const std::vector<PEAK_POINT_TYPE>& list, std::string& message) {
    return write(path, Free_Peaks_Text(data_name, format_name, list), "Unable to write peaks data file!", message);
}

bool Write_Background(const std::string& path, const std::string& data_name, const std::string& format_name,
                      const float* x, const float* y, int n, std::string& message) {
    return write(path, Background_Text(data_name, format_name, x, y, n),
                 "Unable to write background points data file!", message);
}

bool Is_Two_Theta(const std::string& scat_var) {
    const std::string s = Lower(Trim(scat_var));
    return s == "2theta" || s == "2-theta" || s == "two-theta";
}

bool Is_Tof(const std::string& scat_var) { return Lower(Trim(scat_var)) == "tof"; }

DICVOL_INPUT_TYPE Dicvol_Defaults(const DIFFRACTION_PATTERN_TYPE& p, int peak_type, int count) {
    DICVOL_INPUT_TYPE d;
    d.title = Trim(Cut(Cut(p.title, kTitleLen), 30));
    d.n = count;
    d.itype = Is_Two_Theta(p.scat_var) ? 2 : Is_Tof(p.scat_var) ? 4 : 0;
    d.wave = Peak_Type_Wavelengths(peak_type, p.lambda1).lambda1;
    return d;
}

std::string Dicvol_Text(const DICVOL_INPUT_TYPE& d, const std::string& data_name, const std::string& instrument,
                        const WAVELENGTHS_TYPE& w, const std::string& date_stamp,
                        const std::vector<PEAK_POINT_TYPE>& list) {
    std::string out;
    line(out, "# Input file for WDICVOL06/14");
    line(out, "# created by Zendrite-2006:" + date_stamp);
    line(out, "! DATA FILE: " + Trim(data_name));
    line(out, "! INSTRM: " + Trim(instrument));
    static const Layout wave("(a,3(1x,f8.5))"), c1("(8(1x,i3),22x,a)"), c2("(3f6.1,2f9.1,2f6.1,6x,a)"),
        c3("(1x,f8.5,3(1x,f8.3),18x,a)"), c4("(2(1x,f8.3),5i4,16x,a)"), pk("(f14.5,2f16.3)");
    wave(out, "! WAVE: ", w.lambda1, w.lambda2, w.ratio);
    line(out, " " + Trim(d.title));
    const int n = std::min(d.n, static_cast<int>(list.size()));
    auto b = [](bool v) { return v ? 1 : 0; };
    c1(out, n, d.itype, b(d.systems[0]), b(d.systems[1]), b(d.systems[2]), b(d.systems[3]), b(d.systems[4]),
       b(d.systems[5]), "! N,ITYPE,JC,JT,JH,JO,JM,JTR");
    c2(out, d.amax, d.bmax, d.cmax, d.volmin, d.volmax, d.bemin, d.bemax, "! AMAX,BMAX,CMAX,VOLMIN,VOLMAX,BEMIN,BEMAX");
    c3(out, d.wave, d.molw, d.dens, d.delden, "! WAVE,POIMOL,DENS,DELDEN");
    c4(out, d.eps, d.fom, d.n_imp, b(d.zero_search), b(d.zero_refine), b(d.dicvol06), 2,
       "! EPS,FOM, N_IMP, ZERO_search, ZERO_refinement, DICVOL_OPTION, ISUP");
    for (const auto& p : list) pk(out, p.x, p.y, p.bgr);
    return out;
}

ITO_INPUT_TYPE Ito_Defaults(const DIFFRACTION_PATTERN_TYPE& p, int peak_type) {
    return {Title_Or(p.title, "ITO input parameters"), Ito_Wave(peak_type, p.lambda1), 0.0f};
}

std::string Ito_Text(const ITO_INPUT_TYPE& d, const std::vector<PEAK_POINT_TYPE>& list) {
    std::string out;
    line(out, Trim(d.title));
    static const Layout control("(i1,2a1,i1,3i2,2f5.2,f10.5,i2,2i1,8i2,2f10.5,f8.4,i2)"), zero("(4f10.5)"),
        pk("(f10.5)");
    if (d.wave < 0.001f) line(out, "9");
    else control(out, 0, "0", " ", 4, 0, 0, 0, 3.0f, 4.5f, d.wave, 0, 0, 0, 3, 6, 6, 6, 0);
    zero(out, d.zero, 4.0f, 14.0f, 0.0f);
    for (const auto& p : list) pk(out, p.x);
    line(out, "0.0 ");
    line(out, "END");
    return out;
}

WAVELENGTHS_TYPE Treor_Wavelengths(int peak_type, float own) {
    WAVELENGTHS_TYPE w = Peak_Type_Wavelengths(peak_type, own);
    if (peak_type < 1 || peak_type > 4) w.ratio = 0.0f;
    return w;
}

TREOR_INPUT_TYPE Treor_Defaults(const DIFFRACTION_PATTERN_TYPE& p, int peak_type) {
    TREOR_INPUT_TYPE d;
    d.title = Title_Or(p.title, "Treor input parameters");
    d.wave = Peak_Type_Wavelengths(peak_type, p.lambda1).lambda1;
    return d;
}

std::string Treor_Text(const TREOR_INPUT_TYPE& d, const std::string& data_name, const std::string& instrument,
                       const WAVELENGTHS_TYPE& w, const std::vector<PEAK_POINT_TYPE>& list) {
    std::string out;
    line(out, "! DATA FILE: " + Trim(data_name));
    line(out, "! INSTRM: " + Trim(instrument));
    static const Layout wave("(a,3(1x,f8.5))"), pk("(3(2x,f12.5))"), k_int("(2x,a,i1,a)"), k_wave("(2x,a,f8.5,a)"),
        k_mono("(2x,a,f6.2,a)"), k_vol("(2x,a,f7.0,a)"), k_five("(2x,a,f5.0,a)"), end("(2x,a)");
    wave(out, "! WAVE: ", w.lambda1, w.lambda2, w.ratio);
    line(out, Trim(d.title));
    for (const auto& p : list) pk(out, p.x, p.y, p.bgr);
    line(out, "");
    k_int(out, "CHOICE=", d.choice, ",");
    k_wave(out, "WAVE=", d.wave, ",");
    if (d.beta > 0.0f) k_mono(out, "MONO=", d.beta, ",");
    k_vol(out, "VOL=", d.vol, ",");
    k_five(out, "CEM=", d.cem <= 0.001f ? 20.0f : d.cem, ",");
    if (d.merit > 0.001f) k_five(out, "MERIT=", d.merit, ",");
    end(out, "END*");
    return out;
}

OMBRA_INPUT_TYPE Ombra_Defaults(const DIFFRACTION_PATTERN_TYPE& p) {
    OMBRA_INPUT_TYPE d;
    std::string title = Trim(p.title);
    d.lattice = " P";
    d.cell = "   5.5000  5.5000  6.0000   90.0   90.0   90.0";
    const std::size_t s = title.find("SPGR:"), c = title.find("CELL:");
    if (s != std::string::npos) {
        const std::size_t stop = (c != std::string::npos && c > s) ? c : std::string::npos;
        d.lattice = " " + Trim(title.substr(s + 5, stop == std::string::npos ? std::string::npos : stop - s - 5));
    }
    if (c != std::string::npos) {
        std::istringstream in(title.substr(c + 5));
        double v[6];
        int k = 0;
        std::string word;
        while (k < 6 && in >> word) {
            std::replace(word.begin(), word.end(), ',', ' ');
            std::istringstream w(word);
            double x;
            if (!(w >> x)) break;
            v[k++] = x;
        }
        if (k == 6) {
            static const Layout f("(3f10.5,3f10.4)");
            d.cell.clear();
            f(d.cell, v[0], v[1], v[2], v[3], v[4], v[5]);
            d.cell.pop_back();
        }
    }
    const std::size_t mark = std::min(s, c);
    d.title = Trim(mark == std::string::npos ? title : title.substr(0, mark));
    d.tolerance = Is_Tof(p.scat_var) ? " 2000.00 " : "  0.300 ";
    d.krange = "   0.0  0.5    0.0  0.5    0.0  0.5 ";
    d.kdiv = "      100         100         100 ";
    static const Layout f("(f14.5)");
    f(d.wave, p.lambda1);
    d.wave.pop_back();
    return d;
}

std::string Ombra_Text(const OMBRA_INPUT_TYPE& d, const std::string& data_path, const std::string& scat_var,
                       const std::string& date_stamp, const std::vector<PEAK_POINT_TYPE>& list) {
    std::string out;
    line(out, "! Input file for Ombra");
    line(out, "! created by Zendrite-2006:" + date_stamp);
    line(out, "! Data file : " + data_path);
    line(out, "TITLE " + d.title);
    line(out, "SPGR    " + d.lattice);
    line(out, "CELL    " + d.cell);
    line(out, d.output == 2 ? "LONG-OUTPUT" : d.output == 3 ? "NO-OUTPUT" : "SHORT-OUTPUT");
    if (d.commensurate) line(out, "K_COMMENSURATE");
    line(out, (Is_Tof(scat_var) ? "TOFTOL " : "CWTOL ") + d.wave + "  " + d.tolerance);
    line(out, "K_RANGE " + d.krange);
    line(out, "K_DIV   " + d.kdiv);
    line(out, "! peak_position  peak_intensity  peak_background");
    const std::string s = Lower(Trim(scat_var));
    const char* list_head = (Is_Two_Theta(s) || s == "----" || s.empty()) ? "2THETA_LIST  "
                            : s == "tof"                                  ? "TOF_LIST  "
                            : (s == "d-space" || s == "d-spacing")        ? "D_LIST  "
                            : s == "q-space"                              ? "Q_LIST  "
                            : s == "s-space"                              ? "D*_LIST  "
                                                                          : nullptr;
    static const Layout h("(a,i5)"), pk("(3f15.5)");
    if (list_head) h(out, list_head, static_cast<int>(list.size()));
    for (const auto& p : list) pk(out, p.x, p.y, p.bgr);
    return out;
}

bool Peak_Format_Of(const std::string& format, PEAK_FORMAT_TYPE& f) {
    for (const auto& k : kFormats)
        if (format.find(k.word) != std::string::npos) {
            f = k;
            return true;
        }
    return false;
}

}  // namespace hxl

namespace hxl {

bool Default_Peak_File_Text(const std::string& word, const DIFFRACTION_PATTERN_TYPE& p, int peak_type,
                            const std::vector<PEAK_POINT_TYPE>& list, const std::string& date_stamp,
                            std::string& text) {
    PEAK_FORMAT_TYPE f;
    if (!Peak_Format_Of(word, f)) return false;
    const std::string w = f.word;
    const int n = static_cast<int>(list.size());
    if (w == "FreeFormat") text = Free_Peaks_Text(p.filename, p.instr, list);
    else if (w == "DicvolFormat")
        text = Dicvol_Text(Dicvol_Defaults(p, peak_type, n), p.filename, p.instr,
                           Peak_Type_Wavelengths(peak_type, p.lambda1), date_stamp, list);
    else if (w == "ItoFormat") text = Ito_Text(Ito_Defaults(p, peak_type), list);
    else if (w == "TreorFormat")
        text = Treor_Text(Treor_Defaults(p, peak_type), p.filename, p.instr, Treor_Wavelengths(peak_type, p.lambda1),
                          list);
    else text = Ombra_Text(Ombra_Defaults(p), Join_Folder(p.filepath, p.filename), p.scat_var, date_stamp, list);
    return true;
}

std::string Date_Stamp_Now() {
    const std::time_t now = std::time(nullptr);
    std::tm t{};
    localtime_r(&now, &t);
    return Date_Stamp(t);
}

}  // namespace hxl
