#include "app/batch/batch_format.h"

#include "patterns/format_guess.h"
#include "patterns/format_table.h"
#include "support/fixed_text.h"

namespace zendrite {

std::string Batch_Mode_List() {
    std::string s;
    for (const auto& r : hxl::Format_Rows()) s += (s.empty() ? "" : ", ") + std::string(r.mode);
    return s + ", auto";
}

bool Batch_Format_Option(const std::string& verb, const std::string& mode, BATCH_FORMAT& format, std::ostream& err) {
    format = BATCH_FORMAT{};
    if (hxl::Same(hxl::Lower(hxl::Trim(mode)), "auto")) {
        format.automatic = true;
        return true;
    }
    format.forced = hxl::Format_Row_From_Mode(mode);
    if (format.forced == 0)
        err << "zendrite-batch " << verb << ": unknown format " << mode << " (one of " << Batch_Mode_List() << ")\n";
    return format.forced != 0;
}

int Batch_Format_Row(const std::string& file, const BATCH_FORMAT& format, std::ostream& err) {
    if (format.forced) return format.forced;
    if (format.automatic) {
        const hxl::FORMAT_GUESS_TYPE g = hxl::Guess_Pattern_Format(hxl::Trim(file));
        if (g.row == 0) {
            err << "ERROR in file: " << file << " no format guessed: " << g.reason << "; give --format MODE\n";
            return 0;
        }
        err << "guess: " << file << ": " << hxl::Format_Row(g.row).mode
            << (g.library.empty() ? std::string() : " (" + g.library + ")") << ": " << g.reason << "\n";
        return g.row;
    }
    const int row = hxl::Format_Row_From_Extension(hxl::Upper_Extension(file));
    if (row == 0)
        err << "ERROR in file: " << file << " the format of this extension is not known: give --format MODE ("
            << Batch_Mode_List() << "; auto guesses it from the content)\n";
    return row;
}

}  // namespace zendrite
