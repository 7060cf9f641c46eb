#include "zdm/parameters/ParameterLinks.h"

#include "zdm/model/IZDefinition.h"

namespace zdm {

LentDefinition::LentDefinition(IZParameter& to, const ParameterLinks& from)
    : to_(to), links_(dynamic_cast<ParameterLinks*>(&to)) {
  if (links_ != nullptr) {
    formerReltn_ = links_->definition_.Exchange(from.definition_.GetReltn());
  } else {
    formerDefinition_ = to_.GetDefinition();
    to_.SetDefinition(from.definition_.GetObject());
  }
}

LentDefinition::~LentDefinition() {
  if (links_ != nullptr) {
    links_->definition_.Exchange(formerReltn_);
  } else {
    to_.SetDefinition(formerDefinition_);
  }
}

}  // namespace zdm
