#pragma once

#include <map>
#include <string>
#include <string_view>

#include "qel/platform/PropertyBag.h"

namespace qel::headless {

/// A property bag as text, for hosts that keep it in a file: one line "Name=Value" for each
/// property, sorted by name. Booleans are "True" and "False", numbers are decimal; in texts a line
/// feed, a carriage return and a backslash are written "\n", "\r" and "\\".
///
/// Properties that nobody reads are kept. A line without "=" is dropped. A value that is not of the
/// type asked for reads as the preset; the others are not affected. References to objects are not
/// kept.
class PropertyBag : public platform::PropertyBag {
 public:
  PropertyBag() = default;
  /// A bag with the lines of `text`.
  explicit PropertyBag(std::u16string_view text) { put_All(text); }

  /// The value, of the type of `preset`.
  Variant read(std::u16string_view name, const Variant& preset) const override;
  void write(std::u16string_view name, const Variant& value, const Variant& preset) override;

  /// The whole bag as text.
  std::u16string get_All() const;
  void put_All(std::u16string_view text);

  bool holds(std::u16string_view name) const { return values_.find(name) != values_.end(); }

 private:
  std::map<std::u16string, std::u16string, std::less<>> values_;
};

}  // namespace qel::headless
