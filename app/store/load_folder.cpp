#include "app/store/load_folder.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <new>
#include <system_error>

#include "app/store/add_profile.h"
#include "app/store/zendrite_param_global.h"
#include "patterns/format_guess.h"
#include "patterns/format_table.h"
#include "support/fixed_text.h"
#include "support/folder_files.h"
#include "support/natural_order.h"
#include "support/ordered_pool.h"

namespace zendrite {

namespace {

// A file this large is left to the File menu, where it is read alone: read ahead
// beside others it could exhaust the memory.
constexpr std::uintmax_t kLargestFolderFile = 512ull << 20;
constexpr int kReadAhead = 6;
constexpr int kListedFailures = 20;

std::string base_name(const std::string& path) { return std::filesystem::path(path).filename().string(); }

READ_FILE_RESULT read_one(const std::string& path, int row) {
    READ_FILE_RESULT r;
    r.name = path;
    r.row = row;
    std::error_code ec;
    const std::uintmax_t size = std::filesystem::file_size(path, ec);
    if (ec) {
        r.error = "unable to read it: " + ec.message();
        return r;
    }
    if (size == 0) {
        r.error = "empty file";
        return r;
    }
    if (size > kLargestFolderFile) {
        r.error = "larger than " + std::to_string(kLargestFolderFile >> 20) + " MB: open it alone";
        return r;
    }
    try {
        return Read_Data_File(path, row, kMaxProfiles);
    } catch (const std::bad_alloc&) {
        r.patterns.clear();
        r.error = "not enough memory to read it";
    } catch (const std::exception& e) {
        r.patterns.clear();
        r.error = e.what();
    }
    return r;
}

}  // namespace

int Folder_File_Row(const std::string& path) {
    if (const int row = hxl::Format_Row_From_Extension(hxl::Upper_Extension(base_name(path)))) return row;
    // No question per file in a folder: only a guess that no other layout fits is taken.
    const hxl::FORMAT_GUESS_TYPE guess = hxl::Guess_Pattern_Format(path);
    return guess.weak ? 0 : guess.row;
}

bool Folder_Pattern_Files(const std::string& dir, std::vector<std::string>& files, std::vector<int>& rows,
                          std::vector<std::string>& skipped, std::string& error) {
    std::vector<std::string> all;
    files.clear(), rows.clear(), skipped.clear();
    if (!hxl::Folder_Files(dir, all, error)) return false;
    for (std::string& f : all) {
        const int row = Folder_File_Row(f);
        if (row == 0) {
            skipped.push_back(std::move(f));
        } else {
            files.push_back(std::move(f));
            rows.push_back(row);
        }
    }
    return true;
}

std::string Folder_Recent_Name(const std::string& dir) {
    std::string d = hxl::Trim(dir);
    if (d.empty() || (d.back() != '/' && d.back() != '\\')) d += '/';
    return d;
}

FOLDER_LOAD_RESULT Load_Folder(const std::string& dir, const FOLDER_PROGRESS& progress, int workers) {
    FOLDER_LOAD_RESULT result;
    std::vector<std::string> files, skipped;
    std::vector<int> rows;
    if (!Folder_Pattern_Files(dir, files, rows, skipped, result.error)) return result;
    result.files = static_cast<int>(files.size());
    // Skipped files keep their place among the failures: merge by natural order later.
    std::vector<std::pair<std::string, FOLDER_FAILURE>> failures;  // full name, failure
    for (const std::string& s : skipped) failures.push_back({s, {base_name(s), "format not known"}});

    ZENDRITE_STORE& g = zendrite_param_global();
    const auto recent = g.recent;  // single files of the folder do not crowd the recent list
    hxl::ORDERED_POOL<READ_FILE_RESULT> pool(result.files, workers, kReadAhead, [&files, &rows](int i) {
        return read_one(files[static_cast<std::size_t>(i)], rows[static_cast<std::size_t>(i)]);
    });
    const auto poll = std::chrono::milliseconds(50);
    std::string last;
    for (;;) {
        READ_FILE_RESULT read;
        const hxl::POOL_STATE state = pool.Next(read, poll);
        if (state == hxl::POOL_STATE::End) break;
        if (state == hxl::POOL_STATE::Waiting) {
            if (progress && !progress(result.done, result.files, last)) {
                result.cancelled = true;
                break;
            }
            continue;
        }
        const std::string full = read.name, name = base_name(read.name);
        if (g.nperfiles >= kMaxProfiles) {
            result.limit_reached = true;
            break;
        }
        if (!read.error.empty() || read.patterns.empty()) {
            failures.push_back({full, {name, read.error.empty() ? "no pattern in the file" : hxl::Trim(read.error)}});
        } else {
            const LOAD_RESULT r = Store_Data_File(std::move(read));
            result.slots.insert(result.slots.end(), r.slots.begin(), r.slots.end());
            result.left_out += r.left_out;
            for (const std::string& m : r.messages)
                if (m != kMsgMaxProfiles) failures.push_back({full, {name, m}});
            if (r.limit_reached) result.limit_reached = true;
        }
        ++result.done;
        last = name;
        if (result.limit_reached) break;
        if (progress && !progress(result.done, result.files, last)) {
            result.cancelled = result.done < result.files;
            break;
        }
    }
    pool.Stop();
    g.recent = recent;
    if (!result.slots.empty()) Add_Recent_File(Folder_Recent_Name(dir));
    std::stable_sort(failures.begin(), failures.end(),
                     [](const auto& a, const auto& b) { return hxl::Natural_Less(a.first, b.first); });
    for (auto& f : failures) result.failures.push_back(std::move(f.second));
    return result;
}

std::string Folder_Failure_Message(const FOLDER_LOAD_RESULT& r) {
    std::string text;
    const int n = static_cast<int>(r.failures.size());
    if (n > 0) {
        text = std::to_string(n) + (n == 1 ? " file of the folder was" : " files of the folder were") + " not loaded:";
        for (int i = 0; i < n && i < kListedFailures; ++i) {
            const FOLDER_FAILURE& f = r.failures[static_cast<std::size_t>(i)];
            text += "\r" + f.file + ": " + f.reason;
        }
        if (n > kListedFailures) text += "\r... and " + std::to_string(n - kListedFailures) + " more";
    }
    if (r.left_out > 0)
        text += std::string(text.empty() ? "" : "\r") + std::to_string(r.left_out) +
                (r.left_out == 1 ? " block of the files was" : " blocks of the files were") + " not read";
    return text;
}

}  // namespace zendrite
