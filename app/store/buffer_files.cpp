#include "app/store/buffer_files.h"

#include "app/store/add_profile.h"
#include "app/store/zendrite_param_global.h"
#include "patterns/buffer_file.h"
#include "support/fixed_text.h"

namespace zendrite {

bool Save_Buffer(const std::string& filename, std::string& message) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    std::vector<std::string> files;
    for (int i = 1; i <= g.nperfiles; ++i) {
        const auto& info = g.info[static_cast<std::size_t>(i)];
        if (hxl::Trim(info.prf_type) == "DATA") files.push_back(hxl::Trim(info.prf_dir) + hxl::Trim(info.prf_name));
    }
    return hxl::Write_Buffer_File(filename, files, message);
}

BUFFER_LOAD_RESULT Open_Buffer(const std::string& filename, int row) {
    BUFFER_LOAD_RESULT r;
    hxl::BUFFER_FILE_TYPE buffer;
    std::string message;
    if (!hxl::Read_Buffer_File(filename, buffer, message)) {
        r.messages.push_back(message);
        return r;
    }
    r.opened = true;
    Reset_Store();
    if (row < 1 || row > 15) return r;
    for (const auto& name : buffer.names) {
        if (zendrite_param_global().nperfiles + 1 > kMaxProfiles) {
            r.messages.push_back(kMsgMaxProfiles);
            break;
        }
        LOAD_RESULT one = Load_Data_File(name, row);
        if (one.slots.empty()) r.messages.push_back("ERROR Opening file: " + name);
        for (auto& m : one.messages) r.messages.push_back(m);
        r.slots.insert(r.slots.end(), one.slots.begin(), one.slots.end());
        if (one.limit_reached) break;
    }
    Add_Recent_File(filename);
    return r;
}

}  // namespace zendrite
