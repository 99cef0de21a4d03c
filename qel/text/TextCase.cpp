#include "qel/text/TextCase.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "qel/base/CaseMapping.h"
#include "qel/base/Records.h"
#include "qel/base/Utf16.h"
#include "qel/model/Division.h"
#include "qel/model/StyleDecoder.h"
#include "qel/richtext/VisibleText.h"
#include "qel/text/CaseRules.h"
#include "qel/text/TitleRules.h"

namespace qel {
namespace {

using case_rules::mask_codes;
using case_rules::swap_case;
using case_rules::with_changes;
using title_rules::looked_through;
using title_rules::Mapping;
using title_rules::Span;

enum class Hidden { changes, stays };

/// Replaces each placeholder of an escaped code by signs, which have no case.
void mask_placeholders(std::u16string& text) {
  constexpr std::size_t length = 4;
  for (std::size_t at = text.find(u'<'); at < text.size(); at = text.find(u'<', at + 1)) {
    if (begins_with_placeholder(std::u16string_view(text).substr(at))) {
      text.replace(at, length, length, u'/');
    }
  }
}

/// All segments as one text: what is not to change is masked, and line codes are a line break.
std::u16string flat_text(const SegmentCollection& segments, Hidden hidden) {
  std::u16string flat;
  for (const auto& segment : segments) {
    if (segment->line_codes_before() > 0) flat.push_back(u'\n');
    if (hidden == Hidden::stays && segment->code_state().color == hidden_color) {
      flat.append(segment->text().size(), looked_through);
    } else {
      std::u16string text = segment->get_Text();
      mask_placeholders(text);
      flat.append(text);
    }
  }
  return flat;
}

struct Piece {
  Segment* segment = nullptr;
  std::size_t begin = 0;  ///< in the flat text

  std::size_t length() const { return segment->text().size(); }
};

/// The segments of a span along which the segments are divided: those from its start on, up to the
/// first that ends where it does.
std::vector<Piece> pieces_of(const SegmentCollection& segments, std::int32_t start,
                             std::int32_t length) {
  std::vector<Piece> pieces;
  std::int32_t position = 0;
  std::size_t flat = 0;
  for (const auto& segment : segments) {
    if (segment->line_codes_before() > 0) ++flat;
    if (position >= start) pieces.push_back({segment.get(), flat});
    position += segment->length();
    flat += segment->text().size();
    if (position == start + length) break;
  }
  return pieces;
}

/// Applies a rule (see `title_rules`) to a span of markup.
template <class Rule>
std::u16string apply_rule(std::u16string_view markup, std::int32_t start, std::int32_t length,
                          Hidden hidden, Rule rule) {
  // Longer texts do not occur; the sums of start and length stay within their type.
  constexpr std::size_t longest = 0x7FFF0000;
  if (length == -1) length = static_cast<std::int32_t>(std::min(markup.size(), longest));
  StyleDecoder decoder;
  decoder.put_QELText(markup);
  SegmentCollection& segments = *decoder.get_Segments();
  // Taken first: a division may go through an escaped code.
  const std::u16string before = flat_text(segments, hidden);
  division::divide(segments, start, length);
  const std::vector<Piece> pieces = pieces_of(segments, start, length);
  if (pieces.empty()) return decoder.get_QELText();
  std::u16string after = before;
  rule(after, Span{pieces.front().begin, pieces.back().begin + pieces.back().length()});
  for (const Piece& piece : pieces) {
    const auto part_before = std::u16string_view(before).substr(piece.begin, piece.length());
    const auto part_after = std::u16string_view(after).substr(piece.begin, piece.length());
    if (part_before == part_after) continue;
    piece.segment->put_Text(with_changes(piece.segment->text(), part_before, part_after));
  }
  return decoder.get_QELText();
}

/// Applies a rule to the visible text of RTF.
template <class Rule>
std::u16string apply_rule_to_rtf(std::u16string_view rtf, Rule rule) {
  const richtext::VisibleText visible(rtf);
  std::u16string before = visible.text();
  mask_codes(before);
  std::u16string after = before;
  rule(after, Span{0, after.size()});
  return visible.with(with_changes(visible.text(), before, after));
}

/// Title case that spares the words of the list.
auto title_case_rule(const WordSet& ignored) {
  return
      [&ignored](std::u16string& text, Span span) { title_rules::title_case(text, span, ignored); };
}

auto map_all_rule(Mapping mapping) {
  return [mapping](std::u16string& text, Span span) { title_rules::map_all(text, span, mapping); };
}

auto map_first_rule(Mapping mapping) {
  return
      [mapping](std::u16string& text, Span span) { title_rules::map_first(text, span, mapping); };
}

}  // namespace

TextCase::TextCase() {
  put_IgnoredWordList(
      u"a,against,as,at,before,between,by,during,for,from,in,into,of,on,the,to,under,with,within");
}

void TextCase::put_IgnoredWordList(std::u16string_view Value) {
  ignored_word_list_ = Value;
  ignored_words_ = {};
  for (const auto word : records::split(ignored_word_list_, u",")) ignored_words_.insert(word);
}

std::u16string TextCase::LowerCase(std::u16string_view Text, std::int16_t Start,
                                   std::int16_t Length) {
  return apply_rule(Text, Start, Length == 0 ? 1 : Length, Hidden::changes, map_all_rule(to_lower));
}

std::u16string TextCase::UpperCase(std::u16string_view Text, std::int16_t Start,
                                   std::int16_t Length) {
  return apply_rule(Text, Start, Length == 0 ? 1 : Length, Hidden::changes, map_all_rule(to_upper));
}

std::u16string TextCase::ChangeCase(std::u16string_view Text, std::int16_t Start,
                                    std::int16_t Length) {
  // The length of such a text is -1 again in the 16 bits that replace the -1.
  const bool keeps_hidden = Length == -1 && Text.size() == 0xFFFF;
  return apply_rule(Text, Start, Length, keeps_hidden ? Hidden::stays : Hidden::changes,
                    map_all_rule(swap_case));
}

std::u16string TextCase::TitleCase(std::u16string_view Text, std::int16_t Start,
                                   std::int16_t Length, bool NotIgnoredWords) const {
  static const WordSet none;
  const std::int32_t start = Length == -1 && Start == 1 ? 0 : Start;
  return apply_rule(Text, start, Length, Hidden::stays,
                    title_case_rule(NotIgnoredWords ? ignored_words_ : none));
}

std::u16string TextCase::InitialCap(std::u16string_view Text, std::int16_t Start,
                                    std::int16_t Length) {
  return apply_rule(Text, Start, Length, Hidden::stays, title_rules::initial_cap);
}

std::u16string TextCase::FirstToLower(std::u16string_view Text, std::int16_t Start,
                                      std::int16_t Length) {
  return apply_rule(Text, Start, Length, Hidden::stays, map_first_rule(to_lower));
}

std::u16string TextCase::FirstToUpper(std::u16string_view Text, std::int16_t Start,
                                      std::int16_t Length) {
  return apply_rule(Text, Start, Length, Hidden::stays, map_first_rule(to_upper));
}

std::u16string TextCase::AutoTitleCase(std::u16string_view Text) const {
  return TitleCase(Text, 0, -1, true);
}

std::u16string TextCase::AutoInitialCap(std::u16string_view Text) {
  return InitialCap(Text, 0, -1);
}

std::u16string TextCase::AutoTitleCaseRTF(std::u16string_view Text) const {
  return apply_rule_to_rtf(Text, title_case_rule(ignored_words_));
}

std::u16string TextCase::AutoInitialCapRTF(std::u16string_view Text) {
  return apply_rule_to_rtf(Text, title_rules::initial_cap);
}

std::u16string TextCase::UpperCaseRTF(std::u16string_view Text) {
  return std::u16string(u"{\\caps ").append(Text).append(u"\\capsoff}");
}

std::u16string TextCase::LowerCaseRTF(std::u16string_view Text) {
  return std::u16string(u"{\\caps ").append(Text).append(u"}");
}

bool TextCase::IsAlphabet(std::u16string_view Text) {
  const std::u16string lower = to_lower(Text);
  const std::u16string upper = to_upper(Text);
  for (std::size_t at = 0; at < Text.size();) {
    const char32_t character = character_at(lower, at);
    if (character <= character_at(upper, at)) return false;
    at += units_of(character);
  }
  return !Text.empty();
}

bool TextCase::IsQuote(std::u16string_view Text) {
  constexpr std::u16string_view quotes = u"\"'\u201C\u201D\u2018\u2019\u201E\u201A";
  return quotes.find(Text) != std::u16string_view::npos;
}

bool TextCase::IsWhitespace(std::u16string_view Text) {
  return !Text.empty() && title_rules::is_opening(Text.back());
}

bool TextCase::IsLeftQuote(std::u16string_view Text) {
  return !Text.empty() && std::all_of(Text.begin(), Text.end(), title_rules::is_left_quote);
}

}  // namespace qel
