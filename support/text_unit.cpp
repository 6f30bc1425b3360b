#include "support/text_unit.h"

#include <cstdio>
#include <cstring>

namespace hxl {

bool Text_Unit::Open(const std::string& path) {
    text_.clear();
    pos_ = last_ = 0;
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f) return false;
    bool ok = true;
    if (std::fseek(f, 0, SEEK_END) == 0) {
        long size = std::ftell(f);
        if (size > 0) {
            std::rewind(f);
            text_.resize(static_cast<std::size_t>(size));
            std::size_t got = std::fread(text_.data(), 1, text_.size(), f);
            text_.resize(got);
            ok = !std::ferror(f);
        }
    } else {
        ok = false;
    }
    std::fclose(f);
    // A UTF-8 byte-order mark is not part of the first line.
    if (text_.size() >= 3 && std::memcmp(text_.data(), "\xEF\xBB\xBF", 3) == 0) text_.erase(0, 3);
    return ok;
}

void Text_Unit::Set_Text(std::string text) {
    text_ = std::move(text);
    pos_ = last_ = 0;
    if (text_.size() >= 3 && std::memcmp(text_.data(), "\xEF\xBB\xBF", 3) == 0) text_.erase(0, 3);
}

bool Text_Unit::Read_Line(std::string_view& line) {
    if (pos_ >= text_.size()) return false;
    last_ = pos_;
    const char* base = text_.data();
    const std::size_t n = text_.size();
    const void* hit = std::memchr(base + pos_, '\n', n - pos_);
    std::size_t end = hit ? static_cast<std::size_t>(static_cast<const char*>(hit) - base) : n;
    // A lone CR also ends a line (old Mac files).
    const void* cr = std::memchr(base + pos_, '\r', end - pos_);
    if (cr) {
        std::size_t c = static_cast<std::size_t>(static_cast<const char*>(cr) - base);
        line = std::string_view(base + pos_, c - pos_);
        pos_ = (c + 1 < n && base[c + 1] == '\n') ? c + 2 : c + 1;
        return true;
    }
    line = std::string_view(base + pos_, end - pos_);
    pos_ = hit ? end + 1 : n;
    return true;
}

bool Text_Unit::Read_Line(std::string& line) {
    std::string_view v;
    if (!Read_Line(v)) return false;
    line.assign(v);
    return true;
}

void Text_Unit::Backspace() { pos_ = last_; }

}  // namespace hxl
