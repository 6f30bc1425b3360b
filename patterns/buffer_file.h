#pragma once
// Buffer files (".buf"): lists of pattern files to be loaded together. A head
// of "!"/"#" lines and "TITLE"/"COMMENT" lines, then one file name a line
// up to a blank line or the end of the file.
#include <string>
#include <vector>

namespace hxl {

struct BUFFER_FILE_TYPE {
    std::vector<std::string> titles;    // 50 characters each
    std::vector<std::string> comments;  // 50 characters each
    int head_lines = 0;
    std::vector<std::string> names;     // with directory: as written, or joined to the buffer's own
};

// The directory of a file name, with its trailing separator; "./" when none.
std::string Buffer_Directory(const std::string& filename);

// Reads the list; false with "File doesn't exist..." or "Unable to read buffer file ".
bool Read_Buffer_File(const std::string& filename, BUFFER_FILE_TYPE& buffer, std::string& message);

// Writes one line per file (directory then name); false with "Unable to write buffer file!".
bool Write_Buffer_File(const std::string& filename, const std::vector<std::string>& files, std::string& message);

}  // namespace hxl
