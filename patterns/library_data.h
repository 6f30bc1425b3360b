#pragma once
// What the format library read from a file, in our own terms: it is read in
// a child process and comes back through a pipe as bytes.
#include <string>
#include <utility>
#include <vector>

namespace hxl {

using Library_Meta = std::vector<std::pair<std::string, std::string>>;

struct Library_Block {
    int index = 0;  // the block's place in the file, from 0
    std::string name, x_name;
    double x_step = 0.0;  // nonzero when the library holds X as start and step
    std::string sigma_name;  // empty when the block has no uncertainty column
    std::vector<double> x, y, sigma;
    Library_Meta meta;
};

struct Library_Data {
    std::string format;  // the library's name of it ("bruker_raw", ...)
    int block_count = 0;  // in the file, read or not
    int left_out = 0;     // blocks of fewer than two points or past the limit
    Library_Meta meta;    // the data set's own
    std::vector<Library_Block> blocks;
};

std::string Encode_Library_Data(const Library_Data& data);

// False when the bytes are not a whole encoding.
bool Decode_Library_Data(const std::string& bytes, Library_Data& data);

}  // namespace hxl
