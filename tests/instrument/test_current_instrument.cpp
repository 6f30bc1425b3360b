// Instrument definition files and the two built-in defaults.
#include <gtest/gtest.h>

#include "instrument/current_instrument.h"
#include "instrument/instrm_directories.h"
#include "temp_dir.h"

using namespace hxl;

namespace {
const INSTRUMENT_TYPE& ci = Current_Instrument;
}

TEST(CurrentInstrument, EveryKeywordCaseInsensitive) {
    ztest::Scratch_Dir d;
    std::string alpha = d.Write("alpha.dat", "1 2 3\n4 5 6\n");
    std::string file = d.Write("d19.geo",
                               "! a comment\n"
                               "# another\n"
                               "\n"
                               "info   Four circle with a banana Detector\n"
                               "Name   KS1\n"
                               "GEOM 4  Eulerian 4C long text here\n"
                               "blfr   z-down\n"
                               "DIST_UNITS cm\n"
                               "ANGL_UNITS rad\n"
                               "DET_TYPE Cyl_rect  ipsd 3\n"
                               "DIST_DET 76.5\n"
                               "WAVE 1.456\n"
                               "wav_limits 0.8 3.2\n"
                               "DIM_XZP 120.0 40.0 3 2\n"
                               "GAPS_CA_AN 1.5 2.5\n"
                               "GAMMA_NU_CENTRE 60 5\n"
                               "ROT_ORDER zyx\n"
                               "TILT_ANGLES 0.1 0.2 0.3\n"
                               "RESOL 0.75\n"
                               "GAM+_LIMITS 5 130\n"
                               "gam-_limits -10 -2\n"
                               "NU_LIMITS -20 20\n"
                               "X_LIMITS 1 39\n"
                               "Z_LIMITS 2 38\n"
                               "UBMAT\n 2 0 0\n 0 4 0\n 0 0 5\n"
                               "SETTING\n 1 2 3\n 4 5 6\n 7 8 9\n"
                               "NUM_ANG 2\n"
                               "ANG_LIMITS         Min      Max    Offset  Velocity(deg/s)\n"
                               "  Gamma  -5 130 0.5 2.0\n"
                               "  Omega  -180 180 0.0 1.5\n"
                               "NUM_DISP 1\n"
                               "DISP_LIMITS\n"
                               "  Tx  -10 10 0.2\n"
                               "DET_OFF 0.1 -0.2 0.3\n"
                               "DISP_CENTRE 1 2 3\n"
                               "RANGE_TIME 1\n"
                               "  Omega 2\n"
                               "  10 1.0 20 2.5\n"
                               "ALPHA_FILE " + alpha + "\n"
                               "RESOLUTION_SURFACE 2 2\n"
                               " 0.1 0.2 0.3 0.4\n"
                               "NOT_A_KEYWORD 12\n");
    Read_Current_Instrm(file);
    ASSERT_FALSE(ERR_Instrm) << ERR_Instrm_Mess;
    EXPECT_TRUE(Current_Instrument_Set);
    EXPECT_EQ(ci.info, "Four circle with a banana Detector");  // the value keeps its case
    EXPECT_EQ(ci.name, "KS1");
    EXPECT_EQ(ci.geom_code, 4);
    EXPECT_EQ(ci.geom, "Eulerian 4C lon");
    EXPECT_EQ(ci.bl_frame, "z-down");
    EXPECT_EQ(ci.dist_units, "cm");
    EXPECT_EQ(ci.angl_units, "rad");
    EXPECT_EQ(ci.det_type, "Cyl_rect");
    EXPECT_EQ(ci.ipsd, 3);
    EXPECT_FLOAT_EQ(ci.dist_det, 76.5f);
    EXPECT_FLOAT_EQ(ci.wavelength, 1.456f);
    EXPECT_FLOAT_EQ(ci.lambda_min, 0.8f);
    EXPECT_FLOAT_EQ(ci.lambda_max, 3.2f);
    EXPECT_FLOAT_EQ(ci.horiz_size, 120.0f);
    EXPECT_EQ(ci.horiz_pxel, 3);
    EXPECT_EQ(ci.vert_pxel, 2);
    EXPECT_FLOAT_EQ(ci.cathode_gap, 2.5f);
    EXPECT_FLOAT_EQ(ci.gn_centre[1], 5.0f);
    EXPECT_EQ(ci.rot_order, "zyx");
    EXPECT_FLOAT_EQ(ci.tilt_angles[2], 0.3f);
    EXPECT_FLOAT_EQ(ci.d_min, 0.75f);
    EXPECT_FLOAT_EQ(ci.gamma_max, 130.0f);
    EXPECT_FLOAT_EQ(ci.gamma_neg_min, -10.0f);
    EXPECT_FLOAT_EQ(ci.nu_min, -20.0f);
    EXPECT_FLOAT_EQ(ci.x_max, 39.0f);
    EXPECT_FLOAT_EQ(ci.z_min, 2.0f);
    EXPECT_FLOAT_EQ(ci.ub[1][1], 4.0f);
    EXPECT_FLOAT_EQ(ci.ub_inv[2][2], 0.2f);  // the inverse is kept beside a UB matrix read
    EXPECT_FLOAT_EQ(ci.setting[2][0], 7.0f);
    ASSERT_EQ(ci.ang.size(), 2u);
    EXPECT_EQ(ci.ang[1].name, "Omega");
    EXPECT_FLOAT_EQ(ci.ang[0].offset, 0.5f);
    EXPECT_FLOAT_EQ(ci.ang[1].velocity, 1.5f);
    ASSERT_EQ(ci.disp.size(), 1u);
    EXPECT_FLOAT_EQ(ci.disp[0].offset, 0.2f);
    EXPECT_FLOAT_EQ(ci.det_offsets[1], -0.2f);
    EXPECT_FLOAT_EQ(ci.disp_centre[2], 3.0f);
    ASSERT_EQ(ci.range_time.size(), 1u);
    EXPECT_EQ(ci.range_time[0].motor, "Omega");
    ASSERT_EQ(ci.range_time[0].range_time.size(), 2u);
    EXPECT_FLOAT_EQ(ci.range_time[0].range_time[1].second, 2.5f);
    ASSERT_EQ(ci.det_alphas.rows(), 2);
    ASSERT_EQ(ci.det_alphas.cols(), 3);
    EXPECT_FLOAT_EQ(ci.det_alphas(2, 1), 4.0f);
    ASSERT_EQ(ci.resolution_surface.rows(), 2);
    EXPECT_FLOAT_EQ(ci.resolution_surface(2, 2), 0.4f);
}

TEST(CurrentInstrument, DetectorEfficienciesInline) {
    ztest::Scratch_Dir d;
    Read_Current_Instrm(d.Write("a.geo", "DIM_XZ 10 10 2 2\nDET_ALPHAS\n 1.0 1.1\n 0.9 1.2\n"));
    ASSERT_FALSE(ERR_Instrm) << ERR_Instrm_Mess;
    EXPECT_FLOAT_EQ(ci.det_alphas(2, 2), 1.2f);
    Read_Current_Instrm(d.Write("b.geo", "DIM_XZ 10 10 2 2\nDET_ALPHAS\n 1.0 1.1\n 0.9\n"));
    EXPECT_EQ(ERR_Instrm_Mess, "Error in file: " + d.Path() + "b.geo, reading the efficiency of 2D-detector");
    Read_Current_Instrm(d.Write("c.geo", "ALPHA_FILE /no/such/alpha\n"));
    EXPECT_EQ(ERR_Instrm_Mess, "Error the alpha file: /no/such/alpha, does not exist!");
}

TEST(CurrentInstrument, MessagesStopTheReadAndLeaveTheDefaults) {
    ztest::Scratch_Dir d;
    std::string f = d.Write("bad.geo", "NAME first\nANG_LIMITS\n Gamma 0 100 0 1\nNUM_ANG 1\n");
    Read_Current_Instrm(f);
    EXPECT_TRUE(ERR_Instrm);
    EXPECT_EQ(ERR_Instrm_Mess, "Error in file: " + f + ", Number of angular motors missing!");
    EXPECT_FALSE(Current_Instrument_Set);
    EXPECT_EQ(ci.name, "");  // back at the defaults
    EXPECT_EQ(ci.geom, "4C-Diff High-Ch");

    struct Case {
        const char* text;
        const char* tail;
    } cases[] = {
        {"WAVE abc\n", ", reading the wavelength"},
        {"DIST_DET\n", ", reading the distance sample-detector"},
        {"WAVE_LIMITS 1\n", ", reading the wavelength limits"},
        {"DIM_XY 1 2 3\n", ", reading the dimensions of the detector"},
        {"GAPS_DET x y\n", ", reading the gaps between anodes and between cathodes"},
        {"GN_CENTRE 1\n", ", reading Gamma and Nu of detector centre"},
        {"TILT_ANGLES 1 2\n", ", reading the Tilt Angles"},
        {"RESOL none\n", ", reading the resolution d_min value"},
        {"GAM+_LIMITS 1\n", ", reading the Gamma(positive) limits"},
        {"GAM-_LIMITS 1\n", ", reading the Gamma(negative) limits"},
        {"NU_LIMITS\n", ", reading the Nu limits"},
        {"X_LIMITS a b\n", ", reading the X limits"},
        {"Z_LIMITS 3\n", ", reading the Z limits"},
        {"UBMAT\n1 0 0\n0 1 0\n", ", reading the UB-matrix"},
        {"SETTING\n1 0 0\nx\n", ", reading the setting vectors"},
        {"DET_TYPE flat ipsd x\n", ", reading the type of detector (ipsd)"},
        {"NUM_ANG 1\nANG_LIMITS\n Gamma low high\n", ", reading the angular names, limits, offsets and velocities"},
        {"DISP_LIMITS\n", ", Number of displacement motors missing!"},
        {"NUM_DISP 1\nDISP_LIMITS\n Tx 1\n", ", reading the displacement limits"},
        {"DET_OFF 1 2\n", ", reading the detector offsets"},
        {"RANGE_TIME 1\n", ", the number of angular motors is needed before giving range_time values"},
        {"NUM_ANG 1\nRANGE_TIME x\n", ", reading section of pairs range - time"},
        {"NUM_ANG 1\nRANGE_TIME 1\nOmega\n", ", reading name of motor and number of pairs range - time"},
        {"NUM_ANG 1\nRANGE_TIME 1\nOmega 2\n1 2 3\n", ", reading pairs range - time for motor: Omega"},
        {"RESOLUTION_SURFACE x\n", ", reading the dimension of resolution surface of the 2D-detector"},
        {"RESOLUTION_SURFACE 2 2\n1 2 3\n", ", reading the resolution surface of 2D-detector"},
    };
    for (const auto& c : cases) {
        std::string p = d.Write("case.geo", c.text);
        Read_Current_Instrm(p);
        EXPECT_EQ(ERR_Instrm_Mess, "Error in file: " + p + c.tail) << c.text;
        EXPECT_FALSE(Current_Instrument_Set) << c.text;
    }
}

TEST(CurrentInstrument, NoKeywordsAndMissingFile) {
    ztest::Scratch_Dir d;
    Read_Current_Instrm(d.Write("empty.geo", "! only a comment\n\n"));
    EXPECT_FALSE(ERR_Instrm);
    EXPECT_TRUE(Current_Instrument_Set);
    EXPECT_EQ(ci.bl_frame, "z-up");
    EXPECT_FLOAT_EQ(ci.wavelength, 0.5f);
    EXPECT_FLOAT_EQ(ci.nu_min, -15.0f);
    EXPECT_FLOAT_EQ(ci.x_max, 40.0f);
    EXPECT_FLOAT_EQ(ci.ub[0][0], 1.0f);
    EXPECT_FLOAT_EQ(ci.ub[0][1], 0.0f);
    std::string message;
    EXPECT_TRUE(Check_Current_Instrument(message));
    Read_Current_Instrm(d.Path() + "missing.geo");
    EXPECT_EQ(ERR_Instrm_Mess, "Error opening the file: " + d.Path() + "missing.geo");
    EXPECT_FALSE(Check_Current_Instrument(message));
    EXPECT_EQ(message, "Current Instrument not set! (call subroutine: Read_Current_Instrm)");
}

TEST(CurrentInstrument, BuiltInDefaults) {
    Set_Default_Instrument();
    EXPECT_TRUE(Current_Instrument_Set);
    EXPECT_EQ(ci.info, "Default 4-cercles diffractrometer");
    EXPECT_EQ(ci.geom, "4C-Diff High-Ch");
    EXPECT_FLOAT_EQ(ci.wavelength, 0.71f);
    EXPECT_EQ(ci.horiz_pxel, 32);
    EXPECT_EQ(ci.geom_code, 2);
    ASSERT_EQ(ci.ang.size(), 4u);
    EXPECT_FLOAT_EQ(ci.ang[0].max, 130.0f);
    EXPECT_FLOAT_EQ(ci.ang[2].min, 77.0f);
    EXPECT_FLOAT_EQ(ci.ang[2].max, 202.0f);
    Set_Default_Instrument(true);
    EXPECT_EQ(ci.info, "Default Laue diffractrometer");
    EXPECT_EQ(ci.name, "LaueDiff");
    EXPECT_FLOAT_EQ(ci.lambda_min, 0.7f);
    EXPECT_FLOAT_EQ(ci.lambda_max, 5.5f);
    EXPECT_EQ(ci.vert_pxel, 2560);
    EXPECT_EQ(ci.geom_code, 3);
    EXPECT_FLOAT_EQ(ci.ang[0].max, 175.0f);
    Set_Default_Instrument(true, std::make_pair(1.0f, 3.0f));
    EXPECT_FLOAT_EQ(ci.lambda_min, 1.0f);
    EXPECT_FLOAT_EQ(ci.lambda_max, 3.0f);
}

TEST(CurrentInstrument, Directories) {
    ztest::Scratch_Dir d;
    EXPECT_FALSE(Set_Instrm_Directory(nullptr, nullptr));
    EXPECT_EQ(ERR_Instrm_Mess, "A working directory or an instrument name must be at least provided");
    std::string blank = "  ";
    EXPECT_FALSE(Set_Instrm_Directory(&blank, nullptr));
    EXPECT_EQ(ERR_Instrm_Mess, "Provided working directory string is empty");
    EXPECT_FALSE(Set_Instrm_Directory(nullptr, &blank));
    EXPECT_EQ(ERR_Instrm_Mess, "An instrument name must be at least provided");
    std::string work = d.Path() + "nowhere";
    EXPECT_FALSE(Set_Instrm_Directory(&work, nullptr));
    EXPECT_EQ(ERR_Instrm_Mess, "The INSTRM directory: '" + work + "/' doesn't exist");

    ::setenv("NRFDATA", (d.Path() + "absent").c_str(), 1);
    EXPECT_FALSE(Set_Nrf_Data_Directory());
    EXPECT_EQ(ERR_Instrm_Mess, "The NRF directory: '" + d.Path() + "absent/' doesn't exist");
    d.Write("data/kv8/Geometry/geo.txt", "x");
    ::setenv("NRFDATA", d.Path().c_str(), 1);
    ASSERT_TRUE(Set_Nrf_Data_Directory()) << ERR_Instrm_Mess;
    std::string name = "kv8";
    ASSERT_TRUE(Set_Instrm_Directory(nullptr, &name)) << ERR_Instrm_Mess;
    EXPECT_EQ(instrm_directory, d.Path() + "data/kv8/");
    EXPECT_TRUE(Set_Instrm_Geometry_Directory());
    EXPECT_EQ(instrm_geometry_directory, d.Path() + "data/kv8/Geometry/");
    std::string here = d.Path();
    ASSERT_TRUE(Set_Instrm_Directory(&here, &name));
    EXPECT_FALSE(Set_Instrm_Geometry_Directory());
    EXPECT_EQ(ERR_Instrm_Mess, "The INSTRM Geometry directory doesn't exist, current directory assumed");
    EXPECT_EQ(instrm_geometry_directory, "./");
    ::unsetenv("NRFDATA");
}
