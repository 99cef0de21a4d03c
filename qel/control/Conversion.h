#pragma once

#include <string>
#include <string_view>

#include "qel/platform/RichEdit.h"
#include "qel/rtf/RTFParser.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel {

/// How boxes become markup and reduced RTF. Their runs are read as they are, which gives what the
/// parser gives for their RTF. But where a host has published a conversion box of a class of its
/// own, that box gets the RTF and is read: it is there to be asked. Either way the parser's errors
/// are raised where a thread has no measuring surface or no conversion box.
struct Conversion {
  const RTFParser& parser;
  QELIndexFonts& fonts;
  const QELIndexColors& colors;

  /// All that is in the box. A blank at its end that somebody typed is kept whatever the switches.
  std::u16string markup_in(const platform::RichEdit& box) const;
  std::u16string simple_rtf_in(const platform::RichEdit& box, platform::Scope scope) const;
  /// RTF from elsewhere as markup; here, too, no typed blank is taken for the last break.
  std::u16string markup_of(std::u16string_view rtf) const;

 private:
  std::u16string markup_of(std::u16string rtf, bool is_closed) const;
};

}  // namespace qel
