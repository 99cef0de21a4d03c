#include "SegmentsJson.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

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

void append_object(std::string& out, std::u16string_view text, const style_codes::CodeState& state,
                   std::int32_t line_codes_before) {
  out.append("{\"text\":").append(nlohmann::json(to_utf8(text)).dump());
  for (const Attribute& attribute : attributes) {
    const bool is_on = (state.attributes & attribute.bit) != 0;
    append_member(out, attribute.name, is_on ? "true" : "false");
  }
  append_member(out, "font", std::to_string(state.font));
  append_member(out, "color", std::to_string(state.color));
  append_member(out, "line_codes_before", std::to_string(line_codes_before));
  out.push_back('}');
}

}  // namespace

void write_segments(const SegmentCollection& segments, bool line_codes,
                    const std::function<void(std::string_view)>& sink) {
  constexpr std::size_t part = std::size_t{1} << 16U;
  std::string lines = "[";
  std::string_view separator = "\n";
  for (const auto& segment : segments) {
    std::u16string text = segment->get_Text();
    if (segments.way() == Way::stated) text = restore_escaped_codes(std::move(text));
    append_object(lines.append(separator), text, segment->code_state(),
                  line_codes ? segment->line_codes_before() : 0);
    separator = ",\n";
    if (lines.size() < part) continue;
    sink(lines);
    lines.clear();
  }
  if (line_codes && segments.line_codes_at_end() > 0) {
    append_object(lines.append(separator), {}, {}, segments.line_codes_at_end());
  }
  sink(lines.append("\n]\n"));
}

}  // namespace qel::command
