#include "com/control/Storage.h"

#include <qelcom.h>

#include <array>
#include <cstring>
#include <string>

#include "com/automation/Errors.h"
#include "com/automation/Values.h"
#include "qel/base/Error.h"
#include "qel/headless/PropertyBag.h"

namespace qel::com {
namespace {

struct StreamHead {
  std::array<char, 4> mark;
  std::uint32_t size;  // of the text that follows, in bytes
};
constexpr std::array<char, 4> stream_mark = {'Q', 'E', 'L', 'T'};

[[noreturn]] void raise_bad_stream() {
  throw Error(static_cast<std::uint32_t>(STG_E_READFAULT), "QELTextbox",
              "the stream does not hold a text box");
}

/// Streams may return less than they are asked for.
void read(IStream& stream, void* target, std::size_t size) {
  auto* place = static_cast<char*>(target);
  while (size > 0) {
    ULONG done = 0;
    if (FAILED(stream.Read(place, static_cast<ULONG>(size), &done)) || done == 0 || done > size) {
      raise_bad_stream();
    }
    place += done;
    size -= done;
  }
}

/// Grows the text as it comes in: the size that a stream states cannot be trusted.
std::u16string read_text(IStream& stream) {
  StreamHead head = {};
  read(stream, &head, sizeof head);
  if (head.mark != stream_mark || head.size % sizeof(char16_t) != 0) raise_bad_stream();
  constexpr std::size_t portion = 0x8000;
  std::u16string text;
  for (std::size_t left = head.size / sizeof(char16_t); left > 0;) {
    const std::size_t count = std::min(left, portion);
    text.resize(text.size() + count);
    read(stream, text.data() + text.size() - count, count * sizeof(char16_t));
    left -= count;
  }
  return text;
}

void write(IStream& stream, const void* source, std::size_t size) {
  ULONG done = 0;
  const HRESULT result = stream.Write(source, static_cast<ULONG>(size), &done);
  if (FAILED(result) || done != size) {
    throw Error(static_cast<std::uint32_t>(STG_E_WRITEFAULT), "QELTextbox",
                "the stream does not take the text box");
  }
}

/// A property bag of the host.
class HostBag : public platform::PropertyBag {
 public:
  HostBag(IPropertyBag& bag, bool all_properties) : bag_(bag), all_properties_(all_properties) {}

  Variant read(std::u16string_view name, const Variant& preset) const override {
    const std::u16string wanted(name);
    // Hosts that keep text convert it to the type that they find here. Not all of them free what
    // they find.
    VARIANT found = {};
    found.vt = value_of(preset).type();
    const HRESULT result = bag_.Read(wide(wanted), &found, nullptr);
    const Value owned(found);
    VariantClear(&found);
    return FAILED(result) ? preset : plain(owned.get());
  }

  void write(std::u16string_view name, const Variant& value, const Variant& preset) override {
    if (value == preset && !all_properties_) return;
    const std::u16string wanted(name);
    const Value kept = value_of(value);
    if (FAILED(bag_.Write(wide(wanted), const_cast<VARIANT*>(&kept.get())))) {
      throw Error(static_cast<std::uint32_t>(STG_E_WRITEFAULT), "QELTextbox",
                  "the property bag does not take a property");
    }
  }

 private:
  IPropertyBag& bag_;
  bool all_properties_;
};

HRESULT put_class_id(CLSID* id) {
  if (id == nullptr) return E_POINTER;
  *id = __uuidof(::QELTextbox);
  return S_OK;
}

HRESULT init_new(HostedControl& control) {
  return guarded(IID_IPersistStreamInit, [&] {
    control.textbox().InitProperties();
    control.put_accessible_name({});
    control.put_dirty(false);
  });
}

constexpr std::u16string_view name_property = u"AccessibleName";

void write_properties(HostedControl& control, platform::PropertyBag& bag) {
  control.textbox().WriteProperties(bag);
  bag.write(name_property, control.accessible_name(), std::u16string());
}

void read_properties(HostedControl& control, const platform::PropertyBag& bag) {
  control.textbox().ReadProperties(bag);
  const Variant name = bag.read(name_property, std::u16string());
  const auto* const text = std::get_if<std::u16string>(&name);
  control.put_accessible_name(text == nullptr ? std::u16string_view() : *text);
  control.put_dirty(false);
}

std::u16string content_of(HostedControl& control) {
  headless::PropertyBag bag;
  write_properties(control, bag);
  return bag.get_All();
}

void load(HostedControl& control, IStream& stream) {
  read_properties(control, headless::PropertyBag(read_text(stream)));
}

void save(HostedControl& control, IStream& stream) {
  const std::u16string text = content_of(control);
  const std::size_t size = text.size() * sizeof(char16_t);
  const StreamHead head = {stream_mark, static_cast<std::uint32_t>(size)};
  write(stream, &head, sizeof head);
  write(stream, text.data(), size);
}

constexpr const wchar_t* stream_name = L"CONTENTS";
constexpr DWORD exclusive = STGM_SHARE_EXCLUSIVE;

}  // namespace

HRESULT StreamStorage::GetClassID(CLSID* id) { return put_class_id(id); }

HRESULT StreamStorage::IsDirty() { return control_.is_dirty() ? S_OK : S_FALSE; }

HRESULT StreamStorage::Load(LPSTREAM stream) {
  if (stream == nullptr) return E_POINTER;
  return guarded(IID_IPersistStreamInit, [&] { load(control_, *stream); });
}

HRESULT StreamStorage::Save(LPSTREAM stream, BOOL clear_dirty) {
  if (stream == nullptr) return E_POINTER;
  return guarded(IID_IPersistStreamInit, [&] {
    save(control_, *stream);
    if (clear_dirty != FALSE) control_.put_dirty(false);
  });
}

HRESULT StreamStorage::GetSizeMax(ULARGE_INTEGER* size) {
  if (size == nullptr) return E_POINTER;
  return guarded(IID_IPersistStreamInit, [&] {
    size->QuadPart = sizeof(StreamHead) + content_of(control_).size() * sizeof(char16_t);
  });
}

HRESULT StreamStorage::InitNew() { return init_new(control_); }

HRESULT DocumentStorage::GetClassID(CLSID* id) { return put_class_id(id); }

HRESULT DocumentStorage::IsDirty() { return control_.is_dirty() ? S_OK : S_FALSE; }

HRESULT DocumentStorage::InitNew(LPSTORAGE storage) {
  return storage == nullptr ? E_POINTER : init_new(control_);
}

HRESULT DocumentStorage::Load(LPSTORAGE storage) {
  if (storage == nullptr) return E_POINTER;
  Pointer<IStream> stream;
  const HRESULT opened =
      storage->OpenStream(stream_name, nullptr, STGM_READ | exclusive, 0, stream.put());
  if (FAILED(opened)) return opened;
  return guarded(IID_IPersistStorage, [&] { load(control_, *stream); });
}

HRESULT DocumentStorage::Save(LPSTORAGE storage, BOOL is_own) {
  if (storage == nullptr) return E_POINTER;
  Pointer<IStream> stream;
  const HRESULT made = storage->CreateStream(stream_name, STGM_CREATE | STGM_READWRITE | exclusive,
                                             0, 0, stream.put());
  if (FAILED(made)) return made;
  saved_own_ = is_own != FALSE;
  return guarded(IID_IPersistStorage, [&] { save(control_, *stream); });
}

HRESULT DocumentStorage::SaveCompleted(LPSTORAGE storage) {
  if (storage != nullptr || saved_own_) control_.put_dirty(false);
  saved_own_ = false;
  return S_OK;
}

HRESULT DocumentStorage::HandsOffStorage() { return S_OK; }

HRESULT BagStorage::GetClassID(CLSID* id) { return put_class_id(id); }

HRESULT BagStorage::InitNew() { return init_new(control_); }

HRESULT BagStorage::Load(IPropertyBag* bag, IErrorLog* /*log*/) {
  if (bag == nullptr) return E_POINTER;
  return guarded(IID_IPersistPropertyBag, [&] { read_properties(control_, HostBag(*bag, false)); });
}

HRESULT BagStorage::Save(IPropertyBag* bag, BOOL clear_dirty, BOOL all_properties) {
  if (bag == nullptr) return E_POINTER;
  return guarded(IID_IPersistPropertyBag, [&] {
    HostBag kept(*bag, all_properties != FALSE);
    write_properties(control_, kept);
    if (clear_dirty != FALSE) control_.put_dirty(false);
  });
}

}  // namespace qel::com
