#include "drawing/CZDMDrawing.h"

#include "document/CZDocument.h"
#include "drawing/CZDMDrawingSection.h"
#include "platform/core/IZStream.h"

ZDM_OBJECT_BODY(CZDMDrawing)

namespace {

constexpr std::size_t kFewestBytes = 4 * sizeof(ULONG) + 1 + sizeof(ULONGLONG);  // of a source

void WriteText(IZStream* stream, const std::string& text) {
  const auto size = static_cast<ULONG>(text.size());
  stream->Write(&size, sizeof(size));
  if (size != 0) stream->Write(text.data(), size);
}

std::string ReadText(IZStream* stream) {
  ULONG size = 0;
  stream->Read(&size, sizeof(size));
  if (size > stream->GetBytesLeft()) throw CAtlException(E_FAIL);
  std::string text(size, 0);
  if (size != 0) stream->Read(text.data(), size);
  return text;
}

}  // namespace

IZDMObjMgr* CZDMDrawing::FindSection(IZDMObjMgr& manager, std::string_view name) {
  for (LONGLONG pos = manager.GetHeadPosition(); pos != 0;) {
    auto* section = dynamic_cast<CZDMDrawingSection*>(manager.GetNext(pos));
    if (section == nullptr) continue;
    zdm::Bstr own;
    section->GetName(own.Out());
    if (zdm::ToUtf8(own.View()) == name) return section;
  }
  return nullptr;
}

void CZDMDrawing::CopyFrom(IZDMObject* source, LONG mode) {
  DrawingObject::CopyFrom(source, mode);
  if (const auto* drawing = dynamic_cast<CZDMDrawing*>(source)) {
    sources_ = drawing->sources_;
    codec_ = drawing->codec_;
  }
}

// Behind what every drawing object has, little-endian.
//   size      field
//      4      code page of the texts
//      4      number of sources
//   then for each
//   variable  name, version, code page, kind of text: length of 4 bytes, bytes
//      1      1 when its lines end with CRLF, else 0
//      8      its size
void CZDMDrawing::SaveOwnData(IZStream* stream, IZDatabase* database) {
  DrawingObject::SaveOwnData(stream, database);
  const ULONG codePage = codec_.codePage;
  stream->Write(&codePage, sizeof(codePage));
  stream->WriteCount(static_cast<LONG>(sources_.size()));
  for (const zdm::DrawingSource& source : sources_) {
    for (const std::string* text :
         {&source.name, &source.version, &source.codePage, &source.text}) {
      WriteText(stream, *text);
    }
    stream->WriteFlag(source.hasCrlf);
    stream->Write(&source.bytes, sizeof(source.bytes));
  }
}

void CZDMDrawing::LoadOwnData(IZStream* stream, IZDatabase* database) {
  DrawingObject::LoadOwnData(stream, database);
  ULONG codePage = 0;
  stream->Read(&codePage, sizeof(codePage));
  const LONG count = stream->ReadCount();
  if (count < 0 || stream->GetBytesLeft() / kFewestBytes < static_cast<ULONGLONG>(count)) {
    throw CAtlException(E_FAIL);
  }
  std::vector<zdm::DrawingSource> sources(static_cast<std::size_t>(count));
  for (zdm::DrawingSource& source : sources) {
    for (std::string* text : {&source.name, &source.version, &source.codePage, &source.text}) {
      *text = ReadText(stream);
    }
    source.hasCrlf = stream->ReadFlag();
    stream->Read(&source.bytes, sizeof(source.bytes));
  }
  codec_.codePage = codePage;
  sources_ = std::move(sources);
}

namespace zdm {

CZDMDrawing* FindDrawing(CZDocument& document) {
  for (LONGLONG pos = document.GetValidHeadPosition(); pos != 0;) {
    if (auto* drawing = dynamic_cast<CZDMDrawing*>(document.GetValidNext(pos))) return drawing;
  }
  return nullptr;
}

/// The steps are bounded since owners may lead in a ring.
CZDMDrawing* DrawingOf(IZDMObject& object) {
  constexpr int kMostSteps = 256;
  IZDMObject* at = &object;
  for (int step = 0; at != nullptr && step < kMostSteps; ++step, at = at->GetOwner()) {
    if (auto* drawing = dynamic_cast<CZDMDrawing*>(at)) return drawing;
  }
  return nullptr;
}

}  // namespace zdm
