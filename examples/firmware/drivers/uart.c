#include "board.h"
#include "drivers.h"

static char uart_buffers[UART_COUNT][BOARD_BUFFER_SIZE];

void uart_write(const char *text) {
    for (unsigned i = 0; text[i] && i < BOARD_BUFFER_SIZE; ++i) uart_buffers[0][i] = text[i];
}
