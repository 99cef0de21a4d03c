#include "WindowsNames.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "qel/base/Utf8.h"
#include "qel/richtext/CodePage.h"

namespace qel::command::system {
namespace {

enum class Fault : int { device = 1, character, end };

class Faults : public std::error_category {
 public:
  const char* name() const noexcept override { return "names of files"; }
  std::string message(int fault) const override {
    switch (static_cast<Fault>(fault)) {
      case Fault::device:
        return "Windows keeps this name for a device";
      case Fault::character:
        return "Windows allows no name with such a character";
      case Fault::end:
        return "Windows would drop the dot or blank at the end of the name";
    }
    return {};
  }
};

std::error_code error_of(Fault fault) {
  static const Faults faults;
  return {static_cast<int>(fault), faults};
}

bool is_left_to_system(std::string_view path) {
  return path.starts_with(R"(\\?\)") || path.starts_with(R"(\\.\)");
}

char upper(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

/// With or without an extension.
bool is_device(std::string_view name) {
  static constexpr std::array<std::string_view, 6> devices = {"CON", "PRN",    "AUX",
                                                              "NUL", "CONIN$", "CONOUT$"};
  static constexpr std::array<std::string_view, 3> superscripts = {"\u00B9", "\u00B2", "\u00B3"};
  std::string stem(name.substr(0, name.find_first_of(".:")));
  stem.resize(stem.find_last_not_of(' ') + 1);
  std::transform(stem.begin(), stem.end(), stem.begin(), upper);
  if (std::find(devices.begin(), devices.end(), stem) != devices.end()) return true;
  if (!stem.starts_with("COM") && !stem.starts_with("LPT")) return false;
  const std::string number = stem.substr(3);
  return (number.size() == 1 && number >= "0" && number <= "9") ||
         std::find(superscripts.begin(), superscripts.end(), number) != superscripts.end();
}

std::error_code fault_of_name(std::string_view name) {
  if (name.empty() || name == "." || name == "..") return {};
  const auto is_forbidden = [](char c) {
    constexpr std::string_view forbidden = "<>\"|?*";
    return static_cast<unsigned char>(c) < ' ' || forbidden.find(c) != forbidden.npos;
  };
  if (is_device(name)) return error_of(Fault::device);
  if (std::any_of(name.begin(), name.end(), is_forbidden)) return error_of(Fault::character);
  if (name.back() == '.' || name.back() == ' ') return error_of(Fault::end);
  return {};
}

}  // namespace

std::wstring to_wide(std::string_view text) {
  const std::u16string utf16 = from_utf8(text, richtext::decode_western);
  return {utf16.begin(), utf16.end()};
}

std::string to_narrow(std::wstring_view text) {
  return to_utf8(std::u16string(text.begin(), text.end()));
}

std::error_code fault_of(const std::string& path) {
  if (is_left_to_system(path)) return {};
  for (std::string_view rest = path; !rest.empty();) {
    const std::size_t length = std::min(rest.find_first_of("/\\"), rest.size());
    if (const std::error_code fault = fault_of_name(rest.substr(0, length))) return fault;
    rest.remove_prefix(std::min(length + 1, rest.size()));
  }
  return {};
}

std::wstring native(const std::string& path) {
  std::wstring given = to_wide(path);
  if (is_left_to_system(path)) return given;
  std::wstring full;
  for (DWORD size = GetFullPathNameW(given.c_str(), 0, nullptr, nullptr); size > full.size();) {
    full.resize(size);
    size = GetFullPathNameW(given.c_str(), size, full.data(), nullptr);
    if (size < full.size()) full.resize(size);
  }
  if (full.empty()) return given;
  constexpr std::wstring_view share = LR"(\\)";
  return full.starts_with(share) ? LR"(\\?\UNC\)" + full.substr(share.size()) : LR"(\\?\)" + full;
}

std::error_code last_error() {
  const auto number = static_cast<long>(GetLastError());
  for (const long gone : {ERROR_BROKEN_PIPE, ERROR_NO_DATA, ERROR_PIPE_NOT_CONNECTED}) {
    if (number == gone) return std::make_error_code(std::errc::broken_pipe);
  }
  const std::error_code error(static_cast<int>(number), std::system_category());
  const std::error_condition known = error.default_error_condition();
  return known.category() == std::generic_category()
             ? std::error_code(known.value(), known.category())
             : error;
}

}  // namespace qel::command::system
