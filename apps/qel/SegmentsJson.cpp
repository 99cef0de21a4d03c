#include "SegmentsJson.h"

#include <array>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>

#include "qel/base/Utf8.h"
#include "qel/model/QELCode.h"
#include "qel/model/StyleCodes.h"

namespace qel::command {
namespace {

struct Attribute {
  std::string_view name;
  style_codes::AttributeBit bit;
};

constexpr std::array<Attribute, 7> attributes = {{
    {"bold", style_codes::bold_bit},
    {"italic", style_codes::italic_bit},
    {"underline", style_codes::underline_bit},
    {"small_caps", style_codes::small_caps_bit},
    {"strike_through", style_codes::strike_through_bit},
    {"superscript", style_codes::superscript_bit},
    {"subscript", style_codes::subscript_bit},
}};

void append_member(std::string& object, std::string_view name, std::string_view value) {
  object.append(",\"").append(name).append("\":").append(value);
}

void append_object(std::string& out, const Segment& segment, bool line_codes) {
  const style_codes::CodeState state = segment.code_state();
  const std::u16string text = restore_escaped_codes(std::u16string(segment.text()));
  out.append("{\"text\":").append(nlohmann::json(to_utf8(text)).dump());
  for (const Attribute& attribute : attributes) {
    const bool is_on = (state.attributes & attribute.bit) != 0;
    append_member(out, attribute.name, is_on ? "true" : "false");
  }
  append_member(out, "font", std::to_string(state.font));
  append_member(out, "color", std::to_string(state.color));
  append_member(out, "line_codes_before",
                std::to_string(line_codes ? segment.line_codes_before() : 0));
  out.push_back('}');
}

}  // namespace

void write_segments(const SegmentCollection& segments, bool line_codes,
                    const std::function<void(std::string_view)>& sink) {
  constexpr std::size_t part = std::size_t{1} << 16U;
  std::string lines = "[";
  std::string_view separator = "\n";
  for (const auto& segment : segments) {
    append_object(lines.append(separator), *segment, line_codes);
    separator = ",\n";
    if (lines.size() < part) continue;
    sink(lines);
    lines.clear();
  }
  sink(lines.append("\n]\n"));
}

}  // namespace qel::command
