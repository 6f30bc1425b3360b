#pragma once
// The verbs of zendrite-batch. Each verb lives in a file of its own and
// registers itself, so that adding one touches no other file.
#include <ostream>
#include <string>
#include <vector>

namespace zendrite {

struct Batch_Verb {
    const char* name;
    const char* usage;  // the line shown by --help, after the program name
    const char* help;   // what the verb does, a few lines
    int (*run)(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
};

bool Register_Batch_Verb(const Batch_Verb& verb);
const std::vector<Batch_Verb>& Batch_Verbs();

// Runs the program with its arguments (without the program name); the exit status.
int Batch_Main(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace zendrite
