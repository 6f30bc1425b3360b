// The instrument definition file: one keyword a line, its value behind it;
// a few keywords take the lines that follow.
#include <Eigen/Dense>
#include <cmath>

#include "instrument/current_instrument.h"
#include "support/fixed_text.h"
#include "support/list_read.h"
#include "support/text_unit.h"

namespace hxl {

namespace {

const Mat3 kIdentity = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
constexpr long long kMaxTable = 1LL << 24;

struct Reader {
    Text_Unit unit;
    std::string file;
    INSTRUMENT_TYPE& c = Current_Instrument;

    bool fail(const std::string& tail) {
        ERR_Instrm = true;
        ERR_Instrm_Mess = Cut("Error in file: " + file + tail, 150);
        return false;
    }
    template <class T>
    bool values(std::string_view text, T* out, int n, const std::string& tail) {
        return List_Read(text, out, n) == List_Result::Ok || fail(tail);
    }
    template <class T>
    bool following(T* out, int n, const std::string& tail) {
        return List_Read(unit, out, n) == List_Result::Ok || fail(tail);
    }
    bool matrix(Mat3& m, const std::string& tail) {
        for (auto& row : m)
            if (!following(row.data(), 3, tail)) return false;
        return true;
    }
    bool pair(std::string_view text, float& a, float& b, const std::string& tail) {
        float v[2] = {a, b};
        if (!values(text, v, 2, tail)) return false;
        a = v[0];
        b = v[1];
        return true;
    }
    // The next line that is neither blank nor a comment.
    bool data_line(std::string& line) {
        std::string_view l;
        while (unit.Read_Line(l)) {
            line = Adjustl(l.substr(0, std::min<std::size_t>(l.size(), 120)));
            if (Is_Blank(line) || line[0] == '!' || line[0] == '#') continue;
            return true;
        }
        return false;
    }
    bool table(Array2<float>& t, long long rows, long long cols, Text_Unit& from, const std::string& message) {
        if (rows < 1 || cols < 1 || rows * cols > kMaxTable) return fail(message);
        t.resize(static_cast<int>(rows), static_cast<int>(cols));
        std::vector<float> v(static_cast<std::size_t>(rows * cols));
        if (List_Read(from, v.data(), static_cast<int>(v.size())) != List_Result::Ok) return fail(message);
        // Stored as read, row after row.
        for (long long i = 0; i < rows; ++i)
            for (long long j = 0; j < cols; ++j)
                t(static_cast<int>(i + 1), static_cast<int>(j + 1)) = v[static_cast<std::size_t>(i * cols + j)];
        return true;
    }
    bool apply(const std::string& key, const std::string& value);
};

void first_word(const std::string& text, std::string& word, std::string& rest) {
    std::string t = Adjustl(text);
    std::size_t e = t.find_first_of(" \t");
    word = t.substr(0, e);
    rest = e == std::string::npos ? "" : Adjustl(t.substr(e));
}

bool Reader::apply(const std::string& key, const std::string& value) {
    if (key == "INFO") c.info = Cut(Trim(value), 80);
    else if (key == "NAME") c.name = Cut(Trim(value), 12);
    else if (key == "GEOM") {
        std::string word, rest;
        first_word(value, word, rest);
        int code = 0;
        if (Parse_Integer(word, code)) {
            c.geom_code = code;
            c.geom = Cut(Trim(rest), 15);
        } else {
            c.geom = Cut(Trim(value), 15);
        }
    } else if (key == "BLFR") c.bl_frame = Cut(Trim(value), 6);
    else if (key == "DIST_UNITS") c.dist_units = Cut(Trim(value), 4);
    else if (key == "ANGL_UNITS") c.angl_units = Cut(Trim(value), 4);
    else if (key == "ROT_ORDER") c.rot_order = Cut(Trim(value), 3);
    else if (key == "DET_TYPE") {
        std::string word, rest;
        first_word(value, word, rest);
        c.det_type = Cut(word, 32);
        std::string w2, r2;
        first_word(rest, w2, r2);
        if (Upper(w2) == "IPSD") {
            std::string w3, r3;
            first_word(r2, w3, r3);
            if (!Parse_Integer(w3, c.ipsd)) return fail(", reading the type of detector (ipsd)");
        }
    } else if (key == "DIST_DET") return values(value, &c.dist_det, 1, ", reading the distance sample-detector");
    else if (key == "WAVE") return values(value, &c.wavelength, 1, ", reading the wavelength");
    else if (key == "WAVE_LIMITS" || key == "WAV_LIMITS")
        return pair(value, c.lambda_min, c.lambda_max, ", reading the wavelength limits");
    else if (key == "DIM_XY" || key == "DIM_XZ" || key == "DIM_XZP") {
        float v[4];
        if (!values(value, v, 4, ", reading the dimensions of the detector")) return false;
        if (!(std::fabs(v[2]) < 1e9f && std::fabs(v[3]) < 1e9f)) return fail(", reading the dimensions of the detector");
        c.horiz_size = v[0];
        c.vert_size = v[1];
        c.horiz_pxel = static_cast<int>(v[2]);
        c.vert_pxel = static_cast<int>(v[3]);
    } else if (key == "GAPS_DET" || key == "GAPS_CA_AN")
        return pair(value, c.anode_gap, c.cathode_gap, ", reading the gaps between anodes and between cathodes");
    else if (key == "GN_CENTRE" || key == "GAMMA_NU_CENTRE")
        return pair(value, c.gn_centre[0], c.gn_centre[1], ", reading Gamma and Nu of detector centre");
    else if (key == "TILT_ANGLES") return values(value, c.tilt_angles.data(), 3, ", reading the Tilt Angles");
    else if (key == "RESOL") return values(value, &c.d_min, 1, ", reading the resolution d_min value");
    else if (key == "GAM+_LIMITS") return pair(value, c.gamma_min, c.gamma_max, ", reading the Gamma(positive) limits");
    else if (key == "GAM-_LIMITS")
        return pair(value, c.gamma_neg_min, c.gamma_neg_max, ", reading the Gamma(negative) limits");
    else if (key == "NU_LIMITS") return pair(value, c.nu_min, c.nu_max, ", reading the Nu limits");
    else if (key == "X_LIMITS") return pair(value, c.x_min, c.x_max, ", reading the X limits");
    else if (key == "Z_LIMITS") return pair(value, c.z_min, c.z_max, ", reading the Z limits");
    else if (key == "UBMAT") {
        if (!matrix(c.ub, ", reading the UB-matrix")) return false;
        c.ub_read = true;
    } else if (key == "SETTING") return matrix(c.setting, ", reading the setting vectors");
    else if (key == "NUM_ANG") return values(value, &c.num_ang, 1, ", reading the number of angular motors");
    else if (key == "NUM_DISP") return values(value, &c.num_disp, 1, ", reading the number of displacement motors");
    else if (key == "ANG_LIMITS") {
        if (c.num_ang < 1) return fail(", Number of angular motors missing!");
        const std::string tail = ", reading the angular names, limits, offsets and velocities";
        if (c.num_ang > 1000) return fail(tail);
        c.ang.assign(static_cast<std::size_t>(c.num_ang), ANGULAR_MOTOR{});
        for (auto& m : c.ang) {
            std::string line, name, rest;
            if (!data_line(line)) return fail(tail);
            first_word(line, name, rest);
            float v[4] = {0, 0, 0, 0};
            // Offset and velocity may be left out by older files.
            List_Result r = List_Read(rest, v, 4);
            if (r == List_Result::Bad_Value || Is_Blank(rest) || List_Read(rest, v, 2) != List_Result::Ok) return fail(tail);
            m = {Cut(name, 12), v[0], v[1], v[2], v[3]};
        }
    } else if (key == "DISP_LIMITS") {
        if (c.num_disp < 1) return fail(", Number of displacement motors missing!");
        const std::string tail = ", reading the displacement limits";
        if (c.num_disp > 1000) return fail(tail);
        c.disp.assign(static_cast<std::size_t>(c.num_disp), DISPLACEMENT_MOTOR{});
        for (auto& m : c.disp) {
            std::string line, name, rest;
            if (!data_line(line)) return fail(tail);
            first_word(line, name, rest);
            float v[3] = {0, 0, 0};
            List_Result r = List_Read(rest, v, 3);
            if (r == List_Result::Bad_Value || List_Read(rest, v, 2) != List_Result::Ok) return fail(tail);
            m = {Cut(name, 12), v[0], v[1], v[2]};
        }
    } else if (key == "DET_OFF") return values(value, c.det_offsets.data(), 3, ", reading the detector offsets");
    else if (key == "DISP_CENTRE") {
        float v[3] = {0, 0, 0};
        if (List_Read(value, v, 3) == List_Result::Bad_Value) return fail(", reading the displacement centre");
        c.disp_centre = {v[0], v[1], v[2]};
    } else if (key == "RANGE_TIME") {
        if (c.num_ang < 1) return fail(", the number of angular motors is needed before giving range_time values");
        int sections = 0;
        if (!values(value, &sections, 1, ", reading section of pairs range - time") || sections < 0 || sections > 1000)
            return fail(", reading section of pairs range - time");
        c.range_time.clear();
        for (int s = 0; s < sections; ++s) {
            std::string line, motor, rest;
            int pairs = 0;
            if (!data_line(line)) return fail(", reading name of motor and number of pairs range - time");
            first_word(line, motor, rest);
            if (List_Read(rest, &pairs, 1) != List_Result::Ok || pairs < 0 || pairs > 100000)
                return fail(", reading name of motor and number of pairs range - time");
            RANGE_TIME_SECTION sec{motor, {}};
            std::vector<float> v(static_cast<std::size_t>(2 * pairs));
            if (pairs > 0 && List_Read(unit, v.data(), 2 * pairs) != List_Result::Ok)
                return fail(", reading pairs range - time for motor: " + motor);
            for (int p = 0; p < pairs; ++p)
                sec.range_time.emplace_back(v[static_cast<std::size_t>(2 * p)], v[static_cast<std::size_t>(2 * p + 1)]);
            c.range_time.push_back(std::move(sec));
        }
    } else if (key == "ALPHA_FILE") {
        c.alpha_file = Trim(value);
        Text_Unit alpha;
        if (!alpha.Open(c.alpha_file)) {
            ERR_Instrm = true;
            ERR_Instrm_Mess = Cut("Error the alpha file: " + c.alpha_file + ", does not exist!", 150);
            return false;
        }
        return table(c.det_alphas, c.vert_pxel, c.horiz_pxel, alpha, ", reading the efficiency of 2D-detector");
    } else if (key == "DET_ALPHAS") {
        return table(c.det_alphas, c.vert_pxel, c.horiz_pxel, unit, ", reading the efficiency of 2D-detector");
    } else if (key == "RESOLUTION_SURFACE") {
        const std::string tail = ", reading the dimension of resolution surface of the 2D-detector";
        int dims[2] = {0, 0};
        if (Is_Blank(value)) {
            if (!following(dims, 2, tail)) return false;
        } else if (!values(value, dims, 2, tail)) {
            return false;
        }
        return table(c.resolution_surface, dims[0], dims[1], unit, ", reading the resolution surface of 2D-detector");
    }
    return true;  // an unknown keyword is passed over
}

// The defaults a definition file starts from.
void file_defaults(INSTRUMENT_TYPE& c) {
    c = INSTRUMENT_TYPE{};
    c.geom = Cut("4C-Diff High-Chi, Eulerian cradle", 15);
    c.bl_frame = "z-up";
    c.dist_units = "mm";
    c.angl_units = "deg";
    c.rot_order = "xyz";
    c.wavelength = c.lambda_min = c.lambda_max = 0.5f;
    c.e1 = {1, 0, 0};
    c.e2 = {0, 1, 0};
    c.e3 = {0, 0, 1};
    c.ub = c.ub_inv = kIdentity;
    c.gamma_min = 0.0f;
    c.gamma_max = 140.0f;
    c.nu_min = -15.0f;
    c.nu_max = 15.0f;
    c.d_min = 0.5f;
    c.x_min = c.z_min = 0.0f;
    c.x_max = c.z_max = 40.0f;
}

// With a UB matrix read its inverse is kept beside it; otherwise both stay the identity.
bool closing_setup(INSTRUMENT_TYPE& c, const std::string& file) {
    if (!c.ub_read) {
        c.ub = c.ub_inv = kIdentity;
        return true;
    }
    Eigen::Matrix3d m;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) m(i, j) = c.ub[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
    if (!(std::fabs(m.determinant()) > 1e-12)) {
        ERR_Instrm = true;
        ERR_Instrm_Mess = Cut("Error in file: " + file + ", the UB-matrix is singular", 150);
        return false;
    }
    Eigen::Matrix3d inv = m.inverse();
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            c.ub_inv[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] = static_cast<float>(inv(i, j));
    return true;
}

}  // namespace

void Read_Current_Instrm(const std::string& filename) {
    ERR_Instrm = false;
    ERR_Instrm_Mess.clear();
    Current_Instrument_Set = false;
    Reader r;
    r.file = filename;
    if (!r.unit.Open(filename)) {
        file_defaults(Current_Instrument);
        ERR_Instrm = true;
        ERR_Instrm_Mess = Cut("Error opening the file: " + filename, 150);
        return;
    }
    file_defaults(Current_Instrument);
    std::string line;
    while (r.data_line(line)) {
        std::string key, value;
        first_word(line, key, value);
        if (!r.apply(Upper(key), value)) {
            file_defaults(Current_Instrument);
            return;
        }
    }
    if (!closing_setup(Current_Instrument, filename)) {
        file_defaults(Current_Instrument);
        return;
    }
    Current_Instrument_Set = true;
}

}  // namespace hxl
