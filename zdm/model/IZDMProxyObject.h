// What a proxy keeps of the object that it stands for: an object whose class could not be created.
// It holds the stored bytes of that object's own data as they are, its class and module, and its
// relations. Answered by the same object as IZDMObject.
#pragma once

#include "platform/core/IZObject.h"
#include "zdm/relations/eZRelation.h"

struct IZDatabase;
struct IZReltnColl;
struct IZStream;

struct ZDM_INTERFACE IZDMProxyObject : IZObject {
  /// The class stood for (borrowed, never null).
  virtual const GUID* GetClassGuid() = 0;           // 3
  virtual void SetClassGuid(const GUID* guid) = 0;  // 4
  /// 1: the embedded record is neither written nor read. 2 at first.
  virtual BYTE GetFormat() = 0;             // 5
  virtual void SetFormat(BYTE format) = 0;  // 6
  /// The module of that class (borrowed, never null).
  virtual const GUID* GetModuleGuid() = 0;           // 7
  virtual void SetModuleGuid(const GUID* guid) = 0;  // 8
  /// The record's word is 0xFFFF, which SetWord(true) makes it; false makes it 0.
  virtual bool IsWordSet() = 0;         // 9
  virtual void SetWord(bool set) = 0;   // 10
  virtual BYTE GetKind() = 0;           // 11
  virtual void SetKind(BYTE kind) = 0;  // 12
  /// A copy of the bytes held. Returns their number; 0 when there are none.
  /// @param out  the copy (CoTaskMemFree by the caller); untouched when there are none.
  virtual LONG GetData(void** out) = 0;  // 13
  /// Holds a copy of `length` bytes; none for a length below 1, or null.
  virtual void SetData(const void* data, LONG length) = 0;  // 14
  /// Appends to `out` the stored relations that the selector picks: all for ZR_ALL, by their
  /// diffusibility for ZR_DIFFUSIBLE and ZR_NONDIFFUSIBLE, none for another; in format 1 none.
  virtual void CollectRelations(eZRelation selector, IZReltnColl* out) = 0;  // 15
  /// Reads a 32-bit length and as many bytes. A length past the bytes left and a stream that ends
  /// early throw CAtlException(E_FAIL), and nothing changes; a negative one counts as 0.
  virtual void LoadRawData(IZStream* stream, IZDatabase* database) = 0;  // 16
  /// The embedded record, see EmbeddedRecord.h, and its parts.
  virtual void SaveEmbedded(IZStream* stream, IZDatabase* database) = 0;   // 17
  virtual void LoadEmbedded(IZStream* stream, IZDatabase* database) = 0;   // 18
  virtual void SaveModuleGuid(IZStream* stream) = 0;                       // 19
  virtual void LoadModuleGuid(IZStream* stream) = 0;                       // 20
  virtual void SaveRelations(IZStream* stream, IZDatabase* database) = 0;  // 21
  virtual void LoadRelations(IZStream* stream, IZDatabase* database) = 0;  // 22
  /// @param out  the kind. Returns 0.
  virtual LONG GetKindValue(ULONG* out) = 0;  // 23
};
