#pragma once

#include "LmBaseLib/ILockable.h"

namespace LmBaseLib {

/// Holds a lock from its construction to its destruction.
class LockScope {
 public:
  /// Holds `lockable`, which must outlive the scope.
  explicit LockScope(ILockable& lockable) : LockScope(&lockable) {}
  /// The same; a null pointer holds nothing.
  explicit LockScope(ILockable* lockable) : mLockable(lockable) {
    if (mLockable != nullptr) mLockable->Lock();
  }
  ~LockScope() {
    if (mLockable != nullptr) mLockable->Unlock();
  }
  LockScope(const LockScope&) = delete;
  LockScope& operator=(const LockScope&) = delete;

 private:
  ILockable* mLockable;
};

}  // namespace LmBaseLib
