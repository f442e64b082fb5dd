#pragma once

#include <type_traits>

#include "simd/loops.h"
#include "simd/stores.h"

// From a source straight into a writer. A strip keeps decoding and storing apart; here the arithmetic goes on while
// stores wait for memory. That pays where a source takes long to decode and its pairs are used a lot; each is code of
// its own.
namespace LmImagingLib::LM_ISA {
namespace {

/// A layout of single lines, as `Direct` wants it.
template <class Layout, class Sample_ = std::uint8_t>
struct SingleLine : Layout {
  using Line = Layout;
  using Sample = Sample_;
  static constexpr std::size_t kTargets = 1;             ///< lines that are made at once
  static constexpr std::size_t kFresh = Layout::kLines;  ///< source lines, the last ones, that no step before has read
  static constexpr bool kMosaic = false;
  static constexpr bool kIsApart = false;      ///< whether the targets are never in the source lines
  static constexpr std::size_t kNextLine = 0;  ///< source lines from one target's to the next one's

#if LM_LANES
  /// Hands a block of pixels of each target to `store`.
  template <class Reader, class Store>
  static void Blocks(const Reader& read, const Store& store) {
    store(0, Layout::Block(read, Of<Sample>{}));
  }
#endif
};

/// The writer of a conversion. One that weighs red and blue differently is made for the site: pixels of a mosaic are
/// made as if it were in a red row.
template <class Writer>
Writer WriterFor(const TargetLine& target, Site site) {
  if constexpr (std::is_constructible_v<Writer, const TargetLine&, Site>) {
    return Writer(target, site);
  } else {
    return {};
  }
}

/// Converts group by group.
template <class Layout, class Writer>
struct DirectGroups {
  using Sample = typename Layout::Sample;

  static void Convert(const SourceLines& in, std::size_t from, std::size_t count, const TargetLine* targets,
                      std::size_t first) {
    const Writer writer = WriterFor<Writer>(targets[0], in.site);
    SourceLines lines[Layout::kTargets];
    std::uint8_t* to[Layout::kTargets];
    for (std::size_t k = 0; k < Layout::kTargets; ++k) {
      lines[k] = {{}, in.shift, Below(AsInRedRow(in.site), k * Layout::kNextLine), 0, in.mask};
      for (std::size_t j = 0; j < Layout::Line::kLines; ++j) lines[k].line[j] = in.line[k * Layout::kNextLine + j];
      to[k] = targets[k].line + first * Writer::kBytes;
    }
    for (std::uint32_t left = LinesOf(targets[0].run);;) {
      for (std::size_t i = 0; i < count; i += Layout::kPixels) {
        Rgb<Sample> pixels[Layout::kPixels];
        for (std::size_t k = 0; k < Layout::kTargets; ++k) {
          // Targets of the same source lines are the same.
          if (k == 0 || Layout::kNextLine != 0) Layout::Group(At<typename Layout::Line>(lines[k], from + i), pixels);
          for (const Rgb<Sample>& pixel : pixels) {
            writer.Pixel(pixel, to[k]);
            to[k] += Writer::kBytes;
          }
        }
      }
      if (--left == 0) return;
      for (std::size_t j = 0; j < Layout::kLines; ++j) lines[0].line[j] += targets[0].run->source;
      to[0] += targets[0].run->target - count * Writer::kBytes;
    }
  }
};

#if LM_LANES

/// Converts block by block.
template <class Layout, class Writer>
class DirectBlocks {
 public:
  static void Convert(const SourceLines& in, std::size_t from, std::size_t count, const TargetLine* targets,
                      std::size_t first) {
    const bool isRight = from * ColumnsOf<Layout>(0) % 2 != 0;
    const Site site = isRight ? RightOf(in.site) : in.site;
    const Writer writer = WriterFor<Writer>(targets[0], site);
    if (Layout::kMosaic && !IsGreen(site)) {
      ConvertFrom<Layout::kMosaic ? Site::kRed : Site::kGreenInRedRow>(in, from, count, targets, first, writer);
    } else {
      ConvertFrom<Site::kGreenInRedRow>(in, from, count, targets, first, writer);
    }
  }

 private:
  static constexpr std::size_t kStep = kBlock<typename Layout::Sample>;

  // Each site has a loop of its own, without a branch. Flattened, as compilers would rather call what several loops
  // use, and hand vectors over in memory.
  template <Site kSite>
  [[gnu::flatten]] static void ConvertFrom(const SourceLines& caller, std::size_t from, std::size_t count,
                                           const TargetLine* targets, std::size_t first, const Writer& callers) {
    // By reference these would be loaded anew after each store.
    const Writer writer = callers;
    SourceLines in{{}, caller.shift, kSite, caller.ahead, caller.mask};
    for (std::size_t k = 0; k < Layout::kLines; ++k) in.line[k] = Alone(caller.line[k]) + BytesOf<Layout>(from);
    std::uint8_t* to[Layout::kTargets];
    bool streams = kHasStreams && targets[0].streams;
    for (std::size_t k = 0; k < Layout::kTargets; ++k) {
      to[k] = targets[k].line + first * Writer::kBytes;
      streams = streams && reinterpret_cast<std::uintptr_t>(to[k]) % kLanes == 0;
    }
    if constexpr (Layout::kIsApart && LM_BYTE_SHUFFLE == 64) {
      if (!streams) count -= AlignSource(in, count, to, writer);
    }
    for (std::uint32_t left = Layout::kTargets == 1 ? LinesOf(targets[0].run) : 1;;) {
      if (streams) {
        ConvertTo<Stream>(in, count, to, writer, 0);
      } else if (!Layout::kMosaic && (in.ahead | targets[0].ahead) == 0) {
        // A loop of its own spares small images the question for each block.
        ConvertTo<std::uint8_t*, false>(in, count, to, writer, 0);
      } else {
        ConvertTo<std::uint8_t*>(in, count, to, writer, targets[0].ahead);
      }
      if (count % kStep != 0) ConvertRest(in, count / kStep * kStep, count % kStep, to, writer);
      if (--left == 0) return;
      for (std::size_t k = 0; k < Layout::kLines; ++k) in.line[k] += targets[0].run->source;
      to[0] += targets[0].run->target;
    }
  }

  // Converts the first block, and moves on to a pixel in it whose source begins at a cache line: loads that cross one
  // cost twice as much. That pays for a block made twice in lines of so many.
  static std::size_t AlignSource(SourceLines& in, std::size_t count, std::uint8_t* (&to)[Layout::kTargets],
                                 const Writer& writer) {
    const std::size_t pixels = (0 - reinterpret_cast<std::uintptr_t>(in.line[0])) % kLanes / Layout::kBytes;
    if (pixels == 0 || count < 8 * kStep) return 0;
    Layout::Blocks(WholeBlock{in, 0},
                   [&to, &writer](std::size_t target, const auto& block) { writer.Block(block, to[target]); });
    for (std::size_t k = 0; k < Layout::kLines; ++k) in.line[k] += BytesOf<Layout>(pixels);
    for (std::uint8_t*& target : to) target += pixels * Writer::kBytes;
    return pixels;
  }

  // Converts the whole blocks.
  // @tparam kFetches  whether lines may be fetched ahead
  template <class To, bool kFetches = true>
  static void ConvertTo(const SourceLines& in, std::size_t count, std::uint8_t* const (&to)[Layout::kTargets],
                        const Writer& writer, std::uint32_t ahead) {
    std::size_t at = 0;
    std::size_t done = 0;
    for (; count >= kStep; count -= kStep, at += BytesOf<Layout>(kStep), done += kStep * Writer::kBytes) {
      if constexpr (kFetches) FetchAhead<Layout>(in, Layout::kLines - Layout::kFresh, at, kStep);
      if constexpr (kFetches && !Layout::kIsApart) {
        for (std::uint8_t* const target : to) FetchTarget(To{target} + done, kStep * Writer::kBytes, ahead);
      }
      Layout::Blocks(WholeBlock{in, at}, [&to, &writer, done](std::size_t target, const auto& pixels) {
        writer.Block(pixels, To{to[target]} + done);
      });
      // Of lines that are apart, words on registers of 32 bytes gain from it, little ahead; others lose.
      if constexpr (Layout::kIsApart && sizeof(typename Layout::Sample) > 1 && kLanes == 32) {
        const std::uint32_t near = in.ahead != 0 ? 1024 : 0;
        for (std::uint8_t* const target : to) FetchTarget(To{target} + done, kStep * Writer::kBytes, near);
      }
    }
  }

  // Converts the last `rest` pixels, from pixel `first` on.
  static void ConvertRest(const SourceLines& in, std::size_t first, std::size_t rest,
                          std::uint8_t* const (&to)[Layout::kTargets], const Writer& writer) {
    const std::size_t again = kStep - rest;
    // A source may be converted in place unless its pixels become larger, or its lines are read more than once.
    constexpr bool kReadsAgain =
        Layout::kIsApart || Layout::kBytes < Layout::kPixels * Writer::kBytes || Layout::kFresh < Layout::kLines;
    // Sites alternate, so blocks of a mosaic begin an even number of pixels apart.
    if (kReadsAgain && first != 0 && (!Layout::kMosaic || again % 2 == 0)) {
      // A block that ends with the line; some of its pixels are there already.
      const std::size_t done = (first - again) * Writer::kBytes;
      Layout::Blocks(
          WholeBlock{in, BytesOf<Layout>(first) - BytesOf<Layout>(again)},
          [&to, &writer, done](std::size_t target, const auto& pixels) { writer.Block(pixels, to[target] + done); });
      return;
    }
    const std::size_t done = first * Writer::kBytes;
    ReadRest<Layout, typename Layout::Sample>(
        in, BytesOf<Layout>(first), rest, [&to, &writer, done, rest](const auto& read) {
          Layout::Blocks(read, [&to, &writer, done, rest](std::size_t target, const auto& pixels) {
            writer.Block(pixels, Part{to[target] + done, rest * Writer::kBytes});
          });
        });
  }
};

template <class Layout, class Writer>
using Direct = DirectBlocks<Layout, Writer>;

#else

template <class Layout, class Writer>
using Direct = DirectGroups<Layout, Writer>;

#endif

}  // namespace
}  // namespace LmImagingLib::LM_ISA

/// Exports a function of that form as the kernel `Name`.
#define LM_DEFINE_DIRECT(Name, ...)                                                                \
  namespace LmImagingLib::LM_ISA {                                                                 \
  DirectKernel Name;                                                                               \
  void Name(const SourceLines& in, std::size_t from, std::size_t count, const TargetLine* targets, \
            std::size_t first) {                                                                   \
    __VA_ARGS__(in, from, count, targets, first);                                                  \
  }                                                                                                \
  }

/// Exports a layout together with a writer as the kernel `Name`.
#define LM_EXPORT_DIRECT(Name, Layout, ...) LM_DEFINE_DIRECT(Name, Direct<Layout, __VA_ARGS__>::Convert)
