// Formats and sizes, for C.
#include <memory>

#include "LmImagingLib/PFNC.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "LmImagingLib/V4L2.h"
#include "c/structs.h"
#include "image/refusal.h"

namespace LmImagingLib::C {

namespace {

constexpr unsigned long kLayouts =
    ConversionFlags::kBayerGR | ConversionFlags::kBayerGB | ConversionFlags::kBayerRG | ConversionFlags::kBayerBG;

std::string HexID(const PixelTypeID& id) { return Hex(static_cast<std::uint64_t>(id)); }

[[noreturn]] void ReportNone(std::string message) { Refuse(std::move(message), LMI_NOT_FOUND); }

const V4L2Format* FourccOf(const PixelTypeID& type, unsigned long flags) {
  for (std::size_t i = 0; const V4L2Format* const format = EnumV4L2(i); ++i) {
    if (format->type == type && format->flags == flags) return format;
  }
  return nullptr;
}

/// A format under all its names. Those that are given win over others of the same type.
ConversionResult GiveFormat(const PixelTypeID& type, unsigned long flags, const PFNCFormat* pfnc,
                            const V4L2Format* fourcc, LmiFormat* format) {
  const PixelType& registered = *PixelTypeFactory::FindPixelType(type);
  // A mosaic without a layout has no name of a camera.
  const bool isNamed = !registered.IsBayerPattern() || (flags & kLayouts) != 0;
  if (isNamed && pfnc == nullptr) pfnc = FindPFNC(type, flags);
  // A fourcc says neither the range nor the matrix of YUV.
  if (isNamed && fourcc == nullptr) fourcc = FourccOf(type, flags & kLayouts);
  LmiFormat found{};
  found.type = type;
  found.name = PixelTypeFactory::GetPixelTypeName(type);
  found.flags = static_cast<std::uint32_t>(flags);
  found.isMosaic = registered.IsBayerPattern() ? 1 : 0;
  found.sampleDepth = SampleDepth(type).value_or(0);
  if (pfnc != nullptr) {
    found.pfncName = pfnc->name;
    found.pfnc = pfnc->code;
  }
  if (fourcc != nullptr) {
    found.fourccName = fourcc->name;
    found.fourcc = fourcc->code;
  }
  Give(found, format);
  return {};
}

ConversionResult GiveFormat(const PFNCFormat& pfnc, LmiFormat* format) {
  return GiveFormat(pfnc.type, pfnc.flags, &pfnc, nullptr, format);
}

ConversionResult GiveFormat(const V4L2Format& fourcc, LmiFormat* format) {
  return GiveFormat(fourcc.type, fourcc.flags, nullptr, &fourcc, format);
}

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool Equal(const char* a, const char* b, bool inAnyCase) {
  for (; *a != 0 && (inAnyCase ? Lower(*a) == Lower(*b) : *a == *b); ++a, ++b) {
  }
  return *a == 0 && *b == 0;
}

const V4L2Format* FindFourccNamed(const char* name, bool inAnyCase) {
  const V4L2Format* found = nullptr;
  for (std::size_t i = 0; const V4L2Format* const format = EnumV4L2(i); ++i) {
    if (!Equal(format->name, name, inAnyCase)) continue;
    if (found != nullptr) {
      ReportNone("'" + std::string(name) + "' is several fourccs in other cases: '" + found->name + "' and '" +
                 format->name + "'");
    }
    found = format;
  }
  return found;
}

std::unique_ptr<const PixelType> TypeAt(std::size_t index) {
  return std::unique_ptr<const PixelType>(PixelTypeFactory::CreatePixelType(Narrow(index), {}));
}

PixelTypeID FindTypeNamed(const char* name) {
  PixelTypeID found = 0;
  for (std::size_t i = 0; const auto type = TypeAt(i); ++i) {
    const PixelTypeID id = type->GetTypeID();
    if (!Equal(PixelTypeFactory::GetPixelTypeName(id), name, true)) continue;
    if (found != 0)
      ReportNone("'" + std::string(name) + "' names several types: " + HexID(found) + " and " + HexID(id));
    found = id;
  }
  return found;
}

ConversionResult FindNamed(const char* name, LmiFormat* format) {
  // The order of the tool: names of cameras first, and case only where nothing else is left.
  const PFNCResult pfnc = FindPFNC(name);
  if (pfnc) return GiveFormat(*pfnc.format, format);
  if (const V4L2Format* const fourcc = FindFourccNamed(name, false)) return GiveFormat(*fourcc, format);
  if (const PixelTypeID type = FindTypeNamed(name); type != 0) return GiveFormat(type, 0, nullptr, nullptr, format);
  if (const V4L2Format* const fourcc = FindFourccNamed(name, true)) return GiveFormat(*fourcc, format);
  ReportNone("no format is named '" + std::string(name) + "': " + pfnc.reason);
}

}  // namespace

}  // namespace LmImagingLib::C

using namespace LmImagingLib;
using namespace LmImagingLib::C;

LmiCode lmiFindFormat(const char* name, LmiFormat* format) {
  return Call([&] {
    RequirePointer(name, "name");
    CheckStruct(format, "format");
    return FindNamed(name, format);
  });
}

LmiCode lmiFindFormatByType(int64_t type, uint32_t flags, LmiFormat* format) {
  return Call([&] {
    CheckStruct(format, "format");
    if (!PixelTypeFactory::HasPixelType(type)) {
      ReportNone("type is " + HexID(type) + ", which is not the id of a registered pixel type");
    }
    return GiveFormat(type, flags, nullptr, nullptr, format);
  });
}

LmiCode lmiFindFormatByPFNC(uint32_t code, LmiFormat* format) {
  return Call([&] {
    CheckStruct(format, "format");
    const PFNCResult found = FindPFNC(code);
    if (!found) ReportNone("code is " + Hex(code) + ": " + found.reason);
    return GiveFormat(*found.format, format);
  });
}

LmiCode lmiFindFormatByFourcc(uint32_t fourcc, LmiFormat* format) {
  return Call([&] {
    CheckStruct(format, "format");
    const V4L2Result found = FindV4L2(fourcc);
    if (!found) ReportNone("fourcc is " + Hex(fourcc) + ": " + found.reason);
    return GiveFormat(*found.format, format);
  });
}

LmiCode lmiEnumTypes(size_t index, LmiFormat* format) {
  return Call([&] {
    CheckStruct(format, "format");
    const auto type = TypeAt(index);
    if (type == nullptr) ReportNone("index is " + std::to_string(index) + "; there are fewer pixel types");
    return GiveFormat(type->GetTypeID(), 0, nullptr, nullptr, format);
  });
}

LmiCode lmiEnumPFNC(size_t index, LmiFormat* format) {
  return Call([&] {
    CheckStruct(format, "format");
    const PFNCFormat* const found = EnumPFNC(index);
    if (found == nullptr) ReportNone("index is " + std::to_string(index) + "; there are fewer formats");
    return GiveFormat(*found, format);
  });
}

LmiCode lmiEnumFourccs(size_t index, LmiFormat* format) {
  return Call([&] {
    CheckStruct(format, "format");
    const V4L2Format* const found = EnumV4L2(index);
    if (found == nullptr) ReportNone("index is " + std::to_string(index) + "; there are fewer fourccs");
    return GiveFormat(*found, format);
  });
}

LmiCode lmiEnumDestinations(int64_t source, size_t index, int64_t* destination) {
  return Call([&]() -> ConversionResult {
    RequirePointer(destination, "destination");
    PixelTypeID found = 0;
    if (!PixelTypeFactory::EnumConverterTo(Narrow(index), source, found)) {
      ReportNone("index is " + std::to_string(index) + "; " + Label(source) + " has fewer destinations");
    }
    *destination = found;
    return {};
  });
}

LmiCode lmiRequiredSize(int64_t type, size_t width, size_t height, size_t lineSize, size_t* bytes) {
  return Call([&]() -> ConversionResult {
    RequirePointer(bytes, "bytes");
    if (!PixelTypeFactory::HasPixelType(type)) {
      return Refused("type is " + HexID(type) + ", which is not the id of a registered pixel type");
    }
    const std::optional<std::size_t> size = RequiredSize(type, Narrow(width), Narrow(height), lineSize);
    if (!size) {
      return Refused("width, height and lineSize are " + std::to_string(width) + ", " + std::to_string(height) +
                     " and " + std::to_string(lineSize) + "; lines are shorter than the pixels of " + Label(type) +
                     ", or the image is larger than can be addressed");
    }
    *bytes = *size;
    return {};
  });
}
