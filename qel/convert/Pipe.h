#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "qel/convert/ByteInput.h"
#include "qel/convert/Flow.h"
#include "qel/convert/Options.h"

namespace qel::convert {

/// A conversion of bytes.
class Pipe {
 public:
  virtual ~Pipe() = default;
  virtual void read(std::string_view bytes, bool is_last) = 0;
  /// The input ends. To be called after the last part.
  virtual void finish() = 0;
  virtual bool is_closed() const = 0;
  virtual void report(Report& report) const = 0;
  /// How much of the input has been read: all of it, or as much as counts.
  virtual std::uint64_t bytes_read() const = 0;
};

/// The bytes in characters of a kind, and what has not been read of them.
template <class Char>
class Window {
 public:
  using View = std::basic_string_view<Char>;

  /// How much has been read.
  std::uint64_t read_so_far() const { return read_; }
  std::size_t count(std::size_t read) {
    read_ += read;
    return read;
  }

  bool is_empty() const { return cut_.empty() && text_.empty(); }
  /// `text` has not been read, and `cut` is the beginning of a character.
  void keep(View text, std::string_view cut) {
    text_ = text;
    cut_ = cut;
    next_size_ = 2 * text_.size();
  }

  /// `decode(out, bytes)` appends them and returns how many it has taken, `read(text)` likewise.
  template <class Decode, class Read>
  void read(std::string_view bytes, bool is_last, Decode decode, Read read) {
    if (cut_.empty()) {
      cut_ = bytes.substr(decode(text_, bytes));
    } else {
      cut_.append(bytes);
      cut_.erase(0, decode(text_, cut_));
    }
    // A word that goes on and on is looked at again only when there is twice as much of it.
    if (!is_last && text_.size() < next_size_) return;
    text_.erase(0, count(read(View(text_))));
    next_size_ = 2 * text_.size();
  }

 private:
  std::string cut_;  // the beginning of a character
  std::basic_string<Char> text_;
  std::size_t next_size_ = 0;  // of the text, from which on it is worth reading
  std::uint64_t read_ = 0;
};

/// Through UTF-16.
class Utf16Pipe : public Pipe {
 public:
  Utf16Pipe(std::unique_ptr<Flow> flow, Encoding encoding, OutputFormat to, Sink sink);

  void read(std::string_view bytes, bool is_last) override;
  void finish() override;
  bool is_closed() const override { return flow_->is_closed(); }
  void report(Report& report) const override { flow_->report(report); }
  std::uint64_t bytes_read() const override {
    const bool is_utf16 =
        encoding_ == Encoding::utf16_little_endian || encoding_ == Encoding::utf16_big_endian;
    return window_.read_so_far() * (is_utf16 ? 2 : 1);
  }

 private:
  void write(std::u16string_view text);

  std::unique_ptr<Flow> flow_;
  Encoding encoding_;
  bool writes_rtf_;
  Sink sink_;
  Flow::Take take_;
  Window<char16_t> window_;
  std::string bytes_;
};

/// Bytes all the way.
class BytePipe : public Pipe {
 public:
  /// UTF-8, or bytes that are taken as they are.
  BytePipe(std::unique_ptr<BasicFlow<char>> flow, Encoding encoding, Sink sink)
      : flow_(std::move(flow)), encoding_(encoding), sink_(std::move(sink)) {}

  void read(std::string_view bytes, bool is_last) override;
  void finish() override;
  bool is_closed() const override { return flow_->is_closed(); }
  void report(Report& report) const override { flow_->report(report); }
  std::uint64_t bytes_read() const override { return window_.read_so_far(); }

 private:
  std::unique_ptr<BasicFlow<char>> flow_;
  Encoding encoding_;
  Sink sink_;
  Window<char> window_;
};

}  // namespace qel::convert
