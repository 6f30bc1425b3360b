// First line: a format; the rest: data lines. Reads values of the kinds the
// format asks for, writes them back with the same format, and reads that
// again: integers must come back as they were.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "support/edit_format.h"
#include "support/text_utils.h"

using namespace hxl;

namespace {

struct Value {
    Edit_Kind kind;
    int i = 0;
    double r = 0;
    std::string t;
};

// Reads up to `limit` values of the kinds of the format, in its order.
std::vector<Value> read_all(const EDIT_FORMAT_TYPE& f, Text_Unit& unit, int limit, Edit_Result& status) {
    std::vector<Value> values;
    Edit_Reader rd(f, unit);
    std::size_t pos = 0;
    while (static_cast<int>(values.size()) < limit) {
        // The kinds one pass takes, then from the reversion point on.
        while (pos < f.items.size() &&
               (f.items[pos].kind == Edit_Kind::Skip || f.items[pos].kind == Edit_Kind::New_Line))
            ++pos;
        if (pos >= f.items.size()) {
            if (f.revert_data_items == 0) break;
            pos = f.revert;
            continue;
        }
        Value v;
        v.kind = f.items[pos++].kind;
        bool ok = v.kind == Edit_Kind::Int ? rd.Int(v.i) : v.kind == Edit_Kind::Text ? rd.Text(v.t) : rd.Real(v.r);
        if (!ok) break;
        values.push_back(std::move(v));
    }
    status = rd.Status();
    return values;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::size_t nl = text.find('\n');
    const std::string fmt_text = text.substr(0, nl);
    EDIT_FORMAT_TYPE f;
    std::string message;
    int ncol = 0;
    NumCol_from_NumFmt(fmt_text, ncol);
    if (!Parse_Edit_Format(fmt_text, f, message)) {
        if (message.empty() || !err_string) std::abort();
        return 0;
    }
    if (ncol != f.data_items) std::abort();
    Text_Unit unit;
    unit.Set_Text(nl == std::string::npos ? std::string() : text.substr(nl + 1));
    Edit_Result status;
    const std::vector<Value> values = read_all(f, unit, 300, status);

    std::string out;
    {
        Edit_Writer w(f, out);
        for (const Value& v : values) {
            if (v.kind == Edit_Kind::Int) w.Int(v.i);
            else if (v.kind == Edit_Kind::Text) w.Text(v.t);
            else w.Real(v.r);
        }
        w.End();
        if (w.Failed()) std::abort();  // the kinds matched the fields
    }
    if (out.empty() || out.back() != '\n') std::abort();

    // A text field without width takes the rest of the line, so what follows
    // it cannot come back; otherwise integers must.
    bool open_text = out.rfind("\xEF\xBB\xBF", 0) == 0;  // a unit drops a leading byte-order mark
    for (const EDIT_ITEM& it : f.items)
        if (it.kind == Edit_Kind::Text && it.width == 0) open_text = true;
    Text_Unit again;
    again.Set_Text(out);
    Edit_Result status2;
    const std::vector<Value> back = read_all(f, again, static_cast<int>(values.size()), status2);
    if (!open_text && status2 == Edit_Result::Ok) {
        if (back.size() != values.size()) std::abort();
        for (std::size_t i = 0; i < values.size(); ++i)
            if (values[i].kind == Edit_Kind::Int && back[i].i != values[i].i) std::abort();
    }
    return 0;
}
