// Image files of area detectors: EDF by hand-written files, TIFF, CBF and
// HDF5 by files the libraries write, and the bad files of each.
#include <cbflib/cbf.h>
#include <gtest/gtest.h>
#include <hdf5.h>
#include <tiffio.h>

#include <cstdio>
#include <cstring>
#include <vector>

#include "instrument/frame_readers.h"
#include "temp_dir.h"

using namespace hxl;
using namespace ztest;

namespace {

std::string edf_head(const std::string& keys) {
    std::string h = "{\n" + keys;
    h += std::string(512 - (h.size() + 2) % 512, ' ') + "}\n";
    return h;
}

template <class T>
std::string raw(const std::vector<T>& v, bool big_endian = false) {
    std::string s(v.size() * sizeof(T), '\0');
    std::memcpy(s.data(), v.data(), s.size());
    if (big_endian)
        for (std::size_t i = 0; i < s.size(); i += sizeof(T))
            for (std::size_t a = 0, b = sizeof(T) - 1; a < b; ++a, --b) std::swap(s[i + a], s[i + b]);
    return s;
}

bool write_tiff(const std::string& path, int w, int h, int bits, int format, int pages, int spp = 1, bool tiled = false) {
    TIFF* t = TIFFOpen(path.c_str(), "w");
    if (!t) return false;
    for (int page = 0; page < pages; ++page) {
        TIFFSetField(t, TIFFTAG_IMAGEWIDTH, w);
        TIFFSetField(t, TIFFTAG_IMAGELENGTH, h);
        TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, bits);
        TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, spp);
        TIFFSetField(t, TIFFTAG_SAMPLEFORMAT, format);
        TIFFSetField(t, TIFFTAG_PHOTOMETRIC, spp == 3 ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK);
        TIFFSetField(t, TIFFTAG_PLANARCONFIG, spp == 3 ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
        std::vector<unsigned char> row(static_cast<std::size_t>(w) * static_cast<std::size_t>(bits / 8));
        if (tiled) {
            TIFFSetField(t, TIFFTAG_TILEWIDTH, 16);
            TIFFSetField(t, TIFFTAG_TILELENGTH, 16);
            std::vector<unsigned char> tile(16 * 16 * static_cast<std::size_t>(bits / 8));
            TIFFWriteTile(t, tile.data(), 0, 0, 0, 0);
        } else {
            for (int s = 0; s < spp; ++s)
                for (int r = 0; r < h; ++r) {
                    for (int c = 0; c < w; ++c) {
                        double v = 7 * r + c + 100 * page - (format == SAMPLEFORMAT_INT ? 20 : 0) + (format == SAMPLEFORMAT_IEEEFP ? 0.5 : 0);
                        unsigned char* p = row.data() + static_cast<std::size_t>(c) * static_cast<std::size_t>(bits / 8);
                        if (format == SAMPLEFORMAT_IEEEFP && bits == 32) { float f = static_cast<float>(v); std::memcpy(p, &f, 4); }
                        else if (format == SAMPLEFORMAT_IEEEFP) std::memcpy(p, &v, 8);
                        else if (bits == 8) *p = static_cast<unsigned char>(static_cast<int>(v));
                        else if (bits == 16) { std::int16_t x = static_cast<std::int16_t>(v); std::memcpy(p, &x, 2); }
                        else { std::int32_t x = static_cast<std::int32_t>(v) * 1000; std::memcpy(p, &x, 4); }
                    }
                    TIFFWriteScanline(t, row.data(), static_cast<std::uint32_t>(r), static_cast<std::uint16_t>(s));
                }
        }
        TIFFWriteDirectory(t);
    }
    TIFFClose(t);
    return true;
}

}  // namespace

TEST(EdfFrames, HandWrittenFilesOfEachTypeAndOrder) {
    Scratch_Dir d;
    FRAME_SET_TYPE f;
    std::string msg;
    // Two frames of 3 x 2 unsigned shorts, high byte first, padding between blocks.
    std::string keys = "Dim_1 = 3 ;\nDim_2 = 2 ;\nDataType = UnsignedShort ;\nByteOrder = HighByteFirst ;\nSize = 12 ;\n";
    std::string two = edf_head(keys + "Title = two frames ;\n") + raw<std::uint16_t>({1, 2, 3, 400, 500, 65535}, true) +
                      "\n" + edf_head(keys) + raw<std::uint16_t>({7, 8, 9, 10, 11, 12}, true);
    ASSERT_TRUE(Read_Frames(d.Write("two.edf", two), f, msg)) << msg;
    ASSERT_EQ(f.nx, 3);
    ASSERT_EQ(f.ny, 2);
    ASSERT_EQ(f.n_frames, 2);
    EXPECT_EQ(f.title, "two frames");
    EXPECT_EQ(Frame_Value(f, 1, 1, 2), 400.0f);
    EXPECT_EQ(Frame_Value(f, 1, 3, 2), 65535.0f);
    EXPECT_EQ(Frame_Value(f, 2, 2, 1), 8.0f);
    // Signed integers and doubles, low byte first.
    std::string ints = edf_head("Dim_1 = 2 ;\nDim_2 = 1 ;\nDataType = SignedInteger ;\nByteOrder = LowByteFirst ;\n") +
                       raw<std::int32_t>({-5, 123456});
    ASSERT_TRUE(Read_EDF_Bytes(ints, "ints", f, msg)) << msg;
    EXPECT_EQ(Frame_Value(f, 1, 1, 1), -5.0f);
    EXPECT_EQ(Frame_Value(f, 1, 2, 1), 123456.0f);
    std::string dbl = edf_head("Dim_1 = 1 ;\nDim_2 = 2 ;\nDataType = DoubleValue ;\nByteOrder = HighByteFirst ;\n") +
                      raw<double>({2.5, -1e3}, true);
    ASSERT_TRUE(Read_EDF_Bytes(dbl, "dbl", f, msg)) << msg;
    EXPECT_EQ(Frame_Value(f, 1, 1, 2), -1000.0f);

    // Bad files: each refused with its reason, the record left empty.
    struct CASE {
        std::string bytes, words;
    };
    std::vector<CASE> bad = {
        {edf_head(keys) + raw<std::uint16_t>({1, 2, 3}), "cut short"},
        {edf_head("Dim_2 = 2 ;\nDataType = UnsignedShort ;\nByteOrder = LowByteFirst ;\n") + std::string(12, 'x'), "Dim_1"},
        {edf_head("Dim_1 = 3 ;\nDim_2 = 2 ;\nDataType = Complex ;\nByteOrder = LowByteFirst ;\n") + std::string(12, 'x'), "DataType"},
        {edf_head(keys + "Compression = gzip ;\n") + std::string(12, 'x'), "compressed"},
        {edf_head("Dim_1 = 0 ;\nDim_2 = 0 ;\nDataType = UnsignedByte ;\n"), "no pixels"},
        {edf_head("Dim_1 = 20000 ;\nDim_2 = 20000 ;\nDataType = UnsignedByte ;\n"), "larger than"},
        {edf_head(keys + "Size = 4 ;\n") + std::string(12, 'x'), "Size"},
        {"{ Dim_1 = 3 ; no end", "does not end"},
        {edf_head(keys) + raw<std::uint16_t>({1, 2, 3, 4, 5, 6}) + "garbage", "block 2"},
    };
    for (const auto& c : bad) {
        EXPECT_FALSE(Read_EDF_Bytes(c.bytes, "bad.edf", f, msg)) << c.words;
        EXPECT_NE(msg.find(c.words), std::string::npos) << msg;
        EXPECT_EQ(f.n_frames, 0);
    }
}

TEST(TiffFrames, RoundTripsThroughLibtiffAndUnusualLayoutsRefused) {
    Scratch_Dir d;
    FRAME_SET_TYPE f;
    std::string msg;
    struct KIND {
        int bits, format;
        float at_r2_c3;  // pixel (column 4, row 3) of the second page
    };
    for (KIND k : {KIND{8, SAMPLEFORMAT_UINT, 7 * 2 + 3 + 100}, KIND{16, SAMPLEFORMAT_INT, 7 * 2 + 3 + 100 - 20},
                   KIND{32, SAMPLEFORMAT_UINT, (7 * 2 + 3 + 100) * 1000.0f}, KIND{32, SAMPLEFORMAT_IEEEFP, 7 * 2 + 3 + 100.5f}}) {
        std::string path = d.Path() + "k" + std::to_string(k.bits) + "_" + std::to_string(k.format) + ".tif";
        ASSERT_TRUE(write_tiff(path, 9, 5, k.bits, k.format, 2));
        ASSERT_TRUE(Read_Frames(path, f, msg)) << msg;
        EXPECT_EQ(f.format, "TIFF");
        ASSERT_EQ(f.nx, 9);
        ASSERT_EQ(f.ny, 5);
        ASSERT_EQ(f.n_frames, 2);
        EXPECT_EQ(Frame_Value(f, 2, 4, 3), k.at_r2_c3) << k.bits;
    }
    std::string tiles = d.Path() + "tiles.tif", planar = d.Path() + "planar.tif", f64 = d.Path() + "f64.tif";
    ASSERT_TRUE(write_tiff(tiles, 16, 16, 16, SAMPLEFORMAT_UINT, 1, 1, true));
    ASSERT_TRUE(write_tiff(planar, 8, 4, 8, SAMPLEFORMAT_UINT, 1, 3));
    ASSERT_TRUE(write_tiff(f64, 8, 4, 64, SAMPLEFORMAT_IEEEFP, 1));
    EXPECT_FALSE(Read_Frames(tiles, f, msg));
    EXPECT_NE(msg.find("tiled"), std::string::npos) << msg;
    EXPECT_FALSE(Read_Frames(planar, f, msg));
    EXPECT_NE(msg.find("3 samples"), std::string::npos) << msg;
    EXPECT_FALSE(Read_Frames(f64, f, msg));
    EXPECT_NE(msg.find("64-bit floats"), std::string::npos) << msg;
    // A file cut in its data: a message, never zeros.
    std::string whole = d.Path() + "whole.tif";
    ASSERT_TRUE(write_tiff(whole, 64, 64, 16, SAMPLEFORMAT_UINT, 1));
    std::FILE* in = std::fopen(whole.c_str(), "rb");
    std::vector<char> bytes(9000);
    std::size_t n = std::fread(bytes.data(), 1, bytes.size(), in);
    std::fclose(in);
    std::string cut = d.Write("cut.tif", std::string(bytes.data(), n / 2));
    EXPECT_FALSE(Read_Frames(cut, f, msg));
    EXPECT_FALSE(msg.empty());
    EXPECT_EQ(f.n_frames, 0);
}

TEST(CbfFrames, RoundTripThroughLibcbfAndBadFiles) {
    Scratch_Dir d;
    const int w = 7, h = 4;
    std::vector<int> v(w * h);
    for (int i = 0; i < w * h; ++i) v[static_cast<std::size_t>(i)] = i * i * 37 - (i == 5 ? 2 : 0) * 1000;
    std::string path = d.Path() + "image.cbf";
    {
        cbf_handle cbf;
        ASSERT_EQ(cbf_make_handle(&cbf), 0);
        ASSERT_EQ(cbf_new_datablock(cbf, "image_1"), 0);
        ASSERT_EQ(cbf_new_category(cbf, "array_data"), 0);
        ASSERT_EQ(cbf_new_column(cbf, "data"), 0);
        ASSERT_EQ(cbf_set_integerarray_wdims_fs(cbf, CBF_BYTE_OFFSET, 1, v.data(), sizeof(int), 1, v.size(),
                                                "little_endian", w, h, 0, 0), 0);
        std::FILE* out = std::fopen(path.c_str(), "wb");
        ASSERT_EQ(cbf_write_file(cbf, out, 1, CBF, MSG_DIGEST | MIME_HEADERS, 0), 0);
        cbf_free_handle(cbf);
    }
    FRAME_SET_TYPE f;
    std::string msg;
    ASSERT_TRUE(Read_Frames(path, f, msg)) << msg;
    ASSERT_EQ(f.nx, w);
    ASSERT_EQ(f.ny, h);
    for (int i = 0; i < w * h; ++i) ASSERT_EQ(f.counts[static_cast<std::size_t>(i)], static_cast<float>(v[static_cast<std::size_t>(i)]));

    std::FILE* in = std::fopen(path.c_str(), "rb");
    std::string bytes(100000, '\0');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), in));
    std::fclose(in);
    // An unknown compression named in the binary head.
    std::string unknown = bytes;
    std::size_t at = unknown.find("x-CBF_BYTE_OFFSET");
    ASSERT_NE(at, std::string::npos);
    unknown.replace(at, 17, "x-CBF_SQUEEZED_42");
    EXPECT_FALSE(Read_Frames(d.Write("unknown.cbf", unknown), f, msg));
    EXPECT_NE(msg.find("x-CBF_SQUEEZED_42"), std::string::npos) << msg;
    EXPECT_EQ(f.n_frames, 0);
    // Cut in the binary data.
    EXPECT_FALSE(Read_Frames(d.Write("cut.cbf", bytes.substr(0, bytes.find("\x0c\x1a\x04\xd5") + 10)), f, msg));
    EXPECT_FALSE(msg.empty());
    // No image in it.
    EXPECT_FALSE(Read_Frames(d.Write("empty.cbf", "###CBF: VERSION 1.5\ndata_x\n_cell.length_a 5\n"), f, msg));
    EXPECT_NE(msg.find("array_data"), std::string::npos) << msg;
}

TEST(Hdf5Frames, DataSetOfFramesAndWrongPaths) {
    Scratch_Dir d;
    std::string path = d.Path() + "run.h5";
    std::vector<std::uint16_t> v(3 * 4 * 5);
    for (std::size_t i = 0; i < v.size(); ++i) v[i] = static_cast<std::uint16_t>(i * 11);
    {
        hid_t file = H5Fcreate(path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT);
        hid_t group = H5Gcreate2(file, "/entry", H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
        hsize_t dims[3] = {3, 4, 5};
        hid_t space = H5Screate_simple(3, dims, nullptr);
        hid_t set = H5Dcreate2(file, "/entry/data", H5T_NATIVE_UINT16, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
        H5Dwrite(set, H5T_NATIVE_UINT16, H5S_ALL, H5S_ALL, H5P_DEFAULT, v.data());
        H5Dclose(set);
        H5Sclose(space);
        H5Gclose(group);
        H5Fclose(file);
    }
    FRAME_SET_TYPE f;
    std::string msg;
    ASSERT_TRUE(Read_Frames(path, f, msg, "/entry/data")) << msg;
    ASSERT_EQ(f.n_frames, 3);
    ASSERT_EQ(f.ny, 4);
    ASSERT_EQ(f.nx, 5);
    EXPECT_EQ(Frame_Value(f, 2, 3, 4), static_cast<float>((20 + 15 + 2) * 11));
    EXPECT_FALSE(Read_Frames(path, f, msg, "/entry/nothing"));
    EXPECT_NE(msg.find("no data set /entry/nothing"), std::string::npos) << msg;
    EXPECT_FALSE(Read_Frames(path, f, msg));
    EXPECT_NE(msg.find("path of its data set"), std::string::npos) << msg;
    EXPECT_FALSE(Read_Frames(d.Write("x.h5", "not hdf5 at all"), f, msg, "/a"));
    EXPECT_NE(msg.find("not an HDF5 file"), std::string::npos) << msg;
}
