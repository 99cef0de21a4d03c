#pragma once

#include <QPointer>

#include "qel/platform/RichEdit.h"
#include "qt/platform/BoxView.h"

namespace qel::qt {

/// A rich edit box in a window. Everything of the interface is supported. Changes of the selection
/// can be undone, whoever makes them; new text of the whole document and a new font of the box
/// cannot, and end what could be undone before.
///
/// What Qt cannot hold: U+2029 in a text becomes a line separator. An offset is shown by Qt's own
/// raised and lowered text, whatever its size. Scroll bars are shown when there is something
/// to scroll, and never for a single line.
class RichEdit : public platform::RichEdit {
 public:
  /// A box on `owner`, which must outlive it; one on nothing is never shown.
  explicit RichEdit(QWidget* owner) : view_(new BoxView(owner)) {}
  RichEdit(const RichEdit&) = delete;
  RichEdit& operator=(const RichEdit&) = delete;
  ~RichEdit() override;

  std::u16string text(platform::Scope scope) const override;
  void put_text(platform::Scope scope, std::u16string_view text) override;
  std::u16string rtf(platform::Scope scope) const override;
  void put_rtf(platform::Scope scope, std::u16string_view rtf) override;

  platform::Range selection() const override;
  void select(platform::Range range) override;

  richtext::MixedFormat format() const override;
  void change_format(const richtext::FormatChange& change) override;

  std::optional<richtext::Alignment> alignment() const override;
  void put_alignment(richtext::Alignment alignment) override;

  void visit_runs(std::int32_t from, const platform::RunVisitor& visit) const override;

  platform::BoxAppearance appearance() const override { return view_->appearance(); }
  void put_appearance(const platform::BoxAppearance& appearance) override {
    view_->put_appearance(appearance);
  }

  void start_drag() override { view_->start_drag(); }
  void listen(platform::BoxListener* listener) override { view_->listen(listener); }

  /// The window itself, which belongs to the box.
  BoxView& view() const { return *view_; }

 private:
  const QTextDocument& document() const { return *view_->document(); }
  Span span_of(platform::Scope scope) const;
  void put(platform::Scope scope, const richtext::Document& content);

  QPointer<BoxView> view_;
};

}  // namespace qel::qt
