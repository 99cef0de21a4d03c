#pragma once

#include <windows.h>

#include <memory>

#include "qel/platform/Clipboard.h"
#include "qel/platform/RichEdit.h"

namespace qel::windows {

class BoxWindow;

/// A rich edit box in a window of the system's rich edit class. Changes of the selection can be
/// undone, whoever makes them; new text of the whole document and a new font of the box cannot, and
/// end what could be undone before. Everything of the interface is supported.
///
/// Of a long text with many formats the window shows the text at once and the formats from its
/// beginning on, while it handles messages; whoever reads formats from it gets all of them.
///
/// What the window cannot show: a line separator and other characters at which it would end a line
/// are shown as blanks, control characters and placeholders of objects as a sign. A font's name has
/// 31 characters there. The text itself keeps all of it.
class RichEdit : public platform::RichEdit {
 public:
  /// A box on `owner`; one on nothing is not shown before it is put on a window. The clipboard must
  /// outlive it.
  RichEdit(HWND owner, platform::Clipboard& clipboard);
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

  platform::BoxAppearance appearance() const override;
  void put_appearance(const platform::BoxAppearance& appearance) override;

  void start_drag() override;
  void listen(platform::BoxListener* listener) override;

  /// The window itself, which belongs to the box; another one after some changes of the appearance,
  /// or when the owner's window was destroyed.
  HWND window() const;
  /// Puts the box on another window, or on none (null).
  void put_owner(HWND owner);

  /// The position nearest to a point in the window, and the point of a position.
  std::int32_t position_at(POINT point) const;
  POINT point_of(std::int32_t position) const;

 private:
  std::shared_ptr<BoxWindow> box_;
};

}  // namespace qel::windows
