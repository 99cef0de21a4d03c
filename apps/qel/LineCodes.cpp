#include "LineCodes.h"

#include "qel/model/Parser.h"
#include "qel/model/QELCode.h"

namespace qel::command {

LineCodes::LineCodes(std::u16string_view markup) {
  const std::u16string text = protect_escaped_codes(std::u16string(markup));
  MarkupScanner scanner(text);
  std::size_t characters = 0;
  const auto add = [&] {
    if (scanner.line_codes_before() > 0)
      codes_.push_back({characters, scanner.line_codes_before()});
  };
  while (scanner.next()) {
    add();
    characters += scanner.run().size();
  }
  add();
}

std::u16string LineCodes::put_into(std::u16string_view markup, const Move& move) const {
  std::vector<Codes> moved;
  for (const Codes& codes : codes_) {
    if (const auto characters = move(codes.characters)) moved.push_back({*characters, codes.count});
  }
  std::u16string out;
  auto next = moved.cbegin();
  const auto put_next = [&] {
    for (std::int32_t i = 0; i < next->count; ++i) out.append(u"/nl");
    ++next;
  };
  const std::u16string text = protect_escaped_codes(std::u16string(markup));
  std::size_t characters = 0;
  std::size_t copied = 0;
  for (MarkupScanner scanner(text); scanner.next(); characters += scanner.run().size()) {
    const auto begin = static_cast<std::size_t>(scanner.run().data() - text.data());
    while (next != moved.cend() && next->characters < characters + scanner.run().size()) {
      const std::size_t at = begin + next->characters - characters;
      out.append(markup.substr(copied, at - copied));
      copied = at;
      put_next();
    }
  }
  out.append(markup.substr(copied));
  while (next != moved.cend()) put_next();
  return out;
}

}  // namespace qel::command
