#include "support/isolated_call.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <new>

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ZD_SHADOW_MEMORY 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define ZD_SHADOW_MEMORY 1
#endif
#endif

namespace hxl {
namespace {

constexpr int kExitMemory = 2;
constexpr int kExitThrew = 3;

bool write_all(int fd, const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t n = ::write(fd, data, size);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        data += n;
        size -= static_cast<std::size_t>(n);
    }
    return true;
}

void limit_memory(std::size_t extra_bytes) {
#ifndef ZD_SHADOW_MEMORY
    long pages = 0;
    if (FILE* f = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(f, "%ld", &pages) != 1) pages = 0;
        std::fclose(f);
    }
    if (pages <= 0) return;
    const rlim_t limit = static_cast<rlim_t>(pages) * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + extra_bytes;
    const rlimit r{limit, limit};
    ::setrlimit(RLIMIT_AS, &r);
#else
    (void)extra_bytes;
#endif
}

[[noreturn]] void run_child(const std::function<std::string()>& work, int out_fd, std::size_t extra_bytes) {
    // The default actions, so that a crash ends this child only and no crash
    // handler of the parent (a debugger's, a fuzzer's) reports it as its own.
    for (int sig : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTRAP, SIGSYS, SIGPIPE}) std::signal(sig, SIG_DFL);
    // The library's own warnings are not the user's business.
    const int nul = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nul >= 0) ::dup2(nul, STDERR_FILENO);
    limit_memory(extra_bytes);
    int status = 0;
    try {
        const std::string out = work();
        if (!write_all(out_fd, out.data(), out.size())) status = kExitThrew;
    } catch (const std::bad_alloc&) {
        status = kExitMemory;
    } catch (...) {
        status = kExitThrew;
    }
    // No exit handlers: they belong to the parent.
    ::_exit(status);
}

}  // namespace

Isolated_End Run_Isolated(const std::function<std::string()>& work, std::string& output, double seconds,
                          std::size_t extra_bytes) {
    output.clear();
    int fds[2];
    if (::pipe2(fds, O_CLOEXEC) != 0) return Isolated_End::Not_Started;
    const pid_t pid = ::fork();
    if (pid < 0) {
        ::close(fds[0]);
        ::close(fds[1]);
        return Isolated_End::Not_Started;
    }
    if (pid == 0) {
        ::close(fds[0]);
        run_child(work, fds[1], extra_bytes);
    }
    ::close(fds[1]);

    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    bool timed_out = false;
    char buffer[1 << 16];
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) {
            timed_out = true;
            break;
        }
        pollfd p{fds[0], POLLIN, 0};
        const int ready = ::poll(&p, 1, static_cast<int>(left > 60000 ? 60000 : left));
        if (ready < 0 && errno == EINTR) continue;
        if (ready < 0) break;
        if (ready == 0) continue;
        const ssize_t n = ::read(fds[0], buffer, sizeof buffer);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        output.append(buffer, static_cast<std::size_t>(n));
    }
    ::close(fds[0]);
    if (timed_out) ::kill(pid, SIGKILL);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (timed_out) {
        output.clear();
        return Isolated_End::Timed_Out;
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return Isolated_End::Done;
    output.clear();
    if (WIFSIGNALED(status)) return Isolated_End::Crashed;
    return WEXITSTATUS(status) == kExitMemory ? Isolated_End::Out_Of_Memory : Isolated_End::Failed;
}

}  // namespace hxl
