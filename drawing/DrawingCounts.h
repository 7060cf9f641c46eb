// What is in a drawing, in numbers.
#pragma once

#include "platform/ole/ole.h"

class CZDMDrawing;

namespace zdm {

/// Records, unless stated. An insert of rows and columns counts as one.
struct DrawingCounts {
  ULONGLONG layers = 0;
  ULONGLONG blocks = 0;    // without the spaces
  ULONGLONG entModel = 0;  // entities, without vertices, attributes and ends of sequences
  ULONGLONG entPaper = 0;
  ULONGLONG entBlocks = 0;
  ULONGLONG entTotal = 0;
  ULONGLONG insModel = 0;
  ULONGLONG insTotal = 0;
  ULONGLONG nestModel = 0;   // the longest chain of inserts from model space
  ULONGLONG nestAny = 0;     // from anywhere
  ULONGLONG pathsModel = 0;  // paths of inserts from model space; the highest number for more
  ULONGLONG attdefs = 0;
  ULONGLONG attribs = 0;
  ULONGLONG vertices = 0;
  ULONGLONG withHandle = 0;  // of entities and what belongs to them
  ULONGLONG noHandle = 0;
  ULONGLONG dupHandles = 0;  // in the whole drawing
  ULONGLONG xdataRecords = 0;
  ULONGLONG xdataEntities = 0;
  ULONGLONG xdataApps = 0;
  ULONGLONG objects = 0;
  ULONGLONG dicts = 0;
  ULONGLONG xrecords = 0;
  ULONGLONG xdictLinks = 0;
};

DrawingCounts Count(CZDMDrawing& drawing);

}  // namespace zdm
