#include <iostream>

#include "app/batch/batch_verbs.h"

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    return zendrite::Batch_Main(args, std::cout, std::cerr);
}
