#include "windows/NativeRtf.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "windows/FormatMapping.h"
#include "windows/Positions.h"

namespace qel::windows {

using richtext::Alignment;
using richtext::CharFormat;
using richtext::Document;
using richtext::Extent;
using richtext::RunList;

namespace {

std::string word(std::string_view name, long parameter) {
  return "\\" + std::string(name) + std::to_string(parameter);
}

std::string_view word_of(Alignment alignment) {
  return alignment == Alignment::center ? "\\qc" : alignment == Alignment::right ? "\\qr" : "\\ql";
}

void append(std::string& rtf, char16_t character) {
  constexpr char16_t first_visible = u' ';
  constexpr char16_t last_visible = u'~';
  if (character == u'\t') {
    rtf += "\\tab ";
  } else if (character < first_visible || character > last_visible) {
    rtf += word("u", static_cast<std::int16_t>(character)) + "?";
  } else {
    if (character == u'\\' || character == u'{' || character == u'}') rtf.push_back('\\');
    rtf.push_back(static_cast<char>(character));
  }
}

/// Whether a table of fonts can say the name in a way that each version of the window reads.
bool is_plain(std::wstring_view name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), [](wchar_t c) {
    return c >= L' ' && c <= L'~' && c != L';' && c != L'\\' && c != L'{' && c != L'}';
  });
}

/// The fonts and colours that a text refers to by number.
class Tables {
 public:
  /// Empty for a font that cannot be named.
  std::string font(std::wstring_view name) {
    if (!is_plain(name)) return {};
    return word("f", number_of(fonts_, std::string(name.begin(), name.end()), 0));
  }
  std::string color(const CHARFORMAT2W& format) {
    const bool is_automatic = (format.dwEffects & CFE_AUTOCOLOR) != 0;
    return word("cf", is_automatic ? 0 : number_of(colors_, format.crTextColor, 1));
  }

  std::string rtf() const {
    std::string rtf = "{\\fonttbl";
    long number = 0;
    for (const std::string& name : fonts_.entries) {
      rtf += "{" + word("f", number++) + "\\fnil\\fcharset1 " + name + ";}";
    }
    rtf += "}{\\colortbl;";
    for (const COLORREF color : colors_.entries) {
      rtf += word("red", GetRValue(color)) + word("green", GetGValue(color)) +
             word("blue", GetBValue(color)) + ";";
    }
    return rtf + "}";
  }

 private:
  template <class Value>
  struct Table {
    std::vector<Value> entries;
    std::map<Value, long> numbers;
  };

  template <class Value>
  static long number_of(Table<Value>& table, const Value& value, long first) {
    const auto next = static_cast<long>(table.entries.size()) + first;
    const auto [entry, is_new] = table.numbers.try_emplace(value, next);
    if (is_new) table.entries.push_back(value);
    return entry->second;
  }

  Table<std::string> fonts_;
  Table<COLORREF> colors_;
};

/// The words that turn one format into another; all words where there is none to begin with.
std::string words(const CHARFORMAT2W* from, const CHARFORMAT2W& to, Tables& tables) {
  constexpr double half_point = 10;
  struct Switch {
    DWORD effect;
    const char* on;
    const char* off;
  };
  constexpr Switch switches[] = {{CFE_BOLD, "\\b", "\\b0"},
                                 {CFE_ITALIC, "\\i", "\\i0"},
                                 {CFE_UNDERLINE, "\\ul", "\\ulnone"},
                                 {CFE_STRIKEOUT, "\\strike", "\\strike0"},
                                 {CFE_SMALLCAPS, "\\scaps", "\\scaps0"}};
  std::string rtf;
  for (const Switch& is : switches) {
    const bool on = (to.dwEffects & is.effect) != 0;
    if (from == nullptr || on != ((from->dwEffects & is.effect) != 0)) rtf += on ? is.on : is.off;
  }
  if (from == nullptr || from->yOffset != to.yOffset) {
    const long halves = std::lround(static_cast<double>(to.yOffset) / half_point);
    rtf += halves < 0 ? word("dn", -halves) : word("up", halves);
  }
  const std::wstring_view name = to.szFaceName;
  if (from == nullptr || name != from->szFaceName) rtf += tables.font(name);
  // A size between two half-points stays that of the text around, if it can.
  const bool is_exact = to.yHeight % static_cast<LONG>(half_point) == 0;
  if (from == nullptr ? is_exact : from->yHeight != to.yHeight) {
    rtf += word("fs", std::lround(static_cast<double>(to.yHeight) / half_point));
  }
  const std::string color = tables.color(to);
  if (from == nullptr || color != tables.color(*from)) rtf += color;
  return rtf;
}

}  // namespace

std::string native_rtf(const Document& document, Extent extent, const CharFormat& base,
                       const ShownColors& colors) {
  Tables tables;
  const CHARFORMAT2W usual = native_format(base, colors);
  Alignment alignment = document.alignment_at(extent.start);
  std::string body = words(nullptr, usual, tables) + "\\ql ";
  std::map<richtext::FormatPool::Id, std::string> words_of;
  const RunList& runs = document.runs();
  for (std::size_t i = runs.find(extent.start), at = extent.start; at < extent.end; ++i) {
    const RunList::Run run = runs.run(i);
    const auto [known, is_new] = words_of.try_emplace(run.value);
    if (is_new) {
      known->second = words(&usual, native_format(document.format(run.value), colors), tables);
    }
    std::string head = known->second;
    // Some versions end the alignment with the group, others do not.
    if (alignment != Alignment::left) head += word_of(alignment);
    body.append("{").append(head).append(head.empty() ? "" : " ");
    const std::size_t length = std::min(run.end, extent.end) - at;
    for (const char16_t c : native_text(std::u16string_view(document.text()).substr(at, length))) {
      ++at;
      if (c != u'\r') {
        append(body, c);
        continue;
      }
      ++at;
      body += "\\par";
      alignment = document.alignment_at(std::min(at, document.size()));
      body.append(word_of(alignment)).append(" ");
    }
    body += '}';
  }
  return "{\\rtf1\\ansi\\deff0" + tables.rtf() + body + "}";
}

}  // namespace qel::windows
