#include "converters/chain.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <typeinfo>

#include "converters/demosaic_method.h"
#include "converters/library_converter.h"
#include "walk/lines.h"

namespace LmImagingLib {

namespace {

/// Room for some lines of the intermediate image: inside, unless they are very long or many. It begins as zeros.
class Band {
 public:
  Band(std::size_t lineBytes, std::uint32_t lines, std::uint32_t reach)
      : mLines(static_cast<std::uint32_t>(std::max<std::size_t>(
            LeastLines(reach), std::min<std::size_t>(kInsideBytes / lineBytes, lines + 2 * reach)))) {
    const std::size_t bytes = mLines * lineBytes;
    if (bytes <= kInsideBytes) {
      std::memset(mInside, 0, bytes);
    } else {
      mOutside = std::make_unique<std::uint8_t[]>(bytes);
    }
  }

  std::uint8_t* Data() { return mOutside != nullptr ? mOutside.get() : mInside; }
  std::uint32_t Lines() const { return mLines; }

 private:
  // The second stage begins anew with each band: what it reads above and below should be few of its lines.
  static constexpr std::uint32_t LeastLines(std::uint32_t reach) { return reach > 1 ? 8 * reach : 2 * reach + 2; }

  static constexpr std::size_t kInsideBytes = 49152;

  std::uint32_t mLines;
  std::unique_ptr<std::uint8_t[]> mOutside;
  alignas(64) std::uint8_t mInside[kInsideBytes];
};

}  // namespace

ConverterStages StagesOf(const PixelConverter& converter) {
  // A class derived from the chain may do anything in between. Types are compared by their names, which takes longer.
  if (AsLibraryConverter(converter) != nullptr || typeid(converter) != typeid(ComplexConverter)) {
    return {converter, nullptr};
  }
  const auto& chain = static_cast<const ComplexConverter&>(converter);
  return {*chain.mFirst, chain.mSecond};
}

BandedChain::BandedChain(const ConverterStages& stages) {
  if (stages.second == nullptr) return;
  mFirst = AsLibraryConverter(stages.first);
  const LibraryConverter* const second = AsLibraryConverter(*stages.second);
  if (mFirst != nullptr && mFirst->Traits().destinationPlanes == 1) mSecond = second;
}

bool BandedChain::SkipsIntermediate(const Frame& frame) const {
  return mFirst->Rows() != nullptr && mSecond->Traits().demosaics && FiltersFirst(frame);
}

void BandedChain::ConvertLines(const Frame& frame, std::uint32_t first, std::uint32_t end) const {
  if (first >= end) return;
  const SourceType* const rows = mFirst->Rows();
  if (rows != nullptr && mSecond->ConvertRows(*rows, frame, first, end)) return;

  // Counted in lines of the intermediate image from here on.
  const std::uint32_t perLine = mSecond->SourceLinesPerLine(frame.flags);
  first *= perLine;
  end *= perLine;
  const std::size_t lineBytes = std::size_t{mFirst->GetDestinationPixelByteSize()} * frame.sourceWidth;
  const auto step = static_cast<std::uint32_t>(mSecond->GetLinesPerStep());
  // A rest of fewer lines than a step needs the lines above it.
  const std::uint32_t reach = std::max(mSecond->Reach(frame.flags), step - 1);
  Band band(std::max<std::size_t>(lineBytes, 1), end - first, reach);
  Frame in = frame;
  in.destination = band.Data();
  in.destinationLine = lineBytes;
  in.destinationFirst = first - std::min(first, reach);
  in.pixels = frame.sourceWidth;
  in.contained = true;
  in.streams = false;
  Frame out = frame;
  out.source = band.Data();
  out.sourceLine = lineBytes;
  out.interlaced = false;
  out.fetchAhead = out.fetchMovesAhead = 0;
  std::uint32_t converted = in.destinationFirst;  // lines of the intermediate image up to here are there
  while (first < end) {
    const std::uint32_t room = (band.Lines() - 2 * reach) / step * step;
    const std::uint32_t next = first + std::min(room, end - first);
    const std::uint32_t needed = next + std::min(reach, frame.sourceHeight - std::min(next, frame.sourceHeight));
    for (std::uint32_t line = converted; line < needed; ++line) {
      if (SourceLineAt(in, line) == nullptr) std::memset(DestinationLineAt(in, line), 0, lineBytes);
    }
    mFirst->ConvertLines(in, converted, needed);
    converted = needed;
    out.sourceFirst = in.destinationFirst;
    mSecond->ConvertLines(out, first / perLine, next / perLine);
    // The next band begins with the lines above it, which are there.
    const std::uint32_t kept = next - std::min(next, reach);
    std::memmove(band.Data(), DestinationLineAt(in, kept), (converted - kept) * lineBytes);
    in.destinationFirst = kept;
    first = next;
  }
}

}  // namespace LmImagingLib
