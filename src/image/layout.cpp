#include "image/layout.h"

#include <algorithm>
#include <limits>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "converters/chain.h"
#include "converters/identity.h"
#include "converters/library_converter.h"
#include "formats/source_type.h"

namespace LmImagingLib {

namespace {

// Every built-in type reaches one of these by a converter that decodes it.
constexpr PixelTypeID kReachedByAll = 0x420006;
constexpr PixelTypeID kReachedByThatOne = 0x420002;

// Of an application's converter. Only the id and the sizes of the type show its planes.
std::uint64_t PlanesOf(const PixelTypeID& type, std::uint64_t bytesInPlane) {
  if ((type & kPlanarFlag) == 0 || bytesInPlane == 0) return 1;
  const PixelType* const registered = PixelTypeFactory::FindPixelType(type);
  return std::max<std::uint64_t>(1, registered->GetPixelByteSize() / bytesInPlane);
}

const PixelConverter* FindDecoder(const PixelTypeID& type) {
  for (const PixelTypeID to : {kReachedByAll, kReachedByThatOne}) {
    const PixelConverter* const converter = PixelTypeFactory::FindConverter(type, to);
    if (converter != nullptr && !IsIdentity(*converter)) return converter;
  }
  PixelTypeID to = 0;
  for (unsigned long i = 0; PixelTypeFactory::EnumConverterTo(i, type, to); ++i) {
    const PixelConverter* const converter = PixelTypeFactory::FindConverter(type, to);
    if (!IsIdentity(*converter)) return converter;
  }
  return nullptr;
}

const PixelConverter* FindEncoder(const PixelTypeID& type) {
  PixelTypeID from = 0;
  for (unsigned long i = 0; PixelTypeFactory::EnumConverterFrom(i, type, from); ++i) {
    const PixelConverter* const converter = PixelTypeFactory::FindConverter(from, type);
    if (!IsIdentity(*converter)) return converter;
  }
  return nullptr;
}

}  // namespace

bool ImageLayout::HoldsLine(std::uint64_t width) const {
  return width <= kMostLines && (pairBytes == 0 || (width + 1) / 2 <= kMostLineBytes / pairBytes);
}

std::uint64_t ImageLayout::DenseLine(std::uint64_t width) const {
  if (converter == nullptr) return pairBytes * width / 2;
  const auto pixels = static_cast<unsigned long>(width);
  return isSource ? converter->GetSourceLineSize(pixels) : converter->GetDestinationLineSize(pixels);
}

std::uint64_t ImageLayout::LineBytes(std::uint64_t width) const {
  return format == nullptr ? DenseLine(width) : LineBytesOf(*format, width);
}

std::optional<std::size_t> ImageLayout::Required(std::uint64_t width, std::uint64_t height,
                                                 std::uint64_t lineSize) const {
  const std::uint64_t lines = height * planes;
  if (lines == 0 || width == 0) return 0;
  const std::uint64_t last = LineBytes(width);
  const std::uint64_t most = std::numeric_limits<std::size_t>::max();
  if (last > most || (lines > 1 && lineSize > (most - last) / (lines - 1))) return std::nullopt;
  return static_cast<std::size_t>((lines - 1) * lineSize + last);
}

ImageLayout SourceLayoutOf(const PixelConverter& converter, const PixelTypeID& type) {
  ImageLayout layout;
  layout.converter = &converter;
  layout.pairBytes = converter.GetSourceLineSize(2);
  layout.planes = PlanesOf(type, converter.GetSourcePixelByteSize());
  const LibraryConverter* const library = AsLibraryConverter(StagesOf(converter).first);
  if (library == nullptr) return layout;
  layout.format = library->Traits().format;
  // What the converter reads counts, whatever the type says; more planes than it reads are there, too.
  const bool isPlanar = layout.format != nullptr && layout.format->Is(kPlanar);
  layout.planes = isPlanar ? std::max<std::uint64_t>(layout.planes, 3) : 1;
  return layout;
}

ImageLayout DestinationLayoutOf(const PixelConverter& converter, const PixelTypeID& type) {
  ImageLayout layout;
  layout.converter = &converter;
  layout.isSource = false;
  layout.pairBytes = converter.GetDestinationLineSize(2);
  const ConverterStages stages = StagesOf(converter);
  const LibraryConverter* const library = AsLibraryConverter(stages.second != nullptr ? *stages.second : stages.first);
  layout.planes = library != nullptr ? library->Traits().destinationPlanes
                                     : PlanesOf(type, converter.GetDestinationPixelByteSize());
  return layout;
}

std::optional<ImageLayout> FindLayout(const PixelTypeID& type) {
  const PixelType* const registered = PixelTypeFactory::FindPixelType(type);
  if (registered == nullptr) return std::nullopt;
  if (const PixelConverter* const decoder = FindDecoder(type)) return SourceLayoutOf(*decoder, type);
  if (const PixelConverter* const encoder = FindEncoder(type)) return DestinationLayoutOf(*encoder, type);
  ImageLayout layout;
  // Buffers of unpacked 24-bit types have 4 bytes a pixel, of which pixels take 3.
  layout.pairBytes = std::min<std::uint64_t>(registered->GetBufferSizeFor(2, 1), 2 * registered->GetPixelByteSize());
  return layout;
}

std::optional<std::size_t> RequiredSize(PixelTypeID type, unsigned long width, unsigned long height,
                                        std::size_t lineSize) {
  const std::optional<ImageLayout> layout = FindLayout(type);
  if (!layout.has_value() || !layout->HoldsLine(width) || height > kMostLines) return std::nullopt;
  const std::uint64_t dense = layout->DenseLine(width);
  if (lineSize != 0 && lineSize < dense) return std::nullopt;
  return layout->Required(width, height, lineSize != 0 ? lineSize : dense);
}

std::optional<unsigned> SampleDepth(PixelTypeID type) {
  const TypeRow* const row = FindTypeRow(type);
  if (row == nullptr) return std::nullopt;
  return HasWords(SourceType(*row)) ? row->types->depth : 8;
}

}  // namespace LmImagingLib
