#pragma once
// Vendor formats that only the library reads, recognised by the library's
// own checks of a file's head (magic bytes and first lines).
#include <string>
#include <string_view>

namespace hxl {

// The library's name of the format of `head` ("bruker_raw", "vamas", ...)
// and its description, or false. `binary` selects the binary formats, else
// the text ones; both lists are tried in a fixed order, strongest check first.
bool Library_Format_Of_Head(std::string_view head, bool binary, std::string& name, std::string& description);

}  // namespace hxl
