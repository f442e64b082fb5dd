#pragma once

#include <cstddef>
#include <cstdint>

/// The choices that an input stands for; an exhausted one chooses 0.
class Choices {
 public:
  Choices(const std::uint8_t* data, std::size_t size) : mData(data), mSize(size) {}

  std::uint64_t Number(std::size_t bytes) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < bytes && mSize != 0; ++i, ++mData, --mSize) value = value << 8 | *mData;
    return value;
  }
  std::size_t Below(std::size_t end) { return Number(end > 256 ? 2 : 1) % end; }
  bool OneIn(std::size_t count) { return Below(count) == count - 1; }
  bool Exhausted() const { return mSize == 0; }

 private:
  const std::uint8_t* mData;
  std::size_t mSize;
};
