#include "patterns/format_guess_library.h"

#include <xylib/xylib.h>

#include "patterns/library_check.h"

#include <exception>
#include <sstream>

namespace hxl {

bool Library_Format_Of_Head(std::string_view head, bool binary, std::string& name, std::string& description) {
    // Only formats whose check looks at a signature: the library's checks of
    // plain column layouts accept nearly any text and would name our own formats.
    static constexpr const char* kBinary[] = {"bruker_raw", "philips_rd", "canberra_cnf", "canberra_mca"};
    static constexpr const char* kText[] = {"cpi", "rigaku_dat"};
    const std::string bytes(head);
    auto try_one = [&](const char* format) {
        const xylibFormat* f = xylib_get_format_by_name(format);
        if (!f) return false;
        std::istringstream in(bytes);
        std::string details;
        // A head the check cannot parse is not of its format.
        if (!Library_Check(static_cast<const xylib::FormatInfo*>(f), in, &details)) return false;
        name = format;
        description = f->desc ? f->desc : format;
        if (!details.empty()) description += " (" + details + ")";
        return true;
    };
    if (binary) {
        for (const char* f : kBinary)
            if (try_one(f)) return true;
    } else {
        for (const char* f : kText)
            if (try_one(f)) return true;
    }
    return false;
}

}  // namespace hxl
