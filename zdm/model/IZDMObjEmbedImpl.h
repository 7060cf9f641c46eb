// A data-model object that leaves its data and behaviour to an extension of another module
// (IZDMObjExt) and carries a small record of its own. It offers the references that the extension
// offers; those of the moment of saving are stored as relations in the record.
// A record in a document is the header (WriteHeaderTo, 33 bytes), what the document needs to make
// the extension, the embedded record (SaveEmbedded) and the body (SaveBody). Save alone writes the
// common header of 41 bytes, which Load does not read back.
#pragma once

#include "zdm/host/IZDMObjExt.h"
#include "zdm/model/EmbeddedRecord.h"
#include "zdm/model/IZDMObjectImpl.h"

template <class T>
class IZDMObjEmbedImpl : public IZDMObjectImpl<T> {
 public:
  using IZDMObjectImpl<T>::CopyFrom;
  using IZDMObjectImpl<T>::JudgeSame;

  // Without an extension: nothing, false.
  void Update(IZUpdater* updater, GiContext* context) override;
  /// Lets the extension check itself; then the stored relations, if any, become the references
  /// offered where the two differ.
  void AssertValid(IZDatabase* database) override;
  /// The extension takes over the data of the extension of `source` too.
  void CopyFrom(IZDMObject* source, LONG mode) override;
  /// What the extension says of the other's; false when one of the two is missing.
  bool JudgeSame(IZDMObject* other) override;
  /// The extension's references; false, whatever the visitor answers.
  bool VisitReferences(IZDMObject* root, IZReltnVisitor* visitor) override;
  BYTE GetDMType() override { return record_.kind; }
  // On the record's mask; SetOptionAllowed and GetOptionAllowed stay with that of the OID.
  void AddOptionAllowed(LONGLONG mask) override { record_.mask |= static_cast<ULONGLONG>(mask); }
  void ClearOptionAllowed(LONGLONG mask) override { record_.mask &= ~static_cast<ULONGLONG>(mask); }
  bool JudgeOptionAllowed(LONGLONG mask) override;

  void LoadOwnData(IZStream* stream, IZDatabase* database) override;
  void SaveOwnData(IZStream* stream, IZDatabase* database) override;
  /// Takes format and mask from a header of 33 bytes; the rest was used by whoever made the object.
  void ReadHeader(IZStream* stream) override;

  // Operations of its own; they follow those of IZDMObjectImpl in this order.

  /// The record: module identifier, relations, fields. Nothing in format 1; so its parts, too.
  virtual void SaveEmbedded(IZStream* stream, IZDatabase* database);
  virtual void LoadEmbedded(IZStream* stream, IZDatabase* database);
  virtual void SaveModuleGuid(IZStream* stream) { record_.SaveModuleGuid(stream); }
  virtual void LoadModuleGuid(IZStream* stream) { record_.LoadModuleGuid(stream); }
  /// Gathers the references offered now and stores them.
  virtual void SaveRelations(IZStream* stream, IZDatabase* database);
  virtual void LoadRelations(IZStream* stream, IZDatabase* database);
  /// Holds `ext` (one reference; may be null) in place of the former. 0.
  virtual LONG SetExt(IZDMObjExt* ext);
  /// @param out  one reference for the caller; null when there is none. Returns 0.
  virtual LONG GetExt(IZDMObjExt** out);
  /// Writes the 33 bytes of the header. Throws CAtlException with the stream's result when it
  /// fails.
  virtual void WriteHeaderTo(IStream* stream);
  virtual void SetMask(ULONGLONG mask) { record_.mask = mask; }
  /// @param out  the mask, which is also returned; may be null.
  virtual ULONGLONG GetMask(ULONGLONG* out);

  /// The references offered now are the same, one by one, as the relations stored or loaded last;
  /// true when there are none of these.
  bool JudgeStoredRelations();

 protected:
  zdm::EmbeddedRecord record_;
  ZRefPtr<IZDMObjExt> ext_;  // null until set

 private:
  bool AreStored(IZReltnColl& references);
};

#include "zdm/model/IZDMObjEmbedImpl.inl"
