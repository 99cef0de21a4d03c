#pragma once

#include <cstddef>
#include <string_view>

#include "qel/convert/Options.h"
#include "qel/model/RunSink.h"

/// Markup in UTF-8, read in the lossless way: a few thousand bytes at a time, so that a text of any
/// size takes little memory and can be stopped.
namespace qel::capi {

/// Receives a text, perhaps not all of it.
class TextSink : public RunSink {
 public:
  /// Whether what follows makes no difference.
  virtual bool is_done() const { return false; }
  void finish() override {}
};

/// Passes the text on, and its end. Of the options it asks the question to stop, in which case it
/// raises a `Failure`.
void read_markup(std::string_view markup, const convert::Options& options, TextSink& sink);

/// How many characters (code points) a text has in which surrogate pairs are whole.
std::size_t count_characters(std::u16string_view text);
/// Where the character at `position` begins in it, in code units: its size where it has fewer.
std::size_t unit_position(std::u16string_view text, std::size_t position);

/// How many characters the markup has: code points, and line breaks as one each.
std::size_t length(std::string_view markup, const convert::Options& options);

}  // namespace qel::capi
