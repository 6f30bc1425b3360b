#include <string>

#include "support/edit_format.h"
#include "support/fortran_number.h"

namespace hxl {
namespace {

constexpr std::size_t kMaxNumber = 255;  // non-blank characters of one numeric field

// The field without its blanks (blanks in a numeric field mean nothing);
// false when it is too long to be a number.
bool squeeze(std::string_view field, char* buf, std::size_t& len) {
    len = 0;
    for (char c : field) {
        if (c == ' ' || c == '\t' || c == '\r') continue;
        if (len == kMaxNumber) return false;
        buf[len++] = c;
    }
    return true;
}

std::string shown(std::string_view field) {
    std::string s(field.substr(0, 40));
    if (field.size() > 40) s += "...";
    return s;
}

}  // namespace

Edit_Reader::Edit_Reader(const EDIT_FORMAT_TYPE& format, Text_Unit& unit) : fmt_(format), unit_(&unit) { next_line(); }

Edit_Reader::Edit_Reader(const EDIT_FORMAT_TYPE& format, std::string_view text)
    : fmt_(format), rest_(text.data() ? text : std::string_view("")) {
    next_line();
}

bool Edit_Reader::next_line() {
    if (unit_) {
        if (!unit_->Read_Line(line_)) return fail(Edit_Result::End_Of_File, "End of file", {});
    } else {
        if (rest_.data() == nullptr) return fail(Edit_Result::End_Of_File, "End of the text", {});
        const std::size_t nl = rest_.find('\n');
        if (nl == std::string_view::npos) {
            line_ = rest_;
            rest_ = std::string_view();
        } else {
            line_ = rest_.substr(0, nl);
            rest_ = rest_.substr(nl + 1);
        }
        if (!line_.empty() && line_.back() == '\r') line_.remove_suffix(1);
    }
    col_ = 0;
    ++lines_;
    return true;
}

const EDIT_ITEM* Edit_Reader::next_field() {
    if (status_ != Edit_Result::Ok) return nullptr;
    const std::size_t n = fmt_.items.size();
    while (true) {
        if (pos_ >= n) {
            if (fmt_.revert_data_items == 0) {
                fail(Edit_Result::Bad_Format, "More values than the format has fields", {});
                return nullptr;
            }
            if (!next_line()) return nullptr;
            pos_ = fmt_.revert;
        }
        const EDIT_ITEM& it = fmt_.items[pos_++];
        if (it.kind == Edit_Kind::Skip) {
            col_ += static_cast<std::size_t>(it.width);
        } else if (it.kind == Edit_Kind::New_Line) {
            if (!next_line()) return nullptr;
        } else {
            return &it;
        }
    }
}

std::string_view Edit_Reader::take(int width) {
    const std::size_t at = col_;
    field_col_ = at;
    col_ += static_cast<std::size_t>(width);
    if (at >= line_.size()) return {};
    return line_.substr(at, static_cast<std::size_t>(width));
}

bool Edit_Reader::fail(Edit_Result status, std::string_view what, std::string_view field) {
    if (status_ != Edit_Result::Ok) return false;
    status_ = status;
    message_.assign(what);
    if (!field.empty() || status == Edit_Result::Bad_Value) {
        message_ += " \"" + shown(field) + "\" at column " + std::to_string(field_col_ + 1);
        message_ += " of line " + std::to_string(lines_) + " of the record";
    }
    return false;
}

bool Edit_Reader::Int(int& value) {
    const EDIT_ITEM* it = next_field();
    if (!it) return false;
    if (it->kind != Edit_Kind::Int) {
        return fail(Edit_Result::Bad_Format,
                    it->kind == Edit_Kind::Text ? "An integer read with a text field" : "An integer read with a real field",
                    {});
    }
    std::string_view f = take(it->width);
    char buf[kMaxNumber];
    std::size_t len;
    if (!squeeze(f, buf, len)) return fail(Edit_Result::Bad_Value, "Bad integer field", f);
    if (len == 0) {
        value = 0;
        return true;
    }
    int v = 0;
    if (!Fortran_Integer(std::string_view(buf, len), v)) return fail(Edit_Result::Bad_Value, "Bad integer field", f);
    value = v;
    return true;
}

template <class T>
bool Edit_Reader::real(T& value) {
    const EDIT_ITEM* it = next_field();
    if (!it) return false;
    if (it->kind == Edit_Kind::Text) return fail(Edit_Result::Bad_Format, "A number read with a text field", {});
    std::string_view f = take(it->width);
    char buf[kMaxNumber];
    std::size_t len;
    if (!squeeze(f, buf, len)) return fail(Edit_Result::Bad_Value, "Bad real field", f);
    if (len == 0) {
        value = T(0);
        return true;
    }
    const int implied = it->kind == Edit_Kind::Int ? 0 : it->decimals;
    T v{};
    if (!Fortran_Real(std::string_view(buf, len), implied, v)) return fail(Edit_Result::Bad_Value, "Bad real field", f);
    value = v;
    return true;
}

bool Edit_Reader::Real(float& value) { return real(value); }
bool Edit_Reader::Real(double& value) { return real(value); }

bool Edit_Reader::Text(std::string& value) {
    const EDIT_ITEM* it = next_field();
    if (!it) return false;
    if (it->kind != Edit_Kind::Text) return fail(Edit_Result::Bad_Format, "A text read with a numeric field", {});
    if (it->width == 0) {
        value.assign(col_ < line_.size() ? line_.substr(col_) : std::string_view());
        col_ = line_.size() > col_ ? line_.size() : col_;
        return true;
    }
    std::string_view f = take(it->width);
    value.assign(f);
    value.append(static_cast<std::size_t>(it->width) - f.size(), ' ');
    return true;
}

Edit_Result Edit_Read(Text_Unit& unit, const EDIT_FORMAT_TYPE& format, float* out, int n, std::string& message) {
    Edit_Reader r(format, unit);
    for (int i = 0; i < n; ++i)
        if (!r.Real(out[i])) break;
    message = r.Message();
    return r.Status();
}

Edit_Result Edit_Read(Text_Unit& unit, const EDIT_FORMAT_TYPE& format, int* out, int n, std::string& message) {
    Edit_Reader r(format, unit);
    for (int i = 0; i < n; ++i)
        if (!r.Int(out[i])) break;
    message = r.Message();
    return r.Status();
}

}  // namespace hxl
