#include "qt/widget/Finding.h"

#include <QEvent>
#include <algorithm>
#include <utility>

#include "qt/platform/BoxView.h"
#include "qt/platform/Text.h"
#include "qt/widget/WordMarks.h"

namespace qel::qt {

using richtext::Extent;

void Finding::attach(BoxView* view) {
  if (view == view_) return;
  forget_hits();
  if (view_ != nullptr) {
    view_->marks().remove(*this);
    view_->removeEventFilter(this);
    view_->disconnect(this);
    view_->document()->disconnect(this);
  }
  view_ = view;
  if (view == nullptr) return;
  if (shows_marks_) view->marks().add(*this, BoxMarks::Layer::hits);
  view->installEventFilter(this);
  connect(view->document(), &QTextDocument::contentsChange, this, [this] {
    forget_hits();
    emit text_changed();
  });
  connect(view, &QTextEdit::selectionChanged, this, &Finding::selection_changed);
  connect(view, &QTextEdit::cursorPositionChanged, this, &Finding::selection_changed);
}

void Finding::show_marks(bool shown) {
  if (shown == shows_marks_) return;
  shows_marks_ = shown;
  if (view_ == nullptr) return;
  if (shown) {
    view_->marks().add(*this, BoxMarks::Layer::hits);
  } else {
    view_->marks().remove(*this);
  }
}

bool Finding::eventFilter(QObject* watched, QEvent* event) {
  const bool is_access =
      event->type() == QEvent::ReadOnlyChange || event->type() == QEvent::EnabledChange;
  if (is_access) emit access_changed();
  return MarkSource::eventFilter(watched, event);
}

std::shared_ptr<box::Box> Finding::box() const {
  if (view_ == nullptr || view_->box() == nullptr) return nullptr;
  return view_->box()->weak_from_this().lock();
}

void Finding::put_wanted(box::Wanted wanted) {
  if (wanted == search_.wanted()) return;
  search_ = box::Search(std::move(wanted));
  forget_hits();
  emit changed();
}

void Finding::select(Extent hit) {
  const auto held = box();
  held->select({static_cast<std::int32_t>(hit.start), static_cast<std::int32_t>(hit.length())});
  if (view_ != nullptr) view_->ensureCursorVisible();
}

Finding::Outcome Finding::take(Hit hit, Hit from_other_end, Outcome at_other_end) {
  const bool is_here = hit.has_value();
  if (!is_here) hit = from_other_end;
  if (!hit) return Outcome::none;
  select(*hit);
  return is_here ? Outcome::found : at_other_end;
}

Finding::Outcome Finding::find_here() {
  const auto held = box();
  if (held == nullptr || wanted().is_empty()) return Outcome::none;
  held->settle();
  const richtext::Document& document = held->document();
  const Hit hit = search_.next(document, held->selected().start());
  return take(hit, hit ? hit : search_.next(document, 0), Outcome::from_beginning);
}

Finding::Outcome Finding::find_next() {
  const auto held = box();
  if (held == nullptr || wanted().is_empty()) return Outcome::none;
  held->settle();
  const richtext::Document& document = held->document();
  const Hit hit = search_.next(document, held->selected().end());
  return take(hit, hit ? hit : search_.next(document, 0), Outcome::from_beginning);
}

Finding::Outcome Finding::find_previous() {
  const auto held = box();
  if (held == nullptr || wanted().is_empty()) return Outcome::none;
  held->settle();
  const richtext::Document& document = held->document();
  const Hit hit = search_.previous(document, held->selected().start());
  return take(hit, hit ? hit : search_.previous(document, document.size()), Outcome::from_end);
}

void Finding::replace(const QString& text) {
  const auto held = box();
  if (held == nullptr || !held->may_edit()) return;
  held->settle();
  const Extent selected = held->selected().extent();
  if (search_.is_hit(held->document(), selected)) held->replace_each({selected}, view_of(text));
}

std::size_t Finding::replace_all(const QString& text) {
  const auto held = box();
  if (held == nullptr || !held->may_edit()) return 0;
  held->settle();
  const auto hits = search_.all(held->document(), held->document().size());
  held->replace_each(hits, view_of(text));
  return hits.size();
}

Finding::Count Finding::count() {
  const auto held = box();
  if (held == nullptr || wanted().is_empty()) return {};
  if (!hits_) hits_ = search_.all(held->document(), most_counted + 1);
  const Extent selected = held->selected().extent();
  const auto current =
      std::lower_bound(hits_->begin(), hits_->end(), selected.start,
                       [](const Extent& hit, std::size_t start) { return hit.start < start; });
  const bool is_hit =
      current != hits_->end() && current->start == selected.start && current->end == selected.end;
  const auto index = static_cast<std::size_t>(current - hits_->begin()) + 1;
  return {is_hit && index <= most_counted ? index : 0, std::min(hits_->size(), most_counted),
          hits_->size() > most_counted};
}

std::vector<Mark> Finding::marks(const box::Box& box, Extent visible) {
  std::vector<Mark> found;
  const QTextCharFormat format = hit_format(box);
  const std::size_t reach = std::min(visible.start, wanted().text.size());
  search_.visit(box.document(), visible.start - reach, [&](Extent hit) {
    if (hit.start < visible.end) found.push_back({hit, format});
    return hit.start < visible.end;
  });
  return found;
}

}  // namespace qel::qt
