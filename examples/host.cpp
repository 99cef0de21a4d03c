// A host of the text box without a window: restores a control from saved properties, types into it,
// opens the large editor, and prints the properties to save.

#include <iostream>

#include "qel/base/Utf8.h"
#include "qel/headless/BoxUser.h"
#include "qel/headless/ControlSite.h"
#include "qel/headless/HeadlessPlatform.h"
#include "qel/headless/PropertyBag.h"
#include "qel/platform/Keys.h"
#include "qel/qel.h"

int main() {
  qel::headless::ControlSite form;  // a real form overrides some of its members
  const auto platform = std::make_shared<qel::headless::HeadlessPlatform>();
  qel::QELTextbox control(form, platform);
  qel::headless::PropertyBag bag(u"ShowEditorOnShiftF2=True\nTextQEL=Dear /b1Ann/b0");
  control.ReadProperties(bag);

  const auto user_at = [&] {  // a user at the box that has the text just now
    return qel::headless::BoxUser(*control.CurrentRichTextBox());
  };
  platform->put_user([&](qel::headless::EditorWindow& /*window*/) {
    user_at().press(qel::keys::end_key);
    user_at().type(u" and Bob");
    user_at().press(qel::keys::enter_key);  // OK
  });
  user_at().press(qel::keys::end_key);
  user_at().type(u"a");
  user_at().press(qel::keys::function_key(2), qel::keys::shift_key);

  control.WriteProperties(bag);
  std::cout << qel::to_utf8(bag.get_All());
}
