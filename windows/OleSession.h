#pragma once

#include <ole2.h>
#include <windows.h>

namespace qel::windows {

/// Keeps OLE initialised for the thread that creates it, which must also destroy it.
class OleSession {
 public:
  OleSession() : result_(OleInitialize(nullptr)) {}
  OleSession(const OleSession&) = delete;
  OleSession& operator=(const OleSession&) = delete;
  ~OleSession() {
    if (SUCCEEDED(result_)) OleUninitialize();
  }

  /// False on a thread that cannot have OLE: one in the multithreaded apartment.
  explicit operator bool() const { return SUCCEEDED(result_); }

 private:
  HRESULT result_;
};

}  // namespace qel::windows
