#include "tests/model/StandIns.h"

#include "platform/core/IZStream.h"
#include "zdm/relations/IZReltnVisitor.h"

namespace zdm::test {

ZDM_OBJECT_BODY(ParamArray)

void RegisterStandIns() { ParamArray::zInit(); }

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
