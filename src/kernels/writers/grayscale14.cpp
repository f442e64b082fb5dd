// Grayscale14: 16-bit little-endian words of 14 bits; the 8 bits of the pixel are the top ones.
#include "kernels/writers/gray_words.h"

LM_EXPORT_WRITER(StoreGrayscale14, GrayWords<6>)
