#pragma once

#include <exception>
#include <new>
#include <stdexcept>
#include <string_view>

#include "qel/base/Error.h"
#include "qel/capi.h"

/// The one way from exceptions to statuses. Nothing here allocates but the exception itself, for
/// which the runtime keeps memory back.
namespace qel::capi {

/// Writes the status, and the message as far as it fits.
void report(qel_error& error, qel_status status, std::string_view message) noexcept;

/// What a function ends with that does not end well.
class Failure : public std::exception {
 public:
  Failure(qel_status status, std::string_view message) noexcept { report(error_, status, message); }
  /// The name of what is wrong, in quotes, and `rest`.
  Failure(qel_status status, std::string_view name, std::string_view rest) noexcept;

  const char* what() const noexcept override { return error_.message; }
  qel_status status() const noexcept { return error_.status; }

 private:
  qel_error error_ = {};
};

inline void require(bool holds, std::string_view what_is_wrong) {
  if (!holds) throw Failure(QEL_BAD_ARGUMENT, what_is_wrong);
}

/// What a caller passes in to be written.
template <class Value>
Value& existing(Value* value) {
  if (value == nullptr) throw Failure(QEL_BAD_ARGUMENT, "an output or object is null");
  return *value;
}

/// The bytes of a text that a caller passes in.
inline std::string_view view(const qel_text& text) {
  require(text.data != nullptr || text.size == 0, "a text is null, but has a size");
  return text.size == 0 ? std::string_view() : std::string_view(text.data, text.size);
}

/// Reports the exception that is being handled.
qel_status report_exception(qel_error* error) noexcept;

/// Does the work and reports how it ended.
template <class Work>
qel_status guarded(qel_error* error, Work work) noexcept {
  try {
    work();
  } catch (...) {
    return report_exception(error);
  }
  if (error != nullptr) {
    error->status = QEL_OK;
    error->message[0] = '\0';
  }
  return QEL_OK;
}

}  // namespace qel::capi
