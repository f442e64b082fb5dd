// Grayscale of 10 bits in a stream of bits, the lowest first: four pixels in five bytes.
#include "kernels/decoder.h"
#include "simd/bit_stream.h"

LM_EXPORT_WIDE_DECODER(Mono10p, GrayStream<10>)
