#include "image/flags.h"

#include "converters/chain.h"
#include "converters/demosaic_method.h"
#include "converters/library_converter.h"
#include "formats/catalogue.h"
#include "image/refusal.h"

namespace LmImagingLib {

namespace {

constexpr unsigned long kMethodFlags = ConversionFlags::kBilinear | ConversionFlags::kGradientCorrected |
                                       ConversionFlags::kAdaptive | ConversionFlags::kHalfSize;
constexpr unsigned long kOfAnySource =
    ConversionFlags::kFullDepth | ConversionFlags::kOpaque | ConversionFlags::kReadLater;

struct FlagGroup {
  unsigned long flags;
  const char* names;
  const char* sources;  ///< for which the flags have a meaning
  bool (*apply)(const TypeRow& source);
};

constexpr FlagGroup kGroups[] = {
    {ConversionFlags::kFieldOrder, "kFieldOrder", "an interlaced type",
     [](const TypeRow& source) { return (source.id & kInterlacedFlag) != 0; }},
    {kLayoutFlags, "a Bayer layout", "a mosaic",
     [](const TypeRow& source) { return source.types->reach == Reach::kMosaic; }},
    {kMethodFlags, "a method of demosaicing", "a mosaic",
     [](const TypeRow& source) { return source.types->reach == Reach::kMosaic; }},
    {ConversionFlags::kFilterFirst, "kFilterFirst", "a mosaic",
     [](const TypeRow& source) { return source.types->reach == Reach::kMosaic; }},
    {ConversionFlags::kFullRange | ConversionFlags::kBT709, "a range or matrix of YUV", "a YUV type",
     [](const TypeRow& source) { return source.format->decodeByMatrix.of[0] != nullptr; }},
};

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

ConversionResult CheckFrameFlags(const ConstImageView& source, unsigned long flags, unsigned long allowed) {
  constexpr unsigned long kOfFrames =
      kLayoutFlags | ConversionFlags::kFieldOrder | ConversionFlags::kFullRange | ConversionFlags::kBT709;
  if (const unsigned long others = flags & ~(kOfFrames | allowed); others != 0) {
    return Refused("options.flags is " + Hex(flags) + ", of which " + Hex(others) +
                   " has no meaning here; it may have a Bayer layout, kFieldOrder, kFullRange and kBT709");
  }
  const TypeRow* const row = FindTypeRow(source.type);
  const unsigned long layouts = flags & kLayoutFlags;
  if (row != nullptr && row->types->reach == Reach::kMosaic && (layouts == 0 || (layouts & (layouts - 1)) != 0)) {
    return Refused("options.flags is " + Hex(flags) + ", which has " + (layouts == 0 ? "no" : "several") +
                   " Bayer layouts; a mosaic needs one of kBayerGR (0x10), kBayerGB (0x20), kBayerRG (0x40) and "
                   "kBayerBG (0x80)");
  }
  return row == nullptr ? ConversionResult{} : CheckMeaning(*row, flags);
}

bool Demosaics(const PixelConverter& converter) {
  const ConverterStages stages = StagesOf(converter);
  const LibraryConverter* const last = AsLibraryConverter(stages.second != nullptr ? *stages.second : stages.first);
  return last != nullptr && last->Traits().demosaics;
}

ConversionResult CheckFlags(const ConstImageView& source, const PixelConverter& converter,
                            const ConvertOptions& options) {
  const unsigned long flags = options.flags;
  const unsigned long layouts = flags & kLayoutFlags;
  if ((layouts & (layouts - 1)) != 0) {
    return Refused("options.flags is " + Hex(flags) + ", which has several Bayer layouts; it may have one");
  }
  const unsigned long methods = flags & kMethodFlags;
  if ((methods & (methods - 1)) != 0) {
    return Refused("options.flags is " + Hex(flags) +
                   ", which has several methods of demosaicing; it may have one of kBilinear (0x100), "
                   "kGradientCorrected (0x200), kAdaptive (0x400) and kHalfSize (0x10000)");
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
  if (row == nullptr) return {};
  if ((flags & ConversionFlags::kHalfSize) != 0 && row->types->reach == Reach::kMosaic && !Demosaics(converter)) {
    return Refused("options.flags is " + Hex(flags) +
                   ", which has kHalfSize; destination.type must be one that a mosaic becomes by demosaicing");
  }
  return CheckMeaning(*row, flags);
}

unsigned long FlagsOf(const ConvertOptions& options) {
  return options.depth == ConversionDepth::kFull ? options.flags | ConversionFlags::kFullDepth : options.flags;
}

}  // namespace LmImagingLib
