#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>

#include "qel/base/Utf8.h"
#include "qel/capi.h"
#include "qel/model/TextAttribute.h"
#include "qel/text/MarkupStrings.h"

namespace qel {
namespace {

qel_text text_of(std::string_view text) { return {text.data(), text.size()}; }

std::string taken(qel_string string) {
  std::string text(string.data == nullptr ? "" : string.data, string.size);
  qel_string_free(string);
  return text;
}

/// Markup without line breaks, which the library does not count.
std::u16string random_markup(std::mt19937& random, int pieces) {
  static constexpr std::u16string_view parts[] = {
      u"/b1", u"/b0", u"/i1", u"/i0", u"/f2", u"/f0",  u"/y2", u"/y0", u"~/b1", u"/c1",
      u"/",   u"b",   u"1",   u"~",   u"A",   u"quot", u" ",   u"\"",  u"The",  u"of",
      u"é",   u"ß",   u"\t",  u"/r1", u"n",   u"m",    u"/z9", u"(",   u"ς",    u"//"};
  std::u16string markup;
  while (pieces-- > 0) markup += parts[random() % std::size(parts)];
  return markup;
}

/// The runs of a text: markup may say the same in several ways.
std::string runs_in(std::string_view markup) {
  qel_runs* runs = nullptr;
  qel_runs_of(text_of(markup), nullptr, &runs, nullptr);
  std::string all;
  for (std::size_t i = 0; i < qel_runs_count(runs); ++i) {
    const qel_run& run = *qel_runs_at(runs, i);
    for (const unsigned number : {run.bold + 0U, run.italic + 0U, run.small_caps + 0U,
                                  run.font + 0U, run.color + 0U, run.line_breaks}) {
      all += std::to_string(number);
    }
    all.append(":").append(run.text.data, run.text.size).append("|");
  }
  qel_runs_free(runs);
  return all;
}
std::string runs_in(std::u16string_view markup) { return runs_in(to_utf8(markup)); }

struct Case {
  const char* name;
  CaseChange change;
};
constexpr Case cases[] = {{"upper", CaseChange::upper},
                          {"swap", CaseChange::swap},
                          {"title", CaseChange::title},
                          {"initial", CaseChange::initial},
                          {"first-lower", CaseChange::first_to_lower}};

/// A text of one part and of many, which are read piece by piece.
class CapiTexts : public testing::TestWithParam<int> {};

TEST_P(CapiTexts, DoWhatTheLibraryDoes) {
  const auto seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const int rounds = 20000 / GetParam();
  for (int round = 0; round < rounds; ++round) {
    const std::u16string markup = random_markup(random, 1 + GetParam());
    const std::string bytes = to_utf8(markup);
    SCOPED_TRACE(bytes.substr(0, 200));
    const std::size_t length = markup::length(markup, Way::lossless);
    const std::size_t start = random() % (length + 2);
    const std::size_t count = random() % (length + 2);
    SCOPED_TRACE(testing::Message() << start << ", " << count);
    std::size_t number = 0;
    ASSERT_EQ(qel_length(text_of(bytes), nullptr, &number, nullptr), QEL_OK);
    ASSERT_EQ(number, length);
    qel_string out;
    qel_mid(text_of(bytes), start, count, nullptr, &out, nullptr);
    ASSERT_EQ(runs_in(taken(out)), runs_in(markup::mid(markup, start, count, Way::lossless)));
    qel_toggle(text_of(bytes), text_of("italic"), start, count, nullptr, &out, nullptr);
    ASSERT_EQ(runs_in(taken(out)),
              runs_in(markup::toggle(markup, taItalic, start, count, Way::lossless)));
    // The library lets formats that are left open go on into the text.
    const std::u16string other =
        markup::left(random_markup(random, 3), markup::npos, Way::lossless);
    qel_stuff(text_of(bytes), start, count, text_of(to_utf8(other)), nullptr, &out, nullptr);
    ASSERT_EQ(runs_in(taken(out)),
              runs_in(markup::replace(markup, start, count, other, Way::lossless)));
    for (const Case& change : cases) {
      qel_change_case(text_of(bytes), text_of(change.name), start, count, nullptr, &out, nullptr);
      ASSERT_EQ(runs_in(taken(out)),
                runs_in(markup::change_case(markup, change.change, start, count, Way::lossless)))
          << change.name;
    }
    qel_find(text_of(bytes), text_of(to_utf8(other)), 0, 1, nullptr, &number, nullptr);
    ASSERT_EQ(number, markup::find(markup, other, markup::Matching::ignoring_case, Way::lossless));
  }
}

INSTANTIATE_TEST_SUITE_P(, CapiTexts, testing::Values(8, 40, 20000));

}  // namespace
}  // namespace qel
