#include "windows/VisualStyles.h"

#include <windows.h>

#include <array>

#include "qel/base/Error.h"
#include "windows/Text.h"

namespace qel::windows {
namespace {

class Library {
 public:
  explicit Library(const wchar_t* name)
      : module_(LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {}
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() {
    if (module_ != nullptr) FreeLibrary(module_);
  }

  template <class Function>
  Function* find(const char* name) const {
    if (module_ == nullptr) return nullptr;
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
  }

 private:
  HMODULE module_;
};

using Theme = HANDLE;
using OpenThemeData = Theme WINAPI(HWND window, const wchar_t* classes);
using CloseThemeData = HRESULT WINAPI(Theme theme);
using GetCurrentThemeName = HRESULT WINAPI(wchar_t* file, int file_size, wchar_t* color,
                                           int color_size, wchar_t* size, int size_size);

}  // namespace

std::optional<std::u16string> VisualStyles::color_scheme() const {
  const Library library(library_);
  auto* const open = library.find<OpenThemeData>("OpenThemeData");
  auto* const close = library.find<CloseThemeData>("CloseThemeData");
  auto* const name = library.find<GetCurrentThemeName>("GetCurrentThemeName");
  if (open == nullptr || close == nullptr || name == nullptr) {
    throw Error(Error::object_not_set, "VisualStyles", "This system has no visual styles.");
  }
  const Theme theme = open(nullptr, L"ExplorerBar");
  if (theme == nullptr) return {};
  constexpr std::size_t longest = 260;
  std::array<wchar_t, longest> file = {};
  std::array<wchar_t, longest> color = {};
  const HRESULT result = name(file.data(), longest, color.data(), longest, nullptr, 0);
  close(theme);
  return FAILED(result) ? std::u16string() : std::u16string(utf16(color.data()));
}

}  // namespace qel::windows
