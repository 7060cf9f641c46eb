#include "zdm/model/EmbeddedRecord.h"

#include "platform/core/IZStream.h"
#include "platform/ole/CAtlException.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/framework/LoadDepth.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/module/ClassTable.h"
#include "zdm/relations/IZReltnCollector.h"

namespace {

#pragma pack(push, 1)
struct Fields {
  USHORT word;
  BYTE kind;
  ULONGLONG mask;
};
#pragma pack(pop)
static_assert(sizeof(Fields) == 11, "the end of the record is written as it lies");

// The mask that every status word holds: the collector's strict test then picks every relation.
constexpr auto kEveryRelation = static_cast<eZRelation>(0);

template <class Action>
void ForEach(IZReltnColl* relations, Action action) {
  if (relations == nullptr) return;
  for (LONGLONG pos = relations->GetHeadPosition(); pos != 0;) {
    if (IZRelation* relation = relations->GetNext(pos)) action(*relation);
  }
}

}  // namespace

// Embedded record, little-endian; nothing at all in the format without one.
//   size      field
//     16      module identifier
//      4      number of relations, signed; below 1 for none
//   variable  for each relation its class identifier, 16 bytes, then its own record
//      2      word
//      1      kind
//      8      mask
void zdm::EmbeddedRecord::SaveModuleGuid(IZStream* stream) const {
  if (IsStored()) stream->Write(&moduleGuid, sizeof(moduleGuid));
}

void zdm::EmbeddedRecord::LoadModuleGuid(IZStream* stream) {
  if (!IsStored()) return;
  GUID read;
  stream->Read(&read, sizeof(read));
  moduleGuid = read;
}

void zdm::EmbeddedRecord::SaveRelations(IZStream* stream, IZDatabase* database) const {
  if (!IsStored()) return;
  LONG count = 0;
  ForEach(relations, [&](IZRelation&) { ++count; });
  stream->Write(&count, sizeof(count));
  ForEach(relations, [&](IZRelation& relation) {
    GUID classId = GUID_NULL;
    relation.GetClassID(&classId);
    stream->Write(&classId, sizeof(classId));
    relation.Save(stream, database);
  });
}

void zdm::EmbeddedRecord::LoadRelations(IZStream* stream, IZDatabase* database) {
  if (!IsStored()) return;
  const LoadDepth nested;
  LONG count = 0;
  stream->Read(&count, sizeof(count));
  if (count > 0) relations = NewRelations();
  for (; count > 0; --count) {
    GUID classId = GUID_NULL;
    stream->Read(&classId, sizeof(classId));
    const ZRefPtr<IZRelation> relation = CreateAs<IZRelation>(classId);
    if (relation == nullptr) throw CAtlException(E_FAIL);
    relation->Load(stream, database);
    relations->AddTail(relation);
  }
}

void zdm::EmbeddedRecord::SaveFields(IZStream* stream) const {
  const Fields fields = {word, kind, mask};
  if (IsStored()) stream->Write(&fields, sizeof(fields));
}

void zdm::EmbeddedRecord::LoadFields(IZStream* stream) {
  if (!IsStored()) return;
  Fields fields;
  stream->Read(&fields, sizeof(fields));
  word = fields.word;
  kind = fields.kind;
  mask = fields.mask;
}

ZRefPtr<IZReltnColl> zdm::NewRelations() {
  auto relations = CreateAs<IZReltnColl>(ClassRow<CZReltnColl>::kClassID);
  if (relations == nullptr) throw CAtlException(E_OUTOFMEMORY);
  return relations;
}

ZRefPtr<IZReltnColl> zdm::GatherRelations(IZDMObject& object) {
  auto relations = NewRelations();
  ViewAs<IZReltnCollector>(relations)->SetReltnType(kEveryRelation);
  object.VisitReferences(&object, ViewAs<IZReltnVisitor>(relations));
  return relations;
}
