#pragma once
// The numbered names of the Laue classes and point groups.
#include <string>

namespace hxl {

// 1-based indices; out of range: the error pair of the symmetry module is set.
std::string Laue_Class_Name(int index);   // 1..16
std::string Point_Group_Name(int index);  // 1..40
int Laue_Class_Index(const std::string& name);   // 0 when unknown
int Point_Group_Index(const std::string& name);  // 0 when unknown

}  // namespace hxl
