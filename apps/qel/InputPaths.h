#pragma once

#include <optional>
#include <string>
#include <vector>

namespace qel::command {

/// A file to read.
struct InputPath {
  std::string path;
  std::string below;  ///< where it lies within the folder that was named; empty at the top
};

/// The files that these names and patterns stand for.
std::vector<std::string> files_matching(const std::vector<std::string>& names);

/// The names in a list that is read from a file, "-" for standard input. Each ends with `end`;
/// empty ones are left out.
std::vector<std::string> names_in_list(const std::string& file, char end);

/// How folders are searched for files.
struct FolderSearch {
  std::string output_folder;    ///< is left out when it lies within a folder
  bool takes_any_file = false;  ///< or only those whose extension names a format
};

/// The files with these names and, for the name of a folder, all files in it and below, in the
/// order of their paths. Hidden files and folders in a folder are left out, and links to folders
/// are not followed. Raises a `FileError` for a folder that cannot be read.
std::vector<InputPath> with_files_of_folders(const std::vector<std::string>& names,
                                             const FolderSearch& search);

}  // namespace qel::command
