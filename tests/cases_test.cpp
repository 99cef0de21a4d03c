#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "Tables.h"
#include "qel/convert/Convert.h"

/// Runs the examples of tests/cases. Each is a fenced block: the line that opens it says what is
/// converted to what ("qel to text --field"), then comes the input, a line "----", and the output.
/// What a page cannot show stands as a symbol: ␠ a blank, ␉ a tab, ␤ a line end at the very end.
namespace qel::command {
namespace {

struct Example {
  std::string file;
  std::size_t line = 0;
  std::string conversion;
  std::string input;
  std::string output;
};

void PrintTo(const Example& example, std::ostream* out) {
  *out << example.file << ":" << example.line;
}

std::string plain(std::string text) {
  const std::pair<std::string_view, std::string_view> symbols[] = {
      {"␠", " "}, {"␉", "\t"}, {"␤", "\n"}};
  for (const auto& [symbol, meant] : symbols) {
    for (std::size_t hit = 0; (hit = text.find(symbol, hit)) != std::string::npos;) {
      text.replace(hit, symbol.size(), meant);
    }
  }
  return text;
}

std::vector<Example> examples_of(const std::filesystem::path& file) {
  std::ifstream stream(file);
  std::vector<Example> examples;
  std::string* part = nullptr;
  std::size_t number = 0;
  for (std::string line; std::getline(stream, line);) {
    ++number;
    if (part == nullptr) {
      const bool opens = line.starts_with("```") && line.find(" to ") != std::string::npos;
      if (!opens) continue;
      examples.push_back({file.filename().string(), number, line.substr(3), "", ""});
      part = &examples.back().input;
    } else if (line == "```") {
      part = nullptr;
    } else if (line == "----") {
      part = &examples.back().output;
    } else {
      part->append(part->empty() ? "" : "\n").append(line);
    }
  }
  for (Example& example : examples) {
    example.input = plain(example.input);
    example.output = plain(example.output);
  }
  return examples;
}

std::string content_of(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// The examples of the pages, and each RTF document of another program with its markup beside it.
std::vector<Example> all_examples() {
  std::vector<Example> examples;
  for (const auto& entry : std::filesystem::directory_iterator(QEL_TEST_DIR "/cases")) {
    std::filesystem::path path = entry.path();
    if (path.extension() == ".md") {
      auto more = examples_of(path);
      std::move(more.begin(), more.end(), std::back_inserter(examples));
    } else if (path.extension() == ".rtf") {
      const std::string name = path.filename().string();
      const std::string rtf = content_of(path);
      examples.push_back({name, 1, "rtf to qel", rtf, content_of(path.replace_extension(".qel"))});
    }
  }
  return examples;
}

convert::Options options_of(const std::string& conversion) {
  std::istringstream words(conversion);
  std::string from, to, between, word, value;
  words >> from >> between >> to;
  convert::Options options;
  Tables tables;
  options.from = convert::input_format_named(from);
  options.to = convert::output_format_named(to).value();
  while (words >> word) {
    if (word == "--field") {
      options.switches = convert::Switches::of_a_field();
    } else if (word == "--stated") {
      options.way = Way::stated;
    } else if (word == "--notes") {
      options.extras.notes = true;
    } else if (word == "--headers") {
      options.extras.headers = true;
    } else if (word == "--links") {
      options.extras.links = true;
    } else if (word == "--alternative-texts") {
      options.extras.alternative_texts = true;
    } else if (word == "--font" && words >> value) {
      tables.set_font(value);
    } else {
      ADD_FAILURE() << "unknown option " << word;
    }
  }
  tables.use_in(options);
  return options;
}

class Examples : public testing::TestWithParam<Example> {};

TEST_P(Examples, Hold) {
  const Example& example = GetParam();
  EXPECT_EQ(convert::convert(example.input, options_of(example.conversion)), example.output)
      << example.file << ":" << example.line << ": " << example.conversion;
}

INSTANTIATE_TEST_SUITE_P(Manual, Examples, testing::ValuesIn(all_examples()), [](const auto& test) {
  std::string name = test.param.file.substr(0, test.param.file.find('.'));
  for (char& c : name) c = std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
  return name + "_line_" + std::to_string(test.param.line);
});

}  // namespace
}  // namespace qel::command
