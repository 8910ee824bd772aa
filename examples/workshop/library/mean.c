#include "gauge.h"

double gaugeMean(const double* readings, int count) {
    double sum = 0;
    for (int i = 0; i < count; ++i) sum += readings[i];
    return count > 0 ? sum / count : 0;
}
