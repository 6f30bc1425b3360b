#pragma once
// A directory for the files of one test, removed with it.
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace ztest {

class Scratch_Dir {
public:
    Scratch_Dir() {
        static int counter = 0;
        path_ = std::filesystem::temp_directory_path() /
                ("zendrite-instr-" + std::to_string(::getpid()) + "-" + std::to_string(++counter));
        std::filesystem::create_directories(path_);
    }
    ~Scratch_Dir() {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
    std::string Write(const std::string& name, const std::string& text) const {
        const auto p = path_ / name;
        std::filesystem::create_directories(p.parent_path());
        std::ofstream(p, std::ios::binary) << text;
        return p.string();
    }
    std::string Path() const { return path_.string() + "/"; }

private:
    std::filesystem::path path_;
};

}  // namespace ztest
