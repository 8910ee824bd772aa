#include "drivers.h"

int main(void) {
    uart_write(BOARD_NAME);
    return timer_ticks() > BOOT_TIMEOUT;
}
