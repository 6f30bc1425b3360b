#pragma once
// One record layout in edit-descriptor notation, parsed once, written with
// mixed values: Layout("(a,f14.6)")(out, "text", 1.5f).
#include <string>
#include <string_view>

#include "support/edit_format.h"

namespace hxl {

class Layout {
public:
    explicit Layout(std::string_view text) {
        std::string message;
        Parse_Edit_Format(text, f_, message);
    }
    template <class... A>
    void operator()(std::string& out, const A&... a) const {
        Edit_Writer w(f_, out);
        (put(w, a), ...);
    }
    const EDIT_FORMAT_TYPE& Format() const { return f_; }

private:
    static void put(Edit_Writer& w, int v) { w.Int(v); }
    static void put(Edit_Writer& w, float v) { w.Real(v); }
    static void put(Edit_Writer& w, double v) { w.Real(v); }
    static void put(Edit_Writer& w, const char* v) { w.Text(v); }
    static void put(Edit_Writer& w, const std::string& v) { w.Text(v); }
    EDIT_FORMAT_TYPE f_;
};

}  // namespace hxl
