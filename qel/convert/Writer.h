#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "qel/base/Utf16.h"
#include "qel/convert/Report.h"
#include "qel/model/RunSink.h"

namespace qel::convert {

/// How much of the first `count` units of a text consists of whole characters, or all of it.
inline std::size_t whole_characters(std::u16string_view text, std::size_t count) {
  const bool is_cut = count > 0 && count < text.size() && is_high_surrogate(text[count - 1]);
  return is_cut ? count - 1 : count;
}
inline std::size_t whole_characters(std::string_view text, std::size_t count) {
  if (count == text.size()) return count;
  while (count > 0 && (static_cast<unsigned char>(text[count]) & 0xC0U) == 0x80) --count;
  return count;
}

/// The writer of a format, in UTF-16 or UTF-8, and what it has written and nobody has taken yet.
template <class Char>
class BasicWriter : public BasicRunSink<Char> {
 public:
  std::size_t size() const { return out_.size(); }
  /// Adds the formats that the output has no name or code for.
  virtual void count_lacking(Dropped& /*dropped*/) const {}
  /// Passes on what is written, except what the writer has to look back at. Characters stay whole.
  template <class Take>
  void drain(Take take) {
    if (out_.size() <= needed_) return;
    const std::size_t count = whole_characters(out_, out_.size() - needed_);
    if (count == 0) return;
    take(std::basic_string_view<Char>(out_).substr(0, count));
    out_.erase(0, count);
    forget(count);
  }
  /// Passes on the rest. To be called when the text has ended.
  template <class Take>
  void drain_all(Take take) {
    needed_ = 0;
    drain(take);
  }

 protected:
  explicit BasicWriter(std::size_t needed = 0) : needed_(needed) {}
  std::basic_string<Char>& out() { return out_; }
  /// Takes note that the first `count` characters have been taken away.
  virtual void forget(std::size_t /*count*/) {}

 private:
  std::basic_string<Char> out_;
  std::size_t needed_;
};

using Writer = BasicWriter<char16_t>;

}  // namespace qel::convert
