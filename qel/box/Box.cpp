#include "qel/box/Box.h"

#include <algorithm>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qel/base/Graphemes.h"
#include "qel/base/Scoped.h"
#include "qel/base/Utf16.h"
#include "qel/richtext/DocumentReader.h"

namespace qel::box {

using platform::Scope;
using richtext::Alignment;
using richtext::CharFormat;
using richtext::Document;
using richtext::Extent;
using richtext::FormatChange;
using richtext::MixedFormat;

Box::~Box() {
  if (view_ != nullptr) view_->close();
}

// The content.

Document Box::content(Scope scope) const { return document_.part(extent_of(scope)); }

void Box::put_content(Scope scope, Document content) {
  settle();
  content = richtext::with_whole_breaks(std::move(content));
  if (scope == Scope::selection) {
    replace(selection_.extent(), std::move(content), Kind::other);
    return;
  }
  const Change change = {Change::Kind::everything, {0, document_.size()}, content.size()};
  const CharFormat before = format_for(change.extent);
  document_ = std::move(content);
  selection_ = {};
  history_.clear();
  typing_ = document_.size() == 0 ? before : format_at(selection_.extent());
  tell_change(change);
}

platform::TextDefaults Box::text_defaults(Scope scope) const {
  const Extent extent = extent_of(scope);
  return {format_for(extent), document_.alignment_at(extent.start)};
}

MixedFormat Box::format() const {
  const Extent extent = selection_.extent();
  if (extent.length() == 0) return MixedFormat(typing_);
  const richtext::RunList& runs = document_.runs();
  std::size_t index = runs.find(extent.start);
  MixedFormat mixed(document_.format(runs.run(index).value));
  for (++index; index < runs.run_count() && runs.run(index).start < extent.end; ++index) {
    mixed.merge(document_.format(runs.run(index).value));
  }
  return mixed;
}

void Box::change_format(const FormatChange& change) {
  settle();
  if (view_ != nullptr && change.color && *change.color != 0 &&
      *change.color == view_->text_color()) {
    FormatChange of_content = change;
    of_content.color = 0;
    change_format(of_content);
    return;
  }
  const bool is_new = !change.is_in(format());
  history_.end_step();
  const Extent extent = selection_.extent();
  const Change changed = {Change::Kind::formats, extent, extent.length()};
  const bool is_step = is_new && extent.length() != 0;
  if (is_step) history_.record(document_, changed, {}, caret(), Kind::other);
  change.apply_to(typing_);
  if (is_step) {
    history_.put_after(caret());
    document_.change_format(extent, change);
    tell_change(changed);
  } else if (is_new) {
    // The view shows the next character typed in this format.
    tell_selection();
  }
}

std::optional<Alignment> Box::alignment() const {
  const richtext::RunList& runs = document_.alignments();
  const Extent extent = selected_paragraphs();
  if (runs.find(extent.start) != runs.find(extent.end)) return {};
  return document_.alignment_at(extent.start);
}

void Box::put_alignment(Alignment alignment) {
  settle();
  if (this->alignment() == alignment) return;
  Extent extent = document_.paragraphs(selected_paragraphs());
  if (extent.end < document_.size()) --extent.end;  // before the break, not within it
  const Change changed = {Change::Kind::alignments, extent, extent.length()};
  history_.end_step();
  history_.record(document_, changed, {}, caret(), Kind::other);
  history_.put_after(caret());
  document_.align(extent, alignment);
  tell_change(changed);
}

void Box::visit_runs(std::int32_t from, const platform::RunVisitor& visit) const {
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

Document Box::plain_content(Extent extent, std::u16string_view text) const {
  Document content = richtext::plain_document(text, format_for(extent));
  content.align({0, content.size()}, document_.alignment_at(extent.start));
  return content;
}

void Box::replace(Extent extent, Document content, Kind kind) {
  const Change change = {Change::Kind::content, extent, content.size()};
  if (extent.length() == 0 && change.length == 0) return;
  const CharFormat before = format_for(extent);
  history_.record(document_, change, content.text(), caret(), kind);
  document_.replace(extent, std::move(content));
  // The halves of a pair may have come together.
  const std::size_t end = whole_position(document_.text(), change.after().end);
  selection_ = {end, end};
  typing_ = change.length == 0 || document_.size() == 0 ? before : format_at(selection_.extent());
  history_.put_after(caret());
  tell_change(change);
}

void Box::show(const Change& change) {
  if (view_ != nullptr) view_->show(change);
}

void Box::tell_change(const Change& change) {
  ++revision_;
  show(change);
  listener_->on_change();
  listener_->on_selection();
}

// The selection.

platform::Range Box::selection() const {
  return {static_cast<std::int32_t>(selection_.start()),
          static_cast<std::int32_t>(selection_.extent().length())};
}

void Box::select(platform::Range range) {
  settle();
  const auto size = static_cast<std::int64_t>(document_.size());
  const std::int64_t start = std::clamp<std::int64_t>(range.start, 0, size);
  const std::int64_t length = std::clamp<std::int64_t>(range.length, 0, size - start);
  put_selection(
      Selection{static_cast<std::size_t>(start), static_cast<std::size_t>(start + length)});
}

void Box::put_selection(Selection selection) {
  const std::u16string_view text = document_.text();
  const auto whole = [&](std::size_t& position, bool ends) {
    const std::size_t begin = whole_position(text, std::min(position, text.size()));
    const bool is_cut = begin < position && position < text.size();
    position = is_cut && ends ? step_after(text, begin) : begin;
  };
  const bool is_caret = selection.is_empty();
  const bool is_backward = selection.caret < selection.anchor;
  whole(selection.anchor, !is_caret && is_backward);
  whole(selection.caret, !is_caret && !is_backward);
  // A caret that does not move keeps the format that was chosen for the next character.
  if (selection == selection_) return;
  const bool is_same_extent =
      selection.start() == selection_.start() && selection.end() == selection_.end();
  selection_ = selection;
  if (!is_same_extent) {
    history_.end_step();
    if (document_.size() > 0) typing_ = format_at(selection_.extent());
  }
  tell_selection();
}

void Box::tell_selection() {
  if (view_ != nullptr) view_->show_selection();
  listener_->on_selection();
}

Extent Box::extent_of(Scope scope) const {
  return scope == Scope::document ? Extent{0, document_.size()} : selection_.extent();
}

Extent Box::selected_paragraphs() const {
  // A break at the end of the selection belongs to the paragraph that it ends.
  return {selection_.start(), selection_.end() - (selection_.is_empty() ? 0 : 1)};
}

const CharFormat& Box::format_at(Extent extent) const {
  if (extent.length() != 0) return document_.format_at(extent.start);
  return document_.format_at(extent.start == 0 ? 0 : extent.start - 1);
}

const CharFormat& Box::format_for(Extent extent) const {
  const bool is_at_caret =
      extent.length() == 0 && selection_.is_empty() && extent.start == selection_.caret;
  return is_at_caret || document_.size() == 0 ? typing_ : format_at(extent);
}

// The window.

void Box::put_appearance(const platform::BoxAppearance& appearance) {
  FormatChange change;
  if (appearance.font_name != appearance_.font_name) change.font_name = appearance.font_name;
  if (appearance.font_size != appearance_.font_size) change.size = appearance.font_size;
  const bool has_font = change.font_name || change.size;
  const bool could_edit = may_edit();
  const bool ends_editing = could_edit && (appearance.read_only || !appearance.enabled);
  // A view may need another window for these.
  const bool is_of_window = appearance.multiline != appearance_.multiline ||
                            appearance.scroll_bars != appearance_.scroll_bars;
  if (has_font || ends_editing || is_of_window) settle();
  const platform::BoxAppearance before = std::exchange(appearance_, appearance);
  if (has_font) {
    history_.clear();
    change_own_format(change, before.font_name);
  }
  if (view_ != nullptr) view_->show_appearance(before);
  if (has_font) show({Change::Kind::formats, {0, document_.size()}, document_.size()});
  if (has_font || could_edit != may_edit()) listener_->on_selection();
}

void Box::change_own_format(const FormatChange& change, std::u16string_view own_font) {
  const auto& fonts = appearance_.fonts_of_text;
  const auto change_for = [&](const richtext::CharFormat& format) {
    FormatChange changed = change;
    if (!change.font_name || format.font_name == own_font) return changed;
    auto font = std::find_if(fonts.begin(), fonts.end(),
                             [&](const auto& pair) { return pair.first == format.font_name; });
    if (font == fonts.end() && !equal_ignoring_case(format.font_name, own_font)) {
      font = std::find_if(fonts.begin(), fonts.end(), [&](const auto& pair) {
        return equal_ignoring_case(pair.first, format.font_name);
      });
    }
    if (font != fonts.end()) changed.font_name = font->second;
    return changed;
  };
  change_for(typing_).apply_to(typing_);
  document_.change_formats({0, document_.size()}, change_for);
}

platform::WindowHandle Box::window() const { return view_ == nullptr ? 0 : view_->window(); }

void Box::put_owner(platform::WindowHandle owner) {
  if (view_ != nullptr) view_->put_owner(owner);
}

// What a user does.

void Box::type(std::u16string_view text) {
  const bool breaks = text.find_first_of(u"\r\n") != std::u16string_view::npos;
  Document content = plain_content(selection_.extent(), text);
  if (breaks && !may_break()) content = richtext::in_one_line(content);
  replace(selection_.extent(), std::move(content), Kind::typing);
  if (breaks) history_.end_step();
}

void Box::replace_each(const std::vector<Extent>& parts, std::u16string_view text) {
  if (parts.empty()) return;
  const std::u16string put =
      richtext::in_one_line(richtext::plain_document(text, CharFormat())).text();
  const auto moved = [&](std::size_t position) {
    std::size_t shifted = position;
    for (const Extent& part : parts) {
      if (position <= part.start) break;
      shifted += put.size();
      shifted -= std::min(position, part.end) - part.start;
    }
    return shifted;
  };
  const Extent extent = {parts.front().start, parts.back().end};
  const Change change = {Change::Kind::content, extent, moved(extent.end) - extent.start};
  const Selection selected = {moved(selection_.anchor), moved(selection_.caret)};
  const CharFormat before = format_for(extent);
  history_.record(document_, change, {}, caret(), Kind::other);
  document_.replace_each(parts, put);
  selection_ = {whole_position(document_.text(), selected.anchor),
                whole_position(document_.text(), selected.caret)};
  typing_ = document_.size() == 0 ? before : format_at(selection_.extent());
  history_.put_after(caret());
  tell_change(change);
}

void Box::erase(Extent extent, Kind kind) {
  if (extent.length() != 0) replace(extent, Document(), kind);
}

void Box::take_step(std::optional<UndoHistory::Taken> (UndoHistory::*step)(Document&)) {
  const auto taken = (history_.*step)(document_);
  if (!taken) return;
  selection_ = taken->caret.selection;
  typing_ = taken->caret.typing;
  tell_change(taken->change);
}

bool Box::paste(platform::DragData& data) {
  const auto has = [&](std::int16_t format) {
    const auto value = data.get(format);
    return value && (format == platform::text_format || !value->empty());
  };
  if (!has(platform::rtf_format) && !has(platform::html_format) && !has(platform::text_format)) {
    return false;
  }
  if (listener_->on_paste(data)) return true;
  const Extent extent = selection_.extent();
  auto content = platform::read_transfer(data, clipboard(), format_for(extent),
                                         document_.alignment_at(extent.start), !may_break());
  if (!content) return false;
  replace(extent, *std::move(content), Kind::other);
  return true;
}

bool Box::take_edit(Extent extent, std::u16string_view text) {
  const bool breaks = text.find_first_of(u"\r\n") != std::u16string_view::npos;
  if (!may_edit() || (breaks && !may_break())) {
    show({Change::Kind::content, extent, extent.length()});
    return false;
  }
  put_selection(Selection{extent.start, extent.end});
  replace(extent, plain_content(extent, text), Kind::other);
  return true;
}

// Drag and drop.

void Box::start_drag() {
  if (dragged_) return;
  const auto held = weak_from_this().lock();
  std::optional<std::int32_t> became = drag_selection();
  if (became) listener_->on_complete_drag(*became);
}

/// Returns what has become of it; nothing where no drag began.
std::optional<std::int32_t> Box::drag_selection() {
  platform::DragData data;
  const Scoped dragging(dragged_, std::optional<Dragged>({selection_.extent(), revision_}));
  if (!selection_.is_empty()) {
    data.put(platform::text_format, RichEdit::text(Scope::selection));
    data.put(platform::rtf_format, rtf(Scope::selection));
  }
  data.put_supply([this](platform::DragData& promised, std::int16_t format) {
    listener_->on_set_data(promised, format);
  });
  std::int32_t effects = platform::copy_drop;
  if (may_edit()) effects |= platform::move_drop;
  const platform::DragData own = data;
  listener_->on_start_drag(data, effects);
  dragged_->is_selection = data.has_text_of(own);
  // Nothing is moved out of a text that may not be edited, whoever allows it.
  if (!may_edit()) effects &= ~platform::move_drop;
  if (effects == platform::no_drop || !data.is_text() || view_ == nullptr) return {};
  Drag drag(data, effects, listener_);
  view_->carry(drag);
  // Content that was moved within the box, or changed meanwhile, is not taken out.
  const bool moves = drag.effect() == platform::move_drop && !dragged_->stays &&
                     appearance_.drag_mode == platform::box_drags && may_edit();
  if (moves && is_still_there()) erase(dragged_->extent, Kind::other);
  return drag.effect();
}

std::int32_t Box::take_drop(platform::DragData& data, std::size_t position, std::int32_t effect) {
  const bool moves = dragged_ && dragged_->is_selection && effect == platform::move_drop;
  if (moves && !move_dragged(position)) return platform::no_drop;
  if (!moves) {
    put_caret(position, false);
    const std::size_t start = selection_.caret;
    const std::uint64_t before = revision_;
    // A paste that inserts nothing, as a listener's may, must not erase what is dragged.
    if (!paste(data) || before == revision_) return platform::no_drop;
    put_selection(Selection{start, std::max(start, selection_.caret)});
  }
  if (!dragged_) return effect;
  dragged_->stays = true;
  return moves ? effect : std::int32_t{platform::copy_drop};
}

/// Makes a single change, so that it is undone as one. Does nothing when the text has changed.
bool Box::move_dragged(std::size_t to) {
  if (!is_still_there()) return false;
  const Extent moved = dragged_->extent;
  to = whole_position(document_.text(), to);
  if (to >= moved.start && to <= moved.end) return true;
  const bool ahead = to > moved.start;
  const Extent passed = ahead ? Extent{moved.end, to} : Extent{to, moved.start};
  Document content = document_.part(moved);
  const std::size_t where = ahead ? 0 : content.size();
  content.replace({where, where}, document_.part(passed));
  const std::size_t start = ahead ? passed.end - moved.length() : to;
  replace({std::min(moved.start, to), std::max(moved.end, to)}, std::move(content), Kind::other);
  put_selection(Selection{start, start + moved.length()});
  return true;
}

}  // namespace qel::box
