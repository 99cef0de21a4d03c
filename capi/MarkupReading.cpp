#include "MarkupReading.h"

#include <algorithm>
#include <string>

#include "Options.h"
#include "qel/base/Utf16.h"
#include "qel/convert/ByteInput.h"
#include "qel/convert/MarkupInput.h"

namespace qel::capi {

void read_markup(std::string_view markup, const convert::Options& options, TextSink& sink) {
  constexpr std::size_t part_size = std::size_t{1} << 14U;
  convert::MarkupInput reader(sink, false);
  std::u16string window;
  bool is_last = false;
  while (!is_last && !sink.is_done()) {
    const std::string_view part = markup.substr(0, part_size);
    is_last = part.size() == markup.size();
    markup.remove_prefix(convert::append_decoded(window, part, convert::Encoding::utf8, is_last));
    window.erase(0, reader.read(window, is_last));
    ask(options);
  }
  reader.finish();
}

std::size_t count_characters(std::u16string_view text) {
  const auto halves =
      std::count_if(text.begin(), text.end(), [](char16_t unit) { return is_low_surrogate(unit); });
  return text.size() - static_cast<std::size_t>(halves);
}

std::size_t unit_position(std::u16string_view text, std::size_t position) {
  std::size_t at = 0;
  for (; position > 0 && at < text.size(); --position) at += is_pair_at(text, at) ? 2 : 1;
  return at;
}

namespace {

class Counter : public TextSink {
 public:
  std::size_t count() const { return count_; }

  void text(std::u16string_view text, const style_codes::CodeState& /*state*/) override {
    count_ += count_characters(text);
  }
  void line_break(const style_codes::CodeState& /*state*/) override { ++count_; }

 private:
  std::size_t count_ = 0;
};

}  // namespace

std::size_t length(std::string_view markup, const convert::Options& options) {
  Counter counter;
  read_markup(markup, options, counter);
  return counter.count();
}

}  // namespace qel::capi
