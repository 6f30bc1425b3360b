#pragma once
// Raw detector files (".kg2", ".kg3o") of the raw data commands: a head of
// twelve lines read one by one, then one block per detector, each
// introduced by a "Detector No." line and holding rows of angle and counts.
#include <string>
#include <vector>

#include "patterns/diffraction_pattern.h"

namespace hxl {

struct RAW_DETECTOR_TYPE {
    int number = 0;
    std::vector<float> angle;
    std::vector<float> counts;
};

struct RAW_DATA_TYPE {
    std::string title;            // line 1
    float lambda = 0;             // line 2, behind "lambda :"
    float detectors_shift = 0;    // line 5
    float alpha1_divergency = 0;  // line 6
    float monitor = 0;            // line 7
    float omega = 0;              // line 8
    float tsamp = 0;              // line 9
    std::string owner;            // line 10
    std::string descriptors;      // line 12
    std::vector<RAW_DETECTOR_TYPE> detectors;
};

// Reads the file; false with the message of the line that failed.
bool Read_Pattern_Raw(const std::string& filename, RAW_DATA_TYPE& raw, std::string& message);
// The same on a file already in memory.
bool Read_Raw_Text(std::string text, RAW_DATA_TYPE& raw, std::string& message);

// The raw commands take one file: false with "Trying to select more than one file!" otherwise.
bool Check_Raw_Selection(const std::vector<std::string>& names, std::string& message);

// One detector's block as a pattern (x the angle, y the counts, variance the counts).
bool Raw_Detector_Pattern(const RAW_DATA_TYPE& raw, int detector, DIFFRACTION_PATTERN_TYPE& pattern,
                          std::string& message);

}  // namespace hxl
