#include "Batch.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <map>
#include <memory>
#include <new>
#include <thread>
#include <unordered_map>
#include <utility>

#include "Files.h"
#include "Paths.h"
#include "Progress.h"
#include "System.h"
#include "UsageError.h"
#include "qel/base/Error.h"
#include "qel/convert/Convert.h"

namespace qel::command {
namespace {

std::string output_in(const std::string& folder, const InputPath& file,
                      convert::OutputFormat format) {
  std::string name = to_text(to_path(file.path).stem());
  if (file.path == "-" || name.empty()) {
    throw UsageError("'" + file.path + "' has no name that a file in a folder could get; use -o");
  }
  return to_text(to_path(folder) / to_path(file.below) /
                 to_path(name.append(convert::extension_of(format))));
}

[[noreturn]] void refuse_both(const std::string& one, const std::string& other,
                              const std::string& output) {
  throw UsageError("'" + one + "' and '" + other + "' would both become " + output);
}

void refuse_to_overwrite_inputs(const std::vector<Task>& tasks) {
  std::map<system::Identity, const std::string*> inputs;
  for (const Task& task : tasks) {
    const system::Status status = system::status_of(task.input);
    if (status.kind != system::Kind::none) inputs.emplace(status.identity, &task.input);
  }
  for (const Task& task : tasks) {
    const system::Status status = system::status_of(task.output);
    if (status.kind == system::Kind::none) continue;
    const auto overwritten = inputs.find(status.identity);
    if (overwritten == inputs.end()) continue;
    throw UsageError("'" + task.input + "' would overwrite the input " + *overwritten->second);
  }
}

bool has_newer_output(const Task& task) {
  const system::Status read = system::status_of(task.input);
  const system::Status written = system::status_of(task.output);
  return read.kind != system::Kind::none && written.kind != system::Kind::none &&
         written.modified > read.modified;
}

std::string name_of(const Task& task) { return task.input == "-" ? "standard input" : task.input; }

/// Raises an error where a file would be replaced by what can no longer be read as what it was.
void refuse_to_lose(const Task& task, convert::InputFormat from, convert::OutputFormat to) {
  if (convert::is_same_format(from, to) || !is_same_file(task.input, task.output)) return;
  throw FileError("cannot write " + task.output +
                  ": it is the input, and its format would be another");
}

std::unique_ptr<OutputFile> converted(const Task& task, convert::Options options,
                                      Reports& reports) {
  refuse_to_write_while_reading(task.input, task.output);
  if (!options.from) {
    options.from = convert::input_format_of_file(task.input);
    options.is_from_guessed = true;
  }
  InputFile input(task.input);
  auto output = std::make_unique<OutputFile>(task.output);
  const convert::Report report =
      convert::convert([&](char* bytes, std::size_t size) { return input.read_some(bytes, size); },
                       [&](std::string_view bytes) { output->write(bytes); }, options);
  refuse_to_lose(task, report.from, options.to);
  reports.add(name_of(task), report);
  return output;
}

bool report(const OutputGroup::Failures& failures, Progress& progress) {
  for (const FileError& failure : failures) progress.report(failure.what());
  return failures.empty();
}

std::string hint_on(const std::string& input) {
  const bool is_folder = system::status_of(input).kind == system::Kind::folder;
  return is_folder ? " (--recursive converts what is in it)" : "";
}

/// Returns whether all went well that was tried here.
bool try_task(const Task& task, const convert::Options& options, OutputGroup& outputs,
              Reports& reports, Progress& progress) {
  const std::string name = name_of(task);
  try {
    return report(outputs.add(converted(task, options, reports)), progress);
  } catch (const ReaderHasGone&) {
    return true;
  } catch (const FileError& error) {
    progress.report(error.what() + hint_on(task.input));
  } catch (const std::bad_alloc&) {
    progress.report("cannot convert " + name + ": out of memory");
  } catch (const Error& error) {
    progress.report("cannot convert " + name + ": " + error.description());
  } catch (const std::exception& error) {
    progress.report("cannot convert " + name + ": " + error.what());
  }
  return false;
}

}  // namespace

std::vector<Task> tasks_into(const std::string& folder, const std::vector<InputPath>& files,
                             convert::OutputFormat format) {
  std::vector<Task> tasks;
  std::unordered_map<std::string, const std::string*> input_of_output;
  for (const InputPath& file : files) {
    const std::string output = output_in(folder, file, format);
    const auto [other, is_new] = input_of_output.try_emplace(output, &file.path);
    if (!is_new) refuse_both(*other->second, file.path, output);
    tasks.push_back({file.path, output});
  }
  refuse_to_overwrite_inputs(tasks);
  return tasks;
}

bool convert_files(const std::vector<Task>& tasks, const BatchOptions& options) {
  Progress progress(Progress::Unit::files, tasks.size());
  Reports reports(options.report, progress);
  OutputGroup outputs;
  std::atomic<std::size_t> next = 0;
  std::atomic<bool> all_went_well = true;
  const auto work = [&] {
    for (std::size_t index = 0; (index = next++) < tasks.size(); progress.step(1, 1)) {
      const Task& task = tasks[index];
      if (options.skips_newer && has_newer_output(task)) continue;
      if (!try_task(task, options.conversion, outputs, reports, progress)) all_went_well = false;
    }
    if (!report(outputs.finish(), progress)) all_went_well = false;
  };
  std::vector<std::jthread> helpers;
  for (std::size_t job = 1; job < std::min(options.jobs, tasks.size()); ++job) {
    helpers.emplace_back(work);
  }
  work();
  helpers.clear();
  reports.finish();
  return all_went_well;
}

}  // namespace qel::command
