#include <tiffio.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <vector>

#include "instrument/frame_readers.h"

namespace hxl {

namespace {

// libtiff reports through handlers; keep its last complaint for our message
// instead of letting it print.
thread_local std::string tiff_complaint;
void keep_complaint(const char* module, const char* fmt, va_list ap) {
    char buf[256];
    std::vsnprintf(buf, sizeof buf, fmt, ap);
    tiff_complaint = std::string(module ? module : "") + (module ? ": " : "") + buf;
}
void ignore_warning(const char*, const char*, va_list) {}

struct TIFF_CLOSER {
    TIFF* t;
    ~TIFF_CLOSER() {
        if (t) TIFFClose(t);
    }
};

}  // namespace

bool Read_TIFF_Frame(const std::string& path, FRAME_SET_TYPE& frames, std::string& message) {
    frames = FRAME_SET_TYPE{};
    TIFFSetErrorHandler(keep_complaint);
    TIFFSetWarningHandler(ignore_warning);
    tiff_complaint.clear();
    TIFF_CLOSER tif{TIFFOpen(path.c_str(), "r")};
    if (!tif.t) {
        message = "The TIFF file " + path + " cannot be read" + (tiff_complaint.empty() ? "" : ": " + tiff_complaint);
        return false;
    }
    std::vector<std::vector<float>> images;
    std::uint32_t nx = 0, ny = 0;
    do {
        std::string where = path + ", image " + std::to_string(images.size() + 1) + ": ";
        std::uint32_t w = 0, h = 0;
        std::uint16_t bits = 0, spp = 1, format = SAMPLEFORMAT_UINT, compression = 0;
        TIFFGetField(tif.t, TIFFTAG_IMAGEWIDTH, &w);
        TIFFGetField(tif.t, TIFFTAG_IMAGELENGTH, &h);
        TIFFGetFieldDefaulted(tif.t, TIFFTAG_BITSPERSAMPLE, &bits);
        TIFFGetFieldDefaulted(tif.t, TIFFTAG_SAMPLESPERPIXEL, &spp);
        TIFFGetFieldDefaulted(tif.t, TIFFTAG_SAMPLEFORMAT, &format);
        TIFFGetFieldDefaulted(tif.t, TIFFTAG_COMPRESSION, &compression);
        if (TIFFIsTiled(tif.t)) {
            message = where + "tiled images are not read (only strips)";
            return false;
        }
        if (spp != 1) {
            message = where + std::to_string(spp) + " samples a pixel: only grey detector images are read";
            return false;
        }
        bool ok_bits = (format == SAMPLEFORMAT_IEEEFP) ? bits == 32 : (bits == 8 || bits == 16 || bits == 32);
        if (!ok_bits || (format != SAMPLEFORMAT_UINT && format != SAMPLEFORMAT_INT && format != SAMPLEFORMAT_IEEEFP)) {
            message = where + std::to_string(bits) + "-bit " +
                      (format == SAMPLEFORMAT_IEEEFP ? "floats" : format == SAMPLEFORMAT_INT ? "integers" : "samples") +
                      " are not read (8, 16, 32-bit integers or 32-bit floats)";
            return false;
        }
        std::string why;
        if (!Frame_Size_Check(w, h, static_cast<long long>(images.size()) + 1, why)) {
            message = where + why;
            return false;
        }
        if (images.empty()) {
            nx = w;
            ny = h;
        } else if (w != nx || h != ny) {
            message = where + "an image of another size than the first";
            return false;
        }
        std::vector<float> img(static_cast<std::size_t>(w) * h);
        std::vector<unsigned char> line(static_cast<std::size_t>(TIFFScanlineSize(tif.t)));
        if (line.size() < static_cast<std::size_t>(w) * bits / 8) {
            message = where + "the scan lines are shorter than the width";
            return false;
        }
        for (std::uint32_t r = 0; r < h; ++r) {
            if (TIFFReadScanline(tif.t, line.data(), r, 0) < 0) {
                message = where + "row " + std::to_string(r + 1) + " cannot be read" +
                          (tiff_complaint.empty() ? "" : " (" + tiff_complaint + ")");
                return false;
            }
            float* out = img.data() + static_cast<std::size_t>(r) * w;
            const unsigned char* p = line.data();
            for (std::uint32_t c = 0; c < w; ++c) {
                switch (bits * 4 + format) {
                    case 8 * 4 + SAMPLEFORMAT_UINT: out[c] = p[c]; break;
                    case 8 * 4 + SAMPLEFORMAT_INT: out[c] = static_cast<std::int8_t>(p[c]); break;
                    case 16 * 4 + SAMPLEFORMAT_UINT: { std::uint16_t v; std::memcpy(&v, p + 2 * c, 2); out[c] = v; break; }
                    case 16 * 4 + SAMPLEFORMAT_INT: { std::int16_t v; std::memcpy(&v, p + 2 * c, 2); out[c] = v; break; }
                    case 32 * 4 + SAMPLEFORMAT_UINT: { std::uint32_t v; std::memcpy(&v, p + 4 * c, 4); out[c] = static_cast<float>(v); break; }
                    case 32 * 4 + SAMPLEFORMAT_INT: { std::int32_t v; std::memcpy(&v, p + 4 * c, 4); out[c] = static_cast<float>(v); break; }
                    default: std::memcpy(out + c, p + 4 * c, 4); break;
                }
            }
        }
        images.push_back(std::move(img));
    } while (TIFFReadDirectory(tif.t));
    Frames_From_Images(images, static_cast<int>(nx), static_cast<int>(ny), "TIFF", path, frames);
    return true;
}

}  // namespace hxl
