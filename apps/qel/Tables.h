#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "qel/convert/Options.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::command {

/// A value that the tables do not accept; the message says which and why.
class TableError : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// The fonts and colours that a conversion works with.
struct Tables {
  QELIndexFonts fonts;
  std::shared_ptr<QELIndexColors> colors = std::make_shared<QELIndexColors>();

  /// Reads the lines of a file of records. Each line is a record of the fonts or of the colours,
  /// which the separators show. Empty lines are skipped.
  void read_records(std::u16string_view lines);
  /// The tables as lines that `read_records` reads.
  std::u16string records() const;

  /// Makes these the tables of a conversion.
  void use_in(convert::Options& options) const;

  /// "N=NAME": font N (0 to 9).
  void set_font(std::string_view assignment);
  /// "N=#RRGGBB", or "N=" and the value in decimal, red in the low byte.
  void set_color(std::string_view assignment);
};

}  // namespace qel::command
