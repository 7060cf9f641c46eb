// A small document with something of everything: what it takes through a file and back, all
// documents do.
#pragma once

#include "document/CZDocument.h"

namespace zdm::test {

/// An object of every class that the factory makes of this library, so that classes that come later
/// are in it by themselves; a relation of every class; extended data of every type; a path; the
/// defaults; an embedded object, a proxy, an object of a class that nobody has; an ID that is
/// referred to without its object; an object whose owner is no manager; an order of its own.
ZRefPtr<CZDocument> DocumentOfEveryClass();

}  // namespace zdm::test
