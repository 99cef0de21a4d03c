#include <algorithm>
#include <utility>

#include "qel/richtext/FieldInstructions.h"
#include "qel/richtext/RtfContent.h"

/// What the reader of RTF shows on request, or counts: notes, headers, links, pictures and objects.
namespace qel::richtext {
namespace {

constexpr std::size_t most_asides = 100;  // within each other

bool is_blank(char16_t character) {
  return character == u' ' || character == u'\t' || character == u'\u00A0';
}

void drop_first_blanks(std::u16string_view& text) {
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
}

}  // namespace

void RtfContent::begin_aside(Aside kind) {
  const bool is_note = kind == Aside::note;
  const bool is_wanted = is_note ? extras_.notes : extras_.headers;
  if (!properties_.is_shown() || !is_wanted || asides_.size() == most_asides) {
    if (properties_.is_shown()) skipped_ = is_note ? &counts_.notes : &counts_.headers;
    properties_.skip_group();
    return;
  }
  const Alignment alignment = properties_.state().alignment;
  if (!is_note) separate_lines(alignment);
  asides_.push_back({kind, alignment, {}, {}, {}});
  properties_.begin_aside(true);
}

/// The link ends with the group of the field, whose instruction has just ended.
void RtfContent::begin_link(std::u16string address) {
  if (address.empty() || !properties_.is_shown()) return;
  if (asides_.size() == most_asides) {
    ++counts_.links;
    return;
  }
  asides_.push_back({Aside::link, Alignment::left, {}, std::move(address), {}});
  properties_.begin_aside(false);
}

void RtfContent::end_aside(Alignment alignment) {
  const OpenAside aside = std::move(asides_.back());
  asides_.pop_back();
  switch (aside.kind) {
    case Aside::note:
      if (!aside.format) return;
      line_end_.reset();
      show(u"]", *aside.format);
      return properties_.note_shown();
    case Aside::header:
      return separate_lines(alignment);
    case Aside::link:
      return end_link(aside);
  }
}

void RtfContent::end_link(const OpenAside& link) {
  if (says_address(link.shown, link.address)) return;
  if (!extras_.links) {
    ++counts_.links;
  } else if (!properties_.is_shown()) {
    return;
  } else if (link.shown.empty()) {
    add_text(u"(" + link.address + u")");
  } else {
    add_text(u" (" + link.address + u")");
  }
}

/// Writes what has to stand before a text within asides, and drops blanks at a note's beginning.
/// Returns the text that is left.
std::u16string_view RtfContent::enter_asides(std::u16string_view text) {
  for (OpenAside& aside : asides_) {
    if (aside.kind == Aside::note && !aside.format) {
      drop_first_blanks(text);
      if (text.empty()) break;
      aside.format = properties_.format_on_line();
      show(bracket(), *aside.format);
    }
    if (aside.kind == Aside::link && aside.shown.size() <= aside.address.size()) {
      aside.shown.append(text.substr(0, aside.address.size() + 1));
    }
  }
  return text;
}

/// A bracket stands behind a blank, but not at the beginning of a line.
std::u16string_view RtfContent::bracket() const {
  const bool needs_blank = last_ != u'\0' && !line_end_ && !is_blank(last_);
  return needs_blank ? u" [" : u"[";
}

/// Whether a break does not end a line right here. In notes it does so only where more text follows
/// within; the lines of headers are not empty.
bool RtfContent::break_in_aside() {
  const auto note = std::find_if(asides_.rbegin(), asides_.rend(),
                                 [](const OpenAside& aside) { return aside.kind == Aside::note; });
  if (note != asides_.rend()) {
    if (note->format) line_end_ = {properties_.format(), note->alignment};
    return true;
  }
  const bool is_header = std::any_of(asides_.begin(), asides_.end(), [](const OpenAside& aside) {
    return aside.kind == Aside::header;
  });
  return is_header && (last_ == u'\0' || line_end_);
}

void RtfContent::begin_object() {
  if (properties_.is_shown()) ++counts_.objects;
  properties_.begin_destination(Destination::object);
}

void RtfContent::begin_picture() {
  const bool is_whole = destination() == Destination::text || destination() == Destination::shape ||
                        destination() == Destination::property_value;
  if (is_whole) ++counts_.pictures;
  if (extras_.alternative_texts) {
    properties_.begin_destination(Destination::picture);
  } else {
    properties_.skip_group();
  }
}

void RtfContent::begin_picture_properties() {
  if (destination() != Destination::picture) properties_.skip_group();
}

void RtfContent::begin_property_part(Destination part) {
  const bool has_properties =
      destination() == Destination::picture || destination() == Destination::shape;
  if (!has_properties || !extras_.alternative_texts) return;
  (part == Destination::property_name ? property_name_ : property_value_).clear();
  properties_.begin_destination(part);
}

void RtfContent::end_property() {
  const std::u16string value = std::exchange(property_value_, {});
  if (property_name_ != u"wzDescription" || value.empty()) return;
  if (!alternative_text_.empty()) alternative_text_.append(u"; ");
  alternative_text_.append(value);
}

void RtfContent::add_alternative_text() {
  if (alternative_text_.empty() || !properties_.is_text()) return;
  const std::u16string text = std::exchange(alternative_text_, {});
  if (properties_.is_shown()) add_text(std::u16string(bracket()) + text + u"]");
}

}  // namespace qel::richtext
