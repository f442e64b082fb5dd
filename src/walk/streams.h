#pragma once

#include <cstddef>
#include <cstdint>

namespace LmImagingLib {

struct ConversionContext;

/// Whether storing past the caches is quicker for an image of so many bytes, source and destination together: more than
/// two thirds of the last-level cache. Smaller ones find room there, and take up to twice as long past it.
bool StreamsPay(std::size_t bytes);

/// Stores and fetches of a frame that is too large for the caches: decides for the sizes of lines in the context, and
/// keeps the decision there for the length of the scope.
class StreamScope {
 public:
  StreamScope(ConversionContext& context, std::uint32_t lines);
  /// Makes what was stored past the caches visible to other threads before what is stored next.
  ~StreamScope();
  StreamScope(const StreamScope&) = delete;
  StreamScope& operator=(const StreamScope&) = delete;

 private:
  ConversionContext& mContext;
};

}  // namespace LmImagingLib
