#include "qel/embedded/RichEdit.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "qel/richtext/DocumentReader.h"
#include "qel/richtext/RtfWriter.h"

namespace qel::embedded {

using platform::Alignment;
using platform::CharFormat;
using platform::FormatChange;
using platform::MixedFormat;
using platform::Scope;
using richtext::Document;
using richtext::Extent;

std::u16string RichEdit::text(Scope scope) const {
  const Extent extent = extent_of(scope);
  return document_.text().substr(extent.start, extent.length());
}

void RichEdit::put_text(Scope scope, std::u16string_view text) {
  const Extent extent = extent_of(scope);
  Document content = richtext::plain_document(text, format_for(extent));
  content.align({0, content.size()}, document_.alignment_at(extent.start));
  replace(scope, std::move(content));
}

std::u16string RichEdit::rtf(Scope scope) const {
  return richtext::write_rtf(document_, extent_of(scope), typing_);
}

void RichEdit::put_rtf(Scope scope, std::u16string_view rtf) {
  replace(scope, richtext::read_document(rtf, format_for(extent_of(scope))));
}

platform::Range RichEdit::selection() const {
  return {static_cast<std::int32_t>(selection_.start),
          static_cast<std::int32_t>(selection_.length())};
}

void RichEdit::select(platform::Range range) {
  const auto size = static_cast<std::int64_t>(document_.size());
  const std::int64_t start = std::clamp<std::int64_t>(range.start, 0, size);
  const std::int64_t length = std::clamp<std::int64_t>(range.length, 0, size - start);
  const Extent selection = {static_cast<std::size_t>(start),
                            static_cast<std::size_t>(start + length)};
  // A caret that stays keeps the format that was chosen for what is typed next.
  const bool stays = selection.start == selection_.start && selection.end == selection_.end;
  selection_ = selection;
  if (!stays && document_.size() > 0) typing_ = format_at(selected());
}

MixedFormat RichEdit::format() const {
  const Extent extent = selected();
  if (extent.length() == 0) return MixedFormat(typing_);
  const richtext::RunList& runs = document_.runs();
  std::size_t index = runs.find(extent.start);
  MixedFormat mixed(document_.format(runs.run(index).value));
  for (++index; index < runs.run_count() && runs.run(index).start < extent.end; ++index) {
    mixed.merge(document_.format(runs.run(index).value));
  }
  return mixed;
}

void RichEdit::change_format(const FormatChange& change) {
  change.apply_to(typing_);
  const Extent extent = selected();
  if (extent.length() == 0) return;
  document_.change_format(extent, change);
  tell_change();
}

std::optional<Alignment> RichEdit::alignment() const {
  const richtext::RunList& runs = document_.alignments();
  const Extent extent = selected_paragraphs();
  if (runs.find(extent.start) != runs.find(extent.end)) return {};
  return document_.alignment_at(extent.start);
}

void RichEdit::put_alignment(Alignment alignment) {
  document_.align(selected_paragraphs(), alignment);
  tell_change();
}

void RichEdit::visit_runs(std::int32_t from, const platform::RunVisitor& visit) const {
  const auto start = static_cast<std::size_t>(std::max(from, 0));
  const richtext::RunList& runs = document_.runs();
  const std::u16string_view text = document_.text();
  for (std::size_t index = runs.find(start); index < runs.run_count(); ++index) {
    const richtext::RunList::Run run = runs.run(index);
    const platform::FormatRun visited{static_cast<std::int32_t>(run.start),
                                      text.substr(run.start, run.end - run.start),
                                      document_.format(run.value)};
    if (!visit(visited)) return;
  }
}

void RichEdit::put_appearance(const platform::BoxAppearance& appearance) {
  FormatChange change;
  if (appearance.font_name != appearance_.font_name) change.font_name = appearance.font_name;
  if (appearance.font_size != appearance_.font_size) change.size = appearance.font_size;
  appearance_ = appearance;
  change.apply_to(typing_);
  document_.change_format({0, document_.size()}, change);
}

Extent RichEdit::extent_of(Scope scope) const {
  if (scope == Scope::document) return {0, document_.size()};
  return selected();
}

Extent RichEdit::selected_paragraphs() const {
  // A break at the end of the selection belongs to the paragraph that it ends.
  const std::size_t last_selected = selection_.end - (selection_.length() != 0 ? 1 : 0);
  return {selection_.start, last_selected};
}

const CharFormat& RichEdit::format_at(Extent extent) const {
  if (extent.length() != 0) return document_.format_at(extent.start);
  return document_.format_at(extent.start == 0 ? 0 : extent.start - 1);
}

const CharFormat& RichEdit::format_for(Extent extent) const {
  const bool is_selected_caret =
      extent.length() == 0 && selection_.length() == 0 && extent.start == selected().start;
  return is_selected_caret || document_.size() == 0 ? typing_ : format_at(extent);
}

void RichEdit::replace(Scope scope, Document content) {
  const Extent extent = extent_of(scope);
  const CharFormat before = format_for(extent);
  const std::size_t inserted = content.size();
  if (scope == Scope::document) {
    document_ = std::move(content);
    selection_ = {0, 0};
  } else {
    document_.replace(extent, std::move(content));
    selection_ = {extent.start + inserted, extent.start + inserted};
  }
  typing_ = inserted == 0 || document_.size() == 0 ? before : format_at(selection_);
  tell_change();
}

void RichEdit::tell_change() {
  if (listener_ != nullptr) listener_->on_change();
}

}  // namespace qel::embedded
