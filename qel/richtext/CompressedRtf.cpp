#include "qel/richtext/CompressedRtf.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace qel::richtext {
namespace {

constexpr std::size_t header_size = 16;
constexpr std::size_t raw_size_at = 4;
constexpr std::size_t magic_at = 8;
constexpr std::string_view compressed_magic = "LZFu";
constexpr std::string_view raw_magic = "MELA";

/// What the dictionary begins with: words that much RTF has.
constexpr std::string_view preset =
    "{\\rtf1\\ansi\\mac\\deff0\\deftab720{\\fonttbl;}{\\f0\\fnil \\froman \\fswiss \\fmodern "
    "\\fscript \\fdecor MS Sans SerifSymbolArialTimes New RomanCourier{\\colortbl\\red0\\green0"
    "\\blue0\r\n\\par \\pard\\plain\\f0\\fs20\\b\\i\\u\\tab\\tx";
static_assert(preset.size() == 207);

std::size_t byte_at(std::string_view bytes, std::size_t at) {
  return static_cast<std::uint8_t>(bytes[at]);
}

std::string_view magic_of(std::string_view bytes) {
  return bytes.size() < header_size ? std::string_view() : bytes.substr(magic_at, 4);
}

/// The last bytes that were unpacked, which references point into.
class Unpacker {
 public:
  Unpacker() { std::copy(preset.begin(), preset.end(), dictionary_.begin()); }

  /// `packed` is groups of a byte and up to eight items: a bit that is set says that its item is a
  /// reference of two bytes, otherwise it is a byte as it is.
  std::string unpack(std::string_view packed) && {
    for (std::size_t at = 0; at < packed.size();) {
      const std::size_t kinds = byte_at(packed, at++);
      for (std::size_t bit = 0; bit < 8; ++bit) {
        const bool is_reference = (kinds >> bit & 1U) != 0;
        const std::size_t size = is_reference ? 2 : 1;
        if (packed.size() - at < size) return std::move(out_);
        if (!is_reference) {
          add(packed[at]);
        } else if (!repeat(byte_at(packed, at) << 8U | byte_at(packed, at + 1))) {
          return std::move(out_);
        }
        at += size;
      }
    }
    return std::move(out_);
  }

 private:
  void add(char byte) {
    out_.push_back(byte);
    dictionary_[end_] = byte;
    end_ = (end_ + 1) % dictionary_.size();
    is_full_ = is_full_ || end_ == 0;
  }

  /// False at the end, which is a reference to the end of the dictionary, or for a broken one.
  bool repeat(std::size_t reference) {
    constexpr std::size_t shortest = 2;
    std::size_t from = reference >> 4U;
    if (from == end_ || (from > end_ && !is_full_)) return false;
    for (std::size_t left = (reference & 0xFU) + shortest; left > 0; --left) {
      add(dictionary_[from]);
      from = (from + 1) % dictionary_.size();
    }
    return true;
  }

  std::array<char, 4096> dictionary_ = {};
  std::size_t end_ = preset.size();  // where the next byte is put
  bool is_full_ = false;
  std::string out_;
};

}  // namespace

bool is_compressed_rtf(std::string_view bytes) {
  const std::string_view magic = magic_of(bytes);
  return magic == compressed_magic || magic == raw_magic;
}

std::string unpack_rtf(std::string_view bytes) {
  if (!is_compressed_rtf(bytes)) return {};
  const std::string_view content = bytes.substr(header_size);
  if (magic_of(bytes) == compressed_magic) return Unpacker().unpack(content);
  std::size_t raw_size = 0;
  for (std::size_t i = 4; i-- > 0;) raw_size = raw_size << 8U | byte_at(bytes, raw_size_at + i);
  return std::string(content.substr(0, raw_size));
}

}  // namespace qel::richtext
