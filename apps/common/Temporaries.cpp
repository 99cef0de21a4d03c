#include "Temporaries.h"

#include <mutex>
#include <set>
#include <string_view>

#include "Paths.h"

namespace qel::command::temporaries {
namespace {

constexpr std::string_view prefix = ".qel-";

struct Registry {
  std::mutex mutex;
  std::set<std::string> paths;
  std::set<std::string> folders;  // that have been looked through for files left behind
  unsigned next = 0;
};

/// Never destroyed: an interrupt may arrive while the process ends.
Registry& registry() {
  static auto& files = *new Registry;
  return files;
}

std::string folder_of(const std::string& path) {
  const std::string folder = to_text(to_path(path).parent_path());
  return folder.empty() ? "." : folder;
}

/// With the system's own separator: some paths of Windows take no other.
std::string path_of(const std::string& folder, const std::string& name) {
  return to_text(to_path(folder) / name);
}

bool is_name(std::string_view name) {
  if (!name.starts_with(prefix)) return false;
  const std::string_view numbers = name.substr(prefix.size());
  return numbers.find('-') != numbers.npos &&
         numbers.find_first_not_of("-0123456789") == numbers.npos;
}

/// Nobody could remove the files of a process that was killed. Those who write to the folder next
/// do.
void remove_files_left_in(const std::string& folder) {
  std::error_code error;
  for (const system::Entry& entry : system::entries_of(folder, error)) {
    if (is_name(entry.name)) system::remove_if_abandoned(path_of(folder, entry.name));
  }
}

}  // namespace

void remove_on_interruption() {
  registry();
  system::before_interruption([] {
    // Locked to the end, so that no more files are created or renamed.
    registry().mutex.lock();
    for (const std::string& path : registry().paths) system::remove(path);
  });
}

system::File create(const std::string& target, std::string& path, std::error_code& error) {
  Registry& files = registry();
  const std::string folder = folder_of(target);
  const std::lock_guard lock(files.mutex);
  if (files.folders.insert(folder).second) remove_files_left_in(folder);
  system::File file;
  do {
    error.clear();
    path = path_of(folder, std::string(prefix) + std::to_string(system::process_id()) + "-" +
                               std::to_string(files.next++));
    file = system::File::create_replacement(path, target, error);
  } while (error == std::errc::file_exists);
  if (error) {
    path.clear();
  } else {
    files.paths.insert(path);
  }
  return file;
}

std::error_code rename_to(const std::string& path, const std::string& target) {
  const std::lock_guard lock(registry().mutex);
  const std::error_code error = system::replace(path, target);
  if (!error) registry().paths.erase(path);
  return error;
}

void remove(const std::string& path) {
  const std::lock_guard lock(registry().mutex);
  system::remove(path);
  registry().paths.erase(path);
}

}  // namespace qel::command::temporaries
