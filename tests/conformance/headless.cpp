// The platform in memory, as a stage.

#include <algorithm>
#include <utility>

#include "conformance/Stage.h"
#include "qel/headless/BoxUser.h"
#include "qel/headless/Drag.h"
#include "qel/headless/HeadlessPlatform.h"
#include "qel/platform/Keys.h"

namespace qel::conformance {
namespace {

using headless::BoxUser;
using headless::BoxView;

class Hand : public EditorHand {
 public:
  explicit Hand(headless::EditorWindow& window) : window_(window) {}
  void choose(std::u16string_view name) override { window_.choose(name); }
  void press_ok() override { window_.press_ok(); }
  void press_cancel() override { window_.press_cancel(); }
  void close_by_frame() override { window_.close_by_frame(); }
  bool is_open() const override { return window_.is_open(); }

 private:
  headless::EditorWindow& window_;
};

class HeadlessStage : public Stage {
 public:
  std::shared_ptr<const platform::Platform> platform() const override { return platform_; }

  void press(platform::RichEdit& box, std::int16_t key_code, std::int16_t shift) override {
    user_of(box).press(key_code, shift);
  }
  void type(platform::RichEdit& box, std::u16string_view text) override { user_of(box).type(text); }
  void click(platform::RichEdit& box, std::int32_t position, std::int16_t shift) override {
    const auto [x, y] = point_of(box, position);
    user_of(box).click(x, y, shift);
  }
  void double_click(platform::RichEdit& box, std::int32_t position) override {
    const auto [x, y] = point_of(box, position);
    user_of(box).double_click(x, y);
  }
  void sweep(platform::RichEdit& box, std::int32_t from, std::int32_t to,
             std::int16_t shift) override {
    const auto [from_x, from_y] = point_of(box, from);
    const auto [to_x, to_y] = point_of(box, to);
    BoxUser user = user_of(box);
    user.mouse_down(from_x, from_y, shift);
    user.mouse_move(to_x, to_y, shift);
    user.mouse_up(to_x, to_y, shift);
  }
  void drag(platform::RichEdit& source, const DragPath& path,
            const std::function<void()>& start) override {
    const auto [x, y] = point_of(path.target, path.position);
    platform_->put_dragger([&path, x = x, y = y](headless::Drag& drag) {
      for (int moves = 0; moves < 2; ++moves) drag.over(path.target, x, y, path.shift);
      if (path.drops) {
        drag.drop();
      } else {
        drag.leave();
      }
    });
    if (start) {
      start();
    } else {
      sweep(source, source.selection().start, path.position, keys::no_modifier);
    }
    platform_->put_dragger(nullptr);
  }

  void copy_text(std::u16string_view text) override { platform_->clipboard().put_text(text); }
  void copy_rtf(std::u16string_view text, std::u16string_view rtf) override {
    platform_->clipboard().put(text, rtf);
  }

  void at_editor(std::function<void(EditorHand&)> user) override {
    platform_->put_user([user = std::move(user)](headless::EditorWindow& window) {
      Hand hand(window);
      user(hand);
    });
  }

 private:
  static BoxUser user_of(const platform::RichEdit& box) { return BoxUser(box); }
  static std::pair<float, float> point_of(const platform::RichEdit& box, std::int32_t position) {
    const std::u16string before = box.get_Text().substr(0, static_cast<std::size_t>(position));
    const auto line = std::count(before.begin(), before.end(), u'\n');
    const std::size_t line_feed = before.rfind(u'\n');
    const std::size_t start = line_feed == std::u16string::npos ? 0 : line_feed + 1;
    return {static_cast<float>(before.size() - start) * BoxView::character_width,
            (static_cast<float>(line) + 0.5F) * BoxView::line_height};
  }

  std::shared_ptr<headless::HeadlessPlatform> platform_ =
      std::make_shared<headless::HeadlessPlatform>();
};

}  // namespace

std::unique_ptr<Stage> make_stage() { return std::make_unique<HeadlessStage>(); }

}  // namespace qel::conformance
