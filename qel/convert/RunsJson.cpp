#include "qel/convert/RunsJson.h"

#include <array>
#include <cstddef>
#include <utility>

#include "qel/base/Json.h"
#include "qel/base/Records.h"

namespace qel::convert {
namespace {

using style_codes::CodeState;

struct Attribute {
  std::u16string_view name;
  style_codes::AttributeBit bit;
};

constexpr std::array<Attribute, 7> attributes = {{
    {u"bold", style_codes::bold_bit},
    {u"italic", style_codes::italic_bit},
    {u"underline", style_codes::underline_bit},
    {u"small_caps", style_codes::small_caps_bit},
    {u"strike_through", style_codes::strike_through_bit},
    {u"superscript", style_codes::superscript_bit},
    {u"subscript", style_codes::subscript_bit},
}};

void append_member(std::u16string& object, std::u16string_view name, std::u16string_view value) {
  object.append(u",\"").append(name).append(u"\":").append(value);
}

}  // namespace

void RunsJson::text(std::u16string_view text, const CodeState& state) {
  if (!is_open_ || state != state_) begin_run(state);
  append_json(out(), text);
}

void RunsJson::begin_run(const CodeState& state) {
  end_run();
  out().append(std::exchange(is_first_, false) ? u"\n" : u",\n").append(u"{\"text\":\"");
  state_ = state;
  is_open_ = true;
}

void RunsJson::end_run() {
  if (!std::exchange(is_open_, false)) return;
  out().push_back(u'"');
  for (const Attribute& attribute : attributes) {
    const bool is_on = (state_.attributes & attribute.bit) != 0;
    append_member(out(), attribute.name, is_on ? u"true" : u"false");
  }
  append_member(out(), u"font", records::from_integer(state_.font));
  append_member(out(), u"color", records::from_integer(state_.color));
  append_member(out(), u"line_codes_before", records::from_integer(std::exchange(line_codes_, 0)));
  out().push_back(u'}');
}

void RunsJson::finish() {
  end_run();
  if (line_codes_ > 0) begin_run({});
  end_run();
  out().append(u"\n]\n");
}

}  // namespace qel::convert
