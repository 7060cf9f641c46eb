// Short words for tests of documents.
#pragma once

#include "document/CZDMPlainObject.h"
#include "document/CZDocument.h"
#include "document/References.h"
#include "platform/core/IZStream.h"
#include "tests/support/TempFile.h"
#include "zdm/identity/OID.h"
#include "zdm/model/ObjectHeader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zdm::test {

inline LONG IDOf(IZDMObject* object) { return static_cast<LONG>(object->GetID()); }

/// In ASCII.
inline std::string NameOf(IZDMObject* object) {
  Bstr name;
  object->GetName(name.Out());
  return {name.View().begin(), name.View().end()};
}

/// "from>to" by their IDs, and a letter for what holds the reference.
inline std::string LinkOf(IZDMObject* from, const OID* to, ReferenceVia via) {
  return std::to_string(IDOf(from)) + '>' + std::to_string(to->ID) + "rpxc"[static_cast<int>(via)];
}

/// The document as it comes back from its file, and is saved as the same bytes again.
inline ZRefPtr<CZDocument> Reopened(CZDocument& document) {
  document.SaveAs(TempFile("saved.zdm"));
  auto opened = CZDocument::Open(document.GetPath());
  opened->SaveAs(TempFile("again.zdm"));
  EXPECT_EQ(FileBytes(document.GetPath()), FileBytes(opened->GetPath()));
  return opened;
}

/// Writes records of a class that nobody has.
class ForeignObject : public CZDMPlainObject {
 public:
  static constexpr GUID kClass = ParseGuid("F0F0F0F0-0001-4000-8000-0123456789AB");

  void WriteHeader(IZStream* stream) override {
    const ObjectHeader header = {
        kClass, 7, 8, IDOf(this), static_cast<LONG>(GetOwnerID()), type, GetOptionAllowed()};
    stream->Write(&header, sizeof(header));
  }
  void SaveTail(IZStream* stream, IZDatabase*) override {
    stream->Write(tail.data(), static_cast<ULONG>(tail.size()));
  }

  BYTE type = 1;
  std::vector<BYTE> tail;
};

}  // namespace zdm::test
