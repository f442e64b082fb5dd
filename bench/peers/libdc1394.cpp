// libdc1394, which has no vectors.
#include <dc1394/dc1394.h>

#include "peer.h"

namespace LmImagingLib::Bench {

Peer Libdc1394() {
  return {"libdc1394",
          {{"bilinear Bayer8 to RGB24",
            [](const Image& image) {
              dc1394_bayer_decoding_8bit(image.source, image.destination, static_cast<std::uint32_t>(image.width),
                                         static_cast<std::uint32_t>(image.height), DC1394_COLOR_FILTER_RGGB,
                                         DC1394_BAYER_METHOD_BILINEAR);
            }}},
          {}};
}

}  // namespace LmImagingLib::Bench
