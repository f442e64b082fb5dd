// Gray in 16-bit little-endian words.
#include "kernels/writers/gray_words.h"

LM_EXPORT_WIDE_WRITER(StoreGrayWords, GrayWords)
