#include "app/store/add_profile.h"

#include "app/store/zendrite_param_global.h"
#include "patterns/format_table.h"
#include "patterns/read_pattern.h"
#include "support/fixed_text.h"

namespace zendrite {
namespace {

// The reflection arrays exist for every profile, empty when it has none.
void empty_reflections(PRF_INFO_ADD_TYPE& info) {
    info.refl_code.resize(0);
    info.refl_kind.resize(0);
    info.refl_phase.resize(0);
    info.refl_pos.resize(0);
    info.refl_label.resize(0);
}

std::string check_read(const DIFFRACTION_PATTERN_TYPE& p) {
    if (p.xmin >= p.xmax) return "xmin value >= xmax value";
    if (p.npts < 1) return "npts<1";
    if (p.x.size() < p.npts || p.x(1) >= p.x(p.npts)) return "x(1)>=x(npts)";
    return {};
}

}  // namespace

bool Enter_Read_Profile(int slot, int row, LOAD_RESULT& result) {
    ZENDRITE_STORE& g = zendrite_param_global();
    auto& p = g.pattern[static_cast<std::size_t>(slot)];
    auto& info = g.info[static_cast<std::size_t>(slot)];
    Clear_Prf_Info(info);
    info.prf_name = p.filename;
    info.prf_dir = p.filepath;
    info.prf_format = std::string(hxl::Format_Row(row).mode);
    float calc = 0.0f;
    for (int i = 2; i <= 10 && i <= p.ycalc.size(); ++i) calc += p.ycalc(i);
    g.plot_calc[static_cast<std::size_t>(slot)] = false;
    g.plot_bgr[static_cast<std::size_t>(slot)] = false;
    if (slot <= kRietveldSlots && calc > 0.0001f) {  // the limit of 20 slots is deliberate
        info.prf_type = "RIETV";
        g.plot_calc[static_cast<std::size_t>(slot)] = true;
        if (row == hxl::kRowCif) g.plot_bgr[static_cast<std::size_t>(slot)] = true;
    } else {
        info.prf_type = "DATA";
    }
    empty_reflections(info);
    std::string message;
    if (!Identify_X_Space(slot, message)) {
        result.messages.push_back(message);
        Clear_Pattern_Record(p);
        Clear_Prf_Info(info);
        return false;
    }
    result.slots.push_back(slot);
    return true;
}

void Add_Recent_File(const std::string& name) {
    auto& r = zendrite_param_global().recent;
    const std::string n = hxl::Cut(hxl::Trim(name), 200);
    int at = kMaxRecent;
    for (int i = 1; i <= kMaxRecent; ++i)
        if (r[static_cast<std::size_t>(i)] == n) { at = i; break; }
    for (int i = at; i > 1; --i) r[static_cast<std::size_t>(i)] = r[static_cast<std::size_t>(i - 1)];
    r[1] = n;
}

READ_FILE_RESULT Read_Data_File(const std::string& fullname, int row, int max_patterns) {
    READ_FILE_RESULT r;
    r.name = hxl::Trim(fullname);
    r.row = row;
    hxl::Read_Pattern_Blocks(r.name, std::string(hxl::Format_Row(row).mode), r.patterns, max_patterns, r.left_out);
    if (hxl::ERR_Pattern) {
        r.error = hxl::ERR_Pattern_Mess;
        r.patterns.clear();
    }
    return r;
}

LOAD_RESULT Store_Data_File(READ_FILE_RESULT&& read) {
    LOAD_RESULT result;
    result.left_out = read.left_out;
    ZENDRITE_STORE& g = zendrite_param_global();
    const std::string& name = read.name;
    if (!read.error.empty() || read.patterns.empty()) {
        result.messages.push_back("ERROR in file: " + name + read.error);
        return result;
    }
    for (auto& p : read.patterns) {
        if (g.nperfiles + 1 > kMaxProfiles) {
            result.messages.push_back(kMsgMaxProfiles);
            result.limit_reached = true;
            break;
        }
        if (std::string why = check_read(p); !why.empty()) {
            result.messages.push_back("ERROR Opening file: " + name + why);
            continue;
        }
        const int slot = ++g.nperfiles;
        g.pattern[static_cast<std::size_t>(slot)] = std::move(p);
        if (!Enter_Read_Profile(slot, read.row, result)) --g.nperfiles;
    }
    if (!result.slots.empty()) Add_Recent_File(name);
    Merge_Repeated_Messages(result.messages);
    return result;
}

void Merge_Repeated_Messages(std::vector<std::string>& messages) {
    // The 30 scans of a pole figure refused for one reason give one box, not thirty.
    std::vector<std::string> merged;
    for (std::size_t i = 0; i < messages.size();) {
        std::size_t j = i + 1;
        while (j < messages.size() && messages[j] == messages[i]) ++j;
        merged.push_back(j - i > 1 ? messages[i] + " (" + std::to_string(j - i) + " profiles of the file)" : messages[i]);
        i = j;
    }
    messages = std::move(merged);
}

LOAD_RESULT Load_Data_File(const std::string& fullname, int row) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    if (g.nperfiles + 1 > kMaxProfiles) {
        LOAD_RESULT result;
        result.messages.push_back(kMsgMaxProfiles);
        result.limit_reached = true;
        return result;
    }
    return Store_Data_File(Read_Data_File(fullname, row, kMaxProfiles - g.nperfiles));
}

}  // namespace zendrite
