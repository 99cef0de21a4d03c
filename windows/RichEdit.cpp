#include "windows/RichEdit.h"

#include "windows/BoxWindow.h"

namespace qel::windows {

using platform::Scope;

// A change is told of, and whoever is told may let go of this box: each change holds on to what it
// works on.

RichEdit::RichEdit(HWND owner, platform::Clipboard& clipboard)
    : box_(std::make_shared<BoxWindow>(clipboard)) {
  if (owner != nullptr) box_->put_owner(owner);
}

RichEdit::~RichEdit() { box_->close(); }

std::u16string RichEdit::text(Scope scope) const { return box_->content().text(scope); }

void RichEdit::put_text(Scope scope, std::u16string_view text) {
  const auto box = box_;
  box->content().put_text(scope, text);
}

std::u16string RichEdit::rtf(Scope scope) const { return box_->content().rtf(scope); }

void RichEdit::put_rtf(Scope scope, std::u16string_view rtf) {
  const auto box = box_;
  box->content().put_rtf(scope, rtf);
}

platform::Range RichEdit::selection() const { return box_->content().selection(); }

void RichEdit::select(platform::Range range) { box_->select(range); }

richtext::MixedFormat RichEdit::format() const { return box_->content().format(); }

void RichEdit::change_format(const richtext::FormatChange& change) {
  const auto box = box_;
  box->content().change_format(change);
}

std::optional<richtext::Alignment> RichEdit::alignment() const {
  return box_->content().alignment();
}

void RichEdit::put_alignment(richtext::Alignment alignment) {
  const auto box = box_;
  box->content().put_alignment(alignment);
}

void RichEdit::visit_runs(std::int32_t from, const platform::RunVisitor& visit) const {
  box_->content().visit_runs(from, visit);
}

platform::BoxAppearance RichEdit::appearance() const { return box_->content().appearance(); }

void RichEdit::put_appearance(const platform::BoxAppearance& appearance) {
  const auto box = box_;
  box->put_appearance(appearance);
}

void RichEdit::start_drag() {
  const auto box = box_;
  box->start_drag();
}

void RichEdit::listen(platform::BoxListener* listener) { box_->listen(listener); }

HWND RichEdit::window() const { return box_->window(); }

void RichEdit::put_owner(HWND owner) { box_->put_owner(owner); }

std::int32_t RichEdit::position_at(POINT point) const { return box_->position_at(point); }

POINT RichEdit::point_of(std::int32_t position) const { return box_->point_of(position); }

}  // namespace qel::windows
