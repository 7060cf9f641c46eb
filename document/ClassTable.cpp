#include "document/ClassTable.h"

#include "document/CZDMArc.h"
#include "document/CZDMCircle.h"
#include "document/CZDMLnSeg.h"
#include "document/CZDMPlainObject.h"
#include "document/CZOptPath.h"
#include "document/CZPlainSingleReltn.h"

void zdm::RegisterDocumentClasses() {
#define ZDM_DOCUMENT_CLASS(Class, ...) Class::zInit();
#include "document/ClassTable.def"
}
