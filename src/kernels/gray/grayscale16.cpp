// Grayscale of 10 to 16 bits in 16-bit little-endian words.
#include "kernels/decoder.h"
#include "simd/samples.h"

LM_EXPORT_WIDE_DECODER(Grayscale16, GraySamples<SingleSample, 2>)
