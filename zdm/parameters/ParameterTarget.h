// What a parameter refers to beside its value: an object, through a plain relation of the host that
// is made when first needed. Without that class nothing is referred to.
// The record of an object referred to is held besides, so that an object that no ID table lists may
// end first.
#pragma once

#include "zdm/framework/ZRefPtr.h"
#include "zdm/relations/IZSingleReltn.h"

class OID;
struct IZDMObject;
struct IZDatabase;
struct IZReltnVisitor;
struct IZStream;

namespace zdm {

class ZDM_API ParameterTarget {
 public:
  ParameterTarget() = default;
  ParameterTarget(const ParameterTarget&) = delete;
  ParameterTarget& operator=(const ParameterTarget&) = delete;
  ~ParameterTarget() { Hold(nullptr); }

  /// The relation (borrowed), null as long as it is not needed.
  IZSingleReltn* GetReltn() const { return reltn_; }
  /// The object (borrowed), or null.
  IZDMObject* GetObject() const { return reltn_ != nullptr ? reltn_->GetReltnObject() : nullptr; }
  /// The object (borrowed) when relation and object are valid; otherwise null.
  IZDMObject* GetValidObject() const {
    return reltn_ != nullptr ? reltn_->GetValidReltnObject() : nullptr;
  }

  /// Makes the relation where there is none, and `object` its target; null leaves the target.
  /// @param diffusible  whether changes spread along a relation that is made.
  void SetObject(IZDMObject* object, bool diffusible);
  /// Takes the relation away.
  void Reset();
  /// Exchanges the relation, with its target.
  ZRefPtr<IZSingleReltn> Exchange(ZRefPtr<IZSingleReltn> reltn);

  /// Offers the relation, if there is one.
  bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor);
  void Save(IZStream* stream, IZDatabase* database) const;
  void Load(IZStream* stream, IZDatabase* database, bool diffusible);

 private:
  void Make(bool diffusible);
  void Hold(OID* record);

  ZRefPtr<IZSingleReltn> reltn_;
  OID* held_ = nullptr;
};

}  // namespace zdm
