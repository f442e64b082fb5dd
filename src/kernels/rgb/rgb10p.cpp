// RGB and BGR of 10 bits in a stream of bits, the lowest first: four pixels in 15 bytes.
#include "kernels/decoder.h"
#include "kernels/rgb/color_luma.h"
#include "kernels/rgb/exchanged.h"
#include "simd/bit_stream.h"

LM_EXPORT_WIDE_DECODER(RGB10p, ColorStream<10>)
LM_EXPORT_WIDE_DECODER(BGR10p, RedBlueExchanged<ColorStream<10>>)
LM_EXPORT_WIDE_LUMA_DECODER(RGB10p, LumaOf<ColorStream<10>>)
LM_EXPORT_WIDE_LUMA_DECODER(BGR10p, LumaOf<ColorStream<10>, First::kBlue>)
