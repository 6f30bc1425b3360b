#include "app/store/open_prf.h"

#include <chrono>
#include <ctime>
#include <sys/stat.h>
#include <thread>

#include "app/store/add_profile.h"
#include "app/store/zendrite_param_global.h"
#include "prf/read_prf.h"
#include "support/fixed_text.h"

namespace zendrite {
namespace {

// Puts a profile file that was read whole into the store. False (store as it
// was) when the X space check refuses it.
bool enter(const std::string& name, DIFFRACTION_PATTERN_TYPE& pattern, PRF_INFO_ADD_TYPE& info,
           PRF_OPEN_RESULT& result) {
    ZENDRITE_STORE& g = zendrite_param_global();
    const bool replace = g.prf_loaded && g.ProfilePRFactive >= 1 && g.ProfilePRFactive <= g.nperfiles;
    if (!replace && g.nperfiles + 1 > kMaxProfiles) {
        result.message = kMsgMaxProfiles;
        return false;
    }
    const int slot = replace ? g.ProfilePRFactive : g.nperfiles + 1;
    const auto k = static_cast<std::size_t>(slot);
    DIFFRACTION_PATTERN_TYPE old_pattern;
    PRF_INFO_ADD_TYPE old_info;
    if (replace) {
        old_pattern = std::move(g.pattern[k]);
        old_info = std::move(g.info[k]);
    } else {
        g.nperfiles = slot;
    }
    g.pattern[k] = std::move(pattern);
    g.info[k] = std::move(info);
    std::string why;
    if (!Identify_X_Space(slot, why)) {
        if (replace) {
            g.pattern[k] = std::move(old_pattern);
            g.info[k] = std::move(old_info);
        } else {
            Clear_Pattern_Record(g.pattern[k]);
            Clear_Prf_Info(g.info[k]);
            --g.nperfiles;
        }
        result.message = why;
        return false;
    }
    if (!replace) {
        g.show_profile[k] = true;
        g.plot_calc[k] = false;  // the layers of the profile file draw the calculated curve
        g.plot_bgr[k] = false;
    }
    g.ProfilePRFactive = slot;
    g.prf_loaded = true;
    Add_Recent_File(name);
    result.ok = true;
    result.slot = slot;
    result.replaced = replace;
    return true;
}

bool same_file_state(const PRF_FILE_STAMP& a, const PRF_FILE_STAMP& b) {
    return a.size == b.size && a.mtime_ns == b.mtime_ns;
}

// The last changed file that could not be read, not to be retried until it changes again.
struct FAILED_FILE {
    std::string path;
    PRF_FILE_STAMP state;
};
FAILED_FILE& failed_file() {
    static FAILED_FILE f;
    return f;
}

}  // namespace

PRF_FILE_STAMP Prf_File_Stamp(const std::string& path) {
    PRF_FILE_STAMP s;
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return s;
    s.size = static_cast<long long>(st.st_size);
    s.mtime_ns = static_cast<long long>(st.st_mtim.tv_sec) * 1000000000LL + st.st_mtim.tv_nsec;
    std::tm tm{};
    const std::time_t t = st.st_mtim.tv_sec;
    if (::localtime_r(&t, &tm)) s.stamp = tm.tm_hour * 10000 + tm.tm_min * 100 + tm.tm_sec;
    return s;
}

PRF_OPEN_RESULT Open_Prf_File(const std::string& name) {
    PRF_OPEN_RESULT result;
    if (name.find('\0') != std::string::npos) {  // a selector result with a second name
        result.message = "Trying to select more than one file!";
        return result;
    }
    const std::string file = hxl::Trim(name);
    const PRF_FILE_STAMP before = Prf_File_Stamp(file);
    DIFFRACTION_PATTERN_TYPE pattern;
    PRF_INFO_ADD_TYPE info;
    bool error = true;
    hxl::Read_Prf_File(file, info, pattern, error, result.message);
    if (error) return result;
    if (!enter(file, pattern, info, result)) return result;
    result.message.clear();
    result.prf_path = file;
    result.prf_stamp = before.stamp;
    return result;
}

std::function<void()>& Prf_Reload_Wait() {
    static std::function<void()> wait = [] { std::this_thread::sleep_for(std::chrono::milliseconds(300)); };
    return wait;
}

PRF_RELOAD_RESULT Reload_Prf_If_Changed(const std::string& prf_path, int& prf_stamp) {
    PRF_RELOAD_RESULT result;
    ZENDRITE_STORE& g = zendrite_param_global();
    if (!g.prf_loaded || hxl::Is_Blank(prf_path)) return result;
    PRF_FILE_STAMP now = Prf_File_Stamp(prf_path);
    if (now.size < 0 || now.stamp == prf_stamp) return result;  // only the time of day counts, deliberately
    FAILED_FILE& failed = failed_file();
    if (failed.path == prf_path && same_file_state(failed.state, now)) return result;

    std::string message;
    for (int attempt = 1; attempt <= kPrfReloadTries; ++attempt) {
        if (attempt > 1) {
            if (Prf_Reload_Wait()) Prf_Reload_Wait()();
            now = Prf_File_Stamp(prf_path);
        }
        DIFFRACTION_PATTERN_TYPE pattern;
        PRF_INFO_ADD_TYPE info;
        bool error = true;
        hxl::Read_Prf_File(prf_path, info, pattern, error, message);
        const PRF_FILE_STAMP after = Prf_File_Stamp(prf_path);
        if (!same_file_state(now, after)) {  // still being written: what was read may be a part
            if (message.empty() || !error) message = "The file " + prf_path + " is still being written";
            error = true;
        }
        if (error) continue;
        PRF_OPEN_RESULT entered;
        if (!enter(prf_path, pattern, info, entered)) {
            message = entered.message;
            break;
        }
        prf_stamp = after.stamp;
        failed = FAILED_FILE{};
        result.status = PRF_RELOAD_STATUS::Reloaded;
        return result;
    }
    failed.path = prf_path;
    failed.state = Prf_File_Stamp(prf_path);
    result.status = PRF_RELOAD_STATUS::Failed;
    result.message = message;
    return result;
}

}  // namespace zendrite
