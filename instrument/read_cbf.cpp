#include <cbflib/cbf.h>

#include <cstdio>
#include <fstream>
#include <vector>

#include "instrument/frame_readers.h"

namespace hxl {

namespace {
struct CBF_HANDLE {
    cbf_handle h = nullptr;
    ~CBF_HANDLE() {
        if (h) cbf_free_handle(h);
    }
};
std::string compression_name(unsigned int c) {
    switch (c & CBF_COMPRESSION_MASK) {
        case CBF_NONE: return "none";
        case CBF_BYTE_OFFSET: return "byte offset";
        case CBF_PACKED: return "packed";
        case CBF_PACKED_V2: return "packed v2";
        case CBF_CANONICAL: return "canonical";
        case CBF_NIBBLE_OFFSET: return "nibble offset";
        default: return "unknown";
    }
}
// The library reads a section whose compression it does not know as plain
// integers, which gives wrong counts without a word: the names in the MIME
// heads are checked first. Empty when all are known.
std::string unknown_conversion(const std::string& path) {
    std::ifstream f(path, std::ios::binary);
    std::string head(1 << 20, '\0');
    f.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(f.gcount()));
    static const char* known[] = {"x-CBF_NONE", "x-CBF_BYTE_OFFSET", "x-CBF_PACKED_V2", "x-CBF_PACKED",
                                  "x-CBF_CANONICAL", "x-CBF_PREDICTOR", "x-CBF_NIBBLE_OFFSET"};
    for (std::size_t at = head.find("conversions="); at != std::string::npos; at = head.find("conversions=", at + 1)) {
        std::size_t v = at + 12 + (at + 12 < head.size() && head[at + 12] == '"');
        std::size_t end = head.find_first_of("\";\r\n ", v);
        std::string name = head.substr(v, end == std::string::npos ? std::string::npos : end - v);
        bool ok = false;
        for (const char* k : known) ok = ok || name == k;
        if (!ok) return name;
    }
    return "";
}

}  // namespace

bool Read_CBF_Frame(const std::string& path, FRAME_SET_TYPE& frames, std::string& message) {
    frames = FRAME_SET_TYPE{};
    CBF_HANDLE cbf;
    if (cbf_make_handle(&cbf.h)) {
        message = "The CBF library cannot start";
        return false;
    }
    std::string conversion = unknown_conversion(path);
    if (!conversion.empty()) {
        message = "The image of " + path + " is compressed as '" + conversion + "', which this program does not read";
        return false;
    }
    FILE* in = std::fopen(path.c_str(), "rb");
    if (!in) {
        message = "Error opening the file: " + path;
        return false;
    }
    // The library owns the stream from here and closes it with the handle.
    if (int e = cbf_read_file(cbf.h, in, MSG_DIGEST)) {
        message = "The CBF file " + path + " cannot be read (library code " + std::to_string(e) + ")";
        return false;
    }
    if (cbf_rewind_datablock(cbf.h) || cbf_find_category(cbf.h, "array_data") || cbf_find_column(cbf.h, "data") ||
        cbf_rewind_row(cbf.h)) {
        message = "The CBF file " + path + " holds no array_data.data image";
        return false;
    }
    unsigned int compression = 0;
    int id = 0, is_signed = 0, is_unsigned = 0, minel = 0, maxel = 0;
    std::size_t elsize = 0, n = 0, fast = 0, mid = 0, slow = 0, padding = 0;
    const char* order = nullptr;
    if (int e = cbf_get_integerarrayparameters_wdims_fs(cbf.h, &compression, &id, &elsize, &is_signed, &is_unsigned, &n,
                                                        &minel, &maxel, &order, &fast, &mid, &slow, &padding)) {
        message = "The image of " + path + " cannot be read: its compression (" + compression_name(compression) +
                  ") or element type is not known (library code " + std::to_string(e) + ")";
        return false;
    }
    if (mid == 0) mid = 1;
    if (slow == 0) slow = 1;
    long long rows = static_cast<long long>(mid) * static_cast<long long>(slow);
    if (!Frame_Size_Check(static_cast<long long>(fast), rows, 1, message)) return false;
    if (static_cast<long long>(n) != static_cast<long long>(fast) * rows) {
        message = "The image of " + path + " declares " + std::to_string(n) + " elements for " + std::to_string(fast) +
                  " x " + std::to_string(rows) + " pixels";
        return false;
    }
    std::vector<int> values(n);
    std::size_t got = 0;
    if (int e = cbf_get_integerarray(cbf.h, &id, values.data(), sizeof(int), 1, n, &got)) {
        message = "The image data of " + path + " cannot be decoded (" + compression_name(compression) +
                  " compression, library code " + std::to_string(e) + ")";
        return false;
    }
    if (got != n) {
        message = "The image of " + path + " is cut short: " + std::to_string(got) + " of " + std::to_string(n) +
                  " pixels";
        return false;
    }
    Allocate_Frames(frames, static_cast<int>(fast), static_cast<int>(rows), 1);
    for (std::size_t i = 0; i < n; ++i) frames.counts[i] = static_cast<float>(values[i]);
    frames.angle[0] = 1;
    frames.monitor[0] = 1;
    frames.format = "CBF";
    frames.source = path;
    return true;
}

}  // namespace hxl
