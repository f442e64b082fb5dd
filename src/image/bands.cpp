#include "image/bands.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <system_error>
#include <thread>
#include <vector>

namespace LmImagingLib {

namespace {

// A thread takes some tens of microseconds to start and to end, in which a conversion moves so many bytes.
constexpr std::uint64_t kLeastBytes = 512 * 1024;

// The calling thread takes part, and takes over the jobs of threads that the system does not give.
void RunOnThreads(std::size_t count, const std::function<void(std::size_t)>& job) {
  std::vector<std::thread> threads;
  threads.reserve(count - 1);
  std::size_t next = 1;
  try {
    for (; next < count; ++next) threads.emplace_back(job, next);
  } catch (const std::system_error&) {
  }
  job(0);
  for (; next < count; ++next) job(next);
  for (std::thread& thread : threads) thread.join();
}

}  // namespace

void ConvertInBands(const ConvertOptions& options, std::uint32_t first, std::uint32_t end, std::uint64_t lineBytes,
                    const std::function<void(std::uint32_t first, std::uint32_t end)>& convert) {
  const std::uint64_t lines = end - first;
  const std::uint64_t most = std::min<std::uint64_t>(lines * lineBytes / kLeastBytes, lines / 2);
  const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(options.threads, most));
  if (count <= 1) return convert(first, end);

  std::atomic<bool> outOfMemory{false};
  const auto beginOf = [&](std::uint64_t band) {
    return band == count ? end : first + static_cast<std::uint32_t>(lines * band / count / 2 * 2);
  };
  const auto job = [&](std::size_t band) {
    try {
      convert(beginOf(band), beginOf(band + 1));
    } catch (const std::bad_alloc&) {
      outOfMemory = true;
    }
  };
  if (options.executor != nullptr) {
    (*options.executor)(count, job);
  } else {
    RunOnThreads(count, job);
  }
  if (outOfMemory) throw std::bad_alloc();
}

}  // namespace LmImagingLib
