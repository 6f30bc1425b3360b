#include "extprog/run_command.h"

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
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

bool Start_Program(const std::vector<std::string>& argv, const std::string& program_dir, RUNNING_PROGRAM& program,
                   std::string& message, const std::string& work_dir) {
    program = RUNNING_PROGRAM{};
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
    // A program named relative to the working folder keeps its meaning in `work_dir`.
    std::string path = full;
    if (!work_dir.empty() && path[0] != '/') {
        char here[4096];
        if (::getcwd(here, sizeof here)) path = std::string(here) + "/" + path;
    }
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    if (!work_dir.empty()) ::posix_spawn_file_actions_addchdir_np(&actions, work_dir.c_str());
    // Its own process group, so that stopping it stops what it started.
    posix_spawnattr_t attr;
    ::posix_spawnattr_init(&attr);
    ::posix_spawnattr_setflags(&attr, POSIX_SPAWN_SETPGROUP);
    ::posix_spawnattr_setpgroup(&attr, 0);
    pid_t pid = 0;
    const int rc = ::posix_spawn(&pid, path.c_str(), &actions, &attr, args.data(), environ);
    ::posix_spawnattr_destroy(&attr);
    ::posix_spawn_file_actions_destroy(&actions);
    if (rc != 0) {
        message = "Unable to start " + full + (work_dir.empty() ? "" : " in " + work_dir) + ": " + std::strerror(rc);
        return false;
    }
    program.pid = pid;
    program.full_name = full;
    return true;
}

bool Program_Ended(RUNNING_PROGRAM& program, int& status) {
    if (program.pid <= 0) return true;
    int s = 0;
    pid_t r = 0;
    do {
        r = ::waitpid(program.pid, &s, WNOHANG);
    } while (r < 0 && errno == EINTR);
    if (r == 0) return false;
    program.pid = 0;
    status = r > 0 && WIFEXITED(s) ? WEXITSTATUS(s) : -1;
    return true;
}

void Stop_Program(RUNNING_PROGRAM& program, double grace_seconds) {
    if (program.pid <= 0) return;
    int status = 0;
    const pid_t group = program.pid;
    ::kill(-group, SIGTERM);
    const auto until = std::chrono::steady_clock::now() + std::chrono::duration<double>(grace_seconds);
    while (!Program_Ended(program, status)) {
        if (std::chrono::steady_clock::now() > until) {
            ::kill(-group, SIGKILL);
            while (::waitpid(program.pid, &status, 0) < 0 && errno == EINTR) {
            }
            program.pid = 0;
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ::kill(-group, SIGKILL);  // what it started and left behind
}

bool Run_Command(const std::vector<std::string>& argv, bool wait, const std::string& program_dir, int& status,
                 std::string& message) {
    status = -1;
    RUNNING_PROGRAM program;
    if (!Start_Program(argv, program_dir, program, message)) return false;
    const pid_t pid = program.pid;
    const std::string full = program.full_name;
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
