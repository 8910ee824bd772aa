#include "gauge.h"
#include "report.h"

int main() {
    const double readings[] = {1.5, 2.0, 2.5};
    report("mean", gaugeMean(readings, 3), gaugeSteps(2.0));
    return 0;
}
