#include "drawing/ClassTable.h"

#include "drawing/CZDMDrawing.h"
#include "drawing/CZDMDrawingBlock.h"
#include "drawing/CZDMDrawingDictionary.h"
#include "drawing/CZDMDrawingInsert.h"
#include "drawing/CZDMDrawingRecord.h"
#include "drawing/CZDMDrawingSection.h"
#include "drawing/CZDMDrawingSequence.h"

void zdm::RegisterDrawingClasses() {
#define ZDM_DRAWING_CLASS(Class, ...) Class::zInit();
#include "drawing/ClassTable.def"
}
