#include "Batch.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <exception>
#include <filesystem>
#include <map>
#include <new>
#include <system_error>
#include <thread>
#include <utility>

#include "Files.h"
#include "Progress.h"
#include "UsageError.h"
#include "qel/convert/Convert.h"

namespace qel::command {
namespace {

namespace fs = std::filesystem;

std::string output_in(const std::string& folder, const std::string& file,
                      convert::OutputFormat format) {
  std::string name = fs::path(file).stem().string();
  if (file == "-" || name.empty()) {
    throw UsageError("'" + file + "' has no name that a file in a folder could get; use -o");
  }
  return (fs::path(folder) / name.append(convert::extension_of(format))).string();
}

[[noreturn]] void refuse_both(const std::string& one, const std::string& other,
                              const std::string& output) {
  throw UsageError("'" + one + "' and '" + other + "' would both become " + output);
}

bool is_same_file(const std::string& one, const std::string& other) {
  std::error_code error;
  return fs::equivalent(one, other, error);
}

void convert_file(const Task& task, convert::Options options) {
  if (!options.from) options.from = convert::input_format_of_file(task.input);
  const InputFile input(task.input);
  OutputFile output(task.output);
  convert::convert([&](char* bytes, std::size_t size) { return input.read_some(bytes, size); },
                   [&](std::string_view bytes) { output.write(bytes); }, options);
  output.finish();
}

/// Returns whether the task succeeded.
bool try_task(const Task& task, const convert::Options& options, Progress& progress) {
  const std::string name = task.input == "-" ? "standard input" : task.input;
  try {
    convert_file(task, options);
    return true;
  } catch (const FileError& error) {
    progress.report(error.what());
  } catch (const std::bad_alloc&) {
    progress.report("cannot convert " + name + ": out of memory");
  } catch (const std::exception& error) {
    progress.report("cannot convert " + name + ": " + error.what());
  }
  return false;
}

}  // namespace

std::vector<Task> tasks_into(const std::string& folder, const std::vector<std::string>& files,
                             convert::OutputFormat format) {
  std::vector<Task> tasks;
  std::map<std::string, std::string> input_of_output;
  for (const std::string& file : files) {
    const std::string output = output_in(folder, file, format);
    const auto [other, is_new] = input_of_output.try_emplace(output, file);
    if (!is_new) refuse_both(other->second, file, output);
    tasks.push_back({file, output});
  }
  for (const Task& task : tasks) {
    const auto overwritten = std::find_if(files.begin(), files.end(), [&](const auto& file) {
      return is_same_file(file, task.output);
    });
    if (overwritten != files.end()) {
      throw UsageError("'" + task.input + "' would overwrite the input " + *overwritten);
    }
  }
  return tasks;
}

bool convert_files(const std::vector<Task>& tasks, const convert::Options& options,
                   std::size_t jobs) {
  Progress progress(tasks.size());
  std::atomic<std::size_t> next = 0;
  std::atomic<bool> all_went_well = true;
  const auto work = [&] {
    for (std::size_t index = 0; (index = next++) < tasks.size();) {
      if (!try_task(tasks[index], options, progress)) all_went_well = false;
      progress.step();
    }
  };
  std::vector<std::jthread> helpers;
  for (std::size_t job = 1; job < std::min(jobs, tasks.size()); ++job) helpers.emplace_back(work);
  work();
  helpers.clear();
  return all_went_well;
}

}  // namespace qel::command
