// The fuzzer of the registry on random inputs: each call in random order is compared with a plain model. In a process
// of its own, as it empties the registry.
#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main() {
  std::mt19937 random(1);
  std::vector<std::uint8_t> input(500);
  for (int round = 0; round < 200; ++round) {
    std::generate(input.begin(), input.end(), [&] { return static_cast<std::uint8_t>(random()); });
    LLVMFuzzerTestOneInput(input.data(), input.size());
  }
}
