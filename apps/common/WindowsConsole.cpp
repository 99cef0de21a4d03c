#include "WindowsConsole.h"

#include <shellapi.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <utility>

#include "System.h"
#include "WindowsNames.h"

namespace qel::command::system {
namespace {

/// How many bytes at the end begin a character whose other bytes are still to come.
std::size_t begun_at_end_of(std::string_view bytes) {
  constexpr std::size_t longest = 4;
  for (std::size_t count = 1; count < longest && count <= bytes.size(); ++count) {
    const auto byte = static_cast<std::uint8_t>(bytes[bytes.size() - count]);
    if (byte < 0x80) break;
    if (byte < 0xC0) continue;
    const std::size_t length = byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    return length > count ? count : 0;
  }
  return 0;
}

bool is_high_surrogate(wchar_t unit) { return (unit & 0xFC00) == 0xD800; }

/// Never destroyed: an interrupt may arrive while the process ends.
std::function<void()>& clean_up_function() {
  static auto& function = *new std::function<void()>;
  return function;
}

BOOL WINAPI end_process(DWORD /*reason*/) {
  constexpr UINT ended_by_control_c = 0xC000013A;
  clean_up_function()();
  // Nothing is left to be written, and what other threads hold need not be given back.
  TerminateProcess(GetCurrentProcess(), ended_by_control_c);
  return TRUE;
}

}  // namespace

bool is_console(HANDLE handle) {
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) != 0;
}

std::size_t read_console(HANDLE console, std::string& pending, char* bytes, std::size_t size) {
  constexpr wchar_t end_of_input = 0x1A;
  if (pending.empty()) {
    std::array<wchar_t, 4096> units = {};
    DWORD count = 0;
    // One is left for the second half of a pair.
    ReadConsoleW(console, units.data(), static_cast<DWORD>(units.size() - 1), &count, nullptr);
    if (count == 0 || units[0] == end_of_input) return 0;
    DWORD second = 0;
    if (is_high_surrogate(units[count - 1])) {
      ReadConsoleW(console, units.data() + count, 1, &second, nullptr);
    }
    pending = to_narrow({units.data(), count + second});
  }
  const std::size_t taken = pending.copy(bytes, size);
  pending.erase(0, taken);
  return taken;
}

std::error_code write_console(HANDLE console, std::string& pending, std::string_view bytes) {
  constexpr std::size_t most = 8192;
  pending.append(bytes);
  const std::size_t complete = pending.size() - begun_at_end_of(pending);
  const std::wstring text = to_wide(std::string_view(pending).substr(0, complete));
  pending.erase(0, complete);
  for (std::wstring_view rest = text; !rest.empty();) {
    std::size_t size = std::min(rest.size(), most);
    if (size < rest.size() && is_high_surrogate(rest[size - 1])) --size;
    DWORD count = 0;
    if (!WriteConsoleW(console, rest.data(), static_cast<DWORD>(size), &count, nullptr)) {
      return last_error();
    }
    rest.remove_prefix(count);
  }
  return {};
}

void prepare_process() {
  // An empty drive is an error, not a question to the user.
  SetErrorMode(SEM_FAILCRITICALERRORS);
}

void before_interruption(std::function<void()> clean_up) {
  clean_up_function() = std::move(clean_up);
  SetConsoleCtrlHandler(end_process, TRUE);
}

Arguments::Arguments(int /*argc*/, char** /*argv*/) {
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  for (int i = 0; i < count; ++i) words_.push_back(to_narrow(words[i]));
  LocalFree(words);
  for (const std::string& word : words_) pointers_.push_back(word.c_str());
}

bool is_output_terminal() { return is_console(GetStdHandle(STD_OUTPUT_HANDLE)); }

bool can_rewrite_errors() {
  constexpr DWORD control_sequences = 4;  // ENABLE_VIRTUAL_TERMINAL_PROCESSING
  auto* const console = GetStdHandle(STD_ERROR_HANDLE);
  DWORD mode = 0;
  return GetConsoleMode(console, &mode) && SetConsoleMode(console, mode | control_sequences);
}

void write_error(std::string_view text) {
  auto* const output = GetStdHandle(STD_ERROR_HANDLE);
  std::string pending;
  DWORD count = 0;
  if (is_console(output)) {
    write_console(output, pending, text);
  } else {
    WriteFile(output, text.data(), static_cast<DWORD>(text.size()), &count, nullptr);
  }
}

}  // namespace qel::command::system
