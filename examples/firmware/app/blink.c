#include "drivers.h"

void blink(unsigned times) {
    while (times-- > 0) timer_ticks();
}
