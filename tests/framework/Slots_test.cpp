// The order of operations of the framework's interfaces, as a caller compiled elsewhere sees it.
#include "platform/core/IZStream.h"
#include "tests/support/SlotOf.h"
#include "tests/support/TestClasses.h"

namespace {

using zdm::test::ExpectInOrder;

TEST(Slots, CZObject) {
  EXPECT_EQ(zdm::test::SlotOf(&CZObject::getZRClass), 0);
  // Place 1 is the destructor.
  ExpectInOrder(2, {ZDM_SLOT(CZObject, EqualTo), ZDM_SLOT(CZObject, IsA),
                    ZDM_SLOT(CZObject, _GetOffsetofClass), ZDM_SLOT(CZObject, GetZRID),
                    ZDM_SLOT(CZObject, GetZRMID), ZDM_SLOT(CZObject, GetClassID),
                    ZDM_SLOT(CZObject, GetObjectCLSID), ZDM_SLOT(CZObject, GetIZObject),
                    ZDM_SLOT(CZObject, GetLPVOID), ZDM_SLOT(CZObject, AddAggregation),
                    ZDM_SLOT(CZObject, GetAggregation), ZDM_SLOT(CZObject, RemoveAggregation),
                    ZDM_SLOT(CZObject, HasAggregation)});
}

TEST(Slots, IZObject) {
  ExpectInOrder(
      0, {ZDM_SLOT(IZObject, Release), ZDM_SLOT(IZObject, AddRef), ZDM_SLOT(IZObject, Clone)});
}

TEST(Slots, IZStream) {
  ExpectInOrder(3, {ZDM_SLOT(IZStream, Read), ZDM_SLOT(IZStream, Write), ZDM_SLOT(IZStream, Seek),
                    ZDM_SLOT(IZStream, GetPosition), ZDM_SLOT(IZStream, ReadBSTR),
                    ZDM_SLOT(IZStream, WriteBSTR), ZDM_SLOT(IZStream, ReadFlag),
                    ZDM_SLOT(IZStream, WriteFlag), ZDM_SLOT(IZStream, ReadCount),
                    ZDM_SLOT(IZStream, WriteCount), ZDM_SLOT(IZStream, AttachStream),
                    ZDM_SLOT(IZStream, GetIStream), ZDM_SLOT(IZStream, Recover),
                    ZDM_SLOT(IZStream, GetBytesLeft)});
}

TEST(Slots, IZList) {
  ExpectInOrder(3, {ZDM_SLOT(ITestColl, GetHead),
                    ZDM_SLOT(ITestColl, GetTail),
                    ZDM_SLOT(ITestColl, RemoveHead),
                    ZDM_SLOT(ITestColl, RemoveTail),
                    ZDM_SLOT(ITestColl, RemoveItem),
                    ZDM_SLOT(ITestColl, AddHead),
                    ZDM_SLOT(ITestColl, AddTail),
                    ZDM_SLOT(ITestColl, GetNext),
                    ZDM_SLOT(ITestColl, GetPrev),
                    ZDM_SLOT(ITestColl, GetAt),
                    ZDM_SLOT(ITestColl, SetAt),
                    ZDM_SLOT(ITestColl, InsertAfter),
                    ZDM_SLOT(ITestColl, InsertBefore),
                    ZDM_SLOT(ITestColl, Find),
                    ZDM_SLOT(ITestColl, Has),
                    ZDM_SLOT(ITestColl, GetCount),
                    ZDM_SLOT(ITestColl, IsEmpty),
                    ZDM_SLOT(ITestColl, RemoveHeadNoReturn),
                    ZDM_SLOT(ITestColl, RemoveTailNoReturn),
                    ZDM_SLOT(ITestColl, RemoveAll),
                    ZDM_SLOT(ITestColl, GetHeadPosition),
                    ZDM_SLOT(ITestColl, GetTailPosition),
                    ZDM_SLOT(ITestColl, RemoveAt),
                    ZDM_SLOT(ITestColl, MoveToHead),
                    ZDM_SLOT(ITestColl, MoveToTail),
                    ZDM_SLOT(ITestColl, SwapElements),
                    ZDM_SLOT(ITestColl, FindIndex),
                    ZDM_SLOT(ITestColl, MovePrev),
                    ZDM_SLOT(ITestColl, MoveNext),
                    ZDM_SLOT(ITestColl, AddHeadColl),
                    ZDM_SLOT(ITestColl, AddTailColl)});
}

}  // namespace
