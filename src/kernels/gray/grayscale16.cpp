// Grayscale of 10 to 16 bits in 16-bit little-endian words.
#include "simd/samples.h"

LM_EXPORT_DECODER(Grayscale16, GraySamples<SingleSample, 2>)
