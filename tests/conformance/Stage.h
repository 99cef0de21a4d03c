#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "qel/platform/ControlSite.h"
#include "qel/platform/Platform.h"

namespace qel::conformance {

/// What a user can do in an open large editor.
class EditorHand {
 public:
  virtual ~EditorHand() = default;
  /// Chooses the menu item of that name.
  virtual void choose(std::u16string_view name) = 0;
  virtual void press_ok() = 0;
  virtual void press_cancel() = 0;
  virtual void close_by_frame() = 0;
  virtual bool is_open() const = 0;
};

/// Where a user drags: over a box, to a position of its text, with these modifiers held, and drops
/// there or, where `drops` is false, where nothing accepts it.
struct DragPath {
  platform::RichEdit& target;
  std::int32_t position = 0;
  std::int16_t shift = 0;
  bool drops = true;
};

/// A platform and its user. Boxes are those that the stage's platform has created. Key codes and
/// masks are those of `platform/Keys.h`; places in a text are positions.
class Stage {
 public:
  virtual ~Stage() = default;

  virtual std::shared_ptr<const platform::Platform> platform() const = 0;
  /// A visible window for boxes and controls; 0 where there are no windows.
  virtual platform::WindowHandle window() { return 0; }

  virtual void press(platform::RichEdit& box, std::int16_t key_code, std::int16_t shift) = 0;
  /// Types characters with their keys; a line feed is Enter.
  virtual void type(platform::RichEdit& box, std::u16string_view text) = 0;
  virtual void click(platform::RichEdit& box, std::int32_t position, std::int16_t shift) = 0;
  virtual void double_click(platform::RichEdit& box, std::int32_t position) = 0;
  /// Presses the left button at one position and releases it at another.
  virtual void sweep(platform::RichEdit& box, std::int32_t from, std::int32_t to,
                     std::int16_t shift) = 0;
  /// Drags the selection of the source along the path. `start` begins the drag as a host would;
  /// without it the user does, by pressing the left button on the selection and moving.
  virtual void drag(platform::RichEdit& source, const DragPath& path,
                    const std::function<void()>& start) = 0;

  /// Another program puts something on the clipboard.
  virtual void copy_text(std::u16string_view text) = 0;
  virtual void copy_rtf(std::u16string_view text, std::u16string_view rtf) = 0;

  /// Sets who acts in the next large editor that opens; if it is still open afterwards, it is
  /// closed by its frame.
  virtual void at_editor(std::function<void(EditorHand&)> user) = 0;
};

/// The stage of the platform that the suite is built for.
std::unique_ptr<Stage> make_stage();

}  // namespace qel::conformance
