// What registering the component enters in the system's registry, and that all of it goes again.
#include <gtest/gtest.h>
#include <qelcom.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <string>

#include "com/Component.h"

namespace qel::com::test {
namespace {

/// Texts by their paths in capitals, since the case of names does not count; of other values only
/// that they are there.
using Entries = std::map<std::wstring, std::wstring>;

std::wstring capital(std::wstring text) {
  CharUpperBuffW(text.data(), static_cast<DWORD>(text.size()));
  return text;
}

/// Whether the key is worth a look inside; of others the name does.
bool may_be_ours(const std::wstring& name, const std::wstring& path) {
  const std::wstring start = capital(name.substr(0, 7));
  const std::wstring place = capital(path);
  const bool is_of_system = place.ends_with(L"\\CLSID") || place.ends_with(L"\\INTERFACE") ||
                            place.ends_with(L"\\TYPELIB") || place.ends_with(L"\\CLASSES");
  return !is_of_system || start == L"{B18FA0" || start.starts_with(L"QEL") || start == L"CLSID" ||
         start == L"INTERFA" || start == L"TYPELIB";
}

void read(HKEY parent, const std::wstring& path, Entries& entries) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
  entries[capital(path)] = L"";
  std::array<wchar_t, 16384> name = {};
  std::array<wchar_t, 16384> text = {};
  for (DWORD i = 0;; ++i) {
    DWORD name_size = name.size();
    DWORD text_size = sizeof text - sizeof(wchar_t);
    DWORD type = 0;
    text.fill(L'\0');
    if (RegEnumValueW(key, i, name.data(), &name_size, nullptr, &type,
                      reinterpret_cast<BYTE*>(text.data()), &text_size) != ERROR_SUCCESS) {
      break;
    }
    entries[capital(path + L"@" + name.data())] = type == REG_SZ ? text.data() : L"";
  }
  for (DWORD i = 0;; ++i) {
    DWORD name_size = name.size();
    if (RegEnumKeyExW(key, i, name.data(), &name_size, nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS) {
      break;
    }
    const std::wstring below = path + L"\\" + name.data();
    entries[capital(below)] = L"";
    if (may_be_ours(name.data(), path)) read(parent, below, entries);
  }
  RegCloseKey(key);
}

Entries entries_of(HKEY root) {
  Entries entries;
  read(root, L"Software\\Classes", entries);
  return entries;
}

Entries added_to(const Entries& before, const Entries& after) {
  Entries added;
  std::set_difference(after.begin(), after.end(), before.begin(), before.end(),
                      std::inserter(added, added.end()));
  return added;
}

class RegistrationTest : public testing::Test {
 protected:
  RegistrationTest() {
    OleInitialize(nullptr);
    install(FALSE, nullptr);
    install(FALSE, L"user");
  }
  ~RegistrationTest() override {
    install(FALSE, nullptr);
    install(FALSE, L"user");
    OleUninitialize();
  }

  HRESULT install(BOOL add, const wchar_t* command) const {
    return component_.call<BOOL, LPCWSTR>("DllInstall", add, command);
  }

  /// Expects what makes a component known among the entries.
  void expect_registered(Entries added) const {
    const std::wstring classes = L"Software\\Classes\\";
    const std::wstring library = L"{B18FA000-C085-4A81-85E5-4448DE0DF7B2}";
    const auto take = [&](const std::wstring& path, const std::wstring& text) {
      EXPECT_EQ(added[capital(classes + path)], text) << path;
    };
    const auto count = [&](const std::wstring& path) {
      return added.count(capital(classes + path));
    };
    each_type(*component_.type_library(), [&](ITypeInfo& info, const TYPEATTR& attributes) {
      if (attributes.typekind != TKIND_COCLASS) return;
      if ((attributes.wTypeFlags & TYPEFLAG_FCANCREATE) == 0) return;
      std::array<wchar_t, 39> text = {};
      StringFromGUID2(attributes.guid, text.data(), static_cast<int>(text.size()));
      const std::wstring id = text.data();
      const std::wstring name = L"QEL." + name_of(info);
      take(name + L"\\CLSID@", id);
      take(name + L"\\CurVer@", name + L".1");
      take(name + L".1\\CLSID@", id);
      const std::wstring key = L"CLSID\\" + id;
      take(key + L"\\InprocServer32@", Component::path());
      take(key + L"\\InprocServer32@ThreadingModel", L"Apartment");
      take(key + L"\\ProgID@", name + L".1");
      take(key + L"\\VersionIndependentProgID@", name);
      take(key + L"\\TypeLib@", library);
      take(key + L"\\Version@", L"1.0");
      EXPECT_EQ(count(key + L"\\Programmable"), 1U);
      const bool is_control = (attributes.wTypeFlags & TYPEFLAG_FCONTROL) != 0;
      EXPECT_EQ(count(key + L"\\Control"), is_control ? 1U : 0U) << name;
      EXPECT_EQ(count(key + L"\\MiscStatus\\1"), is_control ? 1U : 0U) << name;
    });
    const std::wstring key = L"TypeLib\\" + library + L"\\1.0";
    take(key + L"@", L"QEL Textbox - A Rich Textbox that reads/writes QEL Software text coding");
    take(key + L"\\0\\win" + (sizeof(void*) == 8 ? L"64@" : L"32@"), Component::path());
  }

  Component component_;
};

TEST_F(RegistrationTest, EntersAndRemovesTheClasses) {
  struct Row {
    const wchar_t* command;
    HKEY root;
    HKEY other;
  };
  // Wine enters type libraries for all users, whomever they are for.
  const bool is_wine = GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr;
  for (const Row& row : {Row{nullptr, HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER},
                         Row{L"user", HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}}) {
    const Entries before = entries_of(row.root);
    const Entries other_before = entries_of(row.other);
    EXPECT_EQ(install(TRUE, row.command), S_OK);
    const bool is_shared = is_wine && row.command != nullptr;
    Entries added = added_to(before, entries_of(row.root));
    const Entries added_to_other = added_to(other_before, entries_of(row.other));
    if (is_shared) added.insert(added_to_other.begin(), added_to_other.end());
    EXPECT_TRUE(is_shared || added_to_other.empty());
    expect_registered(added);
    // Twice is as good as once, both ways.
    EXPECT_EQ(install(TRUE, row.command), S_OK);
    EXPECT_EQ(install(FALSE, row.command), S_OK);
    EXPECT_EQ(added_to(before, entries_of(row.root)), Entries());
    EXPECT_EQ(added_to(other_before, entries_of(row.other)), Entries());
    EXPECT_EQ(added_to(entries_of(row.root), before), Entries());
    EXPECT_EQ(install(FALSE, row.command), S_OK);
  }
  EXPECT_EQ(install(TRUE, L"everybody"), E_INVALIDARG);
  EXPECT_EQ(install(FALSE, L"everybody"), E_INVALIDARG);
}

TEST_F(RegistrationTest, LeavesNothingOfAFailure) {
  const Entries before = entries_of(HKEY_CURRENT_USER);
  // Below a key that goes with the session no lasting one can be made.
  const wchar_t* const path = L"Software\\Classes\\CLSID\\{B18FA04E-C085-4A81-85E5-4448DE0DF7B2}";
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, REG_OPTION_VOLATILE, KEY_WRITE,
                            nullptr, &key, nullptr),
            ERROR_SUCCESS);
  RegCloseKey(key);
  EXPECT_EQ(install(TRUE, L"user"), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
  EXPECT_EQ(entries_of(HKEY_CURRENT_USER), before);
  EXPECT_EQ(install(TRUE, L"user"), S_OK);
}

}  // namespace
}  // namespace qel::com::test
