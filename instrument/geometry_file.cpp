// A detector geometry as a flat JSON object: what a user writes by hand or a
// calibration program exports, without nested objects.
#include <cctype>
#include <map>
#include <set>

#include "instrument/azimuthal.h"
#include "support/list_read.h"
#include "support/text_file.h"

namespace hxl {

namespace {

struct FLAT_JSON {
    std::map<std::string, std::string> values;  // numbers and booleans as written, strings unquoted
    std::set<std::string> strings;
};

bool parse_flat(const std::string& s, FLAT_JSON& j, std::string& why) {
    std::size_t i = 0;
    auto skip = [&] {
        while (i < s.size() && std::isspace(static_cast<unsigned char>(s[i]))) ++i;
    };
    auto quoted = [&](std::string& out) {
        if (i >= s.size() || s[i] != '"') return false;
        ++i;
        out.clear();
        while (i < s.size() && s[i] != '"') {
            if (s[i] == '\\' && i + 1 < s.size()) ++i;
            out += s[i++];
        }
        if (i >= s.size()) return false;
        ++i;
        return true;
    };
    skip();
    if (i >= s.size() || s[i] != '{') {
        why = "it does not begin with '{'";
        return false;
    }
    ++i;
    skip();
    if (i < s.size() && s[i] == '}') return true;
    while (true) {
        skip();
        std::string key, value;
        if (!quoted(key)) {
            why = "a key in double quotes is expected";
            return false;
        }
        skip();
        if (i >= s.size() || s[i] != ':') {
            why = "':' is missing after \"" + key + "\"";
            return false;
        }
        ++i;
        skip();
        if (i < s.size() && s[i] == '"') {
            if (!quoted(value)) {
                why = "the text of \"" + key + "\" does not end";
                return false;
            }
            j.strings.insert(key);
        } else {
            while (i < s.size() && s[i] != ',' && s[i] != '}' && !std::isspace(static_cast<unsigned char>(s[i])))
                value += s[i++];
            if (value.empty() || value[0] == '{' || value[0] == '[') {
                why = "the value of \"" + key + "\" must be a number, true, false or a text";
                return false;
            }
        }
        if (j.values.count(key)) {
            why = "\"" + key + "\" is given twice";
            return false;
        }
        j.values[key] = value;
        skip();
        if (i < s.size() && s[i] == ',') {
            ++i;
            continue;
        }
        if (i < s.size() && s[i] == '}') return true;
        why = "',' or '}' is expected after \"" + key + "\"";
        return false;
    }
}

}  // namespace

bool Read_Geometry_File(const std::string& path, DETECTOR_GEOMETRY_TYPE& g, std::string& mask_file,
                        std::string& message) {
    TEXT_FILE_TYPE t;
    if (!Read_Text_File(path, 1 << 20, t, message)) return false;
    FLAT_JSON j;
    std::string why;
    if (!parse_flat(t.text, j, why)) {
        message = "The geometry file " + path + " cannot be read: " + why;
        return false;
    }
    DETECTOR_GEOMETRY_TYPE r;
    const std::map<std::string, float*> reals = {
        {"distance_mm", &r.distance}, {"beam_x_px", &r.beam_x},       {"beam_y_px", &r.beam_y},
        {"pixel_x_mm", &r.pixel_x},   {"pixel_y_mm", &r.pixel_y},     {"tilt_deg", &r.tilt},
        {"tilt_plane_deg", &r.tilt_plane}, {"wavelength", &r.wavelength}, {"bin_deg", &r.bin},
        {"polarisation", &r.polarisation}};
    for (const auto& [key, value] : j.values) {
        auto it = reals.find(key);
        if (key == "pixel_mm") {
            if (!Parse_Real(value, r.pixel_x)) why = key;
            r.pixel_y = r.pixel_x;
        } else if (it != reals.end()) {
            if (j.strings.count(key) || !Parse_Real(value, *it->second)) why = key;
            if (key == "polarisation") r.correct_polarisation = true;
        } else if (key == "solid_angle") {
            if (value != "true" && value != "false") why = key;
            r.solid_angle = value == "true";
        } else if (key == "mask") {
            if (!j.strings.count(key)) why = key;
            mask_file = value;
        } else {
            message = "The geometry file " + path + " has an unknown key \"" + key + "\"";
            return false;
        }
        if (!why.empty()) {
            message = "The geometry file " + path + " has a bad value for \"" + why + "\": " + value;
            return false;
        }
    }
    for (const char* key : {"distance_mm", "beam_x_px", "beam_y_px", "wavelength"})
        if (!j.values.count(key)) {
            message = "The geometry file " + path + " lacks \"" + key + "\"";
            return false;
        }
    if (!j.values.count("pixel_mm") && !(j.values.count("pixel_x_mm") && j.values.count("pixel_y_mm"))) {
        message = "The geometry file " + path + " lacks the pixel size (\"pixel_mm\")";
        return false;
    }
    // A mask named relative to the geometry file lives beside it.
    if (!mask_file.empty() && mask_file[0] != '/') {
        std::size_t slash = path.find_last_of('/');
        if (slash != std::string::npos) mask_file = path.substr(0, slash + 1) + mask_file;
    }
    g = r;
    return true;
}

}  // namespace hxl
