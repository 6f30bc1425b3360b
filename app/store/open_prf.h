#pragma once
// Bringing a Rietveld profile file into the store as its one profile of type
// "PRF" (or "MONO"), and reloading it when a refinement rewrites the file.
#include <functional>
#include <string>

namespace zendrite {

struct PRF_OPEN_RESULT {
    bool ok = false;
    std::string message;  // the reader's text on failure, to be shown
    int slot = 0;         // the slot that holds the profile file
    bool replaced = false;  // an already loaded profile file was replaced in place
    std::string prf_path;   // for the reload check
    int prf_stamp = -1;
};

// Size and time of day of a file's last change: hour*10000 + minute*100 + second.
struct PRF_FILE_STAMP {
    long long size = -1;  // -1 when there is no such file
    int stamp = -1;
    long long mtime_ns = 0;  // the full modification time, to see a file still being written
};
PRF_FILE_STAMP Prf_File_Stamp(const std::string& path);

// Reads `name` (one file; a selector result of several names is refused)
// and enters it: the slot of the loaded profile file when there is one, else
// the next free slot. On failure the store is as it was. The caller shows the
// message, keeps prf_path and prf_stamp of a success and runs Plot_ReMake.
PRF_OPEN_RESULT Open_Prf_File(const std::string& name);

enum class PRF_RELOAD_STATUS { Unchanged, Reloaded, Failed };
struct PRF_RELOAD_RESULT {
    PRF_RELOAD_STATUS status = PRF_RELOAD_STATUS::Unchanged;
    std::string message;  // on Failed, to be shown once
};

// The main loop's check after each root event: when a profile file is loaded
// and the file at `prf_path` has a time of day other than `prf_stamp`, it is
// read again into the same slot. A read that fails, or a file whose size or
// time changes while it is read, is retried a few times with `wait` between
// tries; the store keeps the old profile until a whole file has been read.
// A file that still fails is reported once and not tried again until it
// changes. On Reloaded `prf_stamp` is updated and the caller redraws.
PRF_RELOAD_RESULT Reload_Prf_If_Changed(const std::string& prf_path, int& prf_stamp);

// Tries of the reload and the pause between them; tests replace the pause.
inline constexpr int kPrfReloadTries = 5;
std::function<void()>& Prf_Reload_Wait();

}  // namespace zendrite
