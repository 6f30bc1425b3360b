#include "support/folder_files.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "support/natural_order.h"

namespace hxl {

namespace fs = std::filesystem;

bool Folder_Files(const std::string& dir, std::vector<std::string>& files, std::string& error) {
    files.clear();
    error.clear();
    std::error_code ec;
    fs::directory_iterator it(dir, ec);
    if (ec) {
        error = "Unable to read the folder " + dir + ": " + ec.message();
        return false;
    }
    std::vector<std::pair<std::string, std::string>> found;  // name, full name
    for (; it != fs::directory_iterator(); it.increment(ec)) {
        if (ec) break;
        const std::string name = it->path().filename().string();
        if (name.empty() || name.front() == '.') continue;
        std::error_code ek;
        if (!it->is_regular_file(ek) || ek) continue;  // follows links; sockets, devices, folders left out
        found.emplace_back(name, it->path().string());
    }
    if (ec) {
        error = "Unable to read the folder " + dir + ": " + ec.message();
        return false;
    }
    std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return Natural_Less(a.first, b.first); });
    files.reserve(found.size());
    for (auto& f : found) files.push_back(std::move(f.second));
    return true;
}

bool Is_Folder(const std::string& path) {
    std::error_code ec;
    return !path.empty() && fs::is_directory(path, ec);
}

}  // namespace hxl
