// BGR48: the 16-bit little-endian words blue, green, red.
#include "kernels/writers/interleaved_words.h"

namespace LmImagingLib::LM_ISA {
namespace {

using BGR48Writer = InterleavedWords<First::kBlue, 3>;

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_WRITER(StoreBGR48, BGR48Writer)
