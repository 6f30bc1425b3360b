#include "extprog/run_command.h"

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <thread>

extern char** environ;

namespace hxl {

namespace {

bool executable(const std::string& file) {
    struct stat st {};
    return !file.empty() && ::stat(file.c_str(), &st) == 0 && S_ISREG(st.st_mode) && ::access(file.c_str(), X_OK) == 0;
}

std::string in_folder(const std::string& folder, const std::string& name) {
    if (folder.empty()) return "./" + name;  // an empty PATH entry is the working folder
    return folder.back() == '/' ? folder + name : folder + "/" + name;
}

}  // namespace

std::string Find_Program(const std::string& program, const std::string& program_dir, const std::string& path,
                         std::string& looked) {
    looked.clear();
    if (program.empty()) {
        looked = "no program named";
        return "";
    }
    if (program.find('/') != std::string::npos) {
        if (executable(program)) return program;
        looked = program;
        return "";
    }
    if (!program_dir.empty()) {
        const std::string f = in_folder(program_dir, program);
        if (executable(f)) return f;
        looked = "the program directory " + program_dir;
    } else {
        looked = "no program directory set";
    }
    std::size_t b = 0;
    for (;;) {
        const std::size_t e = path.find(':', b);
        const std::string f = in_folder(path.substr(b, e == std::string::npos ? std::string::npos : e - b), program);
        if (executable(f)) return f;
        if (e == std::string::npos) break;
        b = e + 1;
    }
    looked += "; PATH " + (path.empty() ? std::string("(empty)") : path);
    return "";
}

std::string Not_Found_Message(const std::string& program, const std::string& looked) {
    return "The program \"" + program + "\" was not found.\rLooked in: " + looked;
}

bool Run_Command(const std::vector<std::string>& argv, bool wait, const std::string& program_dir, int& status,
                 std::string& message) {
    status = -1;
    message.clear();
    if (argv.empty()) {
        message = "No program to run";
        return false;
    }
    const char* env_path = std::getenv("PATH");
    std::string looked;
    const std::string full = Find_Program(argv[0], program_dir, env_path ? env_path : "", looked);
    if (full.empty()) {
        message = Not_Found_Message(argv[0], looked);
        return false;
    }
    std::vector<char*> args;
    for (const std::string& a : argv) args.push_back(const_cast<char*>(a.c_str()));
    args.push_back(nullptr);
    pid_t pid = 0;
    const int rc = ::posix_spawn(&pid, full.c_str(), nullptr, nullptr, args.data(), environ);
    if (rc != 0) {
        message = "Unable to start " + full + ": " + std::strerror(rc);
        return false;
    }
    if (!wait) {
        // reaped when it ends, so that a finished program leaves no zombie
        std::thread([pid] {
            int s = 0;
            while (::waitpid(pid, &s, 0) < 0 && errno == EINTR) {
            }
        }).detach();
        status = 0;
        return true;
    }
    int s = 0;
    while (::waitpid(pid, &s, 0) < 0) {
        if (errno != EINTR) {
            message = "Lost the program " + full;
            return false;
        }
    }
    status = WIFEXITED(s) ? WEXITSTATUS(s) : -1;
    return true;
}

}  // namespace hxl
