#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace model {

/// An image buffer that remembers how far it was used, so that a test can make its own buffers exactly that long.
/// Accesses outside throw: they are mistakes of the model.
class Bytes {
 public:
  explicit Bytes(std::vector<std::uint8_t> content) : mContent(std::move(content)) {}

  /// `count` bytes that a conversion may read, whether or not each of them counts.
  const std::uint8_t* Read(std::size_t offset, std::size_t count) {
    Use(offset, count);
    return mContent.data() + offset;
  }
  void Write(std::size_t offset, unsigned value) {
    Use(offset, 1);
    mContent[offset] = static_cast<std::uint8_t>(value);
  }

  const std::vector<std::uint8_t>& Content() const { return mContent; }
  /// One past the last byte read or written.
  std::size_t Extent() const { return mExtent; }

 private:
  void Use(std::size_t offset, std::size_t count) {
    if (count == 0) return;
    static_cast<void>(mContent.at(offset + count - 1));  // throws past the end
    mExtent = std::max(mExtent, offset + count);
  }

  std::vector<std::uint8_t> mContent;
  std::size_t mExtent = 0;
};

}  // namespace model
