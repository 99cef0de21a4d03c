#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "qel/platform/DragData.h"
#include "qel/richtext/CharFormat.h"
#include "qel/richtext/Document.h"

namespace qel::platform {

/// The system's clipboard, as far as text goes.
class Clipboard {
 public:
  Clipboard() = default;
  Clipboard(const Clipboard&) = delete;
  Clipboard& operator=(const Clipboard&) = delete;
  virtual ~Clipboard() = default;

  /// Its content in that format; empty when it has none.
  virtual std::optional<std::u16string> rtf() const = 0;
  virtual std::optional<std::u16string> html() const { return {}; }
  virtual std::optional<std::u16string> text() const = 0;
  /// Clears it and puts the same content there in both formats. A platform whose programs exchange
  /// HTML offers what the RTF says as that, too.
  virtual void put(std::u16string_view text, std::u16string_view rtf) = 0;

  /// The content of HTML from elsewhere, from this clipboard or a drag; `base` gives the font, size
  /// and colour of text for which the HTML names none. Empty where the platform cannot read HTML.
  virtual std::optional<richtext::Document> read_html(std::u16string_view /*html*/,
                                                      const richtext::CharFormat& /*base*/) const {
    return {};
  }

  /// All that a box may take of its content.
  DragData data() const;
  /// Its text, for pasting without formats.
  DragData text_alone() const;
};

/// The content of the data's HTML, if `clipboard`, which may be null, can read that; empty where it
/// has no text.
std::optional<richtext::Document> read_html(DragData& data, const Clipboard* clipboard,
                                            const richtext::CharFormat& base);

/// The content of data from elsewhere: its RTF where it has any, else its HTML (see
/// `read_html`), else its text in the base format and alignment; empty where it has none of them.
/// `in_one_line` puts blanks in place of breaks.
std::optional<richtext::Document> read_transfer(DragData& data, const Clipboard* clipboard,
                                                const richtext::CharFormat& base,
                                                richtext::Alignment alignment, bool in_one_line);

}  // namespace qel::platform
