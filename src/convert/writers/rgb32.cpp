// RGB32: the bytes red, green, blue, 0.
#include "convert/writers/interleaved.h"

LM_EXPORT_WRITER(StoreRGB32, Interleaved<First::kRed, 4>)
