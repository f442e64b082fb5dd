#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace LmImagingLib::Bench {

/// One image without padding, in the buffers that ours has, too.
struct Image {
  const std::uint8_t* source;
  std::uint8_t* destination;
  int width;
  int height;

  int Pixels() const { return width * height; }
};

using Conversion = std::function<void(const Image&)>;

/// A conversion by another library, for the case of the same name.
struct PeerConversion {
  std::string name;
  Conversion convert;
};

/// Two calls, for what a library has no single one for. The image between them is made before it is timed.
/// @param pixelBytes  of the image between
Conversion Twice(const Conversion& first, int pixelBytes, const Conversion& second);

struct Peer {
  const char* library;
  std::vector<PeerConversion> conversions;
  std::function<void()> limitToAVX2;  ///< empty where the library has no switch, or it is outside of the process
};

Peer Libyuv();
Peer OpenCV();
Peer Swscale();
Peer Libdc1394();

}  // namespace LmImagingLib::Bench
