// XRDML files, scanned by tags as text (no XML parser): wavelengths, the
// scanned axis and the counts of each scan.
#include <string>
#include <string_view>

#include "patterns/pattern_readers.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"
#include "support/time_stamp.h"

namespace hxl {
namespace {

constexpr std::size_t npos = std::string_view::npos;
constexpr std::string_view kEof = " Error reading a profile XRDML-DATA file: end of file while trying to read ";

// The number between `open` and `close`, searched from `from`; npos when absent.
std::size_t tagged(std::string_view text, std::size_t from, std::string_view open, std::string_view close, float& v) {
    const std::size_t a = text.find(open, from);
    if (a == npos) return a;
    const std::size_t b = text.find(close, a + open.size());
    if (b == npos) return b;
    double d = 0.0;
    if (!Parse_Real(Trim(text.substr(a + open.size(), b - a - open.size())), d)) return npos;
    v = static_cast<float>(d);
    return b + close.size();
}

// The value of attribute `name` in the tag text `tag`.
std::string attribute(std::string_view tag, std::string_view name) {
    const std::string key = std::string(name) + "=\"";
    const std::size_t a = tag.find(key);
    if (a == npos) return {};
    const std::size_t b = tag.find('"', a + key.size());
    return b == npos ? std::string() : std::string(tag.substr(a + key.size(), b - a - key.size()));
}

// The text of each <scan> element; the whole file when it has none (old files).
std::vector<std::string_view> scans_of(std::string_view text) {
    std::vector<std::string_view> scans;
    std::size_t at = 0;
    while ((at = text.find("<scan ", at)) != npos) {
        std::size_t end = text.find("</scan>", at);
        end = end == npos ? text.size() : end + 7;  // a cut scan fails at its counts
        scans.push_back(text.substr(at, end - at));
        at = end;
    }
    if (scans.empty()) scans.push_back(text);
    return scans;
}

struct AXIS_TYPE {
    std::string name, unit;
    float start = 0, end = 0;
    bool found = false;
};

// The axis the scan moves: 2Theta when it moves, else the first that has a
// start and an end (a Phi scan of a pole figure keeps 2Theta fixed).
AXIS_TYPE scanned_axis(std::string_view scan) {
    AXIS_TYPE first;
    std::size_t at = 0;
    while ((at = scan.find("<positions ", at)) != npos) {
        const std::size_t gt = scan.find('>', at);
        const std::size_t close = scan.find("</positions>", at);
        if (gt == npos || close == npos) break;
        const std::string_view body = scan.substr(gt + 1, close - gt - 1);
        AXIS_TYPE a;
        a.name = attribute(scan.substr(at, gt - at), "axis");
        a.unit = attribute(scan.substr(at, gt - at), "unit");
        a.found = tagged(body, 0, "<startPosition>", "</startPosition>", a.start) != npos &&
                  tagged(body, 0, "<endPosition>", "</endPosition>", a.end) != npos;
        if (a.found && a.name == "2Theta") return a;
        if (a.found && !first.found) first = a;
        at = close;
    }
    return first;
}

}  // namespace

void Read_Pattern_Xrdml(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p) {
    int nblocks = 0;
    Read_Pattern_Xrdml(unit, p, 1, nblocks);
}

void Read_Pattern_Xrdml(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p, int block, int& nblocks) {
    Clear_Pattern_Error();
    p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
    const std::string_view text = unit.Text();
    if (tagged(text, 0, "<kAlpha1 unit=\"Angstrom\">", "</kAlpha1>", p.lambda1) == npos)
        return Set_Pattern_Error(std::string(kEof) + "Wavelength");
    tagged(text, 0, "<kAlpha2 unit=\"Angstrom\">", "</kAlpha2>", p.lambda2);
    tagged(text, 0, "<kBeta unit=\"Angstrom\">", "</kBeta>", p.lambda_beta);
    tagged(text, 0, "<ratioKAlpha2KAlpha1>", "</ratioKAlpha2KAlpha1>", p.ratio);
    const std::vector<std::string_view> scans = scans_of(text);
    nblocks = static_cast<int>(scans.size());
    if (block < 1 || block > nblocks) return Set_Pattern_Error(" Error reading a profile XRDML-DATA file: no such scan");
    const std::string_view scan = scans[static_cast<std::size_t>(block - 1)];
    if (scan.find("<positions axis=\"2Theta\"") == npos)
        return Set_Pattern_Error(std::string(kEof) + "positions axis=\"2Theta\"");
    const AXIS_TYPE axis = scanned_axis(scan);
    if (!axis.found) return Set_Pattern_Error(std::string(kEof) + "2Theta_min");
    p.xmin = axis.start;
    p.xmax = axis.end;
    if (axis.name != "2Theta") {
        // Never labelled 2theta: the scan moves another axis.
        p.scat_var = Cut(axis.name, kScatLen);
        p.xax_text = Cut(axis.name + (axis.unit.empty() ? "" : "(" + axis.unit + ")"), kAxisLen);
    }
    std::size_t a = scan.find("<intensities unit=\"counts\">");
    std::size_t a2 = scan.find("<counts unit=\"counts\">");
    std::size_t open_len = 27;
    std::string_view close = "</intensities>";
    if (a2 < a) {
        a = a2;
        open_len = 22;
        close = "</counts>";
    }
    if (a == npos) return Set_Pattern_Error(std::string(kEof) + "<intensities unit=\"counts\">");
    a += open_len;
    const std::size_t b = scan.find(close, a);
    // A file cut inside its counts must not spread the counts left over the whole range.
    if (b == npos) return Set_Pattern_Error(std::string(kEof) + std::string(close));
    const std::string_view values = scan.substr(a, b - a);
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
    // the scan's own start, in its header
    if (const std::size_t t = scan.find("<startTimeStamp>"); t != npos) {
        const std::size_t e = scan.find("</startTimeStamp>", t);
        double seconds = 0;
        if (e != npos && Iso_Time_Seconds(scan.substr(t + 16, e - t - 16), seconds)) p.acq_time = seconds;
    }
    if (nblocks > 1) p.title = Cut(Trim(p.title) + (Is_Blank(p.title) ? "" : " ") + "scan " + std::to_string(block), kTitleLen);
}

}  // namespace hxl
