// swscale, which keeps a context for each conversion and size.
extern "C" {
#include <libavutil/cpu.h>
#include <libswscale/swscale.h>
}

#include <array>
#include <memory>

#include "peer.h"

namespace LmImagingLib::Bench {

namespace {

struct Layout {
  AVPixelFormat format;
  int bytes;  // of a pixel in each plane
};

struct FreeContext {
  void operator()(SwsContext* context) const { sws_freeContext(context); }
};

using Addresses = std::array<std::uint8_t*, 4>;

// swscale wants green, blue, red.
Addresses PlanesOf(std::uint8_t* data, const Layout& layout, int pixels) {
  if (layout.format != AV_PIX_FMT_GBRP) return {data};
  return {data + pixels, data + 2 * pixels, data};
}

PeerConversion Convert(const char* name, Layout from, Layout to) {
  struct State {
    std::unique_ptr<SwsContext, FreeContext> context;
    int width = 0, height = 0;
  };
  const auto state = std::make_shared<State>();
  return {name, [=](const Image& image) {
            if (state->width != image.width || state->height != image.height) {
              state->context.reset(sws_getContext(image.width, image.height, from.format, image.width, image.height,
                                                  to.format, SWS_POINT, nullptr, nullptr, nullptr));
              state->width = image.width;
              state->height = image.height;
            }
            const Addresses source = PlanesOf(const_cast<std::uint8_t*>(image.source), from, image.Pixels());
            const Addresses destination = PlanesOf(image.destination, to, image.Pixels());
            const int sourceLine = from.bytes * image.width, destinationLine = to.bytes * image.width;
            const int sourceLines[4] = {sourceLine, sourceLine, sourceLine, 0};
            const int destinationLines[4] = {destinationLine, destinationLine, destinationLine, 0};
            sws_scale(state->context.get(), source.data(), sourceLines, 0, image.height, destination.data(),
                      destinationLines);
          }};
}

constexpr Layout kRGB24{AV_PIX_FMT_RGB24, 3}, kBGR24{AV_PIX_FMT_BGR24, 3}, kBGR32{AV_PIX_FMT_BGR0, 4},
    kRGB32{AV_PIX_FMT_RGB0, 4}, kYUYV{AV_PIX_FMT_YUYV422, 2}, kUYVY{AV_PIX_FMT_UYVY422, 2}, kMono8{AV_PIX_FMT_GRAY8, 1},
    kMono12{AV_PIX_FMT_GRAY12LE, 2}, kRGB48{AV_PIX_FMT_RGB48LE, 6}, kRGB565{AV_PIX_FMT_RGB565LE, 2},
    kPlanar{AV_PIX_FMT_GBRP, 1}, kBayer{AV_PIX_FMT_BAYER_RGGB8, 1};

}  // namespace

Peer Swscale() {
  return {"swscale",
          {
              Convert("RGB24 to BGR24", kRGB24, kBGR24),
              Convert("RGB24 to BGR32", kRGB24, kBGR32),
              Convert("BGR32 to RGB24", kBGR32, kRGB24),
              Convert("RGB32 to BGR32", kRGB32, kBGR32),
              Convert("YUYV to BGR32", kYUYV, kBGR32),
              Convert("UYVY to BGR32", kUYVY, kBGR32),
              Convert("YUYV to BGR24", kYUYV, kBGR24),
              Convert("Mono8 to RGB24", kMono8, kRGB24),
              Convert("Mono8 to BGR32", kMono8, kBGR32),
              Convert("Mono12 to Mono8", kMono12, kMono8),
              Convert("RGB24 to planar", kRGB24, kPlanar),
              Convert("planar to RGB24", kPlanar, kRGB24),
              Convert("RGB16 (5-6-5) to RGB24", kRGB565, kRGB24),
              Convert("RGB48 to RGB24", kRGB48, kRGB24),
              Convert("bilinear Bayer8 to RGB24", kBayer, kRGB24),
          },
          [] { av_force_cpu_flags(av_get_cpu_flags() & ~(AV_CPU_FLAG_AVX512 | AV_CPU_FLAG_AVX512ICL)); }};
}

}  // namespace LmImagingLib::Bench
