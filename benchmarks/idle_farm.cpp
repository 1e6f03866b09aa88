// Keeps so many idle processes alive until its standard input ends: the load that scripts/compare puts under
// every monitor.

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "benchmarks/IdleFarm.h"

int main(int argc, char** argv) {
    const varnet::IdleFarm farm(argc > 1 ? std::atoi(argv[1]) : 0);
    std::printf("%zu\n", farm.size());
    std::fflush(stdout);
    char byte = 0;
    while (read(STDIN_FILENO, &byte, 1) > 0) {
    }
}
