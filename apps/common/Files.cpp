#include "Files.h"

#include <algorithm>
#include <utility>

#include "Temporaries.h"

namespace qel::command {
namespace {

constexpr std::string_view standard_stream = "-";

[[noreturn]] void fail_to(std::string_view verb, const std::string& name,
                          const std::error_code& error) {
  throw FileError("cannot " + std::string(verb) + " " + name + ": " + error.message());
}

system::Status status_of(const std::string& name, const system::File& standard) {
  return name == standard_stream ? standard.status() : system::status_of(name);
}

}  // namespace

InputFile::InputFile(const std::string& path)
    : name_(path == standard_stream ? "standard input" : path) {
  std::error_code error;
  file_ = path == standard_stream ? system::File::standard_input()
                                  : system::File::open_to_read(path, error);
  if (error) fail_to("read", name_, error);
}

std::size_t InputFile::expected_size() const {
  const system::Status status = file_.status();
  return status.kind == system::Kind::file ? static_cast<std::size_t>(status.size) : 0;
}

std::size_t InputFile::read_some(char* bytes, std::size_t size) {
  std::error_code error;
  const std::size_t count = file_.read(bytes, size, error);
  if (error) fail_to("read", name_, error);
  return count;
}

std::string read_file(const std::string& path) {
  constexpr std::size_t smallest_buffer = std::size_t{1} << 16U;
  InputFile reader(path);
  // One byte more than expected, so that the end is found without a larger buffer.
  std::string bytes(std::max(reader.expected_size() + 1, smallest_buffer), '\0');
  std::size_t used = 0;
  while (const std::size_t count = reader.read_some(bytes.data() + used, bytes.size() - used)) {
    used += count;
    if (used == bytes.size()) bytes.resize(used * 2);
  }
  bytes.resize(used);
  return bytes;
}

bool is_same_file(const std::string& input, const std::string& output) {
  const system::Status read = status_of(input, system::File::standard_input());
  const system::Status written = status_of(output, system::File::standard_output());
  return read.kind == system::Kind::file && written.kind == system::Kind::file &&
         read.identity == written.identity;
}

void refuse_to_write_while_reading(const std::string& input, const std::string& output) {
  if (output == standard_stream && is_same_file(input, output)) {
    throw FileError("standard output is the file that is read; -o FILE writes to another");
  }
}

OutputFile::OutputFile(std::string path) : path_(std::move(path)) {
  if (path_ == standard_stream) {
    file_ = system::File::standard_output();
    return;
  }
  const system::Kind kind = system::status_of(path_).kind;
  if (kind == system::Kind::none || kind == system::Kind::file) {
    open_replacement(system::without_links(path_));
  } else {
    std::error_code error;
    file_ = system::File::open_to_write(path_, error);
    check(error);
  }
}

OutputFile::~OutputFile() {
  file_.close();
  if (!temporary_.empty()) temporaries::remove(temporary_);
}

void OutputFile::open_replacement(const std::string& target) {
  std::error_code error;
  target_ = target;
  file_ = temporaries::create(target, temporary_, error);
  check(error);
  begin_ = file_.status().modified;
}

void OutputFile::write(std::string_view bytes) {
  if (bytes.empty()) return;
  at_line_start_ = bytes.back() == '\n';
  size_ += bytes.size();
  write_all(bytes);
}

void OutputFile::write_all(std::string_view bytes) { check(file_.write(bytes)); }

void OutputFile::finish() {
  end_last_line();
  make_safe();
  appear();
}

void OutputFile::end_last_line() {
  if (!at_line_start_ && file_.is_terminal()) write_all("\n");
}

void OutputFile::make_safe() {
  if (!temporary_.empty()) check(file_.make_safe(begin_));
}

void OutputFile::appear() {
  check(file_.close());
  if (temporary_.empty()) return;
  check(temporaries::rename_to(temporary_, target_));
  temporary_.clear();
}

void OutputFile::check(const std::error_code& error) const {
  if (error == std::errc::broken_pipe) throw ReaderHasGone();
  if (error) fail_to("write", path_ == standard_stream ? "standard output" : path_, error);
}

namespace {

/// Few enough that two groups are within the limit of the process, with what else is open, and that
/// little of the work is lost when the process is ended.
std::size_t files_in_group() {
  constexpr std::size_t most = 128;
  constexpr std::size_t parts = 4;
  return std::clamp<std::size_t>(system::most_open_files() / parts, 1, most);
}

}  // namespace

OutputGroup::Failures OutputGroup::add(std::unique_ptr<OutputFile> file) {
  static const std::size_t most_files = files_in_group();
  constexpr std::size_t most_bytes = std::size_t{1} << 24U;
  file->end_last_line();
  if (file->temporary_.empty()) {
    file->appear();
    return {};
  }
  file->file_.begin_write_back();
  std::unique_lock taking(taking_);
  taken_bytes_ += file->size_;
  taken_.push_back(std::move(file));
  if (taken_.size() < most_files && taken_bytes_ < most_bytes) return {};
  return finish_taken(std::move(taking));
}

OutputGroup::Failures OutputGroup::finish() { return finish_taken(std::unique_lock(taking_)); }

OutputGroup::Failures OutputGroup::finish_taken(std::unique_lock<std::mutex> taking) {
  // The next group is taken while this one is finished, but not a third.
  const std::lock_guard finishing(finishing_);
  Files files = std::exchange(taken_, {});
  taken_bytes_ = 0;
  taking.unlock();
  return finish_all(files);
}

OutputGroup::Failures OutputGroup::finish_all(Files& files) {
  Failures failures;
  const auto try_all = [&](void (OutputFile::*step)()) {
    for (std::unique_ptr<OutputFile>& file : files) {
      try {
        if (file) ((*file).*step)();
      } catch (const FileError& error) {
        failures.push_back(error);
        file.reset();
      }
    }
  };
  try_all(&OutputFile::make_safe);
  try_all(&OutputFile::appear);
  return failures;
}

}  // namespace qel::command
