// RGB24: the bytes red, green, blue.
#include "kernels/writers/interleaved.h"

LM_EXPORT_WRITER(StoreRGB24, Interleaved<First::kRed, 3>)
