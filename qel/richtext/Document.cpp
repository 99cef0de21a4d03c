#include "qel/richtext/Document.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

#include "qel/base/Scan.h"

namespace qel::richtext {
namespace {

constexpr std::u16string_view paragraph_break = u"\r\n";

RunList::Value to_value(Alignment alignment) { return static_cast<RunList::Value>(alignment); }

}  // namespace

std::size_t FormatPool::Hash::operator()(const CharFormat& format) const {
  constexpr std::size_t factor = 0x9E3779B1U;
  std::size_t hash = std::hash<std::u16string>()(format.font_name);
  const auto mix = [&](std::size_t value) { hash = (hash ^ value) * factor; };
  mix((format.bold ? 1U : 0U) | (format.italic ? 2U : 0U) | (format.underline ? 4U : 0U) |
      (format.strike_through ? 8U : 0U) | (format.small_caps ? 16U : 0U));
  mix(static_cast<std::size_t>(format.offset));
  mix(static_cast<std::size_t>(format.color));
  mix(std::hash<float>()(format.size));
  return hash;
}

FormatPool::Id FormatPool::intern(const CharFormat& format) {
  const auto [entry, is_new] = ids_.try_emplace(format, static_cast<Id>(formats_.size()));
  if (is_new) formats_.push_back(&entry->first);
  return entry->second;
}

/// Translates the format numbers of one document to those of another.
class Document::Translation {
 public:
  Translation(const Document& from, Document& to) : from_(from), to_(to) {}

  FormatPool::Id operator()(FormatPool::Id id) {
    Known& known = known_[id % known_.size()];
    if (!known.is_set || known.from != id) known = {id, to_.intern(from_.format(id)), true};
    return known.to;
  }

 private:
  struct Known {
    FormatPool::Id from = 0;
    FormatPool::Id to = 0;
    bool is_set = false;
  };

  const Document& from_;
  Document& to_;
  std::array<Known, 32> known_;  // a few formats take turns in most texts
};

Document& Document::operator=(const Document& other) {
  if (this != &other) *this = Document(other);
  return *this;
}

void Document::assign(const Document& other) {
  text_ = other.text_;
  alignments_ = other.alignments_;
  append_runs(runs_, other, {0, other.size()});
}

void Document::append_runs(RunList& runs, const Document& other, Extent extent) {
  Translation id_of(other, *this);
  for (std::size_t at = extent.start, index = other.runs_.find(at); at < extent.end; ++index) {
    const RunList::Run run = other.runs_.run(index);
    const std::size_t end = std::min(run.end, extent.end);
    runs.append(end - at, id_of(run.value));
    at = end;
  }
}

Alignment Document::alignment_at(std::size_t position) const {
  return static_cast<Alignment>(alignments_.at(position));
}

void Document::append(std::u16string_view text, FormatPool::Id format) {
  for (;;) {
    const std::size_t end = find_any<u'\0'>(text, 0);
    text_.append(text, 0, end);
    runs_.append(end, format);
    alignments_.append(end, alignments_.back());
    if (end == text.size()) return;
    text.remove_prefix(end + 1);
  }
}

void Document::append_break(FormatPool::Id format, Alignment alignment) {
  align_last(alignment);
  append(paragraph_break, format);
}

void Document::align_last(Alignment alignment) {
  if (alignments_.back() != to_value(alignment)) align({size(), size()}, alignment);
}

void Document::release_unused() {
  if (text_.capacity() / 2 > text_.size()) text_.shrink_to_fit();
}

void Document::replace(Extent extent, Document content) {
  // The last paragraph of the content runs on into what follows, and so takes the alignment there.
  const RunList::Value here = alignments_.at(extent.end);
  const std::size_t inserted = content.size();
  content.alignments_.transform(content.paragraph_start(inserted), inserted + 1,
                                [&](auto) { return here; });
  content.alignments_.replace(inserted, 1, RunList());
  alignments_.replace(extent.start, extent.length(), content.alignments_);

  RunList runs;
  append_runs(runs, content, {0, inserted});
  runs_.replace(extent.start, extent.length(), runs);
  text_.replace(extent.start, extent.length(), content.text_);

  // Parts from before, within and after the change may have become one paragraph.
  if (alignments_.run_count() == 1) return;
  for (const std::size_t position : {extent.start, extent.start + inserted}) {
    const std::size_t end = paragraph_end(position);
    align({end, end}, alignment_at(end));
  }
}

void Document::replace_each(const std::vector<Extent>& parts, std::u16string_view text) {
  // Built anew: each change in the middle would move all that follows.
  std::u16string replaced;
  RunList runs;
  RunList alignments;
  std::size_t kept = 0;
  const auto keep_to = [&](std::size_t end) {
    replaced.append(text_, kept, end - kept);
    runs.append_part(runs_, kept, end);
    alignments.append_part(alignments_, kept, end);
    kept = end;
  };
  for (const Extent& part : parts) {
    keep_to(part.start);
    replaced.append(text);
    runs.append(text.size(), runs_.at(part.start));
    alignments.append(text.size(), alignments_.at(part.start));
    kept = part.end;
  }
  keep_to(size());
  alignments.append(1, alignments_.back());
  text_ = std::move(replaced);
  runs_ = std::move(runs);
  alignments_ = std::move(alignments);
}

void Document::restore(Extent extent, Document part) {
  const Alignment first = part.alignment_at(0);
  const Alignment last = part.alignment_at(part.size());
  const std::size_t end = extent.start + part.size();
  replace(extent, std::move(part));
  // Looking for the ends of a paragraph would cost more than the text that is typed.
  if (alignments_.run_count() == 1 && alignment_at(0) == first && first == last) return;
  align({extent.start, extent.start}, first);
  align({end, end}, last);
}

void Document::change_format(Extent extent, const FormatChange& change) {
  change_formats(extent, [&change](const CharFormat&) { return change; });
}

void Document::change_formats(Extent extent,
                              const std::function<FormatChange(const CharFormat& format)>& change) {
  runs_.transform(extent.start, extent.end, [&](FormatPool::Id id) {
    CharFormat format = pool_[id];
    change(format).apply_to(format);
    return intern(format);
  });
}

void Document::align(Extent extent, Alignment alignment) {
  const auto [first, last] = paragraphs(extent);
  alignments_.transform(first, last + 1, [&](auto) { return to_value(alignment); });
}

Document Document::part(Extent extent) const {
  Document part;
  part.text_ = text_.substr(extent.start, extent.length());
  part.append_runs(part.runs_, *this, extent);
  part.alignments_.clear();
  for (std::size_t at = extent.start; at <= extent.end;) {
    const RunList::Run run = alignments_.run(alignments_.find(at));
    const std::size_t end = std::min(run.end, extent.end + 1);
    part.alignments_.append(end - at, run.value);
    at = end;
  }
  return part;
}

Extent Document::without_cut_breaks(Extent extent) const {
  const auto cuts_break = [&](std::size_t position) {
    return position > 0 && position < size() && text_[position] == u'\n' &&
           text_[position - 1] == u'\r';
  };
  const bool is_caret = extent.start == extent.end;
  if (cuts_break(extent.start)) --extent.start;
  if (is_caret) return {extent.start, extent.start};
  if (cuts_break(extent.end)) ++extent.end;
  return extent;
}

std::size_t Document::paragraph_start(std::size_t position) const {
  if (position == 0) return 0;
  const std::size_t line_feed = text_.rfind(u'\n', position - 1);
  return line_feed == std::u16string::npos ? 0 : line_feed + 1;
}

std::size_t Document::paragraph_end(std::size_t position) const {
  const std::size_t line_feed = text_.find(u'\n', position);
  return line_feed == std::u16string::npos ? text_.size() : line_feed;
}

bool operator==(const Document& left, const Document& right) {
  const auto are_equal = [](const RunList& one, const RunList& other, auto are_equal_values) {
    if (one.run_count() != other.run_count()) return false;
    for (std::size_t i = 0; i < one.run_count(); ++i) {
      const RunList::Run run = one.run(i);
      const RunList::Run with = other.run(i);
      if (run.end != with.end || !are_equal_values(run.value, with.value)) return false;
    }
    return true;
  };
  return left.text_ == right.text_ &&
         are_equal(left.runs_, right.runs_,
                   [&](auto one, auto other) { return left.format(one) == right.format(other); }) &&
         are_equal(left.alignments_, right.alignments_, std::equal_to<>());
}

bool Document::check() const {
  if (!runs_.check() || !alignments_.check()) return false;
  if (runs_.size() != text_.size() || alignments_.size() != text_.size() + 1) return false;
  for (std::size_t i = 0; i < text_.size(); ++i) {
    if (text_[i] == u'\0') return false;
    const bool has_line_feed = i + 1 < text_.size() && text_[i + 1] == u'\n';
    if (text_[i] == u'\r' && !has_line_feed) return false;
    if (text_[i] == u'\n' && (i == 0 || text_[i - 1] != u'\r')) return false;
    if (text_[i] == u'\n' && runs_.at(i) != runs_.at(i - 1)) return false;
    if (text_[i] != u'\n' && alignments_.at(i) != alignments_.at(i + 1)) return false;
  }
  return true;
}

Document plain_document(std::u16string_view text, const CharFormat& format) {
  Document document;
  // Each break may grow from one character to two.
  document.reserve(text.size() +
                   static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char16_t c) {
                     return c == u'\n' || c == u'\r';
                   })));
  const FormatPool::Id id = document.intern(format);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = find_any<u'\r', u'\n'>(text, at);
    document.append(text.substr(at, end - at), id);
    if (end == text.size()) break;
    document.append_break(id, Alignment::left);
    at = end + (text.substr(end, 2) == paragraph_break ? 2 : 1);
  }
  return document;
}

Document with_whole_breaks(Document document) {
  const std::u16string_view text = document.text();
  std::size_t at = find_any<u'\r', u'\n'>(text, 0);
  while (text.substr(at, paragraph_break.size()) == paragraph_break) {
    at = find_any<u'\r', u'\n'>(text, at + paragraph_break.size());
  }
  if (at == text.size()) return document;
  Document whole;
  whole.reserve(text.size());
  at = 0;
  for (std::size_t i = 0; i < document.runs().run_count(); ++i) {
    const RunList::Run run = document.runs().run(i);
    const FormatPool::Id format = whole.intern(document.format(run.value));
    while (at < run.end) {
      const std::size_t end = std::min(find_any<u'\r', u'\n'>(text, at), run.end);
      whole.append(text.substr(at, end - at), format);
      at = end;
      if (at == run.end) break;
      whole.append_break(format, document.alignment_at(at));
      at += text.substr(at, paragraph_break.size()) == paragraph_break ? paragraph_break.size() : 1;
    }
  }
  whole.align_last(document.alignment_at(text.size()));
  return whole;
}

}  // namespace qel::richtext
