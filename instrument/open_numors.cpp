#include "instrument/open_numors.h"

#include <cstdio>
#include <filesystem>
#include <system_error>

#include "instrument/adding_numors.h"
#include "instrument/locate_numor.h"
#include "instrument/nrf_blocks.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {

namespace {

std::vector<std::string> components(const std::string& path) {
    std::vector<std::string> parts;
    std::size_t from = 0;
    while (from < path.size()) {
        std::size_t to = path.find_first_of("/\\", from);
        if (to == std::string::npos) to = path.size();
        if (to > from) parts.push_back(path.substr(from, to - from));
        from = to + 1;
    }
    return parts;
}

bool ends_with_z(const std::string& s) {
    std::string t = Trim_Right(s);
    return t.size() >= 2 && t.compare(t.size() - 2, 2, ".Z") == 0;
}

std::string base_name(const std::string& path) {
    std::size_t cut = path.find_last_of('/');
    return cut == std::string::npos ? path : path.substr(cut + 1);
}

std::string real_text(float v) {
    char buf[48];
    std::snprintf(buf, sizeof buf, "%.4f", static_cast<double>(v));
    return buf;
}

}  // namespace

std::string Instrument_From_Numor_Path(const std::string& path) {
    std::vector<std::string> parts = components(path);
    if (!parts.empty()) parts.pop_back();  // the file itself
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        const std::string& c = parts[i];
        int year_cycle = 0;
        if (c == "data" || c == "data-1" || (c.size() == 3 && Parse_Integer(c, year_cycle)))
            return Cut(parts[i + 1], 4);
    }
    return "";
}

bool Read_Numor_File(const std::string& path, const std::string& instrument, POWDER_NUMOR_TYPE& numor,
                     std::string& message, bool header_only) {
    message.clear();
    std::string file = path;
    std::string unpacked;
    if (ends_with_z(path)) {
        const NRF_LOCATIONS& l = Find_Nrf_Locations();
        if (Is_Blank(l.temp_dir)) {
            message = "No temporary directory was found in your system";
            return false;
        }
        std::string name = base_name(Trim_Right(path));
        unpacked = l.temp_dir + name.substr(0, name.size() - 2);
        if (!Decompress_Numor(path, unpacked)) {
            message = "ERROR Opening file: " + path + " the decompression failed";
            return false;
        }
        file = unpacked;
    }
    Read_Powder_Numor(file, instrument, numor, header_only);
    bool failed = ERR_Nrf;
    if (failed) message = ERR_Nrf_Mess;
    if (!unpacked.empty()) {
        std::error_code ec;
        std::filesystem::remove(unpacked, ec);
    }
    if (!failed && numor.numor == 0 && Is_Blank(numor.instrument)) {
        message = "ERROR Opening file: " + path;
        failed = true;
    }
    return !failed;
}

OPEN_NUMORS_RESULT Open_Numor_Files(const std::vector<std::string>& paths, const std::string& instrument,
                                    int free_slots, std::optional<float> monitor_norm) {
    OPEN_NUMORS_RESULT r;
    for (const std::string& selected : paths) {
        POWDER_NUMOR_TYPE numor;
        std::string message;
        if (!Read_Numor_File(selected, instrument, numor, message)) {
            r.messages.push_back(message);
            continue;
        }
        if (static_cast<int>(r.profiles.size()) >= free_slots) {
            r.messages.push_back("The maximum number of profiles has been attained!");
            r.limit_reached = true;
            break;
        }
        NUMOR_PROFILE p;
        Adding_Numors({numor}, {true}, p.pattern, monitor_norm);
        if (ERR_Nrf || p.pattern.npts < 1) {
            r.messages.push_back("ERROR Opening file: " + selected + (ERR_Nrf ? ERR_Nrf_Mess : std::string()));
            continue;
        }
        p.file = selected;
        p.plot_title = Cut(base_name(selected), 60);
        p.prf_type = "DATA";
        p.instrument = Trim(numor.instrument);
        p.pattern.filename = Cut(base_name(selected), kFileLen);
        std::size_t cut = selected.find_last_of('/');
        p.pattern.filepath = cut == std::string::npos ? "./" : Cut(selected.substr(0, cut + 1), kFileLen);
        r.profiles.push_back(std::move(p));
    }
    return r;
}

std::vector<std::string> Numor_Header_Lines(const POWDER_NUMOR_TYPE& n) {
    return {"NUMOR: " + std::to_string(n.numor),
            "INTRUMENT: " + Trim(n.instrument),
            "HEADER: " + Trim(n.header),
            "TITLE: " + Trim(n.title),
            "SCAN_TYPE: " + Trim(n.scan_type),
            "Principal  angle: " + std::to_string(n.principal_angle),
            "Calc. angl. type: " + std::to_string(n.calc_angle_type),
            "SCAN_START: " + real_text(n.scan_values[0]),
            "SCAN_STEP : " + real_text(n.scan_values[1]),
            "MONITOR: " + real_text(n.monitor),
            "TIME(seg): " + real_text(n.time)};
}

bool View_Header_Numor(const std::string& path, const std::string& instrument, std::vector<std::string>& lines,
                       std::string& message) {
    lines.clear();
    POWDER_NUMOR_TYPE numor;
    if (!Read_Numor_File(path, instrument, numor, message, true)) return false;
    lines = Numor_Header_Lines(numor);
    return true;
}

}  // namespace hxl
