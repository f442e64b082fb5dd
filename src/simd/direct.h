#pragma once

#include "simd/loops.h"
#include "simd/stores.h"

// From a source straight into a writer. A strip keeps decoding and storing apart; here the arithmetic goes on while
// stores wait for memory. That pays where a source takes long to decode and its pairs are used a lot; each is code of
// its own.
namespace LmImagingLib::LM_ISA {
namespace {

/// A layout of single lines, as `Direct` wants it.
template <class Layout>
struct SingleLine : Layout {
  using Line = Layout;
  static constexpr std::size_t kTargets = 1;             ///< lines that are made at once
  static constexpr std::size_t kFresh = Layout::kLines;  ///< source lines, the last ones, that no step before has read
  static constexpr bool kMosaic = false;
  static constexpr std::size_t kNextLine = 0;  ///< source lines from one target's to the next one's

#if LM_LANES
  /// Hands a block of pixels of each target to `store`.
  template <class Reader, class Store>
  static void Blocks(const Reader& read, const Store& store) {
    store(0, Layout::Block(read, Of<std::uint8_t>{}));
  }
#endif
};

/// Converts group by group.
template <class Layout, class Writer>
struct DirectGroups {
  static void Convert(const SourceLines& in, std::size_t from, std::size_t count, const TargetLine* targets,
                      std::size_t first) {
    for (std::size_t k = 0; k < Layout::kTargets; ++k) {
      SourceLines line{{}, in.shift, Below(in.site, k * Layout::kNextLine), 0, in.mask};
      for (std::size_t j = 0; j < Layout::Line::kLines; ++j) line.line[j] = in.line[k * Layout::kNextLine + j];
      std::uint8_t* to = targets[k].line + first * Writer::kBytes;
      for (std::size_t i = 0; i < count; i += Layout::kPixels) {
        Rgb<std::uint8_t> pixels[Layout::kPixels];
        Layout::Group(At<typename Layout::Line>(line, from + i), pixels);
        for (const Rgb<std::uint8_t>& pixel : pixels) {
          Writer::Pixel(pixel, to);
          to += Writer::kBytes;
        }
      }
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
    const SourceLines at = At<Layout>(in, from);
    if (Layout::kMosaic && at.site != Site::kGreenInRedRow) {
      ConvertFrom<Layout::kMosaic ? Site::kRed : Site::kGreenInRedRow>(at, count, targets, first);
    } else {
      ConvertFrom<Site::kGreenInRedRow>(at, count, targets, first);
    }
  }

 private:
  // Each site has a loop of its own, without a branch. Flattened, as compilers would rather call what several loops
  // use, and hand vectors over in memory.
  template <Site kSite>
  [[gnu::flatten]] static void ConvertFrom(const SourceLines& in, std::size_t count, const TargetLine* targets,
                                           std::size_t first) {
    std::uint8_t* to[Layout::kTargets];
    bool streams = kHasStreams && targets[0].streams;
    for (std::size_t k = 0; k < Layout::kTargets; ++k) {
      to[k] = targets[k].line + first * Writer::kBytes;
      streams = streams && reinterpret_cast<std::uintptr_t>(to[k]) % kLanes == 0;
    }
    if (streams) {
      ConvertTo<kSite, Stream>(in, count, to, 0);
    } else {
      ConvertTo<kSite, std::uint8_t*>(in, count, to, targets[0].ahead);
    }
  }

  template <Site kSite, class To>
  static void ConvertTo(const SourceLines& caller, std::size_t count, std::uint8_t* const (&to)[Layout::kTargets],
                        std::uint32_t ahead) {
    // By reference it would be loaded anew after each store.
    SourceLines in{{}, caller.shift, kSite, caller.ahead, caller.mask};
    for (std::size_t line = 0; line < Layout::kLines; ++line) in.line[line] = Alone(caller.line[line]);
    std::size_t at = 0;
    std::size_t done = 0;
    for (; count >= kLanes; count -= kLanes, at += BytesOf<Layout>(kLanes), done += kLanes * Writer::kBytes) {
      FetchAhead<Layout>(in, Layout::kLines - Layout::kFresh, at, kLanes);
      for (std::uint8_t* const target : to) FetchTarget(To{target} + done, kLanes * Writer::kBytes, ahead);
      Layout::Blocks(WholeBlock{in, at}, [&to, done](std::size_t target, const auto& pixels) {
        Writer::Block(pixels, To{to[target]} + done);
      });
    }
    if (count == 0) return;
    const std::size_t again = kLanes - count;
    // Sites alternate, so blocks of a mosaic begin an even number of pixels apart.
    if (at != 0 && (!Layout::kMosaic || again % 2 == 0)) {
      // A block that ends with the line; some of its pixels are there already. No such source is converted in place.
      static_assert(Layout::kBytes < Layout::kPixels * Writer::kBytes);
      at -= BytesOf<Layout>(again);
      done -= again * Writer::kBytes;
      Layout::Blocks(WholeBlock{in, at},
                     [&to, done](std::size_t target, const auto& pixels) { Writer::Block(pixels, to[target] + done); });
      return;
    }
    ReadRest<Layout, std::uint8_t>(in, at, count, [&to, done, count](const auto& read) {
      Layout::Blocks(read, [&to, done, count](std::size_t target, const auto& pixels) {
        Writer::Block(pixels, Part{to[target] + done, count * Writer::kBytes});
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

/// Exports a layout together with a writer as the kernel `Name`.
#define LM_EXPORT_DIRECT(Name, Layout, ...)                                                        \
  namespace LmImagingLib::LM_ISA {                                                                 \
  DirectKernel Name;                                                                               \
  void Name(const SourceLines& in, std::size_t from, std::size_t count, const TargetLine* targets, \
            std::size_t first) {                                                                   \
    Direct<Layout, __VA_ARGS__>::Convert(in, from, count, targets, first);                         \
  }                                                                                                \
  }
