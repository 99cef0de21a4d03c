#include <windows.h>

#include <array>

#include "qel/richtext/CodePage.h"

namespace qel::richtext {

struct SystemDecoder::Handle {
  UINT code_page;
};

SystemDecoder::SystemDecoder(int number)
    : handle_(std::make_unique<Handle>(Handle{static_cast<UINT>(number)})) {}

SystemDecoder::~SystemDecoder() = default;

std::u16string SystemDecoder::decode(std::string_view bytes) const {
  std::array<wchar_t, 64> output{};
  const int length = MultiByteToWideChar(handle_->code_page, MB_ERR_INVALID_CHARS, bytes.data(),
                                         static_cast<int>(bytes.size()), output.data(),
                                         static_cast<int>(output.size()));
  return {output.begin(), output.begin() + length};
}

}  // namespace qel::richtext
