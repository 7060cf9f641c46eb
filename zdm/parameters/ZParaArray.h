// What a parameter array keeps its parameters in: one block of exactly their number, one reference
// each, in the order that it was given. Beside each stands the definition GUID that it had when it
// was last looked at; a look-up starts from these and believes one only when the parameter confirms
// it, so that it need not ask all of them. Stream form: above Save in ZParaArray.cpp.
#pragma once

#include "platform/core/ChangeWatch.h"
#include "zdm/framework/GuidKey.h"
#include "zdm/framework/ZRefPtr.h"
#include "zdm/parameters/IZParameter.h"

#include <span>

namespace zdm {

/// A parameter on its way into an array.
struct ParaEntry {
  GuidKey key;  // of its definition, once that was asked
  ZRefPtr<IZParameter> parameter;
};

/// Asks each for the key of its definition and sorts by it; those with equal keys keep their order.
void SortByDefinition(std::span<ParaEntry> entries);

}  // namespace zdm

class ZDM_API ZParaArray {
 public:
  ZParaArray() = default;
  /// A copy holds the same parameters, with references of its own.
  ZParaArray(const ZParaArray& other);
  ZParaArray(ZParaArray&& other) noexcept;
  ZParaArray& operator=(ZParaArray other) noexcept;

  virtual void Save(IZStream* stream, IZDatabase* database);  // 0
  /// In place of what is held, in the stored order. Damage throws CAtlException(E_FAIL), and the
  /// parameters read before it stay.
  virtual void Load(IZStream* stream, IZDatabase* database);  // 1
  virtual void RemoveAll();                                   // 2
  virtual ~ZParaArray();

  LONG GetCount() const { return count_; }
  /// Borrowed; `index` must be within the bounds.
  IZParameter* at(LONG index) const { return items_[index]; }
  /// By binary search over the definition GUIDs, then by a scan from the first. Borrowed; null if
  /// none and for GUID_UNSET.
  IZParameter* GetParameter(const GUID& definitionGUID) const;
  /// The place of what GetParameter answers; -1 if none.
  LONG IndexOf(const GUID& definitionGUID) const;
  /// The first place of a parameter of that definition, which may be GUID_UNSET; -1 if none.
  LONG FirstOf(const GUID& definitionGUID) const;
  /// The first place of that very parameter; -1 if none.
  LONG IndexOf(const IZParameter* parameter) const;
  /// By binary search alone; in an array out of order it may miss.
  bool IsExist(const GUID& definitionGUID) const;
  /// What is held is remembered by somebody; see ChangeWatch.h.
  void Watch() { zdm::ChangeWatch::Watch(watch_); }
  /// Makes `array` the one that every parameter reports to.
  void SetOwner(IZParameterArray* array) const;

  /// Holds these in their order, in place of what was held. Takes over their references.
  void Assign(std::span<zdm::ParaEntry> entries);
  /// Holds what `copy` makes of each of the parameters that `source` holds, in place of what was
  /// held.
  void AssignCopies(const ZParaArray& source, ZRefPtr<IZParameter> (*copy)(IZParameter*));
  /// Removes one and hands it over; `index` must be within the bounds.
  ZRefPtr<IZParameter> Take(LONG index);

 private:
  // The remembered keys follow the parameters in the same block.
  static IZParameter** Allocate(LONG count);
  void LookAgain() const;
  zdm::GuidKey* Keys() const { return reinterpret_cast<zdm::GuidKey*>(items_ + count_); }

  IZParameter** items_ = nullptr;  // null when empty
  LONG count_ = 0;
  ULONG watch_ = 0;  // stays with this array
};
