#include "qel/platform/Common.h"

#include <utility>
#include <vector>

namespace qel::Common {
namespace {

/// The objects published for one purpose that are still alive; the latest counts.
template <class Published>
class Slot {
 public:
  void publish(const std::shared_ptr<Published>& object) {
    if (!object) published_.clear();
    drop_dead();
    if (object) published_.push_back(object);
  }

  std::shared_ptr<Published> last() {
    drop_dead();
    return published_.empty() ? nullptr : published_.back().lock();
  }

 private:
  void drop_dead() {
    std::erase_if(published_, [](const auto& object) { return object.expired(); });
  }

  std::vector<std::weak_ptr<Published>> published_;
};

struct Slots {
  std::shared_ptr<const platform::Platform> platform;
  Slot<platform::MeasuringSurface> surface;
  Slot<platform::RichEdit> converter;
};

Slots& slots() {
  thread_local Slots slots_of_thread;
  return slots_of_thread;
}

}  // namespace

std::shared_ptr<const platform::Platform> current_platform() {
  const auto& named = slots().platform;
  return named ? named : default_platform();
}

void set_platform(std::shared_ptr<const platform::Platform> platform) {
  slots().platform = std::move(platform);
}

void publish(const std::shared_ptr<platform::MeasuringSurface>& surface,
             const std::shared_ptr<platform::RichEdit>& converter) {
  slots().surface.publish(surface);
  slots().converter.publish(converter);
}

std::shared_ptr<platform::MeasuringSurface> measuring_surface() { return slots().surface.last(); }

std::shared_ptr<platform::RichEdit> conversion_box() { return slots().converter.last(); }

ConversionSlots::ConversionSlots()
    : surface_(current_platform()->create_measuring_surface()),
      converter_(default_platform()->create_rich_edit(0)) {
  publish(surface_, converter_);
}

}  // namespace qel::Common
