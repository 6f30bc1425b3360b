#pragma once
// The files of one folder, as a folder command loads them.
#include <string>
#include <vector>

namespace hxl {

// Full names of the regular files directly in `dir` (no sub-folders, no hidden
// names beginning with "."), in natural order of their names. False with
// `error` set when the folder cannot be listed.
bool Folder_Files(const std::string& dir, std::vector<std::string>& files, std::string& error);

// True when `path` names an existing folder.
bool Is_Folder(const std::string& path);

}  // namespace hxl
