#include "qel/qt/PropertyBags.h"

#include <QColor>
#include <QObject>
#include <QSettings>
#include <QVariant>
#include <type_traits>
#include <variant>

#include "qt/platform/FormatMapping.h"
#include "qt/platform/Text.h"

namespace qel::qt {
namespace {

/// References to objects are not kept.
QVariant to_qvariant(const Variant& value) {
  return std::visit(
      [](const auto& held) -> QVariant {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, std::u16string>) {
          return to_qt(std::u16string_view(held));
        } else if constexpr (std::is_same_v<Held, std::int16_t>) {
          return int{held};
        } else if constexpr (std::is_same_v<Held, float>) {
          return static_cast<double>(held);
        } else if constexpr (std::is_arithmetic_v<Held>) {
          return QVariant::fromValue(held);
        } else {
          return {};
        }
      },
      value);
}

Variant from_qt(const QVariant& value, const Variant& preset) {
  switch (value.typeId()) {
    case QMetaType::Bool:
      return value.toBool();
    case QMetaType::Short:
    case QMetaType::Int:
      return std::int32_t{value.toInt()};
    case QMetaType::Float:
    case QMetaType::Double:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
      return value.toDouble();
    case QMetaType::QColor:
      return qt::from_qt(value.value<QColor>());
    case QMetaType::QString:
    case QMetaType::QByteArray:
      return qt::from_qt(value.toString());
    default:
      return preset;
  }
}

}  // namespace

Variant SettingsBag::read(std::u16string_view name, const Variant& preset) const {
  return from_qt(settings_.value(to_qt(name)), preset);
}

void SettingsBag::write(std::u16string_view name, const Variant& value, const Variant& preset) {
  const QVariant kept = value == preset ? QVariant() : to_qvariant(value);
  if (kept.isValid()) {
    settings_.setValue(to_qt(name), kept);
  } else {
    settings_.remove(to_qt(name));
  }
}

Variant DynamicPropertyBag::read(std::u16string_view name, const Variant& preset) const {
  return from_qt(object_.property(to_qt(name).toUtf8().constData()), preset);
}

void DynamicPropertyBag::write(std::u16string_view name, const Variant& value,
                               const Variant& preset) {
  object_.setProperty(to_qt(name).toUtf8().constData(),
                      value == preset ? QVariant() : to_qvariant(value));
}

}  // namespace qel::qt
