#include "report.h"

#include <cstdio>

void report(const char* name, double value, int steps) {
    std::printf("%s %.2f, %d steps\n", name, value, steps);
}
