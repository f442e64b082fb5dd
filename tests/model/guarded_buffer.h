#pragma once

#ifdef _WIN32
#include <windows.h>
#elif defined(__EMSCRIPTEN__)
#include <cstdlib>
#include <cstring>
#include <new>
#else
#include <sys/mman.h>
#include <unistd.h>
#endif

#include <cstddef>
#include <cstdint>
#include <system_error>

/// Memory between two inaccessible pages: any byte touched past the end that lies at such a page faults.
class GuardedBuffer {
 public:
  enum class Against { END, BEGIN };

  explicit GuardedBuffer(std::size_t capacity) {
    const std::size_t page = PageSize();
    mCapacity = (capacity + page - 1) / page * page;
    mMapped = mCapacity + 2 * page;
    mMemory = Reserve(mMapped);
    mBegin = mMemory + page;
    MakeAccessible(mBegin, mCapacity);
  }
  GuardedBuffer(const GuardedBuffer&) = delete;
  GuardedBuffer& operator=(const GuardedBuffer&) = delete;
  ~GuardedBuffer() { Release(mMemory, mMapped); }

  std::size_t Capacity() const { return mCapacity; }

  /// Where `size` bytes begin that lie against the inaccessible page behind or before them.
  std::uint8_t* Place(std::size_t size, Against side) const {
    return side == Against::END ? mBegin + mCapacity - size : mBegin;
  }

 private:
#ifdef _WIN32
  static std::size_t PageSize() {
    SYSTEM_INFO info;
    GetSystemInfo(&info);
    return info.dwPageSize;
  }
  static std::uint8_t* Reserve(std::size_t size) {
    void* const memory = VirtualAlloc(nullptr, size, MEM_RESERVE, PAGE_NOACCESS);
    if (memory == nullptr) Fail("VirtualAlloc");
    return static_cast<std::uint8_t*>(memory);
  }
  static void MakeAccessible(std::uint8_t* begin, std::size_t size) {
    if (size != 0 && VirtualAlloc(begin, size, MEM_COMMIT, PAGE_READWRITE) == nullptr) Fail("VirtualAlloc");
  }
  static void Release(std::uint8_t* memory, std::size_t) { VirtualFree(memory, 0, MEM_RELEASE); }
  [[noreturn]] static void Fail(const char* call) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), call);
  }
#elif defined(__EMSCRIPTEN__)
  // WebAssembly has no inaccessible pages. Writes to the pages around a buffer end the test with it; reads pass.
  static constexpr std::uint8_t kUntouched = 0xA5;
  static constexpr std::size_t PageSize() { return 4096; }
  static std::uint8_t* Reserve(std::size_t size) {
    auto* const memory = static_cast<std::uint8_t*>(std::malloc(size));
    if (memory == nullptr) throw std::bad_alloc();
    std::memset(memory, kUntouched, size);
    return memory;
  }
  static void MakeAccessible(std::uint8_t*, std::size_t) {}
  static void Release(std::uint8_t* memory, std::size_t size) {
    for (std::size_t i = 0; i < PageSize(); ++i) {
      if (memory[i] != kUntouched || memory[size - 1 - i] != kUntouched) std::abort();
    }
    std::free(memory);
  }
#else
  static std::size_t PageSize() { return static_cast<std::size_t>(sysconf(_SC_PAGESIZE)); }
  static std::uint8_t* Reserve(std::size_t size) {
    void* const memory = mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) Fail("mmap");
    return static_cast<std::uint8_t*>(memory);
  }
  static void MakeAccessible(std::uint8_t* begin, std::size_t size) {
    if (mprotect(begin, size, PROT_READ | PROT_WRITE) != 0) Fail("mprotect");
  }
  static void Release(std::uint8_t* memory, std::size_t size) { munmap(memory, size); }
  [[noreturn]] static void Fail(const char* call) { throw std::system_error(errno, std::generic_category(), call); }
#endif

  std::size_t mCapacity = 0;
  std::size_t mMapped = 0;
  std::uint8_t* mMemory = nullptr;
  std::uint8_t* mBegin = nullptr;
};
