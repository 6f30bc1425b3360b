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

// Splits a path at its last directory separator: `path` keeps the separator,
// and is "./" when the name holds no directory.
void Split_File_Name(const std::string& fullname, std::string& path, std::string& name);

}  // namespace hxl
