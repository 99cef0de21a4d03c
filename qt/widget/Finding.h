#pragma once

#include <QPointer>
#include <QString>
#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "qel/box/Search.h"
#include "qt/platform/BoxMarks.h"

namespace qel::qt {

/// A search in one box after the other: its hits are marked, the one found last is selected.
class Finding : public MarkSource {
  Q_OBJECT

 public:
  enum class Outcome : std::uint8_t {
    none,
    found,
    from_beginning,  ///< found after going on at the other end
    from_end,
  };
  /// How many hits there are, and which of them is selected, from 1; 0 for none.
  struct Count {
    std::size_t current = 0;
    std::size_t total = 0;
    bool is_more = false;  ///< than `total`
  };
  /// As far as hits are counted.
  static constexpr std::size_t most_counted = 10'000;

  /// Goes on in another box; null for none.
  void attach(BoxView* view);
  /// Whether hits are marked.
  void show_marks(bool shown);
  BoxView* view() const { return view_; }
  /// The box of the view; null where there is none.
  std::shared_ptr<box::Box> box() const;

  const box::Wanted& wanted() const { return search_.wanted(); }
  void put_wanted(box::Wanted wanted);

  /// Each selects a hit: the first one from the beginning of the selection on, or that behind or
  /// before it.
  Outcome find_here();
  Outcome find_next();
  Outcome find_previous();
  /// Replaces the selection if it is a hit.
  void replace(const QString& text);
  /// How many hits were replaced.
  std::size_t replace_all(const QString& text);

  Count count();

  std::vector<Mark> marks(const box::Box& box, richtext::Extent visible) override;

 signals:
  void selection_changed();
  void text_changed();
  /// The box may or may not be edited now.
  void access_changed();

 private:
  using Hit = std::optional<richtext::Extent>;

  bool eventFilter(QObject* watched, QEvent* event) override;
  void forget_hits() { hits_.reset(); }
  void select(richtext::Extent hit);
  Outcome take(Hit hit, Hit from_other_end, Outcome at_other_end);

  QPointer<BoxView> view_;
  bool shows_marks_ = false;
  box::Search search_{box::Wanted()};
  std::optional<std::vector<richtext::Extent>> hits_;  // one more than are counted at most
};

}  // namespace qel::qt
