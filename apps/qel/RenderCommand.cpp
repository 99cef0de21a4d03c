#include "RenderCommand.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <memory>

#include "Files.h"
#include "Numbers.h"
#include "Paths.h"
#include "UsageError.h"
#include "qel/text/TextAndFormatting.h"

namespace qel::command {
namespace {

constexpr const char* render_examples = R"(Examples:
  qel render letter.qel -o letter.svg
  qel render letter.qel --width 300 --indent 20 --align center -o letter.svg
  qel render letter.qel --font 4=Georgia --color 4=#1E90FF --font-size 12 -o letter.svg)";

/// Other programs would not open an SVG document under such a name.
void refuse_other_pictures(const std::string& path) {
  constexpr std::array others = {".png", ".jpg",  ".jpeg", ".gif", ".webp", ".bmp",
                                 ".tif", ".tiff", ".pdf",  ".eps", ".ps",   ".emf"};
  std::string extension = to_text(to_path(path).extension());
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  if (std::find(others.begin(), others.end(), extension) == others.end()) return;
  throw UsageError("'" + path + "': pictures are written as SVG, so the name has to end in .svg");
}

}  // namespace

RenderCommand::RenderCommand(CLI::App& app) : app_(app), tables_(app) {
  const auto points = [&app](const std::string& name, float& value, const std::string& meaning) {
    app.add_option(name, value, meaning)->type_name("POINTS")->check(decimal_number(0, 1e5));
  };
  source_.add_to(app);
  app.add_option("-o,--output", output_, "File to write, '-' for standard output (required)")
      ->required()
      ->type_name("FILE");
  points("-w,--width", picture_.width, "Width of the lines (450)");
  points("--margin", picture_.margin, "Room around the text (10)");
  points("--indent", picture_.indent, "How much further right all lines but the first begin");
  app.add_option("--align", align_, "left, right or center")
      ->type_name("SIDE")
      ->check(CLI::IsMember({"left", "right", "center"}).description({}));
  app.add_option("--label", picture_.label, "Label (1 to 9) whose colour lies behind the text")
      ->type_name("N")
      ->transform(whole_number(1, 9));
  app.add_flag("--transparent", picture_.transparent, "Without a white background");
  app.add_flag("--reveal-codes", picture_.reveal_codes, "Draw the markup itself");
  app.add_flag("--hide-hidden", picture_.hides_hidden, "Without text in colour 2");
  app.add_flag("--one-color", picture_.one_color, "All text in colour 0");
  app.add_flag("--no-wrap", no_wrap_, "Break lines only at line codes");
  app.footer(render_examples);
}

TextTask RenderCommand::values(Way way) const {
  Picture picture = picture_;
  picture.way = way;
  picture.wraps = !no_wrap_;
  picture.align = align_ == "right" ? alRight : align_ == "center" ? alCenter : alLeft;
  if (picture.wraps && picture.indent > 0 && picture.indent >= picture.width) {
    throw UsageError("--indent leaves no room: it has to be less than --width");
  }
  refuse_other_pictures(output_);
  TextTask task;
  source_.fill(task, app_);
  task.output = output_;
  if (!task.text && is_same_file(task.files.front(), output_)) {
    throw UsageError("'" + output_ + "' is the markup to draw, which the picture would replace");
  }
  task.run = [picture, tables = std::make_shared<const Tables>(tables_.values())](
                 const std::vector<std::u16string>& texts) {
    return TaskResult{drawn(picture, *tables, texts[0]), 0};
  };
  return task;
}

}  // namespace qel::command
