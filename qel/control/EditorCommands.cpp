#include "qel/control/EditorCommands.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qel/base/Graphemes.h"
#include "qel/control/Conversion.h"
#include "qel/model/ReservedColors.h"
#include "qel/richtext/Document.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"
#include "qel/text/DocumentCase.h"

namespace qel::editor_commands {
namespace {

using richtext::FormatChange;

void toggle(platform::RichEdit& box, std::optional<bool> richtext::FormatFields::*field) {
  FormatChange change;
  change.*field = !(box.format().*field).value_or(false);
  box.change_format(change);
}

/// Raises text, or lowers it for a negative `offset`; text that is so already goes back to the
/// line.
void shift(platform::RichEdit& box, std::int16_t offset) {
  const std::int16_t now = box.get_SelCharOffset().value_or(0);
  const bool is_shifted = offset > 0 ? now > 0 : now < 0;
  box.put_SelCharOffset(is_shifted ? std::int16_t{0} : offset);
}

bool has_font(const Target& target, std::size_t index) {
  const auto name = target.box.get_SelFontName();
  return name && equal_ignoring_case(*name, target.edited.fonts[index]);
}

void make_plain(const Target& target) {
  FormatChange plain;
  plain.bold = plain.italic = plain.underline = plain.strike_through = false;
  plain.small_caps = false;
  plain.offset = std::int16_t{0};
  plain.color = target.edited.colors[0];
  plain.font_name = target.edited.fonts[0];
  target.box.change_format(plain);
}

void delete_selection(const Target& target) {
  // The Delete key is this command's, so without a selection it erases the next character.
  if (target.box.get_SelLength() == 0) {
    const auto caret = static_cast<std::size_t>(target.box.get_SelStart());
    const std::size_t next = cluster_after(target.box.get_Text(), caret);
    target.box.put_SelLength(static_cast<std::int32_t>(next - caret));
  }
  if (target.box.get_SelLength() > 0) target.box.put_SelText(u"");
}

void copy(const Target& target) {
  if (target.box.get_SelLength() == 0) return;
  target.clipboard.put(target.box.get_SelText(), target.box.get_SelRTF());
}

void cut(const Target& target) {
  if (target.box.get_SelLength() == 0) return;
  copy(target);
  delete_selection(target);
}

/// The converter of a target that has a parser, with the tables of its control.
class TargetConversion {
 public:
  explicit TargetConversion(const Target& target)
      : conversion_{*target.parser, QELIndexFonts(), colors_} {
    for (std::int16_t i = 0; i < 10; ++i) {
      conversion_.fonts.put_Font(i, target.edited.fonts[static_cast<std::size_t>(i)]);
      colors_.put_Color(i, target.edited.colors[static_cast<std::size_t>(i)]);
    }
    conversion_.fonts.put_FontSize(target.edited.font_size);
  }
  Conversion* operator->() { return &conversion_; }

 private:
  QELIndexColors colors_;
  Conversion conversion_;
};

bool is_lossless(const Target& target) {
  return target.parser != nullptr && target.parser->get_Lossless();
}

void paste_text(const Target& target) {
  platform::DragData data = target.clipboard.text_alone();
  paste(data, target);
}

void select_all(const Target& target) {
  target.box.select({0, static_cast<std::int32_t>(target.box.get_Text().size())});
}

void paste(const Target& target) {
  platform::DragData data = target.clipboard.data();
  paste(data, target);
}

/// In the stated way, HTML does not count.
std::optional<richtext::Document> content_of(platform::DragData& data, const Target& target) {
  if (is_lossless(target)) {
    return TargetConversion(target)->pasted(data, target.clipboard, target.box,
                                            target.edited.pastes_text_only);
  }
  const auto [format, alignment] = target.box.text_defaults(platform::Scope::selection);
  const bool in_one_line = !target.box.appearance().takes_breaks;
  return platform::read_transfer(data, nullptr, format, alignment, in_one_line);
}

/// Gives the selection an entry of the tables; the reserved colours have names of their own.
template <std::int16_t Index>
void put_font(const Target& target) {
  target.box.put_SelFontName(target.edited.fonts[Index]);
}

template <std::int16_t Index>
void put_color(const Target& target) {
  target.box.put_SelColor(target.edited.colors[Index]);
}

template <std::int16_t Index>
bool has_color(const Target& target) {
  return target.box.get_SelColor() == target.edited.colors[Index];
}

template <CaseChange Change>
void change_selected(const Target& target) {
  change_letters(target.box, Change, target.edited.colors[hidden_color]);
}

bool selects(const Target& target) { return target.box.get_SelLength() > 0; }
bool takes_formats(const Target& target) { return target.edited.takes_formats; }
bool has_text(const Target& target) { return !target.box.get_Text().empty(); }

struct Command {
  std::u16string_view name;
  void (*run)(const Target& target);
  /// Whether the selection has its format; null for a command without a check mark.
  bool (*is_on)(const Target& target) = nullptr;
  /// Whether it can act now in the lossless way; null for always.
  bool (*is_enabled)(const Target& target) = nullptr;
};

constexpr Command commands[] = {
    {u"mnuUndoStep", [](const Target& t) { t.box.undo(); }, nullptr,
     [](const Target& t) { return t.box.can_undo(); }},
    {u"mnuRedo", [](const Target& t) { t.box.redo(); }, nullptr,
     [](const Target& t) { return t.box.can_redo(); }},
    {u"mnuCut", cut, nullptr, selects},
    {u"mnuCopy", copy, nullptr, selects},
    {u"mnuPaste", paste},
    {u"mnuPasteText", paste_text},
    {u"mnuDelete", delete_selection},
    {u"mnuSelectAll", select_all, nullptr, has_text},
    {u"mnuBold", [](const Target& t) { toggle(t.box, &FormatChange::bold); },
     [](const Target& t) { return t.box.get_SelBold() == true; }, takes_formats},
    {u"mnuItalic", [](const Target& t) { toggle(t.box, &FormatChange::italic); },
     [](const Target& t) { return t.box.get_SelItalic() == true; }, takes_formats},
    {u"mnuUnderline", [](const Target& t) { toggle(t.box, &FormatChange::underline); },
     [](const Target& t) { return t.box.get_SelUnderline() == true; }, takes_formats},
    {u"mnuStrikeOut", [](const Target& t) { toggle(t.box, &FormatChange::strike_through); },
     [](const Target& t) { return t.box.get_SelStrikeThru() == true; }, takes_formats},
    {u"mnuSuperscript", [](const Target& t) { shift(t.box, t.script_offset); },
     [](const Target& t) { return t.box.get_SelCharOffset() > 0; }, takes_formats},
    {u"mnuSubscript",
     [](const Target& t) { shift(t.box, static_cast<std::int16_t>(-t.script_offset)); },
     [](const Target& t) { return t.box.get_SelCharOffset().value_or(0) < 0; }, takes_formats},
    {u"mnuSmallCaps", [](const Target& t) { toggle(t.box, &FormatChange::small_caps); },
     [](const Target& t) { return t.box.get_SelSmallCaps() == true; }, takes_formats},
    {u"mnuPlain", make_plain, nullptr, takes_formats},
    {u"mnuAltFont0", put_font<0>, [](const Target& t) { return has_font(t, 0); }, takes_formats},
    {u"mnuAltFont1", put_font<1>, [](const Target& t) { return has_font(t, 1); }, takes_formats},
    {u"mnuAltFont2", put_font<2>, [](const Target& t) { return has_font(t, 2); }, takes_formats},
    {u"mnuAltFont3", put_font<3>, [](const Target& t) { return has_font(t, 3); }, takes_formats},
    {u"mnuAltFont4", put_font<4>, [](const Target& t) { return has_font(t, 4); }, takes_formats},
    {u"mnuAltFont5", put_font<5>, [](const Target& t) { return has_font(t, 5); }, takes_formats},
    {u"mnuAltFont6", put_font<6>, [](const Target& t) { return has_font(t, 6); }, takes_formats},
    {u"mnuAltFont7", put_font<7>, [](const Target& t) { return has_font(t, 7); }, takes_formats},
    {u"mnuAltFont8", put_font<8>, [](const Target& t) { return has_font(t, 8); }, takes_formats},
    {u"mnuAltFont9", put_font<9>, [](const Target& t) { return has_font(t, 9); }, takes_formats},
    {u"mnuColor0", put_color<0>, has_color<0>, takes_formats},
    {u"mnuIgnoreText", put_color<1>, has_color<1>, takes_formats},
    {u"mnuHideText", put_color<2>, has_color<2>, takes_formats},
    {u"mnuNoteText", put_color<3>, has_color<3>, takes_formats},
    {u"mnuColor4", put_color<4>, has_color<4>, takes_formats},
    {u"mnuColor5", put_color<5>, has_color<5>, takes_formats},
    {u"mnuColor6", put_color<6>, has_color<6>, takes_formats},
    {u"mnuColor7", put_color<7>, has_color<7>, takes_formats},
    {u"mnuColor8", put_color<8>, has_color<8>, takes_formats},
    {u"mnuColor9", put_color<9>, has_color<9>, takes_formats},
    {u"mnuLowercase", change_selected<CaseChange::lower>, nullptr, selects},
    {u"mnuUppercase", change_selected<CaseChange::upper>, nullptr, selects},
    {u"mnuChangeCase", change_selected<CaseChange::swap>, nullptr, selects},
    {u"mnuTitleCase", change_selected<CaseChange::title>, nullptr, selects},
    {u"mnuFirstToLower", change_selected<CaseChange::first_to_lower>, nullptr, selects},
    {u"mnuFirstToUpper", change_selected<CaseChange::first_to_upper>, nullptr, selects},
};

const Command* find(std::u16string_view name) {
  const auto* const command = std::find_if(std::begin(commands), std::end(commands),
                                           [name](const Command& row) { return row.name == name; });
  return command == std::end(commands) ? nullptr : command;
}

}  // namespace

bool has_check(std::u16string_view name) {
  const Command* const command = find(name);
  return command != nullptr && command->is_on != nullptr;
}

bool is_checked(std::u16string_view name, const Target& target) {
  return has_check(name) && find(name)->is_on(target);
}

bool reads_only(std::u16string_view name) { return name == u"mnuCopy" || name == u"mnuSelectAll"; }

bool is_enabled(std::u16string_view name, const Target& target) {
  const Command* const command = find(name);
  if (command == nullptr || (target.box.appearance().read_only && !reads_only(name))) return false;
  return command->is_enabled == nullptr || command->is_enabled(target);
}

void change_letters(platform::RichEdit& box, CaseChange change, Color hidden) {
  if (box.get_SelLength() == 0) return;
  const platform::Range selection = box.selection();
  richtext::Document document = box.content(platform::Scope::selection);
  change_case(document, change, hidden);
  box.put_content(platform::Scope::selection, std::move(document));
  box.select(selection);
}

std::u16string markup(const Target& target) {
  return target.parser == nullptr ? std::u16string()
                                  : TargetConversion(target)->markup_in(target.box);
}

void paste(platform::DragData& data, const Target& target) {
  auto content = content_of(data, target);
  if (content) target.box.put_content(platform::Scope::selection, *std::move(content));
}

bool run(std::u16string_view name, const Target& target) {
  const Command* const command = find(name);
  if (command != nullptr) command->run(target);
  return command != nullptr;
}

}  // namespace qel::editor_commands
