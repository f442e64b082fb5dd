#pragma once

#include <algorithm>

#include "formats/source_type.h"
#include "formats/yuv_matrices.h"
#include "walk/frame.h"

namespace LmImagingLib {

/// Decodes the lines of images in colour into channels, strip by strip. Pixels that a layout leaves out are left out.
template <class Sample>
class LineDecoder {
 public:
  LineDecoder(const SourceType& source, const Frame& frame) : mSource(source), mFrame(frame) {
    const YuvMatrix* const matrix = MatrixOf(frame.flags, false);
    mDecode = Layout().decode.template Of<Sample>().Active();
    if constexpr (sizeof(Sample) == 1) {
      if (matrix != nullptr && Layout().decodeByMatrix.of[0] != nullptr) {
        mDecode = Layout().decodeByMatrix.Active();
        mMatrix = matrix;
      }
    }
  }

  /// Calls `use` with the channels of some pixels, at most those of a strip, their number, and the first one's place.
  template <class Use>
  void ForEachStrip(const std::uint8_t* line, const Use& use) const {
    Strip<Sample> strip;
    const Room<Sample> room{strip.red, strip.green, strip.blue};
    const std::uint32_t rest = Layout().Rest(mFrame.pixels);
    const std::size_t whole = mFrame.pixels - rest;
    const SourceLines lines = LinesAt(line);
    for (std::size_t at = 0; at < whole; at += kStripPixels) {
      const std::size_t count = std::min(kStripPixels, whole - at);
      use(mDecode(lines, at, count, room), count, at);
    }
    // A single pixel of 4:1:1 has no chroma.
    if (!HasLastGroup(Layout(), mFrame.pixels) || (Layout().groups == WholeGroups::kYuv411 && rest == 1)) return;
    std::uint8_t group[kMostGroupBytes] = {};
    const std::size_t offset = whole / Layout().groupPixels * (Layout().groupBits / 8);
    CopyLastGroup(Layout(), rest, line + offset,
                  static_cast<std::size_t>(LineBytesOf(Layout(), mFrame.pixels)) - offset, group);
    use(mDecode(LinesAt(group), 0, Layout().groupPixels, room), std::size_t{rest}, whole);
  }

 private:
  const Format& Layout() const { return *mSource.format; }
  SourceLines LinesAt(const std::uint8_t* line) const {
    SourceLines lines = mSource.Lines<Sample>(line, mFrame.SourcePlane(), mFrame.fetchAhead);
    lines.matrix = mMatrix;
    return lines;
  }

  const SourceType& mSource;
  const Frame& mFrame;
  DecodeKernel<Sample>* mDecode = nullptr;
  const YuvMatrix* mMatrix = nullptr;
};

}  // namespace LmImagingLib
