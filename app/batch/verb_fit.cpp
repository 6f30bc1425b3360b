// zendrite-batch fit: the constant-wavelength profile fit without a window,
// from a job file or from the automatic search and the dialog's starting rules.
#include <cstdio>
#include <string>
#include <vector>

#include "app/batch/arith_batch_io.h"
#include "app/batch/batch_verbs.h"
#include "peaks/arcfit_auto.h"
#include "peaks/arcfit_input.h"
#include "peaks/arcfit_model.h"
#include "peaks/arcfit_run.h"
#include "peaks/peak_lists.h"
#include "peaks/pik_file.h"
#include "peaks/search_points.h"
#include "peaks/timefit_pik.h"
#include "peaks/timefit_run.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace zendrite {
namespace {

struct FIT_OPTIONS {
    std::string file, pik;
    bool range = false;
    float xmin = 0, xmax = 0;
    int cycles = -1, answers = 10;
    float threshold = 0.02f;
    float dtt = 0;  // --dtt: the d to TOF coefficient; 0 when not given
};

int usage(std::ostream& err, const std::string& what) {
    err << "zendrite-batch fit: " << what << "\n";
    return 2;
}

int parse(const std::vector<std::string>& args, FIT_OPTIONS& o, std::ostream& err) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const bool has = i + 1 < args.size();
        if (a == "--pik") {
            if (!has) return usage(err, "--pik needs a job file");
            o.pik = args[++i];
        } else if (a == "--range") {
            if (i + 2 >= args.size() || !hxl::Parse_Real(args[i + 1], o.xmin) || !hxl::Parse_Real(args[i + 2], o.xmax) ||
                !(o.xmin < o.xmax))
                return usage(err, "--range needs two numbers XMIN < XMAX");
            o.range = true;
            i += 2;
        } else if (a == "--cycles") {
            if (!has || !hxl::Parse_Integer(args[i + 1], o.cycles) || o.cycles < 1)
                return usage(err, "--cycles needs a whole number, 1 or more");
            ++i;
        } else if (a == "--threshold") {
            if (!has || !hxl::Parse_Real(args[i + 1], o.threshold) || !(o.threshold > 0))
                return usage(err, "--threshold needs a positive number");
            ++i;
        } else if (a == "--dtt") {
            if (!has || !hxl::Parse_Real(args[i + 1], o.dtt) || !(o.dtt > 0))
                return usage(err, "--dtt needs a positive number");
            ++i;
        } else if (a == "--continue") {
            if (!has || !hxl::Parse_Integer(args[i + 1], o.answers) || o.answers < 0)
                return usage(err, "--continue needs a whole number, 0 or more");
            ++i;
        } else if (hxl::Starts_With(a, "--")) {
            return usage(err, "unknown option " + a);
        } else if (o.file.empty()) {
            o.file = a;
        } else {
            return usage(err, "give one pattern file");
        }
    }
    if (o.file.empty()) return usage(err, "give one pattern file");
    return 0;
}

void Print_Peaks(std::ostream& out, const std::vector<hxl::ARC_PEAK_RESULT_TYPE>& peaks) {
    char line[200];
    for (const auto& k : peaks) {
        std::snprintf(line, sizeof line, "%12.5f %14.3f %10.5f %8.4f   %10.5f %12.3f %10.5f %8.4f\n", double(k.pos),
                      double(k.area), double(k.fwhm), double(k.eta), double(k.s_pos), double(k.s_area),
                      double(k.s_fwhm), double(k.s_eta));
        out << line;
    }
}

// The time-of-flight fit: the job from the file or the automatic start, the
// d to TOF coefficient from --dtt, else the job, else the pattern.
int run_tof(const FIT_OPTIONS& o, const hxl::DIFFRACTION_PATTERN_TYPE& p, const hxl::ARC_DATA_TYPE& data,
            hxl::ARC_FIT_OPTIONS_TYPE& fo, const std::string& pik, std::ostream& out, std::ostream& err) {
    hxl::TOF_JOB_TYPE job;
    std::string message;
    if (!o.pik.empty()) {
        hxl::PIK_JOB_TYPE cw;
        bool tof = false;
        if (!hxl::Read_Any_Pik(o.pik, cw, job, tof, message)) {
            err << message << "\n";
            return 1;
        }
        if (!tof) {
            err << "The job file " << o.pik << " is a constant-wavelength job: the pattern is time of flight\n";
            return 1;
        }
        if (o.range) job.tof_init = o.xmin, job.tof_fin = o.xmax;
        if (o.cycles > 0) job.ncyc = o.cycles;
    } else {
        hxl::PIK_JOB_TYPE start;
        if (!hxl::Arc_Automatic_Job(p, data, o.range ? o.xmin : p.x(1), o.range ? o.xmax : p.x(p.npts),
                                    o.cycles > 0 ? o.cycles : 30, o.threshold, start, message)) {
            err << message << "\n";
            return 1;
        }
        hxl::Tof_Job_From_Start(start, 0, job);
    }
    if (o.dtt > 0) job.dtt = o.dtt;
    else if (!(job.dtt > 0)) job.dtt = p.lambda1;  // Dtt1 of a TOF pattern
    if (!(job.dtt > 0)) {
        err << "The d to TOF coefficient is not given by " << o.file << (o.pik.empty() ? "" : " nor by the job file")
            << ": give it with --dtt VALUE\n";
        return 1;
    }
    hxl::TOF_FIT_RESULT_TYPE result;
    if (!hxl::Tof_Fit(job, data, fo, result, message)) {
        err << message << "\n";
        return 1;
    }
    if (!hxl::Write_Tof_Pik(pik, result.job, message)) {
        err << message << "\n";
        return 1;
    }
    char line[200];
    std::snprintf(line, sizeof line, " => Final   Chi2:%15.5f\n", double(result.chi2));
    out << result.info << "\n" << line;
    for (const auto& k : result.peaks) {
        std::snprintf(line, sizeof line, "%12.4f %14.3f %10.4f %9.5f %9.5f %8.4f %9.5f   %9.4f %12.3f\n", double(k.pos),
                      double(k.inten), double(k.fwhm), double(k.alpha), double(k.beta), double(k.eta), double(k.d),
                      double(k.s_pos), double(k.s_inten));
        out << line;
    }
    return 0;
}

int run_fit(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    FIT_OPTIONS o;
    if (const int status = parse(args, o, err)) return status;
    hxl::DIFFRACTION_PATTERN_TYPE p;
    if (!Batch_Read_Pattern(o.file, p, err)) return 1;
    if (p.npts < 2) {
        err << "ERROR Opening file: " << o.file << "npts<1\n";
        return 1;
    }
    const hxl::ARC_DATA_TYPE data = hxl::Arc_Data_From_Pattern(p);
    // The X unit chooses the fit, as the menu does.
    const std::string unit = hxl::Lower(hxl::Trim(p.scat_var));
    const bool tof = unit == "tof";
    if (!tof && unit != "2theta" && unit != "omega" && unit != "distance" && unit != "r.l.u.") {
        err << "Fitting procedure is not available for this type of data\n";
        return 1;
    }

    hxl::PIK_JOB_TYPE job;
    std::string message, pik = o.pik;
    if (tof) {
        // its job is made by run_tof
    } else if (!o.pik.empty()) {
        if (!hxl::Read_Pik(o.pik, job, message)) {
            err << message << "\n";
            return 1;
        }
        if (o.range) job.ang_init = o.xmin, job.ang_fin = o.xmax;
        if (o.cycles > 0) job.ncyc = o.cycles;
    } else if (!tof && !hxl::Arc_Automatic_Job(p, data, o.range ? o.xmin : p.x(1), o.range ? o.xmax : p.x(p.npts),
                              o.cycles > 0 ? o.cycles : 30, o.threshold, job, message)) {
        err << message << "\n";
        return 1;
    }

    const std::string::size_type slash = o.file.find_last_of('/');
    hxl::ARC_FIT_OPTIONS_TYPE fo;
    fo.folder = slash == std::string::npos ? "" : o.file.substr(0, slash);
    std::string base = slash == std::string::npos ? o.file : o.file.substr(slash + 1);
    if (const auto dot = base.find_last_of('.'); dot != std::string::npos && dot > 0) base.erase(dot);
    fo.stem = base;
    if (pik.empty()) pik = hxl::Join_Folder(fo.folder, base + ".pik");
    int answers = o.answers;
    fo.ask = [&answers](const std::string&) { return answers-- > 0; };
    if (tof) return run_tof(o, p, data, fo, pik, out, err);

    hxl::ARC_FIT_RESULT_TYPE result;
    bool fitted;
    if (o.pik.empty()) {
        // From the automatic start the list is completed and pruned by the fit itself.
        hxl::ARC_AUTO_OPTIONS_TYPE ao;
        ao.on_round = [&answers, &o](int) { answers = o.answers; };
        hxl::ARC_AUTO_REPORT_TYPE report;
        fitted = hxl::Arc_Auto_Fit(job, data, fo, ao, result, report, message);
    } else {
        fitted = hxl::Arc_Fit(job, data, fo, result, message);
    }
    if (!fitted) {
        err << message << "\n";
        return 1;
    }
    if (!hxl::Write_Pik(pik, result.job, message)) {
        err << message << "\n";
        return 1;
    }
    char chi2[64];
    std::snprintf(chi2, sizeof chi2, " => Final   Chi2:%15.5f\n", double(result.chi2));
    out << result.info << "\n" << chi2;
    Print_Peaks(out, result.peaks);
    return 0;
}

const bool registered = Register_Batch_Verb(
    {"fit", "fit FILE [--pik JOB.pik] [--range XMIN XMAX] [--cycles N] [--continue N] [--threshold T] [--dtt D]",
     "      the constant-wavelength profile fit of FILE: the job is read from\n"
     "      JOB.pik, or built by the automatic search over the range with the\n"
     "      dialog's starting rules (T: the search's peak threshold), then\n"
     "      completed from the difference curve and pruned of peaks the fit\n"
     "      cannot support, refitting until the list settles; \"continue?\" is\n"
     "      answered Yes at most N times per fit\n"
     "      (10); writes FILE_pf.out, LM_fit.xy and the job file, and prints the\n"
     "      stop text, the final chi2 and per peak: position, intensity, FWHM,\n"
     "      eta and their standard deviations",
     run_fit});

}  // namespace
}  // namespace zendrite
