// Grayscale of 14 bits in a stream of bits, the lowest first: four pixels in seven bytes.
#include "kernels/decoder.h"
#include "simd/bit_stream.h"

LM_EXPORT_WIDE_DECODER(Mono14p, GrayStream<14>)
