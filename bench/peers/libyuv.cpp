// libyuv names bytes from the last to the first: its RAW is RGB24, its RGB24 is BGR24, and its ARGB is BGR32. Its J400
// is gray of the full range.
#include <libyuv.h>

#include "peer.h"

namespace LmImagingLib::Bench {

namespace {

using BytesToBytes = int (*)(const std::uint8_t*, int, std::uint8_t*, int, int, int);

Conversion Bytes(BytesToBytes convert, int sourceBytes, int destinationBytes) {
  return [=](const Image& image) {
    convert(image.source, sourceBytes * image.width, image.destination, destinationBytes * image.width, image.width,
            image.height);
  };
}

// `scale` is 1 << (24 - bits of a sample).
Conversion WordsToBytes(int samples, int scale) {
  return [=](const Image& image) {
    const int width = samples * image.width;
    libyuv::Convert16To8Plane(reinterpret_cast<const std::uint16_t*>(image.source), width, image.destination, width,
                              scale, width, image.height);
  };
}

// Repeats the byte v, and takes one of 257 v away, because a factor of 1 << 16 does not fit.
Conversion BytesToWords(int samples) {
  return [=](const Image& image) {
    const int width = samples * image.width;
    libyuv::Convert8To16Plane(image.source, width, reinterpret_cast<std::uint16_t*>(image.destination), width, 0xFFFF,
                              width, image.height);
  };
}

void WidenTwelveBits(const Image& image) {
  libyuv::ConvertToMSBPlane_16(reinterpret_cast<const std::uint16_t*>(image.source), image.width,
                               reinterpret_cast<std::uint16_t*>(image.destination), image.width, image.width,
                               image.height, 12);
}

void Split(const Image& image) {
  std::uint8_t* const first = image.destination;
  libyuv::SplitRGBPlane(image.source, 3 * image.width, first, image.width, first + image.Pixels(), image.width,
                        first + 2 * image.Pixels(), image.width, image.width, image.height);
}

void SplitFour(const Image& image) {
  std::uint8_t* const red = image.destination;
  libyuv::SplitARGBPlane(image.source, 4 * image.width, red, image.width, red + image.Pixels(), image.width,
                         red + 2 * image.Pixels(), image.width, nullptr, 0, image.width, image.height);
}

void Merge(const Image& image) {
  const std::uint8_t* const red = image.source;
  libyuv::MergeRGBPlane(red, image.width, red + image.Pixels(), image.width, red + 2 * image.Pixels(), image.width,
                        image.destination, 3 * image.width, image.width, image.height);
}

// There is none of packed YUV 4:4:4, so its planes come first. Blue comes before red where U and V are exchanged.
Conversion ColorOfYUV(int y, int u, int v) {
  const auto convert = [=](const Image& image) {
    const auto plane = [&](int k) { return image.source + k * image.Pixels(); };
    libyuv::I444ToRGB24Matrix(plane(y), image.width, plane(v), image.width, plane(u), image.width, image.destination,
                              3 * image.width, &libyuv::kYvuJPEGConstants, image.width, image.height);
  };
  return Twice(Split, 3, convert);
}

}  // namespace

Peer Libyuv() {
  return {"libyuv",
          {
              {"Mono8 to BGR32", Bytes(libyuv::J400ToARGB, 1, 4)},
              {"Mono8 to Mono16", BytesToWords(1)},
              {"Mono12 to Mono8", WordsToBytes(1, 1 << 12)},
              {"Mono12 to Mono16", WidenTwelveBits},
              {"Mono16 to Mono8", WordsToBytes(1, 1 << 8)},

              {"RGB24 to Mono8", Bytes(libyuv::RAWToJ400, 3, 1)},
              {"BGR32 to Mono8", Bytes(libyuv::ARGBToJ400, 4, 1)},
              {"RGB48 to Mono8", Twice(WordsToBytes(3, 1 << 8), 3, Bytes(libyuv::RAWToJ400, 3, 1))},
              {"YUYV to Mono8, full range", Bytes(libyuv::YUY2ToY, 2, 1)},

              {"YUYV to BGR32", Bytes(libyuv::YUY2ToARGB, 2, 4)},
              {"UYVY to BGR32", Bytes(libyuv::UYVYToARGB, 2, 4)},
              {"YUYV to BGR24", Twice(Bytes(libyuv::YUY2ToARGB, 2, 4), 4, Bytes(libyuv::ARGBToRGB24, 4, 3))},
              {"UYV 4:4:4 to RGB24, full range", ColorOfYUV(1, 0, 2)},
              {"YCrCb 4:4:4 to RGB24, full range", ColorOfYUV(0, 2, 1)},

              {"RGB24 to BGR24", Bytes(libyuv::RAWToRGB24, 3, 3)},
              {"RGB24 to BGR32", Bytes(libyuv::RAWToARGB, 3, 4)},
              {"BGR32 to RGB24", Bytes(libyuv::ARGBToRAW, 4, 3)},
              {"RGB32 to BGR32", Bytes(libyuv::ABGRToARGB, 4, 4)},
              {"RGB24 to planar", Split},
              {"BGR32 to planar", SplitFour},
              {"planar to RGB24", Merge},
              {"BGR32 to RGB16 (5-6-5)", Bytes(libyuv::ARGBToRGB565, 4, 2)},
              {"RGB16 (5-6-5) to BGR32", Bytes(libyuv::RGB565ToARGB, 2, 4)},

              {"RGB24 to RGB48", BytesToWords(3)},
              {"RGB48 to RGB24", WordsToBytes(3, 1 << 8)},
              {"BGR 10-10-10 to BGR32", Bytes(libyuv::AR30ToARGB, 4, 4)},
          },
          [] {
            constexpr int kNewer = libyuv::kCpuHasAVX512BW | libyuv::kCpuHasAVX512VL | libyuv::kCpuHasAVX512VNNI |
                                   libyuv::kCpuHasAVX512VBMI | libyuv::kCpuHasAVX512VBMI2 |
                                   libyuv::kCpuHasAVX512VBITALG | libyuv::kCpuHasAVX512VPOPCNTDQ;
            libyuv::MaskCpuFlags(~kNewer);
          }};
}

}  // namespace LmImagingLib::Bench
