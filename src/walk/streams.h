#pragma once

#include <cstddef>
#include <cstdint>

namespace LmImagingLib {

struct Frame;

/// Whether storing past the caches is faster for an image of so many bytes, which is where source and destination
/// together exceed two thirds of the last-level cache, or half of it if the destination is at most half of the source.
/// Smaller ones fit there, and take up to twice as long past it. Never on processors whose stores past the caches are
/// slow.
bool StreamsPay(std::size_t source, std::size_t destination);

/// Whether the first-level caches may hold an image of so many bytes, source and destination together: it is neither
/// fetched ahead, nor stored past the caches.
bool IsSmallImage(std::size_t bytes);

/// Makes streams pay for images of more than so many bytes, in place of two thirds of the last-level cache, while
/// nothing converts, and returns the number before. For tests and benchmarks.
std::size_t ForceStreamsAbove(std::size_t bytes);

/// Decides how a frame is fetched and stored, by its size and by `kReadLater`, and ends the stores of one that was
/// stored past the caches.
class StreamScope {
 public:
  StreamScope(Frame& frame, std::uint32_t lines);
  /// Makes such stores visible to other threads before the next ones.
  ~StreamScope() {
    if (mStreams) End();
  }
  StreamScope(const StreamScope&) = delete;
  StreamScope& operator=(const StreamScope&) = delete;

 private:
  static void End();

  bool mStreams;
};

}  // namespace LmImagingLib
