#pragma once
// A CIF file as blocks of items, parsed by gemmi. Kept to plain strings so that
// gemmi's headers stay inside one file (they build as C++17 with every compiler).
#include <string>
#include <vector>

namespace hxl {

struct CIF_ITEM_TYPE {
    bool loop = false;
    std::vector<std::string> tags;    // one for a pair
    std::vector<std::string> values;  // raw, quotes kept; a loop's row after row
};

struct CIF_BLOCK_TYPE {
    std::string name;
    std::vector<CIF_ITEM_TYPE> items;
};

// False with the parser's message when the text is not CIF.
bool Parse_Cif_Text(const std::string& text, const std::string& name, std::vector<CIF_BLOCK_TYPE>& blocks,
                    std::string& message);
bool Parse_Cif_File(const std::string& file, std::vector<CIF_BLOCK_TYPE>& blocks, std::string& message);

// A raw value without its quotes or text-field marks; "" for "?" and ".".
std::string Cif_Unquote(const std::string& raw);

}  // namespace hxl
