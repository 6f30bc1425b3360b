// The Quick View's own records: the list of files, their labels, the file on view and its range.
#include <algorithm>

#include "app/main/quick_view.h"
#include "app/store/zendrite_param_global.h"
#include "prf/read_prf.h"
#include "support/edit_format.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
// The band under the curves of the file on view, laid out as the main plot does for a profile file.
void lay_out_band(QUICK_VIEW_TYPE& qv) {
    const hxl::DIFFRACTION_PATTERN_TYPE& p = qv.qv_pattern;
    const float range = p.ymax - p.ymin;
    qv.y_floor = p.ymin - 0.2f * range;
    const float band = 0.14f * range;
    qv.diff_base = p.ymin - band;
    const int n = std::clamp(qv.qv_info.nphases, 0, kMaxTickPhases);
    qv.tick_top.assign(static_cast<std::size_t>(n), 0.0f);
    qv.tick_bottom.assign(static_cast<std::size_t>(n), 0.0f);
    const float step = n > 0 ? band / static_cast<float>(8 * n + 20) : 0.0f;
    for (int ph = 1; ph <= n; ++ph) {
        qv.tick_top[static_cast<std::size_t>(ph - 1)] = band - static_cast<float>(8 * (ph - 1) + 10) * step;
        qv.tick_bottom[static_cast<std::size_t>(ph - 1)] = band - static_cast<float>(8 * (ph - 1) + 17) * step;
    }
}
}  // namespace

QUICK_VIEW_TYPE& Quick_View() {
    static QUICK_VIEW_TYPE qv;
    return qv;
}

std::string Quick_View_Label(float tsamp) {
    static hxl::EDIT_FORMAT_TYPE format;
    static const bool parsed = [] {
        std::string unused;
        return hxl::Parse_Edit_Format("(2(a,f8.2),a)", format, unused);
    }();
    std::string out;
    if (parsed) {
        hxl::Edit_Writer w(format, out);
        w.Text("   Temperature: ").Real(tsamp).Text(" K -- ").Real(tsamp - 273.15f).Text(" C");
    }
    if (!out.empty() && out.back() == '\n') out.pop_back();
    return hxl::Cut(out, 40);
}

std::vector<std::string> Quick_View_Candidates(const std::string& dir) {
    std::vector<std::string> all, names;
    for (const char* pattern : {"*.prf", "*.xrf"}) {
        IOsDirInfo(dir, pattern, names);
        std::sort(names.begin(), names.end());
        all.insert(all.end(), names.begin(), names.end());
    }
    return all;
}

std::string Quick_View_Path(int k) {
    const QUICK_VIEW_TYPE& qv = Quick_View();
    std::string dir = hxl::Trim(qv.qv_dir);
    if (!dir.empty() && dir.back() != '/' && dir.back() != '\\') dir += '/';
    return dir + hxl::Trim(qv.qv_files(k));
}

bool Quick_View_Read(int k, std::string& message) {
    QUICK_VIEW_TYPE& qv = Quick_View();
    if (k < 1 || k > qv.qv_count) return false;
    // Read aside, so that a file that fails leaves the records of the last picture.
    hxl::DIFFRACTION_PATTERN_TYPE pattern;
    hxl::PRF_INFO_ADD_TYPE info;
    bool error = true;
    hxl::Read_Prf_File(Quick_View_Path(k), info, pattern, error, message);
    if (error) return false;
    qv.qv_pattern = std::move(pattern);
    qv.qv_info = std::move(info);
    lay_out_band(qv);
    return true;
}

void Quick_View_Full_Range() {
    QUICK_VIEW_TYPE& qv = Quick_View();
    const hxl::DIFFRACTION_PATTERN_TYPE& p = qv.qv_pattern;
    if (p.npts < 1 || p.x.size() < p.npts) return;
    qv.qv_xmin = p.x(1);
    qv.qv_xmax = p.x(p.npts);
    qv.qv_ymin = qv.y_floor;
    qv.qv_ymax = p.ymax + 0.05f * (p.ymax - p.ymin);
}

}  // namespace zendrite
