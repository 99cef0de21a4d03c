#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "qel/model/QELCode.h"
#include "qel/text/WordSet.h"

namespace qel {

/// Kinds of letter case.
enum TextCaseKind : std::int32_t {
  tcNone = 0,
  tcUppercase = 1,
  tcLowercase = 2,
  tcInitialCap = 3,
  tcTitleCase = 4,
};

/// The changes of letter case that `TextCase` makes.
enum class CaseChange : std::uint8_t {
  lower,
  upper,
  swap,  ///< see `TextCase::ChangeCase`
  title,
  initial,
  first_to_lower,
  first_to_upper,
};

/// Changes the letter case of markup and leaves its codes, escaped ones too, as they are. Letters
/// map one to one, so the visible text keeps its length. No member raises an error or changes its
/// argument.
///
/// `Start` counts the visible characters before the span, `Length` those in it; a `Length` of -1,
/// or one that goes beyond the text, reaches to its end. A `Start` beyond the text changes nothing.
/// The markup is decoded, divided at the edges of the span and encoded again: codes that do nothing
/// are gone, and so are line codes (see `StyleDecoder::get_QELText`), unless the way is lossless.
class TextCase {
 public:
  TextCase();

  /// A value that the object keeps for its host and does not use.
  TextCaseKind get_TextCase() const { return kind_; }
  void put_TextCase(TextCaseKind Value) { kind_ = Value; }

  /// The words that title case leaves in lower case, separated by ",": English articles and
  /// prepositions at first. Nothing is trimmed: a word with a blank before it is never found.
  const std::u16string& get_IgnoredWordList() const { return ignored_word_list_; }
  void put_IgnoredWordList(std::u16string_view Value);

  /// A `Length` of 0 counts as 1 in these two.
  static std::u16string LowerCase(std::u16string_view Text, std::int16_t Start, std::int16_t Length,
                                  Way way = Way::stated);
  static std::u16string UpperCase(std::u16string_view Text, std::int16_t Start, std::int16_t Length,
                                  Way way = Way::stated);
  /// Capitals become small, small letters capitals. With a `Length` of -1 and a `Text` of exactly
  /// 65,535 characters, codes included, hidden runs stay.
  static std::u16string ChangeCase(std::u16string_view Text, std::int16_t Start,
                                   std::int16_t Length, Way way = Way::stated);

  // The following members leave hidden runs as they are, and treat the text as if it had none.

  /// Raises the first letter of each word of the span and lowers the rest. Words begin after
  /// blanks, double quotes, opening brackets, tabs, line breaks and line codes, even if those are
  /// in another run. A word that begins with anything but a letter, apart from opening quotes, has
  /// none to raise. With `NotIgnoredWords` the words of the list stay in lower case, except as the
  /// first or the last word of the text. A `Length` of -1 means the whole text with a `Start` of 1
  /// too.
  std::u16string TitleCase(std::u16string_view Text, std::int16_t Start, std::int16_t Length,
                           bool NotIgnoredWords, Way way = Way::stated) const;
  /// Raises the first letter of the span, that is the first character that is not a blank, a break,
  /// an opening quote or an opening bracket, and lowers the rest.
  static std::u16string InitialCap(std::u16string_view Text, std::int16_t Start,
                                   std::int16_t Length, Way way = Way::stated);
  /// Change that first letter alone.
  static std::u16string FirstToLower(std::u16string_view Text, std::int16_t Start,
                                     std::int16_t Length, Way way = Way::stated);
  static std::u16string FirstToUpper(std::u16string_view Text, std::int16_t Start,
                                     std::int16_t Length, Way way = Way::stated);

  /// The words of the list.
  const WordSet& ignored_words() const { return ignored_words_; }

  /// Title case of the whole text, except for the words of the list.
  std::u16string AutoTitleCase(std::u16string_view Text, Way way = Way::stated) const;
  static std::u16string AutoInitialCap(std::u16string_view Text, Way way = Way::stated);

  // The same on the visible text of RTF, a document or a part of one. Everything else stays as it
  // is: control words, tables, hidden text, slash codes in the text (of which only the line code
  // begins or ends a word), and escaped characters whose counterpart is not in code page 1252.

  std::u16string AutoTitleCaseRTF(std::u16string_view Text) const;
  static std::u16string AutoInitialCapRTF(std::u16string_view Text);

  /// RTF that shows `Text` in capitals, with "{\caps " before it and "\capsoff}" after it.
  static std::u16string UpperCaseRTF(std::u16string_view Text);
  /// The same group, without "\capsoff".
  static std::u16string LowerCaseRTF(std::u16string_view Text);

  /// Whether the text is not empty and each character is a letter whose lower case has a higher
  /// code than its upper case, as most have.
  static bool IsAlphabet(std::u16string_view Text);
  /// Whether the text occurs in the sequence of quotes U+0022, U+0027, U+201C, U+201D, U+2018,
  /// U+2019, U+201E, U+201A: it is one of them, for example, or empty.
  static bool IsQuote(std::u16string_view Text);
  /// Whether a word may begin after the text: its last character is a blank, a double quote
  /// (straight or left) or an opening bracket.
  static bool IsWhitespace(std::u16string_view Text);
  /// Whether the text is not empty and has only left and straight quotes.
  static bool IsLeftQuote(std::u16string_view Text);

 private:
  TextCaseKind kind_ = tcNone;
  std::u16string ignored_word_list_;
  WordSet ignored_words_;
};

}  // namespace qel
