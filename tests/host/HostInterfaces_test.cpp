// What every host interface promises: one base, no data, all operations pure. A host class that
// combines several of them overrides each separately.
#include <gtest/gtest.h>

#include <type_traits>

#include "zdm/host/IZCategoryDispAttrib.h"
#include "zdm/host/IZDMEntity.h"
#include "zdm/host/IZDMModel.h"
#include "zdm/host/IZDMObjExt.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/host/IZGiDevice.h"
#include "zdm/host/IZMergeStrategy.h"
#include "zdm/host/IZOptPath.h"
#include "zdm/host/IZPersistStrategy.h"
#include "zdm/host/IZProgressMeter.h"
#include "zdm/host/IZPropertyIterator.h"
#include "zdm/host/IZTreeData.h"
#include "zdm/host/IZUpdater.h"
#include "zdm/host/ZGeIOData.h"
#include "zdm/host/eZGiDraw.h"
