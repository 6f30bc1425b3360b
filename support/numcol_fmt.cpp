#include "support/edit_format.h"
#include "support/text_utils.h"

namespace hxl {

void NumCol_from_NumFmt(std::string_view format, int& ncol) {
    Clear_String_Error();
    ncol = 0;
    EDIT_FORMAT_TYPE f;
    std::string message;
    if (!Parse_Edit_Format(format, f, message)) {
        Set_String_Error("Illegal format string passed to subroutine:  NumCol_from_NumFmt");
        return;
    }
    ncol = f.data_items;
}

}  // namespace hxl
