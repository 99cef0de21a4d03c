#include "TagFilter.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "Ascii.h"
#include "Tags.h"

namespace qel::html {
namespace {

// Deep enough for any page; the parser looks at all open elements again and again, and opens all
// formats that were not closed again in each block.
constexpr std::size_t most_nested = 256;
constexpr std::size_t most_formats = 24;
constexpr std::size_t usual_formats = 2;

constexpr std::string_view begin_of_fragment = "<!--StartFragment";
constexpr std::string_view end_of_fragment = "<!--EndFragment";

constexpr std::array<std::string_view, 12> kept_attributes = {"align", "alt",    "class", "color",
                                                              "face",  "hidden", "href",  "size",
                                                              "start", "style",  "type",  "value"};

constexpr std::array<std::string_view, 7> objects = {"applet", "audio",  "canvas", "embed",
                                                     "iframe", "object", "video"};

/// A tag as it stands in HTML.
struct TagText {
  std::string_view name;
  std::string_view attributes;  // up to the end of the tag
  std::size_t end = 0;          // behind the tag; npos when it does not end
};

struct Attribute {
  std::string_view name;
  std::string_view value;
};

/// Takes the first attribute off; false at the end of the tag.
bool take_attribute(std::string_view& text, Attribute& attribute) {
  while (!text.empty() && (is_space(text.front()) || text.front() == '/')) text.remove_prefix(1);
  if (text.empty() || text.front() == '>') return false;
  const std::size_t name_end = text.find_first_of(" \t\r\n\f/>=", 1);
  attribute = {text.substr(0, name_end), {}};
  text.remove_prefix(std::min(name_end, text.size()));
  const std::size_t next = text.find_first_not_of(" \t\r\n\f");
  if (next == text.npos || text[next] != '=') return true;
  text.remove_prefix(next + 1);
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n\f"), text.size()));
  const bool is_quoted = !text.empty() && (text.front() == '"' || text.front() == '\'');
  const char quote = is_quoted ? text.front() : '\0';
  if (is_quoted) text.remove_prefix(1);
  const std::size_t end = is_quoted ? text.find(quote) : text.find_first_of(" \t\r\n\f>");
  attribute.value = text.substr(0, end);
  text.remove_prefix(std::min(end, text.size()));
  if (is_quoted && !text.empty()) text.remove_prefix(1);
  return true;
}

/// The tag whose name begins at `at`.
TagText read_tag(std::string_view html, std::size_t at) {
  const std::size_t name_end = html.find_first_of(" \t\r\n\f/>", at);
  if (name_end == html.npos) return {html.substr(at), {}, html.npos};
  std::string_view rest = html.substr(name_end);
  Attribute skipped;
  while (take_attribute(rest, skipped)) {
  }
  if (rest.empty()) return {html.substr(at, name_end - at), {}, html.npos};
  const std::size_t end = html.size() - rest.size();
  return {html.substr(at, name_end - at), html.substr(name_end, end - name_end), end + 1};
}

/// Behind the comment that begins at `at`.
std::size_t end_of_comment(std::string_view html, std::size_t at) {
  const std::string_view text = html.substr(at + 4);
  if (text.starts_with('>')) return at + 5;
  if (text.starts_with("->")) return at + 6;
  for (std::size_t dashes = html.find("--", at + 4); dashes != html.npos;
       dashes = html.find("--", dashes + 1)) {
    const std::string_view rest = html.substr(dashes + 2);
    if (rest.starts_with('>')) return dashes + 3;
    if (rest.starts_with("!>")) return dashes + 4;
  }
  return html.size();
}

bool is_whole_name(std::string_view rest) {
  return rest.empty() || is_space(rest.front()) || rest.front() == '/' || rest.front() == '>';
}

/// The end tag of an element whose content is raw; the end of the text when there is none.
std::size_t find_end_tag(std::string_view html, std::string_view name, std::size_t from) {
  for (std::size_t at = find(html, "</", from); at < html.size(); at = find(html, "</", at + 1)) {
    const std::string_view rest = html.substr(at + 2);
    if (begins_with(rest, name) && is_whole_name(rest.substr(name.size()))) return at;
  }
  return html.size();
}

/// How many bytes at `at` are a control character that HTML forbids.
std::size_t length_of_control(std::string_view text, std::size_t at) {
  const auto byte = static_cast<unsigned char>(text[at]);
  if (byte == 0x7F || (byte < ' ' && !is_space(text[at]))) return 1;
  return byte == 0xC2 && at + 1 < text.size() && text[at + 1] < '\xA0' ? 2 : 0;
}

/// How many bytes at `at` are a number that will never be a character (U+FDD0 to U+FDEF, and the
/// last two of each plane).
std::size_t length_of_noncharacter(std::string_view text, std::size_t at) {
  const auto byte = [&](std::size_t i) {
    return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0U;
  };
  if (byte(0) < 0xEF) return 0;
  if (byte(0) == 0xEF) {
    const bool is_in_block = byte(1) == 0xB7 && byte(2) >= 0x90 && byte(2) <= 0xAF;
    return is_in_block || (byte(1) == 0xBF && byte(2) >= 0xBE) ? 3 : 0;
  }
  return (byte(1) & 0xFU) == 0xFU && byte(2) == 0xBF && byte(3) >= 0xBE ? 4 : 0;
}

class Filter {
 public:
  explicit Filter(std::string_view html)
      : html_(html), levels_(1), reopened_left_(20'000 + html.size() / 4) {
    filtered_.html.reserve(html.size() + html.size() / 8);
  }

  /// Returns whether the fragment was found that there is said to be.
  bool run(bool has_fragment) {
    is_muted_ = has_fragment;
    while (at_ < html_.size()) {
      const std::size_t less = std::min(html_.find('<', at_), html_.size());
      append_text(html_.substr(at_, less - at_));
      at_ = less;
      if (at_ < html_.size()) read_markup();
    }
    return !has_fragment || found_fragment_;
  }

  FilteredHtml take() { return std::move(filtered_); }

 private:
  /// Where formats end by themselves: a cell, or what is in a table but in no cell.
  struct Level {
    const Tag* cell = nullptr;
    std::array<std::uint8_t, tag_count> open = {};  // formats that were not closed
  };

  void read_markup() {
    const char next = at_ + 1 < html_.size() ? html_[at_ + 1] : ' ';
    const char after = at_ + 2 < html_.size() ? html_[at_ + 2] : ' ';
    if (html_.substr(at_).starts_with("<!--")) {
      read_comment();
    } else if (next == '!' || next == '?' || (next == '/' && !is_letter(after))) {
      const std::size_t end = html_.find('>', at_);
      at_ = end == html_.npos ? html_.size() : end + 1;
    } else if (next == '/' || is_letter(next)) {
      read_tag_at(at_ + (next == '/' ? 2 : 1), next == '/');
    } else {
      append_text(html_.substr(at_, 1));
      ++at_;
    }
  }

  void read_tag_at(std::size_t name, bool is_end) {
    const TagText text = read_tag(html_, name);
    const Tag* const tag = find_tag(text.name);
    if (text.end == html_.npos) {
      // The input ends within a tag, or it never was one.
      if (tag == nullptr) append_text(html_.substr(at_));
      at_ = html_.size();
      return;
    }
    at_ = text.end;
    const bool is_content =
        tag != nullptr && tag->kind != TagKind::hidden && tag->kind != TagKind::raw;
    if (!is_end && !is_content) count_dropped(text.name);
    if (tag == nullptr) return;
    if (is_end) {
      end(*tag);
    } else {
      begin(*tag, text);
    }
  }

  void count_dropped(std::string_view name) {
    if (is_muted_ || hidden_ != nullptr) return;
    const auto is_name = [name](std::string_view other) { return equals(name, other); };
    if (is_name("svg")) ++filtered_.pictures;
    if (std::any_of(objects.begin(), objects.end(), is_name)) ++filtered_.objects;
  }

  void read_comment() {
    const std::string_view rest = html_.substr(at_);
    if (rest.starts_with(begin_of_fragment) && is_muted_ && !found_fragment_) {
      is_muted_ = false;
      found_fragment_ = true;
    } else if (rest.starts_with(end_of_fragment) && found_fragment_) {
      is_muted_ = true;
    }
    at_ = end_of_comment(html_, at_);
  }

  void begin(const Tag& tag, const TagText& text) {
    if (tag.kind == TagKind::raw) return read_raw(tag);
    if (hidden_ != nullptr && !ends_hidden(tag)) return;
    if (tag.kind != TagKind::formatting && tag.kind != TagKind::phrasing) limit_reopened();
    switch (tag.kind) {
      case TagKind::formatting:
        return begin_format(tag, text);
      case TagKind::phrasing:
      case TagKind::block:
      case TagKind::heading:
        if (push(tag)) write_begin(tag, text);
        return;
      case TagKind::item:
        return write_begin(tag, text);
      case TagKind::table:
        if (levels_.size() > 1 && levels_.back().cell == nullptr) end_table();
        if (!push(tag)) return;
        levels_.emplace_back();
        return write_begin(tag, text);
      case TagKind::row:
      case TagKind::cell:
        return begin_in_table(tag, text);
      case TagKind::empty:
        if (!is_muted_) write_begin(tag, text);
        return;
      case TagKind::body:
        if (!std::exchange(has_body_, true)) write_begin(tag, text);
        return;
      case TagKind::preformatted:
        return read_preformatted(tag, text);
      default:
        hidden_ = &tag;
        hidden_depth_ = 1;
    }
  }

  /// Pictures end at the first element that cannot be in them.
  bool ends_hidden(const Tag& tag) {
    if (&tag == hidden_) ++hidden_depth_;
    if (hidden_->name != "svg" || tag.kind == TagKind::phrasing || tag.kind == TagKind::hidden) {
      return false;
    }
    hidden_ = nullptr;
    return true;
  }

  void end(const Tag& tag) {
    if (hidden_ != nullptr) {
      if (&tag == hidden_ && --hidden_depth_ == 0) hidden_ = nullptr;
      return;
    }
    if (dropped_[index_of(tag)] > 0) {
      --dropped_[index_of(tag)];
      return;
    }
    switch (tag.kind) {
      case TagKind::formatting:
        return end_format(tag);
      case TagKind::phrasing:
      case TagKind::block:
      case TagKind::heading:
        return end_nested(tag);
      case TagKind::item:
        return write_end(tag);
      case TagKind::table:
        if (levels_.size() > 1) end_table();
        return;
      case TagKind::row:
      case TagKind::cell:
        return end_in_table(tag);
      case TagKind::empty:
        if (tag.name == "br" && !is_muted_) filtered_.html.append("<br>");
        return;
      default:
        return;
    }
  }

  void begin_format(const Tag& tag, const TagText& text) {
    if (format_count_ == most_formats) {
      ++dropped_[index_of(tag)];
      return;
    }
    ++format_count_;
    ++levels_.back().open[index_of(tag)];
    write_begin(tag, text);
  }

  /// Each block may open all formats again that were not closed. Where so many are that the page
  /// would grow out of proportion, they end.
  void limit_reopened() {
    std::array<std::uint8_t, tag_count>& open = levels_.back().open;
    const std::size_t reopened = format_count_ - std::min(format_count_, usual_formats);
    if (reopened <= reopened_left_) {
      reopened_left_ -= reopened;
      return;
    }
    for (std::size_t i = 0; i < tag_count; ++i) {
      for (; open[i] > 0; --open[i], --format_count_) write_end(tag_at(i));
    }
  }

  void end_format(const Tag& tag) {
    std::uint8_t& open = levels_.back().open[index_of(tag)];
    if (open == 0) return;
    --open;
    --format_count_;
    write_end(tag);
  }

  bool push(const Tag& tag) {
    if (nested_.size() == most_nested) {
      ++dropped_[index_of(tag)];
      return false;
    }
    nested_.push_back(&tag);
    return true;
  }

  /// An end tag that has no begin tag, or not on this side of what it cannot end, is dropped.
  void end_nested(const Tag& tag) {
    for (std::size_t i = nested_.size(); i-- > 0;) {
      const Tag& open = *nested_[i];
      if (&open == &tag || (open.kind == TagKind::heading && tag.kind == TagKind::heading)) {
        for (; nested_.size() > i; nested_.pop_back()) write_end(*nested_.back());
        return;
      }
      const bool is_limit = tag.kind == TagKind::phrasing ? open.kind != TagKind::phrasing
                                                          : open.kind == TagKind::table;
      if (is_limit) return;
    }
  }

  /// Elements that were not closed end with the cell, or where the next row begins.
  void end_cell() {
    leave_table_content();
    if (levels_.back().cell == nullptr) return;
    write_end(*levels_.back().cell);
    for (const std::uint8_t open : levels_.back().open) format_count_ -= open;
    levels_.pop_back();
  }

  void leave_table_content() {
    while (!nested_.empty() && nested_.back()->kind != TagKind::table) nested_.pop_back();
  }

  void begin_in_table(const Tag& tag, const TagText& text) {
    if (levels_.size() == 1) return;
    end_cell();
    write_begin(tag, text);
    if (tag.kind == TagKind::cell) levels_.emplace_back().cell = &tag;
  }

  void end_in_table(const Tag& tag) {
    const Tag* const cell = levels_.back().cell;
    if (tag.kind == TagKind::cell) {
      if (cell == &tag) end_cell();
    } else if (levels_.size() > 1 && (cell == nullptr || cell->name != "caption")) {
      if (cell != nullptr) end_cell();
      write_end(tag);
    }
  }

  /// Formats that began between cells go on behind the table.
  void end_table() {
    end_cell();
    const Level inner = levels_.back();
    levels_.pop_back();
    for (std::size_t i = 0; i < tag_count; ++i) {
      levels_.back().open[i] = static_cast<std::uint8_t>(levels_.back().open[i] + inner.open[i]);
    }
    write_end(*nested_.back());
    nested_.pop_back();
  }

  void read_raw(const Tag& tag) {
    const std::size_t end = find_end_tag(html_, tag.name, at_);
    if (tag.name == "style") {
      filtered_.style_sheet.append(html_.substr(at_, end - at_)).push_back('\n');
    }
    at_ = std::min(html_.find('>', end), html_.size() - 1) + 1;
  }

  void read_preformatted(const Tag& tag, const TagText& text) {
    const bool is_all = tag.name == "plaintext";
    const std::size_t end = is_all ? html_.size() : find_end_tag(html_, tag.name, at_);
    write_begin(tag, text);
    append_text(html_.substr(at_, end - at_));
    write_end(tag);
    at_ = end == html_.size() ? end : std::min(html_.find('>', end), html_.size() - 1) + 1;
  }

  void write_begin(const Tag& tag, const TagText& text) {
    filtered_.html.append("<").append(tag.written);
    std::string_view attributes = text.attributes;
    std::array<bool, kept_attributes.size()> has = {};
    for (Attribute attribute; take_attribute(attributes, attribute);) {
      for (std::size_t i = 0; i < kept_attributes.size(); ++i) {
        if (!equals(attribute.name, kept_attributes[i]) || std::exchange(has[i], true)) continue;
        filtered_.html.append(" ").append(kept_attributes[i]).append("=\"");
        append_clean(attribute.value, '"', "&quot;");
        filtered_.html.append("\"");
      }
    }
    filtered_.html.append(">");
  }

  void write_end(const Tag& tag) { filtered_.html.append("</").append(tag.written).append(">"); }

  void append_text(std::string_view text) {
    if (!is_muted_ && hidden_ == nullptr) append_clean(text, '<', "&lt;");
  }

  /// Appends text without the control characters that HTML forbids, and with `replacement` for
  /// `replaced`.
  void append_clean(std::string_view text, char replaced, std::string_view replacement) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const std::size_t control = length_of_control(text, i);
      const std::size_t unassigned = length_of_noncharacter(text, i);
      if (text[i] != replaced && control == 0 && unassigned == 0) continue;
      filtered_.html.append(text.substr(kept, i - kept));
      if (text[i] == replaced) filtered_.html.append(replacement);
      // The parser replaces them, but not where they are spelt by number.
      if (unassigned > 0) append_number(text.substr(i, unassigned));
      kept = i + std::max(control + unassigned, std::size_t{1});
      i = kept - 1;
    }
    filtered_.html.append(text.substr(kept));
  }

  void append_number(std::string_view sequence) {
    unsigned number = 0;
    for (const char byte : sequence) number = number << 6U | (static_cast<unsigned>(byte) & 0x3FU);
    // The first byte of three keeps four bits, that of four three.
    number &= sequence.size() == 3 ? 0xFFFFU : 0x1FFFFFU;
    filtered_.html.append("&#").append(std::to_string(number)).append(";");
  }

  std::string_view html_;
  std::size_t at_ = 0;
  FilteredHtml filtered_;
  bool is_muted_ = false;  // outside the fragment
  bool found_fragment_ = false;
  bool has_body_ = false;
  const Tag* hidden_ = nullptr;  // the element whose content is not shown
  std::size_t hidden_depth_ = 0;

  // At least what the parser has open when it has read what was written so far.
  std::vector<const Tag*> nested_;
  std::vector<Level> levels_;
  std::size_t format_count_ = 0;
  std::size_t reopened_left_;
  std::array<std::size_t, tag_count> dropped_ = {};  // begin tags whose end tags are to come
};

}  // namespace

FilteredHtml filter_html(std::string_view html) {
  Filter filter(html);
  if (filter.run(html.find(begin_of_fragment) != html.npos)) return filter.take();
  Filter all(html);
  all.run(false);
  return all.take();
}

}  // namespace qel::html
