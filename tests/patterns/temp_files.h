#pragma once
// Small files written for one test and removed with it.
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace ztest {

class Temp_Dir {
public:
    Temp_Dir() {
        static int counter = 0;
        path_ = std::filesystem::temp_directory_path() /
                ("zendrite-test-" + std::to_string(::getpid()) + "-" + std::to_string(++counter));
        std::filesystem::create_directories(path_);
    }
    ~Temp_Dir() {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
    std::string Write(const std::string& name, const std::string& text) const {
        const auto p = path_ / name;
        std::ofstream(p, std::ios::binary) << text;
        return p.string();
    }
    std::string Path() const { return path_.string(); }

private:
    std::filesystem::path path_;
};

// "n" counts from `first`, one per line, ten per line when `per_line` is 10.
inline std::string Counts(int n, int first = 1, int per_line = 10) {
    std::string s;
    for (int i = 0; i < n; ++i) s += std::to_string(first + i) + ((i + 1) % per_line == 0 ? "\n" : " ");
    return s + "\n";
}

}  // namespace ztest
