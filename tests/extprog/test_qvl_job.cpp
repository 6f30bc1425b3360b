// The records of the pair-distribution input, in their order and layout.
#include <gtest/gtest.h>

#include "extprog/qvl_job.h"

namespace {

TEST(QvlJob, RecordsInOrderAndRefusals) {
    hxl::PDF_JOB_TYPE job;
    job.spgr = "F m -3 m";
    job.cell = "5.64 5.64 5.64 90 90 90";
    job.atoms = "Na1 Na 0 0 0 0.8 1\n\n  Cl1 Cl 0.5 0.5 0.5 1.1\n";
    job.neutrons = false;
    std::string text, msg;
    ASSERT_TRUE(hxl::Qvl_Job_Text(job, " 01-Jan-2026 10:00:00", text, msg)) << msg;
    EXPECT_EQ(text,
              "PATTERN_1   1.00\n"
              "Title   QVL-file created by Zendrite-2006: 01-Jan-2026 10:00:00\n"
              "!           Rmin    Rstep     Rmax \n"
              "PDF_RANGE    0.5000   0.0100  20.0000\n"
              "QMAX    30.0000\n"
              "DAMP     0.0120\n"
              "BROAD    0.0200\n"
              "JOBTYPE X\n"
              "PHASE_01   1.00\n"
              "DELTAS   0.1000   0.2000\n"
              "Spgr  F m -3 m\n"
              "Cell        5.640000    5.640000    5.640000   90.000000   90.000000   90.000000\n"
              "Atom   Na1    Na       0.00000  0.00000  0.00000  0.80000  1.00000\n"
              "Atom   Cl1    Cl       0.50000  0.50000  0.50000  1.10000  1.00000\n");
    // The file reads back as a structure, and its settings into a job.
    hxl::STRUCTURE_TYPE st;
    ASSERT_TRUE(hxl::Read_Qvl_Structure_Text(text, st, msg)) << msg;
    EXPECT_EQ(st.sg.number, 225);
    EXPECT_EQ(st.atoms[1].mult, 4);
    hxl::PDF_JOB_TYPE back;
    back.neutrons = true;
    back.qmax = 1;
    hxl::Read_Qvl_Job_Settings(text, back);
    EXPECT_FALSE(back.neutrons);
    EXPECT_FLOAT_EQ(back.qmax, 30.0f);
    EXPECT_FLOAT_EQ(back.rmax, 20.0f);
    EXPECT_FLOAT_EQ(back.delta2, 0.2f);
    hxl::Pdf_Job_From_Structure(st, back);
    EXPECT_EQ(back.cell, "5.64 5.64 5.64 90 90 90");
    EXPECT_EQ(back.atoms, "Na1  Na  0  0  0  0.8  1\nCl1  Cl  0.5  0.5  0.5  1.1  1\n");

    for (const char* bad : {"Na1 Na 0 0 zero 0.8 1\n", "Na1 Na 0 0\n", "0 0 0 1 1\n", "", "  \n"}) {
        job.atoms = bad;
        text = "unchanged";
        EXPECT_FALSE(hxl::Qvl_Job_Text(job, "", text, msg)) << bad;
        EXPECT_EQ(msg, "Error reading the atoms panel!") << bad;
        EXPECT_EQ(text, "unchanged");
    }
    job.atoms = "Na1 Na 0 0 0 0.8 1\n";
    job.cell = "5.64 5.64 5.64 90 90";
    EXPECT_FALSE(hxl::Qvl_Job_Text(job, "", text, msg));
    EXPECT_NE(msg.find("six numbers"), std::string::npos);
}

}  // namespace
