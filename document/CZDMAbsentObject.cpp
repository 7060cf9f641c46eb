#include "document/CZDMAbsentObject.h"

#include "document/Counterpart.h"
#include "document/StreamOver.h"
#include "zdm/framework/LoadDepth.h"
#include "zdm/model/EmbeddedRecord.h"

#include <cstring>

ZDM_OBJECT_BODY(CZDMAbsentObject)

namespace {

constexpr std::size_t kBodyOffset = sizeof(zdm::ObjectHeader) + sizeof(ULONG);

void Write(IZStream& stream, const std::vector<BYTE>& bytes) {
  stream.Write(bytes.data(), static_cast<ULONG>(bytes.size()));
}

}  // namespace

void CZDMAbsentObject::TakeRecord(std::span<const BYTE> record, IZDatabase* database) {
  if (record.size() < kBodyOffset) throw CAtlException(E_FAIL);
  std::memcpy(&header_, record.data(), sizeof(header_));
  SetOptionAllowed(header_.options);
  ULONG length;
  std::memcpy(&length, record.data() + sizeof(header_), sizeof(length));
  const std::span<const BYTE> rest = record.subspan(kBodyOffset);
  if (length > rest.size()) length = static_cast<ULONG>(rest.size());
  const std::span<const BYTE> body = rest.first(length);
  isOpaque_ = !LoadCommonParts(body, database);
  if (isOpaque_) ownData_.assign(body.begin(), body.end());
  tail_.assign(rest.begin() + length, rest.end());
  record_.assign(record.begin(), record.end());
  baseline_ = Written(database);
  if (baseline_ == record_) baseline_.clear();
}

void CZDMAbsentObject::TakeFrame(zdm::FrameKind kind, std::span<const BYTE> record) {
  if (record.size() < sizeof(zdm::EmbeddedHeader)) throw CAtlException(E_FAIL);
  std::memcpy(&header_.classId, record.data(), sizeof(header_.classId));
  frameKind_ = kind;
  isOpaque_ = true;
  record_.assign(record.begin(), record.end());
}

/// As taken, with the present ID and owner.
void CZDMAbsentObject::SaveFramed(IZStream* stream) {
  std::vector<BYTE> record = record_;
  const LONG ids[2] = {static_cast<LONG>(GetID()), static_cast<LONG>(GetOwnerID())};
  std::memcpy(record.data() + sizeof(GUID), ids, sizeof(ids));
  Write(*stream, record);
}

/// False, with none of them held, when the body cannot be read to the class's own data.
bool CZDMAbsentObject::LoadCommonParts(std::span<const BYTE> body, IZDatabase* database) {
  zdm::BytesStream bytes({body.begin(), body.end()});
  const auto stream = zdm::StreamOver(bytes);
  try {
    const zdm::LoadDepth nested;
    LoadAttachments(stream, database);
    const auto place = static_cast<LONGLONG>(stream->GetPosition());
    ownData_.assign(body.begin() + place, body.end());
    return true;
  } catch (const CAtlException& failure) {
    extDataMgr_.Reset();
    reltnColl_.Reset();
    ClearParameters();
    if (failure.m_hr == E_OUTOFMEMORY) throw;
    return false;
  }
}

void CZDMAbsentObject::Load(IZStream* stream, IZDatabase* database) {
  std::vector<BYTE> record(kBodyOffset);
  stream->Read(record.data(), kBodyOffset);
  ULONG length;
  std::memcpy(&length, record.data() + sizeof(header_), sizeof(length));
  if (length > stream->GetBytesLeft()) throw CAtlException(E_FAIL);
  record.resize(kBodyOffset + length);
  stream->Read(record.data() + kBodyOffset, length);
  TakeRecord(record, database);
}

void CZDMAbsentObject::Save(IZStream* stream, IZDatabase* database) {
  if (!IsObjectValid()) return;
  if (frameKind_ != zdm::FrameKind::kNone) return SaveFramed(stream);
  const std::vector<BYTE> written = Written(database);
  const bool isUnchanged = !record_.empty() && written == (baseline_.empty() ? record_ : baseline_);
  Write(*stream, isUnchanged ? record_ : written);
}

/// The record as the object would write it now.
std::vector<BYTE> CZDMAbsentObject::Written(IZDatabase* database) {
  zdm::BytesStream bytes;
  {
    const auto stream = zdm::StreamOver(bytes);
    SaveHead(stream, database);
    SaveBody(stream, database);
    SaveTail(stream, database);
    stream->GetIStream();  // flushed
  }
  return std::move(bytes.bytes);
}

void CZDMAbsentObject::WriteHeader(IZStream* stream) {
  zdm::ObjectHeader header = header_;
  header.id = static_cast<LONG>(GetID());
  header.ownerId = static_cast<LONG>(GetOwnerID());
  header.options = GetOptionAllowed();
  stream->Write(&header, sizeof(header));
}

void CZDMAbsentObject::SaveBody(IZStream* stream, IZDatabase* database) {
  if (!isOpaque_) return IZDMObjectImpl::SaveBody(stream, database);
  const auto length = static_cast<ULONG>(ownData_.size());
  stream->Write(&length, sizeof(length));
  Write(*stream, ownData_);
}

void CZDMAbsentObject::SaveOwnData(IZStream* stream, IZDatabase*) { Write(*stream, ownData_); }
void CZDMAbsentObject::SaveTail(IZStream* stream, IZDatabase*) { Write(*stream, tail_); }

void CZDMAbsentObject::CopyFrom(IZDMObject* source, LONG mode) {
  if (source == nullptr || source == static_cast<IZDMObject*>(this)) return;
  IZDMObjectImpl::CopyFrom(source, mode);
  auto* absent = dynamic_cast<CZDMAbsentObject*>(source);
  if (absent == nullptr) return;
  header_ = absent->header_;
  isOpaque_ = absent->isOpaque_;
  ownData_ = absent->ownData_;
  tail_ = absent->tail_;
  frameKind_ = absent->frameKind_;
  record_.clear();
  baseline_.clear();
  if (frameKind_ != zdm::FrameKind::kNone) record_ = absent->record_;
}

bool CZDMAbsentObject::JudgeSame(IZDMObject* other) {
  if (IZDMObjectImpl::JudgeSame(other)) return true;
  auto* absent = dynamic_cast<CZDMAbsentObject*>(other);
  return absent != nullptr && absent->header_.classId == header_.classId &&
         zdm::AreCounterparts(*this, *other);
}
