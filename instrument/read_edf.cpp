#include <cstdint>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>

#include "instrument/frame_readers.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {

namespace {

struct EDF_TYPE_INFO {
    int size;
    char kind;  // 'u' unsigned, 's' signed, 'f' float
};

bool data_type(const std::string& name, EDF_TYPE_INFO& t) {
    static const std::map<std::string, EDF_TYPE_INFO> types = {
        {"unsignedbyte", {1, 'u'}},   {"signedbyte", {1, 's'}},      {"unsignedshort", {2, 'u'}},
        {"signedshort", {2, 's'}},    {"unsignedinteger", {4, 'u'}}, {"signedinteger", {4, 's'}},
        {"unsignedlong", {4, 'u'}},   {"signedlong", {4, 's'}},      {"floatvalue", {4, 'f'}},
        {"float", {4, 'f'}},          {"doublevalue", {8, 'f'}},     {"double", {8, 'f'}},
        {"unsigned64", {8, 'u'}},     {"signed64", {8, 's'}}};
    auto it = types.find(Lower(Trim(name)));
    if (it == types.end()) return false;
    t = it->second;
    return true;
}

float decode(const unsigned char* p, const EDF_TYPE_INFO& t, bool swap) {
    unsigned char b[8];
    for (int i = 0; i < t.size; ++i) b[i] = swap ? p[t.size - 1 - i] : p[i];
    switch (t.size * 16 + (t.kind == 'u' ? 0 : t.kind == 's' ? 1 : 2)) {
        case 16: return b[0];
        case 17: return static_cast<std::int8_t>(b[0]);
        case 32: { std::uint16_t v; std::memcpy(&v, b, 2); return v; }
        case 33: { std::int16_t v; std::memcpy(&v, b, 2); return v; }
        case 64: { std::uint32_t v; std::memcpy(&v, b, 4); return static_cast<float>(v); }
        case 65: { std::int32_t v; std::memcpy(&v, b, 4); return static_cast<float>(v); }
        case 66: { float v; std::memcpy(&v, b, 4); return v; }
        case 128: { std::uint64_t v; std::memcpy(&v, b, 8); return static_cast<float>(v); }
        case 129: { std::int64_t v; std::memcpy(&v, b, 8); return static_cast<float>(v); }
        default: { double v; std::memcpy(&v, b, 8); return static_cast<float>(v); }
    }
}

bool host_little() {
    const std::uint16_t one = 1;
    unsigned char c;
    std::memcpy(&c, &one, 1);
    return c == 1;
}

}  // namespace

bool Read_EDF_Bytes(const std::string& bytes, const std::string& name, FRAME_SET_TYPE& frames, std::string& message) {
    frames = FRAME_SET_TYPE{};
    std::size_t pos = 0;
    std::vector<std::vector<float>> images;
    int nx = 0, ny = 0;
    std::string title;
    float wavelength = 0;
    while (pos < bytes.size()) {
        // Blank padding or line ends between blocks are not a block.
        while (pos < bytes.size() && std::isspace(static_cast<unsigned char>(bytes[pos]))) ++pos;
        if (pos >= bytes.size()) break;
        int block = static_cast<int>(images.size()) + 1;
        std::string where = name + ", block " + std::to_string(block) + ": ";
        if (bytes[pos] != '{') {
            message = where + "no EDF head (it must begin with '{')";
            return false;
        }
        std::size_t close = bytes.find('}', pos);
        if (close == std::string::npos) {
            message = where + "the EDF head does not end ('}' missing)";
            return false;
        }
        std::map<std::string, std::string> keys;
        std::istringstream head(bytes.substr(pos + 1, close - pos - 1));
        std::string line;
        while (std::getline(head, line, ';')) {
            std::size_t eq = line.find('=');
            if (eq == std::string::npos) continue;
            keys[Lower(Trim(line.substr(0, eq)))] = Trim(line.substr(eq + 1));
        }
        std::size_t data = close + 1;
        if (data < bytes.size() && bytes[data] == '\n') ++data;
        int d1 = 0, d2 = 0;
        if (!Parse_Integer(keys["dim_1"], d1) || !Parse_Integer(keys["dim_2"], d2)) {
            message = where + "Dim_1 and Dim_2 must be given as integers";
            return false;
        }
        EDF_TYPE_INFO t{};
        if (!data_type(keys["datatype"], t)) {
            message = where + "unknown DataType '" + keys["datatype"] + "'";
            return false;
        }
        std::string order = Lower(keys["byteorder"]);
        if (order != "lowbytefirst" && order != "highbytefirst" && !(t.size == 1 && order.empty())) {
            message = where + "ByteOrder must be LowByteFirst or HighByteFirst, not '" + keys["byteorder"] + "'";
            return false;
        }
        std::string comp = Lower(keys["compression"]);
        if (!comp.empty() && comp != "none" && comp != "no") {
            message = where + "compressed data ('" + keys["compression"] + "') are not read";
            return false;
        }
        if (block == 1) {
            std::string why;
            if (!Frame_Size_Check(d1, d2, 1, why)) {
                message = where + why;
                return false;
            }
            nx = d1;
            ny = d2;
            title = keys["title"];
            Parse_Real(keys["wavelength"], wavelength);
        } else if (d1 != nx || d2 != ny) {
            message = where + "an image of another size than the first";
            return false;
        }
        std::size_t need = static_cast<std::size_t>(d1) * static_cast<std::size_t>(d2) * static_cast<std::size_t>(t.size);
        long long declared = 0;
        if (keys.count("size")) {
            double s = 0;
            if (!Parse_Real(keys["size"], s) || s < static_cast<double>(need)) {
                message = where + "Size " + keys["size"] + " is smaller than the " + std::to_string(need) +
                          " bytes of the image";
                return false;
            }
            declared = static_cast<long long>(s);
        } else {
            declared = static_cast<long long>(need);
        }
        if (bytes.size() - data < need) {
            message = where + "the data are cut short: " + std::to_string(bytes.size() - data) + " of " +
                      std::to_string(need) + " bytes";
            return false;
        }
        std::string why;
        if (!Frame_Size_Check(nx, ny, block, why)) {
            message = where + why;
            return false;
        }
        bool swap = (order == "highbytefirst") == host_little() && t.size > 1;
        std::vector<float> img(static_cast<std::size_t>(d1) * static_cast<std::size_t>(d2));
        const auto* p = reinterpret_cast<const unsigned char*>(bytes.data() + data);
        for (std::size_t i = 0; i < img.size(); ++i) img[i] = decode(p + i * static_cast<std::size_t>(t.size), t, swap);
        images.push_back(std::move(img));
        pos = data + std::min<std::size_t>(static_cast<std::size_t>(declared), bytes.size() - data);
    }
    if (images.empty()) {
        message = name + ": the file holds no EDF block";
        return false;
    }
    Frames_From_Images(images, nx, ny, "EDF", name, frames);
    frames.title = title;
    frames.wavelength = wavelength;
    return true;
}

bool Read_EDF_Frame(const std::string& path, FRAME_SET_TYPE& frames, std::string& message) {
    std::ifstream f(path, std::ios::binary);
    if (!f) {
        message = "Error opening the file: " + path;
        return false;
    }
    f.seekg(0, std::ios::end);
    long long size = f.tellg();
    f.seekg(0);
    if (size < 0 || !Memory_Check(size, message)) {
        message = path + ": " + (size < 0 ? "the file cannot be read" : message);
        return false;
    }
    std::string bytes(static_cast<std::size_t>(size), '\0');
    f.read(bytes.data(), size);
    return Read_EDF_Bytes(bytes, path, frames, message);
}

}  // namespace hxl
