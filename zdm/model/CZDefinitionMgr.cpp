#include "zdm/model/CZDefinitionMgr.h"

#include "zdm/identity/ObjectOptions.h"
#include "zdm/model/IZDefinition.h"

#include <algorithm>

ZDM_OBJECT_BODY(CZDefinitionMgr)

CZDefinitionMgr::CZDefinitionMgr() {
  SetName(OLESTR("*DefinitionMgr"));
  ClearOptionAllowed(zdm::kReferencesCount);
}

CZDefinitionMgr::~CZDefinitionMgr() = default;

// Definitions.

void CZDefinitionMgr::AddDefinition(IZObject* definition) {
  AddTail(zdm::ViewAs<IZDMObject>(definition));
}

template <class Accepts>
IZDefinition* CZDefinitionMgr::FindFirst(Accepts accepts) {
  for (POSITION pos = CZList::GetHeadPosition(); pos != nullptr;) {
    IZDMObject* object = CZList::GetNext(pos);
    auto* definition = zdm::ViewAs<IZDefinition>(object);
    if (definition != nullptr && accepts(*definition) && object->IsObjectValid()) return definition;
  }
  return nullptr;
}

IZDefinition* CZDefinitionMgr::FindDefinition(const GUID* key) {
  if (key == nullptr || *key == GUID_NULL) return nullptr;
  return FindFirst([&](IZDefinition& definition) { return definition.MatchKey(*key); });
}

bool CZDefinitionMgr::HasDefinition(const GUID* key) {
  if (key == nullptr || *key == GUID_NULL) return false;
  const auto* found = FindFirst([&](IZDefinition& definition) {
    GUID answered;
    return *definition.GetKey(&answered) == *key;
  });
  return found != nullptr;
}

// Names of indexes.

void CZDefinitionMgr::GetNameByKey(LONG key, BSTR* out) {
  const auto found = names_.find(key);
  if (found != names_.end()) {
    found->second->name.CopyTo(out);
  } else {
    *out = zdm::Bstr(OLESTR("Unknown")).Detach();
  }
}

void CZDefinitionMgr::RegisterName(LONG key, const OLECHAR* name) {
  Insert(static_cast<ULONG>(names_.size()), key, zdm::Bstr(name));
}

void CZDefinitionMgr::Insert(ULONG seq, LONG key, zdm::Bstr name) {
  auto entry = std::make_unique<ZDefinitionName>();
  entry->seq = seq;
  entry->key = key;
  entry->name = std::move(name);
  names_[key] = std::move(entry);
}

void CZDefinitionMgr::SortKeysByRegistration(std::vector<LONG>& keys) {
  constexpr ULONGLONG kNoName = ~ULONGLONG{0};
  const auto place = [this](LONG key) {
    const auto found = names_.find(key);
    return found != names_.end() ? ULONGLONG{found->second->seq} : kNoName;
  };
  std::stable_sort(keys.begin(), keys.end(),
                   [&](LONG left, LONG right) { return place(left) < place(right); });
}

// Own data, behind that of any manager.
//   size      field
//      4      number of names
//   for each, by ascending key:
//      4      place in the order of registration
//      4      key, signed
//   variable  name, as IZStream::WriteBSTR writes it
void CZDefinitionMgr::SaveOwnData(IZStream* stream, IZDatabase* database) {
  IZDMObjMgrImpl::SaveOwnData(stream, database);
  stream->WriteCount(static_cast<LONG>(names_.size()));
  for (const auto& [key, entry] : names_) {
    stream->Write(&entry->seq, sizeof(entry->seq));
    stream->Write(&entry->key, sizeof(entry->key));
    stream->WriteBSTR(entry->name.Get());
  }
}

void CZDefinitionMgr::LoadOwnData(IZStream* stream, IZDatabase* database) {
  IZDMObjMgrImpl::LoadOwnData(stream, database);
  constexpr ULONGLONG kSmallestEntry = 12;
  const LONG count = stream->ReadCount();
  if (count > 0 && stream->GetBytesLeft() / kSmallestEntry < static_cast<ULONGLONG>(count)) {
    throw CAtlException(E_FAIL);
  }
  for (LONG i = 0; i < count; ++i) {
    ULONG seq;
    LONG key;
    zdm::Bstr name;
    stream->Read(&seq, sizeof(seq));
    stream->Read(&key, sizeof(key));
    stream->ReadBSTR(name.Out());
    Insert(seq, key, std::move(name));
  }
}
