// Checked by the compiler: every host interface has a name the framework knows, no data and no
// second base.
#include "zdm/framework/ZInterface.h"
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
#include "zdm/host/eZGiDraw.h"

#include <type_traits>

namespace {

template <class T>
concept HostInterface = std::is_base_of_v<IZObject, T> && sizeof(T) == sizeof(IZObject) &&
                        sizeof(ZInterface<T>::kName) != 0;

static_assert(HostInterface<IZCategoryDispAttrib>);
static_assert(HostInterface<IZDMEntity>);
static_assert(HostInterface<IZDMModel>);
static_assert(HostInterface<IZDMObjExt>);
static_assert(HostInterface<IZDatabase>);
static_assert(HostInterface<IZGiDevice>);
static_assert(HostInterface<IZMergeStrategy>);
static_assert(HostInterface<IZOptPath>);
static_assert(HostInterface<IZPersistStrategy>);
static_assert(HostInterface<IZProgressMeter>);
static_assert(HostInterface<IZPropertyIterator>);
static_assert(HostInterface<IZTreeData>);
static_assert(HostInterface<IZUpdater>);
static_assert(sizeof(eZGiDraw) == 4 && sizeof(eZMergeOption) == 1);

}  // namespace
