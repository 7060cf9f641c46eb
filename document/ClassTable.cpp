#include "document/ClassTable.h"

#include "document/CZCategoryDispAttrib.h"
#include "document/CZDMAbsentObject.h"
#include "document/CZDMArc.h"
#include "document/CZDMCircle.h"
#include "document/CZDMLnSeg.h"
#include "document/CZDMMaterial.h"
#include "document/CZDMMaterialMgr.h"
#include "document/CZDMPlainObject.h"
#include "document/CZDispAttrib.h"
#include "document/CZDocument.h"
#include "document/CZOptPath.h"
#include "document/CZPlainSingleReltn.h"

void zdm::RegisterDocumentClasses() {
#define ZDM_DOCUMENT_CLASS(Class, ...) Class::zInit();
#include "document/ClassTable.def"
}
