#pragma once

#include <cstddef>
#include <string>

/// What the benchmarks read: the same prose in every format, the same at each run.
namespace qel::bench {

/// One text with a change of format about every 40 characters and a break every few hundred. Mostly
/// ASCII, with an accented letter here and there.
struct Documents {
  std::u16string markup;
  std::size_t markup_bytes = 0;  ///< of the markup as a file holds it, in UTF-8
  std::string markup_file;       ///< the markup in UTF-8
  std::string markdown;          ///< emphasis for every kind of format, blank lines for breaks
  std::u16string rtf;            ///< what `QELToRTF` makes of the markup
  std::string rtf_bytes;         ///< that as a file holds it
};

constexpr int small_size = 100'000;
constexpr int medium_size = 1'000'000;
constexpr int large_size = 10'000'000;
/// What the string functions are measured on: positions have 16 bits.
constexpr int string_size = 32'000;
/// About so many words.
constexpr int ten_thousand_words = 70'000;
constexpr int hundred_thousand_words = 700'000;

/// Documents whose markup takes about `bytes` as a file; generated once and kept.
const Documents& documents(std::size_t bytes);

/// Markup of about that size alone, in UTF-8.
std::string markup_file(std::size_t bytes);

}  // namespace qel::bench
