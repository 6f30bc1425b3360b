#include <hdf5.h>

#include "instrument/frame_readers.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {
struct H5_ID {
    hid_t id;
    herr_t (*close)(hid_t);
    ~H5_ID() {
        if (id >= 0) close(id);
    }
};
}  // namespace

bool Read_HDF5_Frames(const std::string& path, const std::string& dataset, FRAME_SET_TYPE& frames,
                      std::string& message) {
    frames = FRAME_SET_TYPE{};
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);  // the library would print its error stack
    if (Is_Blank(dataset)) {
        message = "An HDF5 file needs the path of its data set (for example /entry/data/data)";
        return false;
    }
    if (H5Fis_hdf5(path.c_str()) <= 0) {
        message = "The file " + path + " is not an HDF5 file";
        return false;
    }
    H5_ID file{H5Fopen(path.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT), H5Fclose};
    if (file.id < 0) {
        message = "The HDF5 file " + path + " cannot be opened";
        return false;
    }
    if (H5Lexists(file.id, dataset.c_str(), H5P_DEFAULT) <= 0) {
        message = "The HDF5 file " + path + " has no data set " + dataset;
        return false;
    }
    H5_ID set{H5Dopen2(file.id, dataset.c_str(), H5P_DEFAULT), H5Dclose};
    if (set.id < 0) {
        message = "The data set " + dataset + " of " + path + " cannot be opened";
        return false;
    }
    H5_ID space{H5Dget_space(set.id), H5Sclose};
    H5_ID type{H5Dget_type(set.id), H5Tclose};
    H5T_class_t cls = H5Tget_class(type.id);
    if (cls != H5T_INTEGER && cls != H5T_FLOAT) {
        message = "The data set " + dataset + " holds no numbers";
        return false;
    }
    int rank = H5Sget_simple_extent_ndims(space.id);
    if (rank != 2 && rank != 3) {
        message = "The data set " + dataset + " has " + std::to_string(rank) +
                  " dimensions: frames need 2 (rows, columns) or 3 (frames, rows, columns)";
        return false;
    }
    hsize_t dims[3] = {1, 1, 1};
    H5Sget_simple_extent_dims(space.id, rank == 3 ? dims : dims + 1, nullptr);
    if (!Frame_Size_Check(static_cast<long long>(dims[2]), static_cast<long long>(dims[1]),
                          static_cast<long long>(dims[0]), message))
        return false;
    Allocate_Frames(frames, static_cast<int>(dims[2]), static_cast<int>(dims[1]), static_cast<int>(dims[0]));
    if (H5Dread(set.id, H5T_NATIVE_FLOAT, H5S_ALL, H5S_ALL, H5P_DEFAULT, frames.counts.data()) < 0) {
        frames = FRAME_SET_TYPE{};
        message = "The data set " + dataset + " of " + path + " cannot be read";
        return false;
    }
    for (int k = 0; k < frames.n_frames; ++k) {
        frames.angle[static_cast<std::size_t>(k)] = static_cast<float>(k + 1);
        frames.monitor[static_cast<std::size_t>(k)] = 1;
    }
    frames.format = "HDF5";
    frames.source = path;
    return true;
}

}  // namespace hxl
