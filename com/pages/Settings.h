#pragma once

#include <qelcom.h>

#include <cstdint>
#include <span>
#include <vector>

#include "com/automation/Values.h"
#include "windows/Pointer.h"

namespace qel::com {

enum class SettingKind : std::uint8_t { boolean, choice, text, number, color };

/// A property of a text box that the page shows in one of its controls.
struct Setting {
  int id;  ///< of the control
  const wchar_t* name;
  SettingKind kind;

  DISPID property() const;
};

std::span<const Setting> all_settings();
/// Null where the page does not show the property.
const Setting* setting_of(DISPID property);

/// The settings of text boxes that are edited together.
class SharedSettings {
 public:
  /// Raises when one of the objects is no text box.
  void put_objects(std::span<IUnknown* const> objects);
  bool is_empty() const { return boxes_.empty(); }

  /// Empty where they differ.
  Value get(const Setting& setting) const;
  /// Raises the error of the first that refuses the value.
  void put(const Setting& setting, const Value& value) const;

 private:
  std::vector<Pointer<IQELTextbox>> boxes_;
};

}  // namespace qel::com
