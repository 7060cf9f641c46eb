// How a class plugs into the framework. Its row names it once: class name, class identifier,
// interfaces answered. ZDM_OBJECT in the class body reads the row and brings the class identifier,
// the descriptor and the query operations, so a class without a row does not compile;
// ZDM_OBJECT_BODY in one source file brings the descriptor and its registration.
//
//   // in a header that includes this one and IZObjectImpl.h, at global scope
//   struct MyModule {  // whose classes they are
//     static constexpr GUID kID = zdm::ParseGuid("11111111-2222-3333-4444-000000000001");
//     static constexpr const char* kName = "MY";
//   };
//   struct IMy : IZObject {
//     virtual LONG Answer() = 0;
//   };
//   ZDM_DECLARE_INTERFACE(IMy)
//   class CMyObject;
//   ZDM_CLASS_ROW(MyModule, true, CMyObject, "11111111-2222-3333-4444-000000000002", IZObject, IMy)
//
//   class CMyObject : public IZObjectImpl<IMy> {
//     ZDM_OBJECT(CMyObject)  // what follows is public
//     LONG Answer() override { return 42; }
//   };
//
//   ZDM_OBJECT_BODY(CMyObject)  // in the source file
//   CMyObject::zInit();         // once, when the host starts
//   ZRefPtr<IMy> mine = zdm::CreateAs<IMy>(CMyObject::kClassID);  // see CreateAs.h
#pragma once

#include "platform/core/CZRClass.h"
#include "platform/core/IZObject.h"
#include "zdm/framework/ZInterface.h"

#include <new>
#include <type_traits>
#include <utility>

namespace zdm {

constexpr ULONGLONG kNoOffset = ~ULONGLONG{0};
constexpr unsigned short kClassFlag = 1;  // alike for every class of the library; its version

template <class... I>
struct InterfaceList {};

/// The row of class C; see ZDM_CLASS_ROW.
template <class C>
struct ClassRow;

/// Parses "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX", in either case, at compile time; anything else
/// does not compile.
consteval GUID ParseGuid(const char (&text)[37]) {
  int at = 0;
  const auto next = [&](int digits) {
    ULONGLONG value = 0;
    for (; digits > 0; --digits, ++at) {
      const char c = text[at];
      if (c >= '0' && c <= '9') {
        value = value * 16 + static_cast<unsigned>(c - '0');
      } else if (c >= 'A' && c <= 'F') {
        value = value * 16 + static_cast<unsigned>(c - 'A' + 10);
      } else if (c >= 'a' && c <= 'f') {
        value = value * 16 + static_cast<unsigned>(c - 'a' + 10);
      } else {
        throw "not a hex digit";
      }
    }
    return value;
  };
  const auto hyphen = [&] {
    if (text[at++] != '-') throw "not a hyphen";
  };
  GUID guid = {};
  guid.Data1 = static_cast<decltype(guid.Data1)>(next(8));
  hyphen();
  guid.Data2 = static_cast<decltype(guid.Data2)>(next(4));
  hyphen();
  guid.Data3 = static_cast<decltype(guid.Data3)>(next(4));
  hyphen();
  for (int i = 0; i < 8; ++i) {
    if (i == 2) hyphen();
    guid.Data4[i] = static_cast<BYTE>(next(2));
  }
  return guid;
}

template <class I, class C, class... All>
I* CanonicalView(C* object, InterfaceList<All...>);

/// The one view of `object` for interface I. Where I is a base more than once (IZObject almost
/// always is), the view inside the first interface of the row that leads to it without ambiguity.
template <class I, class C>
I* CanonicalView(C* object) {
  static_assert(std::is_base_of_v<I, C>, "the class answers to an interface it does not implement");
  if constexpr (std::is_convertible_v<C*, I*>) {
    return static_cast<I*>(object);
  } else {
    return CanonicalView<I>(object, typename ClassRow<C>::Interfaces{});
  }
}

template <class I, class C, class... All>
I* CanonicalView(C* object, InterfaceList<All...>) {
  I* view = nullptr;
  const auto through = [&]<class J>(std::type_identity<J>) {
    if constexpr (std::is_convertible_v<C*, J*> && std::is_convertible_v<J*, I*>) {
      if (view == nullptr) view = static_cast<I*>(static_cast<J*>(object));
    }
  };
  static_assert(((std::is_convertible_v<C*, All*> && std::is_convertible_v<All*, I*>) || ...),
                "no interface of the row leads to this one without ambiguity");
  (through(std::type_identity<All>{}), ...);
  return view;
}

template <class C, class... All>
ULONGLONG OffsetOfInterface(C* object, unsigned short id, InterfaceList<All...>) {
  ULONGLONG offset = kNoOffset;
  const auto matches = [&]<class I>(std::type_identity<I>) {
    if (id != ZInterface<I>::ID()) return false;
    offset = static_cast<ULONGLONG>(reinterpret_cast<char*>(CanonicalView<I>(object)) -
                                    reinterpret_cast<char*>(object));
    return true;
  };
  static_cast<void>((matches(std::type_identity<All>{}) || ...));
  return offset;
}

/// The IZObject view; every class answers to it.
template <class C, class... All>
IZObject* ObjectView(C* object, InterfaceList<All...>) {
  static_assert((std::is_same_v<All, IZObject> || ...), "the row does not list IZObject");
  return CanonicalView<IZObject>(object);
}

/// A new object, or null without memory.
template <class C>
CZObject* CreateObject() {
  try {
    return new C;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

inline void DestroyObject(CZObject* object) { delete object; }

/// Registers class C with the factory; see newZRClass. Null for a class that is not creatable.
template <class C>
CZRClass* RegisterClass() {
  using Row = ClassRow<C>;
  if constexpr (Row::kCreatable) {
    return newZRClass(Row::Module::kID, Row::Module::kName, Row::kClassID, Row::kName,
                      &CreateObject<C>, &DestroyObject, kClassFlag);
  } else {
    return nullptr;
  }
}

}  // namespace zdm

/// A row: a module (a type with `kID` and `kName`), whether the factory creates the class, the
/// class, its identifier and every interface it answers to.
#define ZDM_CLASS_ROW(ModuleType, creatable, Class, classId, ...) \
  template <>                                                     \
  struct zdm::ClassRow<Class> {                                   \
    using Module = ModuleType;                                    \
    using Interfaces = zdm::InterfaceList<__VA_ARGS__>;           \
    static constexpr bool kCreatable = creatable;                 \
    static constexpr const char* kName = #Class;                  \
    static constexpr GUID kClassID = zdm::ParseGuid(classId);     \
  };

/// In the class body, behind the class's row; leaves the access public. Offsets are computed from
/// this class's own `this`, so they also hold in a class derived from it. kClassID is a reference,
/// since a value would be one of those that Windows imports from the class's own module.
#define ZDM_OBJECT(Class)                                                                  \
 public:                                                                                   \
  static constexpr const GUID& kClassID = zdm::ClassRow<Class>::kClassID;                  \
  static CZRClass* gpDesc;                                                                 \
  static CZRClass* zInit();                                                                \
  CZRClass* getZRClass() const override { return gpDesc; }                                 \
  bool IsA(unsigned short id) override { return _GetOffsetofClass(id) != zdm::kNoOffset; } \
  ULONGLONG _GetOffsetofClass(unsigned short id) override {                                \
    return zdm::OffsetOfInterface(this, id, zdm::ClassRow<Class>::Interfaces{});           \
  }                                                                                        \
  IZObject* GetIZObject() override {                                                       \
    return zdm::ObjectView(this, zdm::ClassRow<Class>::Interfaces{});                      \
  }                                                                                        \
  void* GetLPVOID() override { return this; }                                              \
  virtual ULONG getVersion() const {                                                       \
    const CZRClass* description = getZRClass();                                            \
    return description != nullptr ? description->GetVersion() : 0;                         \
  }

/// In one source file of the class.
#define ZDM_OBJECT_BODY(Class)            \
  CZRClass* Class::gpDesc = nullptr;      \
  CZRClass* Class::zInit() {              \
    gpDesc = zdm::RegisterClass<Class>(); \
    return gpDesc;                        \
  }
