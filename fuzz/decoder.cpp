// Markup into segments and back: what is kept, and what a second pass leaves alone.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Input.h"
#include "qel/model/QELCode.h"
#include "qel/model/StyleDecoder.h"

namespace {

using qel::StyleDecoder;
using qel::fuzz::Input;
using qel::fuzz::require;

struct Run {
  qel::iStyle style;
  std::u16string text;

  friend bool operator==(const Run&, const Run&) = default;
};

/// The visible text in runs of equal style, however it is divided into segments.
std::vector<Run> runs(StyleDecoder& decoder) {
  std::vector<Run> runs;
  for (const auto& segment : *decoder.get_Segments()) {
    if (segment->length() == 0) continue;
    if (runs.empty() || runs.back().style != segment->get_Style()) {
      runs.push_back({segment->get_Style(), {}});
    }
    runs.back().text.append(segment->get_Text());
  }
  for (Run& run : runs) run.text = qel::restore_escaped_codes(run.text);
  return runs;
}

/// Whether segments that share a font lose it: the code that a colour brings with it switches it
/// off.
bool loses_font(StyleDecoder& decoder) {
  const qel::iStyle* last = nullptr;
  for (const auto& segment : *decoder.get_Segments()) {
    const qel::iStyle& style = segment->get_Style();
    if (last != nullptr && style.FontID != 0 && style.FontID == last->FontID &&
        style.ColorID != 0) {
      return true;
    }
    last = &style;
  }
  return false;
}

/// Whether characters would act as a code when written next to each other or to a code: line codes
/// and codes without effect, which decoding drops, had kept them apart.
bool is_ambiguous(StyleDecoder& decoder) {
  for (const auto& segment : *decoder.get_Segments()) {
    if (segment->get_Text().back() == u'~') return true;
  }
  for (const Run& run : runs(decoder)) {
    const std::u16string text = qel::protect_escaped_codes(run.text);
    for (std::size_t i = 0; (i = text.find(u'/', i)) != std::u16string::npos; ++i) {
      if (qel::IsQELCode(text.substr(i, 3))) return true;
    }
  }
  return false;
}

void check_second_pass(StyleDecoder& decoder) {
  const std::u16string once = decoder.get_QELText();
  const bool font_lost = loses_font(decoder);
  if (is_ambiguous(decoder)) return;
  StyleDecoder second;
  second.put_QELText(once);
  require(second.get_Text() == decoder.get_Text(), "a second pass keeps the visible text");
  if (!font_lost) {
    require(runs(second) == runs(decoder), "a second pass keeps the styles");
    require(second.get_QELText() == once, "a second pass changes nothing");
  } else if (!is_ambiguous(second)) {
    require(!loses_font(second), "what is lost is lost in the first pass");
    check_second_pass(second);
  }
}

void check_division(StyleDecoder& decoder, const Input& input) {
  const std::vector<Run> before = runs(decoder);
  const std::u16string text = decoder.get_Text();
  const auto length = static_cast<std::int16_t>(text.size());
  const std::int16_t start = input.number(0, -1, static_cast<std::int16_t>(length + 1));
  const std::int16_t count = input.number(1, -1, static_cast<std::int16_t>(length + 1));
  decoder.DivideSegmentsGivenSelStartAndLength(start, count);
  require(runs(decoder) == before && decoder.get_Text() == text, "dividing keeps text and styles");
  bool has_boundary = start <= 0 || start > length;
  std::int32_t end = 0;
  for (const auto& segment : *decoder.get_Segments()) {
    end += segment->length();
    has_boundary = has_boundary || end == start;
  }
  require(has_boundary, "a segment ends where the text was divided");
  require(end == length, "the plain text is as long as the segments together");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 0x7000) return 0;  // positions have 16 bits
  const Input input(data, size);
  const std::u16string text = input.text();
  StyleDecoder decoder;
  decoder.put_QELText(text);
  check_second_pass(decoder);
  const std::vector<Run> undivided = runs(decoder);
  check_division(decoder, input);
  StyleDecoder by_words;
  by_words.SetQELText(text, input.number(2, 1, 3));
  require(runs(by_words) == undivided, "dividing into words keeps text and styles");
  by_words.get_Words();
  for (const bool trims : {false, true})
    by_words.GetQELTextv6(input.number(3, 0, 31), trims, trims);
  return 0;
}
