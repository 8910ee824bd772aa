#include "gauge.h"

int gaugeSteps(double reading) {
    return (int)(reading * GAUGE_STEPS_PER_UNIT);
}
