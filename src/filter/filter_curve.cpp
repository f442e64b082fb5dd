#include "filter/filter_curve.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace LmImagingLib {

bool FilterCurve::IsValid() const {
  return tone.IsValid() && std::all_of(std::begin(channels), std::end(channels), [](const ChannelCurve& channel) {
           return channel.black >= 0 && channel.gain >= 0 && std::isfinite(channel.black) &&
                  std::isfinite(channel.gain) && std::isfinite(channel.offset);
         });
}

unsigned short FilterCurve::Entry(std::size_t channel, std::size_t sample, unsigned filterBits, unsigned depth,
                                  unsigned more) const {
  const ChannelCurve& curve = channels[channel];
  const double step = std::ldexp(1.0, static_cast<int>(depth) - static_cast<int>(filterBits));
  const double white = std::ldexp(1.0, static_cast<int>(depth)) - 1;
  const double light =
      std::max(static_cast<double>(sample) - curve.black * step, 0.0) * curve.gain + curve.offset * step;
  return static_cast<unsigned short>(std::lround(std::ldexp(tone.At(light / white) * white, static_cast<int>(more))));
}

}  // namespace LmImagingLib
