// RGB and BGR of 12 bits in a stream of bits, the lowest first: two pixels in nine bytes.
#include "kernels/decoder.h"
#include "kernels/rgb/exchanged.h"
#include "simd/bit_stream.h"

LM_EXPORT_WIDE_DECODER(RGB12p, ColorStream<12>)
LM_EXPORT_WIDE_DECODER(BGR12p, RedBlueExchanged<ColorStream<12>>)
