#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "qel/platform/BoxAppearance.h"
#include "qel/platform/BoxListener.h"
#include "qel/platform/WindowHandle.h"
#include "qel/richtext/Alignment.h"
#include "qel/richtext/CharFormat.h"
#include "qel/richtext/Document.h"

namespace qel::platform {

/// What a box is asked about or told to replace.
enum class Scope { document, selection };

/// A part of the text, in UTF-16 code units; `start` counts from 0.
struct Range {
  std::int32_t start = 0;
  std::int32_t length = 0;

  friend bool operator==(const Range&, const Range&) = default;
};

/// A stretch of characters in one format. The references are valid during the visit only.
struct FormatRun {
  std::int32_t start;  ///< position of its first character, from 0
  std::u16string_view text;
  const richtext::CharFormat& format;
};

/// Returns whether to go on with the next run.
using RunVisitor = std::function<bool(const FormatRun&)>;

/// The format and the alignment of text that names none of its own.
struct TextDefaults {
  richtext::CharFormat format;
  richtext::Alignment alignment = richtext::Alignment::left;
};

/// One rich edit box. A platform implements the virtual members; the familiar ones below are
/// written once on top of them. A paragraph break in the text is CR LF and takes two positions.
/// Text may hold any character. Out-of-range positions are moved to the nearest end; a selection
/// takes in the whole of a break or surrogate pair that it cuts, and a caret inside one goes before
/// it.
class RichEdit {
 public:
  RichEdit() = default;
  RichEdit(const RichEdit&) = delete;
  RichEdit& operator=(const RichEdit&) = delete;
  virtual ~RichEdit() = default;

  /// Takes over what the user is still composing, as typed. Changes do so by themselves first; one
  /// that depends on what it reads has to do so before it reads.
  virtual void settle() {}

  virtual richtext::Document content(Scope scope) const = 0;
  /// Replaces the content. The caret ends up after new content of the selection, or at the
  /// beginning of a new document.
  virtual void put_content(Scope scope, richtext::Document content) = 0;
  /// What text put there takes: the format of the first character that it replaces, or else that
  /// of text typed there, and the alignment of the paragraph.
  virtual TextDefaults text_defaults(Scope scope) const = 0;

  virtual Range selection() const = 0;
  virtual void select(Range range) = 0;

  /// The format of the selected characters, or of the next character typed when none is selected.
  virtual richtext::MixedFormat format() const = 0;
  virtual void change_format(const richtext::FormatChange& change) = 0;

  /// The alignment of the selected paragraphs; empty where they differ.
  virtual std::optional<richtext::Alignment> alignment() const = 0;
  virtual void put_alignment(richtext::Alignment alignment) = 0;

  /// Calls `visit` for the runs of equal format in order, beginning with the one that holds
  /// position `from`. Neighbouring runs differ in format. A visitor must not change the box.
  virtual void visit_runs(std::int32_t from, const RunVisitor& visit) const = 0;

  /// Whether the user may take back a step, or do one again that was taken back; false in a box
  /// without a history.
  virtual bool can_undo() const { return false; }
  virtual bool can_redo() const { return false; }
  virtual void undo() {}
  virtual void redo() {}

  virtual BoxAppearance appearance() const = 0;
  virtual void put_appearance(const BoxAppearance& appearance) = 0;

  /// The box's own window, in the platform's terms; 0 where it has none. A change of the
  /// appearance or the owner may replace it.
  virtual WindowHandle window() const = 0;
  /// Puts the box on another window, or on none (0), where nobody sees it.
  virtual void put_owner(WindowHandle owner) = 0;

  /// Drags the selection, and returns when it was dropped or the user gave up. Nothing
  /// happens where the listener allows no effect.
  virtual void start_drag() = 0;

  /// Sets the listener for the box's events; null for none. It must outlive the box or be taken
  /// away before it goes.
  virtual void listen(BoxListener* listener) = 0;
  /// Whether content comes back from it as it was put in, so that a conversion need not load it.
  virtual bool holds_documents() const { return false; }

  // The familiar members.

  std::u16string text(Scope scope) const;
  /// Replaces the text. All of it takes the format and the alignment of `text_defaults`. Lone CR
  /// and LF become paragraph breaks.
  void put_text(Scope scope, std::u16string_view text);
  std::u16string rtf(Scope scope) const;
  /// Replaces the content with that of the RTF, as far as it can be read; anything that is not RTF
  /// is plain text. RTF in a string may hold any character. Text for which it gives no font, size
  /// or colour takes that of `text_defaults`.
  void put_rtf(Scope scope, std::u16string_view rtf);

  std::u16string get_Text() const { return text(Scope::document); }
  void put_Text(std::u16string_view value) { put_text(Scope::document, value); }
  std::u16string get_TextRTF() const { return rtf(Scope::document); }
  void put_TextRTF(std::u16string_view value) { put_rtf(Scope::document, value); }
  std::u16string get_SelText() const { return text(Scope::selection); }
  void put_SelText(std::u16string_view value) { put_text(Scope::selection, value); }
  std::u16string get_SelRTF() const { return rtf(Scope::selection); }
  void put_SelRTF(std::u16string_view value) { put_rtf(Scope::selection, value); }

  std::int32_t get_SelStart() const { return selection().start; }
  /// Puts the caret there; nothing is selected afterwards.
  void put_SelStart(std::int32_t position) { select({position, 0}); }
  std::int32_t get_SelLength() const { return selection().length; }
  void put_SelLength(std::int32_t length) {
    settle();
    select({selection().start, length});
  }

  /// Each of these is empty where the selection holds more than one value.
  std::optional<bool> get_SelBold() const { return format().bold; }
  void put_SelBold(bool value) { change(&richtext::FormatChange::bold, value); }
  std::optional<bool> get_SelItalic() const { return format().italic; }
  void put_SelItalic(bool value) { change(&richtext::FormatChange::italic, value); }
  std::optional<bool> get_SelUnderline() const { return format().underline; }
  void put_SelUnderline(bool value) { change(&richtext::FormatChange::underline, value); }
  std::optional<bool> get_SelStrikeThru() const { return format().strike_through; }
  void put_SelStrikeThru(bool value) { change(&richtext::FormatChange::strike_through, value); }
  std::optional<bool> get_SelSmallCaps() const { return format().small_caps; }
  void put_SelSmallCaps(bool value) { change(&richtext::FormatChange::small_caps, value); }
  /// In twips, positive raises.
  std::optional<std::int16_t> get_SelCharOffset() const { return format().offset; }
  void put_SelCharOffset(std::int16_t twips) { change(&richtext::FormatChange::offset, twips); }
  std::optional<Color> get_SelColor() const { return format().color; }
  void put_SelColor(Color color) { change(&richtext::FormatChange::color, color); }
  std::optional<std::u16string> get_SelFontName() const { return format().font_name; }
  void put_SelFontName(std::u16string_view name) {
    change(&richtext::FormatChange::font_name, std::u16string(name));
  }
  std::optional<float> get_SelFontSize() const { return format().size; }
  void put_SelFontSize(float points) { change(&richtext::FormatChange::size, points); }

 private:
  template <class Value>
  void change(std::optional<Value> richtext::FormatFields::*field, Value value) {
    richtext::FormatChange change;
    change.*field = std::move(value);
    change_format(change);
  }
};

}  // namespace qel::platform
