#pragma once
// The format of an input file for the verbs that read pattern files: an
// explicit --format MODE always wins, "--format auto" guesses from the
// content, and without --format the extension decides.
#include <ostream>
#include <string>

namespace zendrite {

struct BATCH_FORMAT {
    int forced = 0;          // the row of --format MODE, 0 without
    bool automatic = false;  // --format auto
};

// The mode words for messages, "auto" included.
std::string Batch_Mode_List();

// Reads the MODE of --format into `format`; false, with the verb's message on `err`, for an unknown one.
bool Batch_Format_Option(const std::string& verb, const std::string& mode, BATCH_FORMAT& format, std::ostream& err);

// The row for one file, or 0 with an "ERROR in file: " line on `err`. A guess
// writes one line on `err`: the file, the guessed mode and the reason.
int Batch_Format_Row(const std::string& file, const BATCH_FORMAT& format, std::ostream& err);

}  // namespace zendrite
