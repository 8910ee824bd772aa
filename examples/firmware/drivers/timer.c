#include "drivers.h"

unsigned timer_ticks(void) {
    static unsigned ticks;
    return ++ticks;
}
