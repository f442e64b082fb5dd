#include "converters/line_converter.h"

#include <algorithm>

#include "converters/converter_info.h"
#include "filter/filter_tables.h"
#include "walk/conversion_context.h"

namespace LmImagingLib {

using LmBaseLib::Result;

namespace {

std::size_t ConvertedPixels(const Source& source, std::uint32_t pixelCount) {
  std::size_t pixels = pixelCount;
  if (source.groups == WholeGroups::kYuv411 && pixels % 4 != 0) --pixels;
  if (source.groups != WholeGroups::kInside) pixels += source.groupPixels - 1;
  return pixels & ~std::size_t{source.groupPixels - 1};  // a group is a power of two
}

const Shortcut* FindShortcut(const Source& source, const Writer& writer) {
  const Shortcut* const end = source.shortcuts + source.shortcutCount;
  const Shortcut* const found =
      std::find_if(source.shortcuts, end, [&writer](const Shortcut& shortcut) { return shortcut.writer == &writer; });
  return found == end ? nullptr : found;
}

constexpr std::uint32_t PixelBytes(const Source& source) {
  return (source.groupBytes + source.groupPixels - 1) / source.groupPixels;
}

}  // namespace

LineConverter::LineConverter(const Source& source, const Writer& writer, const PixelTypeID& from, const PixelTypeID& to,
                             unsigned long shift, bool linesJoin)
    : PixelConverter(from, to, PixelBytes(source), writer.pixelBytes, 1, 1),
      mSource(source),
      mWriter(writer),
      mShortcut(FindShortcut(source, writer)),
      mSampleShift(static_cast<std::uint32_t>(shift) & 31U) {
  if (linesJoin) mInfo->joinedGroup = source.groupPixels;
}

unsigned long LineConverter::GetSourceLineSize(unsigned long pixelCount) const {
  if (mSource.groupBytes % mSource.groupPixels == 0) return PixelConverter::GetSourceLineSize(pixelCount);
  // Half bytes a pixel, rounded down over the line.
  const std::uint32_t pairBytes = 2 * mSource.groupBytes / mSource.groupPixels;
  return static_cast<std::uint32_t>(pairBytes * static_cast<std::uint32_t>(pixelCount)) >> 1;
}

Result LineConverter::ConvertLine(const void* source, void* destination, unsigned long pixelCount) const {
  const ContextScope context;
  const TargetLine target = TargetAt(destination, *context);
  const SourceLines lines = LinesAt(source, *context);
  const std::size_t pixels = ConvertedPixels(mSource, static_cast<std::uint32_t>(pixelCount));
  const StripSteps steps = Steps(*context);
  if (mShortcut != nullptr && steps.tables == nullptr) {
    ConvertDirectly(mShortcut->convert.Active(), steps, lines, pixels, &target, 0);
  } else {
    ConvertStrips(steps, lines, pixels, &target, 1, 0);
  }
  return Result::OK;
}

StripSteps LineConverter::Steps(const ConversionContext& context) const {
  return {mSource.decode.Active(), mSource.groupPixels, (mSource.traits & kPlain) != 0,
          (mSource.traits & kGray) != 0 ? nullptr : LookupOf(context), mWriter};
}

SourceLines LineConverter::LinesAt(const void* source, const ConversionContext& context) const {
  const auto* const line = static_cast<const std::uint8_t*>(source);
  if ((mSource.traits & kPlanar) == 0) return {{line, nullptr, nullptr}, mSampleShift, 0, context.fetchAhead};
  const std::size_t plane = std::size_t{context.sourceLineSize} * context.sourceHeight;
  return {{line, line + plane, line + 2 * plane}, mSampleShift, 0, context.fetchAhead};
}

const LookupTables* LookupOf(const ConversionContext& context) {
  return context.filter == nullptr ? nullptr : TablesOf(*context.filter).Lookup();
}

}  // namespace LmImagingLib
