// The class table against what the factory knows and what the classes answer.
#include "zdm/module/ClassTable.h"

#include "platform/core/CZStream.h"
#include "platform/core/ZCore.h"
#include "platform/system/Text.h"
#include "zdm/framework/ZRefPtr.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

std::vector<std::string> CreatableNames() {
  std::vector<std::string> names;
  for (const zdm::ClassInfo& row : zdm::GetClassTable()) {
    if (row.creatable) names.emplace_back(row.name);
  }
  return names;
}

TEST(ClassTable, IsRegisteredInItsOrder) {
  std::vector<std::string> registered;
  for (const CZRClass* description : ZCore::GetZFactory()->GetClasses()) {
    if (!(description->GetModuleID() == zdm::Module::kID)) continue;
    EXPECT_STREQ(description->GetModuleName(), "ZDM");
    EXPECT_EQ(description->GetFlag(), 1);
    registered.emplace_back(description->GetName());
  }
  EXPECT_EQ(registered, CreatableNames());
}

/// Asks `object` for every interface name there is.
void ExpectAnswersExactly(CZObject& object, std::span<const char* const> interfaces) {
  for (unsigned short id = 1; const char* name = CZObject::GetInterfaceName(id); ++id) {
    const bool wanted = std::any_of(interfaces.begin(), interfaces.end(), [&](const char* listed) {
      return std::string(listed) == name;
    });
    EXPECT_EQ(object.IsA(id), wanted) << name;
    EXPECT_EQ(zdm::FindView(&object, id) != nullptr, wanted) << name;
  }
}

TEST(ClassTable, EveryClassAnswersToExactlyTheInterfacesOfItsRow) {
  for (const zdm::ClassInfo& row : zdm::GetClassTable()) {
    if (!row.creatable) continue;
    SCOPED_TRACE(row.name);
    CZObject* created = ZCore::GetZFactory()->Create(row.classId);
    ASSERT_NE(created, nullptr);
    const auto object = zdm::Attached(created->GetIZObject());
    ASSERT_NE(object.Get(), nullptr);
    EXPECT_EQ(object->GetReferenceCount(), 1u);
    ExpectAnswersExactly(*object, row.interfaces);
  }
  constexpr const char* kOfStream[] = {"IZObject", "IZStream"};
  CZStream stream;
  ExpectAnswersExactly(stream, kOfStream);
}

/// Guards names, class identifiers, interfaces and their order against a slip of the hand.
TEST(ClassTable, RowsAreTheAgreedOnes) {
  ULONGLONG digest = 0xCBF29CE484222325;  // FNV-1a
  const auto add = [&](const std::string& text) {
    for (const char c : text) digest = (digest ^ static_cast<BYTE>(c)) * 0x100000001B3;
  };
  for (const zdm::ClassInfo& row : zdm::GetClassTable()) {
    OLECHAR classId[39];
    StringFromGUID2(row.classId, classId, 39);
    add(row.name + zdm::ToUtf8(classId));
    for (const char* name : row.interfaces) add(std::string(",") + name);
  }
  EXPECT_EQ(digest, 0x45222E854A18204A);
}

TEST(InterfaceNames, AreRegisteredInTheirOrderFromOne) {
  EXPECT_EQ(zdm::kInterfaceNameCount, 364u);
  for (unsigned i = 0; i < zdm::kInterfaceNameCount; ++i) {
    EXPECT_EQ(zdm::interfaceIDs[i], i + 1);
  }
  EXPECT_STREQ(CZObject::GetInterfaceName(1), "IExpressions");
  EXPECT_STREQ(CZObject::GetInterfaceName(ZInterface<IZXrefInfo>::ID()), "IZXrefInfo");
}

}  // namespace
