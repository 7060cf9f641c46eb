#include "tests/support/TestClasses.h"

#include <sstream>

namespace zdm::test {

ZDM_OBJECT_BODY(Element)
ZDM_OBJECT_BODY(Stranger)
ZDM_OBJECT_BODY(Twofold)
ZDM_OBJECT_BODY(Reserved)
ZDM_OBJECT_BODY(Coll)

namespace {

void Append(std::string& names, ITestElement* element) {
  if (!names.empty()) names += ' ';
  names += element != nullptr ? element->Name() : "-";
}

}  // namespace

ZRefPtr<ITestColl> MakeColl(const std::string& names) {
  auto coll = MakeObject<ITestColl, Coll>();
  std::istringstream words(names);
  for (std::string name; words >> name;) coll->AddTail(MakeObject<ITestElement, Element>(name));
  return coll;
}

std::string NamesIn(ITestColl& coll) {
  std::string names;
  for (LONGLONG pos = coll.GetHeadPosition(); pos != 0;) Append(names, coll.GetNext(pos));
  return names;
}

std::string NamesBackwards(ITestColl& coll) {
  std::string names;
  for (LONGLONG pos = coll.GetTailPosition(); pos != 0;) Append(names, coll.GetPrev(pos));
  return names;
}

LONGLONG PositionOf(ITestColl& coll, const std::string& name) {
  for (LONGLONG pos = coll.GetHeadPosition(); pos != 0;) {
    const LONGLONG at = pos;
    ITestElement* element = coll.GetNext(pos);
    if (element != nullptr && element->Name() == name) return at;
  }
  return 0;
}

}  // namespace zdm::test
