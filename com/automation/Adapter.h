#pragma once

#include <functional>
#include <memory>
#include <type_traits>
#include <unordered_map>
#include <utility>

#include "com/automation/Arguments.h"
#include "com/automation/Automation.h"

namespace qel::com {

/// An object of the component that passes calls on to an object of the library. A derived class has
/// one line for each member of its interface.
template <class Class, class Interface, class... More>
class Members : public Automation<Interface, More...> {
 protected:
  Members() : Automation<Interface, More...>(Described<Class>::id()) {}

  virtual Class& object() const = 0;

  /// Calls a member of the library's object, or a function, with the converted arguments.
  template <class Member, class... Arguments>
  HRESULT call(Member member, Arguments... arguments) const {
    return this->guard([&] { invoke(member, arguments...); });
  }
  /// The same; the host gets the result.
  template <class Result, class Member, class... Arguments>
  HRESULT answer(Result* result, Member member, Arguments... arguments) const {
    if (result == nullptr) return E_POINTER;
    *result = {};
    return this->guard([&] { put_result(result, invoke(member, arguments...)); });
  }
  template <class Field, class Owner, class Argument>
  HRESULT set(Field Owner::*field, Argument argument) const {
    return this->guard([&] { object().*field = given(argument); });
  }

 private:
  template <class Member, class... Arguments>
  decltype(auto) invoke(Member member, Arguments... arguments) const {
    if constexpr (std::is_member_pointer_v<Member>) {
      return std::invoke(member, object(), given(arguments)...);
    } else {
      return std::invoke(member, given(arguments)...);
    }
  }
};

/// The registration of an adapter of a library object on this thread. As long as the host holds the
/// adapter, it gets the same one for the same library object.
template <class Class>
class Known {
 public:
  using Interface = typename Described<Class>::Interface;

  static Interface* find(const Class* object) {
    const Map& map = *of_thread();
    const auto place = map.find(object);
    return place == map.end() ? nullptr : place->second;
  }

  Known(const Class* object, Interface* adapter) : object_(object), map_(of_thread()) {
    map_->emplace(object, adapter);
  }
  Known(const Known&) = delete;
  Known& operator=(const Known&) = delete;
  ~Known() { map_->erase(object_); }

 private:
  using Map = std::unordered_map<const Class*, Interface*>;

  static const std::shared_ptr<Map>& of_thread() {
    thread_local const auto map = std::make_shared<Map>();
    return map;
  }

  const Class* object_;
  // Shared, since a host may release an object after its thread has ended.
  std::shared_ptr<Map> map_;
};

/// Represents an object of the library to the host, and shares its ownership.
template <class Class, class Interface>
class Adapter : public Members<Class, Interface, OwnObject<Class>> {
 public:
  explicit Adapter(std::shared_ptr<Class> object)
      : object_(std::move(object)), known_(object_.get(), this) {}

  std::shared_ptr<Class> behind() const override { return object_; }

 protected:
  Class& object() const override { return *object_; }

 private:
  const std::shared_ptr<Class> object_;
  const Known<Class> known_;
};

template <class Class>
typename Described<Class>::Interface* adapter_of(std::shared_ptr<Class> object) {
  using Interface = typename Described<Class>::Interface;
  if (!object) return nullptr;
  Interface* const known = Known<Class>::find(object.get());
  if (known != nullptr) return Pointer<Interface>(known).detach();
  return new typename Described<Class>::Adapter(std::move(object));
}

}  // namespace qel::com
