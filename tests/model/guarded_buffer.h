#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <system_error>

/// Memory between two inaccessible pages: any byte touched past the end that lies at such a page faults.
class GuardedBuffer {
 public:
  enum class Against { END, BEGIN };

  explicit GuardedBuffer(std::size_t capacity) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    mCapacity = (capacity + page - 1) / page * page;
    mMapped = mCapacity + 2 * page;
    void* memory = mmap(nullptr, mMapped, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw std::system_error(errno, std::generic_category(), "mmap");
    mMemory = static_cast<std::uint8_t*>(memory);
    mBegin = mMemory + page;
    if (mprotect(mBegin, mCapacity, PROT_READ | PROT_WRITE) != 0) {
      throw std::system_error(errno, std::generic_category(), "mprotect");
    }
  }
  GuardedBuffer(const GuardedBuffer&) = delete;
  GuardedBuffer& operator=(const GuardedBuffer&) = delete;
  ~GuardedBuffer() { munmap(mMemory, mMapped); }

  std::size_t Capacity() const { return mCapacity; }

  /// Where `size` bytes begin that lie against the inaccessible page behind or before them.
  std::uint8_t* Place(std::size_t size, Against side) const {
    return side == Against::END ? mBegin + mCapacity - size : mBegin;
  }

 private:
  std::size_t mCapacity = 0;
  std::size_t mMapped = 0;
  std::uint8_t* mMemory = nullptr;
  std::uint8_t* mBegin = nullptr;
};
