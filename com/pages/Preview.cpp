#include "com/pages/Preview.h"

#include "com/automation/HostObject.h"
#include "com/control/QELTextboxObject.h"
#include "qel/base/Error.h"

namespace qel::com {
namespace {

const std::u16string sample =
    u"Plain, /b1bold/b0, /i1italic/i0 and /u1underlined/u0 text/nl"
    u"/y1ignored/y0, /y2hidden/y0, and a /y3note/y0";

}  // namespace

Preview::Preview()
    : box_(Pointer<IUnknown>::adopted((new QELTextboxObject)->created_for(nullptr))
               .as<IQELTextbox>()) {}

/// A value that no box would take is shown as the one before.
void Preview::put(const Setting& setting, const Value& value) {
  try {
    HostObject(box_.get()).put(windows::utf16(setting.name), plain(value.get()));
  } catch (const Error&) {
    return;
  }
}

void Preview::draw(HDC context, const RECT& bounds) {
  box_->put_Enabled(VARIANT_TRUE);
  box_->put_Multiline(VARIANT_TRUE);
  box_->put_Lossless(VARIANT_TRUE);
  const Value text = Value::of(sample);
  box_->put_TextQEL(text.get().bstrVal);
  box_->Size(bounds.right - bounds.left, bounds.bottom - bounds.top);
  const RECTL place = {bounds.left, bounds.top, bounds.right, bounds.bottom};
  box_.as<IViewObject>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, context, &place,
                               nullptr, nullptr, 0);
}

}  // namespace qel::com
