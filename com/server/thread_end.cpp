// Ends what the C++ code keeps for each thread, when the thread ends or the component is unloaded.
// The compiler's own library keeps a module loaded until every thread that used it has ended, which
// may be never, and then unloads it from within. Its entry for that is replaced here.

#include <cxxabi.h>
#include <windows.h>

#include <memory>
#include <new>

namespace {

template <class Result, class First, class... Rest>
First first_argument(Result (*)(First, Rest...));

/// How destructors are called differs by processor.
using Destructor = decltype(first_argument(&abi::__cxa_thread_atexit));

/// An object of a thread, in front of those that were made before it.
struct Entry {
  Destructor destroy;
  void* object;
  Entry* before;
};

DWORD slot = FLS_OUT_OF_INDEXES;

void CALLBACK end_objects(void* last) {
  for (auto* entry = static_cast<Entry*>(last); entry != nullptr;) {
    const std::unique_ptr<Entry> ended(entry);
    entry = ended->before;
    ended->destroy(ended->object);
  }
}

void NTAPI on_module_event(void* /*module*/, DWORD reason, void* is_end_of_process) {
  if (reason == DLL_PROCESS_ATTACH) {
    slot = FlsAlloc(end_objects);
  } else if (reason == DLL_PROCESS_DETACH && is_end_of_process == nullptr) {
    FlsFree(slot);  // which ends the objects of all threads
  }
}

}  // namespace

namespace __cxxabiv1 {  // NOLINT(bugprone-reserved-identifier)

extern "C" int __cxa_thread_atexit(Destructor destroy, void* object,
                                   void* /*module*/) _GLIBCXX_NOTHROW {
  auto* const last = static_cast<Entry*>(FlsGetValue(slot));
  std::unique_ptr<Entry> entry(new (std::nothrow) Entry{destroy, object, last});
  if (!entry || FlsSetValue(slot, entry.get()) == FALSE) return -1;
  static_cast<void>(entry.release());
  return 0;
}

}  // namespace __cxxabiv1

// Called before the parts of the compiler's library that release the memory of the objects.
extern "C" __attribute__((section(".CRT$XLB"), used)) const PIMAGE_TLS_CALLBACK qel_module_event =
    on_module_event;
