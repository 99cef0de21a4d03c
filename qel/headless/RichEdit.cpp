#include "qel/headless/RichEdit.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "qel/base/Scoped.h"
#include "qel/base/Utf16.h"
#include "qel/headless/Drag.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/richtext/RtfWriter.h"

namespace qel::headless {

using platform::Scope;
using richtext::Alignment;
using richtext::CharFormat;
using richtext::Document;
using richtext::Extent;
using richtext::FormatChange;
using richtext::MixedFormat;

std::u16string RichEdit::text(Scope scope) const {
  const Extent extent = extent_of(scope);
  return document_.text().substr(extent.start, extent.length());
}

void RichEdit::put_text(Scope scope, std::u16string_view text) {
  replace(scope, plain_content(extent_of(scope), text));
}

Document RichEdit::plain_content(Extent extent, std::u16string_view text) const {
  Document content = richtext::plain_document(text, format_for(extent));
  content.align({0, content.size()}, document_.alignment_at(extent.start));
  return content;
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
  if (stays) return;
  selection_ = selection;
  history_.end_step();
  if (document_.size() > 0) typing_ = format_at(selected());
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
  const bool is_new = !change.is_in(format());
  change.apply_to(typing_);
  history_.end_step();
  const Extent extent = selected();
  if (extent.length() == 0 || !is_new) return;
  history_.record(document_, extent, extent.length(), selection_, selection_, Kind::other);
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
  if (this->alignment() == alignment) return;
  const Extent extent = selected_paragraphs();
  history_.record(document_, document_.paragraphs(extent), document_.paragraphs(extent).length(),
                  selection_, selection_, Kind::other);
  document_.align(extent, alignment);
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
  if (!change.font_name && !change.size) return;
  history_.clear();
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
  if (scope == Scope::selection) {
    replace_part(selected(), std::move(content), Kind::other);
    return;
  }
  const CharFormat before = format_for(extent_of(scope));
  document_ = std::move(content);
  selection_ = {0, 0};
  history_.clear();
  typing_ = document_.size() == 0 ? before : format_at(selection_);
  tell_change();
}

void RichEdit::replace_part(Extent extent, Document content, Kind kind) {
  const std::size_t inserted = content.size();
  if (extent.length() == 0 && inserted == 0) return;
  const CharFormat before = format_for(extent);
  const Extent after = {extent.start + inserted, extent.start + inserted};
  history_.record(document_, extent, inserted, selection_, after, kind);
  document_.replace(extent, std::move(content));
  selection_ = after;
  typing_ = inserted == 0 || document_.size() == 0 ? before : format_at(selection_);
  tell_change();
}

// What a user does.

void RichEdit::type(char16_t character) {
  const Extent extent = selected();
  replace_part(extent, plain_content(extent, {&character, 1}), Kind::typing);
  if (character == u'\r') history_.end_step();
}

void RichEdit::erase(platform::Range range, Kind kind) {
  const auto start = static_cast<std::size_t>(range.start);
  const Extent extent =
      document_.without_cut_breaks({start, start + static_cast<std::size_t>(range.length)});
  if (extent.length() != 0) replace_part(extent, Document(), kind);
}

bool RichEdit::take_step(std::optional<Extent> (UndoHistory::*step)(Document&)) {
  const std::optional<Extent> selection = (history_.*step)(document_);
  if (!selection) return false;
  selection_ = *selection;
  if (document_.size() > 0) typing_ = format_at(selected());
  tell_change();
  return true;
}

bool RichEdit::undo() { return take_step(&UndoHistory::undo); }

bool RichEdit::redo() { return take_step(&UndoHistory::redo); }

bool RichEdit::insert(const std::optional<std::u16string>& rtf,
                      const std::optional<std::u16string>& text) {
  const Extent extent = selected();
  auto content = richtext::read_transfer(rtf, text, format_for(extent), !appearance_.multiline);
  if (!content) return false;
  if (!rtf || rtf->empty())
    content->align({0, content->size()}, document_.alignment_at(extent.start));
  replace_part(extent, *std::move(content), Kind::other);
  return true;
}

std::int32_t RichEdit::position_at(float x, float y) const {
  const std::u16string& text = document_.text();
  std::size_t start = 0;
  const float last_line = static_cast<float>(text.size());
  const auto line = static_cast<std::size_t>(std::clamp(y / line_height, 0.0F, last_line));
  for (std::size_t i = 0; i < line; ++i) {
    const std::size_t line_feed = text.find(u'\n', start);
    if (line_feed == std::u16string::npos) break;
    start = line_feed + 1;
  }
  const std::size_t length = std::min(text.find(u'\r', start), text.size()) - start;
  const float column = std::clamp(x / character_width + 0.5F, 0.0F, static_cast<float>(length));
  const std::size_t at = start + static_cast<std::size_t>(column);
  const bool is_inside_pair = at > start && at < text.size() && is_pair_at(text, at - 1);
  return static_cast<std::int32_t>(is_inside_pair ? at - 1 : at);
}

// Drag and drop.

void RichEdit::start_drag() {
  platform::DragData data;
  const Scoped dragging(dragged_, std::optional<Dragged>({selected(), revision_}));
  const std::u16string text = this->text(Scope::selection);
  if (!text.empty()) {
    data.put(platform::text_format, text);
    data.put(platform::rtf_format, rtf(Scope::selection));
  }
  data.put_supply([this](platform::DragData& promised, std::int16_t format) {
    listener_->on_set_data(promised, format);
  });
  std::int32_t effects =
      platform::copy_drop | (appearance_.read_only ? platform::no_drop : platform::move_drop);
  listener_->on_start_drag(data, effects);
  if (effects == platform::no_drop || !data.is_text()) return;
  Drag drag(*this, data, effects);
  carry(drag);
  drag.leave();
  // What was moved within the box, or changed meanwhile, is not taken out.
  constexpr std::int32_t box_drags = 1;
  const bool moves = drag.effect() == platform::move_drop && !drag.stays_in_source() &&
                     appearance_.drag_mode == box_drags;
  if (moves && dragged_->revision == revision_) {
    replace_part(dragged_->extent, Document(), Kind::other);
  }
  std::int32_t effect = drag.effect();
  listener_->on_complete_drag(effect);
}

void RichEdit::carry(Drag& drag) const {
  if (desktop_->dragger) desktop_->dragger(drag);
}

bool RichEdit::take_drop(platform::DragData& data, std::int32_t position, const RichEdit* source,
                         std::int32_t effect) {
  if (source == this && effect == platform::move_drop) {
    return move_dragged(static_cast<std::size_t>(position));
  }
  const auto rtf = data.get(platform::rtf_format);
  const auto text = rtf ? std::nullopt : data.get(platform::text_format);
  select({position, 0});
  if (!insert(rtf, text)) return false;
  select({position, selection().start - position});
  return true;
}

/// One change, so that it is undone as one. Nothing moves when the text was changed meanwhile.
bool RichEdit::move_dragged(std::size_t to) {
  if (!dragged_ || dragged_->revision != revision_) return false;
  const Extent moved = dragged_->extent;
  to = document_.without_cut_breaks({to, to}).start;
  if (to >= moved.start && to <= moved.end) return true;
  const bool ahead = to > moved.start;
  const Extent passed = ahead ? Extent{moved.end, to} : Extent{to, moved.start};
  Document content = document_.part(moved);
  const std::size_t where = ahead ? 0 : content.size();
  content.replace({where, where}, document_.part(passed));
  const std::size_t start = ahead ? passed.end - moved.length() : to;
  replace_part({std::min(moved.start, to), std::max(moved.end, to)}, std::move(content),
               Kind::other);
  select({static_cast<std::int32_t>(start), static_cast<std::int32_t>(moved.length())});
  return true;
}

}  // namespace qel::headless
