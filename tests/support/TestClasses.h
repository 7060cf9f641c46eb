// Small classes of a test module: elements that count their own lives, and a collection of them.
#pragma once

#include "zdm/framework/IZListImpl.h"
#include "zdm/framework/ZClass.h"

#include <string>

namespace zdm::test {

struct TestModule {
  static constexpr GUID kID = ParseGuid("7E570000-0000-4000-8000-000000000001");
  static constexpr const char* kName = "TEST";
};

class Element;
class Stranger;
class Twofold;

}  // namespace zdm::test

/// Declares a class of zdm::test that the factory does not make, and its row.
#define ZDM_TEST_CLASS(Class, ...)                              \
  namespace zdm::test {                                         \
  class Class;                                                  \
  }                                                             \
  ZDM_CLASS_ROW(zdm::test::TestModule, false, zdm::test::Class, \
                "00000000-0000-0000-0000-000000000000", __VA_ARGS__)

struct ITestElement : IZObject {
  virtual const std::string& Name() = 0;  // 3
};

struct ITestColl : IZList<IZObject, ITestColl, ITestElement> {};

/// A second interface beside an element's.
struct ITestExtra : IZObject {
  virtual int Extra() = 0;  // 3
};

ZDM_DECLARE_INTERFACE(ITestElement)
ZDM_DECLARE_INTERFACE(ITestColl)
ZDM_DECLARE_INTERFACE(ITestExtra)

ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::Element,
              "7E570000-0000-4000-8000-000000000002", IZObject, ITestElement)
ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::Stranger,
              "7E570000-0000-4000-8000-000000000003", IZObject)
ZDM_TEST_CLASS(Coll, IZObject, ITestColl)
ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::Twofold,
              "7E570000-0000-4000-8000-000000000004", IZObject, ITestElement, ITestExtra)

ZDM_TEST_CLASS(Reserved, IZObject, ITestElement)

namespace zdm::test {

class Element : public IZObjectImpl<ITestElement> {
  ZDM_OBJECT(Element)
 public:
  explicit Element(std::string name = {}) : name_(std::move(name)) { ++alive; }
  Element(const Element& other) : CZObject(other), IZObjectImpl(other), name_(other.name_) {
    ++alive;
  }
  Element& operator=(const Element& other) = default;
  ~Element() override { --alive; }

  IZObject* Clone() override {
    auto* copy = new Element(*this);
    copy->ForgetReference();
    return copy;
  }
  const std::string& Name() override { return name_; }

  inline static int alive = 0;

 private:
  std::string name_;
};

/// Answers to IZObject only.
class Stranger : public IZObjectImpl<IZObject> {
  ZDM_OBJECT(Stranger)
};

/// Two interfaces, so two IZObject parts, over one count.
class Twofold : public IZObjectImpl<ITestElement>, public IZObjectImpl<ITestExtra> {
  ZDM_OBJECT(Twofold)
 public:
  ~Twofold() override { ++destroyed; }
  const std::string& Name() override { return name_; }
  int Extra() override { return 42; }

  inline static int destroyed = 0;

 private:
  std::string name_ = "twofold";
};

/// Implements a second interface that its row does not list.
class Reserved : public IZObjectImpl<ITestElement>, public IZObjectImpl<ITestExtra> {
  ZDM_OBJECT(Reserved)
 public:
  const std::string& Name() override { return name_; }
  int Extra() override { return 43; }

 private:
  std::string name_ = "reserved";
};

class Coll : public IZListImpl<ITestColl, ITestElement> {
  ZDM_OBJECT(Coll)
};

/// A collection of new elements, named by the words of `names`.
ZRefPtr<ITestColl> MakeColl(const std::string& names = {});
/// Names from head to tail, separated by blanks; "-" for a null element.
std::string NamesIn(ITestColl& coll);
/// The same from tail to head, to check the links backwards.
std::string NamesBackwards(ITestColl& coll);
/// Position of the first element of that name; 0 if none.
LONGLONG PositionOf(ITestColl& coll, const std::string& name);

}  // namespace zdm::test
