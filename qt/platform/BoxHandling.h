#pragma once

#include "qt/platform/BoxView.h"

namespace qel::qt {

/// Marks that the view, or its menu, is handling an event, as long as it lives: it holds the box,
/// since listeners may let go of it, and keeps the view and the menu from being deleted. Edits by
/// others are taken first.
class BoxView::Handling {
 public:
  enum class Foreign { take, leave };

  explicit Handling(BoxView& view, Foreign foreign = Foreign::take) : counted_(view) {
    if (view.box_ != nullptr) held_ = view.box_->weak_from_this().lock();
    if (foreign == Foreign::take) view.take_foreign_edit();
  }
  Handling(const Handling&) = delete;
  Handling& operator=(const Handling&) = delete;
  ~Handling() = default;

 private:
  /// Outlives the held box, which tells the view when it is gone.
  struct Counted {
    explicit Counted(BoxView& view) : view_(view) { ++view_.handling_; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    ~Counted() { --view_.handling_; }
    BoxView& view_;
  };

  Counted counted_;
  std::shared_ptr<box::Box> held_;
};

}  // namespace qel::qt
