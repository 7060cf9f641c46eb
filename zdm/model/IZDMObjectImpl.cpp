#include "zdm/model/IZDMObjectImpl.h"

template class IZDMObjectImpl<IZDMObject>;
