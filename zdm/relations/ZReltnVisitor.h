// What the concrete visitors derive from; adds nothing to the defaults.
#pragma once

#include "zdm/relations/IZReltnVisitorImpl.h"

template <class T>
class ZReltnVisitor : public IZReltnVisitorImpl<T> {};
