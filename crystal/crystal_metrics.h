#pragma once
// The crystal cell and what derives from it: reciprocal cell, metric tensors,
// the Cartesian frames, the volume and its standard deviation.
#include <ostream>
#include <string>

namespace hxl {

using Mat3f = float[3][3];

struct Cell_Record {
    float cell[3] = {0, 0, 0};
    float ang[3] = {0, 0, 0};
    float cell_std[3] = {0, 0, 0};
    float ang_std[3] = {0, 0, 0};
    float recip_cell[3] = {0, 0, 0};
    float recip_ang[3] = {0, 0, 0};
    float metric_direct[3][3] = {};
    float metric_recip[3][3] = {};
    float to_cartesian[3][3] = {};
    float from_cartesian[3][3] = {};
    float busing_levy[3][3] = {};
    float busing_levy_inv[3][3] = {};
    float volume = 0;
    float volume_std = 0;
    float recip_volume = 0;
    std::string CarType = "CA";  // 2
};

// The module's error pair.
extern bool ERR_Crys;
extern std::string ERR_Crys_Mess;  // 150
void Clear_Crys_Error();
void Set_Crys_Error(const std::string& message);

// Fills the whole record. A blank CarType means the default "CA" frame.
void Fill_Cell_Record(const float cell[3], const float ang[3], Cell_Record& record,
                      const std::string& CarType = "", const float* cell_std = nullptr,
                      const float* ang_std = nullptr);

// The crystallographic-to-Cartesian matrix alone; `CarType` is normalised in place.
void Get_Cryst_Orthog_Matrix(const float cell[3], const float ang[3], float matrix[3][3],
                             std::string& CarType);

// Derivatives of the orthogonalisation matrix with respect to a, b, c, alpha,
// beta, gamma (angles in degrees), for the "CA" and "BA" frames.
void Get_Deriv_Orth_Cell(const Cell_Record& record, float deriv[3][3][6], const std::string& CarType);

// The "Metric information:" listing.
void List_Cell(const Cell_Record& record, std::ostream& unit);

// Small 3x3 helpers shared by the module.
bool Invert_Matrix3(const float in[3][3], float out[3][3]);

}  // namespace hxl
