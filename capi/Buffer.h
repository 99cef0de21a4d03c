#pragma once

#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

#include "qel/capi.h"

namespace qel::capi {

/// Bytes that grow at their end and can be handed out to C.
class Buffer {
 public:
  Buffer() = default;
  Buffer(Buffer&& other) noexcept
      : data_(std::exchange(other.data_, nullptr)),
        size_(std::exchange(other.size_, 0)),
        capacity_(std::exchange(other.capacity_, 0)) {}
  Buffer& operator=(Buffer&&) = delete;
  ~Buffer() { std::free(data_); }

  const char* data() const { return data_; }
  std::size_t size() const { return size_; }

  void append(std::string_view bytes) {
    if (bytes.empty()) return;
    if (bytes.size() > capacity_ - size_) grow(bytes.size());
    std::memcpy(data_ + size_, bytes.data(), bytes.size());
    size_ += bytes.size();
  }

  /// Drops what was appended behind the first `size` bytes.
  void shrink(std::size_t size) { size_ = size; }

  /// Hands the bytes out with a zero behind them, and begins anew.
  qel_string release() {
    if (size_ == 0) return {nullptr, 0};
    reallocate(size_ + 1);
    data_[size_] = '\0';
    capacity_ = 0;
    return {std::exchange(data_, nullptr), std::exchange(size_, 0)};
  }

 private:
  void grow(std::size_t more) {
    constexpr std::size_t least = 1024;
    const std::size_t needed = size_ + more;
    const std::size_t grown = capacity_ + capacity_ / 2;
    reallocate(needed > grown ? (needed > least ? needed : least) : grown);
  }

  void reallocate(std::size_t capacity) {
    void* const data = std::realloc(data_, capacity);
    if (data == nullptr) throw std::bad_alloc();
    data_ = static_cast<char*>(data);
    capacity_ = capacity;
  }

  char* data_ = nullptr;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace qel::capi
