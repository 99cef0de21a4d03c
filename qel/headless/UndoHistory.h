#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <vector>

#include "qel/richtext/Document.h"

namespace qel::headless {

/// The changes of a document, to be taken back and made again. Memory goes by what was replaced;
/// beyond a limit the oldest changes are forgotten.
class UndoHistory {
 public:
  /// How a change came about. Typed characters next to each other are one step, as are erased ones.
  enum class Kind { typing, erasing_back, erasing_ahead, other };

  /// To be called before `extent` of the document is replaced by `inserted` positions, or gets
  /// other formats. The selections are those before and after the change.
  void record(const richtext::Document& document, richtext::Extent extent, std::size_t inserted,
              richtext::Extent before, richtext::Extent after, Kind kind);
  /// What comes next begins a step of its own.
  void end_step() { is_open_ = false; }
  void clear();

  /// Each takes one step in the document and returns the selection to be set; nothing where there
  /// is no such step.
  std::optional<richtext::Extent> undo(richtext::Document& document);
  std::optional<richtext::Extent> redo(richtext::Document& document);

 private:
  struct Step {
    richtext::Document content;  // what is to be put back
    std::size_t start = 0;       // where,
    std::size_t length = 0;      // and in place of how much
    richtext::Extent before;
    richtext::Extent after;
    Kind kind = Kind::other;
  };

  bool joins(richtext::Extent extent, Kind kind) const;
  void join(const richtext::Document& document, richtext::Extent extent, std::size_t inserted);
  void forget_oldest();
  static void exchange(richtext::Document& document, Step& step);

  std::deque<Step> done_;
  std::vector<Step> undone_;
  std::size_t kept_ = 0;  // code units in the content of the steps done
  bool is_open_ = false;  // the last step may grow
};

}  // namespace qel::headless
