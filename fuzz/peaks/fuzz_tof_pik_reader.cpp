// Random TOF job files through the reader: a text or a job, never a crash; a
// failed read leaves the job alone, and a job read writes and reads back to
// the same text unless a value overflowed its field.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "peaks/timefit_pik.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 65536) return 0;
    const std::string text(reinterpret_cast<const char*>(data), size);
    (void)hxl::Pik_Text_Is_Tof(text);
    hxl::TOF_JOB_TYPE job;
    job.title = "kept";
    std::string message;
    if (!hxl::Read_Tof_Pik_Text(text, job, message)) {
        if (message.empty() || job.title != "kept") std::abort();
        return 0;
    }
    if (job.nbac > 120 || job.npeak > 400 || job.bx.size() != job.nbac || job.pk.size() != job.npeak) std::abort();
    const std::string once = hxl::Tof_Pik_Text(job);
    if (once.find('*') != std::string::npos) return 0;  // a value too wide for its field is written as stars
    hxl::TOF_JOB_TYPE again;
    if (!hxl::Read_Tof_Pik_Text(once, again, message)) std::abort();
    if (hxl::Tof_Pik_Text(again) != once) std::abort();
    return 0;
}
