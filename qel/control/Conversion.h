#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "qel/platform/Clipboard.h"
#include "qel/platform/RichEdit.h"
#include "qel/richtext/Document.h"
#include "qel/rtf/RTFParser.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel {

/// Turns boxes into markup and reduced RTF. It reads their runs directly, with the same result as
/// the parser's for their RTF. But where a host has published a conversion box of a class of its
/// own, that box is loaded with the RTF and read instead. Either way it raises the parser's errors
/// where a thread has no measuring surface or no conversion box.
struct Conversion {
  const RTFParser& parser;
  QELIndexFonts fonts;
  const QELIndexColors& colors;

  /// The whole box. A blank that was typed at its end is kept, whatever the switches say.
  std::u16string markup_in(const platform::RichEdit& box) const;
  std::u16string simple_rtf_in(const platform::RichEdit& box, platform::Scope scope);
  /// The same for content that a box is about to get, in the lossless way.
  std::u16string markup_of(const richtext::Document& content) const;
  /// RTF from elsewhere as markup; here, too, a typed blank at the end is kept.
  std::u16string markup_of(std::u16string_view rtf) const;
  /// Markup as the content of a box, whose own text is in the format `base`.
  richtext::Document content_of(std::u16string_view markup, const richtext::CharFormat& base);
  /// What the lossless way puts in place of a box's selection for data from elsewhere: as much of
  /// its RTF as markup can say, or else of its HTML if `clipboard` can read that, or else its text;
  /// empty when the data has none of them. A box for one line gets blanks in place of breaks and
  /// tabs.
  std::optional<richtext::Document> pasted(platform::DragData& data,
                                           const platform::Clipboard& clipboard,
                                           const platform::RichEdit& box, bool text_only);

 private:
  std::u16string markup_of(std::u16string rtf, bool is_closed) const;
};

}  // namespace qel
