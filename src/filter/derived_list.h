#pragma once

#include <atomic>
#include <utility>

namespace LmImagingLib {

/// Tables that are derived from others: each is made when it is needed first, and kept.
///
/// Any number of threads may look for tables at the same time. Threads that need the same tables at once may make them
/// twice; the list keeps both. There is no lock, because none may be held while the process forks.
template <class Tables>
class DerivedList {
 public:
  DerivedList() = default;
  DerivedList(const DerivedList&) = delete;
  DerivedList& operator=(const DerivedList&) = delete;
  ~DerivedList() { Clear(); }

  /// The first tables for which `serves` is true, or new ones from `make`. Throws what `make` throws, and
  /// `std::bad_alloc`.
  template <class Serves, class Make>
  const Tables& FindOrMake(const Serves& serves, const Make& make) {
    const Node* newest = mNewest.load(std::memory_order_acquire);
    for (const Node* node = newest; node != nullptr; node = node->next) {
      if (serves(node->tables)) return node->tables;
    }
    auto* const made = new Node{make(), newest};
    while (!mNewest.compare_exchange_weak(made->next, made, std::memory_order_acq_rel, std::memory_order_acquire)) {
    }
    return made->tables;
  }

  /// Deletes all tables. No other thread may use the list meanwhile.
  void Clear() {
    if (mNewest.load(std::memory_order_relaxed) == nullptr) return;  // cheaper than an exchange for each table entry
    for (const Node* node = mNewest.exchange(nullptr, std::memory_order_relaxed); node != nullptr;) {
      delete std::exchange(node, node->next);
    }
  }

 private:
  struct Node {
    Tables tables;
    const Node* next;
  };
  std::atomic<const Node*> mNewest{nullptr};
};

}  // namespace LmImagingLib
