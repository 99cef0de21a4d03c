#include "InputPaths.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "Files.h"
#include "Paths.h"
#include "System.h"
#include "qel/convert/Formats.h"

namespace qel::command {
namespace {

class Search {
 public:
  Search(const std::string& root, const FolderSearch& options)
      : options_(options),
        root_(to_path(root)),
        output_folder_(system::status_of(options.output_folder)) {}

  std::vector<InputPath> files() && {
    folders_ = {{}};
    while (!folders_.empty()) {
      const std::filesystem::path below = std::move(folders_.back());
      folders_.pop_back();
      const std::string folder = to_text(below.empty() ? root_ : root_ / below);
      std::error_code error;
      for (const system::Entry& entry : system::entries_of(folder, error)) visit(entry, below);
      if (error) throw FileError("cannot read " + folder + ": " + error.message());
    }
    std::sort(files_.begin(), files_.end(),
              [](const InputPath& one, const InputPath& other) { return one.path < other.path; });
    return std::move(files_);
  }

 private:
  void visit(const system::Entry& entry, const std::filesystem::path& below) {
    if (entry.is_hidden) return;
    const std::filesystem::path name = to_path(entry.name);
    const std::string path = to_text(root_ / below / name);
    if (entry.kind == system::Kind::folder) {
      if (!entry.is_link && !is_output_folder(path)) folders_.push_back(below / name);
    } else if (entry.kind != system::Kind::other &&
               (options_.takes_any_file || convert::input_format_of_file(path))) {
      files_.push_back({path, to_text(below)});
    }
  }

  bool is_output_folder(const std::string& path) const {
    return output_folder_.kind != system::Kind::none &&
           system::status_of(path).identity == output_folder_.identity;
  }

  const FolderSearch& options_;
  std::filesystem::path root_;
  system::Status output_folder_;
  std::vector<std::filesystem::path> folders_;  // to look into, below the root
  std::vector<InputPath> files_;
};

}  // namespace

std::vector<std::string> files_matching(const std::vector<std::string>& names) {
  std::vector<std::string> files;
  for (const std::string& name : names) {
    for (std::string& file : system::files_matching(name)) files.push_back(std::move(file));
  }
  return files;
}

std::vector<std::string> names_in_list(const std::string& file, char end) {
  const std::string list = read_file(file);
  std::vector<std::string> names;
  for (std::string_view rest = list; !rest.empty();) {
    const std::size_t length = std::min(rest.find(end), rest.size());
    const std::string_view line = rest.substr(0, length);
    const std::string_view name = end == '\n' ? system::name_in_line(line) : line;
    if (!name.empty()) names.emplace_back(name);
    rest.remove_prefix(std::min(length + 1, rest.size()));
  }
  return names;
}

std::vector<InputPath> with_files_of_folders(const std::vector<std::string>& names,
                                             const FolderSearch& search) {
  std::vector<InputPath> files;
  for (const std::string& name : names) {
    if (system::status_of(name).kind != system::Kind::folder) {
      files.push_back({name, {}});
      continue;
    }
    for (InputPath& file : Search(name, search).files()) files.push_back(std::move(file));
  }
  return files;
}

}  // namespace qel::command
