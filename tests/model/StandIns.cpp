#include "tests/model/StandIns.h"

#include "platform/core/IZStream.h"
#include "zdm/relations/IZReltnVisitor.h"

namespace zdm::test {

ZDM_OBJECT_BODY(ExtItem)
ZDM_OBJECT_BODY(ExtItems)
ZDM_OBJECT_BODY(ExtMgr)
ZDM_OBJECT_BODY(ParamArray)

void RegisterStandIns() {
  ExtItem::zInit();
  ExtMgr::zInit();
  ParamArray::zInit();
}

void ExtItem::Clone(IZExtData** out) {
  auto copy = MakeObject<IZExtData, ExtItem>(name_.Get());
  *out = copy.Detach();
}

void ExtItems::Clone(IZExtDataCollection** out) {
  auto copy = MakeObject<IZExtDataCollection, ExtItems>();
  copy->CopyFrom(this);
  *out = copy.Detach();
}

void ExtItems::CopyFrom(IZExtDataCollection* source) {
  RemoveAll();
  for (LONGLONG pos = source->GetHeadPosition(); pos != 0;) {
    ZRefPtr<IZExtData> copy;
    source->GetNext(pos)->Clone(copy.Out());
    AddTail(copy);
  }
}

void ExtItems::Save(IZStream* stream, IZDatabase* database) {
  stream->WriteCount(GetCount());
  for (LONGLONG pos = GetHeadPosition(); pos != 0;) GetNext(pos)->Save(stream, database);
}

void ExtItems::Load(IZStream* stream, IZDatabase* database) {
  for (LONG left = stream->ReadCount(); left > 0; --left) {
    auto item = MakeObject<IZExtData, ExtItem>();
    item->Load(stream, database);
    AddTail(item);
  }
}

IZExtDataCollection* ExtMgr::GetCollection(const GUID& key) {
  const auto found = groups_.find(key.Data1);
  return found != groups_.end() ? found->second.Get() : nullptr;
}

IZExtDataCollection* ExtMgr::QueryCollection(const GUID& key) {
  auto& group = groups_[key.Data1];
  if (group == nullptr) group = MakeObject<IZExtDataCollection, ExtItems>();
  return group;
}

void ExtMgr::Clone(IZExtDataMgr** out) {
  auto copy = MakeObject<IZExtDataMgr, ExtMgr>();
  for (const auto& [key, group] : groups_) {
    GUID guid = {};
    guid.Data1 = key;
    copy->QueryCollection(guid)->CopyFrom(group);
  }
  *out = copy.Detach();
}

void ExtMgr::Save(IZStream* stream, IZDatabase* database) {
  stream->WriteCount(static_cast<LONG>(groups_.size()));
  for (const auto& [key, group] : groups_) {
    stream->WriteCount(static_cast<LONG>(key));
    group->Save(stream, database);
  }
}

void ExtMgr::Load(IZStream* stream, IZDatabase* database) {
  for (LONG left = stream->ReadCount(); left > 0; --left) {
    GUID key = {};
    key.Data1 = static_cast<ULONG>(stream->ReadCount());
    QueryCollection(key)->Load(stream, database);
  }
}

bool ParamArray::Note(const char* call) {
  calls += calls.empty() ? call : std::string(" ") + call;
  return true;
}

IZParameter* ParamArray::GetParameter(const GUID&) {
  Note("GetParameter");
  return nullptr;
}

void ParamArray::Clone(IZParameterArray** out) {
  auto copy = Attached(new ParamArray);
  copy->relation = CloneAs<IZSingleReltn>(relation.Get());
  *out = copy.Detach();
}

bool ParamArray::GetParamRelation(const GUID*, IZDMObject** out) {
  *out = relation != nullptr ? relation->GetReltnObject() : nullptr;
  if (*out != nullptr) (*out)->AddRef();
  return Note("GetParamRelation");
}

void ParamArray::Save(IZStream* stream, IZDatabase* database) {
  stream->WriteFlag(relation != nullptr);
  if (relation != nullptr) relation->Save(stream, database);
}

void ParamArray::Load(IZStream* stream, IZDatabase* database) {
  if (!stream->ReadFlag()) return;
  relation = MakeObject<IZSingleReltn, CZPlainSingleReltn>();
  relation->Load(stream, database);
}

bool ParamArray::Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) {
  return relation != nullptr && visitor->Visit(root, owner, relation);
}

}  // namespace zdm::test
