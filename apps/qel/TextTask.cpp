#include "TextTask.h"

#include <string_view>

#include "Files.h"
#include "TextInput.h"

namespace qel::command {
namespace {

/// Files end in a line break that is no part of the markup.
std::u16string without_last_break(std::u16string text) {
  for (const char16_t unit : std::u16string_view(u"\n\r")) {
    if (!text.empty() && text.back() == unit) text.pop_back();
  }
  return text;
}

}  // namespace

int run(const TextTask& task) {
  std::vector<std::u16string> texts;
  for (const std::string& file : task.files) {
    const bool is_given = task.text && texts.empty();
    texts.push_back(
        without_last_break(decode_text(is_given ? std::string(*task.text) : read_file(file))));
  }
  const TaskResult result = task.run(texts);
  OutputFile output(task.output);
  output.write(result.output);
  output.finish();
  return result.status;
}

}  // namespace qel::command
