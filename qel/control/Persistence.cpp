// The persisted properties of the text box, in the order in which they are read.

#include <cmath>
#include <exception>
#include <limits>
#include <optional>
#include <type_traits>
#include <utility>
#include <variant>

#include "qel/base/Records.h"
#include "qel/base/Variant.h"
#include "qel/control/QELTextbox.h"

namespace qel {
namespace {

/// Integers are rounded, half to even; empty for a number that is out of the type's range.
template <class Number>
std::optional<Number> converted(double number) {
  using Limits = std::numeric_limits<Number>;
  if constexpr (std::is_integral_v<Number>) number = std::nearbyint(number);
  const bool fits = number >= static_cast<double>(Limits::lowest()) &&
                    number <= static_cast<double>(Limits::max());
  return fits ? std::optional(static_cast<Number>(number)) : std::nullopt;
}

template <class Number>
std::optional<Number> number_in(std::u16string_view text) {
  if constexpr (std::is_same_v<Number, bool>) return records::to_boolean(text);
  const auto number = records::to_number(text);
  return number ? converted<Number>(*number) : std::nullopt;
}

/// The value converted to another type, or else the preset: a bag may keep everything as text.
template <class Value>
Value value_as(const Variant& variant, const Variant& preset) {
  const auto convert = [](const auto& held) -> std::optional<Value> {
    using Held = std::decay_t<decltype(held)>;
    if constexpr (std::is_same_v<Held, Value>) {
      return held;
    } else if constexpr (std::is_same_v<Value, bool> && std::is_arithmetic_v<Held>) {
      return held != 0;
    } else if constexpr (std::is_arithmetic_v<Value> && std::is_arithmetic_v<Held>) {
      return converted<Value>(static_cast<double>(held));
    } else if constexpr (std::is_arithmetic_v<Value> && std::is_same_v<Held, std::u16string>) {
      return number_in<Value>(held);
    } else {
      return {};
    }
  };
  const std::optional<Value> value = std::visit(convert, variant);
  return value ? *value : std::visit(convert, preset).value_or(Value());
}

}  // namespace

struct QELTextbox::Persisted {
  std::u16string_view name;
  Variant preset;
  Variant (*read)(const QELTextbox& control);
  void (*apply)(QELTextbox& control, const Variant& value, const Variant& preset);
};

namespace {

/// A property's value in the type in which a bag keeps it.
template <class Preset, class Value>
Preset in_type_of(const Preset& preset, const Value& value) {
  if constexpr (std::is_floating_point_v<Value> && std::is_integral_v<Preset>) {
    return converted<Preset>(static_cast<double>(value)).value_or(preset);
  } else {
    return static_cast<Preset>(value);
  }
}

template <class Member>
struct SetterOf;
template <class Value>
struct SetterOf<void (QELTextbox::*)(Value)> {
  using type =
      std::conditional_t<std::is_same_v<Value, std::u16string_view>, std::u16string, Value>;
};

}  // namespace

const std::array<QELTextbox::Persisted, 32>& QELTextbox::persisted() {
  // A row of the table: values have the setter's type in the control, and the preset's in the bag.
#define QEL_PERSISTED(Name, preset)                                               \
  Persisted {                                                                     \
    u## #Name, Variant(preset),                                                   \
        [](const QELTextbox& control) -> Variant {                                \
          return in_type_of(preset, control.get_##Name());                        \
        },                                                                        \
        [](QELTextbox& control, const Variant& value, const Variant& otherwise) { \
          using Value = SetterOf<decltype(&QELTextbox::put_##Name)>::type;        \
          control.put_##Name(value_as<Value>(value, otherwise));                  \
        }                                                                         \
  }
  static const std::array<Persisted, 32> rows = {
      QEL_PERSISTED(ActOnColors, true),
      QEL_PERSISTED(ActOnFonts, true),
      QEL_PERSISTED(ActOnPlain, true),
      QEL_PERSISTED(ActOnStyles, true),
      QEL_PERSISTED(AllowEdits, true),
      QEL_PERSISTED(BackColor, system_color(5)),
      QEL_PERSISTED(BorderStyle, std::int32_t{1}),
      QEL_PERSISTED(Enabled, true),
      QEL_PERSISTED(FontName, std::u16string(u"Arial")),
      QEL_PERSISTED(FontSize, std::int16_t{8}),
      QEL_PERSISTED(ForeColor, system_color(8)),
      QEL_PERSISTED(HideColor, Color{0x00FF0000}),
      QEL_PERSISTED(IgnoreColor, Color{0x0000C000}),
      QEL_PERSISTED(NoteColor, Color{0x0000C0C0}),
      QEL_PERSISTED(Multiline, std::int16_t{0}),
      QEL_PERSISTED(OLEDragMode, std::int32_t{0}),
      QEL_PERSISTED(OLEDropMode, std::int32_t{1}),
      QEL_PERSISTED(RecognizeCRLF, false),
      QEL_PERSISTED(RecognizeTabs, false),
      QEL_PERSISTED(ConvertNLToSpace, true),
      QEL_PERSISTED(ConvertTabsToSpace, true),
      QEL_PERSISTED(RevealCodes, false),
      QEL_PERSISTED(ScrollBars, std::int32_t{0}),
      QEL_PERSISTED(SelAlignment, std::int32_t{0}),
      QEL_PERSISTED(Text, std::u16string()),
      QEL_PERSISTED(TextQEL, std::u16string()),
      QEL_PERSISTED(TabStop, true),
      QEL_PERSISTED(XPTheme, std::int32_t{0}),
      QEL_PERSISTED(ShowEditorOnShiftF2, false),
      {u"SmartQuotes", Variant(false),
       [](const QELTextbox& control) -> Variant { return control.smart_quotes_; },
       [](QELTextbox& control, const Variant& value, const Variant& preset) {
         control.smart_quotes_ = value_as<bool>(value, preset);
       }},
      QEL_PERSISTED(PasteTextOnly, false),
      QEL_PERSISTED(Lossless, false),
  };
#undef QEL_PERSISTED
  return rows;
}

void QELTextbox::ReadProperties(const platform::PropertyBag& Bag) {
  const auto read = [&](const Persisted& row, const Variant& preset) {
    Variant value = preset;
    try {
      value = Bag.read(row.name, preset);
    } catch (const std::exception&) {
      value = preset;
    }
    row.apply(*this, value, preset);
  };
  // The way in which markup is read has to be known before it is.
  const auto& rows = persisted();
  read(rows.back(), lossless_at_first_);
  for (std::size_t i = 0; i < rows.size() - 1; ++i) read(rows[i], rows[i].preset);
  compute_border_color();
}

void QELTextbox::WriteProperties(platform::PropertyBag& Bag) const {
  const auto write = [&](const Persisted& row, const Variant& preset) {
    Bag.write(row.name, row.read(*this), preset);
  };
  // Before the last one, two properties are written in reverse order.
  const auto& rows = persisted();
  const std::size_t last = rows.size() - 1;
  for (std::size_t i = 0; i < last - 2; ++i) write(rows[i], rows[i].preset);
  write(rows[last - 1], rows[last - 1].preset);
  write(rows[last - 2], rows[last - 2].preset);
  write(rows[last], lossless_at_first_);
}

}  // namespace qel
