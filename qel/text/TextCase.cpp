#include "qel/text/TextCase.h"

#include <algorithm>
#include <cstddef>

#include "qel/base/CaseMapping.h"
#include "qel/base/Records.h"
#include "qel/base/Utf16.h"
#include "qel/richtext/VisibleText.h"
#include "qel/text/CaseRules.h"
#include "qel/text/MarkupCase.h"
#include "qel/text/TitleRules.h"

namespace qel {

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
                                   std::int16_t Length, Way way) {
  return change_case(Text, CaseChange::lower, Start, Length == 0 ? 1 : Length, {}, way);
}

std::u16string TextCase::UpperCase(std::u16string_view Text, std::int16_t Start,
                                   std::int16_t Length, Way way) {
  return change_case(Text, CaseChange::upper, Start, Length == 0 ? 1 : Length, {}, way);
}

std::u16string TextCase::ChangeCase(std::u16string_view Text, std::int16_t Start,
                                    std::int16_t Length, Way way) {
  return change_case(Text, CaseChange::swap, Start, Length, {}, way);
}

std::u16string TextCase::TitleCase(std::u16string_view Text, std::int16_t Start,
                                   std::int16_t Length, bool NotIgnoredWords, Way way) const {
  static const WordSet none;
  const std::int32_t start = Length == -1 && Start == 1 ? 0 : Start;
  return change_case(Text, CaseChange::title, start, Length,
                     NotIgnoredWords ? ignored_words_ : none, way);
}

std::u16string TextCase::InitialCap(std::u16string_view Text, std::int16_t Start,
                                    std::int16_t Length, Way way) {
  return change_case(Text, CaseChange::initial, Start, Length, {}, way);
}

std::u16string TextCase::FirstToLower(std::u16string_view Text, std::int16_t Start,
                                      std::int16_t Length, Way way) {
  return change_case(Text, CaseChange::first_to_lower, Start, Length, {}, way);
}

std::u16string TextCase::FirstToUpper(std::u16string_view Text, std::int16_t Start,
                                      std::int16_t Length, Way way) {
  return change_case(Text, CaseChange::first_to_upper, Start, Length, {}, way);
}

std::u16string TextCase::AutoTitleCase(std::u16string_view Text, Way way) const {
  return TitleCase(Text, 0, -1, true, way);
}

std::u16string TextCase::AutoInitialCap(std::u16string_view Text, Way way) {
  return InitialCap(Text, 0, -1, way);
}

namespace {

/// Changes the case of the visible text of RTF.
std::u16string change_case_of_rtf(std::u16string_view rtf, CaseChange change,
                                  const WordSet& ignored = {}) {
  const richtext::VisibleText visible(rtf);
  std::u16string before = visible.text();
  case_rules::mask_codes(before);
  std::u16string after = before;
  case_rules::apply(after, {0, after.size()}, change, ignored);
  return visible.with(case_rules::with_changes(visible.text(), before, after));
}

}  // namespace

std::u16string TextCase::AutoTitleCaseRTF(std::u16string_view Text) const {
  return change_case_of_rtf(Text, CaseChange::title, ignored_words_);
}

std::u16string TextCase::AutoInitialCapRTF(std::u16string_view Text) {
  return change_case_of_rtf(Text, CaseChange::initial);
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
