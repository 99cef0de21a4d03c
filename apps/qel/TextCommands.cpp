#include "TextCommands.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>

#include "Numbers.h"
#include "UsageError.h"
#include "qel/base/Scan.h"
#include "qel/base/Utf16.h"
#include "qel/base/Utf8.h"
#include "qel/headless/SvgCanvas.h"
#include "qel/richtext/CodePage.h"
#include "qel/text/MarkupStrings.h"
#include "qel/text/QELText.h"
#include "qel/text/VisibleCharacters.h"

namespace qel::command {
namespace {

constexpr const char* text_examples = R"(Positions count visible characters, the first is 1.
Examples:
  qel text len -t '/b1bold/b0 text'
  qel text left 4 letter.qel
  qel text find --ignore-case needle letter.qel
  qel text stuff 1 0 'Dear ' letter.qel --style b,f2
  qel text toggle bold letter.qel --start 3 --length 5
  qel text case title letter.qel -o letter.qel
  qel text wrap --width 300 --indent 20 letter.qel)";

using Texts = std::vector<std::u16string>;

std::u16string decoded(const std::string& argument) {
  return from_utf8(argument, richtext::decode_western);
}

TaskResult markup_result(std::u16string_view markup) { return {to_utf8(markup), 0, true}; }
/// Lossless with its lines.
std::u16string shown_text(std::u16string_view markup, Way way) {
  StyleDecoder decoder;
  decoder.put_Lossless(way == Way::lossless);
  decoder.put_QELText(markup);
  const std::int32_t lines = way == Way::lossless ? ofLineCodes : 0;
  return replace_all(decoder.GetQELText(ofPlainText | lines, false, false), u"\r\n", u"\n");
}

TaskResult number(std::size_t value) { return {std::to_string(value) + "\n"}; }

constexpr std::int64_t most_position = 1'000'000'000'000;

std::size_t as_size(std::int64_t count) {
  return static_cast<std::size_t>(std::max<std::int64_t>(count, 0));
}

/// A count of -1 means all the rest.
std::size_t as_count(std::int64_t count) { return count == -1 ? markup::npos : as_size(count); }

TaskResult lines(const Texts& texts) {
  TaskResult result;
  for (const std::u16string& text : texts) result.output.append(to_utf8(text)).append("\n");
  return result;
}

struct Named {
  std::string_view name;
  std::int32_t value;
};

constexpr std::array attributes_by_name = {Named{"plain", taPlain},
                                           Named{"bold", taBold},
                                           Named{"italic", taItalic},
                                           Named{"underline", taUnderline},
                                           Named{"strike", taStrikeThru},
                                           Named{"superscript", taSuperscript},
                                           Named{"subscript", taSubscript},
                                           Named{"small-caps", taSmallCaps},
                                           Named{"upper", taUpperCase},
                                           Named{"lower", taLowerCase},
                                           Named{"swap", taChangeCase},
                                           Named{"title", taTitleCase},
                                           Named{"first-upper", taFirstToUpper},
                                           Named{"first-lower", taFirstToLower}};

/// The digit after `word` in a name such as "font3", as an offset from 1.
std::optional<std::int32_t> index_after(std::string_view name, std::string_view word) {
  const bool fits = name.size() == word.size() + 1 && name.starts_with(word) &&
                    name.back() >= '1' && name.back() <= '9';
  return fits ? std::optional<std::int32_t>(name.back() - '1') : std::nullopt;
}

std::optional<std::int32_t> attribute_named(std::string_view name) {
  if (const auto index = index_after(name, "font")) return taFont1 + *index;
  if (const auto index = index_after(name, "color")) return taColor1 + *index;
  const auto found = std::find_if(attributes_by_name.begin(), attributes_by_name.end(),
                                  [&](const Named& named) { return named.name == name; });
  return found == attributes_by_name.end() ? std::nullopt : std::optional(found->value);
}

/// The attribute whose code has this letter, or letter and digit: "b", "f2".
std::optional<std::int32_t> attribute_of_code(std::string_view code) {
  constexpr std::string_view letters = "biukps";
  constexpr std::array<std::int32_t, 6> attributes = {taBold,       taItalic,      taUnderline,
                                                      taStrikeThru, taSuperscript, taSubscript};
  if (const auto index = index_after(code, "f")) return taFont1 + *index;
  if (const auto index = index_after(code, "y")) return taColor1 + *index;
  const std::size_t letter = code.size() == 1 ? letters.find(code[0]) : std::string_view::npos;
  return letter == std::string_view::npos ? std::nullopt : std::optional(attributes[letter]);
}

/// The style of a replacement from its codes: "b,i,f2,y3".
std::optional<cReplaceData> style_named(std::string_view codes) {
  iStyle style;
  for (std::size_t begin = 0; begin <= codes.size();) {
    const std::size_t end = std::min(codes.find(',', begin), codes.size());
    const auto attribute = attribute_of_code(codes.substr(begin, end - begin));
    if (!attribute) return std::nullopt;
    set_attribute(style, *attribute, true);
    begin = end + 1;
  }
  cReplaceData data;
  data.DontChangeStyle = data.DontChangeFont = data.DontChangeColor = false;
  data.Bold = style.Bold;
  data.Italic = style.Italic;
  data.Underline = style.Underline;
  data.StrikeOut = style.StrikeThru;
  data.Superscript = style.Superscript;
  data.Subscript = style.Subscript;
  data.FontID = style.FontID;
  data.ColorID = style.ColorID;
  return data;
}

void add_position(CLI::App& verb, const std::string& name, std::int64_t& value,
                  const std::string& meaning) {
  verb.add_option(name, value, meaning)
      ->required()
      ->type_name("")
      ->transform(whole_number(-most_position, most_position));
}

std::optional<CaseChange> case_named(std::string_view name) {
  struct Row {
    std::string_view name;
    CaseChange change;
  };
  static constexpr std::array rows = {Row{"upper", CaseChange::upper},
                                      Row{"lower", CaseChange::lower},
                                      Row{"swap", CaseChange::swap},
                                      Row{"title", CaseChange::title},
                                      Row{"initial", CaseChange::initial},
                                      Row{"first-upper", CaseChange::first_to_upper},
                                      Row{"first-lower", CaseChange::first_to_lower}};
  const auto found =
      std::find_if(rows.begin(), rows.end(), [&](const Row& row) { return row.name == name; });
  return found == rows.end() ? std::nullopt : std::optional(found->change);
}

constexpr const char* case_names = "upper, lower, swap, title, initial, first-upper, first-lower";
constexpr const char* attribute_names =
    "plain, bold, italic, underline, strike, superscript, subscript, small-caps, font1 to font9, "
    "color1 to color9, upper, lower, swap, title, first-upper, first-lower";
constexpr const char* style_names = "b, i, u, k, p, s, f1 to f9, y1 to y9";

/// Accepts the names that `find` knows.
template <class Find>
CLI::Validator known_to(Find find, const std::string& names) {
  return CLI::Validator(
      [find, names](const std::string& name) {
        return find(name) ? std::string() : "'" + name + "' is not one of " + names;
      },
      {});
}

/// The parts between line codes and line breaks. An empty text has none.
std::vector<std::u16string_view> paragraphs_of(std::u16string_view text) {
  std::vector<std::u16string_view> paragraphs;
  while (!text.empty()) {
    std::size_t end = 0;
    std::size_t length = 0;
    for (; end < text.size() && length == 0; ++end) {
      const std::u16string_view rest = text.substr(end);
      if (rest.starts_with(u"/nl")) length = 3;
      if (rest.front() == u'\n' || rest.front() == u'\r')
        length = rest.starts_with(u"\r\n") ? 2 : 1;
    }
    if (length > 0) --end;
    paragraphs.push_back(text.substr(0, end));
    text.remove_prefix(end + length);
  }
  return paragraphs;
}

/// Every character takes one column.
class ColumnCanvas : public platform::Canvas {
 public:
  float text_width(std::u16string_view text, const platform::TextFont& /*font*/) const override {
    float width = 0;
    for (std::size_t at = 0; at < text.size(); ++width) next_character(text, at);
    return width;
  }
  platform::FontExtent font_extent(const platform::TextFont& /*font*/) const override {
    return {1, 0, 0};
  }
  void draw_text(const platform::CanvasText& /*text*/) override {}
  void fill_rectangle(const platform::CanvasRectangle& /*rectangle*/, Color /*color*/) override {}
};

}  // namespace

TextCommands::TextCommands(CLI::App& app) : app_(app) {
  app.require_subcommand(1);
  app.footer(std::string());
  add_counting();
  add_cutting();
  add_joining();
  add_styling();
  add_wrapping();
  app.footer(text_examples);
}

CLI::App& TextCommands::add_verb(const std::string& name, const std::string& meaning, Run run) {
  CLI::App* const verb = app_.add_subcommand(name, meaning);
  verbs_.push_back({verb, run});
  return *verb;
}

/// Must be called last: the file is the last argument.
void TextCommands::read_text(CLI::App& verb) {
  source_.add_to(verb);
  verb.add_option("-o,--output", output_, "File to write instead of standard output")
      ->type_name("FILE");
}

TextTask TextCommands::values(Way way) const {
  const auto verb = std::find_if(verbs_.begin(), verbs_.end(),
                                 [](const Verb& candidate) { return candidate.app->parsed(); });
  TextTask task;
  source_.fill(task, *verb->app);
  if (!other_file_.empty()) task.files.push_back(other_file_);
  if (!task.text && task.files == std::vector<std::string>{"-", "-"}) {
    throw UsageError("standard input can be only one of two texts");
  }
  task.output = output_;
  Arguments given = given_;
  given.tables = std::make_shared<const Tables>(tables_->values());
  given.way = way;
  task.run = [run = verb->run, given](const Texts& texts) { return run(given, texts); };
  return task;
}

void TextCommands::add_counting() {
  read_text(add_verb(
      "len", "Count the visible characters", [](const Arguments& given, const Texts& texts) {
        return number(given.way == Way::stated ? visible::length(texts[0])
                                               : markup::length(texts[0], given.way));
      }));
  read_text(add_verb("plain", "Print the text without codes",
                     [](const Arguments& given, const Texts& texts) {
                       return markup_result(shown_text(texts[0], given.way));
                     }));
  CLI::App& verb = add_verb("find", "Print where a text first occurs, 0 when it does not", find);
  verb.add_option("SEARCH", given_.search, "What to look for")->required()->type_name("");
  CLI::Option* const last = verb.add_flag("--last", given_.last, "The last occurrence");
  verb.add_option("--within", given_.length, "With --last: only within the first N characters")
      ->type_name("N")
      ->needs(last)
      ->transform(whole_number(0, most_position));
  verb.add_flag("--ignore-case", given_.ignore_case, "Letters match in any case");
  read_text(verb);
}

TaskResult TextCommands::find(const Arguments& given, const Texts& texts) {
  const std::u16string search = decoded(given.search);
  const auto matching =
      given.ignore_case ? markup::Matching::ignoring_case : markup::Matching::exact;
  const std::size_t found =
      given.last ? markup::find_last(texts[0], search, matching, as_count(given.length), given.way)
                 : markup::find(texts[0], search, matching, given.way);
  return number(found == markup::npos ? 0 : found + 1);
}

void TextCommands::add_cutting() {
  const auto add_count = [this](CLI::App& verb) {
    add_position(verb, "COUNT", given_.count, "How many characters");
    read_text(verb);
  };
  add_count(add_verb(
      "left", "Print the first characters", [](const Arguments& given, const Texts& texts) {
        return markup_result(markup::left(texts[0], as_size(given.count), given.way));
      }));
  add_count(add_verb(
      "right", "Print the last characters", [](const Arguments& given, const Texts& texts) {
        return markup_result(markup::right(texts[0], as_size(given.count), given.way));
      }));
  CLI::App& mid = add_verb(
      "mid", "Print characters from the middle", [](const Arguments& given, const Texts& texts) {
        if (given.start < 1) return markup_result({});
        return markup_result(
            markup::mid(texts[0], as_size(given.start - 1), as_count(given.length), given.way));
      });
  add_position(mid, "START", given_.start, "The first of them");
  add_position(mid, "LENGTH", given_.length, "How many; -1 for all the rest");
  read_text(mid);
  CLI::App& split =
      add_verb("split", "Print the parts between delimiters, one on each line",
               [](const Arguments& given, const Texts& texts) {
                 return lines(markup::split(texts[0], decoded(given.search), given.way));
               });
  split.add_option("DELIMITER", given_.search, "What stands between the parts")
      ->required()
      ->type_name("");
  read_text(split);
}

void TextCommands::add_joining() {
  CLI::App& verb = add_verb("stuff", "Replace characters", stuff);
  add_position(verb, "START", given_.start, "The first to replace");
  add_position(verb, "LENGTH", given_.length, "How many; 0 only inserts");
  verb.add_option("REPLACEMENT", given_.replacement, "Markup to put there")
      ->required()
      ->type_name("");
  CLI::Option* const style =
      verb.add_option("--style", given_.style, "Style of the replacement, as in b,i,f2,y3")
          ->type_name("CODES")
          ->check(known_to(style_named, style_names));
  verb.add_flag("--style-from-text", given_.style_from_text,
                "Take the style of the first run that begins at START or behind it")
      ->excludes(style);
  read_text(verb);
  CLI::App& comparing = add_verb(
      "compare", "Tell whether two texts have the same characters in the same styles", compare);
  comparing.add_option("OTHER", other_file_, "File to compare with")->required()->type_name("");
  read_text(comparing);
}

TaskResult TextCommands::stuff(const Arguments& given, const Texts& texts) {
  const std::u16string replacement = decoded(given.replacement);
  const std::size_t start = as_size(given.start - 1);
  const std::size_t end = as_size(given.start - 1 + given.length);
  const std::size_t count = std::max(end, start) - start;
  if (given.style_from_text || !given.style.empty()) {
    const cReplaceData style = given.style_from_text ? cReplaceData() : *style_named(given.style);
    return markup_result(markup::replace(texts[0], start, count, replacement, style, given.way));
  }
  return markup_result(markup::replace(texts[0], start, count, replacement, given.way));
}

TaskResult TextCommands::compare(const Arguments& given, const Texts& texts) {
  QELText comparing;
  comparing.put_Lossless(given.way == Way::lossless);
  const bool is_equal = comparing.Compare(texts[0], texts[1]);
  return {is_equal ? "equal\n" : "different\n", is_equal ? 0 : 1};
}

void TextCommands::add_span_options(CLI::App& verb) {
  verb.add_option("--start", given_.start, "The first character")
      ->type_name("N")
      ->transform(whole_number(1, most_position));
  verb.add_option("--length", given_.length, "How many; all the rest otherwise")
      ->type_name("N")
      ->transform(whole_number(1, most_position));
}

void TextCommands::add_styling() {
  CLI::App& changing = add_verb("case", "Change the case of letters", change_case);
  changing.add_option("KIND", given_.name, case_names)
      ->required()
      ->type_name("")
      ->check(known_to(case_named, case_names));
  changing
      .add_option("--ignored-words", given_.ignored_words,
                  "Words that title case leaves in lower case")
      ->type_name("A,B,...");
  add_span_options(changing);
  read_text(changing);
  CLI::App& toggling = add_verb("toggle", "Switch an attribute on or off", toggle);
  toggling.add_option("ATTRIBUTE", given_.name, attribute_names)
      ->required()
      ->type_name("")
      ->check(known_to(attribute_named, attribute_names));
  add_span_options(toggling);
  read_text(toggling);
}

TaskResult TextCommands::change_case(const Arguments& given, const Texts& texts) {
  TextCase rules;
  if (!given.ignored_words.empty()) {
    // The list itself keeps blanks, and would not find a word after one.
    std::u16string words = decoded(given.ignored_words);
    std::erase(words, u' ');
    rules.put_IgnoredWordList(words);
  }
  return markup_result(markup::change_case(texts[0], *case_named(given.name),
                                           as_size(given.start - 1), as_count(given.length),
                                           given.way, rules));
}

TaskResult TextCommands::toggle(const Arguments& given, const Texts& texts) {
  return markup_result(markup::toggle(texts[0], *attribute_named(given.name),
                                      as_size(given.start - 1), as_count(given.length), given.way));
}

void TextCommands::add_wrapping() {
  CLI::App& verb = add_verb("wrap", "Print the lines that fit a width, each on a line", wrap);
  verb.add_option("-w,--width", given_.width, "Width of the lines, in points (required)")
      ->required()
      ->type_name("N")
      ->check(decimal_number(0, 1e6));
  verb.add_option("--indent", given_.indent, "How much narrower all lines after the first are")
      ->type_name("N")
      ->check(decimal_number(0, 1e6));
  verb.add_flag("--columns", given_.columns, "Widths count characters, all of them equally wide");
  verb.add_flag("--lines", given_.count_only, "Print only how many lines there are");
  tables_ = std::make_unique<TableOptions>(verb);
  read_text(verb);
}

TaskResult TextCommands::wrap(const Arguments& given, const Texts& texts) {
  TextAndFormatting layout;
  layout.SetFontAndColors(given.tables->fonts, *given.tables->colors);
  layout.put_Lossless(given.way == Way::lossless);
  if (given.columns) {
    layout.put_Canvas(std::make_shared<ColumnCanvas>());
  } else {
    layout.put_Canvas(std::make_shared<headless::SvgCanvas>(given.width));
  }
  Texts all;
  for (const std::u16string_view paragraph : paragraphs_of(texts[0])) {
    Texts part = layout.all_lines(paragraph, given.width, given.indent);
    if (part.empty()) part.emplace_back();
    std::move(part.begin(), part.end(), std::back_inserter(all));
  }
  return given.count_only ? number(all.size()) : lines(all);
}

}  // namespace qel::command
