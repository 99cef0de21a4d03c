#pragma once

#include <memory>

#include "qel/platform/Platform.h"

/// What the component keeps per thread: the platform in use, and the surface and the box that
/// conversions work with. No other data outlives the objects of a host.
namespace qel::Common {

/// The platform of this thread: the one last set, or else the default one.
std::shared_ptr<const platform::Platform> current_platform();
/// The platform of a thread that never named one: the one without a window.
std::shared_ptr<const platform::Platform> default_platform();
/// Sets this thread's platform; null goes back to the default one.
void set_platform(std::shared_ptr<const platform::Platform> platform);

/// Publishes the surface on which `QELToRTF` measures fonts and the box that `RTFToQEL` and
/// `SimpleRTF` load text into. The slots do not own what is published: of a thread's publications,
/// the last whose object is still alive wins. Publishing null empties a slot.
void publish(const std::shared_ptr<platform::MeasuringSurface>& surface,
             const std::shared_ptr<platform::RichEdit>& converter);

/// The published objects; null where none was published or it is gone.
std::shared_ptr<platform::MeasuringSurface> measuring_surface();
std::shared_ptr<platform::RichEdit> conversion_box();

/// Fills both slots for as long as it lives, with a surface of the thread's platform and a box
/// in memory: what a program without any control needs in order to convert.
class ConversionSlots {
 public:
  ConversionSlots();
  ConversionSlots(const ConversionSlots&) = delete;
  ConversionSlots& operator=(const ConversionSlots&) = delete;
  ~ConversionSlots() = default;

 private:
  std::shared_ptr<platform::MeasuringSurface> surface_;
  std::shared_ptr<platform::RichEdit> converter_;
};

}  // namespace qel::Common
