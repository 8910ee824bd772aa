#pragma once

/// Prints a reading and its steps.
void report(const char* name, double value, int steps);
