// A program of somebody else's, built against the installed package: a class and a collection of
// its own, as the heads of ZClass.h and IZListImpl.h show them, and a stream in memory.
#include <platform/core/CZStream.h>
#include <platform/ole/OleRef.h>
#include <zdm/framework/CreateAs.h>
#include <zdm/framework/IZListImpl.h>
#include <zdm/module/ClassTable.h>
#include <zdm/relations/CZReltnColl.h>

#include <cstdio>

struct MyModule {
  static constexpr GUID kID = zdm::ParseGuid("11111111-2222-3333-4444-000000000001");
  static constexpr const char* kName = "MY";
};

struct IMy : IZObject {
  virtual LONG Answer() = 0;
};
struct IMyColl : IZList<IZObject, IMyColl, IMy> {};
ZDM_DECLARE_INTERFACE(IMy)
ZDM_DECLARE_INTERFACE(IMyColl)

class CMyObject;
class CMyColl;
ZDM_CLASS_ROW(MyModule, true, CMyObject, "11111111-2222-3333-4444-000000000002", IZObject, IMy)
ZDM_CLASS_ROW(MyModule, true, CMyColl, "11111111-2222-3333-4444-000000000003", IZObject, IMyColl)

class CMyObject : public IZObjectImpl<IMy> {
  ZDM_OBJECT(CMyObject)
  LONG Answer() override { return 42; }
};
class CMyColl : public IZListImpl<IMyColl, IMy> {
  ZDM_OBJECT(CMyColl)
};
ZDM_OBJECT_BODY(CMyObject)
ZDM_OBJECT_BODY(CMyColl)

namespace {

LONG ThroughMemory(LONG value) {
  zdm::OleRef<IStream> memory;
  if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, memory.Out()))) return -1;
  const ZRefPtr<IZStream> stream = zdm::CreateAs<IZStream>(CZStream::kClassID);
  if (stream == nullptr || FAILED(stream->AttachStream(memory.Get()))) return -1;
  stream->WriteCount(value);
  stream->Seek(0, STREAM_SEEK_SET);
  const LONG read = stream->ReadCount();
  return SUCCEEDED(stream->AttachStream(nullptr)) ? read : -1;
}

}  // namespace

int main() {
  if (CMyObject::zInit() == nullptr || CMyColl::zInit() == nullptr) return 1;
  const auto coll = zdm::CreateAs<IMyColl, CMyColl>();
  if (coll == nullptr) return 1;
  coll->AddTail(zdm::CreateAs<IZObject>(CMyObject::kClassID));
  coll->AddTail(zdm::CreateAs<IZObject>(CZReltnColl::kClassID));  // no IMy: a null element
  LONG sum = 0;
  for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) {
    if (IMy* element = coll->GetNext(pos)) sum += element->Answer();
  }
  std::printf("%zu classes, a sum of %d\n", zdm::GetClassTable().size(), static_cast<int>(sum));
  const bool sound = zdm::GetClassTable().size() == 44 && coll->GetCount() == 2 && sum == 42;
  return sound && ThroughMemory(3) == 3 ? 0 : 1;
}
