#include "encode/encode_scene.h"

#include <algorithm>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "encode/layout.h"
#include "encode/readout.h"
#include "frame.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

constexpr std::size_t kWidestGroup = 4;  // pixels that share a chroma pair

// The colours of a mosaic's top left 2 x 2 pixels, row by row.
const char* MosaicOf(unsigned long flags) {
  if ((flags & ConversionFlags::kBayerBG) != 0) return "BGGR";
  if ((flags & ConversionFlags::kBayerRG) != 0) return "RGGB";
  if ((flags & ConversionFlags::kBayerGB) != 0) return "GBRG";
  return "GRBG";
}

std::uint16_t SampleBehind(char filter, const Color16& color) {
  return filter == 'R' ? color.red : filter == 'G' ? color.green : color.blue;
}

template <class Value>
void Widen(std::vector<Value>& values) {
  const std::size_t groups = (values.size() + kWidestGroup - 1) / kWidestGroup;
  values.resize(groups * kWidestGroup, values.back());
}

Line SceneLine(const PixelTypeID& type, const ImageSize& size, unsigned long flags, std::size_t y) {
  const std::size_t chromaPixels = LayoutOf(type).chromaPixels;
  const bool bayer = PixelTypeFactory::FindPixelType(type)->IsBayerPattern();
  const char* const mosaicRow = MosaicOf(flags) + y % 2 * 2;
  Line line;
  line.width = size.width;
  for (std::size_t x = 0; x < size.width; ++x) {
    const Color16 color = SceneColor(size, x, y);
    line.pixels.push_back(color);
    line.samples.push_back(bayer ? SampleBehind(mosaicRow[x % 2], color) : GrayOf(color));
  }
  line.samples = InReadoutOrder(type, std::move(line.samples));
  Widen(line.pixels);
  Widen(line.samples);
  for (std::size_t x = 0; chromaPixels != 0 && x < line.pixels.size(); x += chromaPixels) {
    line.yuv.push_back(NearestYuv(&line.pixels[x], chromaPixels, flags));
  }
  return line;
}

// Places the lines of one plane in a frame, or of several of equal size.
class LinePlacer {
 public:
  LinePlacer(const PixelTypeID& type, const FrameLayout& layout, std::size_t bytes, std::size_t height,
             unsigned long flags)
      : mLayout(layout),
        mBytes(bytes),
        mHeight(height),
        mInterlaced((type & kInterlacedFlag) != 0),
        mDualLines((type & kDualOutputMask) == kDualLines),
        mBottomFirst((flags & ConversionFlags::kFieldOrder) != 0) {}

  void Place(const std::uint8_t* line, std::size_t y, std::uint8_t* plane) const {
    const std::size_t bytes = mLayout.lineBytes;
    if (mDualLines && y / 2 * 2 + 1 < mHeight) {  // a last line without a partner stands alone
      std::uint8_t* const pair = plane + y / 2 * 2 * bytes + y % 2;
      for (std::size_t i = 0; i < bytes; ++i) pair[2 * i] = line[i];
      return;
    }
    // The last line has the byte that others share with the next one to itself.
    const std::size_t offset = Offset(y);
    const bool last = offset + bytes == mLayout.Bytes();
    std::copy_n(line, last ? mBytes - offset : bytes, plane + offset);
  }

 private:
  // The second field begins at half of the frame's bytes: in mid-line if the height is odd. The last line of an odd
  // height has no place in either field then, and would overwrite what is there.
  std::size_t Offset(std::size_t y) const {
    if (!mInterlaced) return y * mLayout.lineBytes;
    const bool second = (y % 2 != 0) != mBottomFirst;
    return (second ? mLayout.lineBytes * mHeight / 2 : 0) + y / 2 * mLayout.lineBytes;
  }

  FrameLayout mLayout;
  std::size_t mBytes;
  std::size_t mHeight;
  bool mInterlaced;
  bool mDualLines;
  bool mBottomFirst;
};

}  // namespace

RawFrame EncodeScene(const PixelTypeID& type, const ImageSize& size, unsigned long flags) {
  const FrameLayout frameLayout = SourceLayout(type, size);
  const Layout& layout = LayoutOf(type);
  const SampleFormat format{layout.bits, (type & kNormalizedFlag) != 0};
  RawFrame frame{type, size, flags, Bytes(RequiredSize(type, size.width, size.height).value_or(0))};
  const LinePlacer placer(type, frameLayout, frame.bytes.size(), size.height, flags);
  const bool interlaced = (type & kInterlacedFlag) != 0;
  const std::size_t lines = interlaced ? size.height / 2 * 2 : size.height;
  const std::size_t planes = std::min<std::size_t>(frameLayout.lines / size.height, 3);

  Bytes encoded((size.width + kWidestGroup) * kMostPixelBytes);
  for (std::size_t y = 0; y < lines; ++y) {
    const Line line = SceneLine(type, size, flags, y);
    layout.encode(line, format, encoded.data());
    const std::size_t planeLineBytes = frameLayout.lineBytes / size.width * line.pixels.size();
    for (std::size_t plane = 0; plane < planes; ++plane) {
      placer.Place(encoded.data() + plane * planeLineBytes, y,
                   frame.bytes.data() + plane * frameLayout.lineBytes * size.height);
    }
  }
  return frame;
}

}  // namespace LmTool
