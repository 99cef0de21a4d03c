// Whether a browser shows what the HTML says that the writer makes.

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "support/HtmlParts.h"

namespace qel {
namespace {

using convert::HtmlOptions;
using test::Part;
using test::Parts;
using test::Tables;
using test::write_html;

/// Asks the browser for the text of each node and how it is shown, and for the text of the lines.
constexpr std::string_view question = R"js(<pre id=answer></pre><script>
const page = document.getElementById('page');
const nodes = document.createTreeWalker(page, NodeFilter.SHOW_TEXT);
const lines = [];
for (let node; node = nodes.nextNode();) {
  const own = getComputedStyle(node.parentElement);
  const up = [];
  for (let e = node.parentElement; e !== page; e = e.parentElement) up.push(getComputedStyle(e));
  const line = name => up.some(s => s.textDecorationLine.includes(name)) ? name[0] : '';
  const level = (up.find(s => s.verticalAlign !== 'baseline') || {}).verticalAlign || '';
  lines.push([own.fontWeight > 500 ? 'b' : '', own.fontStyle === 'italic' ? 'i' : '',
    line('underline'), own.fontVariantCaps === 'small-caps' ? 'c' : '', line('line-through'), level,
    own.color, own.fontFamily, JSON.stringify(node.data)].join('|'));
}
lines.push(JSON.stringify(page.innerText));
document.getElementById('answer').textContent = '\n' + lines.join('\n') + '\n';
</script>)js";

struct Closer {
  void operator()(std::FILE* pipe) const { pclose(pipe); }
};

std::string output_of(const std::string& command) {
  const std::unique_ptr<std::FILE, Closer> pipe(popen(command.c_str(), "r"));
  std::string output;
  std::array<char, 4096> buffer = {};
  for (std::size_t count = 1; pipe && count > 0;) {
    count = std::fread(buffer.data(), 1, buffer.size(), pipe.get());
    output.append(buffer.data(), count);
  }
  return output;
}

std::string css_of(Color color) {
  return "rgb(" + std::to_string(red_of(color)) + ", " + std::to_string(green_of(color)) + ", " +
         std::to_string(blue_of(color)) + ")";
}

/// What the browser should answer for a run.
std::string answer_for(const Part& part, const Tables& tables) {
  const auto has = [&](style_codes::AttributeBit bit) {
    return (part.state.attributes & bit) != 0;
  };
  const std::u16string font = tables.fonts.get_Font(part.state.font);
  const bool is_quoted = font.find(u' ') != font.npos;
  const std::string quote = is_quoted ? "\"" : "";
  return std::string(has(style_codes::bold_bit) ? "b|" : "|") +
         (has(style_codes::italic_bit) ? "i|" : "|") +
         (has(style_codes::underline_bit) ? "u|" : "|") +
         (has(style_codes::small_caps_bit) ? "c|" : "|") +
         (has(style_codes::strike_through_bit) ? "l|" : "|") +
         (has(style_codes::superscript_bit) ? "super|"
                                            : (has(style_codes::subscript_bit) ? "sub|" : "|")) +
         css_of(tables.colors.get_Color(part.state.color)) + "|" + quote + to_utf8(font) + quote +
         "|\"" + to_utf8(part.text) + "\"";
}

/// What the browser answers on the page; empty when there is no answer.
std::string ask_browser(std::string page) {
  page.insert(page.find("</body>"), "</div>" + std::string(question));
  page.insert(page.find('>', page.find("<body")) + 1, "<div id=page>");
  const auto folder =
      std::filesystem::temp_directory_path() / ("qel_html_test_" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "page.html") << page;
  const std::string dom = output_of(
      "chromium --headless --no-sandbox --disable-gpu --disable-dev-shm-usage --user-data-dir='" +
      (folder / "profile").string() + "' --dump-dom 'file://" + (folder / "page.html").string() +
      "' 2>/dev/null");
  std::filesystem::remove_all(folder);
  constexpr std::string_view mark = "<pre id=\"answer\">";
  const std::size_t begin = dom.find(mark);
  if (begin == dom.npos) return {};
  const std::string answer = dom.substr(begin + mark.size());
  return answer.substr(0, answer.find("</pre>"));
}

/// All formats, then blanks at all places where they could be lost.
Parts all_formats() {
  Parts parts;
  for (unsigned bit = 0; bit < 7; ++bit) {
    parts.push_back({u"attribute", {static_cast<std::uint8_t>(1U << bit), 0, 0}});
    parts.push_back({u"plain", {}});
  }
  for (std::int16_t i = 1; i < 10; ++i) {
    parts.push_back({u"color", {0, 0, i}});
    if (i < 4) parts.push_back({u"font", {style_codes::underline_bit, i, i}});
  }
  parts.push_back({u"all", {0x5F, 3, 9}});
  parts.push_back({u"rest", {style_codes::italic_bit | style_codes::strike_through_bit, 3, 5}});
  return parts;
}
const Parts blanks = {{u"\n", {}},     {u" a", {}}, {u"  b ", {1, 0, 0}},
                      {u" c\td ", {}}, {u"\n", {}}, {u"e", {}}};

TEST(Html, LooksInBrowsersAsItSays) {
  if (std::system("command -v chromium >/dev/null 2>&1") != 0) {
    GTEST_SKIP() << "There is no chromium to look at pages with.";
  }
  const Tables tables;
  Parts parts = all_formats();
  std::string expected = "\n";
  std::string text;
  for (const Part& part : parts) {
    expected.append(answer_for(part, tables)).append("\n");
    text.append(to_utf8(part.text));
  }
  text.append("\\n a  b  c\\td \\ne");
  parts.insert(parts.end(), blanks.begin(), blanks.end());
  for (const bool has_classes : {false, true}) {
    HtmlOptions options;
    options.whole_document = true;
    options.classes = has_classes;
    std::string answer = ask_browser(write_html(parts, tables, options));
    EXPECT_EQ(answer.substr(0, expected.size()), expected);
    // No-break spaces stand for blanks that would not be seen.
    for (std::size_t at = 0; (at = answer.find("&nbsp;")) != answer.npos;) {
      answer.replace(at, 6, " ");
    }
    EXPECT_TRUE(answer.ends_with("\n\"" + text + "\"\n")) << answer;
  }
}

}  // namespace
}  // namespace qel
