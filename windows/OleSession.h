#pragma once

#include <ole2.h>
#include <windows.h>

namespace qel::windows {

/// Holds OLE for the thread that makes it, which also has to end it.
class OleSession {
 public:
  OleSession() : result_(OleInitialize(nullptr)) {}
  OleSession(const OleSession&) = delete;
  OleSession& operator=(const OleSession&) = delete;
  ~OleSession() {
    if (SUCCEEDED(result_)) OleUninitialize();
  }

  /// False on a thread that may not have it: one of the multithreaded apartment.
  explicit operator bool() const { return SUCCEEDED(result_); }

 private:
  HRESULT result_;
};

}  // namespace qel::windows
