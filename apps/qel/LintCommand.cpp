#include "LintCommand.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "Files.h"
#include "InputPaths.h"
#include "Program.h"
#include "TextTask.h"
#include "qel/base/Json.h"
#include "qel/base/Records.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Lint.h"
#include "qel/richtext/CodePage.h"

namespace qel::command {
namespace {

using convert::Finding;

constexpr const char* lint_examples = R"(Examples:
  qel lint letter.qel
  qel lint --tables tables.txt *.qel
  qel lint --json letter.qel | jq .message

Exit status: 0 when nothing was found, 1 when something was or a file could not be read, 2 for
arguments that do not fit.)";

struct Wording {
  std::u16string_view name;
  std::u16string_view message;  // behind the code
};

/// In the order of the kinds.
constexpr std::array<Wording, 8> wordings = {{
    {u"no-effect", u"has no effect"},
    {u"overlap", u"ends a format before one that began later"},
    {u"escaped-code", u"is text, not a code"},
    {u"code-of-rtf", u"is a code on the way to RTF and in text boxes only"},
    {u"unknown-code", u"is not a code"},
    {u"not-closed", u"is not switched off at the end"},
    {u"missing-font", u"is a font without a name"},
    {u"missing-color", u"is the same colour as colour 0"},
}};

const Wording& wording_of(const Finding& finding) {
  return wordings[static_cast<std::size_t>(finding.kind)];
}

std::u16string message_of(const Finding& finding, std::u16string_view code) {
  return std::u16string(u"'").append(code).append(u"' ").append(wording_of(finding).message);
}

std::string line_of(const std::string& file, const Finding& finding, std::u16string_view code) {
  return file + ":" + std::to_string(finding.line) + ":" + std::to_string(finding.column) + ": " +
         to_utf8(message_of(finding, code)) + "\n";
}

std::string json_of(const std::string& file, const Finding& finding, std::u16string_view code) {
  std::u16string object;
  const auto add_name = [&](std::u16string_view name) {
    object.append(object.empty() ? u"{\"" : u",\"").append(name).append(u"\":");
  };
  const auto add_text = [&](std::u16string_view name, std::u16string_view text) {
    add_name(name);
    object.push_back(u'"');
    append_json(object, text);
    object.push_back(u'"');
  };
  const auto add_number = [&](std::u16string_view name, std::size_t number) {
    add_name(name);
    object.append(records::from_integer(static_cast<std::int64_t>(number)));
  };
  add_text(u"file", from_utf8(file, richtext::decode_western));
  add_number(u"line", finding.line);
  add_number(u"column", finding.column);
  add_number(u"position", finding.position);
  add_number(u"length", finding.length);
  add_text(u"kind", wording_of(finding).name);
  add_text(u"code", code);
  add_text(u"message", message_of(finding, code));
  return to_utf8(object.append(u"}\n"));
}

std::vector<Finding> findings_in(std::u16string_view markup, const LintTask& task) {
  std::vector<Finding> findings;
  convert::lint(markup, {&task.tables->fonts, task.tables->colors.get(), task.way},
                [&](const Finding& finding) { findings.push_back(finding); });
  std::stable_sort(findings.begin(), findings.end(), [](const Finding& one, const Finding& other) {
    return one.position < other.position;
  });
  return findings;
}

/// Nothing where the file cannot be read, which is reported.
std::optional<std::u16string> try_to_read(const std::string& file) {
  try {
    std::u16string markup = read_markup(file);
    take_last_break(markup);
    return markup;
  } catch (const std::runtime_error& error) {
    complain("qel", error.what());
    return std::nullopt;
  }
}

/// One line for each finding.
std::string findings_of(const std::string& file, std::u16string_view markup, const LintTask& task) {
  const auto tell = task.as_json ? json_of : line_of;
  std::string lines;
  for (const Finding& finding : findings_in(markup, task)) {
    lines.append(tell(file, finding, markup.substr(finding.position, finding.length)));
  }
  return lines;
}

}  // namespace

int run(const LintTask& task) {
  int status = success;
  OutputFile output("-");
  for (const std::string& file : task.files) {
    const auto markup = try_to_read(file);
    const std::string lines = markup ? findings_of(file, *markup, task) : std::string();
    if (!markup || !lines.empty()) status = failed;
    output.write(lines);
  }
  output.finish();
  return status;
}

LintCommand::LintCommand(CLI::App& app) : app_(app), tables_(app) {
  app.add_option("FILE", files_, "Markup to check; standard input when none is named, or for '-'")
      ->type_name("");
  app.add_flag("--json", as_json_, "Print each finding as a JSON object on a line of its own");
  app.footer(lint_examples);
}

LintTask LintCommand::values(Way way) const {
  LintTask task;
  task.files = files_.empty() ? std::vector<std::string>{"-"} : files_matching(files_);
  task.tables = std::make_shared<const Tables>(tables_.values());
  task.way = way;
  task.as_json = as_json_;
  return task;
}

}  // namespace qel::command
