#pragma once

#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace qel::test {

/// The seed of this run: QEL_TEST_SEED, or always the same one.
inline std::uint32_t base_seed() {
  const char* const given = std::getenv("QEL_TEST_SEED");
  return given == nullptr ? 20261121U
                          : static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10));
}

/// Random choices that a seed repeats. Tests print the seed where they fail (`SCOPED_TRACE`).
class Random {
 public:
  explicit Random(std::uint32_t seed) : seed_(seed), engine_(seed) {}

  std::uint32_t seed() const { return seed_; }
  std::string describe() const { return "seed " + std::to_string(seed_); }

  /// From 0 up to but without `end`.
  std::size_t below(std::size_t end) { return static_cast<std::size_t>(engine_()) % end; }
  bool one_in(std::size_t n) { return below(n) == 0; }

  template <class Value>
  const Value& pick(const std::vector<Value>& values) {
    return values[below(values.size())];
  }

  /// `pieces` of the vocabulary in a row.
  std::u16string text(const std::vector<std::u16string_view>& vocabulary, std::size_t pieces) {
    std::u16string text;
    for (std::size_t i = 0; i < pieces; ++i) text.append(pick(vocabulary));
    return text;
  }

 private:
  std::uint32_t seed_;
  std::mt19937 engine_;
};

/// Pieces of markup: all codes, what looks like one, escapes, and text of several kinds.
inline const std::vector<std::u16string_view>& markup_vocabulary() {
  static const std::vector<std::u16string_view> vocabulary = {
      u"/b1",       u"/b0",  u"/i1",  u"/i0", u"/u1", u"/u0",   u"/c1",
      u"/c0",       u"/k1",  u"/k0",  u"/p1", u"/p0", u"/s1",   u"/s0",
      u"/t1",       u"/t0",  u"/f1",  u"/f2", u"/f9", u"/f0",   u"/y1",
      u"/y2",       u"/y3",  u"/y7",  u"/y0", u"/nl", u"/r1",   u"/l0",
      u"/z1",       u"/b2",  u"/B1",  u"/",   u"\\",  u"\\\\",  u"~",
      u"~/b1",      u"~/f3", u"<b1]", u"<",   u"]",   u"{",     u"}",
      u"\t",        u"a",    u"bc",   u" ",   u"12",  u"word ", u"\u00E9\u4E2D",
      u"\U0001F600"};
  return vocabulary;
}

}  // namespace qel::test
