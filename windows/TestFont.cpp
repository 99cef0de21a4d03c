#include "windows/TestFont.h"

#include <algorithm>

#include "qel/base/Error.h"
#include "windows/Text.h"

namespace qel::windows {
namespace {

[[noreturn]] void fail(const char* what) {
  throw Error(Error::object_not_set, "MeasuringSurface", what);
}

}  // namespace

TestFont::TestFont()
    : context_(CreateCompatibleDC(nullptr)), first_font_(GetCurrentObject(context_, OBJ_FONT)) {
  if (context_ == nullptr) fail("There is no device context.");
}

TestFont::~TestFont() {
  SelectObject(context_, first_font_);
  DeleteDC(context_);
}

void TestFont::put_TestFont(std::u16string_view name) {
  LOGFONTW description = {};
  if (name.size() >= std::size(description.lfFaceName)) fail("The font's name is too long.");
  const std::wstring_view face = wide(name);
  std::copy(face.begin(), face.end(), std::begin(description.lfFaceName));
  description.lfCharSet = DEFAULT_CHARSET;
  Font font(description);
  if (font.handle() == nullptr) fail("The font cannot be made.");
  SelectObject(context_, font.handle());
  font_ = std::move(font);
}

std::uintptr_t TestFont::get_hDC() const { return reinterpret_cast<std::uintptr_t>(context_); }

platform::CharacterSet TestFont::test_font_character_set() const {
  TEXTMETRICW metrics = {};
  if (GetTextMetricsW(context_, &metrics) == FALSE) fail("The font cannot be measured.");
  return metrics.tmCharSet == SYMBOL_CHARSET ? platform::CharacterSet::symbol
                                             : platform::CharacterSet::ansi;
}

}  // namespace qel::windows
