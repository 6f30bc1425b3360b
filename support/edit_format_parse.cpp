#include <algorithm>
#include <cctype>
#include <string>

#include "support/edit_format.h"

namespace hxl {
namespace {

constexpr int kMaxWidth = 9999;
constexpr int kMaxDecimals = 99;
constexpr int kMaxRepeat = 99999;
constexpr std::size_t kMaxItems = 200000;  // after expansion of the groups
constexpr int kMaxDepth = 32;

struct Parser {
    std::string_view s;
    std::size_t p = 0;
    EDIT_FORMAT_TYPE& f;
    std::string& message;

    void skip_blanks() {
        while (p < s.size() && (s[p] == ' ' || s[p] == '\t')) ++p;
    }
    char peek() {
        skip_blanks();
        return p < s.size() ? static_cast<char>(std::toupper(static_cast<unsigned char>(s[p]))) : '\0';
    }
    bool error(const std::string& what) {
        message = what + " in format \"" + std::string(s.substr(0, 80)) + "\"";
        return false;
    }
    // -1 when no digits are there.
    int number() {
        skip_blanks();
        if (p >= s.size() || !std::isdigit(static_cast<unsigned char>(s[p]))) return -1;
        long v = 0;
        while (p < s.size() && std::isdigit(static_cast<unsigned char>(s[p]))) {
            if (v < 1000000) v = v * 10 + (s[p] - '0');
            ++p;
        }
        return static_cast<int>(v);
    }
    bool push(const EDIT_ITEM& item, int repeat) {
        if (f.items.size() + static_cast<std::size_t>(repeat) > kMaxItems) return error("Format too long");
        f.items.insert(f.items.end(), static_cast<std::size_t>(repeat), item);
        return true;
    }

    bool list(int depth, bool closed) {
        bool empty = true;
        while (true) {
            char c = peek();
            if (c == '\0') {
                if (closed) return error("Missing \")\"");
                return true;
            }
            if (c == ')') {
                if (!closed) return error("Unbalanced \")\"");
                if (empty && depth > 1) return error("Empty group");
                ++p;
                return true;
            }
            if (c == ',') { ++p; continue; }
            empty = false;
            if (c == '/') {
                ++p;
                if (!push({Edit_Kind::New_Line, 0, 0, 0}, 1)) return false;
                continue;
            }
            int r = number();
            if (r == 0) return error("Repeat count of zero");
            c = peek();
            if (c == '\0') return error("Incomplete format");
            ++p;
            if (c == '(') {
                if (depth >= kMaxDepth) return error("Groups nested too deeply");
                const std::size_t start = f.items.size();
                if (depth == 1) f.revert = start;
                if (!list(depth + 1, true)) return false;
                const std::size_t len = f.items.size() - start;
                const std::size_t times = r < 0 ? 1 : static_cast<std::size_t>(r);
                if (len * times > kMaxItems || f.items.size() + len * (times - 1) > kMaxItems)
                    return error("Format too long");
                for (std::size_t k = 1; k < times; ++k)
                    for (std::size_t j = 0; j < len; ++j) f.items.push_back(f.items[start + j]);
                continue;
            }
            if (c == '/') {  // r/ : r new lines
                if (!push({Edit_Kind::New_Line, 0, 0, 0}, r < 0 ? 1 : r)) return false;
                continue;
            }
            if (c == 'X') {
                // a skip is a field of blanks: as wide as a field may be, or a line could take gigabytes
                if (r > kMaxWidth) return error("Skip too wide");
                if (!push({Edit_Kind::Skip, r < 0 ? 1 : r, 0, 0}, 1)) return false;
                continue;
            }
            if (r > kMaxRepeat) return error("Repeat count too large");
            const int repeat = r < 0 ? 1 : r;
            EDIT_ITEM item;
            if (c == 'A') {
                item.kind = Edit_Kind::Text;
                item.width = number();
                if (item.width == 0) return error("Field of width zero");
                if (item.width < 0) item.width = 0;
                if (item.width > kMaxWidth) return error("Field too wide");
            } else if (c == 'I' || c == 'F' || c == 'E' || c == 'D' || c == 'G') {
                item.kind = c == 'I' ? Edit_Kind::Int
                          : c == 'F' ? Edit_Kind::Real_F
                          : c == 'E' ? Edit_Kind::Real_E
                          : c == 'D' ? Edit_Kind::Real_D
                                     : Edit_Kind::Real_G;
                item.width = number();
                if (item.width < 0) return error(std::string("Width missing after ") + c);
                if (item.width == 0) return error("Field of width zero");
                if (item.width > kMaxWidth) return error("Field too wide");
                if (peek() == '.') {
                    ++p;
                    item.decimals = number();
                    if (item.decimals < 0) return error("Decimals missing");
                    if (item.decimals > kMaxDecimals) return error("Too many decimals");
                } else if (c != 'I') {
                    return error(std::string("Decimals missing after ") + c);
                }
                if ((c == 'E' || c == 'D') && item.decimals == 0) return error("No digits in an exponent field");
                if ((c == 'E' || c == 'G') && peek() == 'E') {
                    ++p;
                    item.exp_digits = number();
                    if (item.exp_digits <= 0 || item.exp_digits > 9) return error("Bad exponent width");
                }
            } else {
                return error(std::string("Unknown edit descriptor \"") + c + "\"");
            }
            if (!push(item, repeat)) return false;
        }
    }
};

int count_data(const std::vector<EDIT_ITEM>& items, std::size_t from) {
    int n = 0;
    for (std::size_t i = from; i < items.size(); ++i)
        if (items[i].kind != Edit_Kind::Skip && items[i].kind != Edit_Kind::New_Line) ++n;
    return n;
}

}  // namespace

bool Parse_Edit_Format(std::string_view text, EDIT_FORMAT_TYPE& format, std::string& message) {
    format = EDIT_FORMAT_TYPE{};
    message.clear();
    Parser ps{text, 0, format, message};
    bool ok;
    if (ps.peek() == '(') {
        ++ps.p;
        ok = ps.list(1, true);
        if (ok && ps.peek() != '\0') ok = ps.error("Text after the closing \")\"");
    } else {
        ok = ps.list(1, false);
    }
    if (!ok) {
        format = EDIT_FORMAT_TYPE{};
        return false;
    }
    if (format.items.empty()) {
        message = "Empty format";
        return false;
    }
    // One pass of the format makes at most this many characters: a record, not a file.
    std::size_t chars = 0;
    for (const EDIT_ITEM& it : format.items) chars += static_cast<std::size_t>(std::max(it.width, 0));
    if (chars > 1000000) {
        message = "Format too long in format \"" + std::string(text.substr(0, 80)) + "\"";
        format = EDIT_FORMAT_TYPE{};
        return false;
    }
    format.data_items = count_data(format.items, 0);
    format.revert_data_items = count_data(format.items, format.revert);
    return true;
}

}  // namespace hxl
