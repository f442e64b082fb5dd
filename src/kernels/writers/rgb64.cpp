// RGB64: the 16-bit little-endian words red, green, blue, 0.
#include "kernels/writers/interleaved_words.h"

namespace LmImagingLib::LM_ISA {
namespace {

using RGB64Writer = InterleavedWords<First::kRed, 4>;

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_WRITER(StoreRGB64, RGB64Writer)
