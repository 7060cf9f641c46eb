// Layers of a drawing and the categories that they are in a document: numbered from 1 in the order
// of the layer table, with the display values of the layer. Names are equal in any case.
#pragma once

#include "drawing/GroupRelations.h"

#include <unordered_map>

class CZDocument;
struct IZCategory;
struct IZCategoryMgr;

namespace zdm {

class Layers {
 public:
  /// Takes the categories that the document has; makes their manager where there is none.
  explicit Layers(CZDocument& document);

  /// The category of that name (borrowed); null for none.
  IZCategory* Find(const WideString& name) const;
  /// That one, or a new one under the next free number.
  IZCategory* Query(const WideString& name);

  /// The category of a LAYER record, which takes the display values of the record when it is new
  /// or was not in a table yet.
  void AddRecord(IZDMObject& record, const TextCodec& codec);
  /// Relates an entity to the category of that layer, and gives the relation what the entity says
  /// of its own display.
  void Assign(IZDMObject& entity, IZCategory& layer, const TextCodec& codec) const;

 private:
  CZDocument& document_;
  IZCategoryMgr* manager_;
  std::unordered_map<WideString, IZCategory*> byName_;
  LONG nextNumber_ = 1;
};

/// The name of the category that the object belongs to; empty without one.
WideString LayerNameOf(IZDMObject& object);

/// What of a LAYER record differs from its category: name, visibility, colour, line type.
void CollectLayerEdits(IZDMObject& record, const DrawingPart& part, const TextCodec& codec,
                       GroupEdits* edits);

}  // namespace zdm
