#pragma once

#ifdef __cplusplus
extern "C" {
#endif

void uart_write(const char* text);
unsigned timer_ticks(void);

#ifdef __cplusplus
}
#endif
