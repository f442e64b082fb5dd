// Grayscale of 10 or 12 bits packed: p0 in bits 0-11 and p1 in bits 12-23 of three bytes, lowest first.
#include "kernels/decoder.h"
#include "simd/bit_stream.h"

LM_EXPORT_WIDE_DECODER(Grayscale12Packed, GrayStream<12>)
