#include "zdm/parameters/CZParameter.h"

template class IZParameterImpl<IZParameter>;
template class IZParameterImpl<IZDMParameter>;

ZDM_OBJECT_BODY(CZParameter)
