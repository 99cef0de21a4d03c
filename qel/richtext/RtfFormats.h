#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>

#include "qel/richtext/CharFormat.h"
#include "qel/richtext/CodePage.h"
#include "qel/richtext/DocumentSink.h"
#include "qel/richtext/RtfState.h"
#include "qel/richtext/RtfTables.h"

namespace qel::richtext {

/// An offset and a size in half-points, as RTF has them: an offset loses its fraction of a
/// half-point, a size is rounded to one that RTF can express.
std::int32_t offset_in_rtf(std::int16_t twips);
std::int32_t size_in_rtf(float points);
/// Whether RTF needs no control word between texts in these formats.
bool are_equal_in_rtf(const CharFormat& left, const CharFormat& right);

/// Looks up what a character state means by an RTF document's tables: a format, and a code page
/// for its bytes.
class RtfFormats {
 public:
  /// `base` gives the font, size and colour that the document leaves open.
  RtfFormats(CharFormat base, DocumentSink& sink) : base_(std::move(base)), sink_(sink) {}

  RtfFontTable& fonts() { return fonts_; }
  RtfColorTable& colors() { return colors_; }

  /// To be called when a table or the default font may change what states mean.
  void forget() {
    if (knows_any_) known_ = {};
    knows_any_ = false;
    last_code_page_ = nullptr;
  }
  void set_default_font(std::int32_t number);
  void set_document_code_page(int number) {
    document_code_page_ = number;
    forget();
  }

  /// The sink's number for the state's format.
  DocumentSink::FormatId id_of(const CharState& state);
  const CodePage& code_page_of(const CharState& state);
  /// The code page of the name of the font that is being read.
  const CodePage& code_page_of_font_name();

 private:
  struct Known {
    CharState state;
    DocumentSink::FormatId id = 0;
    bool is_set = false;
  };

  CharFormat format_of(const CharState& state) const;
  const RtfFontTable::Font* font_of(const CharState& state) const;
  const CodePage& code_page(std::optional<int> number);

  CharFormat base_;
  DocumentSink& sink_;
  RtfFontTable fonts_;
  RtfColorTable colors_;
  std::int32_t default_font_ = CharState::default_font;
  int document_code_page_ = CodePage::western;
  std::map<int, CodePage> code_pages_;
  std::int32_t last_font_ = CharState::default_font;
  const CodePage* last_code_page_ = nullptr;  // of that font
  std::array<Known, 64> known_;
  bool knows_any_ = false;
};

}  // namespace qel::richtext
