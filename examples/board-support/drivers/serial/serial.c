#include "serial/serial.h"

#include <stdio.h>

void serial_write(const char* text) {
    fputs(text, stdout);
}
