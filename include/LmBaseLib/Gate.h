#pragma once

#include <mutex>

#include "LmBaseLib/ILockable.h"

namespace LmBaseLib {

/// A lock that the thread holding it may take again; it opens when every hold has been given up.
class LM_EXPORT Gate : public ILockable {
 public:
  Gate();
  ~Gate() override;
  Gate(const Gate&) = delete;
  Gate& operator=(const Gate&) = delete;

  void Lock() override;
  void Unlock() override;

 private:
  std::recursive_mutex mMutex;
};

}  // namespace LmBaseLib
