#include <algorithm>
#include <array>
#include <optional>

#include "Buffer.h"
#include "Guard.h"
#include "LosslessTexts.h"
#include "MarkupReading.h"
#include "Options.h"
#include "StatedTexts.h"
#include "qel/base/Utf16.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Normalize.h"
#include "qel/model/TextAttribute.h"
#include "qel/richtext/CodePage.h"

namespace qel::capi {
namespace {

using convert::Options;

const Options& checked(const qel_options* options) {
  const Options& all = or_defaults(options).conversion;
  ask(all);
  return all;
}

/// Hands out what one of the two ways makes of a text.
template <class Lossless, class Stated>
qel_status write(qel_string* output, const qel_options* options, qel_error* error,
                 Lossless lossless, Stated stated) noexcept {
  if (output != nullptr) *output = {};
  return guarded(error, [&] {
    qel_string& written = existing(output);
    const Options& all = checked(options);
    Buffer bytes;
    if (all.way == Way::lossless) {
      lossless(bytes, all);
    } else {
      bytes.append(stated());
      ask(all);
    }
    written = bytes.release();
  });
}

/// Hands out the number that one of the two ways finds.
template <class Lossless, class Stated>
qel_status count(size_t* output, const qel_options* options, qel_error* error, Lossless lossless,
                 Stated stated) noexcept {
  if (output != nullptr) *output = 0;
  return guarded(error, [&] {
    size_t& number = existing(output);
    const Options& all = checked(options);
    number = all.way == Way::lossless ? lossless(all) : stated();
  });
}

std::u16string normalized(std::string_view markup, const Options& all) {
  std::u16string text;
  text.reserve(markup.size());
  append_utf16_of(text, markup, richtext::decode_western);
  ask(all);
  return convert::normalized(text, [&] { ask(all); });
}

/// In parts, so that it is not in memory a third time.
void append(Buffer& to, std::u16string_view text) {
  constexpr std::size_t part_size = std::size_t{1} << 14U;
  std::string part;
  while (!text.empty()) {
    std::size_t size = std::min(text.size(), part_size);
    if (is_pair_at(text, size - 1)) ++size;
    part.clear();
    append_utf8(part, text.substr(0, size));
    to.append(part);
    text.remove_prefix(size);
  }
}

qel_status cut(qel_text markup, Span span, const qel_options* options, qel_string* output,
               qel_error* error) {
  return write(
      output, options, error,
      [&](Buffer& to, const Options& all) { lossless::mid(to, view(markup), span, all); },
      [&] { return stated::mid(view(markup), span); });
}

struct NamedCase {
  std::string_view name;
  CaseChange change;
};

CaseChange case_change_of(std::string_view name) {
  static constexpr std::array rows = {NamedCase{"upper", CaseChange::upper},
                                      NamedCase{"lower", CaseChange::lower},
                                      NamedCase{"swap", CaseChange::swap},
                                      NamedCase{"title", CaseChange::title},
                                      NamedCase{"initial", CaseChange::initial},
                                      NamedCase{"first-upper", CaseChange::first_to_upper},
                                      NamedCase{"first-lower", CaseChange::first_to_lower}};
  const auto found = std::find_if(rows.begin(), rows.end(),
                                  [&](const NamedCase& row) { return row.name == name; });
  if (found == rows.end()) throw Failure(QEL_BAD_ARGUMENT, name, "is no change of case");
  return found->change;
}

struct NamedAttribute {
  std::string_view name;
  std::int32_t attribute;
};

std::int32_t attribute_of(std::string_view name) {
  static constexpr std::array rows = {
      NamedAttribute{"plain", taPlain},         NamedAttribute{"bold", taBold},
      NamedAttribute{"italic", taItalic},       NamedAttribute{"underline", taUnderline},
      NamedAttribute{"strike", taStrikeThru},   NamedAttribute{"superscript", taSuperscript},
      NamedAttribute{"subscript", taSubscript}, NamedAttribute{"small-caps", taSmallCaps}};
  const auto found = std::find_if(rows.begin(), rows.end(),
                                  [&](const NamedAttribute& row) { return row.name == name; });
  if (found != rows.end()) return found->attribute;
  const bool has_index = !name.empty() && name.back() >= '1' && name.back() <= '9';
  const std::string_view kind = name.substr(0, name.size() - (has_index ? 1 : 0));
  if (has_index && kind == "font") return taFont1 + (name.back() - '1');
  if (has_index && kind == "color") return taColor1 + (name.back() - '1');
  throw Failure(QEL_BAD_ARGUMENT, name, "is no attribute");
}

}  // namespace
}  // namespace qel::capi

using namespace qel::capi;

qel_status qel_plain(qel_text markup, const qel_options* options, qel_string* output,
                     qel_error* error) {
  return write(
      output, options, error,
      [&](Buffer& to, const Options& all) { lossless::plain(to, view(markup), all); },
      [&] { return stated::plain(view(markup)); });
}

qel_status qel_length(qel_text markup, const qel_options* options, size_t* length,
                      qel_error* error) {
  return count(
      length, options, error,
      [&](const Options& all) { return qel::capi::length(view(markup), all); },
      [&] { return stated::length(view(markup)); });
}

qel_status qel_find(qel_text markup, qel_text search, size_t start, int ignores_case,
                    const qel_options* options, size_t* position, qel_error* error) {
  const qel_status status = count(
      position, options, error,
      [&](const Options& all) {
        return lossless::find(view(markup), view(search), start, ignores_case != 0, all);
      },
      [&] { return stated::find(view(markup), view(search), start, ignores_case != 0); });
  if (status != QEL_OK && position != nullptr) *position = QEL_NOT_FOUND;
  return status;
}

qel_status qel_left(qel_text markup, size_t count, const qel_options* options, qel_string* output,
                    qel_error* error) {
  return cut(markup, Span::of(0, count), options, output, error);
}

qel_status qel_right(qel_text markup, size_t count, const qel_options* options, qel_string* output,
                     qel_error* error) {
  size_t length = 0;
  const qel_status status = qel_length(markup, options, &length, error);
  if (status == QEL_OK) {
    return cut(markup, Span::of(length - std::min(length, count), QEL_ALL), options, output, error);
  }
  if (output != nullptr) *output = {};
  return status;
}

qel_status qel_mid(qel_text markup, size_t start, size_t count, const qel_options* options,
                   qel_string* output, qel_error* error) {
  return cut(markup, Span::of(start, count), options, output, error);
}

qel_status qel_stuff(qel_text markup, size_t start, size_t count, qel_text replacement,
                     const qel_options* options, qel_string* output, qel_error* error) {
  const Span span = Span::of(start, count);
  return write(
      output, options, error,
      [&](Buffer& to, const Options& all) {
        lossless::stuff(to, view(markup), span, view(replacement), all);
      },
      [&] { return stated::stuff(view(markup), span, view(replacement)); });
}

qel_status qel_change_case(qel_text markup, qel_text change, size_t start, size_t count,
                           const qel_options* options, qel_string* output, qel_error* error) {
  const Span span = Span::of(start, count);
  return write(
      output, options, error,
      [&](Buffer& to, const Options& all) {
        lossless::change_case(to, view(markup), case_change_of(view(change)), span, all);
      },
      [&] { return stated::change_case(view(markup), case_change_of(view(change)), span); });
}

qel_status qel_toggle(qel_text markup, qel_text attribute, size_t start, size_t count,
                      const qel_options* options, qel_string* output, qel_error* error) {
  const Span span = Span::of(start, count);
  return write(
      output, options, error,
      [&](Buffer& to, const Options& all) {
        lossless::toggle(to, view(markup), attribute_of(view(attribute)), span, all);
      },
      [&] { return stated::toggle(view(markup), attribute_of(view(attribute)), span); });
}

qel_status qel_normalize(qel_text markup, const qel_options* options, qel_string* output,
                         qel_error* error) {
  if (output != nullptr) *output = {};
  return guarded(error, [&] {
    qel_string& written = existing(output);
    const Options& all = checked(options);
    Buffer bytes;
    append(bytes, normalized(view(markup), all));
    ask(all);
    written = bytes.release();
  });
}
