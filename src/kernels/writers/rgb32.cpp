// RGB32: the bytes red, green, blue, 0.
#include "kernels/writers/interleaved.h"

LM_EXPORT_WRITER(StoreRGB32, Interleaved<First::kRed, 4>)
