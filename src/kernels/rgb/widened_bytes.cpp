// Colours of 24 bits to the same of 48: each byte becomes a word, wherever it is in its pixel.
#include "kernels/writers/gray_words.h"

namespace LmImagingLib::LM_ISA {

DirectKernel Keep24To48;
void Keep24To48(const SourceLines& in, std::size_t from, std::size_t count, const TargetLine* targets,
                std::size_t first) {
  const std::uint8_t* const bytes = in.line[0] + 3 * from;
  StoreWide<GrayWords, std::uint8_t>({bytes, bytes, bytes}, nullptr, 3 * count, *targets, 3 * first);
}

}  // namespace LmImagingLib::LM_ISA
