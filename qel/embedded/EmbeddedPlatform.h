#pragma once

#include <memory>

#include "qel/platform/Platform.h"

namespace qel::embedded {

/// The platform without any window: everything lives in memory, and every answer is the same on
/// every system. Offers rich edit boxes (`embedded::RichEdit`), a measuring surface that knows the
/// common symbol fonts by name, and the classic system colours. Visual styles are switched off.
class EmbeddedPlatform : public platform::Platform {
 public:
  EmbeddedPlatform();

  const platform::SystemColors& system_colors() const override;
  const platform::VisualStyles& visual_styles() const override;
  /// This platform's own, which no other program sees.
  platform::Clipboard& clipboard() const override { return *clipboard_; }
  std::shared_ptr<platform::RichEdit> create_rich_edit(platform::WindowHandle owner) const override;
  std::shared_ptr<platform::MeasuringSurface> create_measuring_surface() const override;

 private:
  std::unique_ptr<platform::Clipboard> clipboard_;
};

}  // namespace qel::embedded
