#pragma once

#include "qel/platform/RichEdit.h"
#include "qel/richtext/Document.h"

namespace qel::embedded {

/// A rich edit box in memory, without any window: the reference for what a box does. Everything of
/// the interface is supported; nothing is painted, and only the calls of a host change it.
class RichEdit : public platform::RichEdit {
 public:
  std::u16string text(platform::Scope scope) const override;
  void put_text(platform::Scope scope, std::u16string_view text) override;
  std::u16string rtf(platform::Scope scope) const override;
  void put_rtf(platform::Scope scope, std::u16string_view rtf) override;

  platform::Range selection() const override;
  void select(platform::Range range) override;

  platform::MixedFormat format() const override;
  void change_format(const platform::FormatChange& change) override;

  std::optional<platform::Alignment> alignment() const override;
  void put_alignment(platform::Alignment alignment) override;

  void visit_runs(std::int32_t from, const platform::RunVisitor& visit) const override;

  platform::BoxAppearance appearance() const override { return appearance_; }
  /// A new font or size is given to all text.
  void put_appearance(const platform::BoxAppearance& appearance) override;

  void listen(platform::BoxListener* listener) override { listener_ = listener; }

 private:
  richtext::Extent extent_of(platform::Scope scope) const;
  /// The selection widened to whole breaks.
  richtext::Extent selected() const { return document_.without_cut_breaks(selection_); }
  /// Where the selected paragraphs begin and end.
  richtext::Extent selected_paragraphs() const;
  /// The document's format at that part: of its first character, or of the one before a caret.
  const platform::CharFormat& format_at(richtext::Extent extent) const;
  /// The format of text that is put in place of that part.
  const platform::CharFormat& format_for(richtext::Extent extent) const;
  void replace(platform::Scope scope, richtext::Document content);
  void tell_change();

  richtext::Document document_;
  richtext::Extent selection_;
  platform::CharFormat typing_;  // format of the next character typed at the caret
  platform::BoxAppearance appearance_;
  platform::BoxListener* listener_ = nullptr;
};

}  // namespace qel::embedded
