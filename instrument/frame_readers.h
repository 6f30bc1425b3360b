#pragma once
// Readers of the image files of area detectors. Each fills the frame record
// or leaves it empty and returns false with the reason.
#include <string>

#include "instrument/frame_set.h"

namespace hxl {

// ESRF data format: a text head in braces, then raw data; several blocks are frames.
bool Read_EDF_Frame(const std::string& path, FRAME_SET_TYPE& frames, std::string& message);
bool Read_EDF_Bytes(const std::string& bytes, const std::string& name, FRAME_SET_TYPE& frames, std::string& message);
// One grey channel of 8, 16 or 32 bits in strips; each directory is a frame.
bool Read_TIFF_Frame(const std::string& path, FRAME_SET_TYPE& frames, std::string& message);
// The integer array of the array_data category.
bool Read_CBF_Frame(const std::string& path, FRAME_SET_TYPE& frames, std::string& message);
// A data set of two (one frame) or three (frames, rows, columns) dimensions.
bool Read_HDF5_Frames(const std::string& path, const std::string& dataset, FRAME_SET_TYPE& frames,
                      std::string& message);

}  // namespace hxl
