#include "document/TrialLoad.h"

#include "document/ObjectRecord.h"
#include "platform/core/CZStream.h"
#include "platform/ole/BytesStream.h"
#include "platform/ole/CAtlException.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/model/ObjectHeader.h"

#include <cstring>

namespace zdm {

namespace {

constexpr int kTrials = 1024;  // in one document, which gathers the IDs that are referred to

}  // namespace

std::size_t TrialLoad::Length(std::span<const BYTE> bytes) {
  ObjectHeader header;
  if (bytes.size() < sizeof(header)) return 0;
  std::memcpy(&header, bytes.data(), sizeof(header));
  if (trials_++ % kTrials == 0) {
    document_ = MakeObject<CZDocument, CZDocument>();
    document_->BeginLoading();
  }
  const auto object = CreateAs<IZDMObject>(header.classId);
  if (object == nullptr) return 0;
  BytesStream content({bytes.begin(), bytes.end()});
  const auto stream = MakeObject<IZStream, CZStream>();
  if (FAILED(stream->AttachStream(&content))) throw CAtlException(E_OUTOFMEMORY);
  const bool loads = LoadGuarded(object, [&] { object->Load(stream, document_); });
  const auto length = static_cast<std::size_t>(stream->GetPosition());
  stream->AttachStream(nullptr);
  return loads ? length : 0;
}

}  // namespace zdm
