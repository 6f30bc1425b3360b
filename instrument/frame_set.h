#pragma once
// Frames of an area detector or of a bank of position-sensitive tubes: one
// image per scan step, with the step's angle, monitor and time.
#include <cstddef>
#include <string>
#include <vector>

namespace hxl {

struct FRAME_SET_TYPE {
    std::string source;      // file read
    std::string format;      // "NUMOR", "EDF", "TIFF", "CBF", "HDF5"
    std::string title;
    std::string instrument;  // 12
    std::string header;
    std::string scan_var;    // what `angle` holds: "2theta", "omega" or blank
    int numor = 0;
    int nx = 0;              // columns: tubes of a numor, fast pixels of an image
    int ny = 0;              // rows: pixels along a tube
    int n_frames = 0;
    float wavelength = 0;
    std::vector<float> counts;  // frame by frame, row by row
    std::vector<float> angle, monitor, time;  // one per frame
};

// Counts of pixel (i, j) of frame k, all from 1: i the column, j the row.
inline float Frame_Value(const FRAME_SET_TYPE& f, int k, int i, int j) {
    return f.counts[(static_cast<std::size_t>(k - 1) * static_cast<std::size_t>(f.ny) + static_cast<std::size_t>(j - 1)) *
                        static_cast<std::size_t>(f.nx) +
                    static_cast<std::size_t>(i - 1)];
}
inline const float* Frame_Data(const FRAME_SET_TYPE& f, int k) {
    return f.counts.data() + static_cast<std::size_t>(k - 1) * static_cast<std::size_t>(f.nx) * static_cast<std::size_t>(f.ny);
}

// Frames larger than this many pixels in one image are refused whatever the memory.
inline constexpr long long kMaxFramePixels = 16384LL * 16384LL;

// Checks the size of `n_frames` frames of nx by ny before they are allocated:
// false with a message when a side is below 1, the image is too large, or the
// counts would not fit in the free memory.
bool Frame_Size_Check(long long nx, long long ny, long long n_frames, std::string& message);

// False with a message when `bytes` exceed the free memory.
bool Memory_Check(long long bytes, std::string& message);

// Sizes the record for its frames (counts zeroed, one angle, monitor and time a frame).
void Allocate_Frames(FRAME_SET_TYPE& f, int nx, int ny, int n_frames);

// The record from images of nx * ny counts each, numbered 1, 2, ... as their
// angle (an image file holds no scan), monitor 1.
void Frames_From_Images(const std::vector<std::vector<float>>& images, int nx, int ny, const std::string& format,
                        const std::string& source, FRAME_SET_TYPE& f);

// Reads frames from a file; the format from its contents and extension.
// `dataset` names the data set of an HDF5 file. False with a message.
bool Read_Frames(const std::string& path, FRAME_SET_TYPE& frames, std::string& message,
                 const std::string& dataset = "");

}  // namespace hxl
