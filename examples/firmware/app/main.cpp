#include "drivers.h"
#include "version.h"

#include <board.h>

extern "C" void blink(unsigned times);

int main() {
    uart_write(GREETING " on " BOARD_NAME " " FIRMWARE_VERSION);
    blink(BOARD_BUFFER_SIZE);
    return 0;
}
