#include "com/server/Module.h"

#include <atomic>

#include "windows/Module.h"

namespace qel::com {
namespace {

std::atomic<long> use_count = 0;

}  // namespace

std::wstring Module::path() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD size =
        GetModuleFileNameW(windows::module_handle(), path.data(), static_cast<DWORD>(path.size()));
    if (size < path.size()) {
      path.resize(size);
      return path;
    }
    path.resize(2 * path.size());
  }
}

bool Module::is_idle() noexcept { return use_count == 0; }
void Module::add_use(long count) noexcept { use_count += count; }

}  // namespace qel::com
