#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

#include "qel/box/Change.h"
#include "qel/box/Selection.h"
#include "qel/richtext/Document.h"

namespace qel::box {

/// The changes of a document, to be taken back and made again. Memory goes by what was replaced;
/// beyond a limit the oldest changes are forgotten.
class UndoHistory {
 public:
  /// How a change came about. Typed characters next to each other are one step, as are erased ones.
  enum class Kind : std::uint8_t { typing, erasing_back, erasing_ahead, other };

  /// A step that was taken: what has changed by it, and the selection to be set.
  struct Taken {
    Change change;
    Selection selection;
  };

  /// To be called before the change is made in the document. The selections are those before and
  /// after it.
  void record(const richtext::Document& document, const Change& change, Selection before,
              Selection after, Kind kind);
  /// What comes next begins a step of its own.
  void end_step() { is_open_ = false; }
  void clear();

  bool can_undo() const { return !done_.empty(); }
  bool can_redo() const { return !undone_.empty(); }
  /// Each takes one step in the document; nothing where there is no such step.
  std::optional<Taken> undo(richtext::Document& document);
  std::optional<Taken> redo(richtext::Document& document);

 private:
  struct Step {
    richtext::Document content;  // what is to be put back
    std::size_t start = 0;       // where,
    std::size_t length = 0;      // and in place of how much
    Change::Kind changed = Change::Kind::content;
    Selection before;
    Selection after;
    Kind kind = Kind::other;
  };

  bool joins(const Change& change, Kind kind) const;
  void join(const richtext::Document& document, const Change& change);
  void forget_oldest();
  static Change exchange(richtext::Document& document, Step& step);

  std::deque<Step> done_;
  std::vector<Step> undone_;
  std::size_t kept_ = 0;  // code units in the content of the steps done
  bool is_open_ = false;  // the last step may grow
};

}  // namespace qel::box
