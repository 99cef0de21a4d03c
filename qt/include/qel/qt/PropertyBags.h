#pragma once

#include <QString>

#include "qel/platform/PropertyBag.h"

class QObject;
class QSettings;

namespace qel::qt {

/// A property bag in a program's settings: a key for each property that differs from its preset,
/// in the current group of the settings, which must outlive the bag.
class SettingsBag : public platform::PropertyBag {
 public:
  explicit SettingsBag(QSettings& settings) : settings_(settings) {}
  Variant read(std::u16string_view name, const Variant& preset) const override;
  void write(std::u16string_view name, const Variant& value, const Variant& preset) override;

 private:
  QSettings& settings_;
};

/// A property bag in the dynamic properties of an object, which must outlive the bag and have no
/// properties of its own under these names.
class DynamicPropertyBag : public platform::PropertyBag {
 public:
  explicit DynamicPropertyBag(QObject& object) : object_(object) {}
  Variant read(std::u16string_view name, const Variant& preset) const override;
  void write(std::u16string_view name, const Variant& value, const Variant& preset) override;

 private:
  QObject& object_;
};

}  // namespace qel::qt
