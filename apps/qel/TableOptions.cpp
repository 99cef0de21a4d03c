#include "TableOptions.h"

#include "Files.h"
#include "Numbers.h"
#include "UsageError.h"
#include "qel/convert/Convert.h"

namespace qel::command {

TableOptions::TableOptions(CLI::App& app) {
  const auto add = [&app](const std::string& name, auto& value, const std::string& meaning,
                          const char* type) {
    return app.add_option(name, value, meaning)->type_name(type)->group("Fonts and colours");
  };
  add("--font", fonts_, "Font N (0 to 9); can be repeated", "N=NAME")->allow_extra_args(false);
  add("--color", colors_,
      "Colour N (0 to 9) as #RRGGBB or as a decimal number, red in its low byte; can be repeated",
      "N=COLOR")
      ->allow_extra_args(false);
  size_ = add("--font-size", font_size_, "Default size (0 to 16383)", "POINTS");
  size_->check(decimal_number(0, 16383));
  file_ = add("--tables", path_,
              "File with records as 'qel tables' prints them; the options "
              "above win over it",
              "FILE");
}

Tables TableOptions::values() const {
  Tables tables;
  if (file_->count() > 0) read_file_into(tables);
  try {
    for (const std::string& font : fonts_) tables.set_font(font);
    for (const std::string& color : colors_) tables.set_color(color);
  } catch (const TableError& error) {
    throw UsageError(error.what());
  }
  if (size_->count() > 0) tables.fonts.put_FontSize(font_size_);
  return tables;
}

void TableOptions::read_file_into(Tables& tables) const {
  try {
    tables.read_records(convert::decode_text(read_file(path_)));
  } catch (const TableError& error) {
    throw TableError("cannot read " + path_ + ": " + error.what());
  }
}

}  // namespace qel::command
