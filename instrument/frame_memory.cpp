#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>

#include "instrument/frame_set.h"

namespace hxl {

namespace {

// Available memory in bytes: MemAvailable counts the reclaimable cache, which
// free pages alone would not; 0 when unknown.
long long available_memory() {
    std::ifstream f("/proc/meminfo");
    std::string key;
    long long kb = 0;
    std::string unit;
    while (f >> key >> kb) {
        std::getline(f, unit);
        if (key == "MemAvailable:") return kb * 1024;
    }
    long pages = ::sysconf(_SC_AVPHYS_PAGES), size = ::sysconf(_SC_PAGESIZE);
    return pages > 0 && size > 0 ? static_cast<long long>(pages) * size : 0;
}

}  // namespace

bool Frame_Size_Check(long long nx, long long ny, long long n_frames, std::string& message) {
    std::ostringstream s;
    if (nx < 1 || ny < 1 || n_frames < 1) {
        s << "The image has no pixels (" << nx << " x " << ny << ", " << n_frames << " frames)";
        message = s.str();
        return false;
    }
    if (nx * ny > kMaxFramePixels) {
        s << "The image of " << nx << " x " << ny << " pixels is larger than this program handles ("
          << kMaxFramePixels << " pixels)";
        message = s.str();
        return false;
    }
    return Memory_Check(nx * ny * n_frames * static_cast<long long>(sizeof(float)), message);
}

bool Memory_Check(long long bytes, std::string& message) {
    long long avail = available_memory();
    if (avail > 0 && bytes > avail) {
        std::ostringstream s;
        s << "The data need " << bytes / (1024 * 1024) << " MB but only " << avail / (1024 * 1024)
          << " MB of memory are free";
        message = s.str();
        return false;
    }
    return true;
}

void Allocate_Frames(FRAME_SET_TYPE& f, int nx, int ny, int n_frames) {
    f.nx = nx;
    f.ny = ny;
    f.n_frames = n_frames;
    f.counts.assign(static_cast<std::size_t>(nx) * static_cast<std::size_t>(ny) * static_cast<std::size_t>(n_frames), 0.0f);
    f.angle.assign(static_cast<std::size_t>(n_frames), 0.0f);
    f.monitor.assign(static_cast<std::size_t>(n_frames), 0.0f);
    f.time.assign(static_cast<std::size_t>(n_frames), 0.0f);
}

void Frames_From_Images(const std::vector<std::vector<float>>& images, int nx, int ny, const std::string& format,
                        const std::string& source, FRAME_SET_TYPE& f) {
    Allocate_Frames(f, nx, ny, static_cast<int>(images.size()));
    for (std::size_t k = 0; k < images.size(); ++k) {
        std::copy(images[k].begin(), images[k].end(), f.counts.begin() + static_cast<std::ptrdiff_t>(k * images[k].size()));
        f.angle[k] = static_cast<float>(k + 1);
        f.monitor[k] = 1;
    }
    f.format = format;
    f.source = source;
}

}  // namespace hxl
