// The class table against what the factory knows and what the classes answer.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/core/ZCore.h"
#include "zdm/framework/ZRefPtr.h"
#include "zdm/module/ClassTable.h"

namespace {

std::vector<std::string> CreatableNames(bool builtOnly) {
  std::vector<std::string> names;
  for (const zdm::ClassInfo& row : zdm::GetClassTable()) {
    if (row.creatable && (row.built || !builtOnly)) names.emplace_back(row.name);
  }
  return names;
}

TEST(ClassTable, HoldsTheWholeLibrary) {
  EXPECT_EQ(CreatableNames(false).size(), 41u);
  EXPECT_EQ(zdm::GetClassTable().size(), 44u);
  EXPECT_STREQ(zdm::GetClassTable().front().name, "CZCategoryReltn");
  EXPECT_STREQ(zdm::GetClassTable().back().name, "ZReltnVisitorStatus");
}

TEST(ClassTable, IsRegisteredInItsOrder) {
  std::vector<std::string> registered;
  for (const CZRClass* description : ZCore::GetZFactory()->GetClasses()) {
    if (!(description->GetModuleID() == zdm::Module::kID)) continue;
    EXPECT_STREQ(description->GetModuleName(), "ZDM");
    EXPECT_EQ(description->GetFlag(), 1);
    registered.emplace_back(description->GetName());
  }
  EXPECT_EQ(registered, CreatableNames(true));
}

TEST(ClassTable, EveryClassAnswersToExactlyTheInterfacesOfItsRow) {
  for (const zdm::ClassInfo& row : zdm::GetClassTable()) {
    if (!row.creatable || !row.built) continue;
    SCOPED_TRACE(row.name);
    CZObject* created = ZCore::GetZFactory()->Create(row.classId);
    ASSERT_NE(created, nullptr);
    const auto object = zdm::Attached(created->GetIZObject());
    ASSERT_NE(object.Get(), nullptr);
    EXPECT_EQ(object->GetReferenceCount(), 1u);
    for (unsigned short id = 1; const char* name = CZObject::GetInterfaceName(id); ++id) {
      const bool wanted =
          std::any_of(row.interfaces.begin(), row.interfaces.end(),
                      [&](const char* listed) { return std::string(listed) == name; });
      EXPECT_EQ(object->IsA(id), wanted) << name;
      EXPECT_EQ(zdm::FindView(object, id) != nullptr, wanted) << name;
    }
  }
}

TEST(InterfaceNames, AreRegisteredInTheirOrderFromOne) {
  EXPECT_EQ(zdm::kInterfaceNameCount, 364u);
  std::vector<unsigned short> ids(zdm::interfaceIDs, zdm::interfaceIDs + zdm::kInterfaceNameCount);
  std::sort(ids.begin(), ids.end());
  EXPECT_EQ(std::adjacent_find(ids.begin(), ids.end()), ids.end());
  EXPECT_EQ(ids.front(), 1);
  EXPECT_EQ(ids.back(), 364);
  EXPECT_STREQ(CZObject::GetInterfaceName(ZInterface<IZXrefInfo>::ID()), "IZXrefInfo");
}

}  // namespace
