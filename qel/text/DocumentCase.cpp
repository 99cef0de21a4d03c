#include "qel/text/DocumentCase.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qel/text/CaseRules.h"
#include "qel/text/TextCase.h"
#include "qel/text/TitleRules.h"

namespace qel {
namespace {

/// Hidden text becomes something to look through; breaks stay.
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

void apply(std::u16string& text, CaseChange change) {
  const title_rules::Span all{0, text.size()};
  switch (change) {
    case CaseChange::lower:
      title_rules::map_all(text, all, to_lower);
      break;
    case CaseChange::upper:
      title_rules::map_all(text, all, to_upper);
      break;
    case CaseChange::swap:
      title_rules::map_all(text, all, case_rules::swap_case);
      break;
    case CaseChange::title:
      title_rules::title_case(text, all, TextCase().ignored_words());
      break;
    case CaseChange::first_to_lower:
      title_rules::map_first(text, all, to_lower);
      break;
    case CaseChange::first_to_upper:
      title_rules::map_first(text, all, to_upper);
      break;
  }
}

}  // namespace

void change_case(richtext::Document& document, CaseChange change, Color hidden) {
  const bool all_letters =
      change == CaseChange::lower || change == CaseChange::upper || change == CaseChange::swap;
  std::u16string before = document.text();
  if (!all_letters) mask_hidden(before, document, hidden);
  case_rules::mask_codes(before);
  std::u16string after = before;
  apply(after, change);
  document.put_characters(case_rules::with_changes(document.text(), before, after));
}

}  // namespace qel
