#include "qel/box/Search.h"

#include <algorithm>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qel/base/Graphemes.h"
#include "qel/base/Search.h"
#include "qel/base/Words.h"

namespace qel::box {

using richtext::CharFormat;
using richtext::Document;
using richtext::Extent;
using richtext::RunList;

namespace {

constexpr std::size_t block = 1U << 15U;

bool cuts_cluster(std::u16string_view text, std::size_t at) {
  return at > 0 && at < text.size() && cluster_after(text, at - 1) != at;
}

WantedFormat::Level level_of(const CharFormat& format) {
  using enum WantedFormat::Level;
  return format.offset > 0 ? raised : format.offset < 0 ? lowered : base_line;
}

}  // namespace

bool WantedFormat::takes(const CharFormat& format) const {
  const auto fits = [](const auto& field, const auto& value) { return !field || *field == value; };
  return fits(bold, format.bold) && fits(italic, format.italic) &&
         fits(underline, format.underline) && fits(strike_through, format.strike_through) &&
         fits(small_caps, format.small_caps) && fits(level, level_of(format)) &&
         fits(color, format.color) &&
         (!font_name || equal_ignoring_case(*font_name, format.font_name));
}

/// Which parts of a document are in the wanted format. Each format is looked at once.
class Search::Formats {
 public:
  Formats(const WantedFormat& wanted, const Document& document)
      : wanted_(wanted), document_(document) {}

  bool takes(RunList::Value id) {
    if (id >= known_.size()) known_.resize(id + 1);
    if (!known_[id]) known_[id] = wanted_.takes(document_.format(id));
    return *known_[id];
  }

  bool takes(Extent extent) {
    const RunList& runs = document_.runs();
    for (std::size_t index = runs.find(extent.start); index < runs.run_count(); ++index) {
      const RunList::Run run = runs.run(index);
      if (run.start >= extent.end) break;
      if (!takes(run.value)) return false;
    }
    return true;
  }

  /// The next stretch in that format which ends behind the position; empty at the end.
  Extent next(std::size_t from) {
    const RunList& runs = document_.runs();
    std::size_t first = runs.find(from);
    while (first < runs.run_count() && !takes(runs.run(first).value)) ++first;
    if (first == runs.run_count()) return {};
    std::size_t last = first;
    while (first > 0 && takes(runs.run(first - 1).value)) --first;
    while (last + 1 < runs.run_count() && takes(runs.run(last + 1).value)) ++last;
    return {runs.run(first).start, runs.run(last).end};
  }

 private:
  const WantedFormat& wanted_;
  const Document& document_;
  std::vector<std::optional<bool>> known_;
};

Search::Search(Wanted wanted)
    : wanted_(std::move(wanted)),
      text_(wanted_.matches_case ? wanted_.text : fold_case(wanted_.text)),
      has_format_(wanted_.format != WantedFormat()) {}

void Search::visit(const Document& document, std::size_t from, const Visitor& visitor) const {
  if (document.size() == 0 || wanted_.is_empty()) return;
  if (text_.empty()) {
    visit_formats(document, from, visitor);
  } else {
    visit_texts(document, from, visitor);
  }
}

bool Search::is_whole(std::u16string_view text, Extent extent) const {
  if (cuts_cluster(text, extent.start) || cuts_cluster(text, extent.end)) return false;
  return !wanted_.whole_words || (!cuts_word(text, extent.start) && !cuts_word(text, extent.end));
}

void Search::visit_texts(const Document& document, std::size_t from, const Visitor& visitor) const {
  const std::u16string_view text = document.text();
  Formats formats(wanted_.format, document);
  const std::size_t reach = text_.size() - 1;
  std::size_t begin = whole_position(text, from);
  // Folds the case of one block after the other, so that what is near is found at once.
  while (begin < text.size()) {
    const std::size_t end = whole_position(text, std::min(begin + block, text.size()));
    const std::u16string_view part = text.substr(begin, end - begin + reach);
    const std::u16string folded = wanted_.matches_case ? std::u16string() : fold_case(part);
    const std::u16string_view searched = wanted_.matches_case ? part : folded;
    std::size_t at = 0;
    while (at < end - begin && (at = find_text(searched, text_, at)) < end - begin) {
      const Extent hit = {begin + at, begin + at + text_.size()};
      ++at;
      if (!is_whole(text, hit)) continue;
      if (has_format_ && !formats.takes(hit)) continue;
      if (!visitor(hit)) return;
      at = hit.end - begin;
    }
    begin = at == std::u16string_view::npos ? end : std::max(end, whole_position(text, begin + at));
  }
}

void Search::visit_formats(const Document& document, std::size_t from,
                           const Visitor& visitor) const {
  constexpr std::u16string_view paragraph_break = u"\r\n";
  const std::u16string_view text = document.text();
  Formats formats(wanted_.format, document);
  while (from < text.size()) {
    const Extent run = formats.next(from);
    if (run.length() == 0) return;
    Extent hit = run;
    if (from > run.start) {
      const std::size_t before = text.rfind(paragraph_break, from - 1);
      if (before != std::u16string_view::npos) {
        hit.start = std::max(run.start, before + paragraph_break.size());
      }
    }
    for (; hit.start < run.end; hit.start = hit.end + paragraph_break.size()) {
      const std::size_t length = text.substr(hit.start, run.end - hit.start).find(paragraph_break);
      hit.end = hit.start + std::min(length, run.end - hit.start);
      if (hit.length() != 0 && hit.end > from && !visitor(hit)) return;
    }
    from = run.end;
  }
}

std::vector<Extent> Search::all(const Document& document, std::size_t most) const {
  std::vector<Extent> hits;
  visit(document, 0, [&](Extent hit) {
    if (hits.size() < most) hits.push_back(hit);
    return hits.size() < most;
  });
  return hits;
}

std::optional<Extent> Search::next(const Document& document, std::size_t from) const {
  std::optional<Extent> found;
  visit(document, from, [&](Extent hit) {
    if (hit.start >= from) found = hit;
    return !found;
  });
  return found;
}

std::optional<Extent> Search::previous(const Document& document, std::size_t before) const {
  std::optional<Extent> found;
  // Looks at ever more of the text.
  for (std::size_t length = block; before > 0; length *= 2) {
    const std::size_t from = before - std::min(before, length);
    visit(document, from, [&](Extent hit) {
      if (hit.start >= before) return false;
      found = hit;
      return true;
    });
    if (found || from == 0) break;
  }
  return found;
}

bool Search::is_hit(const Document& document, Extent extent) const {
  if (extent.length() == 0) return false;
  const auto found = next(document, extent.start);
  return found && found->start == extent.start && found->end == extent.end;
}

}  // namespace qel::box
