#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "qel/base/Utf16.h"
#include "qel/convert/Report.h"
#include "qel/model/RunSink.h"

namespace qel::convert {

/// The writer of a format, and what it has written and nobody has taken yet.
class Writer : public RunSink {
 public:
  std::size_t size() const { return out_.size(); }
  /// Adds the formats that the output has no name or code for.
  virtual void count_lacking(Dropped& /*dropped*/) const {}
  /// Passes on what is written, except what the writer has to look back at. Surrogate pairs stay
  /// together.
  template <class Take>
  void drain(Take take) {
    if (out_.size() <= needed_) return;
    std::size_t count = out_.size() - needed_;
    if (needed_ > 0 && is_high_surrogate(out_[count - 1])) --count;
    take(std::u16string_view(out_).substr(0, count));
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
  explicit Writer(std::size_t needed = 0) : needed_(needed) {}
  std::u16string& out() { return out_; }
  /// Takes note that the first `count` characters have been taken away.
  virtual void forget(std::size_t /*count*/) {}

 private:
  std::u16string out_;
  std::size_t needed_;
};

}  // namespace qel::convert
