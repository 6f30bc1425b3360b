// XRDML files, scanned by tags as text (no XML parser): wavelengths, the
// 2Theta range, and the counts of the first scan.
#include <string>
#include <string_view>

#include "patterns/pattern_readers.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {
namespace {

constexpr std::string_view kEof = " Error reading a profile XRDML-DATA file: end of file while trying to read ";

// The number between `open` and `close`, searched from `from`; npos when absent.
std::size_t tagged(std::string_view text, std::size_t from, std::string_view open, std::string_view close, float& v) {
    const std::size_t a = text.find(open, from);
    if (a == std::string_view::npos) return a;
    const std::size_t b = text.find(close, a + open.size());
    if (b == std::string_view::npos) return b;
    double d = 0.0;
    if (!Parse_Real(Trim(text.substr(a + open.size(), b - a - open.size())), d)) return std::string_view::npos;
    v = static_cast<float>(d);
    return b + close.size();
}

}  // namespace

void Read_Pattern_Xrdml(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    Clear_Pattern_Error();
    p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
    const std::string_view text = unit.Text();
    const std::size_t npos = std::string_view::npos;
    if (tagged(text, 0, "<kAlpha1 unit=\"Angstrom\">", "</kAlpha1>", p.lambda1) == npos)
        return Set_Pattern_Error(std::string(kEof) + "Wavelength");
    tagged(text, 0, "<kAlpha2 unit=\"Angstrom\">", "</kAlpha2>", p.lambda2);
    tagged(text, 0, "<kBeta unit=\"Angstrom\">", "</kBeta>", p.lambda_beta);
    tagged(text, 0, "<ratioKAlpha2KAlpha1>", "</ratioKAlpha2KAlpha1>", p.ratio);
    std::size_t at = text.find("<positions axis=\"2Theta\" unit=\"deg\">");
    if (at == npos) return Set_Pattern_Error(std::string(kEof) + "positions axis=\"2Theta\"");
    std::size_t s = tagged(text, at, "<startPosition>", "</startPosition>", p.xmin);
    if (s == npos) return Set_Pattern_Error(std::string(kEof) + "2Theta_min");
    std::size_t e = tagged(text, s, "<endPosition>", "</endPosition>", p.xmax);
    if (e == npos) return Set_Pattern_Error(std::string(kEof) + "<endPosition>");
    std::size_t a = text.find("<intensities unit=\"counts\">", e);
    std::size_t a2 = text.find("<counts unit=\"counts\">", e);
    std::size_t open_len = 27;
    if (a2 < a) {
        a = a2;
        open_len = 22;
    }
    if (a == npos) return Set_Pattern_Error(std::string(kEof) + "<intensities unit=\"counts\">");
    a += open_len;
    std::size_t b = text.find('<', a);
    if (b == npos) b = text.size();
    const std::string_view values = text.substr(a, b - a);
    int n = 0;
    for (std::size_t i = 0; i < values.size();) {
        while (i < values.size() && (values[i] == ' ' || values[i] == '\t' || values[i] == '\r' || values[i] == '\n')) ++i;
        if (i >= values.size()) break;
        ++n;
        while (i < values.size() && !(values[i] == ' ' || values[i] == '\t' || values[i] == '\r' || values[i] == '\n')) ++i;
    }
    p.npts = n;
    if (p.npts <= 0) return Set_Pattern_Error(" Error reading a profile XRDML-DATA file: npts <= 0 !!! ");
    Allocate_Pattern(p);
    if (ERR_Pattern) return;
    if (List_Read(values, p.y.data(), p.npts) != List_Result::Ok)
        return Set_Pattern_Error(" Error reading a profile XRDML-DATA file: bad value among the counts");
    p.step = p.npts > 1 ? (p.xmax - p.xmin) / static_cast<float>(p.npts - 1) : 0.0f;
    for (int i = 1; i <= p.npts; ++i) p.sigma(i) = p.y(i);
    Fill_Constant_Step(p);
    Pattern_Y_Limits(p);
}

}  // namespace hxl
