#include "types/type_name.h"

namespace LmImagingLib {

namespace {

struct FieldName {
  PixelTypeID value;
  const char* name;
};

constexpr FieldName kFlagNames[] = {{kNormalizedFlag, ", Normalized"},
                                    {kInterlacedFlag, ", Interlaced"},
                                    {kPackedFlag, ", Packed"},
                                    {kPlanarFlag, ", Planar"}};

constexpr FieldName kDualOutputNames[] = {
    {kDualLeftRight, ", Dual Left+Right output"},
    {kDualLeftRightInverted, ", Dual Left+Right Inverted output"},
    {kDualLeftInvertedRight, ", Dual Left Inverted+Right output"},
    {kDualLeftInvertedRightInverted, ", Dual Left Inverted+Right Inverted output"},
    {kDualLines, ", Dual Lines output"}};

const char* ColorSpaceName(const PixelTypeID& id, const PixelType& type) {
  switch (id & kColorSpaceMask) {
    case kColorSpaceGrayscale:
      return "Grayscale";
    case kColorSpaceRGB:
      return type.IsBayerPattern() ? "Bayer RGB" : "RGB";
    case kColorSpaceYUV:
      return "YUV";
    default:
      return "Unknown Colorspace";
  }
}

}  // namespace

std::string ComposeTypeName(const PixelTypeID& id, const PixelType& type) {
  // Applications store these names, so the missing blank before the bit count is part of them.
  std::string name = ColorSpaceName(id, type) + std::to_string(type.GetPixelBitSize()) + "-bits";
  for (const FieldName& flag : kFlagNames) {
    if ((id & flag.value) != 0) name += flag.name;
  }
  for (const FieldName& mode : kDualOutputNames) {
    if ((id & kDualOutputMask) == mode.value) name += mode.name;
  }
  return name;
}

}  // namespace LmImagingLib
