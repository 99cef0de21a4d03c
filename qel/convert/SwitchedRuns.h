#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "qel/convert/Options.h"
#include "qel/model/RunSink.h"

namespace qel::convert {

/// Passes runs on with what the switches make of breaks and tabs. A blank in place of a break has
/// the format of the text before it; where breaks become blanks, one blank at the end is dropped.
template <class Char>
class SwitchedRuns : public BasicRunSink<Char> {
 public:
  /// `sink` has to outlive this object.
  SwitchedRuns(const Switches& switches, BasicRunSink<Char>& sink)
      : switches_(switches), sink_(sink) {}

  void text(std::basic_string_view<Char> text, const style_codes::CodeState& state) override;
  void line_break(const style_codes::CodeState& state) override;
  void finish() override;

 private:
  using String = std::basic_string<Char>;

  void pass(std::basic_string_view<Char> text, const style_codes::CodeState& state);
  void pass_held();

  Switches switches_;
  BasicRunSink<Char>& sink_;
  bool has_text_ = false;
  style_codes::CodeState state_;  // of the text so far
  std::size_t blanks_first_ = 0;  // for breaks before any text
  bool is_blank_held_ = false;    // which may be the last character
  String changed_;
};

}  // namespace qel::convert
