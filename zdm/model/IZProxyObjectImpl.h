// An object that stands for one whose class could not be created, and writes back exactly the bytes
// it holds, under the class identifier of that object. P is IZDMProxyObject, T IZDMObject, or
// interfaces derived from them.
// A record in a document is the header (WriteHeader, 33 bytes), the embedded record (SaveEmbedded)
// and the body, whose own data is the bytes held, without a length: how many there are to load,
// SetData says before.
#pragma once

#include "zdm/model/EmbeddedRecord.h"
#include "zdm/model/IZDMObjectImpl.h"
#include "zdm/model/IZDMProxyObject.h"

#include <vector>

template <class P, class T>
class IZProxyObjectImpl : public IZDMObjectImpl<T>, public IZObjectImpl<P> {
 public:
  using IZDMObjectImpl<T>::CopyFrom;
  using IZDMObjectImpl<T>::JudgeSame;

  ULONG Release() override { return this->DecrementCount(); }
  ULONG AddRef() override { return this->IncrementCount(); }
  IZObject* Clone() override { return IZDMObjectImpl<T>::Clone(); }

  /// Also what a proxy of `source` keeps: clones of the relations that it offers. From another
  /// proxy: its class, bytes and record, with clones of the relations stored there.
  void CopyFrom(IZDMObject* source, LONG mode) override;
  bool JudgeSame(IZDMObject*) override { return false; }
  BYTE GetTypeByte() override { return record_.format; }

  void WriteHeader(IZStream* stream) override;
  /// Takes class stood for, format and option mask.
  void ReadHeader(IZStream* stream) override;
  /// Reads as many bytes as are held, in their place; a stream that ends early throws
  /// CAtlException(E_FAIL), and they stay.
  void LoadOwnData(IZStream* stream, IZDatabase* database) override;
  void SaveOwnData(IZStream* stream, IZDatabase* database) override;

  const GUID* GetClassGuid() override { return &classGuid_; }
  void SetClassGuid(const GUID* guid) override { classGuid_ = *guid; }
  BYTE GetFormat() override { return record_.format; }
  void SetFormat(BYTE format) override { record_.format = format; }
  const GUID* GetModuleGuid() override { return &record_.moduleGuid; }
  void SetModuleGuid(const GUID* guid) override { record_.moduleGuid = *guid; }
  bool IsWordSet() override { return record_.word == 0xFFFF; }
  void SetWord(bool set) override { record_.word = set ? 0xFFFF : 0; }
  BYTE GetKind() override { return record_.kind; }
  void SetKind(BYTE kind) override { record_.kind = kind; }
  LONG GetData(void** out) override;
  void SetData(const void* data, LONG length) override;
  void CollectRelations(eZRelation selector, IZReltnColl* out) override;
  void LoadRawData(IZStream* stream, IZDatabase* database) override;
  void SaveEmbedded(IZStream* stream, IZDatabase* database) override;
  void LoadEmbedded(IZStream* stream, IZDatabase* database) override;
  void SaveModuleGuid(IZStream* stream) override { record_.SaveModuleGuid(stream); }
  void LoadModuleGuid(IZStream* stream) override { record_.LoadModuleGuid(stream); }
  void SaveRelations(IZStream* stream, IZDatabase* database) override;
  void LoadRelations(IZStream* stream, IZDatabase* database) override;
  LONG GetKindValue(ULONG* out) override;

 protected:
  zdm::EmbeddedRecord record_;
  GUID classGuid_ = {};
  std::vector<BYTE> data_;

 private:
  void ReadData(IZStream* stream, std::size_t length);
  void CopyProxy(IZDMProxyObject& source);
};

#include "zdm/model/IZProxyObjectImpl.inl"
