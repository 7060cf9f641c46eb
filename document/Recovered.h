// Objects that lost their managers come under one of the document's own.
#pragma once

class CZDocument;
struct IZDMObjMgr;
struct IZDMObject;

namespace zdm {

/// The manager "Recovered" in the document, made when there is none.
IZDMObjMgr* RecoveredManager(CZDocument& document);

/// Puts an object that is in no manager's list under it, valid and attached.
void Adopt(CZDocument& document, IZDMObject* object);
/// The same with the manager at hand.
void Adopt(IZDMObjMgr& recovered, IZDMObject* object);

}  // namespace zdm
