#include "qel/headless/Drag.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "qel/control/QELTextbox.h"
#include "qel/headless/BoxUser.h"
#include "qel/headless/HeadlessPlatform.h"
#include "support/Form.h"
#include "support/Text.h"

namespace qel {
namespace {

using headless::BoxUser;
using headless::BoxView;

/// A host that writes down drags, and may change what it is asked about.
class Host : public ControlEvents {
 public:
  explicit Host(std::string& log, std::string name) : log_(log), name_(std::move(name)) {}

  void Change() override { tell("change"); }
  void OLEStartDrag(platform::DragData& Data, std::int32_t& AllowedEffects) override {
    tell("start" + std::to_string(AllowedEffects));
    if (promises) {
      Data.clear();
      Data.promise(platform::rtf_format);
    }
    if (forbids) AllowedEffects = platform::no_drop;
  }
  void OLESetData(platform::DragData& Data, std::int16_t DataFormat) override {
    tell("set" + std::to_string(DataFormat));
    Data.put(DataFormat, u"{\\rtf1\\i late}");
  }
  void OLEGiveFeedback(std::int32_t& Effect, bool& DefaultCursors) override {
    tell("feedback" + std::to_string(Effect) + (DefaultCursors ? "" : "!"));
  }
  void OLEDragOver(platform::DragData&, std::int32_t& Effect, std::int16_t, std::int16_t, float,
                   float, std::int16_t State) override {
    tell("over" + std::to_string(State) + "/" + std::to_string(Effect));
    if (wanted_effect >= 0) Effect = wanted_effect;
  }
  void OLEDragDrop(platform::DragData& Data, std::int32_t& Effect, std::int16_t, std::int16_t,
                   float X, float) override {
    tell("drop" + std::to_string(Effect) + "@" + std::to_string(static_cast<int>(X)));
    if (wanted_effect >= 0) Effect = wanted_effect;
    dropped = Data.get(platform::text_format).value_or(u"");
  }
  void OLECompleteDrag(std::int32_t& Effect) override { tell("done" + std::to_string(Effect)); }

  bool promises = false;
  bool forbids = false;
  std::int32_t wanted_effect = -1;
  std::u16string dropped;

 private:
  void tell(const std::string& event) { log_ += name_ + event + " "; }

  std::string& log_;
  std::string name_;
};

class Dragging : public testing::Test {
 protected:
  Dragging() {
    for (QELTextbox* control : {&source, &target}) {
      control->put_OLEDragMode(1);
      control->put_OLEDropMode(2);
    }
    source.listen(&from);
    target.listen(&to);
    source.put_TextQEL(u"ab/b1cd/b0e");
    target.put_TextQEL(u"12");
    source.CurrentRichTextBox()->select({1, 2});
    log.clear();
  }

  static platform::RichEdit& box(const QELTextbox& control) {
    return *control.CurrentRichTextBox();
  }
  /// Sweeps the source's selection off, over the box, to that character, and drops it.
  void drag(QELTextbox& over, int to_character, std::int16_t shift = 0) {
    platform->put_dragger([&, to_character, shift](headless::Drag& drag) {
      drag.over(box(over), static_cast<float>(to_character) * BoxView::character_width, 5, shift);
      drag.drop();
    });
    BoxUser user(box(source));
    user.mouse_down(2 * BoxView::character_width, 5);
    user.mouse_move(3 * BoxView::character_width, 5);
    user.mouse_up(0, 0);
  }

  std::string log;
  test::Form form;
  std::shared_ptr<headless::HeadlessPlatform> platform =
      std::make_shared<headless::HeadlessPlatform>();
  QELTextbox source{form, platform};
  QELTextbox target{form, platform};
  Host from{log, "s."};
  Host to{log, "t."};
};

TEST_F(Dragging, MovesAndCopiesBetweenBoxes) {
  drag(target, 1);
  EXPECT_EQ(target.get_TextQEL(), u"1b/b1c/b02");
  EXPECT_EQ(target.get_SelText(), u"bc") << "what was dropped is selected";
  EXPECT_EQ(source.get_TextQEL(), u"a/b1d/b0e");
  EXPECT_EQ(log, "s.start3 t.over0/2 s.feedback2 t.drop2@8 t.change s.change s.done2 ");
  BoxUser(box(source)).press('Z', 2);
  EXPECT_EQ(source.get_TextQEL(), u"ab/b1cd/b0e") << "one step";
  log.clear();
  drag(target, 0, 2);
  EXPECT_EQ(target.get_TextQEL(), u"b/b1c/b01b/b1c/b02") << "with Ctrl it is copied";
  EXPECT_EQ(source.get_TextQEL(), u"ab/b1cd/b0e");
  EXPECT_NE(log.find("s.done1 "), std::string::npos);
  source.put_AllowEdits(false);
  drag(target, 0);
  EXPECT_EQ(source.get_TextQEL(), u"ab/b1cd/b0e") << "nothing is moved out of what is read only";
}

TEST_F(Dragging, MovesWithinABox) {
  drag(source, 5);
  EXPECT_EQ(source.get_TextQEL(), u"a/b1d/b0eb/b1c/b0");
  EXPECT_EQ(source.get_SelText(), u"bc");
  BoxUser(box(source)).press('Z', 2);
  EXPECT_EQ(source.get_TextQEL(), u"ab/b1cd/b0e") << "in one step";
  drag(source, 0);
  EXPECT_EQ(source.get_TextQEL(), u"b/b1c/b0a/b1d/b0e");
  source.CurrentRichTextBox()->select({1, 3});
  drag(source, 2);
  EXPECT_EQ(source.get_TextQEL(), u"b/b1c/b0a/b1d/b0e") << "onto itself";
}

TEST_F(Dragging, LeavesTheHostInCharge) {
  from.forbids = true;
  drag(target, 0);
  EXPECT_EQ(log, "s.start3 ") << "called off";
  from.forbids = false;
  from.promises = true;
  drag(target, 0);
  EXPECT_EQ(target.get_TextQEL(), u"/i1late/i012") << "supplied when it was wanted";
  from.promises = false;
  source.put_TextQEL(u"abc");
  source.CurrentRichTextBox()->select({1, 2});
  to.wanted_effect = platform::no_drop;
  drag(target, 0);
  EXPECT_EQ(target.get_Text(), u"late12") << "refused";
  EXPECT_EQ(source.get_Text(), u"abc");

  to.wanted_effect = -1;
  target.put_OLEDropMode(1);
  drag(target, 0);
  EXPECT_EQ(to.dropped, u"bc") << "the host has it";
  EXPECT_EQ(target.get_Text(), u"late12") << "and the box leaves it alone";
  EXPECT_EQ(source.get_Text(), u"abc") << "nor is it lost here";
  to.wanted_effect = platform::move_drop;
  drag(target, 0);
  EXPECT_EQ(source.get_Text(), u"a") << "the host has moved it";

  target.put_OLEDropMode(0);
  source.put_OLEDragMode(0);
  source.CurrentRichTextBox()->select({0, 1});
  log.clear();
  drag(target, 0);
  EXPECT_EQ(log, "") << "a sweep selects now";
  source.CurrentRichTextBox()->select({0, 1});
  source.OLEDrag();
  EXPECT_EQ(log, "s.start3 s.done0 ") << "the host starts it, and nobody takes it";
}

TEST_F(Dragging, DropsByTheRulesOfPasting) {
  target.put_PasteTextOnly(true);
  drag(target, 1, 2);
  EXPECT_EQ(target.get_TextQEL(), u"1bc2");
  from.promises = true;
  drag(target, 0);
  EXPECT_EQ(target.get_TextQEL(), u"1bc2") << "no text was dropped";
  EXPECT_EQ(source.get_TextQEL(), u"ab/b1cd/b0e") << "and none moved away";
  from.promises = false;
  target.put_Multiline(true);
  source.put_Multiline(true);
  source.put_Text(u"x\ny");
  source.CurrentRichTextBox()->select({0, 4});
  drag(target, 0);
  EXPECT_EQ(target.get_Text(), u"x y") << "one line";
}

}  // namespace
}  // namespace qel
