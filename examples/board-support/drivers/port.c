#include "port.h"

static unsigned data;

void port_set_led(int on) {
    data = on ? data | 8u : data & ~8u;
}
