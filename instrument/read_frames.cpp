#include <fstream>

#include "instrument/frame_readers.h"
#include "instrument/frame_set.h"
#include "instrument/nrf_frames.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {
std::string extension(const std::string& path) {
    std::size_t dot = path.find_last_of('.'), slash = path.find_last_of('/');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return "";
    return Lower(path.substr(dot + 1));
}
}  // namespace

bool Read_Frames(const std::string& path, FRAME_SET_TYPE& frames, std::string& message, const std::string& dataset) {
    frames = FRAME_SET_TYPE{};
    std::ifstream probe(path, std::ios::binary);
    if (!probe) {
        message = "Error opening the file: " + path;
        return false;
    }
    char head[4] = {};
    probe.read(head, 4);
    probe.close();
    std::string ext = extension(path);
    if (ext == "edf" || head[0] == '{') return Read_EDF_Frame(path, frames, message);
    if (ext == "tif" || ext == "tiff" || (head[0] == 'I' && head[1] == 'I') || (head[0] == 'M' && head[1] == 'M'))
        return Read_TIFF_Frame(path, frames, message);
    if (ext == "cbf") return Read_CBF_Frame(path, frames, message);
    if (ext == "h5" || ext == "hdf5" || ext == "nxs" || ext == "hdf" || (head[1] == 'H' && head[2] == 'D' && head[3] == 'F'))
        return Read_HDF5_Frames(path, dataset, frames, message);
    if (Looks_Like_Numor(path)) return Read_Nrf_Frames(path, frames, message);
    message = "The file " + path + " is no image of a known kind (numor, EDF, TIFF, CBF, HDF5)";
    return false;
}

}  // namespace hxl
