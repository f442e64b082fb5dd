// RGB48: the 16-bit little-endian words red, green, blue.
#include "kernels/writers/interleaved_words.h"

namespace LmImagingLib::LM_ISA {
namespace {

using RGB48Writer = InterleavedWords<First::kRed, 3>;

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_WRITER(StoreRGB48, RGB48Writer)
