#pragma once
// The reader frame: opens a file, hands it to one format reader and finishes the record.
#include <optional>
#include <string>
#include <vector>

#include "patterns/diffraction_pattern.h"

namespace hxl {

// `mode` absent means "DEFAULT" (the free-format reader); with `sig` true the
// variances in `sigma` become standard deviations. Only the XY reader fills `header`.
void Read_Pattern(const std::string& filename, DIFFRACTION_PATTERN_TYPE& pattern,
                  const std::optional<std::string>& mode = std::nullopt, std::optional<bool> sig = std::nullopt,
                  std::string* header = nullptr);

// A file that holds several patterns (row 14); `count` is the number read.
void Read_Pattern_Set(const std::string& filename, std::vector<DIFFRACTION_PATTERN_TYPE>& patterns, int& count,
                      const std::string& mode);

// Every pattern a file holds, at most `max_patterns`: one per bank, scan or
// data block where the format has several, else the one Read_Pattern reads.
// `left_out` counts the blocks of the file that were not read (beyond the
// limit, or of a kind no profile can hold). ERR_Pattern set: nothing was read.
// Safe to call from a worker thread: it touches no shared state.
void Read_Pattern_Blocks(const std::string& filename, const std::string& mode,
                         std::vector<DIFFRACTION_PATTERN_TYPE>& patterns, int max_patterns, int& left_out);

// Splits a path at its last directory separator: `path` keeps the separator,
// and is "./" when the name holds no directory.
void Split_File_Name(const std::string& fullname, std::string& path, std::string& name);

}  // namespace hxl
