#pragma once

void port_set_led(int on);
