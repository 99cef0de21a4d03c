#include "qel/text/PageBreaks.h"

namespace qel {
namespace {

using Lines = std::span<const PageLine>;

bool begins_paragraph(Lines lines, std::size_t at) {
  return at >= lines.size() || lines[at].begins_paragraph;
}

bool may_break_before(Lines lines, std::size_t at) {
  if (at == lines.size() || lines[at].begins_page) return true;
  if (lines[at - 1].keeps_with_next) return false;
  if (begins_paragraph(lines, at)) return true;
  return !begins_paragraph(lines, at - 1) && !begins_paragraph(lines, at + 1);
}

/// Behind the last line that fits on the page.
std::size_t end_of_page(Lines lines, std::size_t start, float height) {
  float used = lines[start].height;
  std::size_t end = start + 1;
  while (end < lines.size() && !lines[end].begins_page) {
    used += lines[end].space_before + lines[end].height;
    if (used > height) break;
    ++end;
  }
  return end;
}

}  // namespace

std::vector<std::size_t> page_starts(Lines lines, float height) {
  std::vector<std::size_t> starts;
  for (std::size_t start = 0; start < lines.size();) {
    starts.push_back(start);
    const std::size_t full = end_of_page(lines, start, height);
    std::size_t end = full;
    while (end > start && !may_break_before(lines, end)) --end;
    start = end > start ? end : full;
  }
  return starts;
}

}  // namespace qel
