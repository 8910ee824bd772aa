#pragma once

void serial_write(const char* text);
