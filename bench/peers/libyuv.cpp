// libyuv names bytes from the last to the first: its RAW is RGB24, its RGB24 is BGR24, and its ARGB is BGR32.
#include <libyuv.h>

#include "peer.h"

namespace LmImagingLib::Bench {

namespace {

using BytesToBytes = int (*)(const std::uint8_t*, int, std::uint8_t*, int, int, int);

PeerConversion Bytes(const char* name, BytesToBytes convert, int sourceBytes, int destinationBytes) {
  return {name, [=](const Image& image) {
            convert(image.source, sourceBytes * image.width, image.destination, destinationBytes * image.width,
                    image.width, image.height);
          }};
}

// `scale` is 1 << (24 - bits of a sample).
PeerConversion WordsToBytes(const char* name, int samples, int scale) {
  return {name, [=](const Image& image) {
            const int width = samples * image.width;
            libyuv::Convert16To8Plane(reinterpret_cast<const std::uint16_t*>(image.source), width, image.destination,
                                      width, scale, width, image.height);
          }};
}

void Split(const Image& image) {
  std::uint8_t* const red = image.destination;
  libyuv::SplitRGBPlane(image.source, 3 * image.width, red, image.width, red + image.Pixels(), image.width,
                        red + 2 * image.Pixels(), image.width, image.width, image.height);
}

void Merge(const Image& image) {
  const std::uint8_t* const red = image.source;
  libyuv::MergeRGBPlane(red, image.width, red + image.Pixels(), image.width, red + 2 * image.Pixels(), image.width,
                        image.destination, 3 * image.width, image.width, image.height);
}

}  // namespace

Peer Libyuv() {
  return {"libyuv",
          {
              Bytes("RGB24 to BGR24", libyuv::RAWToRGB24, 3, 3),
              Bytes("RGB24 to BGR32", libyuv::RAWToARGB, 3, 4),
              Bytes("BGR32 to RGB24", libyuv::ARGBToRAW, 4, 3),
              Bytes("RGB32 to BGR32", libyuv::ABGRToARGB, 4, 4),
              Bytes("YUYV to BGR32", libyuv::YUY2ToARGB, 2, 4),
              Bytes("UYVY to BGR32", libyuv::UYVYToARGB, 2, 4),
              Bytes("Mono8 to BGR32", libyuv::J400ToARGB, 1, 4),
              {"RGB24 to planar", Split},
              {"planar to RGB24", Merge},
              WordsToBytes("RGB48 to RGB24", 3, 1 << 8),
              WordsToBytes("Mono12 to Mono8", 1, 1 << 12),
          },
          [] {
            constexpr int kNewer = libyuv::kCpuHasAVX512BW | libyuv::kCpuHasAVX512VL | libyuv::kCpuHasAVX512VNNI |
                                   libyuv::kCpuHasAVX512VBMI | libyuv::kCpuHasAVX512VBMI2 |
                                   libyuv::kCpuHasAVX512VBITALG | libyuv::kCpuHasAVX512VPOPCNTDQ;
            libyuv::MaskCpuFlags(~kNewer);
          }};
}

}  // namespace LmImagingLib::Bench
