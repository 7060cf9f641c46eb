// Stands for an object whose class is not available, or could not read its own record. It keeps the
// record as it stands in the file. What is common to all objects (extended data, relations,
// parameters) is loaded, so that its references take part in every walk; the class's own data, and
// the whole body when it cannot be read that far, stay bytes. As long as nothing changed, the
// record goes back byte for byte.
#pragma once

#include "document/ClassTable.h"
#include "document/EmbeddedFrame.h"
#include "zdm/model/IZDMObjectImpl.h"
#include "zdm/model/ObjectHeader.h"

#include <span>
#include <vector>

class CZDMAbsentObject : public IZDMObjectImpl<IZDMObject> {
  ZDM_OBJECT(CZDMAbsentObject)
 public:
  using IZDMObjectImpl::CopyFrom;
  using IZDMObjectImpl::JudgeSame;

  /// Takes a record: header, body, and whatever the class wrote behind it. ID and owner are set
  /// already. Throws CAtlException(E_FAIL) for one that is shorter than header and length.
  void TakeRecord(std::span<const BYTE> record, IZDatabase* database);
  /// Takes a record with a header of 33 bytes, which is not read; ID and owner are set already.
  void TakeFrame(zdm::FrameKind kind, std::span<const BYTE> record);

  /// The class that the record names.
  GUID GetAbsentClassID() const { return header_.classId; }
  /// Nothing of the body could be read; it may refer to objects that no walk finds.
  bool IsOpaque() const { return isOpaque_; }
  /// What kind of frame the record came from.
  zdm::FrameKind GetFrameKind() const { return frameKind_; }

  BYTE GetTypeByte() override { return header_.type; }
  /// Of another absent object, also its own data.
  void CopyFrom(IZDMObject* source, LONG mode) override;
  bool JudgeSame(IZDMObject* other) override;
  void Save(IZStream* stream, IZDatabase* database) override;
  /// Takes the header and the body whose length follows it.
  void Load(IZStream* stream, IZDatabase* database) override;

  void SaveOwnData(IZStream* stream, IZDatabase* database) override;
  void WriteHeader(IZStream* stream) override;
  void SaveBody(IZStream* stream, IZDatabase* database) override;
  void SaveTail(IZStream* stream, IZDatabase* database) override;

 private:
  bool LoadCommonParts(std::span<const BYTE> body, IZDatabase* database);
  std::vector<BYTE> Written(IZDatabase* database);

  void SaveFramed(IZStream* stream);

  zdm::ObjectHeader header_ = {};
  zdm::FrameKind frameKind_ = zdm::FrameKind::kNone;
  bool isOpaque_ = false;
  std::vector<BYTE> ownData_;   // of an opaque object the whole body
  std::vector<BYTE> tail_;      // what stands behind the body
  std::vector<BYTE> record_;    // as taken; empty for a copy
  std::vector<BYTE> baseline_;  // what the object wrote when it was taken, if not record_
};
