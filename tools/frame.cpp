#include "frame.h"

#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

// Every type reaches one of these by a converter that decodes it; an identity would count its buffer's lines.
constexpr PixelTypeID kReachedByAll = 0x420006;
constexpr PixelTypeID kReachedByThatOne = 0x420002;

std::size_t SourcePlanes(const PixelType& type, const PixelConverter& converter) {
  const bool planar = (type.GetTypeID() & kPlanarFlag) != 0;
  return planar ? type.GetPixelByteSize() / converter.GetSourcePixelByteSize() : 1;
}

}  // namespace

FrameLayout SourceLayout(const PixelTypeID& type, const ImageSize& size) {
  const PixelTypeID reached = type == kReachedByAll ? kReachedByThatOne : kReachedByAll;
  const PixelConverter& converter = *PixelTypeFactory::FindConverter(type, reached);
  return {converter.GetSourceLineSize(size.width),
          size.height * SourcePlanes(*PixelTypeFactory::FindPixelType(type), converter)};
}

FrameLayout DestinationLayout(const PixelConverter& converter, const ImageSize& size) {
  const bool planar = (converter.GetDestinationTypeID() & kPlanarFlag) != 0;
  return {converter.GetDestinationLineSize(size.width), size.height * (planar ? 3 : 1)};
}

}  // namespace LmTool
