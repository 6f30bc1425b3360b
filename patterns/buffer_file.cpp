#include "patterns/buffer_file.h"

#include <filesystem>

#include "patterns/replace_file.h"
#include "support/fixed_text.h"
#include "support/text_unit.h"

namespace hxl {

std::string Buffer_Directory(const std::string& filename) {
    const std::size_t sep = filename.find_last_of('/');
    return sep == std::string::npos ? std::string("./") : filename.substr(0, sep + 1);
}

bool Read_Buffer_File(const std::string& filename, BUFFER_FILE_TYPE& b, std::string& message) {
    b = BUFFER_FILE_TYPE{};
    message.clear();
    const std::string name = Trim(filename);
    std::error_code ec;
    if (!std::filesystem::is_regular_file(name, ec)) {
        message = "File doesn't exist...";
        return false;
    }
    Text_Unit unit;
    if (!unit.Open(name)) {
        message = "Unable to read buffer file " + name;
        return false;
    }
    const std::string dir = Buffer_Directory(name);
    std::string line;
    bool head = true;
    while (unit.Read_Line(line)) {
        line = Cut(line, 256);
        if (head) {
            const std::string adj = Adjustl(line);
            if (Starts_With(adj, "!") || Starts_With(adj, "#")) {
                ++b.head_lines;
                continue;
            }
            if (Starts_With(line, "TITLE")) {
                b.titles.push_back(Cut(Trim(std::string_view(line).substr(5, 250)), 50));
                ++b.head_lines;
                continue;
            }
            if (Starts_With(line, "COMMENT")) {
                b.comments.push_back(Cut(Trim(std::string_view(line).substr(7, 248)), 50));
                ++b.head_lines;
                continue;
            }
            head = false;
        }
        const std::string entry = Trim(line);
        if (entry.empty()) break;
        b.names.push_back(entry.find('/') == std::string::npos ? dir + entry : entry);
    }
    return true;
}

bool Write_Buffer_File(const std::string& filename, const std::vector<std::string>& files, std::string& message) {
    message.clear();
    std::string out;
    for (const auto& f : files) out += Trim(f) + "\n";
    if (!Replace_File(Trim(filename), out)) {
        message = "Unable to write buffer file!";
        return false;
    }
    return true;
}

}  // namespace hxl
