#include "instrument/picture_png.h"

#include <png.h>

#include <csetjmp>

#include "patterns/replace_file.h"

namespace hxl {

namespace {
void append(png_structp png, png_bytep data, png_size_t n) {
    auto* out = static_cast<std::string*>(png_get_io_ptr(png));
    out->append(reinterpret_cast<const char*>(data), n);
}
void no_flush(png_structp) {}

// Kept apart from the setjmp frame so that no object with a destructor lives across it.
bool encode(std::string* out, int width, int height, const std::uint8_t* rgb) {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    if (!png) return false;
    png_infop info = png_create_info_struct(png);
    if (!info || setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        return false;
    }
    png_set_write_fn(png, out, append, no_flush);
    png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8, PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (int r = 0; r < height; ++r)
        png_write_row(png, const_cast<png_bytep>(rgb + static_cast<std::size_t>(r) * static_cast<std::size_t>(width) * 3));
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return true;
}
}  // namespace

bool Write_PNG_RGB(const std::string& path, int width, int height, const std::vector<std::uint8_t>& rgb,
                   std::string& message) {
    if (width < 1 || height < 1 || rgb.size() < static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3) {
        message = "No picture to write";
        return false;
    }
    std::string bytes;
    if (!encode(&bytes, width, height, rgb.data()) || !Replace_File(path, bytes)) {
        message = "The picture " + path + " could not be written";
        return false;
    }
    return true;
}

}  // namespace hxl
