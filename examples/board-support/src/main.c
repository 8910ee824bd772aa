#include "port.h"
#include "serial/serial.h"

#include <stdio.h>

int main(void) {
    port_set_led(1);
    serial_write("hello\n");
#ifdef DEVICE_KH256
    puts("KH256");
#else
    puts("KH64");
#endif
    printf("%d bytes of flash\n", FLASH_SIZE);
    return 0;
}
