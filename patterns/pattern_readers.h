#pragma once
// The format readers of the reader frame. Each gets a unit positioned at the
// start of the file and the record as Read_Pattern left it, fills the record
// and reports through ERR_Pattern / ERR_Pattern_Mess.
#include <string>
#include <vector>

#include "patterns/diffraction_pattern.h"
#include "support/text_unit.h"

namespace hxl {

void Read_Pattern_Free(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern, const std::string& extension);

void Read_Pattern_XYSigma(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern, bool gr, std::string* header);
void Read_Pattern_Cif(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern);
void Read_Pattern_Cif(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern, int block, int& nblocks);
void Read_Pattern_Csv(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern);
void Read_Pattern_Udf(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern);
void Read_Pattern_Jcamp(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern);
void Read_Pattern_Xrdml(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern);
// Files of several blocks (scans, banks, data blocks): reads block `block`
// (1-based) and tells how many the file holds in `nblocks`.
void Read_Pattern_Xrdml(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern, int block, int& nblocks);
void Read_Pattern_Socabim(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern);
void Read_Pattern_TimeVariable(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern);
void Read_Pattern_KV8(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern);
void Read_Pattern_KG1(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern);
void Read_Pattern_KV7(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern);
void Read_Pattern_KV7_Old(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern);
void Read_Pattern_DMC(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern);
void Read_Pattern_NLS(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern);
// `bank` is blank for constant wavelength, "TOF " or "TOF" + bank character for TOF.
void Read_Pattern_GSAS(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern, const std::string& bank);
void Read_Pattern_GSAS(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern, const std::string& bank, int block,
                       int& nblocks);
// Multi-bank file: one pattern per bank; `count` is the number read.
void Read_Pattern_Isis(Text_Unit& unit, std::vector<DIFFRACTION_PATTERN_TYPE>& patterns, int& count,
                       const std::string& bank);

}  // namespace hxl
