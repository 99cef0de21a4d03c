#include "com/automation/HostCanvas.h"

#include <optional>

#include "com/automation/HostObject.h"
#include "qel/base/Error.h"
#include "qel/platform/Common.h"
#include "windows/DeviceCanvas.h"

namespace qel::com {
namespace {

HDC context_of(const HostObject& object) {
  // A handle has 32 significant bits in every kind of process, signed or unsigned.
  const auto handle = static_cast<std::int32_t>(in_type<std::int64_t>(object.get_value(u"hDC")));
  return reinterpret_cast<HDC>(static_cast<INT_PTR>(handle));
}

class HostCanvas : public platform::Canvas {
 public:
  explicit HostCanvas(IDispatch* object) : object_(object) {
    device();
    if (object_.has(u"FontName")) {
      put_FontName(in_type<std::u16string>(object_.get_value(u"FontName")));
    }
    if (object_.has(u"FontSize")) {
      put_FontSize(in_type<float>(object_.get_value(u"FontSize")));
    }
  }

  const HostObject& object() const { return object_; }

  float text_width(std::u16string_view text, const platform::TextFont& font) const override {
    return device().text_width(text, font);
  }
  platform::FontExtent font_extent(const platform::TextFont& font) const override {
    return device().font_extent(font);
  }
  void draw_text(const platform::CanvasText& text) override { device().draw_text(text); }
  void fill_rectangle(const platform::CanvasRectangle& rectangle, Color color) override {
    device().fill_rectangle(rectangle, color);
  }

 private:
  /// An object may return another device context each time.
  windows::DeviceCanvas& device() const {
    const HDC context = context_of(object_);
    if (!device_ || context != context_) {
      device_.emplace(context);
      context_ = context;
    }
    return *device_;
  }

  HostObject object_;
  mutable HDC context_ = nullptr;
  mutable std::optional<windows::DeviceCanvas> device_;
};

class HostSurface : public platform::MeasuringSurface {
 public:
  explicit HostSurface(IDispatch* object) : object_(object) {}

  void put_TestFont(std::u16string_view name) override {
    object_.put(u"TestFont", std::u16string(name));
  }
  std::uintptr_t get_hDC() const override {
    return reinterpret_cast<std::uintptr_t>(context_of(object_));
  }
  platform::CharacterSet test_font_character_set() const override {
    TEXTMETRICW metrics = {};
    if (GetTextMetricsW(context_of(object_), &metrics) == FALSE) {
      throw Error(Error::component_base, "QEL", "the surface cannot tell its font");
    }
    return metrics.tmCharSet == SYMBOL_CHARSET ? platform::CharacterSet::symbol
                                               : platform::CharacterSet::ansi;
  }

 private:
  HostObject object_;
};

}  // namespace

std::shared_ptr<platform::Canvas> canvas_on(IDispatch* object) {
  return object == nullptr ? nullptr : std::make_shared<HostCanvas>(object);
}

Pointer<IDispatch> host_object(const std::shared_ptr<platform::Canvas>& canvas) {
  const auto* const hosts = dynamic_cast<const HostCanvas*>(canvas.get());
  return Pointer<IDispatch>(hosts == nullptr ? nullptr : hosts->object().object());
}

std::shared_ptr<platform::MeasuringSurface> surface_on(IDispatch* object) {
  if (object != nullptr) return std::make_shared<HostSurface>(object);
  if (auto published = Common::measuring_surface()) return published;
  return Common::current_platform()->create_measuring_surface();
}

}  // namespace qel::com
