#include "test_files.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace zdtest {

std::string Scratch_Path(const std::string& name) {
    static const std::filesystem::path dir = [] {
        auto d = std::filesystem::temp_directory_path() / ("zd_readers_" + std::to_string(::getpid()));
        std::filesystem::create_directories(d);
        return d;
    }();
    return (dir / name).string();
}

std::string Scratch_File(const std::string& name, const std::string& text) {
    const std::string path = Scratch_Path(name);
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

std::string Sample(const std::string& name) { return std::string(ZD_TEST_DATA) + "/patterns/" + name; }

std::string Slurp(const std::string& path) {
    std::ifstream f(path, std::ios::binary);
    std::stringstream s;
    s << f.rdbuf();
    return s.str();
}

}  // namespace zdtest
