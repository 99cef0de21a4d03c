#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "qel/box/Change.h"
#include "qel/box/Selection.h"
#include "qel/richtext/CharFormat.h"
#include "qel/richtext/Document.h"

namespace qel::box {

/// What the next key acts on: the selection, and the format of the next character typed.
struct Caret {
  Selection selection;
  richtext::CharFormat typing;
};

/// The changes of a document, for undo and redo. Memory depends on how many there are and how much
/// they have replaced; beyond a limit the oldest are forgotten.
class UndoHistory {
 public:
  /// How a change came about. Characters typed next to each other are one step up to the end of a
  /// word, with the blanks behind it, or up to a pause; so are erased ones.
  enum class Kind : std::uint8_t { typing, erasing_back, erasing_ahead, other };

  using Clock = std::function<std::chrono::steady_clock::time_point()>;
  /// What tells pauses; at first, the system's clock.
  void put_clock(Clock clock) { clock_ = std::move(clock); }

  /// A step that was undone or redone: what it has changed, and the caret to set.
  struct Taken {
    Change change;
    Caret caret;
  };

  /// To be called before the change is made in the document, with the caret at that time and the
  /// text that the extent will have.
  void record(const richtext::Document& document, const Change& change, std::u16string_view put,
              Caret before, Kind kind);
  /// Sets the caret after the change that was recorded last.
  void put_after(Caret after) { done_.back().after = std::move(after); }
  /// The next change begins a step of its own.
  void end_step() { is_open_ = false; }
  void clear();

  bool can_undo() const { return !done_.empty(); }
  bool can_redo() const { return !undone_.empty(); }
  /// Each takes one step in the document; empty where there is no such step.
  std::optional<Taken> undo(richtext::Document& document);
  std::optional<Taken> redo(richtext::Document& document);

 private:
  struct Step {
    richtext::Document content;  // what to put back
    std::size_t start = 0;       // where,
    std::size_t length = 0;      // and in place of how much
    Change::Kind changed = Change::Kind::content;
    Caret before;
    Caret after;
    Kind kind = Kind::other;

    /// Roughly, in code units.
    std::size_t cost() const { return content.size() + sizeof(Step) / sizeof(char16_t); }
  };

  bool joins(const richtext::Document& document, const Change& change, std::u16string_view put,
             Kind kind) const;
  void join(const richtext::Document& document, const Change& change);
  void forget_oldest();
  static Change exchange(richtext::Document& document, Step& step);

  std::deque<Step> done_;
  std::vector<Step> undone_;
  std::size_t kept_ = 0;  // the cost of `done_`
  bool is_open_ = false;  // the last step may grow
  Clock clock_ = std::chrono::steady_clock::now;
  std::chrono::steady_clock::time_point last_;  // when something changed
};

}  // namespace qel::box
