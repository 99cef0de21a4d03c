#include "TextTask.h"

#include <cstddef>
#include <utility>

#include "Files.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Convert.h"

namespace qel::command {

std::u16string take_last_break(std::u16string& text) {
  std::size_t kept = text.size();
  if (kept > 0 && text[kept - 1] == u'\n') --kept;
  if (kept > 0 && text[kept - 1] == u'\r') --kept;
  std::u16string taken = text.substr(kept);
  text.resize(kept);
  return taken;
}

std::u16string read_markup(const std::string& file) {
  const std::string bytes = read_file(file);
  const std::string name = file == "-" ? "standard input" : file;
  if (convert::is_rtf(bytes)) {
    throw TaskError(name + " is RTF: convert it first (qel convert --to qel)");
  }
  if (convert::is_binary(bytes)) throw TaskError(name + " is not text, but binary data");
  return convert::decode_text(bytes);
}

int run(const TextTask& task) {
  std::vector<std::u16string> texts;
  std::u16string last_break;
  for (const std::string& file : task.files) {
    const bool is_given = task.text && texts.empty();
    texts.push_back(is_given ? convert::decode_text(*task.text) : read_markup(file));
    std::u16string taken = take_last_break(texts.back());
    if (texts.size() == 1) last_break = std::move(taken);
  }
  TaskResult result = task.run(texts);
  if (result.is_markup) result.output.append(to_utf8(last_break));
  OutputFile output(task.output);
  output.write(result.output);
  output.finish();
  return result.status;
}

}  // namespace qel::command
