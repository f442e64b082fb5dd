#include "image/flags.h"

#include "converters/chain.h"
#include "converters/library_converter.h"
#include "formats/catalogue.h"
#include "image/refusal.h"

namespace LmImagingLib {

namespace {

constexpr unsigned long kLayouts =
    ConversionFlags::kBayerGR | ConversionFlags::kBayerGB | ConversionFlags::kBayerRG | ConversionFlags::kBayerBG;
constexpr unsigned long kOfAnySource = ConversionFlags::kFullDepth | ConversionFlags::kOpaque;

struct FlagGroup {
  unsigned long flags;
  const char* names;
  const char* sources;  ///< for which the flags have a meaning
  bool (*apply)(const TypeRow& source);
};

constexpr FlagGroup kGroups[] = {
    {ConversionFlags::kFieldOrder, "kFieldOrder", "an interlaced type",
     [](const TypeRow& source) { return (source.id & kInterlacedFlag) != 0; }},
    {kLayouts, "a Bayer layout", "a mosaic",
     [](const TypeRow& source) { return source.types->reach == Reach::kMosaic; }},
    {ConversionFlags::kBilinear, "a method of demosaicing", "a mosaic",
     [](const TypeRow& source) { return source.types->reach == Reach::kMosaic; }},
    {ConversionFlags::kFullRange | ConversionFlags::kBT709, "a range or matrix of YUV", "a YUV type",
     [](const TypeRow& source) { return source.format->decodeByMatrix.of[0] != nullptr; }},
};

// Whether the last stage makes colours of a mosaic.
bool Demosaics(const PixelConverter& converter) {
  const ConverterStages stages = StagesOf(converter);
  const LibraryConverter* const last = AsLibraryConverter(stages.second != nullptr ? *stages.second : stages.first);
  return last != nullptr && last->Traits().demosaics;
}

// The types of applications may give flags a meaning of their own.
ConversionResult CheckMeaning(const TypeRow& source, unsigned long flags) {
  unsigned long known = kOfAnySource;
  for (const FlagGroup& group : kGroups) {
    known |= group.flags;
    if ((flags & group.flags) != 0 && !group.apply(source)) {
      return Refused("options.flags is " + Hex(flags) + ", which has " + group.names + "; it means something for " +
                     group.sources + " only, and source.type is " + Label(source.id));
    }
  }
  if ((flags & ~known) == 0) return {};
  return Refused("options.flags is " + Hex(flags) + ", of which " + Hex(flags & ~known) +
                 " is no bit of ConversionFlags");
}

}  // namespace

ConversionResult CheckFlags(const ConstImageView& source, const PixelConverter& converter,
                            const ConvertOptions& options) {
  const unsigned long flags = options.flags;
  const unsigned long layouts = flags & kLayouts;
  if ((layouts & (layouts - 1)) != 0) {
    return Refused("options.flags is " + Hex(flags) + ", which has several Bayer layouts; it may have one");
  }
  if (options.depth == ConversionDepth::kEightBits && (flags & ConversionFlags::kFullDepth) != 0) {
    return Refused("options.depth is kEightBits and options.flags " + Hex(flags) +
                   ", which has kFullDepth; only one of the two can be meant");
  }
  if (layouts == 0 && Demosaics(converter)) {
    return Refused("options.flags is " + Hex(flags) +
                   ", which has no Bayer layout; a mosaic becomes colour by one of kBayerGR (0x10), kBayerGB (0x20), "
                   "kBayerRG (0x40) and kBayerBG (0x80)");
  }
  const TypeRow* const row = FindTypeRow(source.type);
  return row != nullptr ? CheckMeaning(*row, flags) : ConversionResult{};
}

unsigned long FlagsOf(const ConvertOptions& options) {
  return options.depth == ConversionDepth::kFull ? options.flags | ConversionFlags::kFullDepth : options.flags;
}

}  // namespace LmImagingLib
