#include "instrument/fixed_columns.h"

#include <cmath>
#include <limits>
#include <string>

#include "support/edit_format.h"

namespace hxl {

namespace {

// The numor layouts, parsed once: "(10I8)", "(8I10)", "(5E16.8)".
const EDIT_FORMAT_TYPE& layout(char kind, int width) {
    static EDIT_FORMAT_TYPE i8, i10, e16;
    static bool parsed = false;
    if (!parsed) {
        std::string message;
        Parse_Edit_Format("(10I8)", i8, message);
        Parse_Edit_Format("(8I10)", i10, message);
        Parse_Edit_Format("(5E16.8)", e16, message);
        parsed = true;
    }
    if (kind == 'E') return e16;
    return width == 10 ? i10 : i8;
}

}  // namespace

bool Read_Int_Fields(std::string_view line, int width, int count, int* out) {
    Edit_Reader r(layout('I', width), line);
    for (int i = 0; i < count; ++i) {
        out[i] = 0;
        if (!r.Int(out[i])) {
            // Past the end of the one line given: the remaining fields are blank.
            if (r.Status() == Edit_Result::End_Of_File) {
                for (int k = i; k < count; ++k) out[k] = 0;
                return true;
            }
            return false;
        }
    }
    return true;
}

bool Read_Real_Fields(std::string_view line, int width, int count, float* out) {
    (void)width;
    Edit_Reader r(layout('E', 16), line);
    for (int i = 0; i < count; ++i) {
        out[i] = 0.0f;
        if (!r.Real(out[i])) {
            if (r.Status() == Edit_Result::End_Of_File) {
                for (int k = i; k < count; ++k) out[k] = 0.0f;
                return true;
            }
            return false;
        }
        // A value beyond the float range is a bad field, not an infinity.
        if (!std::isfinite(out[i])) return false;
    }
    return true;
}

std::string Format_I(long long value, int width) {
    std::string s = std::to_string(value);
    if (static_cast<int>(s.size()) > width) return std::string(static_cast<std::size_t>(width), '*');
    return std::string(static_cast<std::size_t>(width) - s.size(), ' ') + s;
}

}  // namespace hxl
