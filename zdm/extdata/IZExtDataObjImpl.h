// The base of a host's own extended-data items. T is IZExtData or an interface derived from it.
// A derived class states how its data are read, written and copied; the name is copied for it, but
// stored only if SaveData stores it. Stream form: above Save in IZExtDataObjImpl.inl.
#pragma once

#include "zdm/extdata/ExtDataNamed.h"

template <class T>
class IZExtDataObjImpl : public zdm::ExtDataNamed<T> {
 public:
  /// Takes the name, then the data. Null and the item itself change nothing.
  void CopyFrom(IZExtData* source) override;
  /// Data that LoadData leaves unread are skipped; reading past them is damage.
  void Load(IZStream* stream, IZDatabase* database) override;
  /// The stream is at its end afterwards.
  void Save(IZStream* stream, IZDatabase* database) override;

  // For derived classes; nothing here.
  virtual void LoadData(IZStream*, IZDatabase*) {}
  virtual void SaveData(IZStream*, IZDatabase*) {}
  virtual void CopyData(IZExtData*) {}
};

#include "zdm/extdata/IZExtDataObjImpl.inl"
