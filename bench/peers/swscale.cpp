// swscale, which keeps a context for each conversion and size.
extern "C" {
#include <libavutil/cpu.h>
#include <libavutil/log.h>
#include <libavutil/opt.h>
#include <libswscale/swscale.h>
}

#include <array>
#include <cstdlib>
#include <memory>

#include "peer.h"

namespace LmImagingLib::Bench {

namespace {

struct Layout {
  AVPixelFormat format;
  int bytes;      // of a pixel in each plane
  int range = 0;  // 1 for the full range, which colours and gray have anyway
};

struct FreeContext {
  void operator()(SwsContext* context) const { sws_freeContext(context); }
};

using Addresses = std::array<std::uint8_t*, 4>;

// swscale wants green, blue, red.
Addresses PlanesOf(std::uint8_t* data, const Layout& layout, int pixels) {
  if (layout.format != AV_PIX_FMT_GBRP && layout.format != AV_PIX_FMT_GBRP16LE) return {data};
  const std::ptrdiff_t plane = std::ptrdiff_t{pixels} * layout.bytes;
  return {data + plane, data + 2 * plane, data};
}

SwsContext* MakeContext(const Image& image, const Layout& from, const Layout& to) {
  SwsContext* const context = sws_alloc_context();
  const std::pair<const char*, int> settings[] = {
      {"srcw", image.width},     {"srch", image.height},  {"src_format", from.format},
      {"src_range", from.range}, {"dstw", image.width},   {"dsth", image.height},
      {"dst_format", to.format}, {"dst_range", to.range}, {"sws_flags", SWS_POINT},
  };
  for (const auto& [name, value] : settings) av_opt_set_int(context, name, value, 0);
  if (sws_init_context(context, nullptr, nullptr) < 0) std::abort();
  return context;
}

Conversion Convert(Layout from, Layout to) {
  struct State {
    std::unique_ptr<SwsContext, FreeContext> context;
    int width = 0, height = 0;
  };
  const auto state = std::make_shared<State>();
  return [=](const Image& image) {
    if (state->width != image.width || state->height != image.height) {
      state->context.reset(MakeContext(image, from, to));
      state->width = image.width;
      state->height = image.height;
    }
    const Addresses source = PlanesOf(const_cast<std::uint8_t*>(image.source), from, image.Pixels());
    const Addresses destination = PlanesOf(image.destination, to, image.Pixels());
    const int sourceLine = from.bytes * image.width, destinationLine = to.bytes * image.width;
    const int sourceLines[4] = {sourceLine, sourceLine, sourceLine, 0};
    const int destinationLines[4] = {destinationLine, destinationLine, destinationLine, 0};
    sws_scale(state->context.get(), source.data(), sourceLines, 0, image.height, destination.data(), destinationLines);
  };
}

constexpr Layout kMono8{AV_PIX_FMT_GRAY8, 1}, kMono12{AV_PIX_FMT_GRAY12LE, 2}, kMono16{AV_PIX_FMT_GRAY16LE, 2};
constexpr Layout kYUYV{AV_PIX_FMT_YUYV422, 2}, kUYVY{AV_PIX_FMT_UYVY422, 2}, kFullYUYV{AV_PIX_FMT_YUYV422, 2, 1};
constexpr Layout kRGB24{AV_PIX_FMT_RGB24, 3}, kBGR24{AV_PIX_FMT_BGR24, 3}, kBGR32{AV_PIX_FMT_BGR0, 4},
    kRGB32{AV_PIX_FMT_RGB0, 4}, kPlanar{AV_PIX_FMT_GBRP, 1}, kRGB565{AV_PIX_FMT_RGB565LE, 2};
constexpr Layout kRGB48{AV_PIX_FMT_RGB48LE, 6}, kBGR48{AV_PIX_FMT_BGR48LE, 6}, kDeepPlanar{AV_PIX_FMT_GBRP16LE, 2},
    kBGR10{AV_PIX_FMT_X2RGB10LE, 4};
constexpr Layout kBayer8{AV_PIX_FMT_BAYER_RGGB8, 1}, kBayer16{AV_PIX_FMT_BAYER_RGGB16LE, 2};

}  // namespace

Peer Swscale() {
  av_log_set_level(AV_LOG_ERROR);
  return {"swscale",
          {
              {"Mono8 to RGB24", Convert(kMono8, kRGB24)},
              {"Mono8 to BGR32", Convert(kMono8, kBGR32)},
              {"Mono8 to Mono16", Convert(kMono8, kMono16)},
              {"Mono12 to Mono8", Convert(kMono12, kMono8)},
              {"Mono12 to Mono16", Convert(kMono12, kMono16)},
              {"Mono16 to Mono8", Convert(kMono16, kMono8)},

              {"RGB24 to Mono8", Convert(kRGB24, kMono8)},
              {"BGR32 to Mono8", Convert(kBGR32, kMono8)},
              {"RGB48 to Mono8", Convert(kRGB48, kMono8)},
              {"RGB48 to Mono16", Convert(kRGB48, kMono16)},
              {"YUYV to Mono8, full range", Convert(kFullYUYV, kMono8)},

              {"YUYV to BGR32", Convert(kYUYV, kBGR32)},
              {"UYVY to BGR32", Convert(kUYVY, kBGR32)},
              {"YUYV to BGR24", Convert(kYUYV, kBGR24)},

              {"RGB24 to BGR24", Convert(kRGB24, kBGR24)},
              {"RGB24 to BGR32", Convert(kRGB24, kBGR32)},
              {"BGR32 to RGB24", Convert(kBGR32, kRGB24)},
              {"RGB32 to BGR32", Convert(kRGB32, kBGR32)},
              {"RGB24 to planar", Convert(kRGB24, kPlanar)},
              {"BGR32 to planar", Convert(kBGR32, kPlanar)},
              {"planar to RGB24", Convert(kPlanar, kRGB24)},
              {"BGR32 to RGB16 (5-6-5)", Convert(kBGR32, kRGB565)},
              {"RGB16 (5-6-5) to RGB24", Convert(kRGB565, kRGB24)},
              {"RGB16 (5-6-5) to BGR32", Convert(kRGB565, kBGR32)},

              {"RGB24 to RGB48", Convert(kRGB24, kRGB48)},
              {"RGB48 to RGB24", Convert(kRGB48, kRGB24)},
              {"RGB48 to BGR48", Convert(kRGB48, kBGR48)},
              {"16-bit planar to RGB48", Convert(kDeepPlanar, kRGB48)},
              {"BGR 10-10-10 to BGR32", Convert(kBGR10, kBGR32)},

              {"bilinear Bayer8 to RGB24", Convert(kBayer8, kRGB24)},
              {"bilinear Bayer8 to BGR32", Convert(kBayer8, kBGR32)},
              {"bilinear Bayer16 to RGB24", Convert(kBayer16, kRGB24)},
              {"bilinear Bayer12 to RGB48", Convert(kBayer16, kRGB48)},
          },
          [] { av_force_cpu_flags(av_get_cpu_flags() & ~(AV_CPU_FLAG_AVX512 | AV_CPU_FLAG_AVX512ICL)); }};
}

}  // namespace LmImagingLib::Bench
