#pragma once

#include <cstdint>

#include "qel/platform/RichEdit.h"

namespace qel {

/// Takes the format of a selection, and gives it to what is selected next.
class FormatBrush {
 public:
  enum class State : std::uint8_t { off, once, until_ended };

  State state() const { return state_; }
  bool is_on() const { return state_ != State::off; }
  /// Takes the format of the selection that there is now.
  void begin(const platform::RichEdit& box, State state);
  void end() { state_ = State::off; }
  /// Gives it to the selection; returns false where that is none, or the one that it was taken
  /// from or given to last. For the moments when a user has selected something.
  bool paint(platform::RichEdit& box);

 private:
  State state_ = State::off;
  richtext::FormatChange format_;
  platform::Range taken_from_;
};

}  // namespace qel
