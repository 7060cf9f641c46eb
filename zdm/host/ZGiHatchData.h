// How an area is hatched: the name of a pattern and three numbers, whose meaning is the host's.
// Categories and category relations keep two each. A plain value that owns its pattern: copying one
// copies the pattern. Stream form: above Save in ZGiHatchData.cpp.
#pragma once

#include "platform/ole/Bstr.h"

struct IZStream;

struct ZDM_API ZGiHatchData {
  zdm::Bstr Pattern;
  double Values[3] = {50.0, 0.0, 1.0};
  bool StoredAsNull = false;  // see Load

  /// True when no number differs by more than 1e-5 (one that is not a number equals only another)
  /// and the patterns are equal as zdm::EqualIgnoringCase has it, a null one being empty. Throws
  /// CAtlException(E_OUTOFMEMORY) without memory.
  bool JudgeSame(const ZGiHatchData& other) const;

  void Save(IZStream* stream) const;
  /// A pattern stored as null becomes empty; as long as it stays so, it is stored as null again, so
  /// that what is not changed keeps its bytes. Damage throws CAtlException(E_FAIL); what was read
  /// before it stays.
  void Load(IZStream* stream);
};
