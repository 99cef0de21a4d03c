#pragma once

#include <unknwn.h>

#include <functional>

namespace qel::com {

/// Keeps an object alive while its host is called, and until the caller has returned: the host may
/// release the last reference meanwhile. `release_later` releases a reference when no call is
/// running any more.
class Hold {
 public:
  Hold(IUnknown& whole, const std::function<void()>& release_later)
      : whole_(whole), release_later_(release_later) {
    whole_.AddRef();
  }
  Hold(const Hold&) = delete;
  Hold& operator=(const Hold&) = delete;
  ~Hold() {
    whole_.AddRef();
    const bool is_last = whole_.Release() == 1;
    if (is_last) {
      release_later_();
    } else {
      whole_.Release();
    }
  }

 private:
  IUnknown& whole_;
  const std::function<void()>& release_later_;
};

}  // namespace qel::com
