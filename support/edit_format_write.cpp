#include <charconv>
#include <cmath>
#include <algorithm>
#include <cstring>

#include "support/edit_format.h"

namespace hxl {
namespace {

void stars(char* f, int w) { std::memset(f, '*', static_cast<std::size_t>(w)); }

// `text` right-justified in the field, or stars when it does not fit.
void place(char* f, int w, std::string_view text) {
    if (static_cast<int>(text.size()) > w) return stars(f, w);
    std::memcpy(f + (w - static_cast<int>(text.size())), text.data(), text.size());
}

bool non_finite(char* f, int w, double v) {
    if (std::isfinite(v)) return false;
    if (std::isnan(v)) place(f, w, "NaN");
    else if (w >= 9 || (w == 8 && v > 0)) place(f, w, v < 0 ? "-Infinity" : "Infinity");
    else place(f, w, v < 0 ? "-Inf" : "Inf");
    return true;
}

void write_fixed(char* f, int w, int d, double v) {
    if (non_finite(f, w, v)) return;
    char buf[640];
    auto r = std::to_chars(buf, buf + sizeof buf - 1, v, std::chars_format::fixed, d);
    if (r.ec != std::errc()) return stars(f, w);
    char* end = r.ptr;
    if (d == 0) *end++ = '.';
    char* b = buf;
    if (*b == '-') {
        bool zero = true;
        for (char* c = b + 1; c < end; ++c)
            if (*c >= '1' && *c <= '9') zero = false;
        if (zero) ++b;  // no sign on a value that rounds to zero
    }
    std::size_t len = static_cast<std::size_t>(end - b);
    if (static_cast<int>(len) > w) {  // the optional leading zero goes first
        if (b[0] == '0' && b[1] == '.') {
            ++b;
            --len;
        } else if (b[0] == '-' && b[1] == '0' && b[2] == '.') {
            b[1] = '-';
            ++b;
            --len;
        }
    }
    place(f, w, std::string_view(b, len));
}

void write_exponent(char* f, int w, int d, int e, char letter, double v) {
    if (non_finite(f, w, v)) return;
    char digits[128];
    long exp10 = 0;
    if (v == 0.0) {
        std::memset(digits, '0', static_cast<std::size_t>(d));
    } else {
        char buf[160];
        auto r = std::to_chars(buf, buf + sizeof buf, std::fabs(v), std::chars_format::scientific, d - 1);
        if (r.ec != std::errc()) return stars(f, w);
        // "D.DDDe+XX"
        int k = 0;
        char* c = buf;
        for (; c < r.ptr && *c != 'e'; ++c)
            if (*c != '.') digits[k++] = *c;
        if (c < r.ptr) std::from_chars(*(c + 1) == '+' ? c + 2 : c + 1, r.ptr, exp10);
        exp10 += 1;
    }
    char out[200];
    int n = 0;
    if (v < 0) out[n++] = '-';
    out[n++] = '0';
    out[n++] = '.';
    std::memcpy(out + n, digits, static_cast<std::size_t>(d));
    n += d;
    const long a = exp10 < 0 ? -exp10 : exp10;
    int ed = e;
    if (e > 0) {
        long limit = 1;
        for (int i = 0; i < e; ++i) limit *= 10;
        if (a >= limit) return stars(f, w);
        out[n++] = letter;
    } else if (a <= 99) {
        ed = 2;
        out[n++] = letter;
    } else if (a <= 999) {
        ed = 3;  // the letter gives way to the third digit
    } else {
        return stars(f, w);
    }
    out[n++] = exp10 < 0 ? '-' : '+';
    long t = a;
    for (int i = ed - 1; i >= 0; --i) {
        out[n + i] = static_cast<char>('0' + t % 10);
        t /= 10;
    }
    n += ed;
    std::string_view s(out, static_cast<std::size_t>(n));
    if (n > w) {  // drop the optional leading zero
        if (v < 0) {
            out[1] = '-';
            s = std::string_view(out + 1, static_cast<std::size_t>(n - 1));
        } else {
            s = std::string_view(out + 1, static_cast<std::size_t>(n - 1));
        }
    }
    place(f, w, s);
}

void write_general(char* f, const EDIT_ITEM& it, double v) {
    const int w = it.width, d = it.decimals;
    const int n = it.exp_digits > 0 ? it.exp_digits + 2 : 4;
    if (std::isfinite(v) && d > 0 && w > n) {
        int k = 1;  // decimal exponent of the value rounded to d digits
        if (v != 0.0) {
            char buf[160];
            auto r = std::to_chars(buf, buf + sizeof buf, std::fabs(v), std::chars_format::scientific, d - 1);
            const char* c = std::find(buf, r.ptr, 'e');
            long x = 0;
            if (c < r.ptr) std::from_chars(*(c + 1) == '+' ? c + 2 : c + 1, r.ptr, x);
            k = static_cast<int>(x) + 1;
        }
        if (k >= 0 && k <= d) {
            write_fixed(f, w - n, d - k, v);
            return;
        }
    }
    write_exponent(f, w, d, it.exp_digits, 'E', v);
}

void write_real(char* f, const EDIT_ITEM& it, double v) {
    switch (it.kind) {
        case Edit_Kind::Real_F: write_fixed(f, it.width, it.decimals, v); break;
        case Edit_Kind::Real_E: write_exponent(f, it.width, it.decimals, it.exp_digits, 'E', v); break;
        case Edit_Kind::Real_D: write_exponent(f, it.width, it.decimals, it.exp_digits, 'D', v); break;
        case Edit_Kind::Real_G: write_general(f, it, v); break;
        default: stars(f, it.width); break;
    }
}

}  // namespace

Edit_Writer::Edit_Writer(const EDIT_FORMAT_TYPE& format, std::string& out) : fmt_(format), out_(out) {}

void Edit_Writer::new_line() {
    out_ += '\n';
    blanks_ = 0;
}

const EDIT_ITEM* Edit_Writer::next_field() {
    if (ended_) return nullptr;
    const std::size_t n = fmt_.items.size();
    while (true) {
        if (pos_ >= n) {
            if (fmt_.revert_data_items == 0) return nullptr;
            new_line();
            pos_ = fmt_.revert;
        }
        const EDIT_ITEM& it = fmt_.items[pos_++];
        if (it.kind == Edit_Kind::Skip) blanks_ += it.width;
        else if (it.kind == Edit_Kind::New_Line) new_line();
        else return &it;
    }
}

char* Edit_Writer::field(int width) {
    out_.append(static_cast<std::size_t>(blanks_), ' ');
    blanks_ = 0;
    const std::size_t at = out_.size();
    out_.append(static_cast<std::size_t>(width), ' ');
    return out_.data() + at;
}

void Edit_Writer::fail(const std::string& message, const EDIT_ITEM* item) {
    if (!failed_) message_ = message;
    failed_ = true;
    if (item) stars(field(item->width > 0 ? item->width : 1), item->width > 0 ? item->width : 1);
}

Edit_Writer& Edit_Writer::Int(long long value) {
    const EDIT_ITEM* it = next_field();
    if (!it) {
        fail(ended_ ? "Value written after the end of the record" : "More values than the format has fields", nullptr);
        return *this;
    }
    if (it->kind == Edit_Kind::Text) {
        fail("A number for a text field", it);
        return *this;
    }
    if (it->kind != Edit_Kind::Int) {
        write_real(field(it->width), *it, static_cast<double>(value));
        return *this;
    }
    char buf[32];
    auto r = std::to_chars(buf, buf + sizeof buf, value);
    const char* digits = buf[0] == '-' ? buf + 1 : buf;
    const int nd = static_cast<int>(r.ptr - digits);
    const int m = it->decimals > nd ? it->decimals : nd;
    const int total = m + (value < 0 ? 1 : 0);
    char* f = field(it->width);
    if (total > it->width) {
        stars(f, it->width);
        return *this;
    }
    char* p = f + (it->width - total);
    if (value < 0) *p++ = '-';
    for (int i = nd; i < m; ++i) *p++ = '0';
    std::memcpy(p, digits, static_cast<std::size_t>(nd));
    return *this;
}

Edit_Writer& Edit_Writer::Real(double value) {
    const EDIT_ITEM* it = next_field();
    if (!it) {
        fail(ended_ ? "Value written after the end of the record" : "More values than the format has fields", nullptr);
        return *this;
    }
    if (it->kind == Edit_Kind::Int) fail("A real value for an integer field", it);
    else if (it->kind == Edit_Kind::Text) fail("A number for a text field", it);
    else write_real(field(it->width), *it, value);
    return *this;
}

Edit_Writer& Edit_Writer::Text(std::string_view value) {
    const EDIT_ITEM* it = next_field();
    if (!it) {
        fail(ended_ ? "Value written after the end of the record" : "More values than the format has fields", nullptr);
        return *this;
    }
    if (it->kind != Edit_Kind::Text) {
        fail("A text for a numeric field", it);
        return *this;
    }
    const int w = it->width > 0 ? it->width : static_cast<int>(value.size());
    char* f = field(w);
    if (static_cast<int>(value.size()) >= w) std::memcpy(f, value.data(), static_cast<std::size_t>(w));
    else std::memcpy(f + (w - static_cast<int>(value.size())), value.data(), value.size());
    return *this;
}

void Edit_Writer::End() {
    if (ended_) return;
    // Line breaks up to the next field still belong to this statement.
    while (pos_ < fmt_.items.size()) {
        const Edit_Kind k = fmt_.items[pos_].kind;
        if (k == Edit_Kind::New_Line) new_line();
        else if (k != Edit_Kind::Skip) break;
        ++pos_;
    }
    out_ += '\n';
    ended_ = true;
}

void Edit_Write(const EDIT_FORMAT_TYPE& format, const float* values, int n, std::string& out) {
    Edit_Writer w(format, out);
    for (int i = 0; i < n; ++i) w.Real(values[i]);
}

void Edit_Write(const EDIT_FORMAT_TYPE& format, const int* values, int n, std::string& out) {
    Edit_Writer w(format, out);
    for (int i = 0; i < n; ++i) w.Int(values[i]);
}

}  // namespace hxl
