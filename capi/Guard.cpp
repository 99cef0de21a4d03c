#include "Guard.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace qel::capi {
namespace {

/// How many bytes of the text fit, characters whole.
std::size_t fitting(std::string_view text, std::size_t size) {
  if (text.size() <= size) return text.size();
  while (size > 0 && (static_cast<std::uint8_t>(text[size]) & 0xC0U) == 0x80) --size;
  return size;
}

std::size_t append(qel_error& error, std::size_t at, std::string_view text) {
  const std::size_t count = fitting(text, sizeof(error.message) - 1 - at);
  std::transform(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(count),
                 error.message + at, [](char c) { return c == '\n' || c == '\0' ? ' ' : c; });
  error.message[at + count] = '\0';
  return at + count;
}

qel_status status_of(const Error& error) {
  return error.number() == Error::type_mismatch && error.source() == "convert" ? QEL_BAD_INPUT
                                                                               : QEL_FAILED;
}

qel_status ended(qel_error* error, qel_status status, const char* message) noexcept {
  if (error != nullptr) report(*error, status, message);
  return status;
}

}  // namespace

void report(qel_error& error, qel_status status, std::string_view message) noexcept {
  error.status = status;
  append(error, 0, message);
}

Failure::Failure(qel_status status, std::string_view name, std::string_view rest) noexcept {
  // What is wrong has to fit as well.
  constexpr std::size_t longest_name = 120;
  error_.status = status;
  std::size_t at = append(error_, 0, "'");
  at = append(error_, at, name.substr(0, fitting(name, longest_name)));
  at = append(error_, at, "' ");
  append(error_, at, rest);
}

qel_status report_exception(qel_error* error) noexcept {
  try {
    throw;
  } catch (const Failure& failure) {
    return ended(error, failure.status(), failure.what());
  } catch (const std::bad_alloc&) {
    return ended(error, QEL_NO_MEMORY, "out of memory");
  } catch (const std::length_error&) {
    return ended(error, QEL_NO_MEMORY, "the text is too long");
  } catch (const Error& failure) {
    return ended(error, status_of(failure), failure.what());
  } catch (const std::exception& failure) {
    return ended(error, QEL_FAILED, failure.what());
  } catch (...) {
    return ended(error, QEL_FAILED, "failed");
  }
}

}  // namespace qel::capi
