#include "qel/text/DocumentCase.h"

#include <cstddef>
#include <string>

#include "qel/text/CaseRules.h"
#include "qel/text/TitleRules.h"

namespace qel {
namespace {

/// Replaces hidden text by characters to look through; breaks stay.
void mask_hidden(std::u16string& text, const richtext::Document& document, Color hidden) {
  for (std::size_t i = 0; i < document.runs().run_count(); ++i) {
    const richtext::RunList::Run run = document.runs().run(i);
    if (document.format(run.value).color != hidden) continue;
    for (std::size_t at = run.start; at < run.end; ++at) {
      const bool is_break = text[at] == u'\r' || text[at] == u'\n';
      if (!is_break) text[at] = title_rules::looked_through;
    }
  }
}

}  // namespace

void change_case(richtext::Document& document, CaseChange change, Color hidden) {
  std::u16string before = document.text();
  if (!case_rules::changes_hidden_text(change)) mask_hidden(before, document, hidden);
  case_rules::mask_codes(before);
  std::u16string after = before;
  case_rules::apply(after, {0, after.size()}, change, TextCase().ignored_words());
  document.put_characters(case_rules::with_changes(document.text(), before, after));
}

}  // namespace qel
