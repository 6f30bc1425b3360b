#include "support/text_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace hxl {

namespace {

const std::string kBom = "\xEF\xBB\xBF";

std::string why() { return std::strerror(errno); }

std::string size_text(long long bytes) {
    const long long mb = 1024 * 1024;
    return bytes % mb == 0 ? std::to_string(bytes / mb) + " MB" : std::to_string(bytes) + " bytes";
}

}  // namespace

bool Is_Utf8(const std::string& s) {
    std::size_t i = 0;
    while (i < s.size()) {
        const unsigned char c = static_cast<unsigned char>(s[i]);
        int more = 0;
        unsigned int cp = 0, least = 0;
        if (c < 0x80) {
            ++i;
            continue;
        } else if ((c & 0xE0) == 0xC0) {
            more = 1, cp = c & 0x1F, least = 0x80;
        } else if ((c & 0xF0) == 0xE0) {
            more = 2, cp = c & 0x0F, least = 0x800;
        } else if ((c & 0xF8) == 0xF0) {
            more = 3, cp = c & 0x07, least = 0x10000;
        } else {
            return false;
        }
        for (int k = 1; k <= more; ++k) {
            if (i + static_cast<std::size_t>(k) >= s.size()) return false;
            const unsigned char d = static_cast<unsigned char>(s[i + static_cast<std::size_t>(k)]);
            if ((d & 0xC0) != 0x80) return false;
            cp = (cp << 6) | (d & 0x3F);
        }
        // overlong forms, surrogates and values past U+10FFFF are not UTF-8
        if (cp < least || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return false;
        i += static_cast<std::size_t>(more) + 1;
    }
    return true;
}

bool Read_Text_File(const std::string& file, long long limit, TEXT_FILE_TYPE& t, std::string& message) {
    struct stat st {};
    if (::stat(file.c_str(), &st) != 0) {
        message = errno == ENOENT ? "The file " + file + " does not exist" : "Unable to read " + file + ": " + why();
        return false;
    }
    if (!S_ISREG(st.st_mode)) {
        message = file + " is not a file";
        return false;
    }
    if (st.st_size > limit) {
        message = "The file " + file + " is larger than " + size_text(limit) + ": it is not opened";
        return false;
    }
    std::FILE* f = std::fopen(file.c_str(), "rb");
    if (!f) {
        message = "Unable to read " + file + ": " + why();
        return false;
    }
    std::string bytes(static_cast<std::size_t>(st.st_size), '\0');
    const std::size_t got = std::fread(bytes.data(), 1, bytes.size(), f);
    const bool failed = std::ferror(f) != 0;
    std::fclose(f);
    if (failed) {
        message = "Unable to read " + file;
        return false;
    }
    bytes.resize(got);
    if (bytes.find('\0') != std::string::npos) {
        message = "The file " + file + " is not a text file: it is not opened";
        return false;
    }
    TEXT_FILE_TYPE r;
    if (bytes.compare(0, kBom.size(), kBom) == 0) {
        r.bom = true;
        bytes.erase(0, kBom.size());
    }
    if (!Is_Utf8(bytes)) {
        r.latin1 = true;
        std::string u;
        u.reserve(bytes.size() + bytes.size() / 8);
        for (char ch : bytes) {
            const unsigned char c = static_cast<unsigned char>(ch);
            if (c < 0x80) {
                u += ch;
            } else {
                u += static_cast<char>(0xC0 | (c >> 6));
                u += static_cast<char>(0x80 | (c & 0x3F));
            }
        }
        bytes.swap(u);
    }
    // Line ends: CR LF, LF, or a CR alone (old Mac files). Mixed ones become the most frequent kind.
    std::size_t crlf = 0, lf = 0, cr = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++crlf, ++i;
        else if (bytes[i] == '\r') ++cr;
        else if (bytes[i] == '\n') ++lf;
    }
    r.crlf = crlf > lf + cr;
    r.mixed = (crlf > 0) + (lf > 0) + (cr > 0) > 1 || cr > 0;
    if (crlf > 0 || cr > 0) {
        std::string u;
        u.reserve(bytes.size());
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
            u += bytes[i] == '\r' ? '\n' : bytes[i];
        }
        bytes.swap(u);
    }
    r.text = std::move(bytes);
    t = std::move(r);
    return true;
}

bool Text_File_Bytes(const TEXT_FILE_TYPE& form, const std::string& text, std::string& bytes, std::string& message) {
    std::string out = form.bom ? kBom : std::string();
    out.reserve(text.size() + text.size() / 16 + 3);
    int line = 1;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (c == '\n') {
            if (form.crlf) out += '\r';
            out += '\n';
            ++line;
        } else if (!form.latin1 || c < 0x80) {
            out += text[i];
        } else if ((c == 0xC2 || c == 0xC3) && i + 1 < text.size()) {
            out += static_cast<char>(((c & 0x03) << 6) | (static_cast<unsigned char>(text[++i]) & 0x3F));
        } else {
            message = "Line " + std::to_string(line) +
                      " holds a character that the file's encoding (Latin-1) cannot hold: nothing was written";
            return false;
        }
    }
    bytes.swap(out);
    return true;
}

bool Replace_File_Told(const std::string& path, const std::string& bytes, std::string& message) {
    namespace fs = std::filesystem;
    if (path.empty()) {
        message = "No file name";
        return false;
    }
    const fs::path p(path);
    const fs::path dir = p.has_parent_path() ? p.parent_path() : fs::path(".");
    std::string tmp = (dir / ("." + p.filename().string() + ".XXXXXX")).string();
    const int fd = ::mkstemp(tmp.data());
    if (fd < 0) {
        message = "Unable to save " + path + ": " + why();
        return false;
    }
    // The new file takes the old one's permissions, or those a new file would get.
    struct stat st {};
    mode_t mode = 0;
    if (::stat(path.c_str(), &st) == 0) {
        mode = st.st_mode & 07777;
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        mode = 0666 & ~mask;
    }
    bool ok = ::fchmod(fd, mode) == 0;
    std::size_t done = 0;
    while (ok && done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        ok = n > 0;
        if (ok) done += static_cast<std::size_t>(n);
    }
    ok = ok && ::fsync(fd) == 0;
    const int saved = errno;
    ok = (::close(fd) == 0) && ok;
    if (ok && ::rename(tmp.c_str(), path.c_str()) == 0) return true;
    if (!ok && saved) errno = saved;
    message = "Unable to save " + path + ": " + why();
    ::unlink(tmp.c_str());
    return false;
}

}  // namespace hxl
