#include "qel/control/Common.h"

#include <utility>

#include "qel/embedded/EmbeddedPlatform.h"

namespace qel::Common {
namespace {

struct Slots {
  std::shared_ptr<const platform::Platform> platform;
  std::weak_ptr<platform::MeasuringSurface> surface;
  std::weak_ptr<platform::RichEdit> converter;
};

Slots& slots() {
  thread_local Slots slots_of_thread;
  return slots_of_thread;
}

}  // namespace

std::shared_ptr<const platform::Platform> current_platform() {
  static const auto embedded = std::make_shared<const embedded::EmbeddedPlatform>();
  const auto& named = slots().platform;
  return named ? named : embedded;
}

void set_platform(std::shared_ptr<const platform::Platform> platform) {
  slots().platform = std::move(platform);
}

void publish(const std::shared_ptr<platform::MeasuringSurface>& surface,
             const std::shared_ptr<platform::RichEdit>& converter) {
  slots().surface = surface;
  slots().converter = converter;
}

std::shared_ptr<platform::MeasuringSurface> measuring_surface() { return slots().surface.lock(); }

std::shared_ptr<platform::RichEdit> conversion_box() { return slots().converter.lock(); }

ConversionSlots::ConversionSlots()
    : surface_(embedded::EmbeddedPlatform().create_measuring_surface()),
      converter_(embedded::EmbeddedPlatform().create_rich_edit(0)),
      previous_surface_(slots().surface),
      previous_converter_(slots().converter) {
  publish(surface_, converter_);
}

ConversionSlots::~ConversionSlots() {
  if (slots().surface.lock() == surface_) slots().surface = std::move(previous_surface_);
  if (slots().converter.lock() == converter_) slots().converter = std::move(previous_converter_);
}

}  // namespace qel::Common
