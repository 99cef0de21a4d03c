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

TEST(Html, LooksInBrowsersAsItSays) {
  if (std::system("command -v chromium >/dev/null 2>&1") != 0) {
    GTEST_SKIP() << "There is no chromium to look at pages with.";
  }
  const Tables tables;
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
  std::string expected = "\n";
  for (const Part& part : parts) expected.append(answer_for(part, tables)).append("\n");
  // No blank is lost, wherever it is; a tab is one.
  const Parts blanks = {{u"\n", {}},     {u" a", {}}, {u"  b ", {1, 0, 0}},
                        {u" c\td ", {}}, {u"\n", {}}, {u"e", {}}};
  std::string lines;
  for (const Part& part : parts) lines.append(to_utf8(part.text));
  lines.append("\\n a  b  c\\td \\ne");
  Parts all = parts;
  all.insert(all.end(), blanks.begin(), blanks.end());

  const auto folder =
      std::filesystem::temp_directory_path() / ("qel_html_test_" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  for (const bool has_classes : {false, true}) {
    HtmlOptions options;
    options.whole_document = true;
    options.classes = has_classes;
    std::string page = write_html(all, tables, options);
    const std::size_t begin = page.find('>', page.find("<body")) + 1;
    page.insert(page.find("</body>"), "</div>" + std::string(question));
    page.insert(begin, "<div id=page>");
    std::ofstream(folder / "page.html") << page;
    const std::string command =
        "chromium --headless --no-sandbox --disable-gpu --disable-dev-shm-usage --user-data-dir='" +
        (folder / "profile").string() + "' --dump-dom 'file://" + (folder / "page.html").string() +
        "' 2>/dev/null";
    std::string answer = output_of(command);
    answer.erase(0, answer.find("<pre id=\"answer\">") + 17);
    answer.erase(answer.find("</pre>"));
    // No-break spaces stand for blanks that would not be seen.
    for (std::size_t at = 0; (at = answer.find("&nbsp;")) != answer.npos;)
      answer.replace(at, 6, " ");
    EXPECT_EQ(answer.substr(0, expected.size()), expected);
    const std::size_t last = answer.rfind('\n', answer.size() - 2) + 1;
    EXPECT_EQ(answer.substr(last), "\"" + lines + "\"\n");
  }
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace qel
