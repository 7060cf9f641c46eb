// What embedded objects and proxies store in place of the common header, and beside the body of a
// data-model object.
#pragma once

#include "zdm/framework/ZRefPtr.h"
#include "zdm/relations/IZReltnColl.h"

struct IZDMObject;
struct IZDatabase;
struct IZStream;

namespace zdm {

// The header, 33 bytes, packed, little-endian.
//   offset  size  field
//        0    16  class identifier; a proxy's is that of the object it stands for
//       16     4  the object's ID
//       20     4  the owner's ID, 0 without an owner
//       24     1  format
//       25     8  mask
#pragma pack(push, 1)
struct EmbeddedHeader {
  GUID classId;
  LONG id;
  LONG ownerId;
  BYTE format;
  ULONGLONG mask;
};
#pragma pack(pop)
static_assert(sizeof(EmbeddedHeader) == 33);

/// Hands the header to `write(data, length)`, field by field.
template <class Write>
void WriteFields(const EmbeddedHeader& header, Write write) {
  write(&header.classId, sizeof(header.classId));
  write(&header.id, sizeof(header.id));
  write(&header.ownerId, sizeof(header.ownerId));
  write(&header.format, sizeof(header.format));
  write(&header.mask, sizeof(header.mask));
}

/// The record. Its three parts are stored one after the other, or not at all; see
/// EmbeddedRecord.cpp. Streams that end early and damage throw CAtlException(E_FAIL); the part
/// concerned then keeps what it was, but for relations read before.
struct ZDM_API EmbeddedRecord {
  static constexpr BYTE kNotStored = 1;  // the format without a stored record

  bool IsStored() const { return format != kNotStored; }
  void SaveModuleGuid(IZStream* stream) const;
  void LoadModuleGuid(IZStream* stream);
  /// All relations, valid or not. Loading replaces them, unless the stream has none.
  void SaveRelations(IZStream* stream, IZDatabase* database) const;
  void LoadRelations(IZStream* stream, IZDatabase* database);
  /// `word`, `kind` and `mask`.
  void SaveFields(IZStream* stream) const;
  void LoadFields(IZStream* stream);

  GUID moduleGuid = {};
  BYTE format = 2;
  USHORT word = 0;
  BYTE kind = 1;
  ZRefPtr<IZReltnColl> relations;  // apart from the object's own collection; null for none
  ULONGLONG mask = 0xF000000000000000;
};

/// A new relation collection. Throws CAtlException(E_OUTOFMEMORY) when it cannot be made.
ZDM_API ZRefPtr<IZReltnColl> NewRelations();

/// All relations that `object` offers (IZDMObject::VisitReferences), shared with it.
ZDM_API ZRefPtr<IZReltnColl> GatherRelations(IZDMObject& object);

}  // namespace zdm
