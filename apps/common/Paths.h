#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// Paths in UTF-8, whatever the system takes a `char` for; elsewhere, the bytes that they are.
namespace qel::command {

/// With the separators that the system prefers.
inline std::filesystem::path to_path(std::string_view text) {
  std::filesystem::path path = std::u8string(text.begin(), text.end());
  return path.make_preferred();
}

inline std::string to_text(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace qel::command
