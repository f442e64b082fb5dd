// BGR64: the 16-bit little-endian words blue, green, red, 0.
#include "kernels/writers/interleaved_words.h"

namespace LmImagingLib::LM_ISA {
namespace {

using BGR64Writer = InterleavedWords<First::kBlue, 4>;

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_WRITER(StoreBGR64, BGR64Writer)
