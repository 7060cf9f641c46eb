#include "document/EmbeddedFrame.h"

#include "document/CZDMAbsentObject.h"
#include "document/CZDocument.h"
#include "document/ObjectRecord.h"
#include "document/StreamOver.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/model/CZDMObjEmbed.h"
#include "zdm/model/CZDMProxyObject.h"
#include "zdm/model/EmbeddedRecord.h"

#include <cstring>

// A frame, little-endian:
//   offset  size  field
//        0     1  kind (FrameKind)
//        1     4  length n of the record
//        5     n  record
// Record of a proxy: header of 33 bytes, embedded record, body. Record of an embedded object:
// header of 33 bytes, class identifier of the extension (zeros without one), embedded record, body.
namespace zdm {

namespace {

#pragma pack(push, 1)
struct FrameHead {
  FrameKind kind;
  ULONG length;
};
#pragma pack(pop)
static_assert(sizeof(FrameHead) == 5);

void SaveProxy(CZDocument& document, CZDMProxyObject& proxy, IZStream* stream) {
  proxy.WriteHeader(stream);
  proxy.SaveEmbedded(stream, &document);
  proxy.SaveBody(stream, &document);
}

void SaveEmbedded(CZDocument& document, CZDMObjEmbed& object, IZStream* stream) {
  object.WriteHeaderTo(stream->GetIStream());
  GUID extension = GUID_NULL;
  object.GetExtClassID(&extension);
  stream->Write(&extension, sizeof(extension));
  object.SaveEmbedded(stream, &document);
  object.SaveBody(stream, &document);
}

/// The bytes held are what is left of the body behind what is common to all objects.
void LoadProxy(CZDocument& document, CZDMProxyObject& proxy, IZStream* stream) {
  proxy.ReadHeader(stream);
  proxy.LoadEmbedded(stream, &document);
  ULONG length;
  stream->Read(&length, sizeof(length));
  const ULONGLONG end = stream->GetPosition() + length;
  stream->Seek(-static_cast<LONGLONG>(sizeof(length)), STREAM_SEEK_CUR);
  proxy.LoadBody(stream, &document);
  const ULONGLONG at = stream->GetPosition();
  if (end < at || end - at > stream->GetBytesLeft()) throw CAtlException(E_FAIL);
  const std::vector<BYTE> zeros(static_cast<std::size_t>(end - at));
  proxy.SetData(zeros.data(), static_cast<LONG>(zeros.size()));
  proxy.LoadOwnData(stream, &document);
}

void LoadEmbedded(CZDocument& document, CZDMObjEmbed& object, IZStream* stream) {
  object.ReadHeader(stream);
  GUID classId;
  stream->Read(&classId, sizeof(classId));
  if (!(classId == GUID_NULL)) {
    const auto extension = CreateAs<IZDMObjExt>(classId);
    if (extension == nullptr) throw CAtlException(E_FAIL);
    object.SetExt(extension);
  }
  object.LoadEmbedded(stream, &document);
  object.LoadBody(stream, &document);
}

template <class Object, class Load>
bool LoadAs(CZDocument& document, const EmbeddedHeader& header, std::span<const BYTE> record,
            Load load) {
  auto object = MakeObject<Object, Object>();
  BindObject(document, header.id, header.ownerId, object);
  BytesStream bytes({record.begin(), record.end()});
  const auto stream = StreamOver(bytes);
  const auto work = [&] { load(document, *object, stream.Get()); };
  if (!LoadGuarded(object, work) || stream->GetBytesLeft() != 0) return false;
  static_cast<void>(object.Detach());
  return true;
}

}  // namespace

FrameKind FrameKindOf(IZDMObject* object) { return FrameKinds().Of(object); }

FrameKind FrameKinds::Of(IZDMObject* object) {
  const std::type_info* const type = &typeid(*object);
  if (frameless_.contains(type)) return FrameKind::kNone;
  if (dynamic_cast<CZDMProxyObject*>(object) != nullptr) return FrameKind::kProxy;
  if (dynamic_cast<CZDMObjEmbed*>(object) != nullptr) return FrameKind::kEmbedded;
  if (const auto* absent = dynamic_cast<CZDMAbsentObject*>(object)) return absent->GetFrameKind();
  frameless_.insert(type);
  return FrameKind::kNone;
}

void SaveFrame(CZDocument& document, IZDMObject* object, IZStream* stream) {
  const ULONGLONG start = stream->GetPosition();
  FrameHead head = {FrameKindOf(object), 0};
  stream->Write(&head, sizeof(head));
  if (auto* proxy = dynamic_cast<CZDMProxyObject*>(object)) {
    SaveProxy(document, *proxy, stream);
  } else if (auto* embedded = dynamic_cast<CZDMObjEmbed*>(object)) {
    SaveEmbedded(document, *embedded, stream);
  } else {
    object->Save(stream, &document);
  }
  head.length = static_cast<ULONG>(stream->GetPosition() - start - sizeof(head));
  stream->Seek(static_cast<LONGLONG>(start), STREAM_SEEK_SET);
  stream->Write(&head, sizeof(head));
  stream->Seek(0, STREAM_SEEK_END);
}

bool LoadFrame(CZDocument& document, LONG id, std::span<const BYTE> frame) {
  FrameHead head;
  EmbeddedHeader header;
  if (frame.size() < sizeof(head) + sizeof(header)) return false;
  std::memcpy(&head, frame.data(), sizeof(head));
  const std::span<const BYTE> record = frame.subspan(sizeof(head));
  if (head.length != record.size()) return false;
  std::memcpy(&header, record.data(), sizeof(header));
  if (header.id != id || !IsFree(document, id)) return false;

  if (head.kind == FrameKind::kProxy &&
      LoadAs<CZDMProxyObject>(document, header, record, &LoadProxy)) {
    return true;
  }
  if (head.kind == FrameKind::kEmbedded &&
      LoadAs<CZDMObjEmbed>(document, header, record, &LoadEmbedded)) {
    return true;
  }
  auto absent = MakeObject<CZDMAbsentObject, CZDMAbsentObject>();
  BindObject(document, header.id, header.ownerId, absent);
  absent->TakeFrame(head.kind, record);
  static_cast<void>(absent.Detach());
  return true;
}

}  // namespace zdm
