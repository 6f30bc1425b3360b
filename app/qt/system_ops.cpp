// System operations and conversions.
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStringList>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "app/qt/present_state.h"
#include "support/fixed_text.h"

namespace zendrite {
using namespace qt;
namespace fs = std::filesystem;

void IOsDirName(std::string& dir) {
    std::error_code ec;
    dir = fs::current_path(ec).string();
}
bool IOsDirChange(const std::string& dir) {
    std::error_code ec;
    fs::current_path(dir, ec);
    return !ec;
}
bool IOsDirMake(const std::string& dir) {
    std::error_code ec;
    fs::create_directories(dir, ec);
    return fs::is_directory(dir, ec);
}
void IOsDirInfo(const std::string& dir, const std::string& pattern, std::vector<std::string>& names) {
    names.clear();
    const QStringList list = QDir(Q(dir)).entryList(QStringList() << Q(pattern), QDir::Files, QDir::Name);
    for (const QString& s : list) names.push_back(S(s));
}
int IOsDirCount(const std::string& dir, const std::string& pattern) {
    std::vector<std::string> n;
    IOsDirInfo(dir, pattern, n);
    return static_cast<int>(n.size());
}
bool IOsDeleteFile(const std::string& file) {
    std::error_code ec;
    return fs::remove(file, ec);
}
bool IOsCopyFile(const std::string& from, const std::string& to) {
    std::error_code ec;
    fs::copy_file(from, to, fs::copy_options::overwrite_existing, ec);
    return !ec;
}
bool IOsExists(const std::string& path) {
    std::error_code ec;
    return !path.empty() && fs::exists(path, ec);
}
bool IOsIsDir(const std::string& path) {
    std::error_code ec;
    return !path.empty() && fs::is_directory(path, ec);
}

FILE_INFO_TYPE IOsFileInfo(const std::string& file) {
    FILE_INFO_TYPE info;
    const QFileInfo fi(Q(file));
    if (file.empty() || !fi.exists()) return info;
    info.size = fi.size();
    const QDateTime t = fi.lastModified();
    info.year = t.date().year(), info.month = t.date().month(), info.day = t.date().day();
    info.hour = t.time().hour(), info.minute = t.time().minute(), info.second = t.time().second();
    return info;
}

std::string IOsVariable(const std::string& name) {
    const char* v = std::getenv(name.c_str());
    return v ? std::string(v) : std::string();
}

int IOsCommand(const std::string& command, bool wait) {
    if (hxl::Is_Blank(command)) return -1;
    if (wait) return QProcess::execute("/bin/sh", QStringList() << "-c" << Q(command));
    return QProcess::startDetached("/bin/sh", QStringList() << "-c" << Q(command)) ? 0 : -1;
}

void IOsOpSystem(int& code, int& subcode) {
#if defined(_WIN32)
    code = 6, subcode = 0;
#elif defined(__APPLE__)
    code = 4, subcode = 1;
#elif defined(__linux__)
    code = 4, subcode = 14;
#else
    code = 0, subcode = 0;
#endif
}

int IStringToInteger(const std::string& text, int& error) {
    const std::string t = hxl::Trim(text);
    char* end = nullptr;
    const long v = std::strtol(t.c_str(), &end, 10);
    error = t.empty() || *end != '\0' || v > 2147483647L || v < -2147483647L ? 1 : 0;
    return error ? 0 : static_cast<int>(v);
}

double IStringToReal(const std::string& text, int& error) {
    std::string t = hxl::Trim(text);
    for (char& c : t)
        if (c == 'd' || c == 'D') c = 'e';
    char* end = nullptr;
    const double v = std::strtod(t.c_str(), &end);
    error = t.empty() || *end != '\0' || !std::isfinite(v) ? 1 : 0;
    return error ? 0.0 : v;
}

std::string IRealToString(double value, const std::string& format) {
    char buf[64];
    if (!format.empty() && format.find('%') != std::string::npos) {
        std::snprintf(buf, sizeof buf, format.c_str(), value);
        return buf;
    }
    std::snprintf(buf, sizeof buf, "%.7g", value);
    return buf;
}

std::string IntegerToString(int value) { return std::to_string(value); }

double INextReal(const std::string& text, std::size_t& pos, int& error) {
    while (pos < text.size() && (text[pos] == ' ' || text[pos] == ',' || text[pos] == '\t')) ++pos;
    const std::size_t start = pos;
    while (pos < text.size() && text[pos] != ' ' && text[pos] != ',' && text[pos] != '\t') ++pos;
    return IStringToReal(text.substr(start, pos - start), error);
}

bool Write_File_Replace(const std::string& file, const std::string& content) {
    const std::string tmp = file + ".tmp~";
    {
        std::ofstream out(tmp, std::ios::binary | std::ios::trunc);
        if (!out) return false;
        out << content;
        out.flush();
        if (!out) {
            out.close();
            std::error_code ec;
            fs::remove(tmp, ec);
            return false;
        }
    }
    std::error_code ec;
    fs::rename(tmp, file, ec);
    if (ec) fs::remove(tmp, ec);
    return !ec;
}

}  // namespace zendrite
