#pragma once
// Work that a third-party library does on untrusted bytes, run in a child
// process: a crash, an endless loop or a runaway allocation there costs the
// one file, never the program and the patterns it holds.
#include <cstddef>
#include <functional>
#include <string>

namespace hxl {

enum class Isolated_End {
    Done,           // `output` holds what the work returned
    Crashed,        // the child died on a signal
    Out_Of_Memory,  // the work ran past its memory allowance
    Failed,         // the work threw, or its result was cut short
    Timed_Out,      // killed after `seconds`
    Not_Started,    // no process could be made
};

// Runs `work` in a forked child and returns its result in `output`. The child
// may use `extra_bytes` of address space beyond what the program already has
// (not enforced under the sanitizers, whose shadow memory it would break).
Isolated_End Run_Isolated(const std::function<std::string()>& work, std::string& output, double seconds,
                          std::size_t extra_bytes);

}  // namespace hxl
