// The order of operations of the framework's interfaces, as a caller compiled elsewhere sees it.
#include "platform/core/IZStream.h"
#include "tests/support/SlotOf.h"
#include "tests/support/TestClasses.h"

namespace {

using namespace zdm::test;

TEST(Slots, CZObject) {
  EXPECT_EQ(zdm::test::SlotOf(&CZObject::getZRClass), 0);
  // Place 1 is the destructor.
  ZDM_EXPECT_SLOTS(2, CZObject, EqualTo, IsA, _GetOffsetofClass, GetZRID, GetZRMID, GetClassID,
                   GetObjectCLSID, GetIZObject, GetLPVOID, AddAggregation, GetAggregation,
                   RemoveAggregation, HasAggregation);
}

TEST(Slots, IZObject) { ZDM_EXPECT_SLOTS(0, IZObject, Release, AddRef, Clone); }

TEST(Slots, IZStream) {
  ZDM_EXPECT_SLOTS(3, IZStream, Read, Write, Seek, GetPosition, ReadBSTR, WriteBSTR, ReadFlag,
                   WriteFlag, ReadCount, WriteCount, AttachStream, GetIStream, Recover,
                   GetBytesLeft);
}

TEST(Slots, IZList) {
  ZDM_EXPECT_SLOTS(3, ITestColl, GetHead, GetTail, RemoveHead, RemoveTail, RemoveItem, AddHead,
                   AddTail, GetNext, GetPrev, GetAt, SetAt, InsertAfter, InsertBefore, Find, Has,
                   GetCount, IsEmpty, RemoveHeadNoReturn, RemoveTailNoReturn, RemoveAll,
                   GetHeadPosition, GetTailPosition, RemoveAt, MoveToHead, MoveToTail, SwapElements,
                   FindIndex, MovePrev, MoveNext, AddHeadColl, AddTailColl);
}

}  // namespace
