#include "qel/richtext/RtfReader.h"

#include <algorithm>
#include <utility>

namespace qel::richtext {
namespace {

bool begins_destination(const KnownWord* word) {
  if (word == nullptr) return false;
  const WordAction action = word->action;
  return action == WordAction::set_destination || action == WordAction::begin_text_part ||
         (action >= WordAction::begin_aside && action <= WordAction::begin_picture_properties);
}

}  // namespace

template <class Char>
std::size_t BasicRtfReader<Char>::read(View rtf, bool is_last) {
  using Scanner = RtfScanner<Char>;
  scanner_ = Scanner(rtf, is_in_bytes() ? Scanner::last_ascii : Scanner::last);
  is_last_ = is_last;
  is_incomplete_ = false;
  if (!is_begun_ && extent_ == Extent::document) scanner_.skip(rtf.find('{'));
  is_begun_ = is_begun_ || !scanner_.at_end();
  if (is_word_cut_) skip_rest_of_word();
  skip_binary_data();
  while (!scanner_.at_end() && !is_closed_ && !is_incomplete_) read_token();
  return scanner_.position();
}

/// Of a word that is longer than any, the beginning has been read.
template <class Char>
void BasicRtfReader<Char>::skip_rest_of_word() {
  const auto is_in_word = [](char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') ||
           c == u'-';
  };
  while (!scanner_.at_end() && is_in_word(scanner_.peek())) scanner_.skip(1);
  if (scanner_.at_end()) return;
  if (scanner_.peek() == u' ') scanner_.skip(1);
  is_word_cut_ = false;
}

template <class Char>
void BasicRtfReader<Char>::read_token() {
  const bool at_start = std::exchange(at_group_start_, false);
  token_ = scanner_.position();
  ++tokens_;
  switch (scanner_.peek()) {
    case u'{':
      open_group();
      at_group_start_ = true;
      break;
    case u'}':
      close_group();
      break;
    case u'\\':
      read_control(at_start);
      break;
    case u'\t':
      scanner_.skip(1);
      content_.add_character(u'\t');
      break;
    case u'\r':
    case u'\n':
    case u'\0':
      scanner_.skip(1);
      at_group_start_ = at_start;
      break;
    default:
      read_text();
  }
}

template <class Char>
void BasicRtfReader<Char>::read_text() {
  if (content_.drops_text()) {
    scanner_.skip_plain_text();
    content_.note_skipped();
  } else if (content_.takes_replacement()) {
    scanner_.skip(1);
  } else if (is_in_bytes() && scanner_.peek() >= 0x80) {
    content_.add_byte(static_cast<std::uint8_t>(scanner_.next()));
  } else {
    View text = scanner_.plain_text();
    if (content_.completes_character(static_cast<char16_t>(text.front()))) text.remove_prefix(1);
    add_text(text);
  }
}

template <>
void BasicRtfReader<char16_t>::add_text(View text) {
  content_.add_coded(text);
}

/// In bytes, plain text is ASCII.
template <>
void BasicRtfReader<char>::add_text(View text) {
  content_.add_coded_ascii(text);
}

template <class Char>
void BasicRtfReader<Char>::read_control(bool at_start) {
  constexpr std::size_t longest_symbol = 4;
  constexpr std::size_t longest_word = 4096;  // that is kept until it ends
  const auto wait = [&] {
    scanner_.go_to(token_);
    --tokens_;
    at_group_start_ = at_start;
    is_incomplete_ = true;
  };
  scanner_.skip(1);
  const char16_t first = scanner_.at_end() ? u'\0' : scanner_.peek();
  if ((first < u'a' || first > u'z') && (first < u'A' || first > u'Z')) {
    if (!is_last_ && scanner_.left() < longest_symbol - 1) return wait();
    at_group_start_ = at_start;
    if (!scanner_.at_end()) read_symbol();
  } else {
    const ControlWord word = scanner_.control_word();
    // A sign may begin the number.
    const bool ends_in_sign = scanner_.left() == 1 && scanner_.peek() == u'-';
    const bool goes_on = !is_last_ && (scanner_.at_end() || ends_in_sign);
    is_word_cut_ = goes_on && scanner_.position() - token_ > longest_word;
    if (goes_on && !is_word_cut_) return wait();
    at_group_start_ = at_start;
    read_word(word);
  }
  at_group_start_ = false;
}

template <class Char>
void BasicRtfReader<Char>::read_word(const ControlWord& word) {
  const KnownWord* const known = find_word(word.key);
  if (known != nullptr && known->action == WordAction::skip_binary) {
    skip_binary(word.parameter);
    return;
  }
  if (std::exchange(starred_, false) && !begins_destination(known)) {
    content_.skip_group();
    return;
  }
  if (content_.destination() == Destination::skipped) {
    if (known != nullptr && known->action == WordAction::add_unicode) content_.note_skipped();
    return;
  }
  // Any word may be a replacement character, except one that begins the next character.
  const bool begins_character = known != nullptr && known->action == WordAction::add_unicode;
  if (known == nullptr || (!begins_character && content_.is_replacement_due())) {
    content_.takes_replacement();
    return;
  }
  content_.do_word(*known, word.parameter, tokens_);
}

template <class Char>
void BasicRtfReader<Char>::read_symbol() {
  const char16_t symbol = scanner_.next();
  switch (symbol) {
    case u'\'':
      read_hex_byte();
      return;
    case u'*':
      starred_ = at_group_start_;
      return;
    case u'\\':
    case u'{':
    case u'}':
    case u'\t':
      content_.add_character(symbol);
      return;
    case u'~':
      content_.add_character(0x00A0);
      return;
    case u'-':
      content_.add_character(0x00AD);
      return;
    case u'_':
      content_.add_character(0x2011);
      return;
    case u'\r':
      if (!scanner_.at_end() && scanner_.peek() == u'\n') scanner_.skip(1);
      [[fallthrough]];
    case u'\n':
      if (!content_.takes_replacement()) content_.add_break();
      return;
    default:
      // Not a symbol of RTF, which has bytes below 0x80 only.
      if (is_in_bytes() && symbol >= 0x80) content_.add_byte(static_cast<std::uint8_t>(symbol));
      return;
  }
}

template <class Char>
void BasicRtfReader<Char>::read_hex_byte() {
  const int byte = scanner_.hex_byte();
  if (byte < 0 || content_.takes_replacement()) return;
  content_.add_byte(static_cast<std::uint8_t>(byte));
}

template <class Char>
void BasicRtfReader<Char>::skip_binary(Parameter count) {
  if (count.value_or(0) > 0) binary_due_ = static_cast<std::size_t>(count.value);
  skip_binary_data();
  content_.takes_replacement();
}

template <class Char>
void BasicRtfReader<Char>::skip_binary_data() {
  const std::size_t here = std::min(binary_due_, scanner_.left());
  scanner_.skip(here);
  binary_due_ -= here;
}

template <class Char>
void BasicRtfReader<Char>::open_group() {
  scanner_.skip(1);
  starred_ = false;
  content_.open_group();
}

template <class Char>
void BasicRtfReader<Char>::close_group() {
  scanner_.skip(1);
  starred_ = false;
  content_.close_group();
  is_closed_ = extent_ == Extent::document && !content_.is_in_group();
}

template class BasicRtfReader<char>;
template class BasicRtfReader<char16_t>;

void read_rtf(std::u16string_view rtf, const CharFormat& base, DocumentSink& sink) {
  RtfReader reader(base, sink, RtfReader::Extent::document);
  reader.read(rtf, true);
  reader.finish();
}

}  // namespace qel::richtext
