#pragma once
// The peak and background files and the inputs of the indexing programs,
// written from the lists as they stand (positions in the profile's X unit).
// Each *_Text routine gives the whole file; the Write routines replace the
// file through a temporary file and a rename.
#include <ctime>
#include <string>
#include <vector>

#include "patterns/diffraction_pattern.h"
#include "peaks/search_points.h"

namespace hxl {

struct PEAK_POINT_TYPE {
    float x = 0, y = 0, bgr = 0;
};

// folder + '/' + name; an empty folder gives the name alone.
std::string Join_Folder(const std::string& folder, const std::string& name);

// "(i2,a,i2,a,i4,a,3(i2,a))": day/month/year at hour:minute:second and a blank.
std::string Date_Stamp(const std::tm& t);

// The free format, also the file peak.aps the search leaves.
std::string Free_Peaks_Text(const std::string& data_name, const std::string& format_name,
                            const std::vector<PEAK_POINT_TYPE>& list);
std::string Background_Text(const std::string& data_name, const std::string& format_name, const float* x,
                            const float* y, int n);
bool Write_Free_Peaks(const std::string& path, const std::string& data_name, const std::string& format_name,
                      const std::vector<PEAK_POINT_TYPE>& list, std::string& message);
bool Write_Background(const std::string& path, const std::string& data_name, const std::string& format_name,
                      const float* x, const float* y, int n, std::string& message);

// True when the spacing of the profile is 2theta ("2theta", "2-theta", ...).
bool Is_Two_Theta(const std::string& scat_var);
bool Is_Tof(const std::string& scat_var);

struct DICVOL_INPUT_TYPE {
    std::string title;
    int n = 0;        // lines used
    int itype = 0;    // 1 theta, 2 2theta, 3 d, 4 Q; 0 none
    bool systems[6] = {true, true, true, true, false, false};
    float amax = 25, bmax = 25, cmax = 25;
    float bemin = 90, bemax = 125;
    float volmin = 0, volmax = 2500;
    float wave = 0;
    float molw = 0, dens = 0, delden = 0;
    float eps = 0.03f, fom = 10;
    int n_imp = 0;
    bool zero_search = false, zero_refine = true, dicvol06 = false;
};
DICVOL_INPUT_TYPE Dicvol_Defaults(const DIFFRACTION_PATTERN_TYPE& p, int peak_type, int count);
std::string Dicvol_Text(const DICVOL_INPUT_TYPE& d, const std::string& data_name, const std::string& instrument,
                        const WAVELENGTHS_TYPE& w, const std::string& date_stamp,
                        const std::vector<PEAK_POINT_TYPE>& list);

struct ITO_INPUT_TYPE {
    std::string title;
    float wave = 0;
    float zero = 0;
};
ITO_INPUT_TYPE Ito_Defaults(const DIFFRACTION_PATTERN_TYPE& p, int peak_type);
std::string Ito_Text(const ITO_INPUT_TYPE& d, const std::vector<PEAK_POINT_TYPE>& list);

struct TREOR_INPUT_TYPE {
    std::string title;
    int choice = 2;  // 1 theta, 2 2theta, 3 d
    float cem = 20, vol = 1500, beta = 125;
    float wave = 0, zero = 0, merit = 10;
};
TREOR_INPUT_TYPE Treor_Defaults(const DIFFRACTION_PATTERN_TYPE& p, int peak_type);
// The header's three wavelengths of the Treor file: an unknown type has ratio 0.
WAVELENGTHS_TYPE Treor_Wavelengths(int peak_type, float own);
std::string Treor_Text(const TREOR_INPUT_TYPE& d, const std::string& data_name, const std::string& instrument,
                       const WAVELENGTHS_TYPE& w, const std::vector<PEAK_POINT_TYPE>& list);

struct OMBRA_INPUT_TYPE {
    std::string title, lattice, cell, tolerance, krange, kdiv, wave;
    int output = 1;  // 1 short, 2 long, 3 none
    bool commensurate = false;
};
OMBRA_INPUT_TYPE Ombra_Defaults(const DIFFRACTION_PATTERN_TYPE& p);
std::string Ombra_Text(const OMBRA_INPUT_TYPE& d, const std::string& data_path, const std::string& scat_var,
                       const std::string& date_stamp, const std::vector<PEAK_POINT_TYPE>& list);

// The extension, filter, title and failure text of each format word; false
// for a word that names none ("File format unknow!").
struct PEAK_FORMAT_TYPE {
    const char* word;
    const char* extension;  // with the dot; the free format's default name is peak.aps
    const char* filter;
    const char* title;
    const char* failure;
};
bool Peak_Format_Of(const std::string& format, PEAK_FORMAT_TYPE& f);

}  // namespace hxl

namespace hxl {

// The whole file of one format word with every dialog value at its default.
// False for an unknown word.
bool Default_Peak_File_Text(const std::string& word, const DIFFRACTION_PATTERN_TYPE& p, int peak_type,
                            const std::vector<PEAK_POINT_TYPE>& list, const std::string& date_stamp,
                            std::string& text);

// The present local time as a date stamp.
std::string Date_Stamp_Now();

}  // namespace hxl
