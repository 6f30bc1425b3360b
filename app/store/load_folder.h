#pragma once
// Loading every pattern file of a folder: read on worker threads, entered into
// the store on the calling thread in natural order. No window: the window, the
// command line, the batch program and the benchmark share it.
#include <functional>
#include <string>
#include <vector>

namespace zendrite {

struct FOLDER_FAILURE {
    std::string file;    // name within the folder
    std::string reason;
};

struct FOLDER_LOAD_RESULT {
    int files = 0;              // pattern files found (a row known)
    int done = 0;               // of those, handed to the store before the end
    std::vector<int> slots;     // filled, in order
    std::vector<FOLDER_FAILURE> failures;  // in the order of the folder
    bool limit_reached = false;
    bool cancelled = false;
    int left_out = 0;           // blocks of the files not read
    std::string error;          // the folder itself could not be read
};

// The format row a file of a folder is read with; 0 when no row is known.
// The one place that decides it.
int Folder_File_Row(const std::string& path);

// The pattern files of `dir` (natural order) with their rows; files with no row
// go to `skipped`. False with `error` when the folder cannot be listed.
bool Folder_Pattern_Files(const std::string& dir, std::vector<std::string>& files, std::vector<int>& rows,
                          std::vector<std::string>& skipped, std::string& error);

// Called after each file entered the store and now and then while waiting:
// files done, files in all, the name of the last one. False cancels; what is
// loaded stays.
using FOLDER_PROGRESS = std::function<bool(int done, int total, const std::string& name)>;

inline constexpr int kFolderWorkers = 2;

FOLDER_LOAD_RESULT Load_Folder(const std::string& dir, const FOLDER_PROGRESS& progress = {},
                               int workers = kFolderWorkers);

// The recent-list entry of a folder: its name ending in a separator, so that it
// reads back as a folder.
std::string Folder_Recent_Name(const std::string& dir);

// The one message at the end: the failures, at most 20 lines and a count of the
// rest, and the blocks left out; blank when there is nothing to tell.
std::string Folder_Failure_Message(const FOLDER_LOAD_RESULT& r);

}  // namespace zendrite
