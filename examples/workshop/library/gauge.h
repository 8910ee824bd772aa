#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/** The mean of `count` readings; 0 when there are none. */
double gaugeMean(const double* readings, int count);

/** A reading in steps of the scale. */
int gaugeSteps(double reading);

#ifdef __cplusplus
}
#endif
