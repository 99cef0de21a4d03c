#include "InputPaths.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "Files.h"
#include "qel/convert/Formats.h"

namespace qel::command {
namespace {

namespace fs = std::filesystem;

void check(const std::error_code& error, const fs::path& folder) {
  if (error) throw FileError("cannot read " + folder.string() + ": " + error.message());
}

class Search {
 public:
  Search(fs::path root, const FolderSearch& options) : options_(options), root_(std::move(root)) {}

  std::vector<InputPath> files() && {
    std::vector<fs::path> folders = {root_};
    while (!folders.empty()) {
      const fs::path folder = std::move(folders.back());
      folders.pop_back();
      std::error_code error;
      fs::directory_iterator entry(folder, error);
      for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        visit(*entry, folders);
      }
      check(error, folder);
    }
    std::sort(files_.begin(), files_.end(),
              [](const InputPath& one, const InputPath& other) { return one.path < other.path; });
    return std::move(files_);
  }

 private:
  void visit(const fs::directory_entry& entry, std::vector<fs::path>& folders) {
    const std::string path = entry.path().string();
    std::error_code error;
    if (entry.path().filename().string().starts_with('.')) return;
    if (entry.is_directory(error)) {
      const bool is_output = fs::equivalent(entry, options_.output_folder, error);
      if (!is_output && !entry.is_symlink(error)) folders.push_back(entry);
    } else if (!entry.is_other(error) &&
               (options_.takes_any_file || convert::input_format_of_file(path))) {
      const std::string below = entry.path().parent_path().lexically_relative(root_).string();
      files_.push_back({path, below == "." ? "" : below});
    }
  }

  const FolderSearch& options_;
  fs::path root_;
  std::vector<InputPath> files_;
};

}  // namespace

std::vector<std::string> names_in_list(const std::string& file, char end) {
  const std::string list = read_file(file);
  std::vector<std::string> names;
  for (std::string_view rest = list; !rest.empty();) {
    const std::size_t length = std::min(rest.find(end), rest.size());
    if (length > 0) names.emplace_back(rest.substr(0, length));
    rest.remove_prefix(std::min(length + 1, rest.size()));
  }
  return names;
}

std::vector<InputPath> with_files_of_folders(const std::vector<std::string>& names,
                                             const FolderSearch& search) {
  std::vector<InputPath> files;
  for (const std::string& name : names) {
    std::error_code error;
    if (!fs::is_directory(name, error)) {
      files.push_back({name, {}});
      continue;
    }
    for (InputPath& file : Search(name, search).files()) files.push_back(std::move(file));
  }
  return files;
}

}  // namespace qel::command
