#include "qel/text/LineCodePositions.h"

#include <algorithm>

#include "qel/model/Parser.h"
#include "qel/model/QELCode.h"

namespace qel {

LineCodePositions::LineCodePositions(std::u16string_view markup) {
  const std::u16string text = protect_escaped_codes(std::u16string(markup));
  MarkupScanner scanner(text);
  const auto add = [&] {
    if (scanner.line_codes_before() > 0) codes_.push_back({length_, scanner.line_codes_before()});
  };
  while (scanner.next()) {
    add();
    length_ += scanner.run().size();
  }
  add();
}

LineCodePositions LineCodePositions::part(std::size_t begin, std::size_t end) const {
  LineCodePositions part;
  part.length_ = end - begin;
  const auto first = std::lower_bound(
      codes_.begin(), codes_.end(), begin,
      [](const Codes& codes, std::size_t position) { return codes.position < position; });
  for (auto codes = first; codes != codes_.end() && codes->position <= end; ++codes) {
    const bool is_at_cut =
        (codes->position == begin && begin > 0) || (codes->position == end && end < length_);
    if (!is_at_cut) part.codes_.push_back({codes->position - begin, codes->count});
  }
  return part;
}

LineCodePositions LineCodePositions::replaced(std::size_t begin, std::size_t end,
                                              std::size_t inserted) const {
  LineCodePositions all;
  all.length_ = length_ - (end - begin) + inserted;
  for (const Codes& codes : codes_) {
    if (codes.position <= begin) {
      all.codes_.push_back(codes);
    } else if (codes.position >= end) {
      all.codes_.push_back({codes.position - end + begin + inserted, codes.count});
    }
  }
  return all;
}

std::u16string LineCodePositions::put_into(std::u16string_view markup) const {
  std::u16string out;
  auto next = codes_.cbegin();
  const auto put_next = [&] {
    for (std::int32_t i = 0; i < next->count; ++i) out.append(u"/nl");
    ++next;
  };
  const std::u16string text = protect_escaped_codes(std::u16string(markup));
  std::size_t characters = 0;
  std::size_t copied = 0;
  for (MarkupScanner scanner(text); scanner.next(); characters += scanner.run().size()) {
    const auto begin = static_cast<std::size_t>(scanner.run().data() - text.data());
    while (next != codes_.cend() && next->position < characters + scanner.run().size()) {
      const std::size_t at = begin + next->position - characters;
      out.append(markup.substr(copied, at - copied));
      copied = at;
      put_next();
    }
  }
  out.append(markup.substr(copied));
  while (next != codes_.cend()) put_next();
  return out;
}

}  // namespace qel
