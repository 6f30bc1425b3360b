#include "crystal/cif_document.h"

#include <exception>

#include <gemmi/cif.hpp>

namespace hxl {

namespace {

namespace cif = gemmi::cif;

void convert(const cif::Document& doc, std::vector<CIF_BLOCK_TYPE>& blocks) {
    blocks.clear();
    for (const cif::Block& b : doc.blocks) {
        CIF_BLOCK_TYPE out;
        out.name = b.name;
        for (const cif::Item& item : b.items) {
            CIF_ITEM_TYPE it;
            if (item.type == cif::ItemType::Pair) {
                it.tags.push_back(item.pair[0]);
                it.values.push_back(item.pair[1]);
            } else if (item.type == cif::ItemType::Loop) {
                it.loop = true;
                it.tags = item.loop.tags;
                it.values = item.loop.values;
            } else {
                continue;  // comments and save frames
            }
            out.items.push_back(std::move(it));
        }
        blocks.push_back(std::move(out));
    }
}

}  // namespace

template <class INPUT>
bool parse(INPUT&& in, std::vector<CIF_BLOCK_TYPE>& blocks, std::string& message) {
    cif::Document doc;
    try {
        cif::parse_input(doc, in);
    } catch (const std::exception& e) {
        message = std::string("The CIF file cannot be read: ") + e.what();
        return false;
    }
    convert(doc, blocks);
    return true;
}

bool Parse_Cif_Text(const std::string& text, const std::string& name, std::vector<CIF_BLOCK_TYPE>& blocks,
                    std::string& message) {
    return parse(tao::pegtl::memory_input<>(text, name), blocks, message);
}

bool Parse_Cif_File(const std::string& file, std::vector<CIF_BLOCK_TYPE>& blocks, std::string& message) {
    try {
        return parse(tao::pegtl::file_input<>(file), blocks, message);
    } catch (const std::exception& e) {  // a file that cannot be opened
        message = std::string("The CIF file cannot be read: ") + e.what();
        return false;
    }
}

std::string Cif_Unquote(const std::string& raw) { return cif::as_string(raw); }

}  // namespace hxl
